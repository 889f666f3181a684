// Reading a MIDI file of 100,000 SysEx messages (about 8 MB) and describing them all, as
// lumidot-cli describe does; the peer is Python's mido reading the same file.
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <random>

#include "codec/graphic_page.h"
#include "codec/lcd_text.h"
#include "decode/file_messages.h"
#include "files/midi_file.h"
#include "mainwindow/window_model.h"
#include "measure.h"

namespace {

constexpr int kMessages = 100000;

// Mostly store messages, as a song with animated pictures holds them, with some text and
// display messages, every 20 milliseconds.
lumidot::ByteArray Song() {
    std::mt19937 random(3);
    std::vector<lumidot::TimedMessage> messages;
    messages.reserve(kMessages);
    for (int i = 0; i < kMessages; ++i) {
        std::string hex;
        if (i % 50 == 1) {
            hex = lumidot::MakeTextSysEx("Frame " + std::to_string(i), "CP1252");
        } else if (i % 50 == 2) {
            hex = lumidot::MakeGraphicDisplaySysEx(static_cast<std::uint8_t>(1 + i % 10));
        } else {
            lumidot::Page page{};
            for (bool& pixel : page) pixel = random() & 1;
            hex = lumidot::MakeGraphicStoreSysEx(page, static_cast<std::uint8_t>(1 + i % 10));
        }
        lumidot::ByteArray bytes;
        lumidot::HexTextToBytes(hex, bytes);
        messages.push_back({i * 0.02, std::move(bytes)});
    }
    return lumidot::WriteMidi(messages);
}

// mido reading the file (median milliseconds over runs), or a negative number when Python
// or mido is not there.
double MidoMilliseconds(const QString& path, int runs) {
    static const char* script = R"(
import sys, time, mido
path, runs, count = sys.argv[1], int(sys.argv[2]), int(sys.argv[3])
times = []
for _ in range(runs):
    start = time.perf_counter()
    song = mido.MidiFile(path)
    times.append(time.perf_counter() - start)
    assert sum(msg.type == 'sysex' for msg in song.tracks[0]) == count
times.sort()
print(times[len(times) // 2] * 1000)
)";
    QProcess python;
    python.start(QStringLiteral("/usr/bin/python3"),
                 {QStringLiteral("-c"), QString::fromLatin1(script), path, QString::number(runs),
                  QString::number(kMessages)});
    if (!python.waitForFinished(600000) || python.exitCode() != 0) return -1;
    bool ok = false;
    const double ms = python.readAllStandardOutput().trimmed().toDouble(&ok);
    return ok ? ms : -1;
}

}  // namespace

void RunFileBenchmarks(const QString& folder) {
    const lumidot::ByteArray song = Song();
    const QString path = folder + QStringLiteral("/song.mid");
    QFile out(path);
    if (!out.open(QIODevice::WriteOnly)) return;
    out.write(reinterpret_cast<const char*>(song.data()), static_cast<qint64>(song.size()));
    out.close();

    std::printf(
        "\nA MIDI file read from disk and every message described, as lumidot-cli\n"
        "describe does (peer: Python's mido reading the same file)\n");
    const auto readAndDescribe = [&](int) {
        QFile file(path);
        file.open(QIODevice::ReadOnly);
        const QByteArray bytes = file.readAll();
        lumidot::WindowModel model("CP1252");
        lumidot::MessageListDescription list(model);
        lumidot::DescribeFile({reinterpret_cast<const std::uint8_t*>(bytes.constData()),
                               static_cast<std::size_t>(bytes.size())},
                              "song.mid", model.layout(), list);
        if (list.count() != kMessages || list.results().isEmpty()) std::printf("    wrong count\n");
    };
    const int runs = 11;
    char label[128];
    std::snprintf(label, sizeof label, "%d SysEx messages in a MIDI file (%zu KiB)", kMessages,
                  song.size() / 1024);
    const Figures ours = Measure(runs, readAndDescribe);
    PrintMs(label, runs, ours);
    const double mido = MidoMilliseconds(path, runs);
    if (mido < 0) {
        std::printf("    mido: not available (Debian package python3-mido)\n");
    } else {
        std::printf(
            "    mido reading the same file: %8.1f ms   ours (reading and describing) is "
            "%.1fx faster\n",
            mido, mido / (ours.median / 1000));
    }
}
