// memory.txt and settings.bin over one run of the program: where they are read from and
// saved to, the lock that keeps a second copy off them, the copy kept of a memory.txt
// that held more than the pages, and what the user is told about all of it.
#pragma once

#include <QByteArray>
#include <QString>
#include <memory>

#include "storage/atomic_file.h"
#include "storage/file_places.h"
#include "storage/memory_file.h"
#include "storage/storage_lock.h"

namespace lumidot {

// How a save at the end of the run went.
struct SaveOutcome {
    enum class Kind { Saved, SavedElsewhere, NotSaved, Skipped };
    Kind kind = Kind::Skipped;
    QString folder;      // where the files now are (Saved, SavedElsewhere)
    QString failedPath;  // the file that could not be written (SavedElsewhere, NotSaved)
    QString reason;      // why not
};

class StorageSession {
public:
    // Looks at the program folder and the user data folder and reads the files from the
    // place chosen (see StoragePlan). Writes nothing, except that it makes the user data
    // folder when the files must be saved there.
    StorageSession(const QString& programFolder, const QString& userFolder);
    ~StorageSession();

    enum class Start { Ready, HeldByOther };
    // Takes the lock in the folder the files are saved to; holding it, removes what
    // interrupted saves left there. HeldByOther: another running copy uses the files.
    Start lock();
    qint64 otherCopyPid() const;
    // From now on nothing is saved (the user chose so, or quits).
    void openReadOnly() { readOnly_ = true; }
    // Nothing will be saved: the user chose so, or neither folder can be written.
    bool readOnly() const { return readOnly_ || saveFolder().isEmpty(); }

    // The folder the files are saved to; empty when neither can take them.
    QString saveFolder() const;
    // The folder the two paths of the main window name: where the files are saved, or,
    // when they cannot be saved, where they were read from.
    QString fileFolder() const;
    // The files as read from the chosen place (each may be Missing or Unreadable).
    const StoredFile& memory() const;
    const StoredFile& settings() const;

    // Takes note of what loading memory.txt left out: a save that replaces that file keeps a
    // copy of it first, under the name backupPath() gives (known from the start when the
    // save is meant to replace it).
    void noteMemoryLoad(const MemoryLoadReport& report);
    QString backupPath() const { return backupPath_; }

    // Everything the user should know at start, as one text; empty when all is well.
    QString startNotes() const;

    // Saves both files where they belong; if that fails, in the other place if it can
    // take them. Does nothing in a read-only run. Releases the lock.
    SaveOutcome save(const QByteArray& memory, const QByteArray& settings,
                     const BeforeCommit& beforeCommit = {});

private:
    bool saveIn(const QString& folder, const QByteArray& memory, const QByteArray& settings,
                const BeforeCommit& beforeCommit, QString* failedPath, QString* reason);

    StoragePlan plan_;
    std::unique_ptr<StorageLock> lock_;
    QString lockProblem_;
    MemoryLoadReport memoryReport_;
    QString backupPath_;
    bool readOnly_ = false;
};

}  // namespace lumidot
