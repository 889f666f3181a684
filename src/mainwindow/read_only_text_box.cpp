#include "mainwindow/read_only_text_box.h"

#include <QApplication>
#include <QClipboard>
#include <QFontMetricsF>
#include <QPaintEngine>
#include <QPaintEvent>
#include <QPainter>
#include <QScrollBar>
#include <QtMath>
#include <algorithm>
#include <climits>
#include <cmath>

namespace lumidot {
namespace {

// Space between the frame and the text, and the horizontal scroll step, both in pixels and
// both as a plain text edit has them, so that the box looks and scrolls as it always did.
constexpr qreal kMargin = 4;
constexpr int kHorizontalStep = 20;

int ClampToInt(qsizetype value) {
    return static_cast<int>(std::clamp<qsizetype>(value, 0, INT_MAX));
}

// The text with every line break written as CR LF, in one pass that copies whole lines.
QString WithCrLf(QStringView text) {
    QString result;
    result.reserve(text.size() + text.count(u'\n') + text.count(u'\r'));
    qsizetype lineStart = 0;
    for (qsizetype i = 0; i < text.size(); ++i) {
        const QChar c = text[i];
        if (c != u'\r' && c != u'\n') continue;
        result += text.mid(lineStart, i - lineStart);
        result += QStringLiteral("\r\n");
        if (c == u'\r' && i + 1 < text.size() && text[i + 1] == u'\n') ++i;
        lineStart = i + 1;
    }
    result += text.mid(lineStart);
    return result;
}

}  // namespace

ReadOnlyTextBox::ReadOnlyTextBox(QWidget* parent) : QAbstractScrollArea(parent) {
    setFocusPolicy(Qt::StrongFocus);
    viewport()->setCursor(Qt::IBeamCursor);
    verticalScrollBar()->setSingleStep(1);
    horizontalScrollBar()->setSingleStep(kHorizontalStep);
    takeFont();
}

ReadOnlyTextBox::~ReadOnlyTextBox() = default;

void ReadOnlyTextBox::setText(const QString& text) {
    rows_.setText(text);
    caret_ = anchor_ = 0;
    wantedX_ = -1;
    dragging_ = draggingWords_ = false;
    autoScroll_.stop();
    verticalScrollBar()->setValue(0);
    horizontalScrollBar()->setValue(0);
    restartBlinking();
    emit textChanged();
    if (!deferred_) viewport()->update();
}

void ReadOnlyTextBox::setDisplayDeferred(bool deferred) {
    deferred_ = deferred;
    if (!deferred_) viewport()->update();
}

QString ReadOnlyTextBox::toPlainText() const {
    QString shown = text();
    shown.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
    shown.replace(QLatin1Char('\r'), QLatin1Char('\n'));
    return shown;
}

QString ReadOnlyTextBox::selectedText() const {
    const qsizetype first = std::min(caret_, anchor_);
    return WithCrLf(QStringView(text()).mid(first, std::max(caret_, anchor_) - first));
}

void ReadOnlyTextBox::selectAll() {
    anchor_ = 0;
    caret_ = text().size();
    wantedX_ = -1;
    restartBlinking();
    viewport()->update();
    copyToSelectionClipboard();
}

void ReadOnlyTextBox::setCaretToStart() {
    moveCaret(0, false);
    ensureCaretVisible();
}

void ReadOnlyTextBox::copy() {
    if (hasSelection()) QGuiApplication::clipboard()->setText(selectedText());
}

void ReadOnlyTextBox::copyToSelectionClipboard() {
    QClipboard* clipboard = QGuiApplication::clipboard();
    if (hasSelection() && clipboard->supportsSelection()) {
        clipboard->setText(selectedText(), QClipboard::Selection);
    }
}

void ReadOnlyTextBox::setLineWrapMode(QPlainTextEdit::LineWrapMode mode) {
    wrapMode_ = mode;
    viewport()->update();
}

// --- layout and scrolling ------------------------------------------------------

void ReadOnlyTextBox::takeFont() {
    rows_.setFont(font());
    const QFontMetricsF metrics(font());
    ascent_ = metrics.ascent();
    // Rows are whole pixels apart, the font's height rounded up, as a text layout spaces
    // its lines.
    glyphHeight_ = metrics.height() + std::max<qreal>(0, metrics.leading());
    rowHeight_ = std::ceil(glyphHeight_);
    viewport()->update();
}

void ReadOnlyTextBox::ensureLayout() {
    const bool wraps = wrapMode_ != QPlainTextEdit::NoWrap;
    rows_.setWrapWidth(wraps ? viewport()->width() - 2 * kMargin : -1);
    updateScrollBars();
}

int ReadOnlyTextBox::pageRows() const {
    return std::max(1, static_cast<int>((viewport()->height() - 2 * kMargin - 1) / rowHeight_));
}

void ReadOnlyTextBox::updateScrollBars() {
    // The vertical bar counts rows: its last value shows the last row whole at the bottom.
    QScrollBar* vertical = verticalScrollBar();
    const int page = pageRows();
    vertical->setPageStep(page);
    vertical->setRange(0, ClampToInt(rows_.rowCount() - page));

    QScrollBar* horizontal = horizontalScrollBar();
    const int width = viewport()->width();
    qsizetype content = 0;
    if (wrapMode_ == QPlainTextEdit::NoWrap) {
        content = static_cast<qsizetype>(std::ceil(rows_.widestLine() + 2 * kMargin));
    }
    horizontal->setPageStep(width);
    horizontal->setRange(0, ClampToInt(content - width));
}

// At the very top the first row keeps the margin above it. Scrolled down, the top row
// starts at the top edge, or, when it continues a wrapped line, just below it, where a
// plain text edit puts it.
qreal ReadOnlyTextBox::rowTop(qsizetype row) {
    const int first = verticalScrollBar()->value();
    qreal top = kMargin;
    if (first > 0) {
        const qsizetype start = rows_.rowStart(first);
        top = start == rows_.lineStart(rows_.lineOf(start)) ? 0 : rowHeight_ - glyphHeight_;
    }
    return top + static_cast<qreal>(row - first) * rowHeight_;
}

qsizetype ReadOnlyTextBox::rowAtY(qreal y) {
    const qsizetype row = static_cast<qsizetype>(std::floor((y - rowTop(0)) / rowHeight_));
    return std::clamp<qsizetype>(row, 0, rows_.rowCount() - 1);
}

qsizetype ReadOnlyTextBox::positionAt(QPointF point) {
    const qsizetype row = rowAtY(point.y());
    return rows_.positionAt(row, point.x() - kMargin + horizontalScrollBar()->value());
}

void ReadOnlyTextBox::scrollContentsBy(int, int) {
    viewport()->update();
}

void ReadOnlyTextBox::resizeEvent(QResizeEvent* event) {
    QAbstractScrollArea::resizeEvent(event);
    ensureLayout();
}

void ReadOnlyTextBox::ensureCaretVisible() {
    ensureLayout();
    const qsizetype row = rows_.rowOf(caret_);
    QScrollBar* vertical = verticalScrollBar();
    qsizetype first = vertical->value();
    const qreal height = viewport()->height();
    const auto wholeRowsFrom = [&](qsizetype top) {
        return static_cast<qsizetype>((height - (top == 0 ? kMargin : 0)) / rowHeight_);
    };
    if (row < first) {
        first = row;
    } else if (row >= first + wholeRowsFrom(first)) {
        first = std::max<qsizetype>(0, row - std::max<qsizetype>(1, wholeRowsFrom(1)) + 1);
    }
    vertical->setValue(ClampToInt(first));

    QScrollBar* horizontal = horizontalScrollBar();
    const qreal x = rows_.xOf(row, caret_);
    const int width = viewport()->width();
    if (x < horizontal->value()) {
        horizontal->setValue(static_cast<int>(std::floor(x)));
    } else if (x + 2 * kMargin + 1 > horizontal->value() + width) {
        horizontal->setValue(static_cast<int>(std::ceil(x + 2 * kMargin + 1 - width)));
    }
}

// --- painting ----------------------------------------------------------------

void ReadOnlyTextBox::paintEvent(QPaintEvent* event) {
    const QSize size = viewport()->size();
    ensureLayout();
    // A scroll bar came or went and resized the view; the paint of the new size follows.
    if (viewport()->size() != size) return;
    QPainter painter(viewport());
    painter.setFont(font());
    const QRect area = event->rect();
    const qsizetype rows = rows_.rowCount();
    for (qsizetype row = verticalScrollBar()->value(); row < rows; ++row) {
        const qreal top = rowTop(row);
        if (top > area.bottom() + 1) break;
        if (top + rowHeight_ >= area.top()) paintRow(painter, row, top);
    }
}

void ReadOnlyTextBox::paintRow(QPainter& painter, qsizetype row, qreal top) {
    const QPalette& colours = palette();
    const QString& text = rows_.text();
    const qreal left = kMargin - horizontalScrollBar()->value();
    const int width = viewport()->width();
    const qreal baseline = top + ascent_;

    rows_.visibleClusters(row, -left, width - left, clusters_);
    // Plain ASCII goes out in runs; every other character is drawn alone at the place the
    // row's own measure gives it, so that caret, selection and glyphs always agree.
    const auto drawText = [&] {
        for (std::size_t i = 0; i < clusters_.size();) {
            const TextRows::Cluster& cluster = clusters_[i];
            std::size_t next = i + 1;
            if (cluster.simple) {
                while (next < clusters_.size() && clusters_[next].simple) ++next;
            }
            const TextRows::Cluster& last = clusters_[next - 1];
            const bool blank =
                !cluster.simple && (cluster.width == 0 || text[cluster.start] == u'\t');
            if (!blank) {
                painter.drawText(
                    QPointF(left + static_cast<qreal>(cluster.x) / TextRows::kUnit, baseline),
                    text.mid(cluster.start, last.start + last.length - cluster.start));
            }
            i = next;
        }
    };
    painter.setPen(colours.color(QPalette::Text));
    drawText();

    // The selection on this row. A line break it takes in shows as half a space; the
    // spaces a wrapped row hangs past its end show only as far as the text goes.
    const qsizetype start = rows_.rowStart(row);
    const qsizetype end = rows_.rowEnd(row);
    const qsizetype first = std::min(caret_, anchor_);
    const qsizetype last = std::max(caret_, anchor_);
    if (first < last && first <= end && last >= start) {
        qreal from = left + rows_.xOf(row, std::max(first, start));
        qreal to = 0;
        if (last <= end) {
            to = left + rows_.xOf(row, last);
        } else if (rows_.rowEndsLine(row)) {
            to = left + rows_.xOf(row, end) + rows_.spaceWidth() / 2;
        } else {
            to = left + rows_.xOf(row, rows_.rowTextEnd(row));
        }
        from = std::clamp<qreal>(from, -1, width + 1);
        to = std::clamp<qreal>(to, -1, width + 1);
        const QRect band(QPoint(qFloor(from), qRound(top)),
                         QPoint(qRound(to) - 1, qRound(top + rowHeight_) - 1));
        if (band.isValid()) {
            const QPalette::ColorGroup group = hasFocus() ? QPalette::Active : QPalette::Inactive;
            painter.fillRect(band, colours.color(group, QPalette::Highlight));
            painter.save();
            painter.setClipRect(band);
            painter.setPen(colours.color(group, QPalette::HighlightedText));
            drawText();
            painter.restore();
        }
    }

    if (caretShown_ && hasFocus() && rows_.rowOf(caret_) == row) {
        const qreal x = left + rows_.xOf(row, caret_);
        // Inverted, as a text layout draws it, so the caret shows on a selection too.
        painter.save();
        if (painter.paintEngine()->hasFeature(QPaintEngine::RasterOpModes)) {
            painter.setCompositionMode(QPainter::RasterOp_NotDestination);
        }
        painter.fillRect(QRectF(x, top, 1, glyphHeight_), colours.color(QPalette::Text));
        painter.restore();
    }
}

// --- caret -------------------------------------------------------------------

void ReadOnlyTextBox::moveCaret(qsizetype position, bool keepAnchor) {
    caret_ = position;
    if (!keepAnchor) anchor_ = position;
    restartBlinking();
    viewport()->update();
}

void ReadOnlyTextBox::restartBlinking() {
    if (!hasFocus()) return;
    caretShown_ = true;
    const int flash = QApplication::cursorFlashTime();
    if (flash > 0) {
        blink_.start(flash / 2, this);
    } else {
        blink_.stop();
    }
}

void ReadOnlyTextBox::stopBlinking() {
    blink_.stop();
    caretShown_ = false;
}

void ReadOnlyTextBox::focusInEvent(QFocusEvent* event) {
    QAbstractScrollArea::focusInEvent(event);
    restartBlinking();
    viewport()->update();
}

void ReadOnlyTextBox::focusOutEvent(QFocusEvent* event) {
    QAbstractScrollArea::focusOutEvent(event);
    stopBlinking();
    viewport()->update();
}

void ReadOnlyTextBox::timerEvent(QTimerEvent* event) {
    if (event->timerId() == blink_.timerId()) {
        caretShown_ = !caretShown_;
        viewport()->update();
    } else if (event->timerId() == autoScroll_.timerId()) {
        dragTo(dragPoint_);
    } else {
        QAbstractScrollArea::timerEvent(event);
    }
}

void ReadOnlyTextBox::changeEvent(QEvent* event) {
    QAbstractScrollArea::changeEvent(event);
    if (event->type() == QEvent::FontChange) {
        takeFont();
    } else if (event->type() == QEvent::PaletteChange ||
               event->type() == QEvent::ActivationChange) {
        viewport()->update();
    }
}

}  // namespace lumidot
