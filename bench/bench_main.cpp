// Prints how long the main window's handlers take, each from the event to the regenerated
// output, over many runs, and how fast the output pane shows clipboard-sized text next to
// a plain QPlainTextEdit. Runs on the offscreen platform with Qt's own clipboard.
#include <QApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QProcess>
#include <QPushButton>
#include <QScrollBar>
#include <QTemporaryDir>
#include <QTest>
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <random>
#include <vector>

#include "codec/graphic_page.h"
#include "editor/up_down.h"
#include "mainwindow/main_form.h"
#include "mainwindow/platform.h"
#include "mainwindow/read_only_text_box.h"
#include "mainwindow/small_widgets.h"
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
    return {micros[micros.size() / 2],
            micros[std::min(micros.size() - 1, micros.size() * 99 / 100)]};
}

void Print(const char* what, int runs, Figures f) {
    std::printf("%-52s %7d runs   median %8.1f us   p99 %8.1f us\n", what, runs, f.median, f.p99);
}

// --- the output pane with clipboard-sized text ------------------------------------

struct PaneText {
    const char* name;
    QString piece;  // repeated to the size
};

const PaneText kPaneTexts[] = {
    {"10 MB line without spaces", QStringLiteral("F041104512")},
    {"10 MB spaced line", QStringLiteral("F0 41 10 45 12 10 00 00 48 65 6C 6C 6F 7C F7 ")},
    {"100,000 lines", QStringLiteral("F0 41 10 45 12 10 00 00 48 65 6C 6C 6F 7C F7\r\n")},
};
constexpr qsizetype kTenMegabytes = 10 * 1000 * 1000;

qsizetype FullSize(const PaneText& text) {
    return text.piece.endsWith('\n') ? 100000 * text.piece.size() : kTenMegabytes;
}

QString Repeated(const QString& piece, qsizetype size, QChar first) {
    QString text;
    text.reserve(size);
    while (text.size() + piece.size() <= size) text += piece;
    text[0] = first;  // each run sets a text of its own
    return text;
}

// Shows a widget as the main window shows its output pane.
void LikeThePane(QAbstractScrollArea& pane) {
    pane.setFont(lumidot::TextBoxFont());
    QPalette colours = pane.palette();
    colours.setColor(QPalette::Base, colours.color(QPalette::Button));
    pane.setPalette(colours);
    pane.setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    pane.resize(569, 57);
    pane.show();
}

// The text as the old pane was given it, and the time to set it and paint it once.
double PlainTextEditMillis(QPlainTextEdit& edit, const QString& text) {
    QString shown = text;
    shown.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
    QElapsedTimer timer;
    timer.start();
    edit.setPlainText(shown);
    edit.grab();
    return timer.nsecsElapsed() / 1e6;
}

// "bench peer N SIZE": one run of the plain text edit on text N, in a process of its own
// that the caller can stop.
int PeerRun(int index, qsizetype size) {
    QPlainTextEdit edit;
    edit.setReadOnly(true);
    LikeThePane(edit);
    const PaneText& text = kPaneTexts[index];
    std::printf("%.1f\n", PlainTextEditMillis(edit, Repeated(text.piece, size, 'F')));
    return 0;
}

void PrintMillis(const char* what, int runs, Figures f) {
    std::printf("%-58s %4d runs   median %8.2f ms   p99 %8.2f ms\n", what, runs, f.median / 1000.0,
                f.p99 / 1000.0);
}

long ResidentKilobytes() {
    QFile status(QStringLiteral("/proc/self/status"));
    if (!status.open(QIODevice::ReadOnly)) return 0;
    for (const QByteArray& line : status.readAll().split('\n')) {
        if (line.startsWith("VmRSS:")) return line.mid(6).trimmed().split(' ').first().toLong();
    }
    return 0;
}

void BenchPane(const char* program) {
    std::printf(
        "\nOutput pane (569 x 57, wrapping): setting the text and painting the first screen\n");
    char label[128];
    for (int index = 0; index < 3; ++index) {
        const PaneText& shape = kPaneTexts[index];
        const qsizetype size = FullSize(shape);
        const QString texts[] = {Repeated(shape.piece, size, 'F'),
                                 Repeated(shape.piece, size, 'E')};
        lumidot::ReadOnlyTextBox pane;
        LikeThePane(pane);
        const long before = ResidentKilobytes();
        const int runs = index == 2 ? 100 : 40;
        std::snprintf(label, sizeof label, "%s, ReadOnlyTextBox", shape.name);
        PrintMillis(label, runs, Measure(runs, [&](int i) {
                        pane.setText(texts[i % 2]);
                        pane.grab();
                    }));
        std::printf("  %-56s %+ld KiB resident beside the text (%lld KiB of UTF-16)\n",
                    "memory of the laid-out pane:", ResidentKilobytes() - before,
                    static_cast<long long>(texts[0].size() * 2 / 1024));

        std::snprintf(label, sizeof label, "  then Ctrl+End and paint");
        PrintMillis(label, 20, Measure(20, [&](int i) {
                        QTest::keyClick(&pane, i % 2 ? Qt::Key_Home : Qt::Key_End,
                                        Qt::ControlModifier);
                        pane.grab();
                    }));
        std::snprintf(label, sizeof label, "  then a drag step of the selection and paint");
        QTest::mousePress(pane.viewport(), Qt::LeftButton, {}, QPoint(5, 5));
        PrintMillis(label, 200, Measure(200, [&](int i) {
                        QTest::mouseMove(pane.viewport(), QPoint(5 + i % 500, 5 + i % 40));
                        pane.grab();
                    }));
        QTest::mouseRelease(pane.viewport(), Qt::LeftButton, {}, QPoint(5, 5));
        std::snprintf(label, sizeof label, "  then Select All and paint");
        PrintMillis(label, 20, Measure(20, [&](int) {
                        pane.selectAll();
                        pane.grab();
                    }));

        // The plain text edit, first at full size in a process of its own that is stopped
        // when it takes too long; then, here, at a size it manages in reasonable time.
        constexpr int kPatienceSeconds = 10;
        QProcess peer;
        peer.start(QString::fromLocal8Bit(program),
                   {QStringLiteral("peer"), QString::number(index), QString::number(size)});
        QElapsedTimer waited;
        waited.start();
        std::snprintf(label, sizeof label, "%s, QPlainTextEdit", shape.name);
        qsizetype peerSize = size;
        if (!peer.waitForFinished(kPatienceSeconds * 1000)) {
            peer.kill();
            peer.waitForFinished();
            std::printf("%-58s stopped after %.1f s without finishing\n", label,
                        waited.nsecsElapsed() / 1e9);
            peerSize = 400 * 1000;
            std::snprintf(label, sizeof label, "%s, QPlainTextEdit on 400 KB instead", shape.name);
        } else if (const double millis = peer.readAllStandardOutput().trimmed().toDouble();
                   millis > 1000) {
            std::printf("%-58s %4d run    %8.2f ms (one run only: it is slow)\n", label, 1, millis);
            continue;
        }
        QPlainTextEdit edit;
        edit.setReadOnly(true);
        LikeThePane(edit);
        const QString peerTexts[] = {Repeated(shape.piece, peerSize, 'F'),
                                     Repeated(shape.piece, peerSize, 'E')};
        const int peerRuns = peerSize == size ? 10 : 3;
        PrintMillis(label, peerRuns,
                    Measure(peerRuns, [&](int i) { PlainTextEditMillis(edit, peerTexts[i % 2]); }));
    }
}

}  // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    lumidot::QtPrompts prompts;
    lumidot::SystemClipboard clipboard;
    lumidot::ThreadSleeper sleeper;
    lumidot::Platform platform{prompts, clipboard, sleeper};
    QTemporaryDir folder;

    if (argc > 3 && QByteArray(argv[1]) == "peer") return PeerRun(atoi(argv[2]), atoll(argv[3]));
    // "bench pane" measures only the output pane.
    if (argc > 1 && QByteArray(argv[1]) == "pane") {
        BenchPane(argv[0]);
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
        Print(label, runs, Measure(runs, [&](int i) { ui.udPageNum->setValue(1 + i % 10); }));
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
                    messages << QString::fromStdString(lumidot::MakeGraphicStoreSysEx(
                        page, static_cast<std::uint8_t>(1 + i % 10)));
                    break;
                case 1:
                    messages << QStringLiteral("F0 41 10 45 12 10 00 00 48 65 6C 6C 6F 7C F7");
                    break;
                default:
                    messages << QStringLiteral("F0 41 10 45 12 10 20 00 05 4B F7");
                    break;
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
    if (!onlyDecoding) BenchPane(argv[0]);
    return 0;
}
