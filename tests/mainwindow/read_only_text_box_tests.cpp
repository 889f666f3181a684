// The read-only text box's rows and looks: lines split at every kind of line break, rows
// wrapped as a plain text edit wraps them, the text kept exactly, the same pixels as a
// plain text edit, and megabytes of text that can still be shown, walked to the end,
// dragged over and selected.
#include <QDir>
#include <QPlainTextEdit>
#include <QTextLayout>
#include <QTextOption>
#include <array>

#include "mainwindow/text_box_fixture.h"

namespace lumidot::testing {
namespace {

struct WrapRow {
    const char* name;
    QString text;
    int columns;
    int extraPixels;
    QStringList rows;
};

class WrapTest : public TextBoxTest, public ::testing::WithParamInterface<WrapRow> {};

TEST_P(WrapTest, RowsBreakAfterSpacesAndInsideWordsLongerThanARow) {
    const WrapRow& row = GetParam();
    setColumns(row.columns, row.extraPixels);
    box.setText(row.text);
    EXPECT_EQ(rows(), row.rows);
    EXPECT_EQ(box.horizontalScrollBar()->maximum(), 0);
}

INSTANTIATE_TEST_SUITE_P(
    Rows, WrapTest,
    ::testing::Values(
        WrapRow{"ShortLine", "abc def", 10, 0, {"abc def"}},
        WrapRow{"ExactlyTheWidth", "abcdefghij", 10, 0, {"abcdefghij"}},
        WrapRow{"OnePixelShort", "abcdefghij", 10, -1, {"abcdefghi", "j"}},
        WrapRow{"WordMovesDown", "abc defghij", 10, 0, {"abc ", "defghij"}},
        WrapRow{"WordLongerThanARow",
                "ab cdefghijklmnopqrstuvw x",
                10,
                0,
                {"ab ", "cdefghijkl", "mnopqrstuv", "w x"}},
        WrapRow{"SpacesHangPastTheEdge", "abcdefghij   klm", 10, 0, {"abcdefghij   ", "klm"}},
        WrapRow{"SpaceOnTheEdge", "abcdefghi jk", 10, 0, {"abcdefghi ", "jk"}},
        WrapRow{"EveryLineBreak", "ab\r\ncd\nef\rgh", 10, 0, {"ab", "cd", "ef", "gh"}},
        WrapRow{"EmptyLines", "ab\r\n\r\n\ncd", 10, 0, {"ab", "", "", "cd"}},
        WrapRow{"TrailingLineBreak", "ab\r\n", 10, 0, {"ab", ""}},
        WrapRow{"OnlyLineBreaks", "\r\n\r", 10, 0, {"", "", ""}},
        WrapRow{"CrBeforeCrLfAndLfBeforeCr", "a\r\r\nb\n\rc", 10, 0, {"a", "", "b", "", "c"}},
        WrapRow{"EmptyText", "", 10, 0, {""}},
        // Tab stops every 80 pixels from the start of each row; a tab hangs like a space.
        WrapRow{"Tabs", "a\tb\tc\td", 20, 0, {"a\tb\t", "c\td"}}),
    [](const auto& info) { return std::string(info.param.name); });

// Qt's own text layout, set up as a plain text edit sets it up, as the reference.
QStringList QtRows(const QString& line, const QFont& font, qreal width) {
    QTextLayout layout(line, font);
    QTextOption option;
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    option.setTabStopDistance(80);
    layout.setTextOption(option);
    QStringList rows;
    layout.beginLayout();
    for (QTextLine row = layout.createLine(); row.isValid(); row = layout.createLine()) {
        row.setLineWidth(width);
        rows << line.mid(row.textStart(), row.textLength());
    }
    layout.endLayout();
    return rows;
}

using LayoutRow = std::pair<QString, int>;

class SameRowsAsQtTest : public TextBoxTest, public ::testing::WithParamInterface<LayoutRow> {};

TEST_P(SameRowsAsQtTest, IdeographsEmojiMarksAndTabsWrapAsInAPlainTextEdit) {
    const auto& [text, columns] = GetParam();
    // Without a glyph wider than the letters the wide cases would prove nothing.
    ASSERT_GT(QFontMetricsF(box.font()).horizontalAdvance(QStringLiteral("😀")), 1.5 * advance())
        << "no font with a wide emoji is installed (fonts-dejavu-core)";
    setColumns(columns);
    box.setText(text);
    EXPECT_EQ(rows(), QtRows(text, box.font(), box.viewport()->width() - 2 * kTextMargin));
}

const QString kMessages = QStringLiteral(
    "F0 41 10 45 12 10 00 00 48 65 6C 6C 6F 7C F7 F0 41 10 45 12 10 20 00 05 4B F7 "
    "F0 41 10 45 12 10 00 00 61 62 63 4A F7");

INSTANTIATE_TEST_SUITE_P(
    Rows, SameRowsAsQtTest,
    ::testing::Values(
        LayoutRow{kMessages, 20}, LayoutRow{kMessages, 37}, LayoutRow{kMessages, 80},
        LayoutRow{QString(kMessages).remove(' '), 7}, LayoutRow{"a  bb   ccc    dddd     eeeee", 6},
        LayoutRow{"😀😀 ab😀cd 😀😀😀😀😀😀😀😀😀😀 x", 5}, LayoutRow{"漢字かな 漢字漢字漢字漢字漢字漢字", 4},
        LayoutRow{"漢字。漢字、かなっ「漢字」です。ab漢字(漢字)cd", 3},
        LayoutRow{"漢字。漢字、かなっ「漢字」です。ab漢字(漢字)cd", 4},
        LayoutRow{"한국어 문장입니다한국어문장입니다", 5},
        LayoutRow{"abcd\u0301efgh漢字ijkl mnop\u0301\u0302 qrst", 3},
        LayoutRow{"x\ty\tzzzzzzzzzzzzzzz\tw", 15}, LayoutRow{"x\ty\tzzzzzzzzzzzzzzz\tw", 30},
        LayoutRow{"e\u0301te\u0301 cafe\u0301 ae\u0301\u0301\u0301bcde", 4}));

TEST_F(TextBoxTest, WithoutWrappingLinesStayWholeAndTheScrollBarCoversTheLongest) {
    box.setLineWrapMode(QPlainTextEdit::NoWrap);
    setColumns(10);
    box.setText("short\r\nabc def ghi jkl mno pqr stu\nmiddle length");
    EXPECT_EQ(rows(), QStringList({"short", "abc def ghi jkl mno pqr stu", "middle length"}));
    const int content = static_cast<int>(std::ceil(27 * advance())) + 2 * kTextMargin;
    EXPECT_EQ(box.horizontalScrollBar()->maximum(), content - box.viewport()->width());
    // The end of the longest line scrolls into view with the caret.
    QTest::keyClick(&box, Qt::Key_Home, Qt::ControlModifier);
    QTest::keyClick(&box, Qt::Key_Down);
    QTest::keyClick(&box, Qt::Key_End);
    EXPECT_EQ(box.horizontalScrollBar()->value(), box.horizontalScrollBar()->maximum());
}

class RoundTripTest : public TextBoxTest, public ::testing::WithParamInterface<QString> {};

TEST_P(RoundTripTest, GivesBackExactlyTheTextAndSelectsItWithCrLf) {
    const QString& text = GetParam();
    box.setText(text);
    EXPECT_EQ(box.text(), text);
    QString shown = text;
    shown.replace("\r\n", "\n").replace('\r', '\n');
    EXPECT_EQ(box.toPlainText(), shown);
    box.selectAll();
    EXPECT_EQ(box.selectedText(), QString(shown).replace('\n', "\r\n"));
}

INSTANTIATE_TEST_SUITE_P(Texts, RoundTripTest,
                         ::testing::Values(QString(), QString("F0 F7"), QString("a\r\nb"),
                                           QString("a\rb\nc\r\n"), QString("\r\n\r\n"),
                                           QString("\n\r"), QString("tab\there"),
                                           QString(QChar(0)) + "nul", QString(QChar(0xD800)) + "x",
                                           QString("😀 é 漢")));

// The box and a plain text edit with the same settings and text, painted side by side.
struct LookRow {
    const char* name;
    QString text;
    bool wrap;
    QSize size;
    int selectionStart;
    int selectionEnd;
    int verticalScroll;
    int horizontalScroll;
};

class LookTest : public TextBoxTest, public ::testing::WithParamInterface<LookRow> {};

TEST_P(LookTest, PaintsTheSamePixelsAsAPlainTextEdit) {
    const LookRow& row = GetParam();
    QPlainTextEdit edit;
    const std::array<QAbstractScrollArea*, 2> areas{&box, &edit};
    for (QAbstractScrollArea* area : areas) {
        area->setFont(TextBoxFont());
        QPalette colours = area->palette();
        colours.setColor(QPalette::Base, colours.color(QPalette::Button));
        area->setPalette(colours);
        area->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
        area->setHorizontalScrollBarPolicy(row.wrap ? Qt::ScrollBarAsNeeded
                                                    : Qt::ScrollBarAlwaysOn);
        area->resize(row.size);
        area->show();
    }
    const auto mode = row.wrap ? QPlainTextEdit::WidgetWidth : QPlainTextEdit::NoWrap;
    box.setLineWrapMode(mode);
    edit.setLineWrapMode(mode);
    edit.setReadOnly(true);
    box.setText(row.text);
    edit.setPlainText(row.text);
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&edit));
    QTest::keyClick(&box, Qt::Key_Home, Qt::ControlModifier);
    while (box.caretPosition() < row.selectionStart) QTest::keyClick(&box, Qt::Key_Right);
    while (box.caretPosition() < row.selectionEnd) {
        QTest::keyClick(&box, Qt::Key_Right, Qt::ShiftModifier);
    }
    QTextCursor cursor = edit.textCursor();
    cursor.setPosition(row.selectionStart);
    cursor.setPosition(row.selectionEnd, QTextCursor::KeepAnchor);
    edit.setTextCursor(cursor);
    for (QAbstractScrollArea* area : areas) {
        area->grab();  // lays both out, so that the scroll bars have their ranges
        area->verticalScrollBar()->setValue(row.verticalScroll);
        area->horizontalScrollBar()->setValue(row.horizontalScroll);
    }
    // Neither has the focus: no caret, and both show the selection in the inactive colours.
    box.clearFocus();
    edit.clearFocus();
    const QImage ours = box.grab().toImage();
    const QImage theirs = edit.grab().toImage();
    if (ours != theirs) {
        const QString base = QDir::temp().filePath(QStringLiteral("look-%1").arg(row.name));
        ours.save(base + "-box.png");
        theirs.save(base + "-plain-text-edit.png");
        ADD_FAILURE() << "the pictures differ; see " << base.toStdString() << "-*.png";
    }
}

INSTANTIATE_TEST_SUITE_P(
    Looks, LookTest,
    ::testing::Values(
        LookRow{"TwoMessagesInThePane", kMessages.left(44) + "\n" + kMessages.left(26), true,
                QSize(569, 57), 0, 0, 0, 0},
        LookRow{"WrappedAndSelected", kMessages + "\n" + kMessages, true, QSize(569, 100), 3, 130,
                0, 0},
        LookRow{"ScrolledDownInAWrappedLine", kMessages + kMessages, true, QSize(569, 57), 0, 0, 1,
                0},
        LookRow{"ResultsScrolledBothWays",
                " #1. Display text: abc\n #2. Graphic: Store page 3\n #3. (No SysEx)\n" +
                    kMessages + "\n\n\nlast",
                false, QSize(300, 80), 5, 40, 2, 37},
        LookRow{"SelectionTakesInLineBreaks", " #1. Display text: abc\n #2. Graphic\n\n", false,
                QSize(681, 161), 0, 37, 0, 0},
        LookRow{"Tabs", "a\tbc\tdef\tg\n\tx", false, QSize(400, 60), 2, 9, 0, 0}),
    [](const auto& info) { return std::string(info.param.name); });

// Clipboard-sized text: ten megabytes on one line, or hundreds of thousands of lines.
// The text is `piece` repeated to `size`, built only by the test that uses it.
struct LargeRow {
    const char* name;
    QString piece;
    qsizetype size;
    bool wrap;
};

QString Repeated(const QString& piece, qsizetype size) {
    QString text;
    text.reserve(size);
    while (text.size() + piece.size() <= size) text += piece;
    return text;
}

class LargeTextTest : public TextBoxTest, public ::testing::WithParamInterface<LargeRow> {};

TEST_P(LargeTextTest, ShowsScrollsToTheEndAndSelects) {
    const LargeRow& row = GetParam();
    const QString text = Repeated(row.piece, row.size);
    // The output pane's size and wrapping, or the results text without wrapping.
    box.setLineWrapMode(row.wrap ? QPlainTextEdit::WidgetWidth : QPlainTextEdit::NoWrap);
    box.resize(569, 57);
    box.setText(text);
    box.grab();

    QTest::keyClick(&box, Qt::Key_End, Qt::ControlModifier);
    EXPECT_EQ(box.caretPosition(), text.size());
    // The last row shows whole, at the right end of the longest line.
    const QScrollBar& vertical = *box.verticalScrollBar();
    EXPECT_GE(vertical.value() + box.viewport()->height() / rowHeight(),
              vertical.maximum() + vertical.pageStep());
    EXPECT_EQ(box.horizontalScrollBar()->value(), box.horizontalScrollBar()->maximum());
    box.grab();

    // A drag from the top of the view to its end, and back up by keys.
    const qsizetype end = box.text().size();
    QTest::mousePress(box.viewport(), Qt::LeftButton, {}, QPoint(2, 2));
    QTest::mouseMove(box.viewport(),
                     QPoint(box.viewport()->width() - 2, box.viewport()->height() - 2));
    QTest::mouseRelease(box.viewport(), Qt::LeftButton, {},
                        QPoint(box.viewport()->width() - 2, box.viewport()->height() - 2));
    // Line breaks in these texts are all CR LF already, so selections read back unchanged.
    const qsizetype from = std::min(box.caretPosition(), box.anchorPosition());
    const qsizetype to = std::max(box.caretPosition(), box.anchorPosition());
    EXPECT_GT(from, end - 2000);
    EXPECT_EQ(to, end);
    EXPECT_EQ(box.selectedText(), text.mid(from, to - from));
    QTest::keyClick(&box, Qt::Key_Up, Qt::ShiftModifier);
    QTest::keyClick(&box, Qt::Key_Home, Qt::ShiftModifier | Qt::ControlModifier);
    EXPECT_EQ(box.caretPosition(), 0);
    EXPECT_EQ(box.verticalScrollBar()->value(), 0);
    EXPECT_EQ(box.horizontalScrollBar()->value(), 0);
    EXPECT_EQ(box.selectedText(), text.left(box.anchorPosition()));
    box.grab();

    box.selectAll();
    EXPECT_EQ(box.selectedText().size(), text.size());
    EXPECT_EQ(box.text(), text);
    // Beside its index the box holds the very string it was given, never a copy.
    EXPECT_EQ(box.text().constData(), text.constData());
}

const QString kMessage = QStringLiteral("F0 41 10 45 12 10 00 00 48 65 6C 6C 6F 7C F7");
const qsizetype kTenMegabytes = 10 * 1000 * 1000;

INSTANTIATE_TEST_SUITE_P(
    Large, LargeTextTest,
    ::testing::Values(LargeRow{"TenMegabytesWithoutSpaces", "F041104512", kTenMegabytes, true},
                      LargeRow{"TenMegabytesSpaced", kMessage + ' ', kTenMegabytes, true},
                      LargeRow{"TenMegabytesOnOneLineUnwrapped", "F0 41 ", kTenMegabytes, false},
                      LargeRow{"TwoHundredThousandLines", kMessage + "\r\n", 200000 * 47, true},
                      LargeRow{"TwoHundredThousandLinesUnwrapped", kMessage + "\r\n", 200000 * 47,
                               false}),
    [](const auto& info) { return std::string(info.param.name); });

}  // namespace
}  // namespace lumidot::testing
