// "Open Recent": the files opened last, newest first, at most eight, without those that
// have vanished; kept in the user's settings, so a new window shows the same list.
#include "files/file_bytes.h"
#include "mainwindow/files/file_menu_fixture.h"

namespace lumidot::testing {
namespace {

const ByteArray kDisplay5 = Hex("F0 41 10 45 12 10 20 00 05 4B F7");

struct RecentRow {
    const char* name;
    std::vector<int> opened;   // files 1, 2, ... opened in this order
    std::vector<int> deleted;  // then deleted
    std::vector<int> shown;    // the list, from the top
};

class RecentTest : public FileMenuTest, public ::testing::WithParamInterface<RecentRow> {
protected:
    QString file(int number) { return path(QStringLiteral("file%1.syx").arg(number)); }
    QStringList shown(const std::vector<int>& numbers) {
        QStringList paths;
        for (int number : numbers) paths << QDir::toNativeSeparators(file(number));
        return paths;
    }
};

TEST_P(RecentTest, NewestFirstAtMostEightNoneVanished) {
    const RecentRow& row = GetParam();
    for (int number = 1; number <= 10; ++number) {
        write(QStringLiteral("file%1.syx").arg(number), kDisplay5);
    }
    for (int number : row.opened) ASSERT_TRUE(actions().openFile(file(number)));
    for (int number : row.deleted) QFile::remove(file(number));
    EXPECT_EQ(recentShown(), shown(row.shown));
    EXPECT_EQ(actions().recentMenu()->menuAction()->isEnabled(), !row.shown.empty());

    // Another window on the same settings shows the same list.
    MainForm other(fake.platform, folder.path());
    other.findChild<FileActions*>()->recentFiles().useSettingsFile(path("recent.ini"));
    EXPECT_EQ(other.findChild<FileActions*>()->recentFiles().paths(), shown(row.shown));
}

INSTANTIATE_TEST_SUITE_P(
    Files, RecentTest,
    ::testing::Values(
        RecentRow{"None", {}, {}, {}}, RecentRow{"NewestFirst", {1, 2, 3}, {}, {3, 2, 1}},
        RecentRow{"OpenedAgainComesFirst", {1, 2, 3, 1}, {}, {1, 3, 2}},
        RecentRow{"AtMostEight", {1, 2, 3, 4, 5, 6, 7, 8, 9, 10}, {}, {10, 9, 8, 7, 6, 5, 4, 3}},
        RecentRow{"VanishedFilesLeave", {1, 2, 3}, {2}, {3, 1}},
        RecentRow{"AllVanished", {1, 2}, {1, 2}, {}}),
    [](const auto& info) { return std::string(info.param.name); });

TEST_F(FileMenuTest, ChoosingARecentFileOpensItAndClearListEmptiesTheList) {
    const QString first = write(QStringLiteral("five.syx"), kDisplay5);
    const QString second =
        write(QStringLiteral("hi.syx"), Hex("F0 41 10 45 12 10 00 00 48 69 3F F7"));
    actions().openFile(first);
    actions().openFile(second);
    recentShown();
    QList<QAction*> items = actions().recentMenu()->actions();
    ASSERT_GE(items.size(), 2);
    EXPECT_EQ(items[1]->text(), QStringLiteral("&2 ") + QDir::toNativeSeparators(first));
    items[1]->trigger();
    EXPECT_EQ(fake.prompts.modalRuns, 3);
    EXPECT_EQ(results, QStringLiteral(" #1. [offset 0] Graphic: Display page 5\r\n"));
    EXPECT_EQ(recentShown().value(0), QDir::toNativeSeparators(first));

    QAction* clear = actions().recentMenu()->actions().value(3);
    ASSERT_NE(clear, nullptr);
    EXPECT_EQ(clear->text(), QStringLiteral("&Clear List"));
    clear->trigger();
    EXPECT_TRUE(recentShown().isEmpty());
    EXPECT_FALSE(actions().recentMenu()->menuAction()->isEnabled());
}

// Gone between the menu's filling and the choice: said so, and off the list.
TEST_F(FileMenuTest, ARecentFileGoneMeanwhileIsReportedAndDropped) {
    const QString gone = write(QStringLiteral("gone.syx"), kDisplay5);
    actions().openFile(gone);
    recentShown();
    QFile::remove(gone);
    actions().recentMenu()->actions().value(0)->trigger();
    EXPECT_EQ(lastBoxTitle(), QStringLiteral("Cannot open file"));
    EXPECT_TRUE(
        fake.prompts.shown.back().prompt.endsWith(QStringLiteral("The file was not found.")));
    EXPECT_TRUE(actions().recentFiles().paths().isEmpty());
}

// The dialogs start in the folder of the file opened last.
TEST_F(FileMenuTest, DialogsStartWhereTheLastFileWas) {
    QDir(files.path()).mkdir(QStringLiteral("songs"));
    actions().openFile(write(QStringLiteral("songs/five.syx"), kDisplay5));
    choose("actionOpen");
    choose("actionExportPages");
    ASSERT_EQ(fake.files.asked.size(), 2u);
    EXPECT_EQ(fake.files.asked[0].start, path(QStringLiteral("songs")));
    EXPECT_EQ(fake.files.asked[1].start, path(QStringLiteral("songs/pages.syx")));
}

}  // namespace
}  // namespace lumidot::testing
