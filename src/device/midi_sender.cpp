#include "device/midi_sender.h"

#include <utility>

namespace lumidot::device {

const char* StatusText(SenderStatus status) {
    switch (status) {
        case SenderStatus::NoPort:
            return "no port";
        case SenderStatus::Ready:
            return "ready";
        case SenderStatus::Sending:
            return "sending...";
        case SenderStatus::PortLost:
            return "port lost";
    }
    return "";
}

MidiSender::MidiSender(std::unique_ptr<OutputPort> port, const Clock& clock,
                       SenderListener listener, Drive drive)
    : port_(std::move(port)), clock_(clock), listener_(std::move(listener)) {
    if (drive == Drive::WorkerThread) worker_ = std::thread(&MidiSender::work, this);
}

MidiSender::~MidiSender() {
    {
        Lock lock(mutex_);
        stop_ = true;
    }
    wake_.notify_all();
    if (worker_.joinable()) worker_.join();
    port_->close();
}

void MidiSender::command(std::function<void(Lock&)> run) {
    {
        Lock lock(mutex_);
        commands_.push_back(std::move(run));
    }
    wake_.notify_all();
}

std::future<PortList> MidiSender::listPorts() {
    auto promise = std::make_shared<std::promise<PortList>>();
    command([this, promise](Lock& lock) {
        lock.unlock();
        PortList ports = port_->list();
        lock.lock();
        promise->set_value(std::move(ports));
    });
    return promise->get_future();
}

std::future<Problem> MidiSender::open(std::string name) {
    auto promise = std::make_shared<std::promise<Problem>>();
    command([this, name = std::move(name), promise](Lock& lock) {
        lock.unlock();
        Problem problem = port_->open(name);
        lock.lock();
        if (problem && problem.port.empty()) problem.port = name;
        open_ = !problem;
        lost_ = false;
        portName_ = open_ ? name : std::string();
        queue_.clear();
        if (open_) queue_.portOpened(clock_.now());
        accepting_ = open_;
        publish(lock, problem);
        promise->set_value(std::move(problem));
    });
    return promise->get_future();
}

void MidiSender::close() {
    accepting_ = false;
    command([this](Lock& lock) {
        lock.unlock();
        port_->close();
        lock.lock();
        open_ = false;
        lost_ = false;
        accepting_ = false;  // an open() queued before this close() may have set it
        portName_.clear();
        queue_.clear();
        publish(lock, {});
    });
}

void MidiSender::send(Bytes message, Queueing queueing) {
    if (!accepting_.load(std::memory_order_relaxed)) return;
    bool wasEmpty;
    {
        Lock lock(mutex_);
        if (!open_ || lost_) return;
        wasEmpty = queue_.push(std::move(message), queueing == Queueing::LatestWins);
    }
    // A worker with messages queued is already waiting for the first one's turn, and a
    // newer message never makes that turn come sooner.
    if (wasEmpty) wake_.notify_all();
}

void MidiSender::setGap(int milliseconds) {
    Lock lock(mutex_);
    queue_.setGap(milliseconds);
}

int MidiSender::gapMs() const {
    Lock lock(mutex_);
    return queue_.gapMs();
}

SenderStatus MidiSender::status() const {
    Lock lock(mutex_);
    return statusLocked();
}

std::string MidiSender::portName() const {
    Lock lock(mutex_);
    return portName_;
}

SenderStatus MidiSender::statusLocked() const {
    if (lost_) return SenderStatus::PortLost;
    if (!open_) return SenderStatus::NoPort;
    if (!queue_.empty() || inFlight_) return SenderStatus::Sending;
    return SenderStatus::Ready;
}

void MidiSender::publish(Lock& lock, const Problem& problem) {
    const SenderStatus status = statusLocked();
    const bool changed = reported_ != status;
    reported_ = status;
    idle_.notify_all();
    if (!problem && !changed) return;
    lock.unlock();
    if (problem && listener_.problem) listener_.problem(problem);
    if (changed && listener_.status) listener_.status(status);
    lock.lock();
}

void MidiSender::runCommands(Lock& lock) {
    while (!commands_.empty()) {
        auto run = std::move(commands_.front());
        commands_.pop_front();
        commandRunning_ = true;
        run(lock);
        commandRunning_ = false;
        idle_.notify_all();
    }
}

std::optional<Micros> MidiSender::step(Lock& lock) {
    runCommands(lock);
    if (!open_ || lost_) {
        // Whatever slipped in while the port was going away.
        queue_.clear();
        publish(lock, {});
        return std::nullopt;
    }
    if (statusLocked() != reported_) {
        // Reporting lets go of the lock, so look at the queue afresh afterwards.
        publish(lock, {});
        return Micros{0};
    }
    const auto wait = queue_.waitBefore(clock_.now());
    if (!wait || wait->count() > 0) return wait;

    Bytes message = queue_.take();
    inFlight_ = true;
    lock.unlock();
    Problem problem = port_->send(message);
    const Micros returned = clock_.now();
    lock.lock();
    inFlight_ = false;
    queue_.sent(returned);
    if (problem) {
        if (problem.port.empty()) problem.port = portName_;
        lost_ = true;
        accepting_ = false;
        queue_.clear();
    }
    publish(lock, problem);
    return Micros{0};
}

std::optional<Micros> MidiSender::pump() {
    Lock lock(mutex_);
    return step(lock);
}

void MidiSender::work() {
    Lock lock(mutex_);
    while (!stop_) {
        const auto wait = step(lock);
        if (stop_ || !commands_.empty()) continue;
        if (!wait) {
            wake_.wait(lock, [&] { return stop_ || !commands_.empty() || !queue_.empty(); });
        } else if (wait->count() > 0) {
            // Woken early by a command or by chance, the next step simply finds it is not
            // yet time and waits again.
            wake_.wait_for(lock, *wait);
        }
    }
}

bool MidiSender::drain(Micros timeout) {
    Lock lock(mutex_);
    const bool settled = idle_.wait_for(lock, timeout, [&] {
        return commands_.empty() && !commandRunning_ &&
               ((queue_.empty() && !inFlight_) || lost_ || !open_);
    });
    if (!settled || lost_ || !open_) return false;
    const Micros rest = queue_.busyUntil() - clock_.now();
    lock.unlock();
    if (rest.count() > 0) std::this_thread::sleep_for(rest);
    return true;
}

}  // namespace lumidot::device
