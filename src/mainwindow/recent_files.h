// The files opened last, newest first, and the folder the file dialogs start in. Kept in
// the user's settings (QSettings), never in settings.bin, whose bytes are fixed.
#pragma once

#include <QString>
#include <QStringList>
#include <memory>

class QSettings;

namespace lumidot {

class RecentFiles {
public:
    static constexpr int kLimit = 8;

    // Every call reads and writes the settings afresh, so that two copies of the program
    // share one list.
    RecentFiles() = default;
    // Keeps the list in this INI file instead of the user's settings (tests do).
    void useSettingsFile(const QString& path) { settingsFile_ = path; }

    // The files that still exist, newest first; those that vanished leave the list for good.
    QStringList paths() const;
    // Puts path (made absolute) first; the list keeps kLimit files.
    void add(const QString& path);
    void remove(const QString& path);
    void clear();

    // The folder of the last file opened or written; the home folder before that.
    QString lastFolder() const;
    void setLastFolder(const QString& folder);

private:
    std::unique_ptr<QSettings> settings() const;
    QStringList stored() const;
    void store(const QStringList& paths) const;

    QString settingsFile_;
};

}  // namespace lumidot
