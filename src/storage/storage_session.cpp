#include "storage/storage_session.h"

#include <QFile>
#include <QFileInfo>

#include "storage/storage_messages.h"

namespace lumidot {
namespace {

QString InFolder(const QString& folder, const char* name) {
    return folder + QLatin1Char('/') + QLatin1String(name);
}

bool Taken(const QString& path) {
    const QFileInfo info(path);
    return info.exists() || info.isSymLink();
}

// memory.txt.bak, or memory.txt.2.bak and on when that is taken: an older copy may hold
// the only trace of something the user wants back.
QString FreeBackupName(const QString& memoryPath) {
    QString name = memoryPath + QStringLiteral(".bak");
    for (int n = 2; Taken(name); ++n) name = memoryPath + QStringLiteral(".%1.bak").arg(n);
    return name;
}

const StoredFile kNoFile;

}  // namespace

StorageSession::StorageSession(const QString& programFolder, const QString& userFolder)
    : plan_(PlanStorage(programFolder, userFolder)) {}

StorageSession::~StorageSession() = default;

QString StorageSession::saveFolder() const {
    return plan_.saveTo == StoragePlan::Where::Nowhere ? QString()
                                                       : plan_.place(plan_.saveTo).folder;
}

QString StorageSession::fileFolder() const {
    if (plan_.saveTo != StoragePlan::Where::Nowhere) return saveFolder();
    if (plan_.readFrom != StoragePlan::Where::Nowhere) return plan_.place(plan_.readFrom).folder;
    return plan_.program.folder;
}

const StoredFile& StorageSession::memory() const {
    return plan_.readFrom == StoragePlan::Where::Nowhere ? kNoFile
                                                         : plan_.place(plan_.readFrom).memory;
}

const StoredFile& StorageSession::settings() const {
    return plan_.readFrom == StoragePlan::Where::Nowhere ? kNoFile
                                                         : plan_.place(plan_.readFrom).settings;
}

StorageSession::Start StorageSession::lock() {
    const QString folder = saveFolder();
    if (folder.isEmpty()) return Start::Ready;
    lock_ = std::make_unique<StorageLock>(folder);
    switch (lock_->tryLock()) {
        case StorageLock::Result::Locked:
            RemoveSaveLeftovers(folder);
            return Start::Ready;
        case StorageLock::Result::HeldByOther:
            return Start::HeldByOther;
        case StorageLock::Result::Failed:
            lockProblem_ = lock_->error();
            return Start::Ready;
    }
    return Start::Ready;
}

qint64 StorageSession::otherCopyPid() const {
    return lock_ ? lock_->ownerPid() : 0;
}

void StorageSession::noteMemoryLoad(const MemoryLoadReport& report) {
    memoryReport_ = report;
    // Only a save that replaces the very file read needs a copy of it; a file in the other
    // place stays as it is.
    if (report.losesSomething() && !readOnly() && plan_.readFrom == plan_.saveTo) {
        backupPath_ = FreeBackupName(memory().path);
    }
}

QString StorageSession::startNotes() const {
    return StartNotesText({plan_, readOnly(), memoryReport_, memory().path, backupPath_,
                           lockProblem_, lock_ ? lock_->path() : QString()});
}

bool StorageSession::saveIn(const QString& folder, const QByteArray& memory,
                            const QByteArray& settings, const BeforeCommit& beforeCommit,
                            QString* failedPath, QString* reason) {
    // Looked at afresh: a file that has become unreadable since the start is not
    // replaced either.
    const StoragePlace place = ReadPlace(folder);
    if (!CanSaveIn(place, reason, /*create=*/true)) {
        *failedPath = folder;
        return false;
    }
    // The memory.txt read at start loses something when replaced, in whichever place the
    // save lands.
    const bool keepBackup = memoryReport_.losesSomething() &&
                            plan_.readFrom != StoragePlan::Where::Nowhere &&
                            folder == plan_.place(plan_.readFrom).folder;
    if (keepBackup && place.memory.state == StoredFile::State::Read) {
        if (backupPath_.isEmpty()) backupPath_ = FreeBackupName(place.memory.path);
        QFile old(place.memory.path);
        if (!old.copy(backupPath_)) {
            *failedPath = backupPath_;
            *reason = old.errorString();
            return false;
        }
    }
    const QString memoryPath = InFolder(folder, kMemoryFileName);
    if (!WriteFileAtomically(memoryPath, memory, reason, beforeCommit)) {
        *failedPath = memoryPath;
        return false;
    }
    const QString settingsPath = InFolder(folder, kSettingsFileName);
    if (!WriteFileAtomically(settingsPath, settings, reason, beforeCommit)) {
        *failedPath = settingsPath;
        return false;
    }
    return true;
}

SaveOutcome StorageSession::save(const QByteArray& memory, const QByteArray& settings,
                                 const BeforeCommit& beforeCommit) {
    SaveOutcome outcome;
    if (readOnly()) {
        lock_.reset();
        return outcome;
    }
    const QString target = saveFolder();
    if (saveIn(target, memory, settings, beforeCommit, &outcome.failedPath, &outcome.reason)) {
        outcome.kind = SaveOutcome::Kind::Saved;
        outcome.folder = target;
        lock_.reset();
        return outcome;
    }

    // The other place, if it can take the files now and no running copy uses it. The next
    // start reads them from there, as they are the ones saved last.
    outcome.kind = SaveOutcome::Kind::NotSaved;
    const QString other =
        plan_.saveTo == StoragePlan::Where::User ? plan_.program.folder : plan_.user.folder;
    if (!other.isEmpty()) {
        StorageLock otherLock(other);
        QString ignoredPath;
        QString ignoredReason;
        if (CanWriteIn(other, &ignoredReason, /*create=*/true) &&
            otherLock.tryLock() == StorageLock::Result::Locked &&
            saveIn(other, memory, settings, beforeCommit, &ignoredPath, &ignoredReason)) {
            outcome.kind = SaveOutcome::Kind::SavedElsewhere;
            outcome.folder = other;
        }
    }
    lock_.reset();
    return outcome;
}

}  // namespace lumidot
