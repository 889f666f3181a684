// ports and send: the MIDI output ports, and the messages of a file sent to one of them
// through the same pacing as the window's.
#include <QSettings>
#include <chrono>
#include <mutex>
#include <optional>
#include <thread>

#include "cli/cli_io.h"
#include "cli/commands.h"
#include "decode/hex_messages.h"
#include "device/midi_sender.h"
#include "device/program_port.h"
#include "files/file_kind.h"
#include "files/midi_file.h"
#include "files/syx_file.h"
#include "storage/preferences.h"

namespace lumidot::cli {
namespace {

using device::ProblemKind;
using namespace std::chrono_literals;

constexpr char kClientName[] = "lumidot-cli";

struct Outgoing {
    std::optional<double> seconds;  // from the start, for the messages of a MIDI file
    ByteArray bytes;
};

// The MIDI system asked for by --api, else by the environment; nothing (saying why on
// standard error) when the environment names one we do not know.
std::optional<device::MidiApi> ChosenApi(const Options& options) {
    if (!options.api.isEmpty()) return device::ParseMidiApi(options.api.toStdString());
    const auto api = device::MidiApiFromEnvironment();
    if (!api) PrintError(QString::fromStdString(device::MidiApiVariableProblem()));
    return api;
}

QString OneLine(const std::string& text) {
    return QString::fromStdString(text).simplified();
}

QString ProblemLine(const device::Problem& problem) {
    const QString port = QString::fromStdString(problem.port);
    const QString detail =
        problem.detail.empty() ? QString() : QStringLiteral(" (%1)").arg(OneLine(problem.detail));
    switch (problem.kind) {
        case ProblemKind::None:
            break;
        case ProblemKind::NoMidiSystem:
            return QStringLiteral("the MIDI system cannot be reached") + detail;
        case ProblemKind::NoSuchPort:
            return QStringLiteral("there is no MIDI port \"%1\" (lumidot-cli ports lists them)")
                .arg(port);
        case ProblemKind::OpenFailed:
            return QStringLiteral("the MIDI port \"%1\" could not be opened").arg(port) + detail;
        case ProblemKind::PortLost:
            return QStringLiteral("the MIDI port \"%1\" went away before every message was sent")
                .arg(port);
        case ProblemKind::SendFailed:
            return QStringLiteral("a message could not be sent to the MIDI port \"%1\"").arg(port) +
                   detail;
    }
    return QString();
}

// The messages of the file, in the order they go. Damage is reported on standard error and
// sets damaged; what could be read is still sent. False when hex text holds no messages.
bool ReadOutgoing(const QByteArray& input, const QString& path, const ByteLayout& layout,
                  std::vector<Outgoing>& outgoing, bool& damaged) {
    const QString name = DisplayName(path);
    const std::span<const std::uint8_t> file(reinterpret_cast<const std::uint8_t*>(input.data()),
                                             static_cast<std::size_t>(input.size()));
    switch (GuessFileKind(file, path.toStdString())) {
        case FileKind::Midi: {
            MidiContents contents = ReadMidi(file);
            for (MidiSysEx& message : contents.messages) {
                outgoing.push_back({message.seconds, std::move(message.bytes)});
            }
            damaged = ReportProblems(name, contents.problems, contents.error);
            return true;
        }
        case FileKind::Syx: {
            SyxContents contents = ReadSyx(file);
            for (SyxMessage& message : contents.messages) {
                outgoing.push_back({std::nullopt, std::move(message.bytes)});
            }
            damaged = ReportProblems(name, contents.problems, std::nullopt);
            return true;
        }
        case FileKind::HexText: {
            HexMessages text = ReadHexMessages(QString::fromUtf8(input), layout);
            if (text.check != HexCheck::Ok) {
                PrintError(name + QStringLiteral(": ") + HexRefusal(text.check));
                return false;
            }
            for (ByteArray& bytes : text.messages) outgoing.push_back({std::nullopt, bytes});
            if (text.incomplete > 0) {
                PrintError(QStringLiteral("%1: %2 message(s) without their F7 end, not sent")
                               .arg(name)
                               .arg(text.incomplete));
                damaged = true;
            }
            return true;
        }
    }
    return false;
}

// The port given, or the one chosen in the window's MIDI menu.
QString PortToUse(const Options& options) {
    if (!options.port.isEmpty()) return options.port;
    return OpenPreferences()->value(QLatin1String(preference::kMidiPort)).toString();
}

}  // namespace

int Ports(const Options& options) {
    const auto api = ChosenApi(options);
    if (!api) return kUsageError;
    const device::PortList ports = device::MakeProgramPort(api, kClientName)->list();
    if (ports.problem) {
        PrintError(ProblemLine(ports.problem));
        return kBadInput;
    }
    QString lines;
    for (const std::string& name : ports.names) lines += QString::fromStdString(name) + '\n';
    PrintOut(lines);
    return kSuccess;
}

int Send(const Options& options) {
    const auto api = ChosenApi(options);
    if (!api) return kUsageError;
    const QString port = PortToUse(options);
    if (port.isEmpty()) {
        PrintError(
            QStringLiteral("no MIDI port given: name one with --port (lumidot-cli ports "
                           "lists them)"));
        return kUsageError;
    }
    const QString& path = options.arguments[0];
    const std::optional<QByteArray> input = ReadInputOrSay(path);
    if (!input) return kBadInput;
    std::vector<Outgoing> outgoing;
    bool damaged = false;
    if (!ReadOutgoing(*input, path, options.layout, outgoing, damaged)) return kBadInput;
    if (outgoing.empty()) {
        PrintError(DisplayName(path) + QStringLiteral(": holds no message to send"));
        return kBadInput;
    }

    std::mutex mutex;
    device::Problem lost;
    device::SteadyClock clock;
    device::MidiSender sender(device::MakeProgramPort(api, kClientName), clock,
                              {[&](const device::Problem& problem) {
                                   std::lock_guard lock(mutex);
                                   if (!lost) lost = problem;
                               },
                               {}});
    if (const device::Problem problem = sender.open(port.toStdString()).get()) {
        PrintError(ProblemLine(problem));
        return kBadInput;
    }
    sender.setGap(options.gapMs);

    // A MIDI file's messages wait for their moment; the pause after the one before is the
    // least between two, so a message may go later than its file says, never sooner. A port
    // just opened holds its first message back by a whole pause, so the file's time 0 is
    // then: its first two messages keep the distance the file gives them.
    const auto start = std::chrono::steady_clock::now() + std::chrono::milliseconds(options.gapMs);
    device::Micros longest = 10s + std::chrono::milliseconds(options.gapMs) *
                                       static_cast<device::Micros::rep>(outgoing.size());
    for (Outgoing& message : outgoing) {
        if (message.seconds) {
            const auto at = start + std::chrono::duration_cast<std::chrono::steady_clock::duration>(
                                        std::chrono::duration<double>(*message.seconds));
            std::this_thread::sleep_until(at);
        }
        if (sender.status() == device::SenderStatus::PortLost) break;
        longest += device::WireTime(message.bytes.size());
        sender.send(std::move(message.bytes), device::MidiSender::Queueing::Every);
    }
    if (!sender.drain(longest)) {
        std::lock_guard lock(mutex);
        PrintError(lost ? ProblemLine(lost)
                        : QStringLiteral("the MIDI port \"%1\" did not take the messages in time")
                              .arg(port));
        return kBadInput;
    }
    PrintOut(QStringLiteral("%1 message%2 sent to %3\n")
                 .arg(outgoing.size())
                 .arg(outgoing.size() == 1 ? QString() : QStringLiteral("s"), port));
    return damaged ? kBadInput : kSuccess;
}

}  // namespace lumidot::cli
