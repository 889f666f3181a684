// From clipboard text in the user's layout to hex digits: the program's own layouts read
// back unchanged, and stray blanks are forgiven where that cannot misread a laid-out text.
#include <gtest/gtest.h>

#include "decode/decode_text.h"
#include "decode/hex_digits.h"
#include "support/qt_printers.h"

namespace lumidot {
namespace {

using Layout = std::tuple<QString, QString, QString>;  // prefix, suffix, separator

const QString kHi = "F0 41 10 45 12 10 00 00 48 69 3F F7";
const QString kPage5 = "F0 41 10 45 12 10 20 00 05 4B F7";
const QString kEmpty = "F0 F7";

class OwnLayoutTest : public ::testing::TestWithParam<Layout> {};

TEST_P(OwnLayoutTest, ReadsBackExactlyTheDigitsItWrote) {
    // Named references rather than a structured binding, which clang 14 cannot capture.
    const QString& prefix = std::get<0>(GetParam());
    const QString& suffix = std::get<1>(GetParam());
    const QString& separator = std::get<2>(GetParam());
    // Laid out as the output pane shows it: prefix, digits and suffix for every byte, the
    // separator between neighbours and nowhere else.
    const auto layOut = [&](const QString& spaced) {
        return prefix + QString(spaced).replace(' ', suffix + separator + prefix) + suffix;
    };
    const QString hi = layOut(kHi), page5 = layOut(kPage5), empty = layOut(kEmpty);
    // Runs of line breaks of every kind between messages, and none or some at the end.
    const std::pair<QString, QString> texts[] = {
        {hi + "\r\n" + page5 + "\r\n" + empty, kHi + kPage5 + kEmpty},
        {empty + "\n\n\n" + hi + "\r\r\n", kEmpty + kHi}};
    for (const auto& [text, spaced] : texts) {
        const QString digits = QString(spaced).remove(' ');
        EXPECT_EQ(ReadHexDigits(text, prefix, suffix, separator), digits);
        // The blank rule on its own, without falling back on the plain reading.
        const QString normalised =
            NormaliseWhitespace(LineBreaksToSeparator(text, separator), prefix, suffix, separator);
        EXPECT_EQ(ExtractHexPairs(normalised, int(prefix.size()), int(suffix.size()),
                                  int(separator.size())),
                  digits);
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

// Texts written by hand: the digits the run goes on with, and how they are checked.
using HandRow = std::tuple<QString, Layout, QString, HexCheck>;

class HandWrittenTest : public ::testing::TestWithParam<HandRow> {};

TEST_P(HandWrittenTest, ReadsAsTheUserMeantOrFailsAsTheTextStands) {
    const auto& [text, layout, digits, check] = GetParam();
    const auto& [prefix, suffix, separator] = layout;
    EXPECT_EQ(ReadHexDigits(text, prefix, suffix, separator), digits);
    EXPECT_EQ(CheckHexDigits(digits), check);
}

const Layout kSpace{"", "", " "}, kBare{"", "", ""}, kComma{"", "", ", "}, kC{"0x", ",", " "},
    kDash{"", " ", "- "};

INSTANTIATE_TEST_SUITE_P(
    Rows, HandWrittenTest,
    ::testing::Values(
        // Blanks at the start stay, as a line break there would.
        HandRow{"\tF0 41 F7", kSpace, "\tF 4 F", HexCheck::NotHex},
        // A byte cut in two is not glued back; the failure is that of the text as it stands.
        HandRow{"F0  4 1 F7", kSpace, "F0 41 7", HexCheck::NotHex},
        // A last byte cut short is kept, so that the checks see it.
        HandRow{"0xF0, 0xF7, 0xF", kC, "F0F7F", HexCheck::NotSysEx},
        // Too short is reported before a character that is not a digit.
        HandRow{"F0 Z", kSpace, "F0Z", HexCheck::TooShort},
        // No blank in the layout: every blank goes.
        HandRow{" F0\t41 \r\n F7 ", kBare, "F041F7", HexCheck::Ok},
        // One run of blanks in the layout: every run between bytes becomes it.
        HandRow{"0xF0,  0x41, \r\n0xF7, ", kC, "F041F7", HexCheck::Ok},
        // Blanks in two places of the layout: only those at the end go.
        HandRow{"F0 - 41 - F7 \t  \t ", kDash, "F041F7", HexCheck::Ok},
        HandRow{"F0 -  41 - F7", kDash, "F0 4 F", HexCheck::NotHex},
        // A text that reads as it stands keeps that reading, though with its blanks
        // normalised it would read as other messages ("F0F7").
        HandRow{"F0  1F7F7", kComma, "F01F7", HexCheck::Ok}));

}  // namespace
}  // namespace lumidot
