#include "codec/gs_message.h"

#include "codec/utf8.h"

namespace lumidot {

namespace {

constexpr char kHexDigits[] = "0123456789ABCDEF";

// Value of one hex digit in either case, or -1 for any other character.
int HexDigitValue(char c) {
    if (c >= '0' && c <= '9') return c - '0';
    if (c >= 'A' && c <= 'F') return c - 'A' + 10;
    if (c >= 'a' && c <= 'f') return c - 'a' + 10;
    return -1;
}

}  // namespace

void AppendByte(ByteArray& bytes, std::uint8_t value) {
    bytes.push_back(value);
}

std::uint8_t GSChecksum(const ByteArray& body) {
    unsigned sum = 0;
    for (std::uint8_t b : body) sum += b;
    return static_cast<std::uint8_t>((128 - sum % 128) % 128);
}

std::string MakeGSSysExText(const ByteArray& body, std::uint8_t modelId) {
    return "F0 41 10 " + HexByte(modelId) + " 12 " + BytesToHexText(body) +
           HexByte(GSChecksum(body)) + " F7";
}

std::string BytesToHexText(const ByteArray& bytes) {
    std::string text;
    text.reserve(bytes.size() * 3);
    for (std::uint8_t b : bytes) {
        text += HexByte(b);
        text += ' ';
    }
    return text;
}

bool HexTextToBytes(const std::string& text, ByteArray& bytes) {
    std::string digits;
    digits.reserve(text.size());
    for (char c : text) {
        if (c != ' ') digits += c;
    }
    for (std::size_t i = 0; i + 1 < digits.size(); i += 2) {
        const int high = HexDigitValue(digits[i]);
        const int low = HexDigitValue(digits[i + 1]);
        // A pair that is not hex has no value to give; guessing one would slip a wrong byte
        // into a message, so the reading ends here and the caller learns of it.
        if (high < 0 || low < 0) return false;
        AppendByte(bytes, static_cast<std::uint8_t>(high * 16 + low));
    }
    return true;
}

std::string HexPad2(const std::string& text) {
    return CountUtf8Characters(text) == 1 ? "0" + text : text;
}

std::string PadText(const std::string& text, const std::string& padChar, int width,
                    bool padOnRight) {
    const auto length = static_cast<long long>(CountUtf8Characters(text));
    if (padChar.empty() || length >= width) return text;
    const std::string_view pad = LeadingUtf8Characters(padChar, 1);
    std::string run;
    for (long long i = length; i < width; ++i) run += pad;
    return padOnRight ? text + run : run + text;
}

std::string HexByte(std::uint8_t value) {
    return {kHexDigits[value >> 4], kHexDigits[value & 0x0F]};
}

}  // namespace lumidot
