// A sender driven by hand: a fake clock, a recording port, and everything the sender
// reported through its listener.
#pragma once

#include <gtest/gtest.h>

#include <limits>
#include <memory>

#include "device/fake_port.h"
#include "device/midi_sender.h"

namespace lumidot::device::testing {

constexpr const char* kPortName = "Sound Canvas 20:0";

struct Harness {
    FakeClock clock;
    RecordingPort* port;  // owned by the sender
    std::vector<Problem> problems;
    std::vector<SenderStatus> statuses;
    MidiSender sender;

    Harness()
        : port(new RecordingPort(&clock)),
          sender(std::unique_ptr<OutputPort>(port), clock,
                 {[this](const Problem& p) { problems.push_back(p); },
                  [this](SenderStatus s) { statuses.push_back(s); }},
                 MidiSender::Drive::Manual) {}

    Problem open(const std::string& name = kPortName) {
        auto result = sender.open(name);
        sender.pump();
        return result.get();
    }

    // Does whatever falls due up to the time `until`, moving the clock there.
    void runUntil(Micros until) {
        for (int guard = 0; guard < 1'000'000; ++guard) {
            const auto wait = sender.pump();
            if (!wait || clock.now() + *wait > until) break;
            clock.advance(*wait);
        }
        if (clock.now() < until) clock.set(until);
    }

    void runToEnd() {
        for (int guard = 0; guard < 1'000'000; ++guard) {
            const auto wait = sender.pump();
            if (!wait) return;
            clock.advance(*wait);
        }
        ADD_FAILURE() << "the sender never became idle";
    }
};

}  // namespace lumidot::device::testing
