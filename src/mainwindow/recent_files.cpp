#include "mainwindow/recent_files.h"

#include <QDir>
#include <QFileInfo>
#include <QSettings>

namespace lumidot {
namespace {

const QString kRecentKey = QStringLiteral("files/recent");
const QString kFolderKey = QStringLiteral("files/lastFolder");

}  // namespace

std::unique_ptr<QSettings> RecentFiles::settings() const {
    if (!settingsFile_.isEmpty()) {
        return std::make_unique<QSettings>(settingsFile_, QSettings::IniFormat);
    }
    // Named outright: the application's own name also names its data folder, which must
    // not move.
    return std::make_unique<QSettings>(QStringLiteral("Lumidot"), QStringLiteral("Lumidot"));
}

QStringList RecentFiles::stored() const {
    return settings()->value(kRecentKey).toStringList();
}

void RecentFiles::store(const QStringList& paths) const {
    settings()->setValue(kRecentKey, paths);
}

QStringList RecentFiles::paths() const {
    const QStringList all = stored();
    QStringList existing;
    for (const QString& path : all) {
        if (QFileInfo(path).isFile()) existing << path;
    }
    if (existing.size() != all.size()) store(existing);
    return existing;
}

void RecentFiles::add(const QString& path) {
    const QString absolute = QFileInfo(path).absoluteFilePath();
    QStringList paths = stored();
    paths.removeAll(absolute);
    paths.prepend(absolute);
    while (paths.size() > kLimit) paths.removeLast();
    store(paths);
}

void RecentFiles::remove(const QString& path) {
    QStringList paths = stored();
    if (paths.removeAll(QFileInfo(path).absoluteFilePath()) > 0) store(paths);
}

void RecentFiles::clear() {
    store({});
}

QString RecentFiles::lastFolder() const {
    const QString folder = settings()->value(kFolderKey).toString();
    return !folder.isEmpty() && QFileInfo(folder).isDir() ? folder : QDir::homePath();
}

void RecentFiles::setLastFolder(const QString& folder) {
    settings()->setValue(kFolderKey, folder);
}

}  // namespace lumidot
