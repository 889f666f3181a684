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

TEST_F(PersistenceTest, NonAsciiSeparatorIsStoredAsUtf8) {
    ui().txtHexSep->setText(QStringLiteral("\u00e9"));
    restart();
    EXPECT_EQ(ReadAll(file("settings.bin")), Settings("", "", "\xC3\xA9"));
    EXPECT_EQ(ui().txtHexSep->text(), QStringLiteral("\u00e9"));
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
    startWith("settings.bin", row.bytes);
    const QString prefix = QString::fromUtf8(row.prefix), suffix = QString::fromUtf8(row.suffix),
                  separator = QString::fromUtf8(row.separator);
    EXPECT_EQ(ui().txtHexPrefix->text(), prefix);
    EXPECT_EQ(ui().txtHexSuffix->text(), suffix);
    EXPECT_EQ(ui().txtHexSep->text(), separator);
    EXPECT_TRUE(pane().startsWith(prefix + "F0" + suffix + separator + prefix + "41" + suffix))
        << "the pane is written in the layout read";
    EXPECT_TRUE(fake.prompts.shown.empty()) << "nothing alarming is said";
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(
    Files, DamagedSettingsTest,
    ::testing::Values(
        DamagedSettingsRow{"WholeWithoutMemoryFile", Settings("0x", "", ","), "0x", "", ","},
        DamagedSettingsRow{"Empty", QByteArray(), "", "", " "},
        DamagedSettingsRow{"CutInsideALength", QByteArray("\2\0\0\0" "0x" "\0\0", 8), "0x", "", " "},
        DamagedSettingsRow{"ShorterThanItsLength", QByteArray("\2\0\0\0" "0x" "\5\0\0\0" "ab", 12), "0x", "", " "},
        DamagedSettingsRow{"NegativeLength", QByteArray("\xff\xff\xff\xff" "0x", 6), "", "", " "},
        DamagedSettingsRow{"AbsurdLength", QByteArray("\xff\xff\xff\x7f" "0x", 6), "", "", " "},
        DamagedSettingsRow{"NotUtf8", Settings("0x", "\xff", ","), "0x", "", " "},
        DamagedSettingsRow{"LongerThanTheField", Settings("abcdefgh", "", ";"), "abcde", "", ";"},
        DamagedSettingsRow{"TrailingBytes", Settings("", "", "-") + "junk", "", "", "-"}),
    [](const auto& info) { return std::string(info.param.name); });
// clang-format on

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

TEST_F(PersistenceTest, AProgramFolderThatCannotBeMadeFallsBackSilentlyToTheUserFolder) {
    WriteAll(file("plain-file"), "x");  // no folder can ever be made under a file
    const QString unwritable = file("plain-file") + QStringLiteral("/app");
    startIn(unwritable);
    ui().txtHexSuffix->setText(QStringLiteral("h"));
    close();
    EXPECT_TRUE(fake.prompts.shown.empty());
    EXPECT_EQ(ReadAll(userFile("settings.bin")), Settings("", "h", " "));
    startIn(unwritable);
    EXPECT_EQ(ui().txtHexSuffix->text(), QStringLiteral("h"));
}

TEST_F(PersistenceTest, NothingWritableTellsTheUserWhichFileAndWhy) {
    window->setBeforeCommit([](const QString&) { return false; });
    close();
    ASSERT_EQ(fake.prompts.shown.size(), 1u);
    EXPECT_EQ(fake.prompts.shown[0].icon, Prompts::Icon::Critical);
    EXPECT_TRUE(fake.prompts.shown[0].prompt.contains(QStringLiteral("memory.txt")));
    EXPECT_TRUE(fake.prompts.shown[0].prompt.contains(QStringLiteral("interrupted")));
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
void PrintTo(const FormRow& row, std::ostream* out) {
    *out << row.name;
}

class MemoryFormTest : public PersistenceTest, public ::testing::WithParamInterface<FormRow> {};

TEST_P(MemoryFormTest, KeepsAllTenPagesAndIsWrittenBackInItsOwnForm) {
    startWith("memory.txt", GetParam().form(DottedMemory()));
    EXPECT_EQ(pages(), dottedPages());
    EXPECT_EQ(takePrompts(), QStringList()) << "nothing was lost, so nothing is said";
    close();
    EXPECT_EQ(ReadAll(file("memory.txt")), DottedMemory());
    EXPECT_FALSE(QFile::exists(file("memory.txt.bak")));
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(
    Forms, MemoryFormTest,
    ::testing::Values(
        FormRow{"CrLf", [](const QByteArray& t) { return t; }},
        FormRow{"Lf", [](QByteArray t) { return t.replace("\r\n", "\n"); }},
        FormRow{"Cr", [](QByteArray t) { return t.replace("\r\n", "\r"); }},
        FormRow{"Mixed", MixedLineEnds},
        FormRow{"NoLastLineEnd", [](const QByteArray& t) { return t.chopped(2); }},
        FormRow{"Utf8ByteOrderMark", [](const QByteArray& t) { return "\xEF\xBB\xBF" + t; }},
        FormRow{"Utf16LittleEndian", [](const QByteArray& t) { return Utf16(t, false, true); }},
        FormRow{"Utf16BigEndian", [](const QByteArray& t) { return Utf16(t, true, true); }},
        FormRow{"Utf16LittleEndianUnmarked", [](const QByteArray& t) { return Utf16(t, false, false); }},
        FormRow{"Utf16BigEndianUnmarked", [](const QByteArray& t) { return Utf16(t, true, false); }},
        FormRow{"Utf16WithLfOnly", [](QByteArray t) { return Utf16(t.replace("\r\n", "\n"), false, true); }}),
    [](const auto& info) { return std::string(info.param.name); });
// clang-format on

// --- memory.txt holding more than the pages ---------------------------------

struct LossyRow {
    const char* name;
    std::function<QByteArray()> bytes;
    const char* told;             // what the message says about the lines
    std::vector<int> blankPages;  // pages the file holds no picture for
};
void PrintTo(const LossyRow& row, std::ostream* out) {
    *out << row.name;
}

class LossyMemoryTest : public PersistenceTest, public ::testing::WithParamInterface<LossyRow> {};

TEST_P(LossyMemoryTest, TheFileIsKeptAsBakBeforeTheFirstSaveAndTheUserIsToldAtStart) {
    const QByteArray original = GetParam().bytes();
    startWith("memory.txt", original);
    const QStringList prompts = takePrompts();
    ASSERT_EQ(prompts.size(), 1);
    EXPECT_TRUE(prompts[0].contains(QString::fromUtf8(GetParam().told)))
        << prompts[0].toStdString();
    EXPECT_TRUE(prompts[0].contains(file("memory.txt.bak")));
    EXPECT_FALSE(QFile::exists(file("memory.txt.bak"))) << "nothing is written before the save";

    close();
    EXPECT_EQ(ReadAll(file("memory.txt.bak")), original);
    QByteArray saved;
    const auto expected = dottedPages(GetParam().blankPages);
    for (int page = 1; page <= 10; ++page) saved += StoreLine(expected[page - 1], page) + "\r\n";
    EXPECT_EQ(ReadAll(file("memory.txt")), saved) << "only the pages the file named are changed";
    EXPECT_TRUE(takePrompts().isEmpty());

    restart();
    EXPECT_TRUE(takePrompts().isEmpty()) << "the saved file loses nothing";
    close();
    EXPECT_FALSE(QFile::exists(file("memory.txt.2.bak")));
}

const QByteArray kTextLine = "F0 41 10 45 12 10 00 00 48 69 3F F7\r\n";

// clang-format off
INSTANTIATE_TEST_SUITE_P(
    Files, LossyMemoryTest,
    ::testing::Values(
        // Only the first ten lines are taken, even a store message after them.
        LossyRow{"AStoreAndATextMessageAfterTheTenth",
                 [] { return DottedMemory() + StoreLine(DotPage(0), 2) + "\r\n" + kTextLine; },
                 "Lines 11 to 12 of", {}},
        LossyRow{"ForeignLines",
                 [] {
                     QList<QByteArray> lines = DottedMemory().split('\n');
                     lines[2] = "not a message\r";
                     lines[5] = "F0 41 10 45 12 10 20 00 05 4B F7\r";
                     return lines.join('\n') + "1\r\n2\r\n";
                 },
                 "Lines 3, 6 and 11 to 12 of", {3, 6}},
        LossyRow{"FewerLinesBlankAndForeignOnes",
                 [] { return "\r\n" + StoreLine(DotPage(7), 7) + "\r\nnot a message at all\r\n" + kTextLine; },
                 "Lines 3 to 4 of", {1, 2, 3, 4, 5, 6, 8, 9, 10}},
        LossyRow{"LongerThanIsRead", [] { return DottedMemory() + QByteArray(1100 * 1024, ' '); },
                 "is longer than Lumidot reads", {}}),
    [](const auto& info) { return std::string(info.param.name); });
// clang-format on

TEST_F(PersistenceTest, AnOlderBakIsNotReplaced) {
    WriteAll(file("memory.txt.bak"), "the user's own");
    const QByteArray lossy = DottedMemory() + "extra\r\n";
    startWith("memory.txt", lossy);
    EXPECT_TRUE(takePrompts().value(0).contains(file("memory.txt.2.bak")));
    close();
    EXPECT_EQ(ReadAll(file("memory.txt.bak")), "the user's own");
    EXPECT_EQ(ReadAll(file("memory.txt.2.bak")), lossy);
}

}  // namespace
}  // namespace lumidot::testing
