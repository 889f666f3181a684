#include "codec/gs_message.h"

#include <algorithm>
#include <array>
#include <iterator>

#include "codec/utf8.h"

namespace lumidot {

namespace {

constexpr char kHexDigits[] = "0123456789ABCDEF";

// Value of every hex digit in either case, -1 for any other character: a table, because
// every message decoded, from a clipboard or a file, is read through it digit by digit.
constexpr std::array<std::int8_t, 256> kHexDigitValues = [] {
    std::array<std::int8_t, 256> values{};
    values.fill(-1);
    for (int i = 0; i < 10; ++i) values['0' + i] = static_cast<std::int8_t>(i);
    for (int i = 0; i < 6; ++i) {
        values['A' + i] = values['a' + i] = static_cast<std::int8_t>(10 + i);
    }
    return values;
}();

int HexDigitValue(char c) {
    return kHexDigitValues[static_cast<unsigned char>(c)];
}

}  // namespace

void AppendByte(ByteArray& bytes, std::uint8_t value) {
    bytes.push_back(value);
}

std::uint8_t GSChecksum(const ByteArray& body) {
    return GSChecksum(body.data(), body.data() + body.size());
}

std::uint8_t GSChecksum(const std::uint8_t* first, const std::uint8_t* last) {
    unsigned sum = 0;
    for (; first != last; ++first) sum += *first;
    return static_cast<std::uint8_t>((128 - sum % 128) % 128);
}

namespace {

// Appends two hex digits and a space for every byte.
void AppendHexList(std::string& text, const ByteArray& bytes) {
    for (std::uint8_t b : bytes) {
        const char digits[3] = {kHexDigits[b >> 4], kHexDigits[b & 0x0F], ' '};
        text.append(digits, 3);
    }
}

}  // namespace

std::string MakeGSSysExText(const ByteArray& body, std::uint8_t modelId) {
    // Every message shown or decoded goes through here, thousands in a row when a file or a
    // long clipboard is read: one allocation, no temporaries.
    std::string text;
    text.reserve(3 * body.size() + 20);
    text += "F0 41 10 ";
    text += HexByte(modelId);
    text += " 12 ";
    AppendHexList(text, body);
    text += HexByte(GSChecksum(body));
    text += " F7";
    return text;
}

ByteArray MakeGSSysEx(const ByteArray& body, std::uint8_t modelId) {
    ByteArray message(body.size() + 7);
    const std::uint8_t header[] = {0xF0, 0x41, 0x10, modelId, 0x12};
    std::copy(std::begin(header), std::end(header), message.begin());
    std::copy(body.begin(), body.end(), message.begin() + 5);
    message.resize(body.size() + 5);
    message.push_back(GSChecksum(body));
    message.push_back(0xF7);
    return message;
}

std::string BytesToHexText(const ByteArray& bytes) {
    std::string text;
    text.reserve(bytes.size() * 3);
    AppendHexList(text, bytes);
    return text;
}

bool HexTextToBytes(const std::string& text, ByteArray& bytes) {
    // A new array is read whole: room for it at once.
    if (bytes.empty()) bytes.reserve(text.size() / 2);
    // Digits pair up as if every space had been removed first; a lone last digit is left.
    char high = 0;
    bool pending = false;
    for (char c : text) {
        if (c == ' ') continue;
        if (!pending) {
            high = c;
            pending = true;
            continue;
        }
        pending = false;
        const int highValue = HexDigitValue(high);
        const int lowValue = HexDigitValue(c);
        // A pair that is not hex has no value to give; guessing one would slip a wrong byte
        // into a message, so the reading ends here and the caller learns of it.
        if (highValue < 0 || lowValue < 0) return false;
        AppendByte(bytes, static_cast<std::uint8_t>(highValue * 16 + lowValue));
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
