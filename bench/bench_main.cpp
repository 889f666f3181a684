// Prints how long the main window's handlers take, each from the event to the regenerated
// output, over many runs. Runs on the offscreen platform with Qt's own clipboard.
#include <QApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QLineEdit>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>
#include <algorithm>
#include <cstdio>
#include <functional>
#include <random>
#include <vector>

#include "codec/graphic_page.h"
#include "editor/up_down.h"
#include "mainwindow/main_form.h"
#include "mainwindow/platform.h"
#include "support/fakes.h"
#include "ui_main_form.h"

namespace {

struct Figures {
    double median;
    double p99;
};

Figures Measure(int runs, const std::function<void(int)>& action) {
    std::vector<double> micros;
    micros.reserve(runs);
    QElapsedTimer timer;
    for (int i = 0; i < runs; ++i) {
        timer.start();
        action(i);
        micros.push_back(timer.nsecsElapsed() / 1000.0);
    }
    std::sort(micros.begin(), micros.end());
    return {micros[micros.size() / 2], micros[std::min(micros.size() - 1, micros.size() * 99 / 100)]};
}

void Print(const char* what, int runs, Figures f) {
    std::printf("%-52s %7d runs   median %8.1f us   p99 %8.1f us\n", what, runs, f.median, f.p99);
}

}  // namespace

// bench_clipboard.cpp: needs a real X server rather than the offscreen platform.
int RunClipboardBench(int argc, char** argv);

int main(int argc, char** argv) {
    if (argc > 1 && QByteArray(argv[1]) == "clipboard") return RunClipboardBench(argc, argv);
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    lumidot::QtPrompts prompts;
    lumidot::SystemClipboard clipboard;
    lumidot::ThreadSleeper sleeper;
    lumidot::Platform platform{prompts, clipboard, sleeper};
    QTemporaryDir folder;

    // "bench decode" measures only the decoding, for profiling.
    const bool onlyDecoding = argc > 1 && QByteArray(argv[1]) == "decode";
    if (!onlyDecoding) {
        std::printf("Handler timings (a user action through to the regenerated output;\n"
                    "the offscreen platform's clipboard lives in this process)\n");
    }
    for (bool autoCopy : {false, true}) {
        if (onlyDecoding) break;
        lumidot::MainForm window(platform, folder.path());
        window.Form_Load();
        Ui::MainForm& ui = window.form();
        if (autoCopy) QTest::mouseClick(ui.chkSysExCopyAuto, Qt::LeftButton);
        if (window.SysExCopyAuto != autoCopy) {
            std::printf("could not switch automatic copy %s\n", autoCopy ? "on" : "off");
            return 1;
        }
        const char* mode = autoCopy ? "automatic copy on" : "automatic copy off";
        const int runs = 10000;
        char label[128];

        // Alternate between typing a character and deleting it, so the text stays short.
        std::snprintf(label, sizeof label, "LCD text keystroke, %s", mode);
        Print(label, runs, Measure(runs, [&](int i) {
                  if (i % 2 == 0) {
                      QTest::keyClick(ui.txtTextIn, Qt::Key_H);
                  } else {
                      QTest::keyClick(ui.txtTextIn, Qt::Key_Backspace);
                  }
              }));
        std::snprintf(label, sizeof label, "prefix change, %s", mode);
        Print(label, runs, Measure(runs, [&](int i) {
                  ui.txtHexPrefix->setText(i % 2 ? QStringLiteral("0x") : QStringLiteral("$"));
              }));
        std::snprintf(label, sizeof label, "pixel painted, %s", mode);
        Print(label, runs, Measure(runs, [&](int i) {
                  window.FDPixelMouseMove(i % 256, 0, i % 3 == 0 ? 2 : 1);
              }));
        std::snprintf(label, sizeof label, "shift right, %s", mode);
        Print(label, runs, Measure(runs, [&](int) { window.cmdFDShiftRight_Click(); }));
        std::snprintf(label, sizeof label, "page change, %s", mode);
        Print(label, runs, Measure(runs, [&](int i) {
                  ui.udPageNum->setValue(1 + i % 10);
              }));
        std::snprintf(label, sizeof label, "drag step (one shift), %s", mode);
        Print(label, runs, Measure(runs, [&](int i) {
                  window.picMove_MouseDown(0, 0);
                  window.picMove_MouseMove(1, i % 2 ? 22 : -22, 0);
              }));
        window.hide();
    }

    // Decoding: a clipboard holding thousands of store, text and display messages, read
    // through a fake clipboard and a results window that closes at once.
    lumidot::testing::FakePlatform fake;
    lumidot::MainForm window(fake.platform, folder.path());
    window.Form_Load();
    std::mt19937 random(7);
    for (int count : {1000, 5000}) {
        QStringList messages;
        for (int i = 0; i < count; ++i) {
            lumidot::Page page{};
            for (bool& pixel : page) pixel = random() & 1;
            switch (i % 3) {
                case 0:
                    messages << QString::fromStdString(
                        lumidot::MakeGraphicStoreSysEx(page, static_cast<std::uint8_t>(1 + i % 10)));
                    break;
                case 1: messages << QStringLiteral("F0 41 10 45 12 10 00 00 48 65 6C 6C 6F 7C F7"); break;
                default: messages << QStringLiteral("F0 41 10 45 12 10 20 00 05 4B F7"); break;
            }
        }
        fake.clipboard.text = messages.join(QStringLiteral("\r\n"));
        const int runs = 5;
        char label[128];
        std::snprintf(label, sizeof label, "decode %d messages (%lld KiB of text)", count,
                      static_cast<long long>(fake.clipboard.text.size() / 1024));
        const Figures f = Measure(runs, [&](int) { window.cmdSysExDecode_Click(); });
        std::printf("%-52s %7d runs   median %8.1f ms   max %8.1f ms\n", label, runs,
                    f.median / 1000.0, f.p99 / 1000.0);
    }
    window.hide();
    return 0;
}
