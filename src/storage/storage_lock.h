// Keeps two copies of the program from using the same two files at once, and clears away
// what a killed save left behind.
#pragma once

#include <QLockFile>
#include <QString>
#include <QStringList>

namespace lumidot {

inline constexpr char kLockFileName[] = ".lumidot.lock";

class StorageLock {
public:
    enum class Result { Locked, HeldByOther, Failed };

    explicit StorageLock(const QString& folder);

    // Takes the lock unless a running copy holds it. A lock left by a copy that no longer
    // runs (it crashed or was killed) is taken over.
    Result tryLock();
    void unlock();
    bool isLocked() const { return lock_.isLocked(); }

    QString path() const { return path_; }
    // After HeldByOther: the other copy's process ID, 0 if unknown.
    qint64 ownerPid() const;
    // After Failed: why.
    QString error() const { return error_; }

private:
    QString path_;
    QLockFile lock_;
    QString error_;
};

// Whether name is one that a save makes for a temporary copy of memory.txt or
// settings.bin: the file's name, a dot and six letters or digits. A name whose last part
// reads as a word in lower case ("memory.txt.backup") is taken to be the user's own.
bool IsSaveLeftover(const QString& name);

// Removes the leftovers of saves in folder that were killed before they finished; call it
// only while holding the lock, when no save of ours can be under way. Returns the paths
// removed.
QStringList RemoveSaveLeftovers(const QString& folder);

}  // namespace lumidot
