// The messages of a whole file described one after the other, whatever kind of file holds
// them: a .syx file, a Standard MIDI File or hex text.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

#include "decode/hex_digits.h"
#include "decode/message_list.h"
#include "files/file_kind.h"
#include "files/file_problem.h"

namespace lumidot {

struct ByteLayout;

// What reading a file found besides its messages.
struct FileReading {
    FileKind kind = FileKind::HexText;
    // Damage the reading went past (bytes outside any message, a message cut off), in file
    // order.
    std::vector<FileProblem> problems;
    // Damage a MIDI file's reading stopped at; the messages before it are described.
    std::optional<FileProblem> error;
    // Hex text that holds no messages fails the checks of a decoding run, as it would on the
    // clipboard; nothing is described then.
    HexCheck check = HexCheck::Ok;
    // The tick of each message of a MIDI file, in the order they were described.
    std::vector<std::uint64_t> ticks;

    bool damaged() const { return !problems.empty() || error || check != HexCheck::Ok; }
};

// Reads the file (its kind told by its content and name) and describes every message into
// the list: a .syx file's with their offsets, a MIDI file's with their times and tracks,
// hex text laid out in layout through the decoding run's own steps.
FileReading DescribeFile(std::span<const std::uint8_t> file, std::string_view name,
                         const ByteLayout& layout, MessageListDescription& list);

}  // namespace lumidot
