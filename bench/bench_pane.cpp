// How fast the output pane shows clipboard-sized text, next to a plain QPlainTextEdit (the
// pane's old self) as the peer. Runs on the offscreen platform.
#include <QApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QPlainTextEdit>
#include <QProcess>
#include <QTest>
#include <cstdio>

#include "mainwindow/look.h"
#include "mainwindow/read_only_text_box.h"
#include "measure.h"

namespace {

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
    lumidot::StyleReadOnlyPane(&pane);
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
        PrintMs(label, runs, Measure(runs, [&](int i) {
                    pane.setText(texts[i % 2]);
                    pane.grab();
                }));
        std::printf("  %-56s %+ld KiB resident beside the text (%lld KiB of UTF-16)\n",
                    "memory of the laid-out pane:", ResidentKilobytes() - before,
                    static_cast<long long>(texts[0].size() * 2 / 1024));

        std::snprintf(label, sizeof label, "  then Ctrl+End and paint");
        PrintMs(label, 20, Measure(20, [&](int i) {
                    QTest::keyClick(&pane, i % 2 ? Qt::Key_Home : Qt::Key_End, Qt::ControlModifier);
                    pane.grab();
                }));
        std::snprintf(label, sizeof label, "  then a drag step of the selection and paint");
        QTest::mousePress(pane.viewport(), Qt::LeftButton, {}, QPoint(5, 5));
        PrintMs(label, 200, Measure(200, [&](int i) {
                    QTest::mouseMove(pane.viewport(), QPoint(5 + i % 500, 5 + i % 40));
                    pane.grab();
                }));
        QTest::mouseRelease(pane.viewport(), Qt::LeftButton, {}, QPoint(5, 5));
        std::snprintf(label, sizeof label, "  then Select All and paint");
        PrintMs(label, 20, Measure(20, [&](int) {
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
        PrintMs(label, peerRuns,
                Measure(peerRuns, [&](int i) { PlainTextEditMillis(edit, peerTexts[i % 2]); }));
    }
}

}  // namespace

int RunPaneBench(const char* program) {
    BenchPane(program);
    return 0;
}

int RunPanePeer(int index, long long size) {
    return PeerRun(index, size);
}
