// lumidot-cli end to end: the real binary, its output, its exit status, its one-line errors
// and the files it writes.
#include <gtest/gtest.h>

#include <QFile>
#include <QTemporaryDir>

#include "cli/cli_run.h"

namespace lumidot::testing {
namespace {

QByteArray Picture(int lines, int row, int column, char dot) {
    QByteArray text;
    for (int r = 0; r < lines; ++r) {
        QByteArray line(16, '.');
        if (r == row) line[column] = dot;
        text += line + "\n";
    }
    return text;
}

// Page 3 with only the dot in row 2, column 7: data byte 18 is 04, the checksum 6A.
const QByteArray kDot = Picture(16, 2, 7, '#');
const QByteArray kDotStore = "F0 41 10 45 12 10 02 00 " + QByteArray("00 ").repeated(18) + "04 " +
                             QByteArray("00 ").repeated(45) + "6A F7\n";

class CliFolder {
public:
    CliFolder() {
        write(QStringLiteral("dot.txt"), kDot);
        write(QStringLiteral("notmidi.mid"), "F0 41 10 F7");
        write(QStringLiteral("short.txt"), Picture(15, 0, 0, '.'));
        write(QStringLiteral("odd.txt"), Picture(16, 4, 9, 'x'));
        write(QStringLiteral("damaged.syx"),
              QByteArray::fromHex("F041104512102000054BF7 0D0A F0411045 F041104512102000054BF7"));
    }
    void write(const QString& name, const QByteArray& bytes) {
        QFile file(dir.filePath(name));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
    }
    QTemporaryDir dir;
};

struct CliRow {
    const char* name;
    QStringList args;
    QByteArray input;
    QByteArray out;
    std::string err;  // exact, each line starting with "lumidot-cli: "
    int status;
    const char* lang = "C.UTF-8";
};

void PrintTo(const CliRow& row, std::ostream* os) {
    *os << row.name;
}

// The one line of a command line that cannot be understood (exit status 2).
std::string Usage(const std::string& what) {
    return "lumidot-cli: " + what + " (see lumidot-cli --help)\n";
}

class CliTest : public ::testing::TestWithParam<CliRow> {};

TEST_P(CliTest, PrintsAndExits) {
    const CliRow& row = GetParam();
    CliFolder folder;
    const CliRun run = RunCli(folder.dir.path(), row.args, row.input, QLatin1String(row.lang));
    EXPECT_EQ(run.out, QString::fromUtf8(row.out));
    EXPECT_EQ(run.err, QString::fromStdString(row.err));
    EXPECT_EQ(run.status, row.status);
}

const auto kName = [](const auto& info) { return std::string(info.param.name); };

// More of composing is run from the README's examples (text, display, layouts).
// clang-format off
const CliRow kComposeRows[] = {
    {"TextAfterDoubleDash", {"text", "--", "-x"}, "", "F0 41 10 45 12 10 00 00 2D 78 4B F7\n", "", 0},
    {"SuffixAfterTheCommand", {"text", "Hi", "--suffix", "h"}, "",
     "F0h 41h 10h 45h 12h 10h 00h 00h 48h 69h 3Fh F7h\n", "", 0},
    {"EmptySeparator", {"--separator=", "text", "Hi"}, "", "F04110451210000048693FF7\n", "", 0},
    {"StorePicture", {"store", "3", "dot.txt"}, "", kDotStore, "", 0},
    {"StorePictureFromStandardInput", {"store", "3", "-"}, kDot, kDotStore, "", 0},
    // The code page comes from the locale: ł is a character of Central European Windows.
    {"CodePageOfTheLocale", {"text", "ł"}, "", "F0 41 10 45 12 10 00 00 B3 3D F7\n", "", 0,
     "pl_PL.UTF-8"},
    {"CharacterOutsideTheCodePage", {"text", "ł"}, "", "F0 41 10 45 12 10 00 00 3F 31 F7\n", "", 0},
    {"TextTooLong", {"text", QString(33, QLatin1Char('a'))}, "", "",
     "lumidot-cli: the LCD text holds at most 32 characters, this one has 33\n", 1},
    {"PictureOfFifteenLines", {"store", "1", "short.txt"}, "", "",
     "lumidot-cli: short.txt: a picture has 16 lines, this one has 15\n", 1},
    {"PictureWithAnotherCharacter", {"store", "1", "odd.txt"}, "", "",
     "lumidot-cli: odd.txt: line 5, column 10: \"x\" is neither # (on) nor . (off)\n", 1},
    {"PictureMissing", {"store", "1", "none.txt"}, "", "",
     "lumidot-cli: none.txt: cannot be read: No such file or directory\n", 1},
};

const CliRow kUsageRows[] = {
    {"NoCommand", {}, "", "", "lumidot-cli: no command given (see lumidot-cli --help)\n", 2},
    {"UnknownCommand", {"show"}, "", "", Usage("unknown command \"show\""), 2},
    {"UnknownOption", {"--verbose", "text", "Hi"}, "", "", Usage("unknown option --verbose"), 2},
    {"MissingArgument", {"store", "1"}, "", "",
     Usage("wrong number of arguments: lumidot-cli [OPTIONS] store PAGE PICTURE"), 2},
    {"StoreNone", {"store", "none", "dot.txt"}, "", "",
     Usage("PAGE is a number from 1 to 10, not \"none\""), 2},
    {"UnknownMidiSystem", {"send", "--api", "midi", "x.syx"}, "", "",
     Usage("--api takes alsa or jack, not \"midi\""), 2},
    {"GapShorterThanTheModuleNeeds", {"send", "--gap", "5", "--port", "p", "x.syx"}, "", "",
     Usage("--gap takes milliseconds from 20 to 500, not \"5\""), 2},
    {"PortWithoutSend", {"ports", "--port", "p"}, "", "",
     Usage("--port and --gap go with send"), 2},
    {"MidiSystemWithoutPortsOrSend", {"--api", "jack", "text", "Hi"}, "", "",
     Usage("--api goes with ports and send"), 2},
    {"PrefixTooLong", {"--prefix", "123456", "text", "Hi"}, "", "",
     Usage("the prefix holds at most 5 characters, \"123456\" has 6"), 2},
    {"LayoutWithoutCommas", {"--layout", "0x", "text", "Hi"}, "", "",
     Usage("--layout takes PREFIX,SUFFIX,SEPARATOR, not \"0x\""), 2},
    {"OptionWithoutValue", {"text", "Hi", "-o"}, "", "", Usage("-o needs a value"), 2},
    {"OutputOfDescribe", {"-o", "x.syx", "describe"}, "", "",
     Usage("-o goes with text, display and store"), 2},
    {"PictureOptionsWithoutStore", {"--dither", "text", "Hi"}, "", "",
     Usage("--threshold, --dither and --invert go with store"), 2},
};

const CliRow kDescribeRows[] = {
    {"HexTextFromStandardInput", {"describe"},
     "F0 41 10 45 12 10 20 00 05 4B F7\r\n\r\nF0 41 10 42 12 40 00 7F 00 00 F7\n",
     " #1. Graphic: Display page 5\n"
     " #2. (Unrecognised SysEx - GS checksum changed from 00 to 41)\n", "", 0},
    {"HexTextInALayout", {"describe", "-", "--layout", "0x,,,"},
     "0xF0,0x41,0x10,0x45,0x12,0x10,0x00,0x00,0x48,0x69,0x3F,0xF7", " #1. Display text: Hi\n", "", 0},
    {"HexTextNotInTheLayout", {"describe", "--prefix", "0x"}, "F0 41 10 F7", "",
     "lumidot-cli: standard input: a character that is not a hex digit stands where the layout "
     "puts one (see --prefix, --suffix and --separator)\n", 1},
    {"NoMessage", {"describe"}, "\n", "",
     "lumidot-cli: standard input: there is no SysEx message in it (or it is too short to be a "
     "valid message)\n", 1},
    {"TextAfterTheLastF7", {"describe"}, "F0 41 F7 00", "",
     "lumidot-cli: standard input: SysEx messages must begin with F0 and end with F7\n", 1},
    {"DamagedSyx", {"describe", "damaged.syx"}, "",
     " #1. [offset 0] Graphic: Display page 5\n #2. [offset 17] Graphic: Display page 5\n",
     "lumidot-cli: damaged.syx: offset 11: 2 bytes outside any message\n"
     "lumidot-cli: damaged.syx: offset 13: message cut off by byte F0 at offset 17 (no F7)\n", 1},
    {"MissingFile", {"describe", "gone.mid"}, "", "",
     "lumidot-cli: gone.mid: cannot be read: No such file or directory\n", 1},
    {"TextFileNamedLikeMidi", {"describe", "notmidi.mid"}, "", "",
     "lumidot-cli: notmidi.mid: offset 0: not a Standard MIDI File (it does not start with "
     "MThd)\n", 1},
};
// clang-format on

INSTANTIATE_TEST_SUITE_P(Compose, CliTest, ::testing::ValuesIn(kComposeRows), kName);
INSTANTIATE_TEST_SUITE_P(Usage, CliTest, ::testing::ValuesIn(kUsageRows), kName);
INSTANTIATE_TEST_SUITE_P(Describe, CliTest, ::testing::ValuesIn(kDescribeRows), kName);

TEST(CliHelpTest, ManualPageOnStandardOutput) {
    CliFolder folder;
    const CliRun run = RunCli(folder.dir.path(), {QStringLiteral("--help")});
    EXPECT_EQ(run.status, 0);
    EXPECT_TRUE(run.err.isEmpty());
    for (const char* section : {"NAME\n", "\nSYNOPSIS\n", "\nDESCRIPTION\n", "\nCOMMANDS\n",
                                "\nOPTIONS\n", "\nEXIT STATUS\n", "\nEXAMPLES\n"}) {
        EXPECT_TRUE(run.out.contains(QLatin1String(section))) << section;
    }
}

}  // namespace
}  // namespace lumidot::testing
