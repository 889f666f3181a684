// Where a row of text may wrap: after spaces, and on either side of an ideograph, a kana,
// CJK punctuation or an emoji (Hangul wraps by words, between spaces), unless punctuation that
// belongs to the neighbour (a closing bracket, a full stop, an opening bracket) holds the two
// together. A small part of the Unicode line-breaking rules: enough for clipboard text in any
// script to wrap as a plain text edit wraps it.
#pragma once

namespace lumidot {

// A space or tab the row may wrap after; the no-break spaces never.
bool IsBreakSpace(char16_t c);

// Whether the row may wrap between two characters given as code points, neither a space.
// Only characters from U+2E80 on can open such a break, so callers test that first.
bool MayBreakBetween(char32_t before, char32_t after);

// The first code point that can take part in a break between two characters.
constexpr char32_t kFirstBreakingCodePoint = 0x2E80;

}  // namespace lumidot
