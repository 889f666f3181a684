// The graphic editor through the real window, driven as a user drives it: pages and the
// whole-page buttons, the "Copy To Page" dialog, painting cells with the pointer, clicks and
// keys, and moving the picture with the drag handle.
#include <QApplication>
#include <QLabel>
#include <QWheelEvent>
#include <initializer_list>

#include "codec/graphic_page.h"
#include "editor/drag_handle.h"
#include "editor/editor_fixture.h"
#include "editor/frm_page_copy.h"
#include "editor/grid_input.h"
#include "editor/pixel_grid.h"
#include "editor/up_down.h"
#include "mainwindow/read_only_text_box.h"
#include "support/qt_printers.h"

namespace lumidot::testing {
namespace {

// --- pages and the whole-page buttons --------------------------------------------------------

TEST_F(EditorTest, SwitchingPagesKeepsEachPagesEditsAndShowsTheNewPage) {
    stepPage(1);
    click(grid(), cellCentre(5), Qt::LeftButton);
    press("optSEText");
    stepPage(1);
    EXPECT_EQ(ui().lblPageNum->text(), QStringLiteral("3"));
    expectStored(Page{});  // the text mode gives way to storing the new page
    click(grid(), cellCentre(9), Qt::LeftButton);
    press("optSEGDisplay");
    QWheelEvent wheelDown({8, 8}, {}, {}, {0, -120}, Qt::NoButton, {}, Qt::NoScrollPhase, false);
    QApplication::sendEvent(ui().udPageNum, &wheelDown);
    expectDisplayed(2);
    EXPECT_EQ(window->FDPixels(), pixelsOn({5}));
    stepPage(1);
    EXPECT_EQ(window->FDPixels(), pixelsOn({9}));

    // Asked for the page already open, nothing is reloaded, not even a picture not yet kept.
    showPage(pixelsOn({7, 8}));
    const quint64 before = window->model().paneVersion();
    window->SetPageNum(3);
    EXPECT_EQ(window->FDPixels(), pixelsOn({7, 8}));
    EXPECT_EQ(window->model().paneVersion(), before);

    window->SetPageNum(10);
    stepPage(1);
    EXPECT_EQ(ui().lblPageNum->text(), QStringLiteral("10")) << "the spinner does not wrap";
}

struct ShiftRow {
    const char* button;
    const char* opposite;
    int firstLandsAt;   // where the pixel at row 0, column 0 goes
    int lastLandsAt;    // and the one at row 15, column 15
    int middleLandsAt;  // and the one at row 6, column 4
};

class ShiftTest : public EditorTest, public ::testing::WithParamInterface<ShiftRow> {};

TEST_P(ShiftTest, WrapsAroundAndSixteenShiftsRestoreThePage) {
    const auto& [button, opposite, first, last, middle] = GetParam();
    showPage(pixelsOn({0, 255, 100}));
    press("optSEText");
    press(button);
    expectStored(pixelsOn({first, last, middle}));
    // Irregular, so that a shift that drops, doubles or mirrors a row or column cannot come
    // out equal by accident.
    Page sample{};
    for (int i = 0; i < kPagePixels; ++i) sample[i] = (i * 7 + i / 16) % 5 == 0 || i == 17;
    showPage(sample);
    press(button);
    press(opposite);
    EXPECT_EQ(window->FDPixels(), sample) << "the opposite shift undoes it";
    for (int i = 0; i < 16; ++i) press(button);
    EXPECT_EQ(window->FDPixels(), sample);
}

INSTANTIATE_TEST_SUITE_P(
    Buttons, ShiftTest,
    ::testing::Values(ShiftRow{"cmdFDShiftRight", "cmdFDShiftLeft", 1, 240, 101},
                      ShiftRow{"cmdFDShiftLeft", "cmdFDShiftRight", 15, 254, 99},
                      ShiftRow{"cmdFDShiftUp", "cmdFDShiftDown", 240, 239, 84},
                      ShiftRow{"cmdFDShiftDown", "cmdFDShiftUp", 16, 15, 116}));

TEST_F(EditorTest, DisplayNoneLastsUntilAnEditInvertTwiceRestoresClearAsksFirst) {
    window->SetPageNum(4);
    showPage(pixelsOn({3, 4}));
    press("cmdFDPageDisplay");
    expectDisplayed(0);  // no page at all, with the display option selected
    press("cmdFDInvert");
    for (int i = 0; i < kPagePixels; ++i) ASSERT_EQ(window->FDPixels()[i], i != 3 && i != 4);
    expectStored(window->FDPixels());
    press("cmdFDInvert");
    press("optSEGDisplay");
    const quint64 before = window->model().paneVersion();
    fake.prompts.answers = {Prompts::Answer::No};
    press("cmdFDClear");

    ASSERT_EQ(fake.prompts.shown.size(), 1u);
    const ShownMessage& asked = fake.prompts.shown[0];
    EXPECT_EQ(asked.title, QStringLiteral("Clear page 4?"));
    EXPECT_EQ(asked.prompt, QStringLiteral("Really erase this page?"));
    EXPECT_EQ(asked.icon, Prompts::Icon::Question);
    EXPECT_EQ(asked.buttons, Prompts::Buttons::YesNo);
    EXPECT_EQ(asked.defaultAnswer, Prompts::Answer::Yes);
    EXPECT_EQ(window->FDPixels(), pixelsOn({3, 4}));
    EXPECT_TRUE(ui().optSEGDisplay->isChecked());
    EXPECT_EQ(window->model().paneVersion(), before) << "the pane is left as it was";
    press("cmdFDClear");  // the default answer, Yes
    expectStored(Page{});
}

TEST_F(EditorTest, CopiedPageIsTheSourceAsItWasAtTheCopy) {
    showPage(pixelsOn({0, 17}));
    const quint64 before = window->model().paneVersion();
    fake.prompts.onModal = [](QDialog& dialog) { QTest::keyClick(&dialog, Qt::Key_Return); };
    press("cmdFDCopy");
    ASSERT_EQ(fake.prompts.shown.size(), 1u);
    EXPECT_EQ(fake.prompts.shown[0].title, QStringLiteral("Copied"));
    EXPECT_EQ(fake.prompts.shown[0].prompt,
              QStringLiteral("Copied to page 2\r\nYou are still editing page 1."));
    EXPECT_EQ(fake.prompts.shown[0].icon, Prompts::Icon::Information);
    EXPECT_EQ(window->model().paneVersion(), before) << "the pane is left as it was";
    click(grid(), cellCentre(33), Qt::LeftButton);
    window->SetPageNum(2);
    EXPECT_EQ(window->FDPixels(), pixelsOn({0, 17}));
    window->SetPageNum(1);
    EXPECT_EQ(window->FDPixels(), pixelsOn({0, 17, 33}));
}

TEST_F(EditorTest, CopyDialogPresetsRemembersAndConfirmsOnlyAnotherPage) {
    constexpr Qt::Key kEnter = Qt::Key_Return, kEsc = Qt::Key_Escape, kClose = Qt::Key_unknown;
    constexpr int kCancelled = frmPageCopy::kCancelled;
    // One use each, in a new window or not: opened from a page, showing a page, set to a
    // page with the arrows and ended with a key or the close button; the page it reports.
    const struct {
        bool newWindow;
        int from, shows, setTo;
        Qt::Key end;
        int dest;
    } script[] = {
        {false, 1, 2, 2, kEnter, 2},           // first use: the page after
        {false, 3, 2, 7, kEnter, 7},           // later the last choice, kept
        {false, 3, 7, 4, kEnter, 4},           // and remembered
        {false, 4, 5, 4, kEsc, kCancelled},    // the last choice is the source: the page after
        {false, 6, 4, 4, kEnter, 4},           // cancelled, the value is kept for another page
        {false, 3, 4, 5, kClose, kCancelled},  // the close button cancels
        {false, 3, 1, 1, kEnter, 1},           // and the next dialog is new, starting at 1
        {true, 10, 9, 9, kEnter, 9},           // first use from the last page: the page before
    };
    for (const auto& use : script) {
        SCOPED_TRACE(::testing::Message() << "from " << use.from << " to " << use.setTo);
        if (use.newWindow) start();
        window->SetPageNum(use.from);
        const size_t messages = fake.prompts.shown.size();
        fake.prompts.onModal = [&](QDialog& dialog) {
            auto* spinner = dialog.findChild<UpDown*>("udPageNumDest");
            auto* ok = dialog.findChild<QPushButton*>("cmdOK");
            EXPECT_EQ(dialog.findChild<QLabel*>("lblPageNumSource")->text() +
                          dialog.findChild<QLabel*>("lblPageNumDest")->text(),
                      QStringLiteral("Copy page %1 to page %2").arg(use.from).arg(use.shows));
            EXPECT_TRUE(ok->isEnabled());
            EXPECT_EQ(dialog.focusWidget(), ok);
            for (int n = 0; n < 9 && spinner->value() != use.setTo; ++n) {
                const int y = use.setTo > spinner->value() ? 2 : spinner->height() - 2;
                QTest::mouseClick(spinner, Qt::LeftButton, {}, QPoint(spinner->width() / 2, y));
            }
            EXPECT_EQ(ok->isEnabled(), use.setTo != use.from);
            if (!ok->isEnabled()) {
                QTest::keyClick(dialog.focusWidget(), Qt::Key_Return);
                EXPECT_TRUE(dialog.isVisible()) << "Enter does nothing while OK is disabled";
            }
            if (use.end == kClose) {
                dialog.close();
            } else {
                QTest::keyClick(dialog.focusWidget(), use.end);
            }
        };
        press("cmdFDCopy");
        EXPECT_EQ(window->pageCopyDialog()->GetPageNumDest(), use.dest);
        EXPECT_EQ(fake.prompts.shown.size(), messages + (use.dest == kCancelled ? 0 : 1));
    }
}

TEST(CopyDialogCaptionTest, EveryMarkerInTheTemplateIsReplaced) {
    frmPageCopy::Memory memory;
    frmPageCopy dialog(nullptr, memory);
    auto* source = dialog.findChild<QLabel*>("lblPageNumSource");
    source->setProperty("tag", QStringLiteral("%a, %A and %a%a"));
    dialog.SetPageNumSource(7);
    EXPECT_EQ(source->text(), QStringLiteral("7, %A and 77"));
}

// --- painting the cells ----------------------------------------------------------------------

constexpr int kCell = 37;

// The pointer moves onto the cell with modifiers held, or clicks it, or rests on it and
// then moves to a place before a key goes down.
struct PaintRow {
    const char* name;
    Qt::KeyboardModifiers modifiers;
    Qt::MouseButton click;
    Qt::Key key;
    const char* movedTo;
    int result;  // 1 on, 0 off, -1 untouched
};

class PaintTest : public EditorTest, public ::testing::WithParamInterface<PaintRow> {};

TEST_P(PaintTest, OnlyShiftAloneOrCtrlAloneLeftOrRightClickOrTheirKeysPaint) {
    const auto& [name, modifiers, button, key, movedTo, result] = GetParam();
    for (const bool wasOn : {false, true}) {
        press("optSEGDisplay");  // a paint that counts shows the store message
        showPage(wasOn ? pixelsOn({kCell}) : Page{});
        const quint64 before = window->model().paneVersion();
        // A point of the cell not visited yet: a movement that goes nowhere is no event.
        const QPointF onCell = cellCentre(kCell) + QPointF(wasOn ? 4 : 0, 0);
        if (key != Qt::Key_unknown) {
            move(grid(), onCell);
            const QString place = movedTo;
            if (place == "gap") {
                move(grid(), cellCentre(kCell) + QPointF(PixelGrid::kCellWidth / 2.0 + 1, 0));
            } else if (place == "button") {
                move(ui().cmdFDInvert, QPointF(5, 5));
            } else if (place == "grey") {
                move(ui().frmFrameDraw, QPointF(100, 26));  // the grey rectangle round the grid
            }
            // The key preview works whichever control has the focus, even a text box.
            ui().txtTextIn->setFocus();
            QTest::keyPress(ui().txtTextIn, key, modifiers);
        } else if (button != Qt::NoButton) {
            click(grid(), onCell, button, modifiers);
        } else {
            move(grid(), onCell, modifiers);
        }
        const bool painted = result >= 0;
        EXPECT_EQ(window->FDPixels()[kCell], painted ? result == 1 : wasOn) << "was on " << wasOn;
        EXPECT_EQ(grid()->cell(kCell), window->FDPixels()[kCell]);
        // Every paint regenerates, even when the pixel already had its value.
        EXPECT_EQ(window->model().paneVersion() > before, painted);
        EXPECT_EQ(ui().optSEGStore->isChecked(), painted);
    }
}

constexpr auto kShift = Qt::ShiftModifier, kCtrl = Qt::ControlModifier, kAlt = Qt::AltModifier;
constexpr auto kNone = Qt::NoButton;
constexpr auto kMove = Qt::Key_unknown;

INSTANTIATE_TEST_SUITE_P(
    Inputs, PaintTest,
    ::testing::Values(PaintRow{"MoveShift", kShift, kNone, kMove, "", 1},
                      PaintRow{"MoveCtrl", kCtrl, kNone, kMove, "", 0},
                      PaintRow{"MoveBare", {}, kNone, kMove, "", -1},
                      PaintRow{"MoveShiftCtrl", kShift | kCtrl, kNone, kMove, "", -1},
                      PaintRow{"MoveShiftAlt", kShift | kAlt, kNone, kMove, "", -1},
                      PaintRow{"MoveCtrlAlt", kCtrl | kAlt, kNone, kMove, "", -1},
                      PaintRow{"ClickLeft", {}, Qt::LeftButton, kMove, "", 1},
                      PaintRow{"ClickLeftCtrl", kCtrl, Qt::LeftButton, kMove, "", 1},
                      PaintRow{"ClickRight", {}, Qt::RightButton, kMove, "", 0},
                      PaintRow{"ClickRightShift", kShift, Qt::RightButton, kMove, "", 0},
                      PaintRow{"ClickMiddle", {}, Qt::MiddleButton, kMove, "", -1},
                      PaintRow{"ShiftKeyOnCell", kShift, kNone, Qt::Key_Shift, "", 1},
                      PaintRow{"CtrlKeyOnCell", kCtrl, kNone, Qt::Key_Control, "", 0},
                      PaintRow{"ShiftKeyCtrlHeld", kShift | kCtrl, kNone, Qt::Key_Shift, "", 1},
                      PaintRow{"AltKeyOnCell", kAlt, kNone, Qt::Key_Alt, "", -1},
                      PaintRow{"ShiftKeyAfterButton", kShift, kNone, Qt::Key_Shift, "button", 1},
                      PaintRow{"CtrlKeyInGap", kCtrl, kNone, Qt::Key_Control, "gap", -1},
                      PaintRow{"ShiftKeyOnGrey", kShift, kNone, Qt::Key_Shift, "grey", -1}),
    [](const auto& info) { return std::string(info.param.name); });

TEST_F(EditorTest, CapitalLetterInTheTextBoxIsTypedAsWellAsPainting) {
    move(grid(), cellCentre(kCell));
    ui().txtTextIn->setFocus();
    QTest::keyPress(ui().txtTextIn, Qt::Key_Shift, Qt::ShiftModifier);
    QTest::keyClick(ui().txtTextIn, 'A', Qt::ShiftModifier);
    EXPECT_TRUE(window->FDPixels()[kCell]);
    EXPECT_EQ(ui().txtTextIn->text(), QStringLiteral("A"));
}

// --- dragging the picture --------------------------------------------------------------------

struct DragRow {
    const char* name;
    Qt::MouseButton pressed;
    QPointF moved;           // pointer offset from the press, in one event
    std::vector<int> trail;  // where the one lit pixel went, shift by shift
    QPointF anchorAhead;     // the anchor less the pointer position
};

class DragTest : public EditorTest, public ::testing::WithParamInterface<DragRow> {};

TEST_P(DragTest, ShiftsOneStepPerCellOfMovementHorizontalFirst) {
    const auto& [name, pressed, moved, expectedTrail, anchorAhead] = GetParam();
    showPage(pixelsOn({17}));  // row 1, column 1
    std::vector<int> trail;
    window->model().pages().setListener([&](PageModel::Change, int) {
        for (int i = 0; i < kPagePixels; ++i) {
            if (window->FDPixels()[i]) trail.push_back(i);
        }
    });
    const QPointF press(15, 16);
    mouse(ui().picMove, press, QEvent::MouseButtonPress, pressed, pressed);
    mouse(ui().picMove, press + moved, QEvent::MouseMove, Qt::NoButton, pressed);
    EXPECT_EQ(trail, expectedTrail);
    EXPECT_EQ(window->gridInput().dragAnchor() - press - moved, anchorAhead);
}

// Steps are 22 pixels across and 10 down, rounded half to even.
INSTANTIATE_TEST_SUITE_P(
    Drags, DragTest,
    ::testing::Values(DragRow{"ElevenRight", Qt::LeftButton, {11, 0}, {}, {-11, 0}},
                      DragRow{"TwelveRight", Qt::LeftButton, {12, 0}, {18}, {10, 0}},
                      DragRow{"ThirtyThreeRight", Qt::LeftButton, {33, 0}, {18, 19}, {11, 0}},
                      DragRow{"DownAndLeft", Qt::LeftButton, {-44, 30}, {16, 31, 47, 63, 79}, {}},
                      DragRow{"RightButton", Qt::RightButton, {44, 30}, {}, {-44, -30}}),
    [](const auto& info) { return std::string(info.param.name); });

// --- looks -------------------------------------------------------------------------------

TEST_F(EditorTest, CellsAmberOrDarkGreyOverGreyAndTheHandlesArrowOnATransparentGround) {
    showPage(pixelsOn({0}));
    const QImage frame = ui().frmFrameDraw->grab().toImage();
    EXPECT_EQ(QColor(frame.pixel(110, 34)), QColor(50, 50, 50));     // cell 0, on
    EXPECT_EQ(QColor(frame.pixel(128, 34)), QColor(128, 128, 128));  // the gap after it
    EXPECT_EQ(QColor(frame.pixel(134, 34)), QColor(255, 200, 80));   // cell 1, off
    const QImage picture = ui().picMove->pixmap().toImage();
    ASSERT_EQ(picture.size(), QSize(32, 32));
    EXPECT_EQ(qAlpha(picture.pixel(0, 0)), 0);              // magenta ground
    EXPECT_EQ(picture.pixel(16, 16), qRgba(0, 0, 0, 255));  // the arrow, black and opaque
}

}  // namespace
}  // namespace lumidot::testing
