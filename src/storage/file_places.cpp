#include "storage/file_places.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryFile>

#include "storage/text_helpers.h"

namespace lumidot {
namespace {

QString Native(const QString& path) {
    return QDir::toNativeSeparators(path);
}

QString InFolder(const QString& folder, const char* name) {
    return folder + QLatin1Char('/') + QLatin1String(name);
}

}  // namespace

StoredFile ReadStoredFile(const QString& path, qint64 limit) {
    StoredFile file;
    file.path = path;
    const QFileInfo info(path);
    // A link that leads nowhere counts as missing too: there is nothing to read, and a
    // save creates the file it names.
    if (!info.exists()) return file;
    file.state = StoredFile::State::Unreadable;
    if (info.isDir()) {
        file.problem = QStringLiteral("it is a folder");
        return file;
    }
    // Never opened when it is not an ordinary file: reading a pipe would wait for ever.
    if (!FileExists(path)) {
        file.problem = QStringLiteral("it is not an ordinary file");
        return file;
    }
    QFile in(path);
    if (!in.open(QIODevice::ReadOnly)) {
        file.problem = in.errorString();
        return file;
    }
    QByteArray bytes = in.read(limit + 1);
    if (in.error() != QFileDevice::NoError) {
        file.problem = in.errorString();
        return file;
    }
    file.state = StoredFile::State::Read;
    file.cutShort = bytes.size() > limit;
    if (file.cutShort) bytes.truncate(limit);
    file.bytes = std::move(bytes);
    file.modified = info.lastModified();
    // A save would refuse to replace it.
    if (!info.isWritable()) file.problem = QStringLiteral("it is read-only");
    return file;
}

bool StoragePlace::holdsFiles() const {
    return memory.state == StoredFile::State::Read || settings.state == StoredFile::State::Read;
}

QDateTime StoragePlace::lastSaved() const {
    QDateTime latest;
    for (const StoredFile* file : {&memory, &settings}) {
        if (file->state != StoredFile::State::Read) continue;
        if (!latest.isValid() || file->modified > latest) latest = file->modified;
    }
    return latest;
}

StoragePlace ReadPlace(const QString& folder) {
    StoragePlace place;
    place.folder = folder;
    if (folder.isEmpty()) return place;
    place.memory = ReadStoredFile(InFolder(folder, kMemoryFileName), kLongestMemoryFile);
    place.settings = ReadStoredFile(InFolder(folder, kSettingsFileName), kLongestSettingsFile);
    return place;
}

bool CanWriteIn(const QString& folder, QString* why, bool create) {
    if (folder.isEmpty()) {
        *why = QStringLiteral("there is no such folder");
        return false;
    }
    // A failure to make it shows in the test below, with the system's own reason.
    if (create) QDir().mkpath(folder);
    const QFileInfo info(folder);
    if (info.exists() && !info.isDir()) {
        *why = QStringLiteral("%1 is a file, not a folder").arg(Native(folder));
        return false;
    }
    // Named like the temporary file of a save, so that one left by a kill at this very
    // moment is cleaned up like those.
    QTemporaryFile probe(InFolder(folder, kSettingsFileName) + QStringLiteral(".XXXXXX"));
    if (!probe.open()) {
        *why = QStringLiteral("the folder %1 cannot be written (%2)")
                   .arg(Native(folder), probe.errorString());
        return false;
    }
    return true;
}

bool CanSaveIn(const StoragePlace& place, QString* why, bool create) {
    const StoredFile* files[] = {&place.memory, &place.settings};
    // An unreadable file first, as that is the one the user must be told of; then the
    // folder, which may be the reason a file in it cannot be replaced either.
    for (const StoredFile* file : files) {
        if (file->state != StoredFile::State::Unreadable) continue;
        *why = QStringLiteral("%1 cannot be read (%2)").arg(Native(file->path), file->problem);
        return false;
    }
    if (!CanWriteIn(place.folder, why, create)) return false;
    for (const StoredFile* file : files) {
        if (!file->blocksSaving()) continue;
        *why = QStringLiteral("%1 is read-only").arg(Native(file->path));
        return false;
    }
    return true;
}

StoragePlan PlanStorage(const QString& programFolder, const QString& userFolder) {
    using Where = StoragePlan::Where;
    StoragePlan plan;
    plan.program = ReadPlace(programFolder);
    plan.user = ReadPlace(userFolder);
    if (CanSaveIn(plan.program, &plan.programProblem)) {
        plan.saveTo = Where::Program;
    } else if (CanSaveIn(plan.user, &plan.userProblem, /*create=*/true)) {
        plan.saveTo = Where::User;
    }

    const bool inProgram = plan.program.holdsFiles();
    const bool inUser = plan.user.holdsFiles();
    if (inProgram && inUser) {
        const QDateTime program = plan.program.lastSaved();
        const QDateTime user = plan.user.lastSaved();
        if (program == user) {
            plan.readFrom = plan.saveTo == Where::User ? Where::User : Where::Program;
        } else {
            plan.readFrom = program > user ? Where::Program : Where::User;
        }
    } else if (inProgram) {
        plan.readFrom = Where::Program;
    } else if (inUser) {
        plan.readFrom = Where::User;
    }
    return plan;
}

}  // namespace lumidot
