#include "device/rtmidi_port.h"

#include <RtMidi.h>
#include <alsa/asoundlib.h>
#include <jack/jack.h>

#include <algorithm>
#include <cctype>
#include <cstdlib>
#include <iostream>
#include <mutex>
#include <sstream>
#include <vector>

namespace lumidot::device {

namespace {

// With a callback set, RtMidi reports through it instead of printing or throwing, and the
// port reads what it said after each call.
void KeepError(RtMidiError::Type, const std::string& text, void* error) {
    *static_cast<std::string*>(error) = text;
}

// ALSA and JACK print their own complaints on standard error (a missing sequencer, a server
// that is not running: half a dozen lines each time a port is looked for). We report every
// problem ourselves, once and in our words, so theirs are kept quiet.
void IgnoreAlsa(const char*, int, const char*, int, const char*, ...) {}
void IgnoreJack(const char*) {}

void QuietenMidiLibraries() {
    static std::once_flag once;
    std::call_once(once, [] {
        snd_lib_error_set_handler(&IgnoreAlsa);
        jack_set_error_function(&IgnoreJack);
        jack_set_info_function(&IgnoreJack);
    });
}

// RtMidi warns on std::cerr while it is being set up, before an error callback can be given
// to it; the same trouble comes back through the callback at the first real call, so the
// warning is dropped. Nothing else in the program writes to std::cerr, so borrowing it for
// the moment disturbs nobody.
std::unique_ptr<RtMidiOut> MakeRtMidiOut(RtMidi::Api api, const std::string& clientName) {
    std::ostringstream dropped;
    std::streambuf* const cerr = std::cerr.rdbuf(dropped.rdbuf());
    std::unique_ptr<RtMidiOut> out;
    try {
        out = std::make_unique<RtMidiOut>(api, clientName);
    } catch (...) {
        std::cerr.rdbuf(cerr);
        throw;
    }
    std::cerr.rdbuf(cerr);
    return out;
}

RtMidi::Api ToRtMidi(MidiApi api) {
    return api == MidiApi::Jack ? RtMidi::UNIX_JACK : RtMidi::LINUX_ALSA;
}

// The name without ALSA's trailing " client:port" numbers.
std::string_view WithoutNumbers(std::string_view name) {
    const auto space = name.rfind(' ');
    if (space == std::string_view::npos) return name;
    const std::string_view tail = name.substr(space + 1);
    const auto colon = tail.find(':');
    const auto digits = [](std::string_view s) {
        return !s.empty() && std::all_of(s.begin(), s.end(),
                                         [](unsigned char c) { return std::isdigit(c) != 0; });
    };
    if (colon == std::string_view::npos || !digits(tail.substr(0, colon)) ||
        !digits(tail.substr(colon + 1))) {
        return name;
    }
    return name.substr(0, space);
}

}  // namespace

std::optional<MidiApi> ParseMidiApi(std::string_view name) {
    std::string lower(name);
    std::transform(lower.begin(), lower.end(), lower.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    if (lower.empty()) return MidiApi::Default;
    if (lower == "alsa") return MidiApi::Alsa;
    if (lower == "jack") return MidiApi::Jack;
    return std::nullopt;
}

std::optional<MidiApi> MidiApiFromEnvironment() {
    const char* name = std::getenv(kMidiApiVariable);
    return ParseMidiApi(name ? name : "");
}

bool SamePort(std::string_view listed, std::string_view wanted) {
    return listed == wanted || WithoutNumbers(listed) == WithoutNumbers(wanted);
}

RtMidiPort::RtMidiPort(MidiApi api, std::string clientName)
    : api_(api), clientName_(std::move(clientName)) {
    QuietenMidiLibraries();
}

RtMidiPort::~RtMidiPort() {
    close();
}

Problem RtMidiPort::connect() {
    if (out_) return {};
    std::vector<MidiApi> tries{api_};
    if (api_ == MidiApi::Default) tries = {MidiApi::Alsa, MidiApi::Jack};
    std::string reason;
    for (MidiApi api : tries) {
        try {
            out_ = MakeRtMidiOut(ToRtMidi(api), clientName_);
            out_->setErrorCallback(&KeepError, &error_);
            return {};
        } catch (const RtMidiError& e) {
            reason = e.getMessage();
        }
    }
    return {ProblemKind::NoMidiSystem, {}, reason};
}

PortList RtMidiPort::listConnected() {
    PortList ports;
    error_.clear();
    try {
        const unsigned count = out_->getPortCount();
        // JACK's client reconnects here and says so when there is no server; other
        // complaints (a port gone between counting and naming) just shorten the list.
        if (count == 0 && !error_.empty()) {
            ports.problem = {ProblemKind::NoMidiSystem, {}, error_};
            return ports;
        }
        for (unsigned i = 0; i < count; ++i) ports.names.push_back(out_->getPortName(i));
    } catch (const RtMidiError& e) {
        ports.problem = {ProblemKind::NoMidiSystem, {}, e.getMessage()};
    }
    return ports;
}

PortList RtMidiPort::list() {
    if (Problem problem = connect()) return {{}, problem};
    PortList ports = listConnected();
    std::erase(ports.names, std::string());
    return ports;
}

Problem RtMidiPort::open(const std::string& name) {
    close();
    if (Problem problem = connect()) {
        problem.port = name;
        return problem;
    }
    const PortList ports = listConnected();
    if (ports.problem) return {ports.problem.kind, name, ports.problem.detail};
    // Indices, not names, open a port, so the list keeps the system's numbering.
    const auto found = std::find_if(ports.names.begin(), ports.names.end(),
                                    [&](const std::string& n) { return SamePort(n, name); });
    if (found == ports.names.end()) return {ProblemKind::NoSuchPort, name, {}};
    error_.clear();
    try {
        out_->openPort(static_cast<unsigned>(found - ports.names.begin()), "out");
    } catch (const RtMidiError& e) {
        error_ = e.getMessage();
    }
    if (!error_.empty() || !out_->isPortOpen()) {
        close();
        return {ProblemKind::OpenFailed, name, error_};
    }
    openName_ = *found;
    return {};
}

Problem RtMidiPort::send(const Bytes& message) {
    if (!out_ || !out_->isPortOpen()) return {ProblemKind::PortLost, openName_, {}};
    error_.clear();
    try {
        out_->sendMessage(message.data(), message.size());
    } catch (const RtMidiError& e) {
        error_ = e.getMessage();
    }
    if (!error_.empty()) return {ProblemKind::SendFailed, openName_, error_};
    // Neither ALSA nor JACK complains about sending to a port that has gone (nobody is
    // connected any more), so the port is looked for. Afterwards, not before: the sender
    // counts the pause from the start of this call, which must be when the message leaves.
    const PortList ports = listConnected();
    if (ports.problem ||
        std::find(ports.names.begin(), ports.names.end(), openName_) == ports.names.end()) {
        return {ProblemKind::PortLost, openName_, ports.problem.detail};
    }
    return {};
}

void RtMidiPort::close() {
    if (out_ && out_->isPortOpen()) out_->closePort();
    openName_.clear();
}

}  // namespace lumidot::device
