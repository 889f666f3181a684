// A multi-line text box the user can select and copy from but not type into. It gives back
// exactly the text it was given, CR LF line breaks included, and lays out only the rows on
// screen, so that megabytes of clipboard text show at once and scroll smoothly.
#pragma once

#include <QAbstractScrollArea>
#include <QBasicTimer>
#include <QElapsedTimer>
// Only for its wrap modes, so that forms designed for a plain text edit set them unchanged.
#include <QPlainTextEdit>
#include <optional>
#include <utility>
#include <vector>

#include "mainwindow/text_rows.h"

namespace lumidot {

class ReadOnlyTextBox : public QAbstractScrollArea {
    Q_OBJECT
public:
    explicit ReadOnlyTextBox(QWidget* parent = nullptr);
    ~ReadOnlyTextBox() override;

    // Replaces the text; the caret goes to the start and the view to the top.
    void setText(const QString& text);
    QString text() const { return rows_.text(); }
    // The text as shown: one LF between lines.
    QString toPlainText() const;
    // The selection with CR LF between its lines.
    QString selectedText() const;
    bool hasSelection() const { return caret_ != anchor_; }
    qsizetype caretPosition() const { return caret_; }
    qsizetype anchorPosition() const { return anchor_; }
    void selectAll();
    void setCaretToStart();
    // Puts the selection on the clipboard, with CR LF between its lines.
    void copy();

    // While deferred, setText keeps the text without asking for a repaint. Rows are laid
    // out only when painted, so a long run of writes costs nothing until deferring ends.
    void setDisplayDeferred(bool deferred);

    void setLineWrapMode(QPlainTextEdit::LineWrapMode mode);
    QPlainTextEdit::LineWrapMode lineWrapMode() const { return wrapMode_; }

signals:
    void textChanged();

protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void scrollContentsBy(int dx, int dy) override;
    void changeEvent(QEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void timerEvent(QTimerEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;

private:
    enum class Move {
        NextChar,
        PreviousChar,
        NextWord,
        PreviousWord,
        NextLine,
        PreviousLine,
        StartOfLine,
        EndOfLine,
        NextPage,
        PreviousPage,
        Start,
        End
    };

    // The caret movement a key asks for, and whether it selects.
    static std::optional<std::pair<Move, bool>> moveFor(const QKeyEvent& event);
    // Lays out what changed since the last time and sets the scroll bars to match.
    void ensureLayout();
    void updateScrollBars();
    void takeFont();
    // Rows that fit whole in the view when the view is scrolled down to its last row.
    int pageRows() const;
    qreal rowTop(qsizetype row);
    qsizetype rowAtY(qreal y);
    qsizetype positionAt(QPointF point);
    void paintRow(QPainter& painter, qsizetype row, qreal top);

    void moveCaret(qsizetype position, bool keepAnchor);
    void move(Move how, bool keepAnchor);
    void ensureCaretVisible();
    void restartBlinking();
    void stopBlinking();
    void copyToSelectionClipboard();
    void dragTo(QPointF point);

    TextRows rows_;
    qreal rowHeight_ = 0;
    qreal glyphHeight_ = 0;
    qreal ascent_ = 0;
    QPlainTextEdit::LineWrapMode wrapMode_ = QPlainTextEdit::WidgetWidth;
    bool deferred_ = false;
    qsizetype caret_ = 0;
    qsizetype anchor_ = 0;
    // Up and Down keep to this x (pixels from the row's start) across short rows.
    qreal wantedX_ = -1;

    QBasicTimer blink_;
    bool caretShown_ = false;
    bool dragging_ = false;
    // After a double click a drag selects whole words around this one.
    bool draggingWords_ = false;
    std::pair<qsizetype, qsizetype> firstWord_;
    // A press soon after a double click, close to it, selects the whole line.
    QElapsedTimer sinceDoubleClick_;
    QPointF doubleClickPoint_;
    QPointF dragPoint_;
    QBasicTimer autoScroll_;

    std::vector<TextRows::Cluster> clusters_;
};

}  // namespace lumidot
