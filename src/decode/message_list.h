// Describing the messages of a file, each exactly as a decoding run describes a message from
// the clipboard, with where it stands in its file.
#pragma once

#include <QString>
#include <cstddef>
#include <string>
#include <vector>

#include "codec/gs_message.h"

namespace lumidot {

class WindowModel;

// Where a message stands: a time and a track in a MIDI file, a byte offset in a .syx file,
// or nowhere in particular (a message read from hex text).
struct MessagePlace {
    enum class Kind { None, Offset, Time };
    Kind kind = Kind::None;
    std::size_t offset = 0;
    double seconds = 0;
    int track = 0;  // counting from 1, as sequencers show tracks

    static MessagePlace AtOffset(std::size_t offset) { return {Kind::Offset, offset, 0, 0}; }
    static MessagePlace AtTime(double seconds, int track) {
        return {Kind::Time, 0, seconds, track};
    }
};

// Minutes, seconds and milliseconds, "01:05.250", rounded to the millisecond; past 99
// minutes the minutes simply take more digits.
QString TimeText(double seconds);

// "[01:05.250 track 2]", "[offset 74]", or empty text for no place.
QString PlaceText(const MessagePlace& place);

// What describing one message gives.
struct DescribedMessage {
    QString description;  // the describer's line
    QString cleaned;      // the message as the pane shows it afterwards
};

// What a decoding run does with each message: digits are the hex digits after its F0, as the
// run cuts them. The message is described into the model, which takes it over (text, page,
// picture, mode); its cleaned form is what the pane then shows, or, for a message that left
// the pane alone (an invalid page, a duration), the message as it came.
DescribedMessage DescribeMessage(WindowModel& model, const std::string& digits);

// The messages of one file described one after the other into the same model, as one
// decoding run describes the messages of one clipboard text.
class MessageListDescription {
public:
    explicit MessageListDescription(WindowModel& model) : model_(model) {}

    // A message given by the hex digits after its F0.
    void add(const std::string& digits, const MessagePlace& place);
    // A message given by its bytes, F0 ... F7.
    void add(const ByteArray& message, const MessagePlace& place);

    // Room for this many messages in all, when their number is known beforehand.
    void reserve(std::size_t messages) { entries_.reserve(messages); }

    struct Entry {
        MessagePlace place;
        DescribedMessage message;
    };
    const std::vector<Entry>& entries() const { return entries_; }
    qint32 count() const { return static_cast<qint32>(entries_.size()); }

    // Result line index + 1, without a line end: " #1. [00:01.250 track 2] Graphic: ...".
    // A message without a place gets exactly the run's line.
    QString line(std::size_t index) const;
    // Every result line, each ending in CR LF, as a run gives them to the results window.
    QString results() const;
    // The cleaned messages, one a line, CR LF between lines and none after the last.
    QString cleaned() const;

private:
    QString numbered(std::size_t index) const;

    WindowModel& model_;
    std::vector<Entry> entries_;
};

}  // namespace lumidot
