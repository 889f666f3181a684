#include <gtest/gtest.h>

#include <cstdlib>
#include <random>
#include <tuple>

#include "codec/code_page.h"
#include "codec/graphic_page.h"
#include "codec/lcd_text.h"

namespace lumidot {
namespace {

std::string Repeat(const std::string& piece, int count) {
    return count == 0 ? "" : piece + Repeat(piece, count - 1);
}

TEST(MessageBuildersTest, BuildWholeFrames) {
    const auto gs = [](const ByteArray& body) { return MakeGSSysExText(body, kModelDisplay); };
    const auto text = [](const std::string& t) { return MakeTextSysEx(t, "CP1252"); };
    const auto store = [](std::initializer_list<int> on, std::uint8_t page) {
        Page pixels{};
        for (int pixel : on) pixels[pixel] = true;
        return MakeGraphicStoreSysEx(pixels, page);
    };
    Page allOn;
    allOn.fill(true);
    const std::string page1 = "F0 41 10 45 12 10 01 00 ", text1 = "F0 41 10 45 12 10 00 00 ";
    const std::pair<std::string, std::string> rows[] = {
        {gs({0x10, 0x20, 0x00, 0x01}), "F0 41 10 45 12 10 20 00 01 4F F7"},
        {gs({0x10, 0x20, 0x00, 0x00}), "F0 41 10 45 12 10 20 00 00 50 F7"},
        {gs({0x10, 0x00, 0x00, 0x61, 0x62, 0x63}), "F0 41 10 45 12 10 00 00 61 62 63 4A F7"},
        {gs({0x10, 0x00, 0x00}), "F0 41 10 45 12 10 00 00 70 F7"},
        // The body sums to exactly 128: the checksum wraps to 00, not 80.
        {gs({0x10, 0x00, 0x00, 0x70}), "F0 41 10 45 12 10 00 00 70 00 F7"},
        {text(""), "F0 41 10 45 12 10 00 00 70 F7"},
        {text("abc"), "F0 41 10 45 12 10 00 00 61 62 63 4A F7"},
        {text("Hello"), "F0 41 10 45 12 10 00 00 48 65 6C 6C 6F 7C F7"},
        {text("Café"), "F0 41 10 45 12 10 00 00 43 61 66 E9 7D F7"},
        {text("ABCDEFGHIJKLMNOPQRSTUVWXYZ0123456"),  // the 33rd character is left out
         "F0 41 10 45 12 10 00 00 41 42 43 44 45 46 47 48 49 4A 4B 4C 4D 4E 4F 50 51 52 53 54 55 "
         "56 57 58 59 5A 30 31 32 33 34 35 62 F7"},
        {MakeGraphicDisplaySysEx(1), "F0 41 10 45 12 10 20 00 01 4F F7"},
        {MakeGraphicDisplaySysEx(10), "F0 41 10 45 12 10 20 00 0A 46 F7"},
        {MakeGraphicDisplaySysEx(0), "F0 41 10 45 12 10 20 00 00 50 F7"},
        {gs({0x10, 0x20, 0x01, 0x01}), "F0 41 10 45 12 10 20 01 01 4E F7"},  // set duration
        {store({}, 1), page1 + Repeat("00 ", 64) + "6F F7"},
        {MakeGraphicStoreSysEx(allOn, 2),
         "F0 41 10 45 12 10 01 40 " + Repeat("1F ", 48) + Repeat("10 ", 16) + "5F F7"},
        {store({0}, 1), page1 + "10 " + Repeat("00 ", 63) + "5F F7"},
        {store({15}, 1), page1 + Repeat("00 ", 48) + "10 " + Repeat("00 ", 15) + "5F F7"},
        {store({244}, 1), page1 + Repeat("00 ", 15) + "01 " + Repeat("00 ", 48) + "6E F7"},
        // Row 2, column 7 alone: strip 1, row 2.
        {store({39}, 1), page1 + Repeat("00 ", 18) + "04 " + Repeat("00 ", 45) + "6B F7"},
        // The diagonal.
        {store({0, 17, 34, 51, 68, 85, 102, 119, 136, 153, 170, 187, 204, 221, 238, 255}, 3),
         "F0 41 10 45 12 10 02 00 10 08 04 02 01 00 00 00 00 00 00 00 00 00 00 00 "
         "00 00 00 00 00 10 08 04 02 01 00 00 00 00 00 00 00 00 00 00 00 00 00 00 "
         "00 00 10 08 04 02 01 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 10 "
         "01 F7"},
        // In a double-byte code page whole characters go out for as long as their bytes fit
        // in 32.
        {MakeTextSysEx("a" + Repeat("漢", 16), "CP932"),
         text1 + "61 " + Repeat("8A BF ", 15) + "48 F7"},
        {MakeTextSysEx(Repeat("a", 31) + "漢b", "CP932"), text1 + Repeat("61 ", 31) + "31 F7"},
    };
    for (const auto& [built, frame] : rows) EXPECT_EQ(built, frame);
}

// The byte builders give what the hex builders write, for every page number in and around
// the range (out of range: nothing).
TEST(MessageBuildersTest, BytesAgreeWithTheirHexText) {
    std::mt19937 random(7);
    for (int page = 0; page <= 12; ++page) {
        Page pixels{};
        for (bool& pixel : pixels) pixel = random() & 1;
        const auto number = static_cast<std::uint8_t>(page);
        ByteArray store, display;
        HexTextToBytes(MakeGraphicStoreSysEx(pixels, number), store);
        HexTextToBytes(MakeGraphicDisplaySysEx(number), display);
        EXPECT_EQ(GraphicStoreMessage(pixels, number), store) << "page " << page;
        EXPECT_EQ(GraphicDisplayMessage(number), display) << "page " << page;
    }
}

// Appends to what the array holds; reading stops at a pair that is not hex.
TEST(HexTextToBytesTest, AppendsPairsUpToTheFirstNonHexPair) {
    const std::tuple<std::string, ByteArray, bool> rows[] = {
        {"f041 4 1 aB 1", {0x01, 0xF0, 0x41, 0x41, 0xAB}, true},
        {"41 4G 42", {0x01, 0x41}, false},
        {"-1", {0x01}, false},
    };
    for (const auto& [text, expected, complete] : rows) {
        ByteArray bytes{0x01};
        EXPECT_EQ(HexTextToBytes(text, bytes), complete) << text;
        EXPECT_EQ(bytes, expected) << text;
    }
}

TEST(PackPageTest, UnpackGivesPagesBackAndIgnoresBitsOutsideThePicture) {
    std::mt19937 random(20240501);
    for (int i = 0; i < 2000; ++i) {
        Page page;
        for (bool& pixel : page) pixel = (random() & 1) != 0;
        EXPECT_EQ(UnpackPage(PackPage(page).data()), page) << "page " << i;
        // Of random bytes only bits 4-0 in strips 0 to 2 and bit 4 in strip 3 survive.
        ByteArray raw(kPackedPageBytes), meaningful(kPackedPageBytes);
        for (int j = 0; j < kPackedPageBytes; ++j) {
            raw[j] = static_cast<std::uint8_t>(random());
            meaningful[j] = raw[j] & (j < 48 ? 0x1F : 0x10);
        }
        EXPECT_EQ(PackPage(UnpackPage(raw.data())), meaningful) << "sample " << i;
    }
}

// Sets LC_ALL, LC_CTYPE and LANG (nullptr unsets). Every test that reads the locale sets it.
void SetLocaleEnv(const char* lcAll, const char* lcCtype = nullptr, const char* lang = nullptr) {
    const char* names[] = {"LC_ALL", "LC_CTYPE", "LANG"};
    const char* values[] = {lcAll, lcCtype, lang};
    for (int i = 0; i < 3; ++i) values[i] ? setenv(names[i], values[i], 1) : unsetenv(names[i]);
}

TEST(AnsiCodePageForLocaleTest, MapsLanguageToWindowsCodePage) {
    const std::pair<std::string, std::vector<std::string>> rows[] = {
        {"CP932", {"ja_JP.UTF-8", "ja"}},
        {"CP1250", {"pl_PL", "cs_CZ.UTF-8", "hr_HR", "bs_BA", "sr_RS.UTF-8@latin"}},
        {"CP1251", {"sr_RS.UTF-8", "ru_RU.KOI8-R", "uk_UA", "kk_KZ", "uz_UZ.UTF-8@cyrillic"}},
        {"CP1253", {"el_GR.UTF-8"}},
        {"CP1254", {"tr_TR.UTF-8", "az_AZ"}},
        {"CP1255", {"he_IL.UTF-8", "yi_US"}},
        {"CP1256", {"ar_EG.UTF-8", "fa_IR", "ur_PK"}},
        {"CP1257", {"lt_LT.UTF-8", "et_EE"}},
        {"CP1258", {"vi_VN"}},
        {"CP874", {"th_TH.UTF-8"}},
        {"CP949", {"ko_KR.EUC-KR"}},
        {"CP936", {"zh_CN.UTF-8", "zh_SG"}},
        {"CP950", {"zh_TW.UTF-8", "zh_HK.UTF-8", "zh_MO"}},
        // A language matches only as a whole code, never by a shared first letter (se, jv).
        {"CP1252", {"en_US.UTF-8", "de_DE.UTF-8@euro", "C.UTF-8", "POSIX", "", "se_NO", "jv_ID"}},
    };
    for (const auto& [codePage, locales] : rows) {
        for (const std::string& l : locales) EXPECT_EQ(AnsiCodePageForLocale(l), codePage) << l;
    }
}

// Each row changes the environment of the running process, so a cached answer would show; the
// last leaves the C locale behind.
TEST(SystemAnsiCodePageTest, FollowsFirstNonEmptyOfLcAllLcCtypeLang) {
    SetLocaleEnv("ja_JP.UTF-8");
    EXPECT_EQ(MakeTextSysEx("ｱ", SystemAnsiCodePage()), "F0 41 10 45 12 10 00 00 B1 3F F7");  // its single CP932 byte
    const std::tuple<const char*, const char*, const char*, std::string> rows[] = {
        {"ja_JP.UTF-8", "ru_RU", "el_GR", "CP932"},
        {"", "ru_RU", "el_GR", "CP1251"},
        {nullptr, "", "el_GR", "CP1253"},
        {nullptr, nullptr, nullptr, "CP1252"}};
    for (const auto& [lcAll, lcCtype, lang, codePage] : rows) {
        SetLocaleEnv(lcAll, lcCtype, lang);
        EXPECT_EQ(SystemAnsiCodePage(), codePage);
    }
}

TEST(CodePageConversionTest, ConvertsBothWaysAndNeverFails) {
    EXPECT_EQ(Utf8ToAnsi("Café €", "CP1252"), "Caf\xE9 \x80");
    EXPECT_EQ(AnsiToUtf8("Caf\xE9 \x80", "CP1252"), "Café €");
    EXPECT_EQ(Utf8ToAnsi("あｱ\\", "CP932"), "\x82\xA0\xB1\\");
    EXPECT_EQ(AnsiToUtf8("\x82\xA0\xB1\\", "CP932"), "あｱ\\");
    // What the code page cannot hold, and invalid UTF-8 (a stray byte, a cut sequence), is '?'.
    EXPECT_EQ(Utf8ToAnsi("日本", "CP1252"), "??");
    EXPECT_EQ(Utf8ToAnsi("\xC2\x81 a\xFFz\xE6\xBC", "CP932"), "? a?z?");
    // A bad or cut double-byte sequence is one U+FFFD, then on with the next byte.
    EXPECT_EQ(AnsiToUtf8("\x82 a\x82", "CP932"), "\xEF\xBF\xBD a\xEF\xBF\xBD");
}

// Every byte, those a single-byte code page leaves undefined included.
TEST(CodePageConversionTest, EverySingleByteSurvivesDecodeAndEncode) {
    std::string bytes;
    for (int b = 0; b < 256; ++b) bytes += static_cast<char>(b);
    for (const char* codePage : {"CP1250", "CP1251", "CP1252", "CP1253", "CP1255", "CP874"}) {
        EXPECT_EQ(Utf8ToAnsi(AnsiToUtf8(bytes, codePage), codePage), bytes) << codePage;
    }
}

}  // namespace
}  // namespace lumidot
