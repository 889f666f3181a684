#include "mainwindow/midi_device.h"

#include <QSettings>
#include <QTimer>
#include <algorithm>
#include <chrono>
#include <future>

#include "device/pacing_queue.h"
#include "device/rtmidi_port.h"
#include "storage/preferences.h"

namespace lumidot {
namespace {

using namespace std::chrono_literals;
using device::SenderStatus;

// How long the window waits at once for the sender's thread to list or open a port: the
// MIDI system usually answers in a millisecond, and the menu then opens with the right
// list. A slower answer arrives by itself, and the window keeps working meanwhile.
constexpr auto kQuickWait = 200ms;
constexpr int kPollMs = 10;

// Runs done with the result of future on context's thread, at once when it is ready soon.
template <class T>
void WhenReady(QObject* context, std::future<T> future, std::function<void(T)> done) {
    if (future.wait_for(kQuickWait) == std::future_status::ready) {
        done(future.get());
        return;
    }
    auto waiting = std::make_shared<std::future<T>>(std::move(future));
    auto* timer = new QTimer(context);
    QObject::connect(timer, &QTimer::timeout, context, [timer, waiting, done] {
        if (waiting->wait_for(0s) != std::future_status::ready) return;
        timer->stop();
        timer->deleteLater();
        done(waiting->get());
    });
    timer->start(kPollMs);
}

}  // namespace

MidiDevice::MidiDevice(PortMaker makePort, QObject* parent)
    : QObject(parent), makePort_(std::move(makePort)), preferences_(OpenPreferences()) {
    chosen_ = preferences_->value(QLatin1String(preference::kMidiPort)).toString();
    gapMs_ = device::ClampGap(
        preferences_->value(QLatin1String(preference::kMidiGapMs), device::kDefaultGapMs).toInt());
    live_ = preferences_->value(QLatin1String(preference::kMidiLive), false).toBool();
}

MidiDevice::~MidiDevice() {
    // Messages asked for just before the window closed still reach the module.
    if (portOpen()) drain(2s);
    sender_.reset();
}

bool MidiDevice::drain(std::chrono::milliseconds timeout) {
    return sender_ && sender_->drain(timeout);
}

device::MidiSender& MidiDevice::sender() {
    if (sender_) return *sender_;
    // The sender's thread calls these; the window hears of them on its own thread, and
    // nothing of it once it has gone (its queued calls go with it).
    device::SenderListener listener{
        [this](const device::Problem& problem) {
            QMetaObject::invokeMethod(
                this, [this, problem] { takeProblem(problem); }, Qt::QueuedConnection);
        },
        [this](SenderStatus) {
            QMetaObject::invokeMethod(this, &MidiDevice::takeStatus, Qt::QueuedConnection);
        }};
    sender_ = std::make_unique<device::MidiSender>(makePort_(), clock_, std::move(listener));
    sender_->setGap(gapMs_);
    return *sender_;
}

bool MidiDevice::portOpen() const {
    return open_ && status_ != SenderStatus::PortLost && status_ != SenderStatus::NoPort;
}

void MidiDevice::takeStatus() {
    // Reports may come late and out of step with what this thread did meanwhile; the
    // sender's own status is always the current one.
    const SenderStatus now = sender_ ? sender_->status() : SenderStatus::NoPort;
    if (now == status_) return;
    status_ = now;
    emit changed();
}

void MidiDevice::takeProblem(const device::Problem& problem) {
    // Failures of opening come back as results of the opening; here only what went wrong
    // while sending.
    if (problem.kind != device::ProblemKind::PortLost &&
        problem.kind != device::ProblemKind::SendFailed) {
        return;
    }
    takeStatus();
    emit failed(QString::fromStdString(device::DescribeProblem(problem)));
}

void MidiDevice::start() {
    if (!chosen_.isEmpty()) open(chosen_, true);
}

void MidiDevice::open(const QString& name, bool quietly) {
    const quint64 request = ++openRequest_;
    WhenReady<device::Problem>(
        this, sender().open(name.toStdString()), [this, name, quietly, request](auto problem) {
            if (request != openRequest_) return;
            open_ = !problem;
            if (open_ && name != chosen_) {
                chosen_ = name;
                remember(preference::kMidiPort, name);
            }
            status_ = sender_->status();
            if (problem && !quietly) {
                emit failed(QString::fromStdString(device::DescribeProblem(problem)));
            }
            emit changed();
        });
}

void MidiDevice::refreshPorts() {
    WhenReady<device::PortList>(this, sender().listPorts(), [this](device::PortList list) {
        ports_ = std::move(list);
        if (ports_->problem) {
            if (!noSystemReported_) {
                noSystemReported_ = true;
                emit failed(QString::fromStdString(device::DescribeProblem(ports_->problem)));
            }
        } else {
            noSystemReported_ = false;
            const std::string chosen = chosen_.toStdString();
            const auto listed = std::find_if(
                ports_->names.begin(), ports_->names.end(),
                [&](const std::string& name) { return device::SamePort(name, chosen); });
            // By the name listed now: ALSA may number the same port differently each session.
            if (!chosen.empty() && listed != ports_->names.end() && !portOpen()) {
                open(QString::fromStdString(*listed), true);
            }
        }
        emit changed();
    });
}

void MidiDevice::choosePort(const QString& name) {
    open(name, false);
}

void MidiDevice::forgetPort() {
    ++openRequest_;
    chosen_.clear();
    open_ = false;
    preferences_->remove(QLatin1String(preference::kMidiPort));
    preferences_->sync();
    if (sender_) sender_->close();
    takeStatus();
    emit changed();
}

void MidiDevice::setGapMs(int milliseconds) {
    gapMs_ = device::ClampGap(milliseconds);
    if (sender_) sender_->setGap(gapMs_);
    remember(preference::kMidiGapMs, gapMs_);
    emit changed();
}

void MidiDevice::setLive(bool on) {
    live_ = on;
    remember(preference::kMidiLive, on);
    emit changed();
}

void MidiDevice::sendEach(const std::vector<ByteArray>& messages) {
    if (!sender_) return;
    for (const ByteArray& message : messages) {
        sender_->send(message, device::MidiSender::Queueing::Every);
    }
}

void MidiDevice::sendLatest(ByteArray message) {
    if (sender_) sender_->send(std::move(message));
}

void MidiDevice::remember(const char* key, const QVariant& value) {
    preferences_->setValue(QLatin1String(key), value);
    // Written at once: a program that is killed still knows the port next time.
    preferences_->sync();
}

}  // namespace lumidot
