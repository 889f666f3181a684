#include "mainwindow/read_only_text_box.h"

#include <QTextCursor>

namespace lumidot {

ReadOnlyTextBox::ReadOnlyTextBox(QWidget* parent) : QPlainTextEdit(parent) {
    setReadOnly(true);
    // Read-only still lets the keyboard move the caret and select, and lets the user copy.
    setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    setFocusPolicy(Qt::StrongFocus);
}

void ReadOnlyTextBox::setText(const QString& text) {
    text_ = text;
    if (deferred_) {
        stale_ = true;
        return;
    }
    display();
}

void ReadOnlyTextBox::setDisplayDeferred(bool deferred) {
    deferred_ = deferred;
    if (!deferred_ && stale_) display();
}

void ReadOnlyTextBox::display() {
    stale_ = false;
    QString shown = text_;
    shown.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
    shown.replace(QLatin1Char('\r'), QLatin1Char('\n'));
    setPlainText(shown);
}

QString ReadOnlyTextBox::selectedText() const {
    QString selected = textCursor().selectedText();
    selected.replace(QChar(QChar::ParagraphSeparator), QStringLiteral("\r\n"));
    selected.replace(QChar(QChar::LineSeparator), QStringLiteral("\r\n"));
    return selected;
}

void ReadOnlyTextBox::selectAll() { QPlainTextEdit::selectAll(); }

void ReadOnlyTextBox::setCaretToStart() {
    QTextCursor cursor = textCursor();
    cursor.movePosition(QTextCursor::Start);
    setTextCursor(cursor);
}

}  // namespace lumidot
