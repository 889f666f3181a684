#include "codec/utf8.h"

namespace lumidot {

namespace {

// The range a byte after the lead byte may take. Only the second byte has ranges of its own:
// they shut out overlong forms, surrogates and code points above U+10FFFF.
bool ContinuationFits(unsigned char lead, std::size_t index, unsigned char byte) {
    unsigned char low = 0x80;
    unsigned char high = 0xBF;
    if (index == 1) {
        if (lead == 0xE0) low = 0xA0;
        if (lead == 0xED) high = 0x9F;
        if (lead == 0xF0) low = 0x90;
        if (lead == 0xF4) high = 0x8F;
    }
    return byte >= low && byte <= high;
}

std::size_t SequenceLength(unsigned char lead) {
    if (lead < 0x80) return 1;
    if (lead >= 0xC2 && lead <= 0xDF) return 2;
    if (lead >= 0xE0 && lead <= 0xEF) return 3;
    if (lead >= 0xF0 && lead <= 0xF4) return 4;
    return 0;
}

}  // namespace

Utf8Step NextUtf8Character(std::string_view text, std::size_t pos) {
    const auto lead = static_cast<unsigned char>(text[pos]);
    const std::size_t expected = SequenceLength(lead);
    if (expected == 0) return {1, false};
    std::size_t length = 1;
    while (length < expected && pos + length < text.size() &&
           ContinuationFits(lead, length, static_cast<unsigned char>(text[pos + length]))) {
        ++length;
    }
    return {length, length == expected};
}

std::size_t CountUtf8Characters(std::string_view text) {
    std::size_t count = 0;
    for (std::size_t pos = 0; pos < text.size(); pos += NextUtf8Character(text, pos).length) {
        ++count;
    }
    return count;
}

std::string_view LeadingUtf8Characters(std::string_view text, std::size_t maxCharacters) {
    std::size_t pos = 0;
    for (std::size_t count = 0; count < maxCharacters && pos < text.size(); ++count) {
        pos += NextUtf8Character(text, pos).length;
    }
    return text.substr(0, pos);
}

char32_t DecodeUtf8Character(std::string_view character) {
    static constexpr unsigned char kLeadMask[] = {0x7F, 0x1F, 0x0F, 0x07};
    char32_t codePoint = static_cast<unsigned char>(character[0]) & kLeadMask[character.size() - 1];
    for (std::size_t i = 1; i < character.size(); ++i) {
        codePoint = (codePoint << 6) | (static_cast<unsigned char>(character[i]) & 0x3F);
    }
    return codePoint;
}

void AppendUtf8(std::string& text, char32_t codePoint) {
    const auto put = [&text](char32_t bits) { text += static_cast<char>(bits); };
    if (codePoint < 0x80) {
        put(codePoint);
    } else if (codePoint < 0x800) {
        put(0xC0 | (codePoint >> 6));
        put(0x80 | (codePoint & 0x3F));
    } else if (codePoint < 0x10000) {
        put(0xE0 | (codePoint >> 12));
        put(0x80 | ((codePoint >> 6) & 0x3F));
        put(0x80 | (codePoint & 0x3F));
    } else {
        put(0xF0 | (codePoint >> 18));
        put(0x80 | ((codePoint >> 12) & 0x3F));
        put(0x80 | ((codePoint >> 6) & 0x3F));
        put(0x80 | (codePoint & 0x3F));
    }
}

}  // namespace lumidot
