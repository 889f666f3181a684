// The MIDI file reader on whole files built byte by byte: what it yields, and where it says
// a damaged file is wrong.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <optional>

#include "files/file_bytes.h"
#include "files/midi_file.h"

namespace lumidot::testing {
namespace {

// Events written as hex text. The tracks' events start at offset 22.
const std::string kEnd = " 00 FF 2F 00";
const std::string kGM = " F0 05 7E 7F 09 01 F7";  // an F0 event: length, then the bytes after F0
const char* const kGMBytes = "F0 7E 7F 09 01 F7";

struct Place {
    std::size_t offset;
    const char* fragment;  // part of the text
};

struct MidiRow {
    const char* name;
    ByteArray file;
    // "track tick milliseconds bytes", in the order read
    std::vector<std::string> messages;
    std::vector<Place> problems = {};
    std::optional<Place> error = {};
};

std::string Describe(const MidiSysEx& m) {
    return std::to_string(m.track) + " " + std::to_string(m.tick) + " " +
           std::to_string(std::llround(m.seconds * 1000)) + " " + HexOf(m.bytes);
}

std::string Line(int track, int tick, int ms, const char* bytes) {
    return std::to_string(track) + " " + std::to_string(tick) + " " + std::to_string(ms) + " " +
           bytes;
}
const std::string kGMLine = Line(0, 0, 0, kGMBytes);

class MidiReaderTest : public ::testing::TestWithParam<MidiRow> {};

TEST_P(MidiReaderTest, ReadsWhatTheFileHolds) {
    const MidiRow& row = GetParam();
    const MidiContents contents = ReadMidi(row.file);
    std::vector<std::string> messages;
    for (const MidiSysEx& message : contents.messages) {
        messages.push_back(Describe(message));
        // Every byte of a message is where the reader says it is.
        for (std::size_t i = 0; i < message.bytes.size(); ++i) {
            ASSERT_EQ(row.file[*FileOffsetOf(message, i)], message.bytes[i]) << i;
        }
    }
    EXPECT_EQ(messages, row.messages);
    ASSERT_EQ(contents.problems.size(), row.problems.size());
    for (std::size_t i = 0; i < row.problems.size(); ++i) {
        EXPECT_EQ(contents.problems[i].offset, row.problems[i].offset);
        EXPECT_THAT(contents.problems[i].text, ::testing::HasSubstr(row.problems[i].fragment));
    }
    ASSERT_EQ(contents.error.has_value(), row.error.has_value())
        << (contents.error ? contents.error->text : std::string());
    if (row.error) {
        EXPECT_EQ(contents.error->offset, row.error->offset) << contents.error->text;
        EXPECT_THAT(contents.error->text, ::testing::HasSubstr(row.error->fragment));
    }
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(
    WellFormed, MidiReaderTest,
    ::testing::Values(
        MidiRow{"OneEvent", Smf(0, 96, {"00" + kGM + kEnd}), {kGMLine}},
        // Running status goes on across meta and SysEx events; 96 and 480 ticks at 480 a
        // quarter note and 120 a minute.
        MidiRow{"RunningStatus",
                Smf(0, 480, {"00 90 3C 40  60 3C 00  00 FF 03 01 41  00 3E 40  00" + kGM +
                             " 83 60 3E 00  00" + kGM + kEnd}),
                {Line(0, 96, 100, kGMBytes), Line(0, 576, 600, kGMBytes)}},
        MidiRow{"ContinuationPackets",
                Smf(0, 96, {"00 F0 04 41 10 42 12  0A F7 04 40 00 7F 00  00 FF 01 00  0A F7 02 41 F7" + kEnd}),
                {Line(0, 0, 0, "F0 41 10 42 12 40 00 7F 00 41 F7")}},
        MidiRow{"EscapeHoldingAMessage", Smf(0, 96, {"00 F7 06 F0 7E 7F 09 01 F7" + kEnd}), {kGMLine}},
        MidiRow{"EscapePacketsThroughout",
                Smf(0, 96, {"00 F7 03 F0 43 12  10 F7 03 00 43 12  10 F7 02 00 F7" + kEnd}),
                {Line(0, 0, 0, "F0 43 12 00 43 12 00 F7")}},
        MidiRow{"EscapeOfRealTimeIsNoSysEx", Smf(0, 96, {"00 F7 01 F8  00" + kGM + kEnd}), {kGMLine}},
        // 25 frames of 40 ticks: 1000 ticks are one second.
        MidiRow{"Smpte25", Smf(0, 0xE728, {"87 68" + kGM + kEnd}), {Line(0, 1000, 1000, kGMBytes)}},
        // 29.97 frames of 4 ticks: 120 ticks are 1.001 seconds.
        MidiRow{"Smpte29DropFrame", Smf(0, 0xE304, {"78" + kGM + kEnd}), {Line(0, 120, 1001, kGMBytes)}},
        // 960 ticks at 120 a minute, 480 at twice that, then 240 at 60 a minute.
        MidiRow{"TempoChanges",
                Smf(0, 480, {"00 FF 51 03 07 A1 20  87 40 FF 51 03 03 D0 90  83 60" + kGM +
                             " 00 FF 51 03 0F 42 40  81 70" + kGM + kEnd}),
                {Line(0, 1440, 1250, kGMBytes), Line(0, 1680, 1750, kGMBytes)}},
        // Track 0's tempo holds for track 1; equal times keep the track order.
        MidiRow{"SeveralTracksInTimeOrder",
                Smf(1, 96, {"00 FF 51 03 03 D0 90  60" + kGM + kEnd,
                            "00 F0 03 41 10 F7  60 F0 03 42 10 F7" + kEnd}),
                {Line(1, 0, 0, "F0 41 10 F7"), Line(0, 96, 250, kGMBytes), Line(1, 96, 250, "F0 42 10 F7")}},
        // Separate songs: track by track, each with its own tempo.
        MidiRow{"FormatTwo",
                Smf(2, 96, {"00 FF 51 03 03 D0 90  60" + kGM + kEnd, "30 F0 03 41 10 F7" + kEnd}),
                {Line(0, 96, 250, kGMBytes), Line(1, 48, 250, "F0 41 10 F7")}},
        MidiRow{"UnknownChunkSkipped",
                Join({Header(0, 1, 96), Chunk("XFIH", Hex("01 02 03")), Chunk("MTrk", Hex("00" + kGM))}),
                {kGMLine}},
        MidiRow{"LongerHeader",
                Join({Chunk("MThd", Hex("00 00 00 01 00 60 AA BB")), Chunk("MTrk", Hex("00" + kGM + kEnd))}),
                {kGMLine}},
        MidiRow{"NoEndOfTrack", Smf(0, 96, {"00" + kGM}), {kGMLine}},
        MidiRow{"NothingAfterTheEndOfTrack", Smf(0, 96, {"00 FF 2F 00  00" + kGM}), {}}),
    [](const auto& info) { return std::string(info.param.name); });
// clang-format on

// A file the reader gives up on at offset, having read the messages before it.
MidiRow Broken(const char* name, ByteArray file, std::size_t offset, const char* fragment,
               std::vector<std::string> messages = {}) {
    return {name, std::move(file), std::move(messages), {}, Place{offset, fragment}};
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(
    Damaged, MidiReaderTest,
    ::testing::Values(
        Broken("NotAMidiFile", Hex("52 49 46 46 00 00 00 04"), 0, "not a Standard MIDI File"),
        Broken("HeaderCutOff", Hex("4D 54 68 64 00 00 00 06 00"), 0, "inside its header"),
        Broken("HeaderLengthPastTheEnd", Hex("4D 54 68 64 00 00 01 00 00 00 00 01 00 60"), 4,
               "header length 256"),
        Broken("FormatThree", Smf(3, 96, {kEnd}), 8, "format 3"),
        Broken("DivisionZero", Smf(0, 0, {kEnd}), 12, "division"),
        Broken("UnknownSmpteRate", Smf(0, 0xE628, {kEnd}), 12, "division"),
        Broken("ChunkLengthPastTheEnd",
               Join({Header(0, 1, 96), Hex("4D 54 72 6B 00 00 01 00 00 F0 05 7E")}), 18,
               "chunk length 256 runs past the end of the file (4 bytes follow)"),
        Broken("ChunkHeaderCutOff", Join({Smf(0, 96, {"00" + kGM + kEnd}), Hex("4D 54")}), 34,
               "chunk header cut off", {kGMLine}),
        Broken("SysExLengthPastItsTrack", Smf(0, 96, {"00 F0 20 7E 7F"}), 24,
               "32 bytes runs past the end of its track (2 bytes left)"),
        Broken("NumberOfFiveBytes", Smf(0, 96, {"FF FF FF FF 7F" + kGM}), 22, "longer than 4 bytes"),
        Broken("NumberCutOff", Smf(0, 96, {"81"}), 22, "cut off"),
        Broken("DataByteWithoutStatus", Smf(0, 96, {"00 3C 40" + kEnd}), 23, "data byte 3C"),
        Broken("StatusNotInAFile", Smf(0, 96, {"00 F4" + kEnd}), 23, "status byte F4"),
        Broken("EventCutOffAfterItsTime", Smf(0, 96, {"00" + kGM + " 60"}), 31, "cut off", {kGMLine}),
        Broken("ChannelMessageCutOff", Smf(0, 96, {"00 90 3C"}), 24, "cut off"),
        Broken("StatusWhereDataBelongs", Smf(0, 96, {"00 90 3C 90 40" + kEnd}), 25,
               "status byte 90 where a data byte belongs"),
        Broken("MetaCutOff", Smf(0, 96, {"00 FF"}), 24, "cut off"),
        // Problems the reader reads past.
        MidiRow{"TrackCountDiffers", Join({Header(1, 2, 96), Chunk("MTrk", Hex("00" + kGM + kEnd))}),
                {kGMLine}, {Place{10, "announces 2 tracks, the file holds 1"}}},
        MidiRow{"SysExNeverEnds", Smf(0, 96, {"00 F0 03 41 10 42" + kEnd}), {},
                {Place{23, "never ends"}}},
        MidiRow{"SysExCutOffByAChannelMessage", Smf(0, 96, {"00 F0 03 41 10 42  00 90 3C 40" + kEnd}),
                {}, {Place{23, "cut off by a channel message at offset 29"}}},
        MidiRow{"SysExCutOffByTheNext", Smf(0, 96, {"00 F0 03 41 10 42  00" + kGM + kEnd}),
                {kGMLine}, {Place{23, "cut off by the next SysEx message at offset 29"}}}),
    [](const auto& info) { return std::string(info.param.name); });
// clang-format on

}  // namespace
}  // namespace lumidot::testing
