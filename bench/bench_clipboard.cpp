// How long a decoding run holds the window when the clipboard's owner never answers: from
// the start of the run to the read error box, on the real X11 clipboard with the real pauses.
// As the peer, the time Qt's own QClipboard::text() takes against the same owner.
// Runs under X (bench/clipboard.sh starts a private Xvfb) with a silent test owner.
#include <QApplication>
#include <QClipboard>
#include <QElapsedTimer>
#include <QProcess>
#include <QTemporaryDir>
#include <algorithm>
#include <cstdio>
#include <functional>
#include <vector>

#include "mainwindow/main_form.h"
#include "mainwindow/platform.h"

namespace {

// Answers every box at once and notes when the first critical one appeared.
class TimedPrompts : public lumidot::Prompts {
public:
    QElapsedTimer timer;
    double errorBoxMs = -1;

    Answer showMessage(QWidget*, const QString&, const QString&, Icon icon, Buttons,
                       Answer defaultAnswer) override {
        if (icon == Icon::Critical && errorBoxMs < 0) errorBoxMs = timer.nsecsElapsed() / 1e6;
        return defaultAnswer;
    }
    int runModal(QDialog&) override { return 0; }
};

void PrintFigures(const char* what, std::vector<double> ms) {
    std::sort(ms.begin(), ms.end());
    const double median = ms[ms.size() / 2];
    const double p99 = ms[std::min(ms.size() - 1, ms.size() * 99 / 100)];
    std::printf("%-52s %7zu runs   median %8.1f ms   p99 %8.1f ms\n", what, ms.size(), median, p99);
}

}  // namespace

int RunClipboardBench(int argc, char** argv) {
    QApplication app(argc, argv);
    if (argc < 3 || QGuiApplication::platformName() != QStringLiteral("xcb")) {
        std::fprintf(stderr, "usage (under X, platform xcb): lumidot_bench clipboard OWNER\n");
        return 1;
    }
    QProcess owner;
    owner.start(QString::fromLocal8Bit(argv[2]), {QStringLiteral("deaf")});
    if (!owner.waitForReadyRead(10000) || owner.readLine().trimmed() != "ready") {
        std::fprintf(stderr, "the silent clipboard owner did not start\n");
        return 1;
    }

    TimedPrompts prompts;
    lumidot::SystemClipboard clipboard;
    lumidot::ThreadSleeper sleeper;
    lumidot::QtFileDialogs fileDialogs;
    lumidot::Platform platform{prompts, clipboard, sleeper, fileDialogs};
    QTemporaryDir folder;
    lumidot::MainForm window(platform, folder.path());
    window.Form_Load();

    std::printf("Clipboard owner that never answers (real X11 clipboard, real pauses)\n");
    std::vector<double> ours;
    for (int run = 0; run < 10; ++run) {
        prompts.errorBoxMs = -1;
        prompts.timer.start();
        window.cmdSysExDecode_Click();
        if (prompts.errorBoxMs < 0) {
            std::fprintf(stderr, "run %d: no read error box\n", run + 1);
            return 1;
        }
        ours.push_back(prompts.errorBoxMs);
    }
    PrintFigures("unresponsive owner to error box", ours);

    std::vector<double> qt;
    QElapsedTimer timer;
    for (int run = 0; run < 3; ++run) {
        timer.start();
        (void)QGuiApplication::clipboard()->text(QClipboard::Clipboard);
        qt.push_back(timer.nsecsElapsed() / 1e6);
    }
    PrintFigures("  peer: Qt's QClipboard::text(), same owner", qt);

    window.hide();
    owner.kill();
    owner.waitForFinished();
    return 0;
}
