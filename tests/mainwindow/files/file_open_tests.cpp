// Opening files through the File menu: every kind of file is described and taken over
// exactly as a decoding run of the same messages from the clipboard, and a file that cannot
// be read, or a damaged one the user turns down, changes nothing at all.
#include <QLineEdit>

#include "codec/graphic_page.h"
#include "codec/lcd_text.h"
#include "editor/grid_input.h"
#include "files/file_bytes.h"
#include "mainwindow/file_texts.h"
#include "mainwindow/files/file_menu_fixture.h"

namespace lumidot::testing {
namespace {

Page Diagonal() {
    Page page{};
    for (int i = 0; i < kPageSide; ++i) page[i * 17] = true;
    return page;
}

// One message of every kind the describer tells apart, in file order.
std::vector<ByteArray> Messages() {
    return {Hex(MakeTextSysEx("Hello", "CP1252")),   Hex(MakeGraphicStoreSysEx(Diagonal(), 3)),
            Hex(MakeGraphicDisplaySysEx(3)),
            Hex("F0 41 10 45 12 10 20 01 0A 45 F7"),   // a duration
            Hex("F0 41 10 42 12 40 00 7F 00 00 F7"),   // GS reset, checksum wrong
            Hex("F0 41 10 45 12 10 20 00 0D 00 F7")};  // display of no such page
}

ByteArray Vlq(std::uint32_t value) {
    ByteArray bytes{static_cast<std::uint8_t>(value & 0x7F)};
    while (value >>= 7)
        bytes.insert(bytes.begin(), static_cast<std::uint8_t>(0x80 | (value & 0x7F)));
    return bytes;
}

// A track chunk of these messages at these ticks, after the given leading events.
ByteArray Track(const std::vector<std::pair<std::uint32_t, ByteArray>>& timed,
                const ByteArray& leading = {}) {
    ByteArray events = leading;
    std::uint32_t now = 0;
    for (const auto& [tick, message] : timed) {
        const ByteArray delta = Vlq(tick - now), length = Vlq(message.size() - 1);
        now = tick;
        events.insert(events.end(), delta.begin(), delta.end());
        events.push_back(0xF0);
        events.insert(events.end(), length.begin(), length.end());
        events.insert(events.end(), message.begin() + 1, message.end());
    }
    events.insert(events.end(), {0x00, 0xFF, 0x2F, 0x00});
    return Chunk("MTrk", events);
}

enum class Kind { Syx, Midi0, Midi1, HexText };

struct KindRow {
    const char* name;
    Kind kind;
    const char* file;
    // The place each line names, in message order.
    std::vector<const char*> places;
};

ByteArray FileOf(Kind kind, const std::vector<ByteArray>& messages, const ByteLayout& layout) {
    switch (kind) {
        case Kind::Syx:
            return Join(
                {messages[0], messages[1], messages[2], messages[3], messages[4], messages[5]});
        case Kind::Midi0: {
            std::vector<std::pair<std::uint32_t, ByteArray>> timed;
            for (std::size_t i = 0; i < messages.size(); ++i) {
                timed.push_back({static_cast<std::uint32_t>(480 * i), messages[i]});
            }
            return Join({Header(0, 1, 480), Track(timed)});
        }
        case Kind::Midi1: {
            // The first track sets a tempo twice the default, so a quarter note is 0.25 s.
            std::vector<std::pair<std::uint32_t, ByteArray>> first, second;
            for (std::size_t i = 0; i < messages.size(); ++i) {
                (i % 2 == 0 ? first : second)
                    .push_back({static_cast<std::uint32_t>(480 * i), messages[i]});
            }
            return Join({Header(1, 2, 480),
                         Track(first, {0x00, 0xFF, 0x51, 0x03, 0x03, 0xD0, 0x90}), Track(second)});
        }
        case Kind::HexText: {
            QStringList lines;
            for (const ByteArray& message : messages) {
                lines << LayOutBytes(QString::fromStdString(HexOf(message)), layout);
            }
            const QByteArray text = lines.join(QStringLiteral("\r\n")).toLatin1() + "\r\n";
            return ByteArray(text.begin(), text.end());
        }
    }
    return {};
}

class OpenKindTest : public FileMenuTest, public ::testing::WithParamInterface<KindRow> {};

// The same messages on the clipboard of a second window, decoded by its button: the file's
// result lines are the run's lines with the place put in front, and both windows end alike.
TEST_P(OpenKindTest, DescribedAndTakenOverAsAClipboardRunDoes) {
    const KindRow& row = GetParam();
    const ByteLayout layout{QStringLiteral("0x"), QString(), QStringLiteral(",")};
    const std::vector<ByteArray> messages = Messages();

    FakePlatform otherPlatform;
    QTemporaryDir otherFolder;
    MainForm other(otherPlatform.platform, otherFolder.path(), nullptr, "CP1252");
    other.Form_Load();
    window = std::make_unique<MainForm>(fake.platform, folder.path(), nullptr, "CP1252");
    window->Form_Load();
    actions().recentFiles().useSettingsFile(path(QStringLiteral("recent.ini")));
    QString otherResults;
    otherPlatform.prompts.onModal = [&](QDialog& dialog) {
        otherResults = static_cast<frmDecoded&>(dialog).form().txtDecodedOut->text();
        dialog.accept();
    };
    for (MainForm* each : {window.get(), &other}) {
        Ui::MainForm& form = each->form();
        form.txtHexPrefix->setText(layout.prefix);
        form.txtHexSep->setText(layout.separator);
        QTest::mouseClick(form.chkSysExCopyAuto, Qt::LeftButton, {}, QPoint(5, 5));
    }

    choose("actionOpen", {write(QLatin1String(row.file), FileOf(row.kind, messages, layout))});
    const ByteArray asText = FileOf(Kind::HexText, messages, layout);
    otherPlatform.clipboard.text = QString::fromLatin1(reinterpret_cast<const char*>(asText.data()),
                                                       static_cast<qsizetype>(asText.size()));
    QTest::mouseClick(other.form().cmdSysExDecode, Qt::LeftButton);

    ASSERT_EQ(fake.prompts.modalRuns, 1) << "the results window opened";
    EXPECT_TRUE(fake.prompts.shown.empty()) << lastBoxTitle().toStdString();
    QStringList expected = otherResults.split(QStringLiteral("\r\n"));
    for (std::size_t i = 0; i < row.places.size(); ++i) {
        expected[static_cast<qsizetype>(i)].insert(5,
                                                   QLatin1String(row.places[i]) + QLatin1Char(' '));
    }
    EXPECT_EQ(results, expected.join(QStringLiteral("\r\n")));
    EXPECT_EQ(countLabel, QStringLiteral("6 SysEx messages have been decoded as follows:"));
    EXPECT_EQ(state(), stateOf(other));
    EXPECT_EQ(ui().txtSysExOut->text(), other.form().txtSysExOut->text()) << "the view follows";
    EXPECT_EQ(fake.clipboard.written, otherPlatform.clipboard.written)
        << "the same automatic copies, the cleaned messages last";
    EXPECT_EQ(fake.clipboard.written.back(), pane());
}

INSTANTIATE_TEST_SUITE_P(
    Files, OpenKindTest,
    ::testing::Values(
        KindRow{"Syx",
                Kind::Syx,
                "song.syx",
                {"[offset 0]", "[offset 15]", "[offset 89]", "[offset 100]", "[offset 111]",
                 "[offset 122]"}},
        KindRow{"MidiFormat0",
                Kind::Midi0,
                "song.mid",
                {"[00:00.000 track 1]", "[00:00.500 track 1]", "[00:01.000 track 1]",
                 "[00:01.500 track 1]", "[00:02.000 track 1]", "[00:02.500 track 1]"}},
        KindRow{"MidiFormat1",
                Kind::Midi1,
                "song.MIDI",
                {"[00:00.000 track 1]", "[00:00.250 track 2]", "[00:00.500 track 1]",
                 "[00:00.750 track 2]", "[00:01.000 track 1]", "[00:01.250 track 2]"}},
        KindRow{"HexTextInTheUsersLayout", Kind::HexText, "song.txt", {}}),
    [](const auto& info) { return std::string(info.param.name); });

struct DamageRow {
    const char* name;
    const char* file;  // "missing...": no file is written; ending in /: a folder
    ByteArray bytes;
    const char* title;
    std::vector<const char*> said;  // parts of the prompt
};

class DamagedFileTest : public FileMenuTest, public ::testing::WithParamInterface<DamageRow> {};

// Something drawn and typed first: none of it may change, the pane included.
TEST_P(DamagedFileTest, ItsProblemIsToldAndNothingChanges) {
    const DamageRow& row = GetParam();
    QTest::mouseClick(ui().chkSysExCopyAuto, Qt::LeftButton, {}, QPoint(5, 5));
    window->gridInput().FDPixelMouseDown(40, 1);
    QTest::keyClicks(ui().txtTextIn, QStringLiteral("Mine"));
    const WindowState before = state();
    const std::size_t copies = fake.clipboard.written.size();
    const QString name = QLatin1String(row.file);
    const QString target = path(name.endsWith('/') ? name.chopped(1) : name);
    if (name.endsWith('/')) {
        QDir(files.path()).mkdir(name);
    } else if (!name.startsWith(QLatin1String("missing"))) {
        write(name, row.bytes);
    }

    choose("actionOpen", {target});

    ASSERT_EQ(fake.prompts.shown.size(), 1u);
    const ShownMessage& box = fake.prompts.shown.front();
    EXPECT_EQ(box.title, QLatin1String(row.title));
    EXPECT_EQ(box.icon, Prompts::Icon::Exclamation);
    EXPECT_TRUE(box.prompt.startsWith(QDir::toNativeSeparators(target) + QStringLiteral("\r\n")))
        << "the box names the file: " << box.prompt.toStdString();
    for (const char* part : row.said) {
        EXPECT_TRUE(box.prompt.contains(QLatin1String(part)))
            << "\"" << part << "\" in: " << box.prompt.toStdString();
    }
    EXPECT_EQ(state(), before);
    EXPECT_EQ(fake.clipboard.written.size(), copies) << "nothing copied";
    EXPECT_EQ(fake.prompts.modalRuns, 0) << "no results window";
    EXPECT_TRUE(recentShown().isEmpty());
}

const ByteArray kText = Hex("F0 41 10 45 12 10 00 00 48 69 3F F7");

INSTANTIATE_TEST_SUITE_P(
    Files, DamagedFileTest,
    ::testing::Values(
        DamageRow{"NotFound", "missing", {}, "Cannot open file", {"The file was not found."}},
        DamageRow{
            "Folder", "folder.syx/", {}, "Cannot open file", {"This is a folder, not a file."}},
        DamageRow{"Empty", "empty.syx", {}, "Cannot open file", {"The file is empty."}},
        DamageRow{"NotAMidiFile",
                  "letter.mid",
                  Hex("48 65 6C 6C 6F"),
                  "Cannot open file",
                  {"It is not a MIDI file: a MIDI file starts with the letters MThd."}},
        DamageRow{"MidiChunkRunsPastTheEnd",
                  "cut.mid",
                  Join({Header(0, 1, 96), Hex("4D 54 72 6B 00 00 01 00 00 F0 03")}),
                  "Cannot open file",
                  {"It cannot be read as a MIDI file.",
                   "At byte 18: chunk length 256 runs past the end of the file"}},
        DamageRow{"MidiWithoutSysEx",
                  "notes.mid",
                  Smf(0, 96, {"00 90 3C 40 60 80 3C 00 00 FF 2F 00"}),
                  "Cannot open file",
                  {"It holds no SysEx message."}},
        DamageRow{"SyxOfStrayBytesOnly",
                  "stray.syx",
                  Hex("41 10 42"),
                  "Cannot open file",
                  {"It holds no SysEx message.\r\n\r\nAt byte 0: 3 bytes outside any message."}},
        DamageRow{"SyxCutOffAtTheEnd",
                  "cut.syx",
                  Join({kText, Hex("F0 41 10")}),
                  "Damaged file",
                  {"At byte 12: message cut off by the end of the file (3 bytes, no F7).",
                   "Open the one complete message that could be read anyway?"}},
        DamageRow{
            "MidiMessageWithoutEnd",
            "open.mid",
            Smf(0, 96, {"00 F0 0B 41 10 45 12 10 00 00 48 69 3F F7 00 F0 02 41 10 00 FF 2F 00"}),
            "Damaged file",
            {"At byte 37: SysEx message never ends"}},
        DamageRow{"HexTextNotHex",
                  "notes.txt",
                  Hex("46 30 20 34 47 20 46 37"),
                  "Cannot open file",
                  {"It holds a character that is not a hex digit"}},
        DamageRow{"HexTextNotSysEx",
                  "words.txt",
                  Hex("34 31 20 31 30 20 46 37"),
                  "Cannot open file",
                  {"does not begin with F0 and end with F7"}}),
    [](const auto& info) { return std::string(info.param.name); });

// A damaged file's complete messages, once the user says yes, are opened like any file's.
TEST_F(FileMenuTest, TheCompleteMessagesOfADamagedFileOnRequest) {
    fake.prompts.answers.push_back(Prompts::Answer::Yes);
    choose("actionOpen", {write(QStringLiteral("cut.syx"), Join({kText, Hex("F0 41 10")}))});
    ASSERT_EQ(fake.prompts.shown.size(), 1u);
    EXPECT_EQ(fake.prompts.shown[0].buttons, Prompts::Buttons::YesNo);
    EXPECT_EQ(fake.prompts.shown[0].defaultAnswer, Prompts::Answer::No);
    EXPECT_EQ(results, QStringLiteral(" #1. [offset 0] Display text: Hi\r\n"));
    EXPECT_EQ(window->model().lcdText(), QStringLiteral("Hi"));
}

TEST_F(FileMenuTest, ACancelledDialogOpensNothing) {
    const WindowState before = state();
    choose("actionOpen");
    ASSERT_EQ(fake.files.asked.size(), 1u);
    const FileQuestion& question = fake.files.asked[0];
    EXPECT_EQ(question.kind, FileQuestion::Kind::Open);
    EXPECT_EQ(question.filters.value(0),
              QStringLiteral("Message files (*.syx *.mid *.midi *.txt)"));
    EXPECT_EQ(state(), before);
    EXPECT_TRUE(fake.prompts.shown.empty());
}

}  // namespace
}  // namespace lumidot::testing
