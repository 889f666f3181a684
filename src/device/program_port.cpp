#include "device/program_port.h"

#include <cstdlib>

namespace lumidot::device {

LoggingPort::LoggingPort(std::unique_ptr<OutputPort> port, const std::string& path)
    : port_(std::move(port)), file_(std::fopen(path.c_str(), "a")) {}

LoggingPort::~LoggingPort() {
    if (file_) std::fclose(file_);
}

Problem LoggingPort::send(const Bytes& message) {
    const Micros began = SteadyClock().now();
    Problem problem = port_->send(message);
    // Written after the hand-over, so that the note never delays the message it is about.
    if (file_) {
        std::fprintf(file_, "%lld", static_cast<long long>(began.count()));
        for (std::uint8_t byte : message) std::fprintf(file_, " %02X", byte);
        std::fputc('\n', file_);
        std::fflush(file_);
    }
    return problem;
}

std::string MidiApiVariableProblem() {
    if (MidiApiFromEnvironment()) return {};
    return std::string(kMidiApiVariable) + " is \"" + std::getenv(kMidiApiVariable) +
           "\"; it takes alsa or jack";
}

std::unique_ptr<OutputPort> MakeProgramPort(std::optional<MidiApi> api, std::string clientName) {
    if (!api) api = MidiApiFromEnvironment();
    std::unique_ptr<OutputPort> port;
    if (api) {
        port = std::make_unique<RtMidiPort>(*api, std::move(clientName));
    } else {
        port = std::make_unique<UnavailablePort>(MidiApiVariableProblem());
    }
    const char* log = std::getenv(kMidiLogVariable);
    if (log && *log) port = std::make_unique<LoggingPort>(std::move(port), log);
    return port;
}

}  // namespace lumidot::device
