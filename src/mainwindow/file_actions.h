// The File menu's files: opening a .syx, MIDI or hex text file (by the menu, the recent
// list or a drop on the window) as a decoding run of its messages; exporting the output
// pane's messages and the ten pages as .syx or MIDI files; repairing the checksums of a
// file into a copy. The window makes one, which adds its items to the File menu.
#pragma once

#include <QByteArray>
#include <QObject>
#include <QString>
#include <optional>

#include "codec/gs_message.h"
#include "mainwindow/recent_files.h"

class QMenu;

namespace lumidot {

class MainForm;
struct FileQuestion;

namespace file_texts {
struct Box;
}

class FileActions : public QObject {
    Q_OBJECT
public:
    // Files larger than this are refused unread: message files are a few megabytes at most.
    static constexpr qint64 kLargestFile = qint64(256) << 20;

    explicit FileActions(MainForm& window);
    ~FileActions() override;

    // "Open...": asks for a file and opens it.
    void open();
    // Describes the file's messages into the window as a decoding run does and shows the
    // results. A file that cannot be read, or a damaged one the user does not want, changes
    // nothing; false then, and false when the window closed during the run.
    bool openFile(const QString& path);
    void exportMessage();
    void exportPages();
    void exportPagesAsMidi();
    void repairFile();

    RecentFiles& recentFiles() { return recent_; }
    // How long the taking over of a file's messages goes before it shows its progress.
    void setProgressDelay(int milliseconds) { progressDelayMs_ = milliseconds; }
    QMenu* recentMenu() const { return recentMenu_; }

protected:
    // Files dropped anywhere on the window, its text boxes included, are opened.
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void addMenuItems();
    void fillRecentMenu();
    QString askPath(const FileQuestion& question);
    // The whole file, or nothing after a box that says why not.
    std::optional<QByteArray> readWhole(const QString& path);
    // Asks before an existing file is replaced; original is the file a repair read.
    bool mayWrite(const QString& path, const QString& original = QString());
    // Writes the file whole or not at all; false after a box that says why.
    bool write(const QString& path, const ByteArray& bytes);
    // Asks where to save, then writes; nothing happens when the user cancels.
    void exportBytes(const QString& title, const QString& name, const QString& filter,
                     const ByteArray& bytes);
    void tell(const file_texts::Box& box, bool exclamation = true);
    bool ask(const file_texts::Box& box, bool exclamation);
    bool takeOver(const QString& path, class FileMessages& messages);

    MainForm& window_;
    RecentFiles recent_;
    QMenu* recentMenu_ = nullptr;
    bool busy_ = false;  // a file is being opened
    int progressDelayMs_ = 400;
};

}  // namespace lumidot
