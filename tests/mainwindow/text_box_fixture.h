// A read-only text box shown on its own, with the font the windows give it, and ways to
// reach its rows and characters as a user would: with the keys and the pointer.
#pragma once

#include <gtest/gtest.h>

#include <QApplication>
#include <QFontMetricsF>
#include <QScrollBar>
#include <QTest>
#include <cmath>

#include "mainwindow/look.h"
#include "mainwindow/read_only_text_box.h"
#include "support/qt_printers.h"

namespace lumidot::testing {

// Pixels a plain text edit keeps between its frame and the text, and between rows.
constexpr int kTextMargin = 4;

class TextBoxTest : public ::testing::Test {
protected:
    void SetUp() override {
        box.setFont(TextBoxFont());
        box.setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
        box.resize(300, 400);
        box.show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&box));
    }

    qreal advance() const { return QFontMetricsF(box.font()).horizontalAdvance(QLatin1Char('x')); }
    int rowHeight() const {
        return static_cast<int>(std::ceil(QFontMetricsF(box.font()).height()));
    }

    // Leaves room for exactly `columns` letters on a row, plus `extra` pixels.
    void setColumns(int columns, int extra = 0, int height = 400) {
        const int text = static_cast<int>(std::ceil(columns * advance())) + extra;
        box.resize(text + 2 * kTextMargin + box.width() - box.viewport()->width(), height);
        ASSERT_EQ(box.viewport()->width(), text + 2 * kTextMargin);
    }

    // The rows as the user walks them with Down from the top: the text of each, line
    // breaks left out.
    QStringList rows() {
        QStringList result;
        QTest::keyClick(&box, Qt::Key_Home, Qt::ControlModifier);
        qsizetype start = box.caretPosition();
        for (;;) {
            QTest::keyClick(&box, Qt::Key_Down);
            const qsizetype next = box.caretPosition();
            const qsizetype end = next > start ? next : box.text().size();
            QString row = box.text().mid(start, end - start);
            while (row.endsWith(u'\n') || row.endsWith(u'\r')) row.chop(1);
            result << row;
            if (next <= start) return result;
            start = next;
        }
    }

    // A point over the left part of the character in `column` of the visible `row`.
    QPoint at(int row, qreal column) const {
        const int top = box.verticalScrollBar()->value() == 0 ? kTextMargin : 0;
        return QPoint(static_cast<int>(kTextMargin + column * advance() -
                                       box.horizontalScrollBar()->value()) +
                          1,
                      top + row * rowHeight() + rowHeight() / 2);
    }

    // Presses keys written as QKeySequence text, one combination after another:
    // "Shift+Right Ctrl+End".
    void press(const QString& keys) {
        for (const QString& each : keys.split(u' ')) QTest::keySequence(&box, QKeySequence(each));
    }

    // A hundred numbered lines, more than the box shows at once.
    static QString manyLines(const QString& lineBreak) {
        QStringList lines;
        for (int i = 0; i < 100; ++i) lines << QStringLiteral("line %1").arg(i);
        return lines.join(lineBreak);
    }

    ReadOnlyTextBox box;
};

}  // namespace lumidot::testing
