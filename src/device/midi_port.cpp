#include "device/midi_port.h"

namespace lumidot::device {

std::string DescribeProblem(const Problem& problem) {
    const std::string port = "\"" + problem.port + "\"";
    std::string text;
    switch (problem.kind) {
        case ProblemKind::None:
            return {};
        case ProblemKind::NoMidiSystem:
            text =
                "The MIDI system cannot be reached, so no MIDI port can be used. "
                "Start it (or connect a MIDI interface) and choose a port again.";
            break;
        case ProblemKind::NoSuchPort:
            text = "There is no MIDI port " + port + ". Choose one of the ports listed.";
            break;
        case ProblemKind::OpenFailed:
            text = "The MIDI port " + port +
                   " could not be opened. It may be in use by another "
                   "program; close that program or choose another port.";
            break;
        case ProblemKind::PortLost:
            text = "The MIDI port " + port +
                   " has gone away. Nothing more is sent until a port is chosen again.";
            break;
        case ProblemKind::SendFailed:
            text = "A message could not be sent to the MIDI port " + port +
                   ". Nothing more is sent until a port is chosen again.";
            break;
    }
    if (!problem.detail.empty()) text += "\n\n(" + problem.detail + ")";
    return text;
}

}  // namespace lumidot::device
