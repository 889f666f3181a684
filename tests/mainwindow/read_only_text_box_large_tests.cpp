// Clipboard-sized text in the read-only text box: ten megabytes on one line, or hundreds
// of thousands of lines, can be shown, walked to the end, dragged over and selected.
#include <QPlainTextEdit>

#include "mainwindow/text_box_fixture.h"

namespace lumidot::testing {
namespace {

// The text is `piece` repeated to `size`, built only by the test that uses it.
struct LargeRow {
    const char* name;
    QString piece;
    qsizetype size;
    bool wrap;
};

void PrintTo(const LargeRow& row, std::ostream* out) {
    *out << row.name;
}

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
