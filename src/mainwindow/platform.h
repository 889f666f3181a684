// The narrow seams between the program and what tests cannot drive for real: message
// boxes and modal dialogs, file dialogs, the system clipboard, and the pause between
// clipboard attempts.
#pragma once

#include <QString>

class QDialog;
class QWidget;

namespace lumidot {

class Prompts {
public:
    enum class Icon { Information, Question, Exclamation, Critical };
    // ReadOnlyOrQuit: "Open Read-Only" and "Quit", for a second copy of the program.
    enum class Buttons { Ok, YesNo, ReadOnlyOrQuit };
    enum class Answer { Ok, Yes, No, ReadOnly, Quit };

    virtual ~Prompts() = default;
    // Shows a message box owned by parent and returns the button pressed.
    virtual Answer showMessage(QWidget* parent, const QString& title, const QString& prompt,
                               Icon icon, Buttons buttons, Answer defaultAnswer) = 0;
    // Runs a dialog modally and returns when it is hidden.
    virtual int runModal(QDialog& dialog) = 0;
};

// The system clipboard as text. Each call reports whether it succeeded.
class Clipboard {
public:
    virtual ~Clipboard() = default;
    virtual bool getText(QString& text) = 0;
    virtual bool clear() = 0;
    virtual bool setText(const QString& text) = 0;
};

class Sleeper {
public:
    virtual ~Sleeper() = default;
    virtual void sleepMs(int milliseconds) = 0;
};

// Asks the user for the path of a file to open or to save; empty when cancelled.
class FileDialogs {
public:
    enum class Purpose { Open, Save };
    virtual ~FileDialogs() = default;
    // suggested: the folder, or the path of the file, that the dialog starts with. filter:
    // Qt's name filters ("Pictures (*.png *.gif);;All files (*)").
    virtual QString askPath(QWidget* parent, Purpose purpose, const QString& title,
                            const QString& suggested, const QString& filter) = 0;
};

struct Platform {
    Prompts& prompts;
    Clipboard& clipboard;
    Sleeper& sleeper;
    FileDialogs* fileDialogs = nullptr;  // none: the real ones (see FileDialogsOf)
};

// The platform's file dialogs: its own, or the real ones.
FileDialogs& FileDialogsOf(const Platform& platform);

// The production implementations: QMessageBox, QDialog::exec, QClipboard, a real sleep.
class QtPrompts : public Prompts {
public:
    Answer showMessage(QWidget* parent, const QString& title, const QString& prompt, Icon icon,
                       Buttons buttons, Answer defaultAnswer) override;
    int runModal(QDialog& dialog) override;
};

class SystemClipboard : public Clipboard {
public:
    bool getText(QString& text) override;
    bool clear() override;
    // A write that cannot be read back counts as failed.
    bool setText(const QString& text) override;
};

class QtFileDialogs : public FileDialogs {
public:
    QString askPath(QWidget* parent, Purpose purpose, const QString& title,
                    const QString& suggested, const QString& filter) override;
};

class ThreadSleeper : public Sleeper {
public:
    void sleepMs(int milliseconds) override;
};

}  // namespace lumidot
