// Reading the two files, testing folders for writing and choosing where the files live,
// with real files, folders, pipes and permissions.
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <functional>

#include "storage/file_places.h"
#include "support/permissions.h"

namespace lumidot {
namespace {

using testing::PermissionsRespected;
using Where = StoragePlan::Where;

void Write(const QString& path, const QByteArray& bytes, int secondsAgo = 0) {
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly)) << path.toStdString();
    file.write(bytes);
    file.flush();  // a write after setting the time would set it again
    ASSERT_TRUE(file.setFileTime(QDateTime::currentDateTime().addSecs(-secondsAgo),
                                 QFileDevice::FileModificationTime));
}

void Chmod(const QString& path, mode_t mode) {
    ASSERT_EQ(::chmod(QFile::encodeName(path).constData(), mode), 0) << path.toStdString();
}

struct FileRow {
    const char* name;
    std::function<void(const QString& path)> make;
    StoredFile::State state;
    const char* problem;  // part of the reason given; empty: no problem
};
void PrintTo(const FileRow& row, std::ostream* out) {
    *out << row.name;
}

class ReadStoredFileTest : public ::testing::TestWithParam<FileRow> {};

TEST_P(ReadStoredFileTest, ReadsOrSaysWhyNot) {
    QTemporaryDir folder;
    const QString path = folder.filePath("memory.txt");
    GetParam().make(path);
    StoredFile file;
    {
        PermissionsRespected guard;
        ASSERT_TRUE(guard.ok()) << guard.error();
        file = ReadStoredFile(path, 8);
    }
    EXPECT_EQ(file.state, GetParam().state);
    EXPECT_TRUE(file.problem.contains(QString::fromUtf8(GetParam().problem)))
        << file.problem.toStdString();
    EXPECT_EQ(file.problem.isEmpty(), *GetParam().problem == '\0');
}

INSTANTIATE_TEST_SUITE_P(
    Paths, ReadStoredFileTest,
    ::testing::Values(
        FileRow{"Missing", [](const QString&) {}, StoredFile::State::Missing, ""},
        FileRow{"OrdinaryFile", [](const QString& p) { Write(p, "F0 F7\r\n"); },
                StoredFile::State::Read, ""},
        FileRow{"Folder", [](const QString& p) { QDir().mkdir(p); }, StoredFile::State::Unreadable,
                "folder"},
        FileRow{"Pipe", [](const QString& p) { ::mkfifo(QFile::encodeName(p).constData(), 0600); },
                StoredFile::State::Unreadable, "not an ordinary file"},
        // Reading the start of a process's own memory fails even for root.
        FileRow{"InputOutputError", [](const QString& p) { QFile::link("/proc/self/mem", p); },
                StoredFile::State::Unreadable, "Input/output error"},
        FileRow{"LinkToNothing", [](const QString& p) { QFile::link(p + ".gone", p); },
                StoredFile::State::Missing, ""},
        FileRow{"NoReadPermission",
                [](const QString& p) {
                    Write(p, "x");
                    Chmod(p, 0200);
                },
                StoredFile::State::Unreadable, "Permission denied"}),
    [](const auto& info) { return std::string(info.param.name); });

TEST(ReadStoredFileLimitTest, ALongerFileIsReadUpToItsLimitAndSaysSo) {
    QTemporaryDir folder;
    Write(folder.filePath("memory.txt"), "0123456789");
    const StoredFile file = ReadStoredFile(folder.filePath("memory.txt"), 4);
    EXPECT_EQ(file.bytes, "0123");
    EXPECT_TRUE(file.cutShort);
}

struct FolderRow {
    const char* name;
    std::function<QString(const QDir& root)> folder;  // makes it and returns its path
    bool create;
    bool writable;
    const char* why;
};
void PrintTo(const FolderRow& row, std::ostream* out) {
    *out << row.name;
}

class CanWriteInTest : public ::testing::TestWithParam<FolderRow> {};

TEST_P(CanWriteInTest, TriesForReal) {
    QTemporaryDir root;
    const QString folder = GetParam().folder(QDir(root.path()));
    QString why;
    bool writable = false;
    {
        PermissionsRespected guard;
        ASSERT_TRUE(guard.ok()) << guard.error();
        writable = CanWriteIn(folder, &why, GetParam().create);
    }
    ::chmod(QFile::encodeName(folder).constData(), 0755);  // where there is one
    EXPECT_EQ(writable, GetParam().writable);
    EXPECT_TRUE(why.contains(QString::fromUtf8(GetParam().why))) << why.toStdString();
    if (writable) {
        EXPECT_TRUE(QDir(folder).isEmpty(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot))
            << "the test leaves nothing behind";
    }
}

INSTANTIATE_TEST_SUITE_P(
    Folders, CanWriteInTest,
    ::testing::Values(FolderRow{"Plain", [](const QDir& r) { return r.path(); }, false, true, ""},
                      FolderRow{"ParentIsAFile",
                                [](const QDir& r) {
                                    Write(r.filePath("file"), "x");
                                    return r.filePath("file/app");
                                },
                                true, false, "Not a directory"},
                      FolderRow{"IsAFile",
                                [](const QDir& r) {
                                    Write(r.filePath("app"), "x");
                                    return r.filePath("app");
                                },
                                false, false, "is a file, not a folder"},
                      FolderRow{"MissingAndMade", [](const QDir& r) { return r.filePath("a/b"); },
                                true, true, ""},
                      FolderRow{"MissingAndNotMade",
                                [](const QDir& r) { return r.filePath("a/b"); }, false, false,
                                "No such file or directory"},
                      FolderRow{"ReadOnly",
                                [](const QDir& r) {
                                    r.mkdir("app");
                                    Chmod(r.filePath("app"), 0555);
                                    return r.filePath("app");
                                },
                                false, false, "Permission denied"}),
    [](const auto& info) { return std::string(info.param.name); });

// What each folder holds before the start, and whether the program folder may be written.
enum class Holds { Nothing, OldFiles, NewFiles, MemoryIsAFolder };

struct PlanRow {
    const char* name;
    Holds program;
    bool programWritable;
    Holds user;
    bool userWritable;
    Where readFrom;
    Where saveTo;
};
void PrintTo(const PlanRow& row, std::ostream* out) {
    *out << row.name;
}

void Fill(const QString& folder, Holds holds) {
    if (holds == Holds::Nothing) return;
    QDir().mkpath(folder);
    const int age = holds == Holds::NewFiles ? 10 : 1000;
    if (holds == Holds::MemoryIsAFolder) {
        QDir().mkdir(folder + "/memory.txt");
    } else {
        Write(folder + "/memory.txt", "F0 F7\r\n", age);
    }
    Write(folder + "/settings.bin", QByteArray(12, '\0'), age);
}

class PlanStorageTest : public ::testing::TestWithParam<PlanRow> {};

TEST_P(PlanStorageTest, ReadsWhatWasSavedLastAndSavesWhereItCan) {
    const PlanRow& row = GetParam();
    QTemporaryDir root;
    const QString program = root.filePath("program");
    ASSERT_TRUE(QDir().mkpath(program));
    Fill(program, row.program);
    // A user folder that cannot be made: its parent is a file.
    QString user = root.filePath("data/Lumidot");
    if (row.userWritable) {
        Fill(user, row.user);
    } else {
        Write(root.filePath("data"), "x");
    }
    if (!row.programWritable) Chmod(program, 0555);
    StoragePlan plan;
    {
        PermissionsRespected guard;
        ASSERT_TRUE(guard.ok()) << guard.error();
        plan = PlanStorage(program, user);
    }
    Chmod(program, 0755);
    EXPECT_EQ(plan.readFrom, row.readFrom);
    EXPECT_EQ(plan.saveTo, row.saveTo);
    EXPECT_EQ(plan.programProblem.isEmpty(), row.saveTo == Where::Program)
        << plan.programProblem.toStdString();
    EXPECT_EQ(QFileInfo::exists(user), row.user != Holds::Nothing || row.saveTo == Where::User)
        << "the user folder is made only when the files go there";
}

INSTANTIATE_TEST_SUITE_P(
    Starts, PlanStorageTest,
    ::testing::Values(
        PlanRow{"FirstStart", Holds::Nothing, true, Holds::Nothing, true, Where::Nowhere,
                Where::Program},
        PlanRow{"BesideTheProgram", Holds::NewFiles, true, Holds::Nothing, true, Where::Program,
                Where::Program},
        PlanRow{"OlderCopyInUserFolder", Holds::NewFiles, true, Holds::OldFiles, true,
                Where::Program, Where::Program},
        // Saved in the user folder while the program's could not be written: moved back.
        PlanRow{"OnlyTheUserFolderHoldsFiles", Holds::Nothing, true, Holds::OldFiles, true,
                Where::User, Where::Program},
        PlanRow{"UserFolderSavedLater", Holds::OldFiles, true, Holds::NewFiles, true, Where::User,
                Where::Program},
        PlanRow{"ReadOnlyFolderFirstStart", Holds::OldFiles, false, Holds::Nothing, true,
                Where::Program, Where::User},
        PlanRow{"ReadOnlyFolderLaterStarts", Holds::OldFiles, false, Holds::NewFiles, true,
                Where::User, Where::User},
        PlanRow{"ReadOnlyFolderInstalledSo", Holds::Nothing, false, Holds::Nothing, true,
                Where::Nowhere, Where::User},
        PlanRow{"FolderNamedMemoryTxt", Holds::MemoryIsAFolder, true, Holds::Nothing, true,
                Where::Program, Where::User},
        PlanRow{"FolderNamedMemoryTxtLater", Holds::MemoryIsAFolder, true, Holds::NewFiles, true,
                Where::User, Where::User},
        PlanRow{"NowhereToSave", Holds::OldFiles, false, Holds::Nothing, false, Where::Program,
                Where::Nowhere}),
    [](const auto& info) { return std::string(info.param.name); });

}  // namespace
}  // namespace lumidot
