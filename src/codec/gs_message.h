// GS data-set (DT1) System Exclusive messages as bytes and as hex text.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace lumidot {

using ByteArray = std::vector<std::uint8_t>;

// Model IDs carried by the messages this program builds or rebuilds.
constexpr std::uint8_t kModelDisplay = 0x45;  // SC-88Pro display messages
constexpr std::uint8_t kModelGS = 0x42;

// Grows the array by one byte at its end.
void AppendByte(ByteArray& bytes, std::uint8_t value);

// Roland checksum of a body (address and data): completes the sum to a multiple of 128.
std::uint8_t GSChecksum(const ByteArray& body);
std::uint8_t GSChecksum(const std::uint8_t* first, const std::uint8_t* last);

// The whole message F0 41 10 <model> 12 <body> <checksum> F7 as hex text with single
// spaces between bytes and none at either end.
std::string MakeGSSysExText(const ByteArray& body, std::uint8_t modelId);

// The same message as bytes, for a MIDI port or a file.
ByteArray MakeGSSysEx(const ByteArray& body, std::uint8_t modelId);

// Every byte as two upper-case hex digits followed by one space ("10 20 " for 10 20).
std::string BytesToHexText(const ByteArray& bytes);

// Appends the bytes written in hex text (spaces ignored, either letter case, an odd last
// digit ignored). Stops at the first pair that is not hexadecimal: nothing is appended for
// it or for anything after it, and the result is false. True when every pair was read.
bool HexTextToBytes(const std::string& text, ByteArray& bytes);

// "0" in front of a one-character text; any other text unchanged.
std::string HexPad2(const std::string& text);

// Widens text (counted in characters, UTF-8) to width with the first character of padChar,
// on the right when padOnRight, else on the left. Never shortens.
std::string PadText(const std::string& text, const std::string& padChar, int width,
                    bool padOnRight);

// Two upper-case hex digits of a byte ("0A").
std::string HexByte(std::uint8_t value);

}  // namespace lumidot
