// Checksum repair of whole files: only wrong checksum bytes of GS data-set messages change,
// wherever the packets of a message stand.
#include <gtest/gtest.h>

#include "files/checksum_repair.h"
#include "files/file_bytes.h"
#include "files/midi_file.h"

namespace lumidot::testing {
namespace {

// Offsets at which two files of the same length differ.
std::vector<std::size_t> Differences(const ByteArray& a, const ByteArray& b) {
    std::vector<std::size_t> offsets;
    for (std::size_t i = 0; i < a.size(); ++i) {
        if (a[i] != b[i]) offsets.push_back(i);
    }
    return offsets;
}

// Three wrong checksums: in an F0 event, in a continuation packet that leaves the F7 to
// the next one, and in an escape packet. Around them messages that must stay as they are.
ByteArray DamagedSong() {
    return Smf(1, 96,
               {"00 FF 51 03 07 A1 20  60 F0 0A 41 10 45 12 10 20 00 05 00 F7"  // 4B
                "  00 F0 0A 41 10 45 12 10 20 00 01 4F F7"                      // right already
                "  00 90 3C 40  00 FF 2F 00",
                "00 F0 08 43 10 4C 00 00 7E 00 F7"          // not Roland
                "  00 F0 0A 41 10 16 12 20 00 00 41 00 F7"  // Roland, not GS
                "  00 F0 07 41 10 42 12 40 00 F7"           // too short to be a data set
                "  81 40 F0 05 41 10 42 12 40  10 F7 04 00 7F 00 00  10 F7 01 F7"  // 41
                "  40 F7 0D F0 41 10 45 12 10 00 00 61 62 63 00 F7"                // 4A
                "  00 FF 2F 00"});
}

TEST(MidiRepairTest, ChangesExactlyTheThreeWrongChecksums) {
    const ByteArray original = DamagedSong();
    ByteArray file = original;
    const RepairReport report = RepairMidiChecksums(file);
    ASSERT_FALSE(report.error);
    EXPECT_TRUE(report.problems.empty());
    ASSERT_EQ(file.size(), original.size());

    const std::vector<std::size_t> changed = Differences(original, file);
    ASSERT_EQ(changed.size(), 3u);
    ASSERT_EQ(report.fixes.size(), 3u);
    const std::uint8_t expected[] = {0x4B, 0x41, 0x4A};
    const int tracks[] = {0, 1, 1};
    const double seconds[] = {0.5, 1.0, 1.5};
    for (std::size_t i = 0; i < 3; ++i) {
        const ChecksumFix& fix = report.fixes[i];
        EXPECT_EQ(fix.offset, changed[i]);
        EXPECT_EQ(fix.was, 0x00);
        EXPECT_EQ(fix.now, expected[i]);
        EXPECT_EQ(file[fix.offset], expected[i]);
        EXPECT_EQ(fix.track, tracks[i]);
        EXPECT_DOUBLE_EQ(fix.seconds, seconds[i]);
        // The message's start is its F0, as a status byte or inside an escape packet.
        EXPECT_EQ(original[fix.messageOffset], 0xF0);
    }

    // Read again, every data set is whole, and a second repair finds nothing to do.
    for (const MidiSysEx& message : ReadMidi(file).messages) {
        const auto sum = ExpectedGSChecksum(message.bytes);
        if (sum) {
            EXPECT_EQ(message.bytes[message.bytes.size() - 2], *sum) << HexOf(message.bytes);
        }
    }
    const ByteArray repaired = file;
    EXPECT_TRUE(RepairMidiChecksums(file).fixes.empty());
    EXPECT_EQ(file, repaired);
}

TEST(MidiRepairTest, LeavesAFileItCannotReadAsItIs) {
    ByteArray file =
        Join({Smf(0, 96, {"00 F0 0A 41 10 45 12 10 20 00 05 00 F7"}), Hex("4D 54 72")});
    const ByteArray original = file;
    const RepairReport report = RepairMidiChecksums(file);
    ASSERT_TRUE(report.error);
    EXPECT_EQ(report.error->offset, 35u);
    EXPECT_TRUE(report.fixes.empty());
    EXPECT_EQ(file, original);
}

struct SyxRepairRow {
    const char* name;
    const char* file;
    const char* repaired;
    std::vector<std::string> fixes;  // "message offset, checksum offset: was -> now"
    std::size_t problems;
};

class SyxRepairTest : public ::testing::TestWithParam<SyxRepairRow> {};

TEST_P(SyxRepairTest, RepairsOnlyGSDataSets) {
    const SyxRepairRow& row = GetParam();
    ByteArray file = Hex(row.file);
    const RepairReport report = RepairSyxChecksums(file);
    EXPECT_EQ(HexOf(file), HexOf(Hex(row.repaired)));
    std::vector<std::string> fixes;
    for (const ChecksumFix& f : report.fixes) {
        fixes.push_back(std::to_string(f.messageOffset) + ", " + std::to_string(f.offset) + ": " +
                        HexByte(f.was) + " -> " + HexByte(f.now));
    }
    EXPECT_EQ(fixes, row.fixes);
    EXPECT_EQ(report.problems.size(), row.problems);
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(
    Files, SyxRepairTest,
    ::testing::Values(
        SyxRepairRow{"DisplayModel", "F0 41 10 45 12 10 20 00 05 00 F7",
                     "F0 41 10 45 12 10 20 00 05 4B F7", {"0, 9: 00 -> 4B"}, 0},
        SyxRepairRow{"GSModelOtherDevice", "F0 7E 7F 09 01 F7 F0 41 7F 42 12 40 00 7F 00 7F F7",
                     "F0 7E 7F 09 01 F7 F0 41 7F 42 12 40 00 7F 00 41 F7", {"6, 15: 7F -> 41"}, 0},
        SyxRepairRow{"RightAlready", "F0 41 10 45 12 10 00 00 70 F7",
                     "F0 41 10 45 12 10 00 00 70 F7", {}, 0},
        SyxRepairRow{"NotGS", "F0 41 10 16 12 20 00 00 41 00 F7 F0 41 10 45 11 10 00 00 00 F7",
                     "F0 41 10 16 12 20 00 00 41 00 F7 F0 41 10 45 11 10 00 00 00 F7", {}, 0},
        SyxRepairRow{"TooShort", "F0 41 10 42 12 40 00 F7", "F0 41 10 42 12 40 00 F7", {}, 0},
        SyxRepairRow{"StrayBytesStay", "0D 0A F0 41 10 45 12 10 20 00 05 00 F7 20",
                     "0D 0A F0 41 10 45 12 10 20 00 05 4B F7 20", {"2, 11: 00 -> 4B"}, 2},
        SyxRepairRow{"CutOffMessageStays", "F0 41 10 45 12 10 20 00 05 00",
                     "F0 41 10 45 12 10 20 00 05 00", {}, 2}),
    [](const auto& info) { return std::string(info.param.name); });
// clang-format on

}  // namespace
}  // namespace lumidot::testing
