// Where memory.txt and settings.bin are read from and saved to.
#pragma once

#include <QByteArray>
#include <QDateTime>
#include <QString>

namespace lumidot {

inline constexpr char kMemoryFileName[] = "memory.txt";
inline constexpr char kSettingsFileName[] = "settings.bin";
// Ten stored lines take 2,230 bytes; a file beyond this is read no further (and what
// was not read counts as content a save would lose).
inline constexpr qint64 kLongestMemoryFile = 1 << 20;
// settings.bin holds three texts of at most five characters each.
inline constexpr qint64 kLongestSettingsFile = 4096;

// One of the two files in one folder, as found at start.
struct StoredFile {
    enum class State { Missing, Read, Unreadable };

    QString path;
    State state = State::Missing;
    QByteArray bytes;       // what was read, at most the file's limit
    bool cutShort = false;  // the file goes on beyond bytes
    // Why the file cannot be read or may not be replaced; empty when neither holds.
    QString problem;
    QDateTime modified;

    bool blocksSaving() const { return !problem.isEmpty(); }
};

// Reads path (at most limit bytes). Creates and changes nothing.
StoredFile ReadStoredFile(const QString& path, qint64 limit);

// The two files in one folder.
struct StoragePlace {
    QString folder;
    StoredFile memory;
    StoredFile settings;

    bool holdsFiles() const;
    // When the newest of the files that could be read was saved.
    QDateTime lastSaved() const;
};

StoragePlace ReadPlace(const QString& folder);

// Whether a file can be created in folder, found out by creating one and removing it:
// permission bits say nothing for root, a read-only mount or an immutable folder. With
// create, the folder is made first if it is missing. why says what stands in the way.
bool CanWriteIn(const QString& folder, QString* why, bool create = false);

// One rule for both files: they are saved beside the program when that folder can take
// them, otherwise in the user's own data folder, and never over a file that could not be
// read. They are read from the place that saved them last, which is the place they are
// saved to except in the run after the other place was used:
//  - the program folder cannot be written (any more) but holds the user's files and the
//    data folder holds none (or older ones): they are read from beside the program once
//    and saved in the data folder from then on;
//  - the program folder can be written again (or holds no files yet) while the data
//    folder holds files saved later, from a time it could not be written: those are read
//    and saved beside the program from then on.
// Either way the user is told, and nothing they saved is passed over in silence.
struct StoragePlan {
    enum class Where { Nowhere, Program, User };

    StoragePlace program;
    StoragePlace user;
    Where readFrom = Where::Nowhere;  // Nowhere: no file could be read
    Where saveTo = Where::Nowhere;    // Nowhere: neither folder can take the files
    QString programProblem;           // why the program folder cannot take the files
    QString userProblem;              // the same for the data folder, when it was asked

    const StoragePlace& place(Where where) const { return where == Where::User ? user : program; }
};

// Reads both places and decides. Only makes the user data folder, and only when the
// files must be saved there.
StoragePlan PlanStorage(const QString& programFolder, const QString& userFolder);

// Whether the files in place can be saved there; why says what stands in the way.
bool CanSaveIn(const StoragePlace& place, QString* why, bool create = false);

}  // namespace lumidot
