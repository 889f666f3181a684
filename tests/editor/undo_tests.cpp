// Undo and redo of the pages through the real window: every kind of change is one step that
// puts back the exact pages and opens a page it changed, and the keys that paint (Ctrl over a
// cell) do not leave a mark when they start the undo shortcut.
#include <QAction>
#include <QKeyEvent>
#include <QTemporaryDir>
#include <QUndoStack>
#include <algorithm>
#include <functional>

#include "editor/edit_history.h"
#include "editor/editor_fixture.h"
#include "support/picture_files.h"

namespace lumidot::testing {
namespace {

// Every page as the user sees it, and which one is open.
struct Snapshot {
    Pages pages;
    int current;
    bool operator==(const Snapshot&) const = default;
};

class UndoTest : public EditorTest {
protected:
    void SetUp() override {
        EditorTest::SetUp();
        // Shortcuts reach only the active window.
        QApplication::setActiveWindow(window.get());
        ASSERT_TRUE(QTest::qWaitForWindowActive(window.get()));
    }
    Snapshot snapshot() const {
        return {window->model().pages().all(), window->model().pages().current()};
    }
    QUndoStack& stack() { return window->history().stack(); }
    // The menu item as the user reads it, without its access key marker.
    QString undoItem() { return window->history().undoAction()->text().remove(QLatin1Char('&')); }
    QString redoItem() { return window->history().redoAction()->text().remove(QLatin1Char('&')); }
    void undo() { window->history().undoAction()->trigger(); }
    void redo() { window->history().redoAction()->trigger(); }
    // The pages of the model, the cells and the pane agree, as after any edit.
    void expectShown(const Snapshot& expected) {
        ASSERT_EQ(snapshot(), expected);
        expectStored(expected.pages[std::size_t(expected.current - 1)]);
    }
};

// --- every kind of change is one step ------------------------------------------------------

class StepTest;

struct StepRow {
    const char* name;
    const char* item;  // "Undo ..." in the Edit menu afterwards
    std::function<void(StepTest&)> act;
};

class StepTest : public UndoTest, public ::testing::WithParamInterface<StepRow> {
public:
    // For the rows' actions, which are written outside the class.
    using UndoTest::cellCentre, UndoTest::fake, UndoTest::folder, UndoTest::grid, UndoTest::mouse,
        UndoTest::move, UndoTest::press, UndoTest::ui, UndoTest::window;
};

TEST_P(StepTest, UndoneAndRedoneRestoresTheExactPagesAndTheOpenPage) {
    const StepRow& row = GetParam();
    // Something on several pages, and page 3 open, so that a step touching the wrong page or
    // opening the wrong one shows.
    window->SetPageNum(2);
    showPage(pixelsOn({1, 2, 3, 200}));
    window->SetPageNum(4);
    showPage(pixelsOn({100}));
    window->SetPageNum(3);
    showPage(pixelsOn({0, 17, 34, 51, 255}));
    const Snapshot before = snapshot();
    ASSERT_EQ(stack().count(), 0) << "opening pages is not an edit";

    row.act(static_cast<StepTest&>(*this));
    const Snapshot after = snapshot();
    ASSERT_NE(after, before);
    EXPECT_EQ(stack().count(), 1) << "the whole action is one step";
    EXPECT_EQ(undoItem(), QStringLiteral("Undo %1").arg(QLatin1String(row.item)));

    // Away to another page and another mode: the undo comes back to a page of the step, the
    // one open then if the step changed it, else the first it changed.
    const auto shown = [&](Snapshot state) {
        std::vector<int> changed;
        for (int page = 1; page <= 10; ++page) {
            if (before.pages[std::size_t(page - 1)] != after.pages[std::size_t(page - 1)]) {
                changed.push_back(page);
            }
        }
        if (std::find(changed.begin(), changed.end(), state.current) == changed.end()) {
            state.current = changed.front();
        }
        return state;
    };
    window->SetPageNum(9);
    press("optSEGDisplay");
    undo();
    expectShown(shown(before));
    EXPECT_EQ(redoItem(), QStringLiteral("Redo %1").arg(QLatin1String(row.item)));
    window->SetPageNum(8);
    redo();
    expectShown(shown(after));
    undo();
    expectShown(shown(before));
}

Page Stroke() {
    Page page{};
    for (int i : {0, 17, 34, 51, 255, 40, 41, 42, 43}) page[i] = true;
    return page;
}

INSTANTIATE_TEST_SUITE_P(
    Actions, StepTest,
    ::testing::Values(
        StepRow{"PaintStrokeWithShift", "Paint",
                [](StepTest& test) {
                    for (int cell : {40, 41, 42, 43}) {
                        test.move(test.grid(), StepTest::cellCentre(cell), Qt::ShiftModifier);
                    }
                    QTest::keyRelease(test.window.get(), Qt::Key_Shift);
                    EXPECT_EQ(test.window->FDPixels(), Stroke());
                }},
        StepRow{"PaintStrokeWithTheButton", "Paint",
                [](StepTest& test) {
                    const QPointF first = StepTest::cellCentre(40);
                    test.mouse(test.grid(), first, QEvent::MouseButtonPress, Qt::LeftButton,
                               Qt::LeftButton);
                    for (int cell : {41, 42, 43}) {
                        test.mouse(test.grid(), StepTest::cellCentre(cell), QEvent::MouseMove,
                                   Qt::NoButton, Qt::LeftButton, Qt::ShiftModifier);
                    }
                    test.mouse(test.grid(), StepTest::cellCentre(43), QEvent::MouseButtonRelease,
                               Qt::LeftButton, Qt::NoButton);
                    EXPECT_EQ(test.window->FDPixels(), Stroke());
                }},
        StepRow{"ShiftLeft", "Shift", [](StepTest& test) { test.press("cmdFDShiftLeft"); }},
        StepRow{"Invert", "Invert", [](StepTest& test) { test.press("cmdFDInvert"); }},
        StepRow{"Clear", "Clear", [](StepTest& test) { test.press("cmdFDClear"); }},
        StepRow{"CopyToPage4", "Copy to page 4",
                [](StepTest& test) {
                    // The dialog offers page 4, the one after the open page.
                    test.fake.prompts.onModal = [](QDialog& dialog) {
                        QTest::keyClick(&dialog, Qt::Key_Return);
                    };
                    test.press("cmdFDCopy");
                }},
        StepRow{"ImportPicture", "Import picture",
                [](StepTest& test) {
                    const QString path = test.folder.filePath(QStringLiteral("cross.png"));
                    ASSERT_TRUE(WriteFile(
                        path,
                        Encoded(BlackOnWhite(16, 16, [](int x, int y) { return x == y; }), "png")));
                    test.fake.files.paths.push_back(path);
                    test.fake.prompts.onModal = [](QDialog& dialog) { dialog.accept(); };
                    test.window->findChild<QAction*>("actionImportPicture")->trigger();
                }},
        StepRow{"DecodedMessages", "Decoded message",
                [](StepTest& test) {
                    // Two stores, pages 5 and 6: one run, one step.
                    Page five{}, six{};
                    five[7] = six[8] = true;
                    test.fake.clipboard.text = QString::fromStdString(
                        MakeGraphicStoreSysEx(five, 5) + "\r\n" + MakeGraphicStoreSysEx(six, 6));
                    QTest::mouseClick(test.ui().cmdSysExDecode, Qt::LeftButton);
                }}),
    [](const auto& info) { return std::string(info.param.name); });

// --- what is not a step, and the bound ------------------------------------------------------

TEST_F(UndoTest, ActionsThatChangeNothingAreNotRecordedEachStrokeIsOneStepOfABoundedHistory) {
    press("cmdFDShiftLeft");  // an empty page shifted is the same page
    press("cmdFDClear");
    click(grid(), cellCentre(5), Qt::RightButton);  // painting off what is off
    EXPECT_EQ(stack().count(), 0);
    EXPECT_FALSE(window->history().undoAction()->isEnabled());
    EXPECT_EQ(undoItem(), QStringLiteral("Undo"));
    for (int cell : {10, 11, 12}) click(grid(), cellCentre(cell), Qt::LeftButton);
    EXPECT_EQ(stack().count(), 3) << "three clicks, three strokes";
    EXPECT_EQ(stack().undoLimit(), EditHistory::kUndoLimit);
}

// --- Ctrl is a paint key and the start of Ctrl+Z ---------------------------------------------

TEST_F(UndoTest, CtrlZOverAnOnPixelLeavesItOnAndUndoesTheStepBeforeCtrlAlonePaints) {
    constexpr int kResting = 37;
    showPage(pixelsOn({kResting}));
    click(grid(), cellCentre(60), Qt::LeftButton);  // the user's last edit
    ASSERT_EQ(window->FDPixels(), pixelsOn({kResting, 60}));
    move(grid(), cellCentre(kResting));  // and the pointer rests on an on pixel

    // Typed as a user types it, with the focus in the text box: Ctrl goes down (and, by the
    // painting rules, turns the pixel under the pointer off), then Z, then both come up.
    ui().txtTextIn->setFocus();
    QTest::keyPress(ui().txtTextIn, Qt::Key_Control, Qt::ControlModifier);
    EXPECT_FALSE(window->FDPixels()[kResting]) << "Ctrl alone still paints";
    QTest::keyClick(ui().txtTextIn, Qt::Key_Z, Qt::ControlModifier);
    QTest::keyRelease(ui().txtTextIn, Qt::Key_Control);
    expectStored(pixelsOn({kResting}));
    EXPECT_EQ(ui().txtTextIn->text(), QString()) << "the text box's own undo is not run";

    // Redo with Ctrl+Y and with Ctrl+Shift+Z: the same, nothing painted by the keys.
    QTest::keyPress(ui().txtTextIn, Qt::Key_Control, Qt::ControlModifier);
    QTest::keyClick(ui().txtTextIn, Qt::Key_Y, Qt::ControlModifier);
    QTest::keyRelease(ui().txtTextIn, Qt::Key_Control);
    expectStored(pixelsOn({kResting, 60}));
    QTest::keyPress(ui().txtTextIn, Qt::Key_Control, Qt::ControlModifier);
    QTest::keyClick(ui().txtTextIn, Qt::Key_Z, Qt::ControlModifier);
    QTest::keyPress(ui().txtTextIn, Qt::Key_Shift, Qt::ControlModifier | Qt::ShiftModifier);
    QTest::keyClick(ui().txtTextIn, Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
    QTest::keyRelease(ui().txtTextIn, Qt::Key_Shift, Qt::ControlModifier);
    QTest::keyRelease(ui().txtTextIn, Qt::Key_Control);
    expectStored(pixelsOn({kResting, 60}));
    EXPECT_EQ(stack().count(), 1) << "the keys' own paint never became a step";

    // Ctrl alone, with no Z after it, is a paint and a step of its own.
    QTest::keyPress(ui().txtTextIn, Qt::Key_Control, Qt::ControlModifier);
    QTest::keyRelease(ui().txtTextIn, Qt::Key_Control);
    EXPECT_EQ(window->FDPixels(), pixelsOn({60}));
    EXPECT_EQ(undoItem(), QStringLiteral("Undo Paint"));
    undo();
    expectStored(pixelsOn({kResting, 60}));
}

}  // namespace
}  // namespace lumidot::testing
