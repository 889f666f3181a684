// Raw System Exclusive files (.syx): complete messages F0 ... F7 stored back to back.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "codec/gs_message.h"
#include "files/file_problem.h"

namespace lumidot {

struct SyxMessage {
    std::size_t offset = 0;  // of its F0
    ByteArray bytes;         // F0 ... F7
};

struct SyxContents {
    std::vector<SyxMessage> messages;
    // Everything that is not a complete message, in file order: bytes outside any message,
    // a message without its F7, and a file that holds no message at all.
    std::vector<FileProblem> problems;
};

// Splits a file into its messages. A message ends at its F7; any other status byte inside it
// (a new F0 included) cuts it off, and the bytes from there on are read afresh.
SyxContents ReadSyx(std::span<const std::uint8_t> file);

// The file that holds these messages: their bytes one after the other, exactly as given.
ByteArray WriteSyx(const std::vector<ByteArray>& messages);

}  // namespace lumidot
