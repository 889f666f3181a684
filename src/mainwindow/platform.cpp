#include "mainwindow/platform.h"

#include <QApplication>
#include <QClipboard>
#include <QDialog>
#include <QMessageBox>
#include <QPushButton>
#include <QThread>

namespace lumidot {

Prompts::Answer QtPrompts::showMessage(QWidget* parent, const QString& title,
                                       const QString& prompt, Icon icon, Buttons buttons,
                                       Answer defaultAnswer) {
    QMessageBox box(parent);
    box.setWindowTitle(title);
    // The prompts are written with CR LF between lines; a label wants plain line feeds.
    QString shown = prompt;
    shown.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
    box.setText(shown);
    switch (icon) {
        case Icon::Information: box.setIcon(QMessageBox::Information); break;
        case Icon::Question: box.setIcon(QMessageBox::Question); break;
        case Icon::Exclamation: box.setIcon(QMessageBox::Warning); break;
        case Icon::Critical: box.setIcon(QMessageBox::Critical); break;
    }
    if (buttons == Buttons::YesNo) {
        box.setStandardButtons(QMessageBox::Yes | QMessageBox::No);
        box.setDefaultButton(defaultAnswer == Answer::No ? QMessageBox::No : QMessageBox::Yes);
        box.setEscapeButton(QMessageBox::No);
        return box.exec() == QMessageBox::Yes ? Answer::Yes : Answer::No;
    }
    if (buttons == Buttons::ReadOnlyOrQuit) {
        QPushButton* readOnly =
            box.addButton(QStringLiteral("Open &Read-Only"), QMessageBox::AcceptRole);
        QPushButton* quit = box.addButton(QStringLiteral("&Quit"), QMessageBox::RejectRole);
        box.setDefaultButton(defaultAnswer == Answer::Quit ? quit : readOnly);
        box.setEscapeButton(quit);
        box.exec();
        return box.clickedButton() == readOnly ? Answer::ReadOnly : Answer::Quit;
    }
    box.setStandardButtons(QMessageBox::Ok);
    box.exec();
    return Answer::Ok;
}

int QtPrompts::runModal(QDialog& dialog) { return dialog.exec(); }

bool SystemClipboard::getText(QString& text) {
    QClipboard* clipboard = QGuiApplication::clipboard();
    if (clipboard == nullptr) return false;
    text = clipboard->text(QClipboard::Clipboard);
    return true;
}

bool SystemClipboard::clear() {
    QClipboard* clipboard = QGuiApplication::clipboard();
    if (clipboard == nullptr) return false;
    clipboard->clear(QClipboard::Clipboard);
    return true;
}

bool SystemClipboard::setText(const QString& text) {
    QClipboard* clipboard = QGuiApplication::clipboard();
    if (clipboard == nullptr) return false;
    clipboard->setText(text, QClipboard::Clipboard);
    // Qt reports no failure of its own; another program may have taken the clipboard
    // back at once, so what counts is whether our text is there now.
    return clipboard->text(QClipboard::Clipboard) == text;
}

void ThreadSleeper::sleepMs(int milliseconds) { QThread::msleep(milliseconds); }

}  // namespace lumidot
