// Selecting and copying in the read-only text box with the real pointer, keys, context menu
// and the in-process clipboard; typing changes nothing.
#include <QClipboard>
#include <QContextMenuEvent>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QTimer>
#include <QWheelEvent>
#include <functional>

#include "mainwindow/text_box_fixture.h"

namespace lumidot::testing {
namespace {

const QString kLines = QStringLiteral("F0 41 10\r\nF7 00\nAB CD\rEF");

// A drag from one character to another; rows and columns count on screen.
struct DragRow {
    const char* name;
    QPoint from;  // (column, row)
    QPoint to;
    QString selected;
};

class DragTest : public TextBoxTest, public ::testing::WithParamInterface<DragRow> {};

TEST_P(DragTest, SelectsWhatThePointerPassedWithCrLfBetweenLines) {
    const DragRow& row = GetParam();
    box.setText(kLines);
    QTest::mousePress(box.viewport(), Qt::LeftButton, {}, at(row.from.y(), row.from.x()));
    QTest::mouseMove(box.viewport(), at(row.to.y(), row.to.x()));
    QTest::mouseRelease(box.viewport(), Qt::LeftButton, {}, at(row.to.y(), row.to.x()));
    EXPECT_EQ(box.selectedText(), row.selected);
}

INSTANTIATE_TEST_SUITE_P(
    Drags, DragTest,
    ::testing::Values(DragRow{"WithinARow", {3, 0}, {5, 0}, "41"},
                      DragRow{"OverLineBreaks", {6, 0}, {2, 2}, "10\r\nF7 00\r\nAB"},
                      DragRow{"Backwards", {2, 2}, {6, 0}, "10\r\nF7 00\r\nAB"},
                      DragRow{"PastTheEndOfALine", {3, 1}, {40, 1}, "00"},
                      DragRow{"BelowTheLastRow", {3, 2}, {1, 9}, "CD\r\nE"},
                      DragRow{"LeftOfTheText", {2, 1}, {-3, 1}, "F7"}),
    [](const auto& info) { return std::string(info.param.name); });

TEST_F(TextBoxTest, ShiftClickExtendsTheSelectionFromTheCaret) {
    box.setText(kLines);
    QTest::mouseClick(box.viewport(), Qt::LeftButton, {}, at(0, 3));
    QTest::mouseClick(box.viewport(), Qt::LeftButton, Qt::ShiftModifier, at(1, 2));
    EXPECT_EQ(box.selectedText(), "41 10\r\nF7");
    QTest::mouseClick(box.viewport(), Qt::LeftButton, {}, at(1, 2));
    EXPECT_FALSE(box.hasSelection());
}

using WordRow = std::pair<int, QString>;  // column double-clicked, word selected

class WordTest : public TextBoxTest, public ::testing::WithParamInterface<WordRow> {};

TEST_P(WordTest, DoubleClickSelectsTheWordOrTheRunOfPunctuation) {
    const auto& [column, word] = GetParam();
    box.setText(" #1. Display text: abc  x_y $$");
    QTest::mouseDClick(box.viewport(), Qt::LeftButton, {}, at(0, column));
    EXPECT_EQ(box.selectedText(), word);
}

INSTANTIATE_TEST_SUITE_P(Words, WordTest,
                         ::testing::Values(WordRow{1, "#"}, WordRow{2, "1"}, WordRow{5, "Display"},
                                           WordRow{11, "Display"}, WordRow{12, "Display"},
                                           WordRow{0, ""}, WordRow{23, "abc"}, WordRow{25, "x_y"},
                                           WordRow{29, "$$"}, WordRow{40, "$$"}));

TEST_F(TextBoxTest, TripleClickSelectsTheLineWithItsBreak) {
    box.setText(kLines);
    QTest::mouseDClick(box.viewport(), Qt::LeftButton, {}, at(1, 4));
    QTest::mousePress(box.viewport(), Qt::LeftButton, {}, at(1, 4));
    QTest::mouseRelease(box.viewport(), Qt::LeftButton, {}, at(1, 4));
    EXPECT_EQ(box.selectedText(), "F7 00\r\n");
    QTest::mouseClick(box.viewport(), Qt::LeftButton, {}, at(1, 4));
    EXPECT_FALSE(box.hasSelection()) << "a fourth click starts afresh";
}

TEST_F(TextBoxTest, DraggingBelowTheViewKeepsScrollingAndSelecting) {
    box.setText(manyLines("\r\n"));
    box.resize(200, 100);
    QTest::mousePress(box.viewport(), Qt::LeftButton, {}, at(0, 0));
    QTest::mouseMove(box.viewport(), QPoint(20, box.viewport()->height() + 30));
    QTRY_VERIFY(box.verticalScrollBar()->value() > 10);
    QTest::mouseRelease(box.viewport(), Qt::LeftButton, {},
                        QPoint(20, box.viewport()->height() + 30));
    const int scrolled = box.verticalScrollBar()->value();
    QTest::qWait(200);
    EXPECT_EQ(box.verticalScrollBar()->value(), scrolled) << "scrolling stops with the button";
    EXPECT_TRUE(box.selectedText().startsWith("line 0\r\nline 1\r\nline 2\r\n"));
    EXPECT_GT(box.selectedText().count("\r\n"), 10);
}

// Keys pressed from the start of the text, and what they leave selected.
struct KeyRow {
    const char* name;
    QString text;
    const char* keys;
    QString selected;
};

class KeyTest : public TextBoxTest, public ::testing::WithParamInterface<KeyRow> {};

TEST_P(KeyTest, KeysMoveAndSelectAsInAPlainTextEdit) {
    const KeyRow& row = GetParam();
    box.setText(row.text);
    press(row.keys);
    EXPECT_EQ(box.selectedText(), row.selected);
}

const QString kThree = QStringLiteral("ab\r\ncd\nef");

INSTANTIATE_TEST_SUITE_P(
    Keys, KeyTest,
    ::testing::Values(
        KeyRow{"ShiftRight", kThree, "Shift+Right Shift+Right", "ab"},
        KeyRow{"ShiftRightOverCrLf", kThree, "End Shift+Right", "\r\n"},
        KeyRow{"ShiftDown", kThree, "Shift+Down", "ab\r\n"},
        KeyRow{"ShiftEnd", kThree, "Down Shift+End", "cd"},
        KeyRow{"CtrlShiftEnd", kThree, "Right Ctrl+Shift+End", "b\r\ncd\r\nef"},
        KeyRow{"CtrlShiftHome", kThree, "Ctrl+End Ctrl+Shift+Home", "ab\r\ncd\r\nef"},
        KeyRow{"ShiftHome", kThree, "Down Right Shift+Home", "c"},
        KeyRow{"ShiftUpOnTheFirstRowGoesToTheStart", kThree, "Right Shift+Up", "a"},
        KeyRow{"ShiftDownOnTheLastRowGoesToTheEnd", kThree, "Ctrl+End Left Shift+Down", "f"},
        KeyRow{"RightEndsASelectionAtItsEnd", kThree, "Shift+Right Shift+Right Right Shift+Right",
               "\r\n"},
        KeyRow{"LeftEndsASelectionAtItsStart", kThree,
               "Ctrl+End Shift+Left Shift+Left Left Shift+Left", "\r\n"},
        KeyRow{"UpKeepsTheColumnAcrossAShortRow", "abcdef\r\nx\r\nabcdef",
               "Right Right Right Down Down Shift+Right", "d"},
        KeyRow{"PairIsOneCharacter", "a😀b", "Right Shift+Right", "😀"},
        KeyRow{"MarksStayWithTheirLetter", "ae\u0301b", "Right Shift+Right", "e\u0301"},
        KeyRow{"CtrlRightToTheNextWord", "F0 41 10", "Ctrl+Shift+Right", "F0 "},
        KeyRow{"CtrlLeftToTheWordStart", "F0 41 10", "End Ctrl+Shift+Left", "10"}),
    [](const auto& info) { return std::string(info.param.name); });

TEST_F(TextBoxTest, PageKeysMoveByWhatFitsAndTheWheelByThreeRows) {
    box.setText(manyLines("\n"));
    box.resize(200, 100);
    const int page = box.verticalScrollBar()->pageStep();
    ASSERT_GT(page, 1);
    QTest::keyClick(&box, Qt::Key_PageDown);
    EXPECT_EQ(box.caretPosition(), box.text().indexOf(QStringLiteral("line %1\n").arg(page)));
    EXPECT_EQ(box.verticalScrollBar()->value(), page);
    QTest::keyClick(&box, Qt::Key_PageUp);
    EXPECT_EQ(box.caretPosition(), 0);
    EXPECT_EQ(box.verticalScrollBar()->value(), 0);

    QWheelEvent wheel(QPointF(20, 20), box.viewport()->mapToGlobal(QPointF(20, 20)), QPoint(),
                      QPoint(0, -120), Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
    QApplication::sendEvent(box.viewport(), &wheel);
    EXPECT_EQ(box.verticalScrollBar()->value(), 3);
    QWheelEvent zoom(QPointF(20, 20), box.viewport()->mapToGlobal(QPointF(20, 20)), QPoint(),
                     QPoint(0, -120), Qt::NoButton, Qt::ControlModifier, Qt::NoScrollPhase, false);
    QApplication::sendEvent(box.viewport(), &zoom);
    EXPECT_EQ(box.verticalScrollBar()->value(), 3) << "Ctrl+wheel neither zooms nor scrolls";
    EXPECT_EQ(box.font(), TextBoxFont());

    // The view scrolls just far enough for the last row to show whole, as in a plain text
    // edit; the scroll bar's end leaves a margin below it.
    QTest::keyClick(&box, Qt::Key_End, Qt::ControlModifier);
    EXPECT_EQ(box.caretPosition(), box.text().size());
    EXPECT_EQ(box.verticalScrollBar()->value(), 100 - box.viewport()->height() / rowHeight());
    EXPECT_EQ(box.verticalScrollBar()->maximum(), 100 - page);
}

TEST_F(TextBoxTest, TypingPastingAndCuttingChangeNothing) {
    box.setText(kLines);
    QString changed;
    QObject::connect(&box, &ReadOnlyTextBox::textChanged, [&] { changed = box.text(); });
    box.selectAll();
    QTest::keyClicks(&box, "abc");
    press("Del Backspace Return Space Ctrl+V Ctrl+X Ctrl+Z Shift+Ins");
    EXPECT_EQ(box.text(), kLines);
    EXPECT_TRUE(changed.isNull());
}

TEST(TextBoxFocusTest, TabMovesTheFocusIntoTheBoxAndOnWithoutTypingATab) {
    QWidget window;
    auto* before = new QLineEdit(&window);
    auto* box = new ReadOnlyTextBox(&window);
    auto* after = new QPushButton(QStringLiteral("OK"), &window);
    box->setText(kLines);
    window.show();
    QApplication::setActiveWindow(&window);
    before->setFocus();
    QTest::keyClick(before, Qt::Key_Tab);
    EXPECT_TRUE(box->hasFocus());
    QTest::keyClick(box, Qt::Key_Tab);
    EXPECT_TRUE(after->hasFocus());
    QTest::keyClick(after, Qt::Key_Backtab, Qt::ShiftModifier);
    EXPECT_TRUE(box->hasFocus());
    EXPECT_EQ(box->text(), kLines);
}

// Opens the context menu over the box and lets `act` use it while it is up.
void WithContextMenu(ReadOnlyTextBox& box, const std::function<void(QMenu&)>& act) {
    bool shown = false;
    QTimer::singleShot(0, [&] {
        auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
        ASSERT_NE(menu, nullptr);
        shown = true;
        act(*menu);
        menu->close();
    });
    const QPoint point(10, 10);
    QContextMenuEvent event(QContextMenuEvent::Mouse, point, box.viewport()->mapToGlobal(point));
    QApplication::sendEvent(box.viewport(), &event);
    EXPECT_TRUE(shown);
}

QAction* Action(QMenu& menu, const QString& text) {
    for (QAction* action : menu.actions()) {
        if (action->text() == text) return action;
    }
    ADD_FAILURE() << "no menu item " << text.toStdString();
    return nullptr;
}

TEST_F(TextBoxTest, ContextMenuCopiesOnlyWithASelectionAndSelectsAll) {
    QApplication::clipboard()->setText("old");
    box.setText(kLines);
    WithContextMenu(box, [](QMenu& menu) {
        EXPECT_FALSE(Action(menu, "&Copy")->isEnabled());
        Action(menu, "Select All")->trigger();
    });
    EXPECT_EQ(box.selectedText(), "F0 41 10\r\nF7 00\r\nAB CD\r\nEF");
    WithContextMenu(box, [](QMenu& menu) {
        QAction* copy = Action(menu, "&Copy");
        EXPECT_TRUE(copy->isEnabled());
        copy->trigger();
    });
    EXPECT_EQ(QApplication::clipboard()->text(), "F0 41 10\r\nF7 00\r\nAB CD\r\nEF");
}

}  // namespace
}  // namespace lumidot::testing
