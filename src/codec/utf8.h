// Walking UTF-8 text character by character, shared by the codec's text routines.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace lumidot {

// One step through UTF-8 text: the bytes of the character at a position, or, when the bytes
// there do not form a character, the longest start of one they do form (at least one byte),
// so that a broken sequence counts as a single bad character.
struct Utf8Step {
    std::size_t length;
    bool valid;
};
Utf8Step NextUtf8Character(std::string_view text, std::size_t pos);

// Number of characters; every broken sequence counts as one.
std::size_t CountUtf8Characters(std::string_view text);

// The first maxCharacters characters of the text (all of it when it is shorter).
std::string_view LeadingUtf8Characters(std::string_view text, std::size_t maxCharacters);

// Code point of one valid character as NextUtf8Character found it.
char32_t DecodeUtf8Character(std::string_view character);

void AppendUtf8(std::string& text, char32_t codePoint);

}  // namespace lumidot
