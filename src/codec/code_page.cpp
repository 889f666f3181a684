#include "codec/code_page.h"

#include <iconv.h>

#include <algorithm>
#include <array>
#include <cctype>
#include <cerrno>
#include <cstdlib>
#include <map>
#include <mutex>
#include <optional>
#include <string_view>

#include "codec/utf8.h"

namespace lumidot {

namespace {

// The C locale's code page; also what an unknown code page name falls back to, so that a
// conversion always has a code page to work with.
constexpr char kDefaultCodePage[] = "CP1252";
constexpr char32_t kReplacementCharacter = 0xFFFD;

struct LanguageCodePage {
    std::string_view language;
    std::string_view codePage;
};

// Languages whose Windows locales share an ANSI code page; every other language uses
// Windows-1252. Chinese and the script modifiers are settled before this list is read.
constexpr LanguageCodePage kLanguageCodePages[] = {
    {"ja", "CP932"},  {"ko", "CP949"},   {"th", "CP874"},  {"vi", "CP1258"}, {"el", "CP1253"},
    {"cs", "CP1250"}, {"pl", "CP1250"},  {"hu", "CP1250"}, {"sk", "CP1250"}, {"sl", "CP1250"},
    {"hr", "CP1250"}, {"ro", "CP1250"},  {"sq", "CP1250"}, {"bs", "CP1250"}, {"ru", "CP1251"},
    {"uk", "CP1251"}, {"be", "CP1251"},  {"bg", "CP1251"}, {"sr", "CP1251"}, {"mk", "CP1251"},
    {"kk", "CP1251"}, {"ky", "CP1251"},  {"tt", "CP1251"}, {"mn", "CP1251"}, {"tg", "CP1251"},
    {"ba", "CP1251"}, {"sah", "CP1251"}, {"tr", "CP1254"}, {"az", "CP1254"}, {"uz", "CP1254"},
    {"he", "CP1255"}, {"iw", "CP1255"},  {"yi", "CP1255"}, {"ar", "CP1256"}, {"fa", "CP1256"},
    {"ur", "CP1256"}, {"lt", "CP1257"},  {"lv", "CP1257"}, {"et", "CP1257"},
};

std::string ToLower(std::string_view text) {
    std::string lower;
    for (char c : text) lower += static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    return lower;
}

// One iconv conversion descriptor, closed with its owner.
class Converter {
public:
    Converter(const std::string& to, const std::string& from)
        : cd_(iconv_open(to.c_str(), from.c_str())) {}
    ~Converter() {
        if (isOpen()) iconv_close(cd_);
    }
    Converter(const Converter&) = delete;
    Converter& operator=(const Converter&) = delete;

    bool isOpen() const { return cd_ != reinterpret_cast<iconv_t>(-1); }

    struct Progress {
        std::size_t used;  // input bytes converted
        bool truncated;    // stopped at a sequence the input ends inside of
    };

    // Appends the conversion of the input up to the first sequence that does not convert.
    Progress convertPrefix(std::string_view input, std::string& output) {
        iconv(cd_, nullptr, nullptr, nullptr, nullptr);
        char* in = const_cast<char*>(input.data());
        std::size_t inLeft = input.size();
        char buffer[256];
        int error = 0;
        for (;;) {
            char* out = buffer;
            std::size_t outLeft = sizeof buffer;
            const std::size_t result = iconv(cd_, &in, &inLeft, &out, &outLeft);
            error = result == static_cast<std::size_t>(-1) ? errno : 0;
            output.append(buffer, static_cast<std::size_t>(out - buffer));
            if (error != E2BIG) break;
        }
        // Some converters hold back a character in case a combining mark follows.
        char* out = buffer;
        std::size_t outLeft = sizeof buffer;
        iconv(cd_, nullptr, nullptr, &out, &outLeft);
        output.append(buffer, static_cast<std::size_t>(out - buffer));
        return {input.size() - inLeft, error == EINVAL};
    }

    // The whole input converted, or nothing when any part of it does not convert.
    bool convertAll(std::string_view input, std::string& output) {
        std::string converted;
        if (convertPrefix(input, converted).used != input.size()) return false;
        output += converted;
        return true;
    }

private:
    iconv_t cd_;
};

// What the converters need to know about a code page beyond iconv itself. Single-byte code
// pages leave some byte values without a character; Windows reads such a byte as the
// character with the same number and writes that character back as the byte, and so do we.
struct CodePageInfo {
    std::string name;  // the iconv name actually used
    bool multiByte = false;
    std::array<std::string, 256> byteText;  // UTF-8 of each byte (single-byte code pages)
    std::array<bool, 256> undefined{};
    // Every ASCII character is the byte of the same value, both ways: such text needs no
    // converter at all, which is most LCD text and worth the shortcut.
    bool asciiAsIs = false;
};

CodePageInfo BuildInfo(const std::string& codePage) {
    CodePageInfo info;
    info.name = codePage;
    // An empty name would make iconv use the locale's character set instead.
    if (codePage.empty() || !Converter("UTF-8", codePage).isOpen()) info.name = kDefaultCodePage;
    Converter decoder("UTF-8", info.name);
    for (int b = 0; b < 256; ++b) {
        const char byte = static_cast<char>(b);
        std::string text;
        const Converter::Progress progress = decoder.convertPrefix({&byte, 1}, text);
        // A byte that needs more bytes after it is the lead byte of a multi-byte character.
        if (progress.truncated) info.multiByte = true;
        if (progress.used != 1 || text.empty()) {
            info.undefined[b] = true;
            text.clear();
            AppendUtf8(text, static_cast<char32_t>(b));
        }
        info.byteText[b] = text;
    }
    Converter encoder(info.name, "UTF-8");
    info.asciiAsIs = true;
    for (int b = 0; b < 0x80 && info.asciiAsIs; ++b) {
        const std::string character(1, static_cast<char>(b));
        std::string bytes;
        info.asciiAsIs = info.byteText[b] == character && encoder.convertAll(character, bytes) &&
                         bytes == character;
    }
    return info;
}

// Built once per code page name: it takes 256 conversions.
const CodePageInfo& InfoFor(const std::string& codePage) {
    static std::mutex mutex;
    static std::map<std::string, CodePageInfo> infos;
    const std::lock_guard<std::mutex> lock(mutex);
    auto found = infos.find(codePage);
    if (found == infos.end()) found = infos.emplace(codePage, BuildInfo(codePage)).first;
    return found->second;
}

}  // namespace

std::string AnsiCodePageForLocale(const std::string& localeName) {
    // language[_territory][.codeset][@modifier]
    const std::size_t languageEnd = localeName.find_first_of("_.@");
    const std::string language = ToLower(std::string_view(localeName).substr(0, languageEnd));
    std::string territory;
    if (languageEnd != std::string::npos && localeName[languageEnd] == '_') {
        const std::size_t territoryEnd = localeName.find_first_of(".@", languageEnd + 1);
        territory = localeName.substr(languageEnd + 1, territoryEnd - languageEnd - 1);
    }
    const std::size_t at = localeName.find('@');
    const std::string modifier = at == std::string::npos ? "" : ToLower(localeName.substr(at + 1));

    if (language == "zh") {
        const bool traditional = territory == "TW" || territory == "HK" || territory == "MO";
        return traditional ? "CP950" : "CP936";
    }
    if (language == "sr" && modifier == "latin") return "CP1250";
    if (modifier == "cyrillic") return "CP1251";
    for (const LanguageCodePage& entry : kLanguageCodePages) {
        if (entry.language == language) return std::string(entry.codePage);
    }
    return kDefaultCodePage;
}

std::string SystemAnsiCodePage() {
    for (const char* variable : {"LC_ALL", "LC_CTYPE", "LANG"}) {
        const char* value = std::getenv(variable);
        if (value != nullptr && *value != '\0') return AnsiCodePageForLocale(value);
    }
    return AnsiCodePageForLocale("");
}

std::vector<std::string> Utf8ToAnsiPerCharacter(const std::string& utf8,
                                                const std::string& codePage) {
    const CodePageInfo& info = InfoFor(codePage);
    std::optional<Converter> encoder;
    std::vector<std::string> characters;
    characters.reserve(utf8.size());
    for (std::size_t pos = 0; pos < utf8.size();) {
        const Utf8Step step = NextUtf8Character(utf8, pos);
        const std::string_view character(utf8.data() + pos, step.length);
        pos += step.length;
        if (info.asciiAsIs && step.valid && static_cast<unsigned char>(character[0]) < 0x80) {
            characters.emplace_back(character);
            continue;
        }
        if (!encoder) encoder.emplace(info.name, "UTF-8");
        std::string bytes;
        if (step.valid && !encoder->convertAll(character, bytes)) {
            const char32_t codePoint = DecodeUtf8Character(character);
            if (!info.multiByte && codePoint < 256 && info.undefined[codePoint]) {
                bytes = static_cast<char>(codePoint);
            }
        }
        characters.push_back(bytes.empty() ? "?" : bytes);
    }
    return characters;
}

std::string Utf8ToAnsi(const std::string& utf8, const std::string& codePage) {
    std::string bytes;
    for (const std::string& character : Utf8ToAnsiPerCharacter(utf8, codePage)) bytes += character;
    return bytes;
}

std::string AnsiToUtf8(const std::string& bytes, const std::string& codePage) {
    const CodePageInfo& info = InfoFor(codePage);
    if (info.asciiAsIs && std::all_of(bytes.begin(), bytes.end(), [](char b) {
            return static_cast<unsigned char>(b) < 0x80;
        })) {
        return bytes;
    }
    std::string text;
    if (!info.multiByte) {
        for (char b : bytes) text += info.byteText[static_cast<unsigned char>(b)];
        return text;
    }
    Converter decoder("UTF-8", info.name);
    for (std::size_t pos = 0; pos < bytes.size();) {
        pos += decoder.convertPrefix(std::string_view(bytes).substr(pos), text).used;
        if (pos < bytes.size()) {
            AppendUtf8(text, kReplacementCharacter);
            ++pos;
        }
    }
    return text;
}

}  // namespace lumidot
