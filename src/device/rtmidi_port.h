// The MIDI output port of the program: RtMidi, on the ALSA sequencer or a JACK server.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "device/midi_port.h"

class RtMidiOut;

namespace lumidot::device {

enum class MidiApi {
    Default,  // the ALSA sequencer, or JACK when there is no sequencer
    Alsa,
    Jack,
};

// The environment variable that picks the MIDI system: "alsa" or "jack"; unset or empty
// for the default. Tests set it to "jack" to reach their private JACK server (whose name
// JACK itself takes from JACK_DEFAULT_SERVER).
constexpr const char* kMidiApiVariable = "LUMIDOT_MIDI_API";

// "", "alsa" or "jack" in any letter case; nothing for any other text.
std::optional<MidiApi> ParseMidiApi(std::string_view name);

// The MIDI system the environment variable asks for; nothing when it names none we know.
std::optional<MidiApi> MidiApiFromEnvironment();

// True when a port the MIDI system lists is the one saved under `wanted`. ALSA appends the
// client and port numbers ("FastLane:Port A 20:0"), which change from one session to the
// next, so a name is also found again with other numbers.
bool SamePort(std::string_view listed, std::string_view wanted);

class RtMidiPort final : public OutputPort {
public:
    explicit RtMidiPort(MidiApi api, std::string clientName = "Lumidot");
    ~RtMidiPort() override;

    PortList list() override;
    Problem open(const std::string& name) override;
    Problem send(const Bytes& message) override;
    void close() override;

private:
    Problem connect();
    PortList listConnected();

    MidiApi api_;
    std::string clientName_;
    std::unique_ptr<RtMidiOut> out_;
    std::string openName_;  // as the MIDI system lists it
    std::string error_;     // the last thing RtMidi complained about
};

}  // namespace lumidot::device
