// Standard MIDI Files: the System Exclusive messages a file holds, with their times, and a
// writer of files that hold nothing but such messages.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "codec/gs_message.h"
#include "files/file_problem.h"

namespace lumidot {

// The header's division: ticks per quarter note, or SMPTE frames per second and ticks per
// frame (29 stands for 29.97 drop-frame).
struct MidiDivision {
    bool smpte = false;
    int ticksPerQuarter = 0;
    int framesPerSecond = 0;
    int ticksPerFrame = 0;
};

// A stretch of the file's bytes.
struct ByteRange {
    std::size_t offset = 0;
    std::size_t length = 0;
};

// One System Exclusive message, joined from all the packets it was stored in.
struct MidiSysEx {
    int track = 0;           // counting the file's track chunks from 0
    std::uint64_t tick = 0;  // of the packet that starts it
    double seconds = 0;      // the same moment through the file's tempo map
    ByteArray bytes;         // F0 ... F7, as the module receives them
    // Where bytes stand in the file, in order; they add up to bytes.size().
    std::vector<ByteRange> pieces;
};

// The file offset of bytes[index] of a message; nothing when the index is past its end.
std::optional<std::size_t> FileOffsetOf(const MidiSysEx& message, std::size_t index);

struct MidiContents {
    int format = 0;
    int tracks = 0;  // track chunks read
    MidiDivision division;
    // Formats 0 and 1: in time order, ties in track order. Format 2, whose tracks are
    // separate songs: track by track, each in time order.
    std::vector<MidiSysEx> messages;
    // Damage the reading went past: a message without its end, a track count that does not
    // match the header.
    std::vector<FileProblem> problems;
    // Damage the reading stopped at; messages holds what came before it.
    std::optional<FileProblem> error;
};

// Reads a file that starts with its MThd header. Never reads outside the given bytes.
MidiContents ReadMidi(std::span<const std::uint8_t> file);

struct TimedMessage {
    double seconds = 0;
    ByteArray bytes;  // F0 ... F7 (anything else is stored as an escape packet, as it is)
};

// Ticks per quarter note of written files; with the tempo written, one tick is a millisecond.
constexpr int kWrittenTicksPerQuarter = 480;
constexpr int kWrittenTempo = 480000;  // microseconds per quarter note

// A format 0 file of these messages at their times (rounded to the millisecond, in time
// order, messages with the same time in the given order).
ByteArray WriteMidi(const std::vector<TimedMessage>& messages);

}  // namespace lumidot
