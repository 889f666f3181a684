// The read-only text box's keys, mouse and context menu: the caret moves and selects as in
// a plain text edit, and nothing the user types changes the text.
#include <QApplication>
#include <QKeyEvent>
#include <QMenu>
#include <QMouseEvent>
#include <QScrollBar>
#include <QWheelEvent>
#include <algorithm>
#include <optional>

#include "mainwindow/read_only_text_box.h"

namespace lumidot {

std::optional<std::pair<ReadOnlyTextBox::Move, bool>> ReadOnlyTextBox::moveFor(
    const QKeyEvent& event) {
    using enum Move;
    static const struct {
        QKeySequence::StandardKey moveKey;
        QKeySequence::StandardKey selectKey;
        Move move;
    } kKeys[] = {
        {QKeySequence::MoveToNextChar, QKeySequence::SelectNextChar, NextChar},
        {QKeySequence::MoveToPreviousChar, QKeySequence::SelectPreviousChar, PreviousChar},
        {QKeySequence::MoveToNextWord, QKeySequence::SelectNextWord, NextWord},
        {QKeySequence::MoveToPreviousWord, QKeySequence::SelectPreviousWord, PreviousWord},
        {QKeySequence::MoveToNextLine, QKeySequence::SelectNextLine, NextLine},
        {QKeySequence::MoveToPreviousLine, QKeySequence::SelectPreviousLine, PreviousLine},
        {QKeySequence::MoveToStartOfLine, QKeySequence::SelectStartOfLine, StartOfLine},
        {QKeySequence::MoveToEndOfLine, QKeySequence::SelectEndOfLine, EndOfLine},
        {QKeySequence::MoveToNextPage, QKeySequence::SelectNextPage, NextPage},
        {QKeySequence::MoveToPreviousPage, QKeySequence::SelectPreviousPage, PreviousPage},
        {QKeySequence::MoveToStartOfDocument, QKeySequence::SelectStartOfDocument, Start},
        {QKeySequence::MoveToEndOfDocument, QKeySequence::SelectEndOfDocument, End},
    };
    for (const auto& key : kKeys) {
        if (event.matches(key.moveKey)) return std::pair{key.move, false};
        if (event.matches(key.selectKey)) return std::pair{key.move, true};
    }
    return std::nullopt;
}

void ReadOnlyTextBox::keyPressEvent(QKeyEvent* event) {
    if (event->matches(QKeySequence::Copy)) {
        copy();
    } else if (event->matches(QKeySequence::SelectAll)) {
        selectAll();
    } else if (const auto found = moveFor(*event)) {
        move(found->first, found->second);
    } else {
        // Typing, pasting, Enter and the rest belong to the window.
        event->ignore();
    }
}

bool ReadOnlyTextBox::event(QEvent* event) {
    // The box's own keys come before any shortcut of the window, as in a text edit.
    if (event->type() == QEvent::ShortcutOverride) {
        const auto& key = static_cast<const QKeyEvent&>(*event);
        if (key.matches(QKeySequence::Copy) || key.matches(QKeySequence::SelectAll) ||
            moveFor(key)) {
            event->accept();
            return true;
        }
    }
    return QAbstractScrollArea::event(event);
}

void ReadOnlyTextBox::move(Move how, bool keepAnchor) {
    ensureLayout();
    const qsizetype row = rows_.rowOf(caret_);
    const qsizetype rows = rows_.rowCount();
    qsizetype to = caret_;
    bool vertical = false;
    switch (how) {
        case Move::PreviousChar:
            to = !keepAnchor && hasSelection() ? std::min(caret_, anchor_)
                                               : rows_.previousPosition(caret_);
            break;
        case Move::NextChar:
            to = !keepAnchor && hasSelection() ? std::max(caret_, anchor_)
                                               : rows_.nextPosition(caret_);
            break;
        case Move::PreviousWord:
            to = rows_.previousWordStart(caret_);
            break;
        case Move::NextWord:
            to = rows_.nextWordStart(caret_);
            break;
        case Move::StartOfLine:
            to = rows_.rowStart(row);
            break;
        case Move::EndOfLine:
            to = rows_.rowCaretEnd(row);
            break;
        case Move::Start:
            to = 0;
            break;
        case Move::End:
            to = text().size();
            break;
        case Move::PreviousLine:
        case Move::NextLine:
        case Move::PreviousPage:
        case Move::NextPage: {
            vertical = true;
            const bool page = how == Move::PreviousPage || how == Move::NextPage;
            const bool up = how == Move::PreviousLine || how == Move::PreviousPage;
            const qsizetype step = page ? pageRows() : 1;
            if (wantedX_ < 0) wantedX_ = rows_.xOf(row, caret_);
            qsizetype target = up ? row - step : row + step;
            if (target < 0 || target >= rows) {
                // Past the first or last row only a selection moves on, to the very end.
                if (!page && !keepAnchor) return;
                target = std::clamp<qsizetype>(target, 0, rows - 1);
                to = page ? rows_.positionAt(target, wantedX_) : up ? 0 : text().size();
            } else {
                to = rows_.positionAt(target, wantedX_);
            }
            if (page) {
                QScrollBar* bar = verticalScrollBar();
                bar->setValue(bar->value() + static_cast<int>(up ? -step : step));
            }
            break;
        }
    }
    if (!vertical) wantedX_ = -1;
    moveCaret(to, keepAnchor);
    ensureCaretVisible();
    if (keepAnchor) copyToSelectionClipboard();
}

void ReadOnlyTextBox::mousePressEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton) return;
    ensureLayout();
    wantedX_ = -1;
    draggingWords_ = false;
    const bool tripleClick = sinceDoubleClick_.isValid() &&
                             sinceDoubleClick_.elapsed() < QApplication::doubleClickInterval() &&
                             (event->position() - doubleClickPoint_).manhattanLength() <
                                 QApplication::startDragDistance();
    sinceDoubleClick_.invalidate();
    if (tripleClick) {
        // The whole line with its line break, as a plain text edit selects it.
        const qsizetype line = rows_.lineOf(caret_);
        anchor_ = rows_.lineStart(line);
        moveCaret(rows_.nextPosition(rows_.lineEnd(line)), true);
        dragging_ = false;
        return;
    }
    moveCaret(positionAt(event->position()), event->modifiers() & Qt::ShiftModifier);
    dragging_ = true;
    ensureCaretVisible();
}

void ReadOnlyTextBox::mouseDoubleClickEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton) return;
    ensureLayout();
    firstWord_ = rows_.wordAt(positionAt(event->position()));
    anchor_ = firstWord_.first;
    moveCaret(firstWord_.second, true);
    wantedX_ = -1;
    dragging_ = draggingWords_ = true;
    sinceDoubleClick_.start();
    doubleClickPoint_ = event->position();
}

void ReadOnlyTextBox::wheelEvent(QWheelEvent* event) {
    // A plain text edit zooms on Ctrl+wheel when read-only, which does nothing to a font
    // sized in pixels, as the windows size it; the view neither zooms nor scrolls then.
    if (event->modifiers() & Qt::ControlModifier) return;
    QAbstractScrollArea::wheelEvent(event);
}

void ReadOnlyTextBox::mouseMoveEvent(QMouseEvent* event) {
    if (!dragging_ || !(event->buttons() & Qt::LeftButton)) return;
    dragPoint_ = event->position();
    // Outside the view the drag goes on scrolling while the pointer stays still.
    if (viewport()->rect().contains(dragPoint_.toPoint())) {
        autoScroll_.stop();
    } else if (!autoScroll_.isActive()) {
        autoScroll_.start(50, this);
    }
    dragTo(dragPoint_);
}

void ReadOnlyTextBox::dragTo(QPointF point) {
    ensureLayout();
    const qsizetype position = positionAt(point);
    if (draggingWords_) {
        const auto word = rows_.wordAt(position);
        if (position < firstWord_.first) {
            anchor_ = firstWord_.second;
            moveCaret(std::min(word.first, position), true);
        } else {
            anchor_ = firstWord_.first;
            moveCaret(std::max({word.second, position, firstWord_.second}), true);
        }
    } else {
        moveCaret(position, true);
    }
    ensureCaretVisible();
}

void ReadOnlyTextBox::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton || !dragging_) return;
    dragging_ = draggingWords_ = false;
    autoScroll_.stop();
    copyToSelectionClipboard();
}

void ReadOnlyTextBox::contextMenuEvent(QContextMenuEvent* event) {
    QMenu menu(this);
    QAction* copyAction = menu.addAction(tr("&Copy"), this, &ReadOnlyTextBox::copy);
    copyAction->setShortcut(QKeySequence::Copy);
    copyAction->setEnabled(hasSelection());
    menu.addSeparator();
    QAction* all = menu.addAction(tr("Select All"), this, &ReadOnlyTextBox::selectAll);
    all->setShortcut(QKeySequence::SelectAll);
    all->setEnabled(!text().isEmpty());
    menu.exec(event->globalPos());
}

}  // namespace lumidot
