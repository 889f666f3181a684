// The window's connection to the module: the MIDI port the user chose (remembered between
// runs), the pause between messages, live sending, and the sender that owns the port on a
// thread of its own. Everything here runs on the window's thread; what the sender reports
// from its own thread is brought over first. Until a port is chosen, or the MIDI menu is
// opened, nothing of the MIDI system is touched.
#pragma once

#include <QObject>
#include <QString>
#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

#include "codec/gs_message.h"
#include "device/midi_sender.h"

class QSettings;

namespace lumidot {

class MidiDevice : public QObject {
    Q_OBJECT
public:
    using PortMaker = std::function<std::unique_ptr<device::OutputPort>()>;

    // makePort gives the port the sender owns, once it is first needed.
    explicit MidiDevice(PortMaker makePort, QObject* parent = nullptr);
    ~MidiDevice() override;

    // Opens the port chosen in an earlier run, if there is one; a port that is not there
    // now is no error: it shows as missing until it comes back.
    void start();

    // The port chosen, as the user chose it; empty when none is.
    const QString& chosenPort() const { return chosen_; }
    // The chosen port is open and has not gone away since.
    bool portOpen() const;
    device::SenderStatus status() const { return status_; }
    // What the last listing found; nothing before the first.
    const std::optional<device::PortList>& ports() const { return ports_; }
    int gapMs() const { return gapMs_; }
    bool live() const { return live_; }

    // Lists the ports afresh (changed() follows). A chosen port that is listed again while
    // it is not open is opened, without a word if that fails.
    void refreshPorts();
    // Opens the port and remembers it; a failure is reported through failed().
    void choosePort(const QString& name);
    // No port: closes the one open and forgets it.
    void forgetPort();
    void setGapMs(int milliseconds);
    void setLive(bool on);

    // Each message goes out, in order, whatever follows.
    void sendEach(const std::vector<ByteArray>& messages);
    // A newer message for the same address replaces this one while it waits.
    void sendLatest(ByteArray message);
    // Waits until every message asked for is out (true), or the port is gone or the time
    // is up (false).
    bool drain(std::chrono::milliseconds timeout);

signals:
    // Anything the MIDI menu shows may have changed.
    void changed();
    // A problem to show the user, once, in words for a message box.
    void failed(const QString& text);

private:
    device::MidiSender& sender();
    void open(const QString& name, bool quietly);
    void takeStatus();
    void takeProblem(const device::Problem& problem);
    void remember(const char* key, const QVariant& value);

    PortMaker makePort_;
    device::SteadyClock clock_;
    std::unique_ptr<QSettings> preferences_;
    QString chosen_;
    int gapMs_;
    bool live_;
    bool open_ = false;  // the last open of the chosen port succeeded
    device::SenderStatus status_ = device::SenderStatus::NoPort;
    std::optional<device::PortList> ports_;
    bool noSystemReported_ = false;  // until the MIDI system answers again
    quint64 openRequest_ = 0;        // the newest open asked for; older results are stale
    std::unique_ptr<device::MidiSender> sender_;  // last: its thread ends before the rest goes
};

}  // namespace lumidot
