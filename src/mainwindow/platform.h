// The narrow seams between the program and what tests cannot drive for real: message
// boxes and modal dialogs, the file dialogs, the system clipboard, and the pause between
// clipboard attempts.
#pragma once

#include <QString>
#include <QStringList>

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

// What a file dialog asks the user for.
struct FileQuestion {
    enum class Kind { Open, Save };
    Kind kind = Kind::Open;
    QString title;
    // The folder to show, or (to save) the suggested file's whole path.
    QString start;
    // Name filters such as "MIDI files (*.mid *.midi)"; the first is chosen at first.
    QStringList filters;
    // To save: the extension (without its dot) given to a name typed without one.
    QString defaultSuffix;
};

class FileDialogs {
public:
    virtual ~FileDialogs() = default;
    // Asks for a path and returns it, or empty text when the user cancels. A dialog that
    // saves asks nothing about a file that exists already: its caller does.
    virtual QString askPath(QWidget* parent, const FileQuestion& question) = 0;
};

struct Platform {
    Prompts& prompts;
    Clipboard& clipboard;
    Sleeper& sleeper;
    FileDialogs& files;
};

// The production implementations: QMessageBox, QDialog::exec, QClipboard, a real sleep,
// QFileDialog.
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

class ThreadSleeper : public Sleeper {
public:
    void sleepMs(int milliseconds) override;
};

// QFileDialog: the desktop's own dialog where the platform has one, Qt's otherwise.
class QtFileDialogs : public FileDialogs {
public:
    QString askPath(QWidget* parent, const FileQuestion& question) override;
};

}  // namespace lumidot
