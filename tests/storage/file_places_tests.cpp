// Choosing where the two files are read from and saved to, with real files, folders and
// permissions.
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

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
