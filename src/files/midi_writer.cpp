// Writing format 0 files that hold System Exclusive messages at given times.
#include <algorithm>
#include <cmath>
#include <numeric>

#include "files/midi_file.h"

namespace lumidot {
namespace {

void AppendNumber(ByteArray& out, std::uint64_t value) {
    // Variable-length: seven bits a byte, most significant first, the high bit on every byte
    // but the last. Four bytes hold up to 0x0FFFFFFF, far beyond any length written here.
    std::uint8_t groups[10];
    int count = 0;
    do {
        groups[count++] = static_cast<std::uint8_t>(value & 0x7F);
        value >>= 7;
    } while (value != 0);
    while (count > 1) out.push_back(groups[--count] | 0x80);
    out.push_back(groups[0]);
}

void AppendBigEndian(ByteArray& out, std::uint32_t value, int bytes) {
    for (int i = bytes - 1; i >= 0; --i) out.push_back(static_cast<std::uint8_t>(value >> (8 * i)));
}

std::uint64_t Ticks(double seconds) {
    if (!(seconds > 0)) return 0;
    return static_cast<std::uint64_t>(
        std::llround(seconds * 1e6 * kWrittenTicksPerQuarter / kWrittenTempo));
}

}  // namespace

ByteArray WriteMidi(const std::vector<TimedMessage>& messages) {
    std::vector<std::size_t> order(messages.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    std::vector<std::uint64_t> ticks(messages.size());
    for (std::size_t i = 0; i < messages.size(); ++i) ticks[i] = Ticks(messages[i].seconds);
    std::stable_sort(order.begin(), order.end(),
                     [&](std::size_t a, std::size_t b) { return ticks[a] < ticks[b]; });

    ByteArray track;
    track.reserve(16 + messages.size() * 80);
    const std::uint8_t tempo[] = {0x00, 0xFF, 0x51, 0x03};
    track.insert(track.end(), std::begin(tempo), std::end(tempo));
    AppendBigEndian(track, kWrittenTempo, 3);
    std::uint64_t now = 0;
    for (std::size_t i : order) {
        const ByteArray& bytes = messages[i].bytes;
        if (bytes.empty()) continue;
        AppendNumber(track, ticks[i] - now);
        now = ticks[i];
        // A message stands in one F0 event, whose length counts the bytes after the F0.
        // Bytes that are no whole message go out as they are, in an escape packet.
        const bool whole = bytes.front() == 0xF0;
        track.push_back(whole ? 0xF0 : 0xF7);
        AppendNumber(track, bytes.size() - (whole ? 1 : 0));
        track.insert(track.end(), bytes.begin() + (whole ? 1 : 0), bytes.end());
    }
    const std::uint8_t endOfTrack[] = {0x00, 0xFF, 0x2F, 0x00};
    track.insert(track.end(), std::begin(endOfTrack), std::end(endOfTrack));

    ByteArray file = {'M', 'T', 'h', 'd', 0, 0, 0, 6, 0, 0, 0, 1};
    AppendBigEndian(file, kWrittenTicksPerQuarter, 2);
    file.insert(file.end(), {'M', 'T', 'r', 'k'});
    AppendBigEndian(file, static_cast<std::uint32_t>(track.size()), 4);
    file.insert(file.end(), track.begin(), track.end());
    return file;
}

}  // namespace lumidot
