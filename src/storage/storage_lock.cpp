#include "storage/storage_lock.h"

#include <QDir>
#include <QFileInfo>
#include <QRegularExpression>
#include <algorithm>

#include "storage/file_places.h"

namespace lumidot {

StorageLock::StorageLock(const QString& folder)
    : path_(folder + QLatin1Char('/') + QLatin1String(kLockFileName)), lock_(path_) {
    // A lock is stale only when the copy that holds it no longer runs, however long a
    // session lasts (by default Qt would also give it up after 30 seconds).
    lock_.setStaleLockTime(0);
}

StorageLock::Result StorageLock::tryLock() {
    if (lock_.isLocked() || lock_.tryLock(0)) return Result::Locked;
    switch (lock_.error()) {
        case QLockFile::LockFailedError:
            return Result::HeldByOther;
        case QLockFile::PermissionError:
            error_ = QStringLiteral("permission denied");
            break;
        default:
            error_ = QStringLiteral("the file cannot be made");
            break;
    }
    return Result::Failed;
}

void StorageLock::unlock() {
    if (lock_.isLocked()) lock_.unlock();
}

qint64 StorageLock::ownerPid() const {
    qint64 pid = 0;
    QString host;
    QString application;
    return lock_.getLockInfo(&pid, &host, &application) ? pid : 0;
}

bool IsSaveLeftover(const QString& name) {
    static const QRegularExpression pattern(
        QStringLiteral("^(?:%1|%2)\\.([A-Za-z0-9]{6})$")
            .arg(QRegularExpression::escape(QLatin1String(kMemoryFileName)),
                 QRegularExpression::escape(QLatin1String(kSettingsFileName))));
    const QRegularExpressionMatch match = pattern.match(name);
    if (!match.hasMatch()) return false;
    const QString tail = match.captured(1);
    return !std::all_of(tail.begin(), tail.end(),
                        [](QChar c) { return c >= QLatin1Char('a') && c <= QLatin1Char('z'); });
}

QStringList RemoveSaveLeftovers(const QString& folder) {
    QStringList removed;
    const QDir dir(folder);
    for (const QFileInfo& entry : dir.entryInfoList(QDir::Files | QDir::Hidden | QDir::System)) {
        if (!entry.isFile() || entry.isSymLink() || !IsSaveLeftover(entry.fileName())) continue;
        if (QFile::remove(entry.filePath())) removed << entry.filePath();
    }
    return removed;
}

}  // namespace lumidot
