#include "codec/lcd_text.h"

#include <gtest/gtest.h>

#include <sstream>
#include <vector>

#include "locale_env.h"

namespace lumidot {
namespace {

TEST(MakeTextSysExTest, BuildsWholeMessageInWindows1252) {
    const struct {
        std::string text, frame;
    } rows[] = {
        {"", "F0 41 10 45 12 10 00 00 70 F7"},
        {"abc", "F0 41 10 45 12 10 00 00 61 62 63 4A F7"},
        {"Hello", "F0 41 10 45 12 10 00 00 48 65 6C 6C 6F 7C F7"},
        {"Café", "F0 41 10 45 12 10 00 00 43 61 66 E9 7D F7"},
        {"ABCDEFGHIJKLMNOPQRSTUVWXYZ0123456",
         "F0 41 10 45 12 10 00 00 41 42 43 44 45 46 47 48 49 4A 4B 4C 4D 4E 4F 50 51 52 53 54 55 "
         "56 57 58 59 5A 30 31 32 33 34 35 62 F7"},
        {"p", "F0 41 10 45 12 10 00 00 70 00 F7"},
    };
    for (const auto& row : rows) EXPECT_EQ(MakeTextSysEx(row.text, "CP1252"), row.frame);
}

// The data bytes of a frame: everything between the address and the checksum.
std::string DataOf(const std::string& frame) {
    std::istringstream in(frame);
    std::vector<std::string> bytes;
    for (std::string byte; in >> byte;) bytes.push_back(byte);
    std::string data;
    for (std::size_t i = 8; i + 2 < bytes.size(); ++i) data += bytes[i] + " ";
    return data;
}

std::string Repeat(const std::string& piece, int count) {
    std::string text;
    for (int i = 0; i < count; ++i) text += piece;
    return text;
}

TEST(MakeTextSysExTest, SendsWholeCharactersWithin32Bytes) {
    const struct {
        std::string text, codePage, data;
    } rows[] = {
        {" a ", "CP1252", "20 61 20 "},
        {Repeat("x", 32), "CP1252", Repeat("78 ", 32)},
        {"日本", "CP1252", "3F 3F "},
        {Repeat("ｱ", 33), "CP932", Repeat("B1 ", 32)},
        {Repeat("漢", 17), "CP932", Repeat("8A BF ", 16)},
        // The sixteenth double-byte character would end at byte 33: it is left out whole
        // rather than cut in half.
        {"a" + Repeat("漢", 16), "CP932", "61 " + Repeat("8A BF ", 15)},
        {Repeat("a", 31) + "漢b", "CP932", Repeat("61 ", 31)},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(DataOf(MakeTextSysEx(row.text, row.codePage)), row.data) << row.text;
    }
}

TEST(MakeTextSysExTest, UsesCodePageOfProcessLocale) {
    const LocaleEnv env("ja_JP.UTF-8", nullptr, nullptr);
    EXPECT_EQ(MakeTextSysEx("ｱ"), "F0 41 10 45 12 10 00 00 B1 3F F7");
}

}  // namespace
}  // namespace lumidot
