// A clock the test moves by hand and a port that records what it was given, when, and
// fails on cue.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "device/midi_port.h"

namespace lumidot::device::testing {

class FakeClock final : public Clock {
public:
    Micros now() const override { return now_; }
    void advance(Micros by) { now_ += by; }
    void set(Micros to) { now_ = to; }

private:
    Micros now_{1'000'000};
};

struct Delivery {
    Micros at;
    Bytes bytes;
};

class RecordingPort final : public OutputPort {
public:
    // With a fake clock a send can take time; with a real one it is only read.
    explicit RecordingPort(FakeClock* clock) : clock_(clock), fake_(clock) {}
    explicit RecordingPort(const Clock* clock) : clock_(clock) {}

    std::vector<std::string> names{"Sound Canvas 20:0", "Midi Through 14:0"};
    bool systemDown = false;
    // The send with this index (0 = the first) returns this problem, and every later one too.
    std::optional<std::size_t> failFrom;
    ProblemKind failure = ProblemKind::SendFailed;
    Micros sendTakes{0};               // how long a send keeps the caller (moves the fake clock)
    std::function<void()> duringSend;  // runs inside every send, for tests with a real thread

    std::vector<Delivery> delivered;
    std::size_t sends = 0;
    std::string openName;

    PortList list() override {
        if (systemDown) return {{}, {ProblemKind::NoMidiSystem, {}, "no sequencer"}};
        return {names, {}};
    }
    Problem open(const std::string& name) override {
        openName.clear();
        if (systemDown) return {ProblemKind::NoMidiSystem, name, "no sequencer"};
        for (const auto& n : names) {
            if (n == name) {
                openName = name;
                return {};
            }
        }
        return {ProblemKind::NoSuchPort, name, {}};
    }
    Problem send(const Bytes& message) override {
        const Micros at = clock_->now();
        const std::size_t index = sends++;
        if (duringSend) duringSend();
        if (failFrom && index >= *failFrom) return {failure, {}, "refused"};
        delivered.push_back({at, message});
        if (fake_) fake_->advance(sendTakes);
        return {};
    }
    void close() override { openName.clear(); }

private:
    const Clock* clock_;
    FakeClock* fake_ = nullptr;
};

}  // namespace lumidot::device::testing
