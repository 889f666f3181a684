#include "mainwindow/platform.h"

#include <QtGui/qguiapplication_platform.h>

#include <QApplication>
#include <QClipboard>
#include <QDialog>
#include <QFileDialog>
#include <QMessageBox>
#include <QPushButton>
#include <QThread>

#include "mainwindow/xcb_clipboard_reader.h"

namespace lumidot {

Prompts::Answer QtPrompts::showMessage(QWidget* parent, const QString& title, const QString& prompt,
                                       Icon icon, Buttons buttons, Answer defaultAnswer) {
    QMessageBox box(parent);
    box.setWindowTitle(title);
    // The prompts are written with CR LF between lines; a label wants plain line feeds.
    QString shown = prompt;
    shown.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
    box.setText(shown);
    switch (icon) {
        case Icon::Information:
            box.setIcon(QMessageBox::Information);
            break;
        case Icon::Question:
            box.setIcon(QMessageBox::Question);
            break;
        case Icon::Exclamation:
            box.setIcon(QMessageBox::Warning);
            break;
        case Icon::Critical:
            box.setIcon(QMessageBox::Critical);
            break;
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

int QtPrompts::runModal(QDialog& dialog) {
    return dialog.exec();
}

bool SystemClipboard::getText(QString& text) {
    QClipboard* clipboard = QGuiApplication::clipboard();
    if (clipboard == nullptr) return false;
    // Only on the X11 platform itself: the offscreen platform may offer an X11 interface too
    // (for its drawing), while its clipboard lives in this process.
    const auto* x11 = QGuiApplication::platformName() == QLatin1String("xcb")
                          ? qGuiApp->nativeInterface<QNativeInterface::QX11Application>()
                          : nullptr;
    if (x11 != nullptr) {
        const XcbClipboardRead read = ReadXcbClipboard(*x11);
        if (read.outcome == XcbClipboardOutcome::Failed) return false;
        if (read.outcome == XcbClipboardOutcome::Text) {
            text = read.text;
            return true;
        }
        // Our own copy: Qt answers it from memory without asking the X server.
    }
    // On other platforms (Wayland among them) Qt's own reader is used as it is.
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
    // back at once, so what counts is whether our text is there now. While we own it the
    // read is answered locally; if another program took it, the read is bounded like any.
    QString readBack;
    return getText(readBack) && readBack == text;
}

void ThreadSleeper::sleepMs(int milliseconds) {
    QThread::msleep(milliseconds);
}

QString QtFileDialogs::askPath(QWidget* parent, const FileQuestion& question) {
    const bool save = question.kind == FileQuestion::Kind::Save;
    QFileDialog dialog(parent, question.title);
    dialog.setAcceptMode(save ? QFileDialog::AcceptSave : QFileDialog::AcceptOpen);
    dialog.setFileMode(save ? QFileDialog::AnyFile : QFileDialog::ExistingFile);
    // Replacing a file is confirmed by the program itself, in words that fit the case.
    dialog.setOption(QFileDialog::DontConfirmOverwrite, true);
    dialog.setNameFilters(question.filters);
    dialog.setDefaultSuffix(question.defaultSuffix);
    const QFileInfo start(question.start);
    if (save && !start.isDir()) {
        dialog.setDirectory(start.absolutePath());
        dialog.selectFile(start.fileName());
    } else if (!question.start.isEmpty()) {
        dialog.setDirectory(question.start);
    }
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty()) return {};
    return dialog.selectedFiles().constFirst();
}

}  // namespace lumidot
