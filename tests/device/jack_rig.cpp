#include "device/jack_rig.h"

#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <thread>

#include "device/rtmidi_port.h"

extern char** environ;

namespace lumidot::device::testing {

using namespace std::chrono_literals;

std::string MissingRig() {
    if (!std::getenv("JACK_DEFAULT_SERVER")) {
        return "JACK_DEFAULT_SERVER is not set: run these tests through run_with_jack.sh "
               "(ctest does), which starts a private JACK server";
    }
    if (MidiApiFromEnvironment() != MidiApi::Jack) {
        return std::string(kMidiApiVariable) + " should be \"jack\" for these tests";
    }
    return {};
}

Micros CycleTime() {
    const char* period = std::getenv("LUMIDOT_TEST_JACK_PERIOD_US");
    return Micros{period ? std::atoll(period) : 21333};
}

Receiver::Receiver(const std::string& client)
    : client_(client),
      file_((std::filesystem::temp_directory_path() /
             (client + "-" + std::to_string(getpid()) + ".txt"))
                .string()) {
    std::filesystem::remove(file_);
    std::vector<std::string> args{JACK_RECEIVER_PATH, client_, file_};
    std::vector<char*> argv;
    for (auto& a : args) argv.push_back(a.data());
    argv.push_back(nullptr);
    if (posix_spawn(&pid_, argv[0], nullptr, nullptr, argv.data(), environ) != 0) pid_ = -1;
}

Receiver::~Receiver() {
    stop();
    std::filesystem::remove(file_);
}

void Receiver::stop() {
    if (pid_ <= 0) return;
    kill(pid_, SIGTERM);
    for (int i = 0; i < 500; ++i) {
        if (waitpid(pid_, nullptr, WNOHANG) == pid_) {
            pid_ = -1;
            return;
        }
        std::this_thread::sleep_for(10ms);
    }
    kill(pid_, SIGKILL);
    waitpid(pid_, nullptr, 0);
    pid_ = -1;
}

bool Receiver::waitUntilListed(std::string& reason) {
    if (pid_ <= 0) {
        reason = "the receiver " JACK_RECEIVER_PATH " could not be started";
        return false;
    }
    RtMidiPort lister(MidiApi::Jack, client_ + "-lister");
    for (int i = 0; i < 500; ++i) {
        const PortList ports = lister.list();
        for (const auto& name : ports.names) {
            if (name == port()) return true;
        }
        int status = 0;
        if (waitpid(pid_, &status, WNOHANG) == pid_) {
            pid_ = -1;
            reason = "the receiver ended before its port appeared";
            return false;
        }
        reason = ports.problem ? DescribeProblem(ports.problem) : "its port was not listed";
        std::this_thread::sleep_for(10ms);
    }
    return false;
}

std::vector<Received> Receiver::read() const {
    std::vector<Received> received;
    std::ifstream in(file_);
    std::string line;
    while (std::getline(in, line)) {
        std::istringstream fields(line);
        long long micros = 0;
        if (!(fields >> micros)) {
            received.push_back({Micros{-1}, {}});  // "overflow": fails any comparison
            continue;
        }
        Received r{Micros{micros}, {}};
        std::string hex;
        while (fields >> hex)
            r.bytes.push_back(static_cast<std::uint8_t>(std::stoi(hex, nullptr, 16)));
        received.push_back(std::move(r));
    }
    return received;
}

std::vector<Received> Receiver::waitFor(std::size_t count) {
    std::vector<Received> received = read();
    auto quietSince = std::chrono::steady_clock::now();
    while (received.size() < count && std::chrono::steady_clock::now() - quietSince < 1s) {
        std::this_thread::sleep_for(5ms);
        std::vector<Received> now = read();
        if (now.size() != received.size()) quietSince = std::chrono::steady_clock::now();
        received = std::move(now);
    }
    // Anything more than expected would have come right behind.
    std::this_thread::sleep_for(100ms);
    return read();
}

}  // namespace lumidot::device::testing
