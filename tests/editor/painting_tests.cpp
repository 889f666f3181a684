// Painting the grid with the pointer, clicks and keys, and moving the picture with the drag
// handle, all through events delivered to the real window.
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>

#include "editor/drag_handle.h"
#include "editor/editor_fixture.h"

namespace lumidot::testing {
namespace {

constexpr int kCell = 37;

class PaintingTest : public EditorTest {
protected:
    void SetUp() override {
        EditorTest::SetUp();
        window->selectMode(ui().optSEGDisplay);  // a paint that counts shows the store message
    }
    // Where the pointer ends up before a key goes down.
    void pointTo(const char* place) {
        const QString where = QString::fromLatin1(place);
        if (where == "gap") {
            move(grid(), cellCentre(kCell) + QPointF(PixelGrid::kCellWidth / 2.0 + 1, 0));
        } else if (where == "frame") {
            move(ui().frmFrameDraw, QPointF(95, 195));
        } else if (where == "grey") {
            move(ui().frmFrameDraw, QPointF(100, 26));  // the grey rectangle around the grid
        } else if (where == "window") {
            move(window.get(), QPointF(3, 222));
        } else if (where == "button") {
            move(ui().cmdFDInvert, QPointF(5, 5));
        } else if (where == "label") {
            move(ui().Label2, QPointF(5, 5));
        } else if (where.startsWith("drag")) {
            // Pressed on the cell and dragged off the grid: the grid keeps the pointer.
            QWidget* target = where == "dragToFrame" ? static_cast<QWidget*>(ui().frmFrameDraw)
                                                     : ui().cmdFDInvert;
            const QPointF to = where == "dragToFrame" ? QPointF(95, 195) : QPointF(5, 5);
            mouse(grid(), cellCentre(kCell), QEvent::MouseButtonPress, Qt::LeftButton,
                  Qt::LeftButton);
            move(target, to, Qt::NoModifier, Qt::LeftButton);
            mouse(target, to, QEvent::MouseButtonRelease, Qt::LeftButton);
        }
    }
};

struct StrokeRow {
    const char* name;
    Qt::KeyboardModifiers modifiers;
    Qt::MouseButtons held;
    int result;  // 1 on, 0 off, -1 untouched
};

class StrokeTest : public PaintingTest, public ::testing::WithParamInterface<StrokeRow> {};

TEST_P(StrokeTest, OnlyShiftAloneOrCtrlAlonePaints) {
    const Qt::MouseButtons held = GetParam().held;
    // Buttons held were pressed somewhere first, on another cell of the grid.
    if (held != Qt::NoButton) {
        mouse(grid(), cellCentre(0), QEvent::MouseButtonPress, Qt::MouseButton(held.toInt()), held);
    }
    for (const bool wasOn : {false, true}) {
        showPage(
            pixelsOn(wasOn ? std::initializer_list<int>{kCell} : std::initializer_list<int>{}));
        const quint64 before = regenerations();
        // A point of the same cell not visited yet: a movement that goes nowhere is no event.
        move(grid(), cellCentre(kCell) + QPointF(wasOn ? 4 : 0, 0), GetParam().modifiers, held);
        EXPECT_EQ(window->FDPixelUnderMouse, kCell);
        const bool painted = GetParam().result >= 0;
        EXPECT_EQ(window->FDPixels[kCell], painted ? GetParam().result == 1 : wasOn);
        EXPECT_EQ(grid()->cell(kCell), window->FDPixels[kCell]);
        // Every stroke regenerates, even when the pixel already had its value.
        EXPECT_EQ(regenerations() > before, painted);
        EXPECT_EQ(ui().optSEGStore->isChecked(), painted);
        window->selectMode(ui().optSEGDisplay);
    }
}

INSTANTIATE_TEST_SUITE_P(
    Modifiers, StrokeTest,
    ::testing::Values(StrokeRow{"Shift", Qt::ShiftModifier, Qt::NoButton, 1},
                      StrokeRow{"Ctrl", Qt::ControlModifier, Qt::NoButton, 0},
                      StrokeRow{"ShiftWithRightButton", Qt::ShiftModifier, Qt::RightButton, 1},
                      StrokeRow{"None", Qt::NoModifier, Qt::NoButton, -1},
                      StrokeRow{"ShiftCtrl", Qt::ShiftModifier | Qt::ControlModifier, Qt::NoButton,
                                -1},
                      StrokeRow{"ShiftAlt", Qt::ShiftModifier | Qt::AltModifier, Qt::NoButton, -1},
                      StrokeRow{"CtrlAlt", Qt::ControlModifier | Qt::AltModifier, Qt::NoButton, -1},
                      StrokeRow{"Alt", Qt::AltModifier, Qt::NoButton, -1}),
    [](const auto& info) { return std::string(info.param.name); });

struct ClickRow {
    const char* name;
    Qt::MouseButton button;
    Qt::KeyboardModifiers modifiers;
    bool wasOn;
    int result;  // 1 on, 0 off, -1 untouched
};

class ClickTest : public PaintingTest, public ::testing::WithParamInterface<ClickRow> {};

TEST_P(ClickTest, LeftSetsRightClearsWhateverTheModifiers) {
    showPage(GetParam().wasOn ? pixelsOn({kCell}) : Page{});
    const quint64 before = regenerations();
    click(grid(), cellCentre(kCell), GetParam().button, GetParam().modifiers);
    const bool painted = GetParam().result >= 0;
    EXPECT_EQ(window->FDPixels[kCell], painted ? GetParam().result == 1 : GetParam().wasOn);
    EXPECT_EQ(grid()->cell(kCell), window->FDPixels[kCell]);
    EXPECT_EQ(regenerations() > before, painted);
}

INSTANTIATE_TEST_SUITE_P(
    Buttons, ClickTest,
    ::testing::Values(ClickRow{"LeftOnOff", Qt::LeftButton, Qt::NoModifier, false, 1},
                      ClickRow{"LeftOnOn", Qt::LeftButton, Qt::NoModifier, true, 1},
                      ClickRow{"LeftWithCtrl", Qt::LeftButton, Qt::ControlModifier, false, 1},
                      ClickRow{"RightOnOn", Qt::RightButton, Qt::NoModifier, true, 0},
                      ClickRow{"RightOnOff", Qt::RightButton, Qt::NoModifier, false, 0},
                      ClickRow{"RightWithShift", Qt::RightButton, Qt::ShiftModifier, true, 0},
                      ClickRow{"Middle", Qt::MiddleButton, Qt::NoModifier, false, -1}),
    [](const auto& info) { return std::string(info.param.name); });

struct KeyRow {
    const char* name;
    const char* pointer;  // where the pointer went after resting on the cell
    Qt::Key key;
    Qt::KeyboardModifiers held;
    int result;  // 1 on, 0 off, -1 untouched
};

class KeyPreviewTest : public PaintingTest, public ::testing::WithParamInterface<KeyRow> {};

TEST_P(KeyPreviewTest, PaintsTheCellLastMovedOver) {
    showPage(pixelsOn({kCell}));
    if (GetParam().result == 1) showPage(Page{});
    moveOverCell(kCell);
    pointTo(GetParam().pointer);
    ui().txtHexPrefix->setFocus();  // the key preview works whichever control has the focus
    const quint64 before = regenerations();
    keyDown(GetParam().key, GetParam().held);
    const bool painted = GetParam().result >= 0;
    EXPECT_EQ(window->FDPixels[kCell], painted ? GetParam().result == 1 : true);
    EXPECT_EQ(regenerations() > before, painted);
}

INSTANTIATE_TEST_SUITE_P(
    Keys, KeyPreviewTest,
    ::testing::Values(
        KeyRow{"ShiftOnCell", "cell", Qt::Key_Shift, Qt::ShiftModifier, 1},
        KeyRow{"CtrlOnCell", "cell", Qt::Key_Control, Qt::ControlModifier, 0},
        KeyRow{"ShiftWhileCtrlHeld", "cell", Qt::Key_Shift, Qt::ShiftModifier | Qt::ControlModifier,
               1},
        KeyRow{"AltKey", "cell", Qt::Key_Alt, Qt::AltModifier, -1},
        KeyRow{"ShiftAfterButton", "button", Qt::Key_Shift, Qt::ShiftModifier, 1},
        KeyRow{"ShiftAfterLabel", "label", Qt::Key_Shift, Qt::ShiftModifier, 1},
        KeyRow{"CtrlAfterDragOntoButton", "dragToButton", Qt::Key_Control, Qt::ControlModifier, 0},
        KeyRow{"ShiftAfterDragOntoFrame", "dragToFrame", Qt::Key_Shift, Qt::ShiftModifier, -1},
        KeyRow{"CtrlInGap", "gap", Qt::Key_Control, Qt::ControlModifier, -1},
        KeyRow{"ShiftOnGrey", "grey", Qt::Key_Shift, Qt::ShiftModifier, -1},
        KeyRow{"ShiftOnFrame", "frame", Qt::Key_Shift, Qt::ShiftModifier, -1},
        KeyRow{"ShiftOnWindow", "window", Qt::Key_Shift, Qt::ShiftModifier, -1}),
    [](const auto& info) { return std::string(info.param.name); });

TEST_F(PaintingTest, CapitalLetterInTheTextFieldAlsoPaintsTheCell) {
    moveOverCell(kCell);
    ui().txtTextIn->setFocus();
    keyDown(Qt::Key_Shift, Qt::ShiftModifier);
    QTest::keyClick(ui().txtTextIn, 'A', Qt::ShiftModifier);
    EXPECT_TRUE(window->FDPixels[kCell]);
    EXPECT_EQ(ui().txtTextIn->text(), QStringLiteral("A"));
}

// --- dragging the picture ------------------------------------------------------------------

struct DragRow {
    const char* name;
    Qt::MouseButton pressed;
    std::vector<QPointF> moves;  // pointer offsets from the press, one event each
    std::vector<int> trail;      // where the one lit pixel went, shift by shift
    QPointF anchorAhead;         // the anchor less the last pointer position
};

class DragTest : public EditorTest, public ::testing::WithParamInterface<DragRow> {};

TEST_P(DragTest, ShiftsOneStepPerCellOfMovement) {
    constexpr int kStart = 17;  // row 1, column 1
    showPage(pixelsOn({kStart}));
    std::vector<int> trail;
    QObject::connect(ui().txtSysExOut, &QPlainTextEdit::textChanged, [&] {
        for (int i = 0; i < kPagePixels; ++i) {
            // A shift may regenerate more than once; each place counts once.
            if (window->FDPixels[i] && (trail.empty() || trail.back() != i)) trail.push_back(i);
        }
    });
    DragHandle* handle = ui().picMove;
    const QPointF press(15, 16);
    mouse(handle, press, QEvent::MouseButtonPress, GetParam().pressed, GetParam().pressed);
    for (const QPointF& offset : GetParam().moves) {
        mouse(handle, press + offset, QEvent::MouseMove, Qt::NoButton, GetParam().pressed);
    }
    EXPECT_EQ(trail, GetParam().trail);
    const QPointF last = press + GetParam().moves.back();
    EXPECT_EQ(QPointF(window->FDDragX, window->FDDragY) - last, GetParam().anchorAhead);
}

INSTANTIATE_TEST_SUITE_P(
    Drags, DragTest,
    ::testing::Values(
        DragRow{"ElevenRight", Qt::LeftButton, {{11, 0}}, {}, {-11, 0}},
        DragRow{"TwelveRight", Qt::LeftButton, {{12, 0}}, {18}, {10, 0}},
        DragRow{"AroundTheNewAnchorThenBack",
                Qt::LeftButton,
                {{12, 0}, {20, 4}, {11, -4}, {0, 0}},
                {18, 17},
                {0, 0}},
        DragRow{"DownAndLeftInOneEvent", Qt::LeftButton, {{-44, 30}}, {16, 31, 47, 63, 79}, {0, 0}},
        DragRow{"SlowlyAcrossTenCells",
                Qt::LeftButton,
                {{55, 0}, {110, 0}, {165, 0}, {220, 0}},
                {18, 19, 20, 21, 22, 23, 24, 25, 26, 27},
                {0, 0}},
        DragRow{"RightButton", Qt::RightButton, {{44, 30}}, {}, {-44, -30}}),
    [](const auto& info) { return std::string(info.param.name); });

}  // namespace
}  // namespace lumidot::testing
