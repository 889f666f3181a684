#include "device/pacing_queue.h"

#include <algorithm>
#include <utility>

namespace lumidot::device {

std::optional<std::uint64_t> ReplacementKey(const Bytes& message) {
    constexpr std::uint8_t kExclusive = 0xF0, kRoland = 0x41, kDataSet = 0x12;
    if (message.size() < 8 || message[0] != kExclusive || message[1] != kRoland ||
        message[4] != kDataSet) {
        return std::nullopt;
    }
    std::uint64_t key = 0;
    for (std::size_t i : {2, 3, 5, 6, 7}) key = key << 8 | message[i];
    return key;
}

bool PacingQueue::push(Bytes message, bool replaceable) {
    const bool wasEmpty = entries_.empty();
    auto key = replaceable ? ReplacementKey(message) : std::nullopt;
    if (key) {
        // At most one queued message has any key, as each push keeps it so.
        auto older = std::find_if(entries_.begin(), entries_.end(),
                                  [&](const Entry& e) { return e.key == key; });
        // While painting, the message replaced is nearly always the last one: it is taken
        // over in place, without the queue giving back and asking again for its storage.
        if (older != entries_.end() && older + 1 == entries_.end()) {
            older->bytes = std::move(message);
            return wasEmpty;
        }
        if (older != entries_.end()) entries_.erase(older);
    }
    entries_.push_back({key, std::move(message)});
    return wasEmpty;
}

std::optional<Micros> PacingQueue::waitBefore(Micros now) const {
    if (entries_.empty()) return std::nullopt;
    const Micros start = busyUntil_ + gap_;
    return start > now ? start - now : Micros{0};
}

Bytes PacingQueue::take() {
    Bytes bytes = std::move(entries_.front().bytes);
    entries_.pop_front();
    lastSize_ = bytes.size();
    return bytes;
}

}  // namespace lumidot::device
