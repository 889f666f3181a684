// The messages of a whole file described one after the other, whatever kind of file holds
// them: a .syx file, a Standard MIDI File or hex text.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

#include "decode/hex_digits.h"
#include "decode/message_list.h"
#include "files/file_kind.h"
#include "files/file_problem.h"
#include "files/midi_file.h"
#include "files/syx_file.h"

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
    // The tick of each message of a MIDI file, in file order.
    std::vector<std::uint64_t> ticks;

    bool damaged() const { return !problems.empty() || error || check != HexCheck::Ok; }
};

// A file read into its messages, none of them described yet. Reading touches no model, so a
// caller can look at what the file holds (and refuse it) before anything changes; the
// describing then goes in slices, so that a window can stay alive over a big file.
class FileMessages {
public:
    // Reads the file (its kind told by its content and name); hex text is read in layout
    // through the decoding run's own steps.
    FileMessages(std::span<const std::uint8_t> file, std::string_view name,
                 const ByteLayout& layout);
    ~FileMessages();

    const FileReading& reading() const { return reading_; }
    // How many messages the file holds.
    std::size_t count() const { return count_; }
    // How many have been described so far.
    std::size_t described() const { return described_; }

    // Describes up to most further messages into list, a .syx file's with their offsets, a
    // MIDI file's with their times and tracks; false once all are described.
    bool describeNext(MessageListDescription& list, std::size_t most);

private:
    FileReading reading_;
    std::size_t count_ = 0;
    std::size_t described_ = 0;
    MidiContents midi_;
    SyxContents syx_;
    std::unique_ptr<HexDigits> digits_;
    std::unique_ptr<MessageReader> hexMessages_;  // reads digits_
};

// Reads the file and describes every message into the list at once.
FileReading DescribeFile(std::span<const std::uint8_t> file, std::string_view name,
                         const ByteLayout& layout, MessageListDescription& list);

}  // namespace lumidot
