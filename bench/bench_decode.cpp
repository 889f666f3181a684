// Decoding runs through the window, from pressing "Read from clipboard" to the results (or
// to the message box of a refused text), with clipboards of every shape up to 10 MB. The
// peer is Python's mido parsing the same messages from the same hex text.
#include <QProcess>
#include <QPushButton>
#include <QTemporaryFile>
#include <QTest>
#include <random>

#include "codec/graphic_page.h"
#include "mainwindow/main_form.h"
#include "measure.h"
#include "support/fakes.h"
#include "ui_main_form.h"

namespace {

constexpr qsizetype kTenMegabytes = 10 * 1024 * 1024;

// A mix of store, text and display messages, as the program writes them.
QStringList MixedMessages(int count) {
    std::mt19937 random(7);
    QStringList messages;
    for (int i = 0; i < count; ++i) {
        lumidot::Page page{};
        for (bool& pixel : page) pixel = random() & 1;
        switch (i % 3) {
            case 0:
                messages << QString::fromStdString(
                    lumidot::MakeGraphicStoreSysEx(page, static_cast<std::uint8_t>(1 + i % 10)));
                break;
            case 1:
                messages << QStringLiteral("F0 41 10 45 12 10 00 00 48 65 6C 6C 6F 7C F7");
                break;
            default:
                messages << QStringLiteral("F0 41 10 45 12 10 20 00 05 4B F7");
                break;
        }
    }
    return messages;
}

// Whole copies of unit up to about 10 MB.
QString Repeated(const QString& unit) {
    return unit.repeated(kTenMegabytes / unit.size());
}

// mido's parsing of the hex text (median milliseconds over runs), or a negative number when
// Python or mido is not there.
double MidoMilliseconds(const QString& hexText, int messages, int runs) {
    QTemporaryFile file;
    if (!file.open()) return -1;
    file.write(hexText.toLatin1());
    file.flush();
    static const char* script = R"(
import sys, time, mido
text = open(sys.argv[1]).read()
count, runs = int(sys.argv[2]), int(sys.argv[3])
times = []
for _ in range(runs):
    start = time.perf_counter()
    parsed = mido.parse_all(bytes.fromhex(text))
    times.append(time.perf_counter() - start)
    assert len(parsed) == count, len(parsed)
times.sort()
print(times[len(times) // 2] * 1000)
)";
    QProcess python;
    python.start(QStringLiteral("/usr/bin/python3"),
                 {QStringLiteral("-c"), QString::fromLatin1(script), file.fileName(),
                  QString::number(messages), QString::number(runs)});
    if (!python.waitForFinished(600000) || python.exitCode() != 0) return -1;
    bool ok = false;
    const double ms = python.readAllStandardOutput().trimmed().toDouble(&ok);
    return ok ? ms : -1;
}

}  // namespace

void RunDecodingBenchmarks(const QString& folder) {
    lumidot::testing::FakePlatform fake;
    lumidot::MainForm window(fake.platform, folder);
    window.Form_Load();
    Ui::MainForm& ui = window.form();
    const auto decode = [&](int) { QTest::mouseClick(ui.cmdSysExDecode, Qt::LeftButton); };

    std::printf(
        "\nDecoding runs through the window, to the results or the message box\n"
        "(peer: Python's mido parsing the same hex text)\n");
    for (int count : {1000, 10000, 100000}) {
        fake.clipboard.text = MixedMessages(count).join(QStringLiteral("\r\n"));
        const int runs = count >= 100000 ? 5 : 21;
        char label[128];
        std::snprintf(label, sizeof label, "%d mixed messages, one a line (%lld KiB)", count,
                      static_cast<long long>(fake.clipboard.text.size() / 1024));
        ResetPeakMemory();
        const long before = ResidentKilobytes();
        const Figures ours = Measure(runs, decode);
        PrintMs(label, runs, ours);
        std::printf("    peak memory above the start of the runs: %ld KiB\n",
                    PeakKilobytes() - before);
        const double mido = MidoMilliseconds(fake.clipboard.text, count, runs);
        if (mido < 0) {
            std::printf("    mido: not available (Debian package python3-mido)\n");
        } else {
            std::printf("    mido parse_all of the same text: %8.1f ms   ours is %.1fx faster\n",
                        mido, mido / (ours.median / 1000));
        }
    }

    struct Shape {
        const char* name;
        QString separator;
        QString text;
    };
    const QString message = QStringLiteral("F0 41 10 45 12 10 00 00 48 65 6C 6C 6F 7C F7");
    QString bare = message;
    bare.remove(QLatin1Char(' '));
    const Shape shapes[] = {
        {"10 MB line of messages, no separator", QString(), Repeated(bare)},
        {"10 MB line of messages, spaced", QStringLiteral(" "), Repeated(message + ' ')},
        {"10 MB line without spaces, spaced layout (refused)", QStringLiteral(" "), Repeated(bare)},
        {"10 MB of the shortest messages F0 F7", QStringLiteral(" "),
         Repeated(QStringLiteral("F0 F7 "))},
        {"10 MB of letters (refused)", QStringLiteral(" "), Repeated(QStringLiteral("x"))},
    };
    for (const Shape& shape : shapes) {
        ui.txtHexSep->setText(shape.separator);
        fake.clipboard.text = shape.text;
        const int runs = 5;
        PrintMs(shape.name, runs, Measure(runs, decode));
    }
    ui.txtHexSep->setText(QStringLiteral(" "));
    window.hide();
}
