// Building test files from hex text: "F0 41 10 F7" and chunk after chunk of MIDI bytes.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "codec/gs_message.h"

namespace lumidot::testing {

// The bytes written in hex text (spaces ignored).
inline ByteArray Hex(const std::string& text) {
    ByteArray bytes;
    HexTextToBytes(text, bytes);
    return bytes;
}

// Bytes as hex text with single spaces, as the tables write them.
inline std::string HexOf(const ByteArray& bytes) {
    std::string text = BytesToHexText(bytes);
    if (!text.empty()) text.pop_back();
    return text;
}

inline ByteArray Join(std::initializer_list<ByteArray> parts) {
    ByteArray all;
    for (const ByteArray& part : parts) all.insert(all.end(), part.begin(), part.end());
    return all;
}

// A chunk: four letters, a 32-bit big-endian length, the body.
inline ByteArray Chunk(const char* type, const ByteArray& body) {
    ByteArray chunk(type, type + 4);
    const auto size = static_cast<std::uint32_t>(body.size());
    for (int shift = 24; shift >= 0; shift -= 8)
        chunk.push_back(static_cast<std::uint8_t>(size >> shift));
    chunk.insert(chunk.end(), body.begin(), body.end());
    return chunk;
}

inline ByteArray Header(int format, int tracks, std::uint16_t division) {
    return Chunk(
        "MThd",
        {0, static_cast<std::uint8_t>(format), 0, static_cast<std::uint8_t>(tracks),
         static_cast<std::uint8_t>(division >> 8), static_cast<std::uint8_t>(division & 0xFF)});
}

// A whole file: the header, then one MTrk chunk per track given as hex text of its events.
// Its first track's events start at offset 22.
inline ByteArray Smf(int format, std::uint16_t division, const std::vector<std::string>& tracks) {
    ByteArray file = Header(format, static_cast<int>(tracks.size()), division);
    for (const std::string& track : tracks) {
        const ByteArray chunk = Chunk("MTrk", Hex(track));
        file.insert(file.end(), chunk.begin(), chunk.end());
    }
    return file;
}

}  // namespace lumidot::testing
