// memory.txt and settings.bin with real files in temporary folders, through the window.
#include "storage/window/persistence_fixture.h"

namespace lumidot::testing {
namespace {

TEST_F(PersistenceTest, FirstRunReadsNothingAndClosingWritesBothFiles) {
    EXPECT_EQ(window->FDPageNum(), 1);
    EXPECT_TRUE(ui().optSEGStore->isChecked());
    EXPECT_EQ(pane(), QString::fromStdString(MakeGraphicStoreSysEx(Page{}, 1)));
    EXPECT_FALSE(window->SysExCopyAuto());
    EXPECT_EQ(ui().txtHexPrefix->text(), QString());
    EXPECT_EQ(ui().txtHexSep->text(), QStringLiteral(" "));
    EXPECT_EQ(window->MemoryFilePath(), file("memory.txt"));
    EXPECT_EQ(window->SettingsFilePath(), file("settings.bin"));
    close();
    QByteArray expected;
    for (int page = 1; page <= 10; ++page) expected += StoreLine(Page{}, page) + "\r\n";
    EXPECT_EQ(ReadAll(file("memory.txt")), expected);
    EXPECT_EQ(ReadAll(file("settings.bin")), kDefaultSettings);
}

TEST_F(PersistenceTest, TenRandomPagesAndTheLayoutSurviveARestartBitForBit) {
    std::mt19937 random(1234);
    std::array<Page, 10> pages{};
    for (int number = 1; number <= 10; ++number) {
        pages[number - 1] = RandomPage(random);
        window->SetPageNum(static_cast<std::uint8_t>(number));
        window->SetFDPixelColAll(pages[number - 1]);
    }
    window->SetPageNum(4);
    ui().txtHexPrefix->setText(QStringLiteral("0x"));
    ui().txtHexSuffix->setText(QStringLiteral("h"));
    ui().txtHexSep->setText(QStringLiteral(", "));
    restart();

    EXPECT_EQ(window->FDPageNum(), 1);
    EXPECT_EQ(ui().txtHexPrefix->text(), QStringLiteral("0x"));
    EXPECT_EQ(ui().txtHexSuffix->text(), QStringLiteral("h"));
    EXPECT_EQ(ui().txtHexSep->text(), QStringLiteral(", "));
    for (int number = 1; number <= 10; ++number) {
        window->SetPageNum(static_cast<std::uint8_t>(number));
        EXPECT_EQ(window->FDPixels(), pages[number - 1]) << "page " << number;
    }
    EXPECT_TRUE(ui().optSEGStore->isChecked());
}

TEST_F(PersistenceTest, SettingsAreReadWithoutMemoryFile) {
    window.reset();
    QByteArray settings("\2\0\0\0" "0x" "\0\0\0\0" "\1\0\0\0" ",", 15);
    WriteAll(file("settings.bin"), settings);
    start();
    EXPECT_EQ(ui().txtHexPrefix->text(), QStringLiteral("0x"));
    EXPECT_EQ(ui().txtHexSep->text(), QStringLiteral(","));
    EXPECT_TRUE(pane().startsWith(QStringLiteral("0xF0,0x41,0x10,0x45,0x12,0x10,0x01,0x00,")));
}

TEST_F(PersistenceTest, NonAsciiSeparatorIsStoredAsUtf8) {
    ui().txtHexSep->setText(QStringLiteral("\u00e9"));
    restart();
    EXPECT_EQ(ReadAll(file("settings.bin")),
              QByteArray("\0\0\0\0\0\0\0\0\2\0\0\0\xC3\xA9", 14));
    EXPECT_EQ(ui().txtHexSep->text(), QStringLiteral("\u00e9"));
}

TEST_F(PersistenceTest, OnlyTheFirstTenLinesAreApplied) {
    window.reset();
    Page dot{};
    dot[0] = true;
    QByteArray memory;
    for (int line = 0; line < 10; ++line) memory += StoreLine(Page{}, 1 + line % 10) + "\r\n";
    memory += StoreLine(dot, 2) + "\r\n";  // an eleventh line
    WriteAll(file("memory.txt"), memory);
    start();
    window->SetPageNum(2);
    EXPECT_FALSE(window->FDPixels()[0]);
}

TEST_F(PersistenceTest, FewerLinesEmptyAndForeignLinesLeaveOtherPagesAlone) {
    window.reset();
    Page dot{};
    dot[17] = true;
    const QByteArray memory = "\r\n" + StoreLine(dot, 7) + "\r\nnot a message at all\r\n" +
                              "F0 41 10 45 12 10 00 00 48 69 3F F7\r\n";
    WriteAll(file("memory.txt"), memory);
    start();
    EXPECT_EQ(window->FDPageNum(), 1);
    EXPECT_TRUE(ui().optSEGStore->isChecked());
    window->SetPageNum(7);
    EXPECT_TRUE(window->FDPixels()[17]);
    window->SetPageNum(3);
    EXPECT_EQ(window->FDPixels(), Page{});
}

TEST_F(PersistenceTest, AFolderNamedMemoryTxtCountsAsMissing) {
    window.reset();
    ASSERT_TRUE(QDir(folder.path()).mkdir(QStringLiteral("memory.txt")));
    start();
    EXPECT_EQ(window->FDPageNum(), 1);
}

struct DamagedSettingsRow {
    const char* name;
    QByteArray bytes;
    const char* prefix;
    const char* suffix;
    const char* separator;
};

class DamagedSettingsTest : public PersistenceTest,
                            public ::testing::WithParamInterface<DamagedSettingsRow> {};

TEST_P(DamagedSettingsTest, KeepsWhatCanBeReadAndDesignedValuesForTheRest) {
    const DamagedSettingsRow& row = GetParam();
    window.reset();
    WriteAll(file("settings.bin"), row.bytes);
    start();
    EXPECT_EQ(ui().txtHexPrefix->text(), QString::fromUtf8(row.prefix));
    EXPECT_EQ(ui().txtHexSuffix->text(), QString::fromUtf8(row.suffix));
    EXPECT_EQ(ui().txtHexSep->text(), QString::fromUtf8(row.separator));
    EXPECT_TRUE(fake.prompts.shown.empty()) << "nothing alarming is said";
}

INSTANTIATE_TEST_SUITE_P(
    Files, DamagedSettingsTest,
    ::testing::Values(
        DamagedSettingsRow{"Empty", QByteArray(), "", "", " "},
        DamagedSettingsRow{"CutInsideALength", QByteArray("\2\0\0\0" "0x" "\0\0", 8), "0x", "", " "},
        DamagedSettingsRow{"ShorterThanItsLength", QByteArray("\2\0\0\0" "0x" "\5\0\0\0" "ab", 12), "0x", "", " "},
        DamagedSettingsRow{"NegativeLength", QByteArray("\xff\xff\xff\xff" "0x", 6), "", "", " "},
        DamagedSettingsRow{"AbsurdLength", QByteArray("\xff\xff\xff\x7f" "0x", 6), "", "", " "},
        DamagedSettingsRow{"NotUtf8", QByteArray("\2\0\0\0" "0x" "\1\0\0\0" "\xff" "\1\0\0\0" ",", 16), "0x", "", " "},
        DamagedSettingsRow{"LongerThanTheField", QByteArray("\x08\0\0\0" "abcdefgh" "\0\0\0\0" "\1\0\0\0" ";", 21), "abcde", "", ";"},
        DamagedSettingsRow{"TrailingBytes", QByteArray("\0\0\0\0" "\0\0\0\0" "\1\0\0\0" "-" "junk", 17), "", "", "-"}),
    [](const auto& info) { return std::string(info.param.name); });

TEST_F(PersistenceTest, AnInterruptedSaveLeavesTheOldFilesWhole) {
    ui().txtHexPrefix->setText(QStringLiteral("$"));
    restart();
    const QByteArray oldMemory = ReadAll(file("memory.txt"));
    const QByteArray oldSettings = ReadAll(file("settings.bin"));
    ASSERT_FALSE(oldMemory.isEmpty());

    Page full{};
    full.fill(true);
    window->SetFDPixelColAll(full);
    ui().txtHexPrefix->setText(QStringLiteral("0x"));
    window->setBeforeCommit([](const QString&) { return false; });
    close();
    EXPECT_EQ(ReadAll(file("memory.txt")), oldMemory);
    EXPECT_EQ(ReadAll(file("settings.bin")), oldSettings);
    EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files | QDir::Hidden).size(), 2)
        << "no temporary file is left behind";
}

TEST_F(PersistenceTest, ReadOnlyProgramFolderFallsBackToTheUserDataFolder) {
    window.reset();
    const QString userFolder = QStandardPaths::writableLocation(QStandardPaths::AppDataLocation);
    QDir(userFolder).removeRecursively();
    // A folder that can never be created: its parent is a file.
    WriteAll(file("plain-file"), "x");
    const QString unwritable = file("plain-file") + QStringLiteral("/app");
    window = std::make_unique<MainForm>(fake.platform, unwritable);
    window->Form_Load();
    ui().txtHexSuffix->setText(QStringLiteral("h"));
    close();
    EXPECT_TRUE(fake.prompts.shown.empty());
    EXPECT_EQ(ReadAll(userFolder + QStringLiteral("/settings.bin")).size(), 14);

    window = std::make_unique<MainForm>(fake.platform, unwritable);
    window->Form_Load();
    EXPECT_EQ(ui().txtHexSuffix->text(), QStringLiteral("h"));
    window.reset();
    QDir(userFolder).removeRecursively();
}

TEST_F(PersistenceTest, NothingWritableTellsTheUserWhichFileAndWhy) {
    window->setBeforeCommit([](const QString&) { return false; });
    close();
    ASSERT_EQ(fake.prompts.shown.size(), 1u);
    EXPECT_EQ(fake.prompts.shown[0].icon, Prompts::Icon::Critical);
    EXPECT_TRUE(fake.prompts.shown[0].prompt.contains(QStringLiteral("memory.txt")));
    EXPECT_TRUE(fake.prompts.shown[0].prompt.contains(QStringLiteral("interrupted")));
    QDir(QStandardPaths::writableLocation(QStandardPaths::AppDataLocation)).removeRecursively();
}

// --- memory.txt in other forms ----------------------------------------------

QByteArray Utf16(const QByteArray& text, bool bigEndian, bool mark) {
    QByteArray bytes;
    if (mark) bytes += bigEndian ? "\xFE\xFF" : "\xFF\xFE";
    for (char c : text) bytes += bigEndian ? QByteArray(1, '\0') + c : QByteArray(1, c) + '\0';
    return bytes;
}

QByteArray MixedLineEnds(const QByteArray& text) {
    const QList<QByteArray> lines = text.split('\n');
    const char* ends[] = {"\r\n", "\n", "\r"};
    QByteArray bytes;
    for (int i = 0; i < 10; ++i) bytes += lines[i].chopped(1) + ends[i % 3];
    return bytes;
}

struct FormRow {
    const char* name;
    std::function<QByteArray(const QByteArray& written)> form;
};
void PrintTo(const FormRow& row, std::ostream* out) { *out << row.name; }

class MemoryFormTest : public PersistenceTest, public ::testing::WithParamInterface<FormRow> {};

TEST_P(MemoryFormTest, KeepsAllTenPagesAndIsWrittenBackInItsOwnForm) {
    window.reset();
    WriteAll(file("memory.txt"), GetParam().form(DottedMemory()));
    start();
    EXPECT_EQ(pages(), dottedPages());
    EXPECT_EQ(takePrompts(), QStringList()) << "nothing was lost, so nothing is said";
    close();
    EXPECT_EQ(ReadAll(file("memory.txt")), DottedMemory());
    EXPECT_FALSE(QFile::exists(file("memory.txt.bak")));
}

INSTANTIATE_TEST_SUITE_P(
    Forms, MemoryFormTest,
    ::testing::Values(
        FormRow{"CrLf", [](const QByteArray& t) { return t; }},
        FormRow{"Lf", [](QByteArray t) { return t.replace("\r\n", "\n"); }},
        FormRow{"Cr", [](QByteArray t) { return t.replace("\r\n", "\r"); }},
        FormRow{"Mixed", [](const QByteArray& t) { return MixedLineEnds(t); }},
        FormRow{"NoLastLineEnd", [](const QByteArray& t) { return t.chopped(2); }},
        FormRow{"Utf8ByteOrderMark", [](const QByteArray& t) { return "\xEF\xBB\xBF" + t; }},
        FormRow{"Utf16LittleEndian", [](const QByteArray& t) { return Utf16(t, false, true); }},
        FormRow{"Utf16BigEndian", [](const QByteArray& t) { return Utf16(t, true, true); }},
        FormRow{"Utf16LittleEndianUnmarked", [](const QByteArray& t) { return Utf16(t, false, false); }},
        FormRow{"Utf16BigEndianUnmarked", [](const QByteArray& t) { return Utf16(t, true, false); }},
        FormRow{"Utf16WithLfOnly", [](QByteArray t) { return Utf16(t.replace("\r\n", "\n"), false, true); }}),
    [](const auto& info) { return std::string(info.param.name); });

// --- memory.txt holding more than the pages ---------------------------------

struct LossyRow {
    const char* name;
    std::function<QByteArray()> bytes;
    const char* told;            // what the message says about the lines
    std::vector<int> blankPages;  // pages the file holds no picture for
};
void PrintTo(const LossyRow& row, std::ostream* out) { *out << row.name; }

class LossyMemoryTest : public PersistenceTest, public ::testing::WithParamInterface<LossyRow> {};

TEST_P(LossyMemoryTest, TheFileIsKeptAsBakBeforeTheFirstSaveAndTheUserIsToldAtStart) {
    window.reset();
    const QByteArray original = GetParam().bytes();
    WriteAll(file("memory.txt"), original);
    start();
    const QStringList prompts = takePrompts();
    ASSERT_EQ(prompts.size(), 1);
    EXPECT_TRUE(prompts[0].contains(QString::fromUtf8(GetParam().told))) << prompts[0].toStdString();
    EXPECT_TRUE(prompts[0].contains(file("memory.txt.bak")));
    EXPECT_FALSE(QFile::exists(file("memory.txt.bak"))) << "nothing is written before the save";

    close();
    EXPECT_EQ(ReadAll(file("memory.txt.bak")), original);
    QByteArray saved;
    for (int page = 1; page <= 10; ++page) {
        const bool blank = std::count(GetParam().blankPages.begin(), GetParam().blankPages.end(), page);
        saved += StoreLine(blank ? Page{} : DotPage(page), page) + "\r\n";
    }
    EXPECT_EQ(ReadAll(file("memory.txt")), saved);
    EXPECT_TRUE(takePrompts().isEmpty());

    restart();
    EXPECT_TRUE(takePrompts().isEmpty()) << "the saved file loses nothing";
    close();
    EXPECT_FALSE(QFile::exists(file("memory.txt.2.bak")));
}

INSTANTIATE_TEST_SUITE_P(
    Files, LossyMemoryTest,
    ::testing::Values(
        LossyRow{"ATextMessageAmongThePages",
                 [] { return DottedMemory() + "F0 41 10 45 12 10 00 00 48 69 3F F7\r\n"; },
                 "Line 11 of", {}},
        LossyRow{"ForeignLines",
                 [] {
                     QList<QByteArray> lines = DottedMemory().split('\n');
                     lines[2] = "not a message\r";
                     lines[5] = "F0 41 10 45 12 10 20 00 05 4B F7\r";
                     return lines.join('\n') + "1\r\n2\r\n";
                 },
                 "Lines 3, 6 and 11 to 12 of", {3, 6}},
        LossyRow{"LongerThanIsRead",
                 [] { return DottedMemory() + QByteArray(1100 * 1024, ' '); },
                 "is longer than Lumidot reads", {}}),
    [](const auto& info) { return std::string(info.param.name); });

TEST_F(PersistenceTest, AnOlderBakIsNotReplaced) {
    window.reset();
    WriteAll(file("memory.txt.bak"), "the user's own");
    const QByteArray lossy = DottedMemory() + "extra\r\n";
    WriteAll(file("memory.txt"), lossy);
    start();
    EXPECT_TRUE(takePrompts().value(0).contains(file("memory.txt.2.bak")));
    close();
    EXPECT_EQ(ReadAll(file("memory.txt.bak")), "the user's own");
    EXPECT_EQ(ReadAll(file("memory.txt.2.bak")), lossy);
}

}  // namespace
}  // namespace lumidot::testing
