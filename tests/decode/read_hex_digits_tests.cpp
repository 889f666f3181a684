// From clipboard text in the user's layout to hex digits: the program's own layouts read
// back unchanged, and stray blanks are forgiven where that cannot misread a laid-out text.
#include <gtest/gtest.h>

#include "decode/decode_text.h"
#include "support/qt_printers.h"

namespace lumidot {
namespace {

struct Layout {
    QString prefix, suffix, separator;
};

std::ostream& operator<<(std::ostream& out, const Layout& layout) {
    auto shown = [](const QString& text) { return ::testing::PrintToString(text); };
    return out << "prefix " << shown(layout.prefix) << ", suffix " << shown(layout.suffix)
               << ", separator " << shown(layout.separator);
}

// Spaced codec text laid out as the output pane shows it: prefix, digits and suffix for
// every byte, the separator between neighbours and nowhere else.
QString LayOut(const QString& spaced, const Layout& layout) {
    QStringList fields = spaced.split(' ');
    for (QString& field : fields) field = layout.prefix + field + layout.suffix;
    return fields.join(layout.separator);
}

QString Digits(QString spaced) {
    return spaced.remove(' ');
}

QString ReadHexDigits(const QString& text, const Layout& layout) {
    return lumidot::ReadHexDigits(text, layout.prefix, layout.suffix, layout.separator);
}

const QString kHi = "F0 41 10 45 12 10 00 00 48 69 3F F7";
const QString kPage5 = "F0 41 10 45 12 10 20 00 05 4B F7";
const QString kEmpty = "F0 F7";

// --- every layout the program can write reads back to its digits ------------------------

class OwnLayoutTest : public ::testing::TestWithParam<Layout> {};

TEST_P(OwnLayoutTest, ReadsBackExactlyTheDigitsItWrote) {
    const Layout& layout = GetParam();
    const QString hi = LayOut(kHi, layout);
    const QString page5 = LayOut(kPage5, layout);
    const QString empty = LayOut(kEmpty, layout);
    const struct {
        QString text;
        QString digits;
    } texts[] = {
        {hi, Digits(kHi)},
        {empty, Digits(kEmpty)},
        {hi + "\r\n", Digits(kHi)},
        {hi + "\r\n" + page5 + "\r\n" + empty, Digits(kHi + kPage5 + kEmpty)},
        {page5 + "\n\n\n" + hi + "\r\r\n", Digits(kPage5 + kHi)},
    };
    for (const auto& [text, digits] : texts) {
        EXPECT_EQ(ReadHexDigits(text, layout), digits) << layout;
        // The blank rule on its own, without falling back on the plain reading.
        const QString normalised =
            NormaliseWhitespace(LineBreaksToSeparator(text, layout.separator), layout.prefix,
                                layout.suffix, layout.separator);
        EXPECT_EQ(ExtractHexPairs(normalised, int(layout.prefix.size()), int(layout.suffix.size()),
                                  int(layout.separator.size())),
                  digits)
            << layout;
    }
}

INSTANTIATE_TEST_SUITE_P(
    Layouts, OwnLayoutTest,
    ::testing::Values(Layout{"", "", " "}, Layout{"0x", "", ","}, Layout{"", "h", " "},
                      Layout{"", "", ""}, Layout{"0x", ",", " "}, Layout{"", "", "\t"},
                      Layout{"", "", " \t "}, Layout{" ", "", ""}, Layout{"", " ", ""},
                      Layout{"$ ", " h", "\t"}, Layout{"  ", "", "  "}, Layout{"0x", ", ", ""},
                      Layout{"", "", ", "}, Layout{"\t", "\t", "\t"}, Layout{"F0", "F7", "F0"},
                      Layout{"     ", "     ", "     "}, Layout{"", " ", "- "},
                      Layout{"&H", "", " , "}));

// --- texts written by hand or by other programs ---------------------------------------

struct HandRow {
    const char* label;
    QString text;
    Layout layout;
    QString digits;  // what the run goes on with
    HexCheck check;
};

class HandWrittenTest : public ::testing::TestWithParam<HandRow> {};

TEST_P(HandWrittenTest, ReadsAsTheUserMeantOrFailsAsBefore) {
    const HandRow& row = GetParam();
    const QString digits = ReadHexDigits(row.text, row.layout);
    EXPECT_EQ(digits, row.digits) << row.label;
    EXPECT_EQ(CheckHexDigits(digits), row.check) << row.label;
}

const Layout kDefault{"", "", " "};
const Layout kBare{"", "", ""};
const Layout kC{"0x", ",", " "};

INSTANTIATE_TEST_SUITE_P(
    Rows, HandWrittenTest,
    ::testing::Values(
        HandRow{"display page 5 and a line end", kPage5 + "\r\n", kDefault, Digits(kPage5),
                HexCheck::Ok},
        HandRow{"two bytes without a space", "F0F7", kDefault, "F07", HexCheck::TooShort},
        HandRow{"lower case", "f0 41 f7", kDefault, "f041f7", HexCheck::Ok},
        HandRow{"CR LF, LF, CR and blank lines", "F0 41 F7\r\nF0 42 F7\n\n\nF0 43 F7\r\r\rF0 F7",
                kDefault, "F041F7F042F7F043F7F0F7", HexCheck::Ok},
        HandRow{"leading line break", "\r\nF0 41 F7", kDefault, " F 4 F", HexCheck::NotHex},
        HandRow{"leading tab", "\tF0 41 F7", kDefault, "\tF 4 F", HexCheck::NotHex},
        HandRow{"text after the last F7", "F0 41 F7 00", kDefault, "F041F700", HexCheck::NotSysEx},
        HandRow{"a byte cut in two", "F0 4 1 F7", kDefault, "F04  F", HexCheck::NotHex},
        HandRow{"space before the line end", "F0 41 \r\nF7", kDefault, "F041F7", HexCheck::Ok},
        HandRow{"runs of spaces and tabs", "F0  41 \t F7", kDefault, "F041F7", HexCheck::Ok},
        HandRow{"spaces at line ends between messages", "F0 41 F7 \r\n\r\n  F0 42 F7 ", kDefault,
                "F041F7F042F7", HexCheck::Ok},
        HandRow{"spaced bytes, no separator set", "F0 41 F7", kBare, "F041F7", HexCheck::Ok},
        HandRow{"blanks anywhere, no separator set", " F0\t41 \r\n F7 ", kBare, "F041F7",
                HexCheck::Ok},
        HandRow{"tab separator, spaces written", "F0 41  F7", Layout{"", "", "\t"}, "F041F7",
                HexCheck::Ok},
        HandRow{"0x, comma and space", "0xF0, 0x41, 0xF7,", kC, "F041F7", HexCheck::Ok},
        HandRow{"other characters of the same lengths", "$$F0;-ab41.\tzzF7!", kC, "F041F7",
                HexCheck::Ok},
        HandRow{"0x, comma, extra spaces and a line end", "0xF0,  0x41, \r\n0xF7, ", kC, "F041F7",
                HexCheck::Ok},
        HandRow{"0x and comma without the spaces", "0xF0,0x41,0xF7,", kC, "F01,,",
                HexCheck::NotHex},
        HandRow{"comma and space, extra blanks", "F0,  41,\tF7", Layout{"", "", ", "}, "F041F7",
                HexCheck::Ok},
        HandRow{"blanks in two places of the layout: blanks at the end go", "F0 - 41 - F7 \t  \t ",
                Layout{"", " ", "- "}, "F041F7", HexCheck::Ok},
        HandRow{"blanks in two places of the layout: inner runs stay", "F0 -  41 - F7",
                Layout{"", " ", "- "}, "F0 4 F", HexCheck::NotHex}));

// A text that reads as it stands is never read differently because of its blanks, even
// where the blank rule would have moved them: here spaces stand in the prefix places.
TEST(ReadHexDigitsTest, BlanksInOtherPlacesKeepThePlainReading) {
    const QString text = "  F0,   41,   F7,";
    ASSERT_NE(ExtractHexPairs(NormaliseWhitespace(text, "0x", ",", " "), 2, 1, 1), "F041F7");
    EXPECT_EQ(ReadHexDigits(text, kC), "F041F7");
}

// A clipboard with thousands of messages, each line ending in stray blanks so that the
// whole text goes through the blank rule too.
TEST(ReadHexDigitsTest, ThousandsOfMessagesAreCutApartCorrectly) {
    const QStringList messages = {kHi, kPage5, kEmpty, "f0 41 10 42 12 40 00 7f 00 41 f7"};
    QString clipboard;
    QStringList expected;
    for (int i = 0; i < 10000; ++i) {
        const QString& message = messages[i % messages.size()];
        clipboard += message + " \t\r\n";
        expected << message.mid(2) + ' ';
    }
    const QString digits = ReadHexDigits(clipboard, kDefault);
    ASSERT_EQ(CheckHexDigits(digits), HexCheck::Ok);
    EXPECT_EQ(SplitMessages(SpaceHexPairs(digits)), expected);
}

}  // namespace
}  // namespace lumidot
