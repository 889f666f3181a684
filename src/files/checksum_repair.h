// Putting right the checksums of the Roland GS data-set messages in a whole file.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

#include "codec/gs_message.h"
#include "files/file_problem.h"

namespace lumidot {

// One checksum byte that was wrong: where it stands in the file and its two values.
struct ChecksumFix {
    std::size_t messageOffset = 0;  // the message's first byte (its F0)
    std::size_t offset = 0;         // the checksum byte
    std::uint8_t was = 0;
    std::uint8_t now = 0;
    // Where the message stands in a MIDI file; 0 and -1 in a .syx file.
    double seconds = 0;
    int track = -1;
};

struct RepairReport {
    std::vector<ChecksumFix> fixes;     // in the order of the file's messages
    std::vector<FileProblem> problems;  // damage around the messages, as the reader found it
    std::optional<FileProblem> error;   // the file could not be read: nothing was changed
};

// The checksum a GS data-set message should carry (manufacturer 41, model 42 or 45, command
// 12, at least the three address bytes, ending in F7), or nothing for any other message.
std::optional<std::uint8_t> ExpectedGSChecksum(const ByteArray& message);

// Repairs the messages of a .syx file in place: only wrong checksum bytes change.
RepairReport RepairSyxChecksums(std::vector<std::uint8_t>& file);

// Repairs the messages of a Standard MIDI File in place, wherever their packets stand: only
// wrong checksum bytes change, the file is never written anew. A file that cannot be read
// to its end is left as it is.
RepairReport RepairMidiChecksums(std::vector<std::uint8_t>& file);

}  // namespace lumidot
