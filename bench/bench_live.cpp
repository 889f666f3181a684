// Live sending while painting: a stroke of pixel events through MainForm's handler with live
// sending off, then on (every regeneration's message handed to the real sender, whose
// thread takes it to a port that only counts). The figure the user feels is the second.
#include <QSettings>
#include <QTemporaryDir>
#include <QTest>
#include <cstdio>

#include "editor/grid_input.h"
#include "mainwindow/main_form.h"
#include "mainwindow/midi_menu.h"
#include "measure.h"

namespace {

using lumidot::device::Bytes;

class CountingPort final : public lumidot::device::OutputPort {
public:
    explicit CountingPort(long* sent) : sent_(sent) {}
    lumidot::device::PortList list() override { return {{"bench"}, {}}; }
    lumidot::device::Problem open(const std::string&) override { return {}; }
    lumidot::device::Problem send(const Bytes&) override {
        ++*sent_;
        return {};
    }
    void close() override {}

private:
    long* sent_;
};

}  // namespace

void RunLiveSendingBenchmark(lumidot::Platform platform) {
    // The preferences this writes (the port, live sending) stay in a folder of the bench's.
    QTemporaryDir config;
    QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, config.path());
    QTemporaryDir folder;
    long sent = 0;
    platform.midiPort = [&sent] { return std::make_unique<CountingPort>(&sent); };
    lumidot::MainForm window(platform, folder.path());
    window.Form_Load();
    lumidot::MidiDevice& device = window.midi().device();
    device.choosePort(QStringLiteral("bench"));
    if (!QTest::qWaitFor([&] { return device.portOpen(); }, 5000)) {
        std::printf("live sending: the port did not open\n");
        return;
    }

    std::printf("\nPaint stroke with live sending (MainForm's pixel handler, per event)\n");
    const int runs = 20000;
    Figures off{}, on{};
    for (bool live : {false, true}) {
        device.setLive(live);
        const Figures f = Measure(runs, [&](int i) {
            window.gridInput().FDPixelMouseMove(i % 256, 0, i % 3 == 0 ? 2 : 1);
            // The window's thread takes the sender's status reports between events.
            if (i % 16 == 0) QCoreApplication::processEvents();
        });
        Print(live ? "pixel painted, live sending on" : "pixel painted, live sending off", runs, f);
        (live ? on : off) = f;
    }
    device.drain(std::chrono::seconds(10));
    std::printf("live sending on / off, median: %.2fx (%ld messages reached the port)\n",
                on.median / off.median, sent);
    device.setLive(false);
    device.forgetPort();
}
