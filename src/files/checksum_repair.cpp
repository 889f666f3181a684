#include "files/checksum_repair.h"

#include "files/midi_file.h"
#include "files/syx_file.h"

namespace lumidot {
namespace {

// F0 41 <device> <model> 12 <three address bytes> <checksum> F7 at the least.
constexpr std::size_t kShortestDataSet = 10;

}  // namespace

std::optional<std::uint8_t> ExpectedGSChecksum(const ByteArray& message) {
    const std::size_t size = message.size();
    if (size < kShortestDataSet || message[0] != 0xF0 || message[1] != 0x41 ||
        (message[3] != kModelGS && message[3] != kModelDisplay) || message[4] != 0x12 ||
        message[size - 1] != 0xF7) {
        return std::nullopt;
    }
    return GSChecksum(ByteArray(message.begin() + 5, message.end() - 2));
}

RepairReport RepairSyxChecksums(std::vector<std::uint8_t>& file) {
    RepairReport report;
    SyxContents contents = ReadSyx(file);
    report.problems = std::move(contents.problems);
    for (const SyxMessage& message : contents.messages) {
        const std::optional<std::uint8_t> expected = ExpectedGSChecksum(message.bytes);
        const std::size_t at = message.offset + message.bytes.size() - 2;
        if (!expected || *expected == file[at]) continue;
        report.fixes.push_back({message.offset, at, file[at], *expected});
        file[at] = *expected;
    }
    return report;
}

RepairReport RepairMidiChecksums(std::vector<std::uint8_t>& file) {
    RepairReport report;
    MidiContents contents = ReadMidi(file);
    if (contents.error) {
        report.error = std::move(contents.error);
        return report;
    }
    report.problems = std::move(contents.problems);
    for (const MidiSysEx& message : contents.messages) {
        const std::optional<std::uint8_t> expected = ExpectedGSChecksum(message.bytes);
        if (!expected) continue;
        // The message may stand in several packets; its checksum is wherever its byte fell.
        const std::size_t at = *FileOffsetOf(message, message.bytes.size() - 2);
        if (*expected == file[at]) continue;
        report.fixes.push_back(
            {*FileOffsetOf(message, 0), at, file[at], *expected, message.seconds, message.track});
        file[at] = *expected;
    }
    return report;
}

}  // namespace lumidot
