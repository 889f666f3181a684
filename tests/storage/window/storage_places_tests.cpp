// Where the window reads and saves its two files when the program folder cannot take
// them, over several runs, with real permissions, folders, links and pipes.
#include <sys/stat.h>

#include "storage/window/persistence_fixture.h"
#include "support/permissions.h"

namespace lumidot::testing {
namespace {

class StoragePlacesTest : public PersistenceTest {
protected:
    void paintDot(int page, int index) {
        window->SetPageNum(static_cast<std::uint8_t>(page));
        Page pixels = window->FDPixels();
        pixels[static_cast<std::size_t>(index)] = true;
        window->SetFDPixelColAll(pixels);
    }
    bool hasDot(int page, int index) {
        window->SetPageNum(static_cast<std::uint8_t>(page));
        return window->FDPixels()[static_cast<std::size_t>(index)];
    }
    QString prefix() { return ui().txtHexPrefix->text(); }
};

TEST_F(StoragePlacesTest, AReadOnlyProgramFolderKeepsRunOnesWorkInRunTwo) {
    ui().txtHexPrefix->setText("A");
    restart();
    close();
    const QByteArray oldMemory = ReadAll(file("memory.txt"));
    const QByteArray oldSettings = ReadAll(file("settings.bin"));
    Chmod(folder.path(), 0555);
    {
        PermissionsRespected guard;
        ASSERT_TRUE(guard.ok()) << guard.error();
        ASSERT_FALSE(QFile(file("probe")).open(QIODevice::WriteOnly)) << "the folder refuses files";

        start();  // run 1
        QStringList prompts = takePrompts();
        EXPECT_EQ(prompts.size(), 1);
        EXPECT_TRUE(prompts.value(0).contains("cannot save beside the program"))
            << prompts.value(0).toStdString();
        EXPECT_TRUE(prompts.value(0).contains(userFolder())) << prompts.value(0).toStdString();
        EXPECT_EQ(prefix(), "A") << "the files beside the program are read this once";
        ui().txtHexPrefix->setText("B");
        paintDot(4, 77);
        close();
        EXPECT_TRUE(takePrompts().isEmpty());

        start();  // run 2
        EXPECT_TRUE(takePrompts().isEmpty()) << "nothing new to tell";
        EXPECT_EQ(prefix(), "B");
        EXPECT_TRUE(hasDot(4, 77));
        EXPECT_EQ(window->MemoryFilePath(), userFile("memory.txt"));
        close();
    }
    EXPECT_EQ(ReadAll(file("memory.txt")), oldMemory);
    EXPECT_EQ(ReadAll(file("settings.bin")), oldSettings);
}

TEST_F(StoragePlacesTest, AFolderNamedMemoryTxtIsLeftAloneAndRunOnesWorkSurvives) {
    ASSERT_TRUE(QDir(folder.path()).mkdir("memory.txt"));
    startWith("settings.bin", Settings("0x", "", " "));
    QStringList prompts = takePrompts();
    EXPECT_EQ(prompts.size(), 1);
    EXPECT_TRUE(prompts.value(0).contains(file("memory.txt") + ": it is a folder"))
        << prompts.value(0).toStdString();
    EXPECT_TRUE(prompts.value(0).contains(userFolder())) << prompts.value(0).toStdString();
    EXPECT_EQ(prefix(), "0x");
    ui().txtHexPrefix->setText("$");
    paintDot(2, 5);
    restart();

    EXPECT_EQ(takePrompts().size(), 1) << "the folder is still there, and the user is told again";
    EXPECT_EQ(prefix(), "$");
    EXPECT_TRUE(hasDot(2, 5));
    close();
    EXPECT_TRUE(QFileInfo(file("memory.txt")).isDir());
    EXPECT_EQ(ReadAll(file("settings.bin")).mid(4, 2), "0x");
}

struct UnreadableRow {
    const char* name;
    std::function<void(const QString& path)> make;
    const char* reason;
};
void PrintTo(const UnreadableRow& row, std::ostream* out) {
    *out << row.name;
}

class UnreadableMemoryTest : public StoragePlacesTest,
                             public ::testing::WithParamInterface<UnreadableRow> {};

TEST_P(UnreadableMemoryTest, IsNeverOverwrittenAndTheUserIsToldWhyAndWhere) {
    window.reset();
    GetParam().make(file("memory.txt"));
    const QFileInfo before(file("memory.txt"));
    {
        PermissionsRespected guard;
        ASSERT_TRUE(guard.ok()) << guard.error();
        start();
        paintDot(1, 0);
        close();
    }
    const QStringList prompts = takePrompts();
    EXPECT_EQ(prompts.size(), 1) << "told once, at start";
    EXPECT_TRUE(prompts.value(0).contains(file("memory.txt"))) << prompts.value(0).toStdString();
    EXPECT_TRUE(prompts.value(0).contains(GetParam().reason)) << prompts.value(0).toStdString();
    EXPECT_TRUE(prompts.value(0).contains(userFolder())) << prompts.value(0).toStdString();

    const QFileInfo after(file("memory.txt"));
    EXPECT_EQ(after.isSymLink(), before.isSymLink());
    EXPECT_EQ(after.size(), before.size());
    EXPECT_EQ(after.lastModified(), before.lastModified());
    EXPECT_TRUE(ReadAll(userFile("memory.txt")).startsWith(StoreLine(DotPage(0), 1)));
}

INSTANTIATE_TEST_SUITE_P(
    Files, UnreadableMemoryTest,
    ::testing::Values(UnreadableRow{"InputOutputError",
                                    [](const QString& p) { QFile::link("/proc/self/mem", p); },
                                    "Input/output error"},
                      UnreadableRow{"NoReadPermission",
                                    [](const QString& p) {
                                        WriteAll(p, DottedMemory());
                                        Chmod(p, 0200);
                                    },
                                    "Permission denied"},
                      UnreadableRow{"Pipe",
                                    [](const QString& p) {
                                        ::mkfifo(QFile::encodeName(p).constData(), 0600);
                                    },
                                    "not an ordinary file"}),
    [](const auto& info) { return std::string(info.param.name); });

// The user folder holds the work of a time when the program folder could not be written.
TEST_F(StoragePlacesTest, WorkKeptInTheUserFolderMovesBackBesideTheProgram) {
    window.reset();
    ASSERT_TRUE(QDir().mkpath(userFolder()));
    WriteAll(userFile("memory.txt"), DottedMemory());
    WriteAll(userFile("settings.bin"), Settings("#", "", " "));
    start();
    const QStringList prompts = takePrompts();
    EXPECT_EQ(prompts.size(), 1);
    EXPECT_TRUE(prompts.value(0).contains(userFolder()) && prompts.value(0).contains(folder.path()))
        << prompts.value(0).toStdString();
    EXPECT_EQ(pages(), dottedPages());
    EXPECT_EQ(prefix(), "#");
    restart();
    EXPECT_TRUE(takePrompts().isEmpty());
    EXPECT_EQ(pages(), dottedPages());
    EXPECT_EQ(ReadAll(file("memory.txt")), DottedMemory());
}

TEST_F(StoragePlacesTest, ASaveThatFailsBesideTheProgramGoesToTheUserFolderAndIsReadBack) {
    restart();  // files beside the program, from an earlier run
    ui().txtHexPrefix->setText("Z");
    paintDot(9, 200);
    Chmod(folder.path(), 0555);
    {
        PermissionsRespected guard;
        ASSERT_TRUE(guard.ok()) << guard.error();
        close();
    }
    Chmod(folder.path(), 0755);
    ASSERT_EQ(fake.prompts.shown.size(), 1u);
    EXPECT_EQ(fake.prompts.shown[0].title, "Pages saved elsewhere");
    EXPECT_TRUE(fake.prompts.shown[0].prompt.contains(userFolder()));
    fake.prompts.shown.clear();
    // The read-only folder kept the lock file; a new process would find its owner gone.
    ASSERT_TRUE(QFile::remove(file(".lumidot.lock")));

    start();
    ASSERT_EQ(fake.prompts.shown.size(), 1u);
    EXPECT_EQ(fake.prompts.shown[0].title, "Pages and layout files")
        << "the user is told that the newer files are read";
    EXPECT_FALSE(window->windowTitle().endsWith("[Read-Only]"));
    EXPECT_EQ(prefix(), "Z");
    EXPECT_TRUE(hasDot(9, 200));
}

TEST_F(StoragePlacesTest, WithNowhereToSaveTheWindowSaysReadOnlyAndWritesNothing) {
    window.reset();
    WriteAll(file("plain-file"), "x");
    WriteAll(userFolder(), "a file where the user folder would be");
    startIn(file("plain-file") + "/app");
    EXPECT_TRUE(window->windowTitle().endsWith(" [Read-Only]"))
        << window->windowTitle().toStdString();
    const QStringList prompts = takePrompts();
    EXPECT_EQ(prompts.size(), 1);
    EXPECT_TRUE(prompts.value(0).contains("Nothing of this session will be saved"))
        << prompts.value(0).toStdString();
    close();
    EXPECT_TRUE(takePrompts().isEmpty());
    EXPECT_EQ(ReadAll(userFolder()), "a file where the user folder would be");
}

}  // namespace
}  // namespace lumidot::testing
