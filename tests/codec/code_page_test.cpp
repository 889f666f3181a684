#include "codec/code_page.h"

#include <gtest/gtest.h>

#include "locale_env.h"

namespace lumidot {
namespace {

TEST(AnsiCodePageForLocaleTest, MapsLanguageToWindowsCodePage) {
    const struct {
        std::string codePage;
        std::vector<std::string> locales;
    } rows[] = {
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
        {"CP1252", {"de_DE.UTF-8@euro", "en_US.UTF-8", "C.UTF-8", "POSIX", "", "se_NO", "jv_ID"}},
    };
    for (const auto& row : rows) {
        for (const std::string& locale : row.locales) {
            EXPECT_EQ(AnsiCodePageForLocale(locale), row.codePage) << locale;
        }
    }
}

// Each row changes the environment of the running process, so a cached answer would show.
TEST(SystemAnsiCodePageTest, FirstNonEmptyOfLcAllLcCtypeLang) {
    const struct {
        const char *lcAll, *lcCtype, *lang;
        std::string codePage;
    } rows[] = {
        {"ja_JP.UTF-8", "ru_RU", "el_GR", "CP932"}, {"", "ru_RU", "el_GR", "CP1251"},
        {nullptr, nullptr, "el_GR", "CP1253"},      {nullptr, "", "", "CP1252"},
        {nullptr, nullptr, nullptr, "CP1252"},
    };
    for (const auto& row : rows) {
        const LocaleEnv env(row.lcAll, row.lcCtype, row.lang);
        EXPECT_EQ(SystemAnsiCodePage(), row.codePage);
    }
}

struct ConversionRow {
    std::string utf8, codePage, bytes;
};

TEST(Utf8ToAnsiTest, EncodesWithQuestionMarkForWhatDoesNotFit) {
    const ConversionRow rows[] = {
        {"Café €", "CP1252", "Caf\xE9 \x80"},
        {"日本", "CP1252", "??"},
        {"Жz", "CP1251", "\xC6z"},
        {"ｱ漢", "CP932", "\xB1\x8A\xBF"},
        // Invalid UTF-8: a stray byte, a cut sequence, a surrogate's bytes; each is a '?'.
        {"a\xFFz", "CP1252", "a?z"},
        {"a\xE6\xBC", "CP932", "a?"},
        {"\xED\xA0\x80", "CP1252", "???"},
        // Characters numbered like the bytes a single-byte code page leaves undefined.
        {"\xC2\x81\xC2\x90", "CP1252", "\x81\x90"},
        {"\xC2\x81", "CP932", "?"},
        {"é", "NO-SUCH-CODE-PAGE", "\xE9"},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(Utf8ToAnsi(row.utf8, row.codePage), row.bytes) << row.codePage << " " << row.utf8;
    }
}

TEST(AnsiToUtf8Test, DecodesWithoutEverFailing) {
    const ConversionRow rows[] = {
        {"Café", "CP1252", "Caf\xE9"},
        {"\xC2\x81\xC2\x9D", "CP1252", "\x81\x9D"},
        {"Ω", "CP1253", "\xD9"},
        {"あｱ\\", "CP932", "\x82\xA0\xB1\\"},
        {"가", "CP949", "\xB0\xA1"},
        // Bad or cut double-byte sequences: one U+FFFD, then on with the next byte.
        {"\xEF\xBF\xBD ", "CP932", "\x82 "},
        {"a\xEF\xBF\xBD", "CP932", "a\x82"},
        {"\xEF\xBF\xBDz", "CP932", "\x80z"},
        {std::string("a\0b", 3), "CP1252", std::string("a\0b", 3)},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(AnsiToUtf8(row.bytes, row.codePage), row.utf8) << row.codePage << " " << row.utf8;
    }
}

TEST(CodePageRoundTripTest, EverySingleByteSurvivesDecodeAndEncode) {
    for (const char* codePage : {"CP1250", "CP1251", "CP1252", "CP1253", "CP1255", "CP874"}) {
        for (int b = 0; b < 256; ++b) {
            const std::string byte(1, static_cast<char>(b));
            EXPECT_EQ(Utf8ToAnsi(AnsiToUtf8(byte, codePage), codePage), byte) << codePage;
        }
    }
}

TEST(Utf8ToAnsiPerCharacterTest, KeepsEachCharactersBytesTogether) {
    const std::vector<std::string> expected{"a", "\x8A\xBF", "?", "\xB1"};
    EXPECT_EQ(Utf8ToAnsiPerCharacter("a漢\xC3ｱ", "CP932"), expected);
}

}  // namespace
}  // namespace lumidot
