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
#include <cstdlib>
#include <functional>
#include <random>
#include <vector>

#include "codec/graphic_page.h"
#include "editor/grid_input.h"
#include "editor/up_down.h"
#include "mainwindow/main_form.h"
#include "mainwindow/platform.h"
#include "measure.h"
#include "support/fakes.h"
#include "ui_main_form.h"

// bench_clipboard.cpp: needs a real X server rather than the offscreen platform.
int RunClipboardBench(int argc, char** argv);
// bench_live.cpp: painting with live sending off and on.
void RunLiveSendingBenchmark(lumidot::Platform platform);

int main(int argc, char** argv) {
    // Each figure as soon as it is measured, also into a pipe.
    std::setvbuf(stdout, nullptr, _IOLBF, 0);
    if (argc > 1 && QByteArray(argv[1]) == "clipboard") return RunClipboardBench(argc, argv);
    // "bench device" measures only the MIDI output.
    if (argc > 1 && QByteArray(argv[1]) == "device") {
        RunDeviceBenchmarks();
        return 0;
    }
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    lumidot::QtPrompts prompts;
    lumidot::SystemClipboard clipboard;
    lumidot::ThreadSleeper sleeper;
    lumidot::QtFileDialogs fileDialogs;
    lumidot::Platform platform{prompts, clipboard, sleeper, fileDialogs};
    QTemporaryDir folder;

    if (argc > 3 && QByteArray(argv[1]) == "peer")
        return RunPanePeer(atoi(argv[2]), atoll(argv[3]));
    // "bench pane" measures only the output pane.
    if (argc > 1 && QByteArray(argv[1]) == "pane") return RunPaneBench(argv[0]);
    // "bench files" measures only reading and describing a MIDI file, for profiling.
    if (argc > 1 && QByteArray(argv[1]) == "files") {
        RunFileBenchmarks(folder.path());
        return 0;
    }
    // "bench live" measures only painting with live sending.
    if (argc > 1 && QByteArray(argv[1]) == "live") {
        RunLiveSendingBenchmark(platform);
        return 0;
    }
    // "bench pictures" measures only the picture import and undo.
    if (argc > 1 && QByteArray(argv[1]) == "pictures") {
        RunPictureBenchmarks(platform, folder.path());
        return 0;
    }
    // "bench decode" measures only the decoding, for profiling.
    const bool onlyDecoding = argc > 1 && QByteArray(argv[1]) == "decode";
    if (!onlyDecoding) {
        std::printf(
            "Handler timings (a user action through to the regenerated output;\n"
            "the offscreen platform's clipboard lives in this process)\n");
    }
    for (bool autoCopy : {false, true}) {
        if (onlyDecoding) break;
        lumidot::MainForm window(platform, folder.path());
        window.Form_Load();
        Ui::MainForm& ui = window.form();
        if (autoCopy) QTest::mouseClick(ui.chkSysExCopyAuto, Qt::LeftButton);
        if (window.SysExCopyAuto() != autoCopy) {
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
                  window.gridInput().FDPixelMouseMove(i % 256, 0, i % 3 == 0 ? 2 : 1);
              }));
        std::snprintf(label, sizeof label, "shift right, %s", mode);
        Print(label, runs, Measure(runs, [&](int) { window.cmdFDShiftRight_Click(); }));
        std::snprintf(label, sizeof label, "page change, %s", mode);
        Print(label, runs, Measure(runs, [&](int i) { ui.udPageNum->setValue(1 + i % 10); }));
        // The drag moves a picture that shows every shift.
        ui.udPageNum->setValue(1);
        std::snprintf(label, sizeof label, "drag step (one shift), %s", mode);
        Print(label, runs, Measure(runs, [&](int i) {
                  window.gridInput().picMove_MouseDown(0, 0);
                  window.gridInput().picMove_MouseMove(1, i % 2 ? 22 : -22, 0);
              }));
        // The same actions with the whole window painted again at once, as the screen will
        // show them: the upper bound of what a user waits for.
        if (!autoCopy) {
            std::snprintf(label, sizeof label, "pixel painted, whole window painted again");
            Print(label, 2000, Measure(2000, [&](int i) {
                      window.gridInput().FDPixelMouseMove(i % 256, 0, i % 3 == 0 ? 2 : 1);
                      window.grab();
                  }));
            std::snprintf(label, sizeof label, "LCD text keystroke, whole window painted again");
            Print(label, 2000, Measure(2000, [&](int i) {
                      QTest::keyClick(ui.txtTextIn, i % 2 ? Qt::Key_Backspace : Qt::Key_H);
                      window.grab();
                  }));
        }
        window.hide();
    }

    RunDecodingBenchmarks(folder.path());
    if (!onlyDecoding) RunPaneBench(argv[0]);
    if (!onlyDecoding) RunDeviceBenchmarks();
    if (!onlyDecoding) RunLiveSendingBenchmark(platform);
    if (!onlyDecoding) RunFileBenchmarks(folder.path());
    if (!onlyDecoding) RunPictureBenchmarks(platform, folder.path());
    return 0;
}
