// Reading Standard MIDI Files: chunks, track events, SysEx packets and the tempo map.
#include <algorithm>
#include <string>

#include "files/midi_file.h"

namespace lumidot {
namespace {

constexpr std::uint8_t kSysExStart = 0xF0;
constexpr std::uint8_t kSysExEnd = 0xF7;  // also the status of continuation and escape packets
constexpr std::uint8_t kMeta = 0xFF;
constexpr std::uint8_t kEndOfTrack = 0x2F;
constexpr std::uint8_t kTempo = 0x51;
constexpr std::uint32_t kDefaultTempo = 500000;  // 120 quarter notes a minute

using Bytes = std::span<const std::uint8_t>;

std::uint32_t BigEndian(Bytes file, std::size_t at, int count) {
    std::uint32_t value = 0;
    for (int i = 0; i < count; ++i) value = value << 8 | file[at + static_cast<std::size_t>(i)];
    return value;
}

std::string At(std::size_t offset) {
    return " at offset " + std::to_string(offset);
}

struct TempoChange {
    std::uint64_t tick;
    int track;
    std::uint32_t tempo;
};

// Reads the events of one track chunk, the bytes from start up to end.
class TrackReader {
public:
    TrackReader(Bytes file, int track, MidiContents& contents, std::vector<TempoChange>& tempi)
        : file_(file), track_(track), contents_(contents), tempi_(tempi) {}

    // False when the track is damaged; contents.error then says where.
    bool read(std::size_t start, std::size_t end);

private:
    bool fail(std::size_t offset, std::string text) {
        contents_.error = FileProblem{offset, std::move(text)};
        return false;
    }
    bool readNumber(std::uint32_t& value);
    // Reads a length and checks that that many bytes follow within the track.
    bool readLength(std::uint32_t& length, const char* what);
    bool channelMessage(std::uint8_t status);
    void sysExPacket(std::uint8_t status, std::size_t statusOffset, std::size_t length);
    // The open message, if any, is cut off by what stands at offset.
    void cutOff(const char* what, std::size_t offset);
    void finish();

    Bytes file_;
    int track_;
    MidiContents& contents_;
    std::vector<TempoChange>& tempi_;
    std::size_t pos_ = 0;
    std::size_t end_ = 0;
    std::uint64_t tick_ = 0;
    std::optional<MidiSysEx> open_;  // a message still waiting for its F7
};

bool TrackReader::readNumber(std::uint32_t& value) {
    // Variable-length numbers: seven bits a byte, at most four bytes.
    const std::size_t start = pos_;
    value = 0;
    for (int i = 0; i < 4; ++i) {
        if (pos_ >= end_) return fail(start, "event cut off by the end of its track");
        const std::uint8_t byte = file_[pos_++];
        value = value << 7 | (byte & 0x7F);
        if (!(byte & 0x80)) return true;
    }
    return fail(start, "variable-length number longer than 4 bytes");
}

bool TrackReader::readLength(std::uint32_t& length, const char* what) {
    const std::size_t at = pos_;
    if (!readNumber(length)) return false;
    if (length > end_ - pos_) {
        return fail(at, std::string(what) + " of " + std::to_string(length) +
                            " bytes runs past the end of its track (" +
                            std::to_string(end_ - pos_) + " bytes left)");
    }
    return true;
}

bool TrackReader::channelMessage(std::uint8_t status) {
    const std::size_t count = (status & 0xF0) == 0xC0 || (status & 0xF0) == 0xD0 ? 1 : 2;
    if (end_ - pos_ < count) return fail(pos_, "event cut off by the end of its track");
    for (std::size_t i = 0; i < count; ++i, ++pos_) {
        if (file_[pos_] & 0x80) {
            return fail(pos_, "status byte " + HexByte(file_[pos_]) + " where a data byte belongs");
        }
    }
    return true;
}

void TrackReader::cutOff(const char* what, std::size_t offset) {
    if (!open_) return;
    contents_.problems.push_back(
        {open_->pieces.front().offset,
         "SysEx message cut off by " + std::string(what) + At(offset) + " (no F7)"});
    open_.reset();
}

void TrackReader::sysExPacket(std::uint8_t status, std::size_t statusOffset, std::size_t length) {
    const Bytes data = file_.subspan(pos_, length);
    if (status == kSysExStart) {
        cutOff("the next SysEx message", statusOffset);
        open_ = MidiSysEx{track_, tick_, 0, {}, {{statusOffset, 1}}};
        open_->bytes.reserve(length + 1);
        open_->bytes.push_back(kSysExStart);
    } else if (!open_) {
        // An escape packet carries bytes to send as they are. One that starts a SysEx message
        // opens it like an F0 event; any other (real-time bytes, song positions) is no SysEx.
        if (data.empty() || data.front() != kSysExStart) return;
        open_ = MidiSysEx{track_, tick_, 0, {}, {}};
    }
    // Otherwise a continuation packet: the next part of the open message.
    if (!data.empty()) {
        open_->bytes.insert(open_->bytes.end(), data.begin(), data.end());
        open_->pieces.push_back({pos_, length});
    }
    if (open_->bytes.size() >= 2 && open_->bytes.back() == kSysExEnd) {
        contents_.messages.push_back(std::move(*open_));
        open_.reset();
    }
}

void TrackReader::finish() {
    if (!open_) return;
    contents_.problems.push_back({open_->pieces.front().offset,
                                  "SysEx message never ends (no F7 before the end of its track)"});
    open_.reset();
}

bool TrackReader::read(std::size_t start, std::size_t end) {
    pos_ = start;
    end_ = end;
    // Only channel messages set the running status. The standard has SysEx and meta events
    // cancel it; keeping it across them reads the files that follow the standard the same
    // way and also the files of writers that forgot.
    std::uint8_t running = 0;
    while (pos_ < end_) {
        std::uint32_t delta = 0;
        if (!readNumber(delta)) return false;
        tick_ += delta;
        if (pos_ >= end_) return fail(pos_, "event cut off by the end of its track");
        const std::size_t statusOffset = pos_;
        std::uint8_t status = file_[pos_];
        if (status < 0x80) {
            if (!running) {
                return fail(pos_,
                            "data byte " + HexByte(status) + " with no status byte before it");
            }
            status = running;
        } else {
            ++pos_;
        }
        if (status < 0xF0) {
            if (!channelMessage(status)) return false;
            running = status;
            cutOff("a channel message", statusOffset);
        } else if (status == kSysExStart || status == kSysExEnd) {
            std::uint32_t length = 0;
            if (!readLength(length, "SysEx packet")) return false;
            sysExPacket(status, statusOffset, length);
            pos_ += length;
        } else if (status == kMeta) {
            if (pos_ >= end_) return fail(pos_, "event cut off by the end of its track");
            const std::uint8_t type = file_[pos_++];
            std::uint32_t length = 0;
            if (!readLength(length, "meta event")) return false;
            // Whatever stands after the end of the track inside its chunk is not part of it.
            if (type == kEndOfTrack) break;
            if (type == kTempo && length >= 3) {
                tempi_.push_back({tick_, track_, BigEndian(file_, pos_, 3)});
            }
            pos_ += length;
        } else {
            return fail(statusOffset,
                        "status byte " + HexByte(status) + " does not belong in a MIDI file");
        }
    }
    // A track without its end-of-track event ends with its chunk, as common readers take it.
    finish();
    return true;
}

bool ReadDivision(Bytes file, MidiDivision& division) {
    const std::uint8_t high = file[12];
    const std::uint8_t low = file[13];
    if (high & 0x80) {
        division.smpte = true;
        division.framesPerSecond = 256 - high;
        division.ticksPerFrame = low;
        const int fps = division.framesPerSecond;
        return (fps == 24 || fps == 25 || fps == 29 || fps == 30) && low != 0;
    }
    division.ticksPerQuarter = high << 8 | low;
    return division.ticksPerQuarter != 0;
}

// Seconds of the messages from first to last, which are in time order, through the tempo
// changes (in time order) that apply to them: one sweep over both.
using TempoIterator = std::vector<TempoChange>::const_iterator;
void SweepTempoMap(std::vector<MidiSysEx>::iterator first, std::vector<MidiSysEx>::iterator last,
                   TempoIterator change, TempoIterator changesEnd, int ticksPerQuarter) {
    const double perTick = 1e6 * ticksPerQuarter;  // seconds = ticks * tempo / perTick
    std::uint64_t tick = 0;
    std::uint32_t tempo = kDefaultTempo;
    double seconds = 0;
    for (; first != last; ++first) {
        for (; change != changesEnd && change->tick <= first->tick; ++change) {
            seconds += static_cast<double>(change->tick - tick) * tempo / perTick;
            tick = change->tick;
            tempo = change->tempo;
        }
        first->seconds = seconds + static_cast<double>(first->tick - tick) * tempo / perTick;
    }
}

// Seconds of every message: through the tempo changes in effect, or from the SMPTE rate.
void PlaceInTime(MidiContents& contents, std::vector<TempoChange> tempi) {
    const MidiDivision& division = contents.division;
    std::vector<MidiSysEx>& messages = contents.messages;
    if (division.smpte) {
        const double framesPerSecond =
            division.framesPerSecond == 29 ? 30000.0 / 1001.0 : division.framesPerSecond;
        for (MidiSysEx& message : messages) {
            message.seconds = message.tick / (framesPerSecond * division.ticksPerFrame);
        }
        return;
    }
    if (contents.format != 2) {
        // Every tempo change holds for all tracks.
        std::stable_sort(
            tempi.begin(), tempi.end(),
            [](const TempoChange& a, const TempoChange& b) { return a.tick < b.tick; });
        SweepTempoMap(messages.begin(), messages.end(), tempi.begin(), tempi.end(),
                      division.ticksPerQuarter);
        return;
    }
    // Each track is a song of its own, with its own tempo map. The changes were collected
    // track by track, so they stand in track order already, as do the messages.
    const auto byTrack = [](const TempoChange& a, const TempoChange& b) {
        return a.track < b.track;
    };
    for (auto first = messages.begin(); first != messages.end();) {
        const int track = first->track;
        const auto last = std::find_if(first, messages.end(),
                                       [track](const MidiSysEx& m) { return m.track != track; });
        const auto own =
            std::equal_range(tempi.cbegin(), tempi.cend(), TempoChange{0, track, 0}, byTrack);
        SweepTempoMap(first, last, own.first, own.second, division.ticksPerQuarter);
        first = last;
    }
}

}  // namespace

std::optional<std::size_t> FileOffsetOf(const MidiSysEx& message, std::size_t index) {
    for (const ByteRange& piece : message.pieces) {
        if (index < piece.length) return piece.offset + index;
        index -= piece.length;
    }
    return std::nullopt;
}

MidiContents ReadMidi(Bytes file) {
    MidiContents contents;
    if (file.size() < 4 || !std::equal(file.begin(), file.begin() + 4, "MThd")) {
        contents.error = FileProblem{0, "not a Standard MIDI File (it does not start with MThd)"};
        return contents;
    }
    if (file.size() < 14) {
        contents.error = FileProblem{0, "the file ends inside its header"};
        return contents;
    }
    const std::uint32_t headerLength = BigEndian(file, 4, 4);
    if (headerLength < 6 || headerLength > file.size() - 8) {
        contents.error = FileProblem{4, "header length " + std::to_string(headerLength) +
                                            " is not 6 or more bytes within the file"};
        return contents;
    }
    contents.format = static_cast<int>(BigEndian(file, 8, 2));
    const auto announced = static_cast<int>(BigEndian(file, 10, 2));
    if (contents.format > 2) {
        contents.error =
            FileProblem{8, "format " + std::to_string(contents.format) + " is none of 0, 1 and 2"};
        return contents;
    }
    if (!ReadDivision(file, contents.division)) {
        contents.error = FileProblem{12,
                                     "the division is neither ticks per quarter note nor "
                                     "an SMPTE rate of 24, 25, 29 or 30 frames"};
        return contents;
    }

    std::vector<TempoChange> tempi;
    // Chunks of other types are skipped by their length, as the standard asks.
    for (std::size_t pos = 8 + headerLength; pos < file.size();) {
        if (file.size() - pos < 8) {
            contents.error = FileProblem{pos, "chunk header cut off by the end of the file"};
            break;
        }
        const std::uint32_t length = BigEndian(file, pos + 4, 4);
        if (length > file.size() - pos - 8) {
            contents.error =
                FileProblem{pos + 4, "chunk length " + std::to_string(length) +
                                         " runs past the end of the file (" +
                                         std::to_string(file.size() - pos - 8) + " bytes follow)"};
            break;
        }
        if (std::equal(file.begin() + static_cast<std::ptrdiff_t>(pos),
                       file.begin() + static_cast<std::ptrdiff_t>(pos + 4), "MTrk")) {
            TrackReader reader(file, contents.tracks++, contents, tempi);
            if (!reader.read(pos + 8, pos + 8 + length)) break;
        }
        pos += 8 + length;
    }
    if (!contents.error && contents.tracks != announced) {
        contents.problems.push_back({10, "the header announces " + std::to_string(announced) +
                                             " tracks, the file holds " +
                                             std::to_string(contents.tracks)});
    }
    const auto earlier = [](const MidiSysEx& a, const MidiSysEx& b) { return a.tick < b.tick; };
    // A single track is in time order already.
    if (contents.format != 2 &&
        !std::is_sorted(contents.messages.begin(), contents.messages.end(), earlier)) {
        std::stable_sort(contents.messages.begin(), contents.messages.end(), earlier);
    }
    PlaceInTime(contents, std::move(tempi));
    return contents;
}

}  // namespace lumidot
