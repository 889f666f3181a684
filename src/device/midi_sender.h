// Sends messages to one MIDI output port without ever making the caller wait: the caller
// only queues (a short lock and a copy), and a worker thread that owns the port hands the
// messages over as the pacing allows. Problems and status changes come back as values
// through callbacks; a window turns them into one message box and a menu entry.
#pragma once

#include <atomic>
#include <condition_variable>
#include <deque>
#include <functional>
#include <future>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <thread>

#include "device/midi_port.h"
#include "device/pacing_queue.h"

namespace lumidot::device {

enum class SenderStatus {
    NoPort,   // no port open: messages are dropped
    Ready,    // a port is open and everything has been handed over
    Sending,  // messages are waiting for their turn or being handed over
    PortLost  // the port went away or refused a message: dropped until a port is opened again
};

// The words a MIDI menu shows for the status.
const char* StatusText(SenderStatus status);

// Both are called on the worker thread (on the caller's own in Manual drive), never while
// the sender holds its lock, so they may call back into the sender. A window forwards them
// to its own thread (a queued signal, QMetaObject::invokeMethod).
struct SenderListener {
    // Once per failure: after a port is lost nothing more is reported until a port is opened.
    std::function<void(const Problem&)> problem;
    std::function<void(SenderStatus)> status;
};

class MidiSender {
public:
    // Manual: no thread; the caller runs pump() (the tests, with a clock they advance).
    enum class Drive { WorkerThread, Manual };

    MidiSender(std::unique_ptr<OutputPort> port, const Clock& clock, SenderListener listener = {},
               Drive drive = Drive::WorkerThread);
    ~MidiSender();
    MidiSender(const MidiSender&) = delete;
    MidiSender& operator=(const MidiSender&) = delete;

    // These run on the worker thread; the futures are ready when they have.
    std::future<PortList> listPorts();
    // A failure is reported through the listener as well as in the result.
    std::future<Problem> open(std::string name);
    void close();

    // LatestWins: a newer message for the same address replaces this one while it waits (the
    // window's live output). Every: the message goes out whatever follows it (a file, the
    // pages sent on request).
    enum class Queueing { LatestWins, Every };

    // Queues a message for the open port; dropped when no port is open or it was lost.
    void send(Bytes message, Queueing queueing = Queueing::LatestWins);

    // The pause after each message, clamped to 20..500 ms.
    void setGap(int milliseconds);
    int gapMs() const;

    SenderStatus status() const;
    std::string portName() const;

    // Waits until every queued message is off the cable (true) or nothing more can be sent
    // (false, as when the timeout passes first). Worker-thread drive only.
    bool drain(Micros timeout);

    // Manual drive: does what is due now. How long until something more is due; nothing
    // when there is nothing to do.
    std::optional<Micros> pump();

private:
    using Lock = std::unique_lock<std::mutex>;

    void work();
    std::optional<Micros> step(Lock& lock);
    void runCommands(Lock& lock);
    void publish(Lock& lock, const Problem& problem);
    SenderStatus statusLocked() const;
    void command(std::function<void(Lock&)> run);

    std::unique_ptr<OutputPort> port_;
    const Clock& clock_;
    SenderListener listener_;

    mutable std::mutex mutex_;
    std::condition_variable wake_;  // the worker: a command, a message in an empty queue, stop
    std::condition_variable idle_;  // drain(): something was handed over or dropped
    PacingQueue queue_;
    std::deque<std::function<void(Lock&)>> commands_;  // run with the lock held
    std::string portName_;
    bool open_ = false;
    bool lost_ = false;
    bool inFlight_ = false;
    bool commandRunning_ = false;
    bool stop_ = false;
    SenderStatus reported_ = SenderStatus::NoPort;  // as the listener last heard it
    // send() drops messages without taking the lock while no port can take them.
    std::atomic<bool> accepting_{false};
    std::thread worker_;
};

}  // namespace lumidot::device
