// Where the program's MIDI messages go: a port of the MIDI system in the program, a recording
// fake in the tests. The queue that paces messages (pacing_queue.h) and the sender that owns a
// port on a thread of its own (midi_sender.h) only see this interface and a clock.
#pragma once

#include <chrono>
#include <cstdint>
#include <string>
#include <vector>

namespace lumidot::device {

using Bytes = std::vector<std::uint8_t>;
using Micros = std::chrono::microseconds;

enum class ProblemKind {
    None,
    NoMidiSystem,  // the MIDI system (ALSA sequencer, JACK server) cannot be reached
    NoSuchPort,    // no port of the name asked for
    OpenFailed,    // the port is there but would not take a connection
    PortLost,      // the open port has gone away (device unplugged, program quit)
    SendFailed,    // the MIDI system refused a message
};

// A problem as a value: the caller decides whether and how to show it.
struct Problem {
    ProblemKind kind = ProblemKind::None;
    std::string port;    // the port concerned, when there is one
    std::string detail;  // what the MIDI system itself said, when it said something

    explicit operator bool() const { return kind != ProblemKind::None; }
};

// What went wrong and what happens now, in words for a message box.
std::string DescribeProblem(const Problem& problem);

struct PortList {
    std::vector<std::string> names;
    Problem problem;  // set when the MIDI system could not be asked
};

class OutputPort {
public:
    virtual ~OutputPort() = default;
    // The ports messages can be sent to, as the MIDI system names them.
    virtual PortList list() = 0;
    // Connects to the port of that name, closing any port open before.
    virtual Problem open(const std::string& name) = 0;
    // Hands one complete message to the MIDI system as the call begins: the pacing counts
    // from then. PortLost when the open port has gone.
    virtual Problem send(const Bytes& message) = 0;
    virtual void close() = 0;
};

// Time as the pacing sees it: microseconds from any fixed moment.
class Clock {
public:
    virtual ~Clock() = default;
    virtual Micros now() const = 0;
};

class SteadyClock final : public Clock {
public:
    Micros now() const override {
        return std::chrono::duration_cast<Micros>(
            std::chrono::steady_clock::now().time_since_epoch());
    }
};

}  // namespace lumidot::device
