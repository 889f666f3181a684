// Our MIDI files against mido's: mido reads every file we write to the same messages and
// times, and we read the files mido writes to the same messages, ticks and times.
#include <gtest/gtest.h>

#include <QFile>
#include <QTemporaryDir>
#include <random>

#include "files/file_bytes.h"
#include "files/midi_file.h"
#include "files/python_peer.h"

namespace lumidot::testing {
namespace {

// Prints "track tick seconds bytes" for every SysEx message, in the order of mido's merged
// playback, the seconds being mido's own. Ticks and tracks come from mido's tracks.
constexpr char kMidoRead[] = R"(
import sys, mido
mid = mido.MidiFile(sys.argv[1])
print('header', mid.type, mid.ticks_per_beat, len(mid.tracks))
rows = []
for index, track in enumerate(mid.tracks):
    tick = 0
    for msg in track:
        tick += msg.time
        if msg.type == 'sysex':
            rows.append((tick, index, msg.data))
rows.sort(key=lambda row: row[0])
seconds, now = [], 0.0
for msg in mid:
    now += msg.time
    if msg.type == 'sysex':
        seconds.append(now)
assert len(seconds) == len(rows)
for (tick, index, data), s in zip(rows, seconds):
    print(index, tick, repr(s), ' '.join('%02X' % b for b in [0xF0, *data, 0xF7]))
)";

// Writes a song with mido: tempo changes, notes in running status, controllers, SysEx.
constexpr char kMidoWrite[] = R"(
import sys, random, mido
path, kind, seed = sys.argv[1], int(sys.argv[2]), int(sys.argv[3])
random.seed(seed)
mid = mido.MidiFile(type=kind, ticks_per_beat=random.choice([96, 120, 384, 480, 960]))
for index in range(1 if kind == 0 else 3):
    track = mido.MidiTrack()
    mid.tracks.append(track)
    for _ in range(300):
        pick = random.random()
        delta = random.choice([0, 0, random.randint(1, 200), random.randint(200, 5000)])
        if pick < 0.08 and index != 1:
            track.append(mido.MetaMessage('set_tempo', tempo=random.randint(150000, 2000000), time=delta))
        elif pick < 0.5:
            note = random.randint(30, 90)
            track.append(mido.Message('note_on', note=note, velocity=90, time=delta))
            track.append(mido.Message('note_on', note=note, velocity=0, time=random.randint(0, 50)))
        elif pick < 0.6:
            track.append(mido.Message('control_change', control=7, value=random.randint(0, 127), time=delta))
        else:
            data = [random.randint(0, 127) for _ in range(random.randint(0, 70))]
            track.append(mido.Message('sysex', data=data, time=delta))
mid.save(path)
)";

struct PeerMessage {
    int track;
    std::uint64_t tick;
    double seconds;
    std::string bytes;
};

// mido's reading of a file: its header line and its messages.
std::vector<PeerMessage> MidoRead(const QString& path, QString& header) {
    std::vector<PeerMessage> messages;
    QStringList lines = RunPython(kMidoRead, {path});
    if (lines.isEmpty()) return messages;
    header = lines.takeFirst();
    for (const QString& line : lines) {
        const QStringList fields = line.split(QLatin1Char(' '));
        messages.push_back({fields[0].toInt(), fields[1].toULongLong(), fields[2].toDouble(),
                            fields.mid(3).join(QLatin1Char(' ')).toStdString()});
    }
    return messages;
}

ByteArray ReadFile(const QString& path) {
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << path.toStdString();
    const QByteArray bytes = file.readAll();
    return ByteArray(bytes.begin(), bytes.end());
}

class MidoWritesTest : public ::testing::TestWithParam<std::pair<int, int>> {};

TEST_P(MidoWritesTest, WeReadTheSameMessagesTicksAndTimes) {
    const auto [format, seed] = GetParam();
    QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("mido.mid"));
    RunPython(kMidoWrite, {path, QString::number(format), QString::number(seed)});
    QString header;
    const std::vector<PeerMessage> expected = MidoRead(path, header);
    ASSERT_GT(expected.size(), 100u);

    const MidiContents ours = ReadMidi(ReadFile(path));
    ASSERT_FALSE(ours.error) << ours.error->text;
    EXPECT_TRUE(ours.problems.empty());
    EXPECT_EQ(header.toStdString(), "header " + std::to_string(format) + " " +
                                        std::to_string(ours.division.ticksPerQuarter) + " " +
                                        std::to_string(ours.tracks));
    ASSERT_EQ(ours.messages.size(), expected.size());
    for (std::size_t i = 0; i < expected.size(); ++i) {
        const MidiSysEx& message = ours.messages[i];
        EXPECT_EQ(message.track, expected[i].track) << i;
        EXPECT_EQ(message.tick, expected[i].tick) << i;
        EXPECT_NEAR(message.seconds, expected[i].seconds, 1e-6) << i;
        EXPECT_EQ(HexOf(message.bytes), expected[i].bytes) << i;
    }
}

INSTANTIATE_TEST_SUITE_P(FormatsAndSeeds, MidoWritesTest,
                         ::testing::Values(std::pair{0, 1}, std::pair{0, 2}, std::pair{1, 3},
                                           std::pair{1, 4}, std::pair{1, 5}));

TEST(MidoReadsTest, MidoReadsOurFilesToTheSameMessagesAndTimes) {
    std::mt19937 random(11);
    std::vector<TimedMessage> messages;
    for (int i = 0; i < 400; ++i) {
        ByteArray bytes{0xF0};
        const int length = static_cast<int>(random() % 80);
        for (int k = 0; k < length; ++k) bytes.push_back(static_cast<std::uint8_t>(random() % 128));
        bytes.push_back(0xF7);
        // Times out of order, equal times, and times far into the song.
        const double seconds = i % 7 == 0 ? 1.5 : static_cast<double>(random() % 4000000) / 1000;
        messages.push_back({seconds, bytes});
    }
    QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("ours.mid"));
    const ByteArray file = WriteMidi(messages);
    QFile out(path);
    ASSERT_TRUE(out.open(QIODevice::WriteOnly));
    out.write(reinterpret_cast<const char*>(file.data()), static_cast<qint64>(file.size()));
    out.close();

    std::vector<TimedMessage> inTimeOrder = messages;
    std::stable_sort(
        inTimeOrder.begin(), inTimeOrder.end(),
        [](const TimedMessage& a, const TimedMessage& b) { return a.seconds < b.seconds; });
    QString header;
    const std::vector<PeerMessage> mido = MidoRead(path, header);
    EXPECT_EQ(header, QStringLiteral("header 0 480 1"));
    const MidiContents back = ReadMidi(file);
    ASSERT_EQ(mido.size(), inTimeOrder.size());
    ASSERT_EQ(back.messages.size(), inTimeOrder.size());
    for (std::size_t i = 0; i < inTimeOrder.size(); ++i) {
        EXPECT_NEAR(mido[i].seconds, inTimeOrder[i].seconds, 1e-6) << i;
        EXPECT_EQ(mido[i].bytes, HexOf(inTimeOrder[i].bytes)) << i;
        EXPECT_NEAR(back.messages[i].seconds, inTimeOrder[i].seconds, 1e-6) << i;
        EXPECT_EQ(back.messages[i].bytes, inTimeOrder[i].bytes) << i;
    }
}

}  // namespace
}  // namespace lumidot::testing
