// The output port the window and lumidot-cli send through: RtMidi on the MIDI system the
// user asked for, and, when LUMIDOT_MIDI_LOG names a file, a note of every message handed
// over, for finding out afterwards what went to the module and when.
#pragma once

#include <cstdio>
#include <memory>
#include <optional>
#include <string>

#include "device/midi_port.h"
#include "device/rtmidi_port.h"

namespace lumidot::device {

constexpr const char* kMidiLogVariable = "LUMIDOT_MIDI_LOG";

// Notes every message it hands over in a file, one line each: when the hand-over began, in
// microseconds of the system's monotonic clock (the one steady_clock reads), and the bytes
// in hex ("1234567 F0 41 ... F7"). Lines are added to what the file holds.
class LoggingPort final : public OutputPort {
public:
    LoggingPort(std::unique_ptr<OutputPort> port, const std::string& path);
    ~LoggingPort() override;

    PortList list() override { return port_->list(); }
    Problem open(const std::string& name) override { return port_->open(name); }
    Problem send(const Bytes& message) override;
    void close() override { port_->close(); }

private:
    std::unique_ptr<OutputPort> port_;
    std::FILE* file_ = nullptr;
};

// The port of a MIDI system that cannot be used at all: every call says so, and why.
class UnavailablePort final : public OutputPort {
public:
    explicit UnavailablePort(std::string why) : why_(std::move(why)) {}
    PortList list() override { return {{}, {ProblemKind::NoMidiSystem, {}, why_}}; }
    Problem open(const std::string& name) override {
        return {ProblemKind::NoMidiSystem, name, why_};
    }
    Problem send(const Bytes&) override { return {ProblemKind::NoMidiSystem, {}, why_}; }
    void close() override {}

private:
    std::string why_;
};

// Why LUMIDOT_MIDI_API cannot be used, or empty text when it names a system we know (or
// nothing at all).
std::string MidiApiVariableProblem();

// The port for the MIDI system api, or, without one, for the system the environment asks
// for (an UnavailablePort when it asks for one we do not know).
std::unique_ptr<OutputPort> MakeProgramPort(std::optional<MidiApi> api = std::nullopt,
                                            std::string clientName = "Lumidot");

}  // namespace lumidot::device
