// Writing files from the File menu: the pane's messages and the ten pages as .syx, the pages
// as a MIDI file that our reader and mido both read back, and repaired copies of files.
// Nothing existing is written over without a yes.
#include <QLineEdit>
#include <QPushButton>

#include "codec/graphic_page.h"
#include "codec/lcd_text.h"
#include "editor/grid_input.h"
#include "files/file_bytes.h"
#include "files/midi_file.h"
#include "files/python_peer.h"
#include "files/syx_file.h"
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

struct PaneRow {
    const char* name;
    std::function<void(MainForm&, Ui::MainForm&, FakePlatform&)> setUp;
    std::vector<std::string> messages;  // what the file holds, message by message
};

class ExportMessageTest : public FileMenuTest, public ::testing::WithParamInterface<PaneRow> {};

TEST_P(ExportMessageTest, TheMessagesInThePaneAsBytes) {
    GetParam().setUp(*window, ui(), fake);
    choose("actionExportMessage", {path(QStringLiteral("out.syx"))});
    ByteArray expected;
    for (const std::string& message : GetParam().messages) {
        const ByteArray bytes = Hex(message);
        expected.insert(expected.end(), bytes.begin(), bytes.end());
    }
    EXPECT_EQ(HexOf(read(path(QStringLiteral("out.syx")))), HexOf(expected));
    EXPECT_TRUE(fake.prompts.shown.empty()) << lastBoxTitle().toStdString();
}

void Type(Ui::MainForm& form, const char* text) {
    QTest::keyClicks(form.txtTextIn, QLatin1String(text));
}
void Layout(Ui::MainForm& form, const char* prefix, const char* suffix, const char* separator) {
    form.txtHexPrefix->setText(QLatin1String(prefix));
    form.txtHexSuffix->setText(QLatin1String(suffix));
    form.txtHexSep->setText(QLatin1String(separator));
}
void Decode(Ui::MainForm& form, FakePlatform& fake, const char* text) {
    fake.clipboard.text = QLatin1String(text);
    QTest::mouseClick(form.cmdSysExDecode, Qt::LeftButton);
}

INSTANTIATE_TEST_SUITE_P(
    Pane, ExportMessageTest,
    ::testing::Values(
        PaneRow{"LcdText",
                [](auto&, auto& form, auto&) { Type(form, "Hi"); },
                {MakeTextSysEx("Hi", "CP1252")}},
        PaneRow{"LcdTextInAnotherLayout",
                [](auto&, auto& form, auto&) {
                    Type(form, "Hi");
                    Layout(form, "0x", "h", ", ");
                },
                {MakeTextSysEx("Hi", "CP1252")}},
        PaneRow{"DisplayNone",
                [](auto&, auto& form, auto&) {
                    QTest::mouseClick(form.cmdFDPageDisplay, Qt::LeftButton);
                },
                {MakeGraphicDisplaySysEx(0)}},
        PaneRow{"StoredPage",
                [](auto& window, auto&, auto&) { window.gridInput().FDPixelMouseDown(17, 1); },
                {[] {
                    Page page{};
                    page[17] = true;
                    return MakeGraphicStoreSysEx(page, 1);
                }()}},
        // The pane's lines after a run: the text message laid out, the invalid display as it
        // came, in the plain spaced form.
        PaneRow{"CleanedMessagesOfARun",
                [](auto&, auto& form, auto& fake) {
                    Layout(form, "0x", "", ",");
                    Decode(form, fake,
                           "0xF0,0x41,0x10,0x45,0x12,0x10,0x00,0x00,0x48,0x69,0x00,0xF7\r\n"
                           "0xF0,0x41,0x10,0x45,0x12,0x10,0x20,0x00,0x0D,0x00,0xF7");
                },
                {"F0 41 10 45 12 10 00 00 48 69 3F F7", "F0 41 10 45 12 10 20 00 0D 00 F7"}}),
    [](const auto& info) { return std::string(info.param.name); });

class ExportPagesTest : public FileMenuTest {
protected:
    // Pixels on pages 1, 4 and 10, drawn through the window; page 4 is left open, so the
    // export must take the open page's pixels, not its stored copy.
    void drawOnPages() {
        window->gridInput().FDPixelMouseDown(0, 1);
        window->SetPageNum(10);
        window->gridInput().FDPixelMouseDown(255, 1);
        window->SetPageNum(4);
        window->gridInput().FDPixelMouseDown(100, 1);
        window->gridInput().FDPixelMouseDown(101, 1);
    }
    std::vector<ByteArray> expectedStores() {
        std::vector<ByteArray> stores;
        for (int page = 1; page <= 10; ++page) {
            Page pixels{};
            if (page == 1) pixels[0] = true;
            if (page == 10) pixels[255] = true;
            if (page == 4) pixels[100] = pixels[101] = true;
            stores.push_back(Hex(MakeGraphicStoreSysEx(pixels, static_cast<std::uint8_t>(page))));
        }
        return stores;
    }
};

TEST_F(ExportPagesTest, TheTenStoreMessages) {
    drawOnPages();
    choose("actionExportPages", {path(QStringLiteral("pages"))});
    ASSERT_EQ(fake.files.asked.size(), 1u);
    EXPECT_EQ(fake.files.asked[0].kind, FileQuestion::Kind::Save);
    EXPECT_TRUE(fake.files.asked[0].start.endsWith(QStringLiteral("/pages.syx")));
    EXPECT_EQ(fake.files.asked[0].filters.value(0), QStringLiteral("SysEx files (*.syx)"));
    EXPECT_EQ(fake.files.asked[0].defaultSuffix, QStringLiteral("syx"));
    EXPECT_EQ(HexOf(read(path(QStringLiteral("pages")))), HexOf(WriteSyx(expectedStores())));
}

// Prints "seconds bytes" for every SysEx message as mido plays the file.
constexpr char kMidoTimes[] = R"(
import sys, mido
now = 0.0
for msg in mido.MidiFile(sys.argv[1]):
    now += msg.time
    if msg.type == 'sysex':
        print('%.6f' % now, ' '.join('%02X' % b for b in [0xF0, *msg.data, 0xF7]))
)";

TEST_F(ExportPagesTest, AsMidiTheStoresThenDisplayPageOneAtLeastFortyMsApart) {
    drawOnPages();
    const QString file = path(QStringLiteral("pages.mid"));
    choose("actionExportMidi", {file});
    std::vector<ByteArray> expected = expectedStores();
    expected.push_back(Hex(MakeGraphicDisplaySysEx(1)));

    const MidiContents ours = ReadMidi(read(file));
    EXPECT_FALSE(ours.error);
    EXPECT_TRUE(ours.problems.empty());
    ASSERT_EQ(ours.messages.size(), expected.size());
    const QStringList mido = RunPython(kMidoTimes, {file});
    ASSERT_EQ(mido.size(), qsizetype(expected.size()));
    double ourLast = -1, midoLast = -1;
    for (std::size_t i = 0; i < expected.size(); ++i) {
        EXPECT_EQ(HexOf(ours.messages[i].bytes), HexOf(expected[i])) << i;
        EXPECT_EQ(mido[qsizetype(i)].section(QLatin1Char(' '), 1).toStdString(),
                  HexOf(expected[i]));
        const double midoSeconds = mido[qsizetype(i)].section(QLatin1Char(' '), 0, 0).toDouble();
        if (i > 0) {
            // The pause comes after the previous message's bytes have left the cable.
            const double wire = expected[i - 1].size() * 320e-6;
            EXPECT_GE(ours.messages[i].seconds - ourLast, 0.040 + wire - 1e-9) << i;
            EXPECT_GE(midoSeconds - midoLast, 0.040 + wire - 1e-6) << i;
        }
        ourLast = ours.messages[i].seconds;
        midoLast = midoSeconds;
    }
    EXPECT_EQ(ours.messages.front().seconds, 0.0);
}

// Writing where a file is: an export, and a repaired copy put in place of another file.
struct ReplaceRow {
    const char* name;
    const char* item;
    std::deque<Prompts::Answer> answers;  // none: the box's default
    std::size_t sizeAfter;
    std::size_t boxes;  // the question, and a repair's report after a yes
};

class ReplaceTest : public FileMenuTest, public ::testing::WithParamInterface<ReplaceRow> {};

TEST_P(ReplaceTest, AnExistingFileIsReplacedOnlyOnYes) {
    const ReplaceRow& row = GetParam();
    const QString file = write(QStringLiteral("old.syx"), ByteArray(7, 'k'));
    const QString broken = write(QStringLiteral("broken.syx"), kBroken);
    fake.prompts.answers = row.answers;
    if (row.item == std::string("actionRepair")) {
        choose(row.item, {broken, file});
    } else {
        choose(row.item, {file});
    }
    ASSERT_EQ(fake.prompts.shown.size(), row.boxes);
    EXPECT_EQ(fake.prompts.shown[0].title, QStringLiteral("Replace file?"));
    EXPECT_EQ(fake.prompts.shown[0].defaultAnswer, Prompts::Answer::No);
    EXPECT_TRUE(fake.prompts.shown[0].prompt.startsWith(QDir::toNativeSeparators(file)));
    EXPECT_EQ(read(file).size(), row.sizeAfter);
}

INSTANTIATE_TEST_SUITE_P(
    Export, ReplaceTest,
    ::testing::Values(
        ReplaceRow{"ExportOnYes", "actionExportPages", {Prompts::Answer::Yes}, 740, 1},
        ReplaceRow{"ExportOnNo", "actionExportPages", {Prompts::Answer::No}, 7, 1},
        ReplaceRow{"RepairNotByDefault", "actionRepair", {}, 7, 1},
        ReplaceRow{"RepairOnYes", "actionRepair", {Prompts::Answer::Yes}, 34, 2}),
    [](const auto& info) { return std::string(info.param.name); });

TEST_F(FileMenuTest, AFileThatCannotBeWrittenIsReported) {
    const QString file = path(QStringLiteral("no such folder/pages.mid"));
    choose("actionExportMidi", {file});
    EXPECT_EQ(lastBoxTitle(), QStringLiteral("Cannot save file"));
    EXPECT_TRUE(fake.prompts.shown.back().prompt.startsWith(QDir::toNativeSeparators(file)));
    EXPECT_FALSE(QFile::exists(file));
}

TEST_F(FileMenuTest, ACancelledExportWritesNothing) {
    choose("actionExportPages");
    choose("actionExportMidi");
    choose("actionExportMessage");
    EXPECT_EQ(fake.files.asked.size(), 3u);
    EXPECT_EQ(QDir(files.path())
                  .entryList({QStringLiteral("*.syx"), QStringLiteral("*.mid")}, QDir::Files),
              QStringList{});
}

// "Repair checksums in file...": a repaired copy where the user says, the original left
// alone unless the user picks its very name and confirms, and a report of what changed where.
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
