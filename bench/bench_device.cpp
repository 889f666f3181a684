// MIDI output: what queueing a live message costs the thread that edits (the window's), and
// how many messages the sending side gets through when the pauses are not counted.
#include <QElapsedTimer>
#include <cstdio>
#include <memory>

#include "codec/graphic_page.h"
#include "device/midi_sender.h"
#include "measure.h"

namespace {

using lumidot::device::Bytes;
using lumidot::device::Micros;

// Takes every message and does nothing with it, so only our own work is measured.
class DiscardingPort final : public lumidot::device::OutputPort {
public:
    lumidot::device::PortList list() override { return {{"bench"}, {}}; }
    lumidot::device::Problem open(const std::string&) override { return {}; }
    lumidot::device::Problem send(const Bytes&) override {
        ++sent;
        return {};
    }
    void close() override {}
    long sent = 0;
};

class InstantClock final : public lumidot::device::Clock {
public:
    Micros now() const override { return now_; }
    void advance(Micros by) { now_ += by; }

private:
    Micros now_{0};
};

Bytes StoreMessage(int page, int shift) {
    lumidot::Page pixels{};
    for (int i = shift % 7; i < lumidot::kPagePixels; i += 7) pixels[i] = true;
    lumidot::ByteArray bytes;
    lumidot::HexTextToBytes(lumidot::MakeGraphicStoreSysEx(pixels, page), bytes);
    return bytes;
}

}  // namespace

void RunDeviceBenchmarks() {
    using lumidot::device::MidiSender;
    std::printf("\nMIDI output (a port that discards; the pauses between messages not counted)\n");

    // Painting on page 1 and typing, as the window would queue them while the worker thread
    // paces the port: each call is one store or text message replacing its queued elder.
    std::vector<Bytes> live;
    for (int i = 0; i < 64; ++i) live.push_back(StoreMessage(1, i));
    live.push_back({0xF0, 0x41, 0x10, 0x45, 0x12, 0x10, 0x00, 0x00, 0x48, 0x69, 0x7F, 0xF7});
    lumidot::device::SteadyClock steady;
    {
        MidiSender sender(std::make_unique<DiscardingPort>(), steady);
        sender.open("bench").get();
        const int runs = 200000;
        Print("queue one live message (editing thread)", runs,
              Measure(runs, [&](int i) { sender.send(live[i % live.size()]); }));
        // Every page's store pending at once: the replacement looks through all of them.
        for (int page = 2; page <= 10; ++page) sender.send(StoreMessage(page, page));
        Print("queue one live message, ten pages pending", runs,
              Measure(runs, [&](int i) { sender.send(live[i % live.size()]); }));
    }

    // Distinct messages through the whole sender, queue to port, on a clock that jumps to
    // each message's turn.
    InstantClock clock;
    auto* port = new DiscardingPort;
    MidiSender sender(std::unique_ptr<lumidot::device::OutputPort>(port), clock, {},
                      MidiSender::Drive::Manual);
    sender.open("bench");
    sender.pump();
    std::vector<Bytes> distinct;
    for (int page = 1; page <= 10; ++page) distinct.push_back(StoreMessage(page, page));
    const int messages = 1000000;
    QElapsedTimer timer;
    timer.start();
    for (int i = 0; i < messages; ++i) {
        sender.send(distinct[i % distinct.size()]);
        while (auto wait = sender.pump()) clock.advance(*wait);
    }
    const double seconds = timer.nsecsElapsed() / 1e9;
    std::printf("%-52s %7d msgs   %8.0f messages/s (%.2f us each)\n",
                "queue throughput, queued to handed over", messages, port->sent / seconds,
                seconds * 1e6 / port->sent);
}
