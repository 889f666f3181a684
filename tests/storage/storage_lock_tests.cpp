// The lock against a second copy, including one left by a copy that died, and the
// removal of what killed saves left behind.
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include "storage/storage_lock.h"

namespace lumidot {
namespace {

TEST(StorageLockTest, ASecondHolderIsToldWhoHasIt) {
    QTemporaryDir folder;
    StorageLock first(folder.path());
    StorageLock second(folder.path());
    ASSERT_EQ(first.tryLock(), StorageLock::Result::Locked);
    EXPECT_EQ(second.tryLock(), StorageLock::Result::HeldByOther);
    EXPECT_EQ(second.ownerPid(), ::getpid());
    first.unlock();
    EXPECT_EQ(second.tryLock(), StorageLock::Result::Locked);
}

TEST(StorageLockTest, ALockLeftByAProcessThatDiedIsTakenOver) {
    QTemporaryDir folder;
    // A child takes the lock and ends without giving it back, as a crashed copy would.
    const pid_t child = ::fork();
    ASSERT_GE(child, 0);
    if (child == 0) {
        StorageLock lock(folder.path());
        ::_exit(lock.tryLock() == StorageLock::Result::Locked ? 0 : 1);
    }
    int status = 0;
    ASSERT_EQ(::waitpid(child, &status, 0), child);
    ASSERT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0);
    ASSERT_TRUE(QFile::exists(folder.filePath(kLockFileName))) << "the dead copy's lock is there";

    StorageLock lock(folder.path());
    EXPECT_EQ(lock.tryLock(), StorageLock::Result::Locked);
}

TEST(StorageLockTest, AFolderThatCannotHoldTheLockSaysSo) {
    QTemporaryDir root;
    QFile file(root.filePath("file"));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    StorageLock lock(root.filePath("file/app"));
    EXPECT_EQ(lock.tryLock(), StorageLock::Result::Failed);
    EXPECT_FALSE(lock.error().isEmpty());
}

struct NameRow {
    const char* name;
    bool leftover;
};
void PrintTo(const NameRow& row, std::ostream* out) {
    *out << row.name;
}

class SaveLeftoverTest : public ::testing::TestWithParam<NameRow> {};

TEST_P(SaveLeftoverTest, OnlyTheNamesASaveMakesForOurTwoFiles) {
    EXPECT_EQ(IsSaveLeftover(QString::fromUtf8(GetParam().name)), GetParam().leftover);
}

INSTANTIATE_TEST_SUITE_P(
    Names, SaveLeftoverTest,
    ::testing::Values(NameRow{"settings.bin.aB3xYz", true}, NameRow{"memory.txt.Q7k2Lm", true},
                      NameRow{"memory.txt.123456", true}, NameRow{"memory.txt.backup", false},
                      NameRow{"memory.txt.bak", false}, NameRow{"memory.txt.2.bak", false},
                      NameRow{"memory.txt.aB3xYz7", false}, NameRow{"memory.txt", false},
                      NameRow{"notes.txt.aB3xYz", false}, NameRow{"Memory.txt.aB3xYz", false},
                      NameRow{"memory.txtXaB3xYz", false}, NameRow{"settings.bin.aB3-Yz", false}));

}  // namespace
}  // namespace lumidot
