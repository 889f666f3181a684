// libFuzzer: the .syx and MIDI readers and the checksum repair take any bytes. They never
// read outside the buffer, every byte they hand back stands where they say it does, and a
// repair keeps the length and changes nothing but the checksum bytes it reports.
#include <cstddef>
#include <cstdint>
#include <set>
#include <vector>

#include "files/checksum_repair.h"
#include "files/midi_file.h"
#include "files/syx_file.h"

namespace {

using Bytes = std::vector<std::uint8_t>;

void Require(bool condition) {
    if (!condition) __builtin_trap();
}

void CheckSyx(const Bytes& file) {
    const lumidot::SyxContents contents = lumidot::ReadSyx(file);
    for (const lumidot::SyxMessage& message : contents.messages) {
        Require(message.offset + message.bytes.size() <= file.size());
        for (std::size_t i = 0; i < message.bytes.size(); ++i) {
            Require(file[message.offset + i] == message.bytes[i]);
        }
    }
    for (const lumidot::FileProblem& problem : contents.problems) {
        Require(problem.offset <= file.size());
    }
}

void CheckMidi(const Bytes& file) {
    const lumidot::MidiContents contents = lumidot::ReadMidi(file);
    for (const lumidot::MidiSysEx& message : contents.messages) {
        for (std::size_t i = 0; i < message.bytes.size(); ++i) {
            const auto at = lumidot::FileOffsetOf(message, i);
            Require(at && *at < file.size() && file[*at] == message.bytes[i]);
        }
        Require(!lumidot::FileOffsetOf(message, message.bytes.size()));
    }
    if (contents.error) Require(contents.error->offset <= file.size());
}

void CheckRepair(const Bytes& original, bool midi) {
    Bytes file = original;
    const lumidot::RepairReport report =
        midi ? lumidot::RepairMidiChecksums(file) : lumidot::RepairSyxChecksums(file);
    Require(file.size() == original.size());
    std::set<std::size_t> fixed;
    for (const lumidot::ChecksumFix& fix : report.fixes) {
        Require(fixed.insert(fix.offset).second);
        Require(original[fix.offset] == fix.was && file[fix.offset] == fix.now);
        Require(fix.was != fix.now && fix.now < 0x80);
    }
    for (std::size_t i = 0; i < file.size(); ++i) {
        Require(file[i] == original[i] || fixed.count(i) == 1);
    }
    // A repaired file needs no more repair.
    Bytes again = file;
    const lumidot::RepairReport second =
        midi ? lumidot::RepairMidiChecksums(again) : lumidot::RepairSyxChecksums(again);
    Require(second.fixes.empty() && again == file);
}

// The input as the events of one track of a well-formed file, so that the track reader is
// reached at once; the first byte picks the format and the division.
Bytes AsTrack(const std::uint8_t* data, std::size_t size) {
    const std::uint8_t pick = size > 0 ? data[0] : 0;
    const std::size_t length = size > 0 ? size - 1 : 0;
    Bytes file = {'M', 'T', 'h', 'd', 0, 0, 0, 6, 0, static_cast<std::uint8_t>(pick % 3), 0, 1};
    if (pick & 0x80) {
        file.insert(file.end(), {0xE7, 0x28});  // 25 frames of 40 ticks
    } else {
        file.insert(file.end(), {0x00, static_cast<std::uint8_t>(1 + (pick & 0x7C))});
    }
    file.insert(file.end(),
                {'M', 'T', 'r', 'k', static_cast<std::uint8_t>(length >> 24),
                 static_cast<std::uint8_t>(length >> 16), static_cast<std::uint8_t>(length >> 8),
                 static_cast<std::uint8_t>(length)});
    if (size > 0) file.insert(file.end(), data + 1, data + size);
    return file;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    // Copies of exactly the input's size, so that any read past the end is caught.
    const Bytes raw(data, data + size);
    CheckSyx(raw);
    CheckMidi(raw);
    CheckRepair(raw, false);
    CheckRepair(raw, true);
    const Bytes track = AsTrack(data, size);
    CheckMidi(track);
    CheckRepair(track, true);
    return 0;
}
