// The queue that spaces messages for the module. The module needs a pause after each data-set
// message before it takes the next; when messages come faster than that (a picture being
// painted, text being typed) only the newest message for each address is worth sending.
//
// The pause is counted from the moment the message's last byte would have left a MIDI cable
// (31,250 baud, ten bits a byte: 320 us a byte) had the port handed it over as late as it
// could, just before returning. Handing a message to the MIDI system says nothing about when
// the module has it: interfaces buffer and clock the bytes out at cable speed, so counting
// from the hand-over would leave a 74-byte store message only 40 - 24 = 16 ms of real
// silence before the next one. And the sending thread may be held up anywhere between taking
// a message and the port's call, so only the port's return is sure to be after the bytes left.
//
// Not thread-safe on its own: MidiSender guards it.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <optional>

#include "device/midi_port.h"

namespace lumidot::device {

constexpr Micros kWireTimePerByte{320};
constexpr int kMinGapMs = 20;
constexpr int kMaxGapMs = 500;
constexpr int kDefaultGapMs = 40;

// How long a message of this many bytes takes on a MIDI cable.
constexpr Micros WireTime(std::size_t bytes) {
    return kWireTimePerByte * static_cast<Micros::rep>(bytes);
}

constexpr int ClampGap(int milliseconds) {
    return milliseconds < kMinGapMs   ? kMinGapMs
           : milliseconds > kMaxGapMs ? kMaxGapMs
                                      : milliseconds;
}

// GS data-set messages (F0 41 dev model 12 a1 a2 a3 ...) to the same device, model and
// address make each other obsolete; any other message is never replaced.
std::optional<std::uint64_t> ReplacementKey(const Bytes& message);

class PacingQueue {
public:
    void setGap(int milliseconds) { gap_ = Micros{ClampGap(milliseconds) * 1000}; }
    int gapMs() const { return static_cast<int>(gap_.count() / 1000); }

    // Queues a message at the end. A queued message it replaces is dropped, so the module
    // ends up as the whole sequence would leave it, and sooner. A message that is not
    // replaceable (one of a file or a list the user sends) neither replaces nor is replaced.
    // True when the queue was empty.
    bool push(Bytes message, bool replaceable = true);

    bool empty() const { return entries_.empty(); }
    std::size_t size() const { return entries_.size(); }
    void clear() { entries_.clear(); }

    // How long until the first queued message may start: zero when now, nothing when the
    // queue is empty.
    std::optional<Micros> waitBefore(Micros now) const;

    // Takes the first message to hand it over; only when waitBefore gave zero.
    Bytes take();
    // The port returned at this time from sending the message taken last.
    void sent(Micros returned) { busyUntil_ = returned + WireTime(lastSize_); }

    // A port was opened at this time: its first message waits a whole pause too. A new JACK
    // connection takes effect at a later cycle, and a message sent before that is lost.
    void portOpened(Micros now) { busyUntil_ = std::max(busyUntil_, now); }

    // When the last message taken is off the cable (the pause not included).
    Micros busyUntil() const { return busyUntil_; }

private:
    struct Entry {
        std::optional<std::uint64_t> key;
        Bytes bytes;
    };
    std::deque<Entry> entries_;
    Micros gap_{kDefaultGapMs * 1000};
    std::size_t lastSize_ = 0;
    Micros busyUntil_ = Micros::min() / 2;  // far enough back that the first message goes at once
};

}  // namespace lumidot::device
