#include "codec/gs_message.h"

#include <gtest/gtest.h>

namespace lumidot {
namespace {

TEST(MakeGSSysExTextTest, WrapsBodyWithChecksum) {
    const struct {
        ByteArray body;
        std::string frame;
    } rows[] = {
        {{0x10, 0x20, 0x00, 0x01}, "F0 41 10 45 12 10 20 00 01 4F F7"},
        {{0x10, 0x20, 0x00, 0x00}, "F0 41 10 45 12 10 20 00 00 50 F7"},
        {{0x10, 0x00, 0x00, 0x61, 0x62, 0x63}, "F0 41 10 45 12 10 00 00 61 62 63 4A F7"},
        {{0x10, 0x00, 0x00}, "F0 41 10 45 12 10 00 00 70 F7"},
        // The body sums to exactly 128: the checksum wraps to 00, not 80.
        {{0x10, 0x00, 0x00, 0x70}, "F0 41 10 45 12 10 00 00 70 00 F7"},
    };
    for (const auto& row : rows) EXPECT_EQ(MakeGSSysExText(row.body, kModelDisplay), row.frame);
}

TEST(HexTextToBytesTest, AppendsPairsUpToFirstNonHex) {
    const struct {
        std::string text;
        ByteArray before, after;
        bool complete;
    } rows[] = {
        {"f0 41 1", {}, {0xF0, 0x41}, true},
        {"F041", {}, {0xF0, 0x41}, true},
        {"4 1 a B", {}, {0x41, 0xAB}, true},
        {"0A", {0x01}, {0x01, 0x0A}, true},
        {"", {}, {}, true},
        {"41 G0 42", {}, {0x41}, false},
        {"41\t42", {0x7F}, {0x7F, 0x41}, false},
        {"-1", {}, {}, false},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.text);
        ByteArray bytes = row.before;
        EXPECT_EQ(HexTextToBytes(row.text, bytes), row.complete);
        EXPECT_EQ(bytes, row.after);
    }
}

TEST(PadTextTest, WidensByCharactersNeverShortens) {
    const struct {
        std::string text, padChar;
        int width;
        bool padOnRight;
        std::string result;
    } rows[] = {
        {"#1", " ", 3, false, " #1"},
        {"#10", " ", 3, false, "#10"},
        {"abcd", " ", 3, false, "abcd"},
        {"ab", "xy", 4, true, "abxx"},
        // Widths count characters, and a multi-byte pad character goes in whole.
        {"é", "-", 2, true, "é-"},
        {"a", "€", 3, false, "€€a"},
        {"ab", " ", -3, false, "ab"},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(PadText(row.text, row.padChar, row.width, row.padOnRight), row.result);
    }
}

}  // namespace
}  // namespace lumidot
