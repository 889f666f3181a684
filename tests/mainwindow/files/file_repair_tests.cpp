// "Repair checksums in file...": a repaired copy where the user says, the original left
// alone unless the user picks its very name and confirms, and a report of what changed where.
#include "files/file_bytes.h"
#include "mainwindow/files/file_menu_fixture.h"

namespace lumidot::testing {
namespace {

// GS reset with checksum 00 (should be 41), text "Hi" as it should be, display of page 5
// with checksum 00 (should be 4B).
const ByteArray kBroken =
    Hex("F0 41 10 42 12 40 00 7F 00 00 F7 F0 41 10 45 12 10 00 00 48 69 3F F7 "
        "F0 41 10 45 12 10 20 00 05 00 F7");
const ByteArray kFixed =
    Hex("F0 41 10 42 12 40 00 7F 00 41 F7 F0 41 10 45 12 10 00 00 48 69 3F F7 "
        "F0 41 10 45 12 10 20 00 05 4B F7");

struct RepairRow {
    const char* name;
    const char* file;
    ByteArray bytes;
    ByteArray repaired;
    std::vector<const char*> report;  // lines of the report, in order
};

class RepairTest : public FileMenuTest, public ::testing::WithParamInterface<RepairRow> {};

TEST_P(RepairTest, ARepairedCopyAndWhereItChanged) {
    const RepairRow& row = GetParam();
    const QString original = write(QLatin1String(row.file), row.bytes);
    const QString copy = path(QStringLiteral("copy"));
    choose("actionRepair", {original, copy});

    ASSERT_EQ(fake.files.asked.size(), 2u);
    EXPECT_EQ(fake.files.asked[0].kind, FileQuestion::Kind::Open);
    EXPECT_EQ(fake.files.asked[1].kind, FileQuestion::Kind::Save);
    const QFileInfo info(original);
    EXPECT_EQ(fake.files.asked[1].start,
              info.dir().filePath(info.completeBaseName() + "-repaired." + info.suffix()));
    EXPECT_EQ(HexOf(read(copy)), HexOf(row.repaired));
    EXPECT_EQ(HexOf(read(original)), HexOf(row.bytes)) << "the original stays as it was";

    ASSERT_EQ(fake.prompts.shown.size(), 1u);
    const ShownMessage& box = fake.prompts.shown[0];
    EXPECT_EQ(box.title, QStringLiteral("Checksums repaired"));
    EXPECT_EQ(box.icon, Prompts::Icon::Information);
    QStringList lines = box.prompt.split(QStringLiteral("\r\n"));
    EXPECT_EQ(lines.mid(0, 5),
              (QStringList{QStringLiteral("2 messages were repaired in"),
                           QDir::toNativeSeparators(original), QStringLiteral("and written to"),
                           QDir::toNativeSeparators(copy), QString()}));
    QStringList report;
    for (const char* line : row.report) report << QLatin1String(line);
    EXPECT_EQ(lines.mid(5), report);
}

INSTANTIATE_TEST_SUITE_P(
    Files, RepairTest,
    ::testing::Values(RepairRow{"Syx",
                                "broken.syx",
                                kBroken,
                                kFixed,
                                {"[offset 0] checksum at byte 9 changed from 00 to 41",
                                 "[offset 23] checksum at byte 32 changed from 00 to 4B"}},
                      // The second message stands in two packets, its checksum in the second, a
                      // second and a half in at 120 quarter notes a minute.
                      RepairRow{
                          "MidiAcrossPackets",
                          "song.mid",
                          Smf(0, 96,
                              {"00 F0 0A 41 10 42 12 40 00 7F 00 00 F7 "
                               "82 20 F0 04 41 10 45 12 60 F7 06 10 20 00 05 00 F7 00 FF 2F 00"}),
                          Smf(0, 96,
                              {"00 F0 0A 41 10 42 12 40 00 7F 00 41 F7 "
                               "82 20 F0 04 41 10 45 12 60 F7 06 10 20 00 05 4B F7 00 FF 2F 00"}),
                          {"[00:00.000 track 1] checksum at byte 33 changed from 00 to 41",
                           "[00:01.500 track 1] checksum at byte 50 changed from 00 to 4B"}}),
    [](const auto& info) { return std::string(info.param.name); });

struct SameNameRow {
    const char* name;
    Prompts::Answer answer;
    bool replaced;
};

class RepairInPlaceTest : public FileMenuTest, public ::testing::WithParamInterface<SameNameRow> {};

// The same file by another spelling of its path counts as the same file.
TEST_P(RepairInPlaceTest, TheOriginalIsReplacedOnlyWhenConfirmed) {
    const QString original = write(QStringLiteral("broken.syx"), kBroken);
    fake.prompts.answers.push_back(GetParam().answer);
    choose("actionRepair", {original, files.path() + QStringLiteral("/./broken.syx")});

    ASSERT_GE(fake.prompts.shown.size(), 1u);
    const ShownMessage& question = fake.prompts.shown[0];
    EXPECT_EQ(question.title, QStringLiteral("Replace the original?"));
    EXPECT_EQ(question.buttons, Prompts::Buttons::YesNo);
    EXPECT_EQ(question.defaultAnswer, Prompts::Answer::No);
    EXPECT_EQ(HexOf(read(original)), HexOf(GetParam().replaced ? kFixed : kBroken));
    EXPECT_EQ(fake.prompts.shown.size(), GetParam().replaced ? 2u : 1u) << "the report follows";
    EXPECT_EQ(QDir(files.path()).entryList({QStringLiteral("*.syx")}),
              QStringList{QStringLiteral("broken.syx")});
}

INSTANTIATE_TEST_SUITE_P(Files, RepairInPlaceTest,
                         ::testing::Values(SameNameRow{"Yes", Prompts::Answer::Yes, true},
                                           SameNameRow{"No", Prompts::Answer::No, false}),
                         [](const auto& info) { return std::string(info.param.name); });

struct RefusalRow {
    const char* name;
    const char* file;
    ByteArray bytes;
    const char* title;
    const char* said;
};

class RepairRefusalTest : public FileMenuTest, public ::testing::WithParamInterface<RefusalRow> {};

// Nothing to write: no second dialog, no file.
TEST_P(RepairRefusalTest, NothingIsWritten) {
    const RefusalRow& row = GetParam();
    const QString original = write(QLatin1String(row.file), row.bytes);
    choose("actionRepair", {original, path(QStringLiteral("copy"))});
    EXPECT_EQ(fake.files.asked.size(), 1u);
    ASSERT_EQ(fake.prompts.shown.size(), 1u);
    EXPECT_EQ(fake.prompts.shown[0].title, QLatin1String(row.title));
    EXPECT_TRUE(fake.prompts.shown[0].prompt.contains(QLatin1String(row.said)))
        << fake.prompts.shown[0].prompt.toStdString();
    EXPECT_FALSE(QFile::exists(path(QStringLiteral("copy"))));
}

INSTANTIATE_TEST_SUITE_P(
    Files, RepairRefusalTest,
    ::testing::Values(
        RefusalRow{"AllRight", "fine.syx", kFixed, "Repair checksums",
                   "Every checksum in it is right: nothing needs repairing."},
        RefusalRow{"HexText", "fine.txt", Hex("46 30 20 46 37"), "Cannot repair file",
                   "It is neither a .syx file nor a MIDI file."},
        RefusalRow{"MidiCutShort", "cut.mid",
                   Join({Header(0, 1, 96), Hex("4D 54 72 6B 00 00 01 00 00 F0 03")}),
                   "Cannot repair file",
                   "At byte 18: chunk length 256 runs past the end of the file (3 bytes "
                   "follow).\r\nNothing was written."},
        RefusalRow{"Empty", "empty.syx", {}, "Cannot open file", "The file is empty."}),
    [](const auto& info) { return std::string(info.param.name); });

}  // namespace
}  // namespace lumidot::testing
