// lumidot-cli with real files: what it writes, how it reads MIDI files back, and the repair
// of a MIDI file changing only its wrong checksums.
#include <gtest/gtest.h>

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>
#include <QTemporaryDir>

#include "cli/cli_run.h"
#include "files/file_bytes.h"
#include "files/midi_file.h"

namespace lumidot::testing {
namespace {

class CliFilesTest : public ::testing::Test {
protected:
    CliRun run(const QStringList& args) { return RunCli(dir.path(), args); }
    QByteArray read(const QString& name) const {
        QFile file(dir.filePath(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
    void write(const QString& name, const ByteArray& bytes) {
        QFile file(dir.filePath(name));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(reinterpret_cast<const char*>(bytes.data()), static_cast<qint64>(bytes.size()));
    }
    bool exists(const QString& name) const { return QFile::exists(dir.filePath(name)); }

    QTemporaryDir dir;
};

const char* const kHi = "F0 41 10 45 12 10 00 00 48 69 3F F7";

TEST_F(CliFilesTest, WritesSyxMidiAndTextFilesThatDescribeBack) {
    for (const char* name : {"hi.syx", "HI.SYX", "hi.mid", "hi.txt"}) {
        const CliRun written = run({"text", "Hi", "-o", name});
        EXPECT_EQ(written.status, 0) << name;
        EXPECT_EQ(written.out + written.err, QString()) << name;
    }
    EXPECT_EQ(read("hi.syx"), QByteArray::fromHex(QByteArray(kHi).replace(' ', "")));
    EXPECT_EQ(read("HI.SYX"), read("hi.syx"));
    EXPECT_EQ(read("hi.txt"), QByteArray(kHi) + "\n");
    const QByteArray midi = read("hi.mid");
    const MidiContents contents = ReadMidi(ByteArray(midi.begin(), midi.end()));
    EXPECT_EQ(contents.format, 0);
    EXPECT_EQ(contents.division.ticksPerQuarter, 480);
    ASSERT_EQ(contents.messages.size(), 1u);
    EXPECT_EQ(contents.messages[0].tick, 0u);
    EXPECT_EQ(HexOf(contents.messages[0].bytes), kHi);

    // .syx and .mid are described back in the README's examples.
    EXPECT_EQ(run({"describe", "hi.txt"}).out, " #1. Display text: Hi\n");

    // A file that exists is replaced; one that cannot be written is an error.
    EXPECT_EQ(run({"display", "none", "-o", "hi.txt"}).status, 0);
    EXPECT_EQ(read("hi.txt"), "F0 41 10 45 12 10 20 00 00 50 F7\n");
    const CliRun refused = run({"text", "Hi", "-o", "no/such/folder/hi.syx"});
    EXPECT_EQ(refused.status, 1);
    EXPECT_TRUE(refused.err.startsWith("lumidot-cli: no/such/folder/hi.syx: cannot be written: "))
        << refused.err.toStdString();
    EXPECT_EQ(refused.err.count('\n'), 1);
}

// Track 1 (the first) sets a tempo of 240 a minute; track 2 has a text at one second and an
// invalid page at the same time as track 1's display message.
ByteArray Song() {
    return Smf(
        1, 96,
        {"00 FF 51 03 03 D0 90  60 F0 0A 41 10 45 12 10 20 00 05 4B F7  00 FF 2F 00",
         "60 F0 09 41 10 45 12 10 03 20 00 F7  82 20 F0 0C 41 10 45 12 10 00 00 61 62 63 4A F7"
         "  00 FF 2F 00"});
}

TEST_F(CliFilesTest, DescribesAMidiFileWithTimesAndTracks) {
    write("song.mid", Song());
    const CliRun lines = run({"describe", "song.mid"});
    EXPECT_EQ(lines.out,
              " #1. [00:00.250 track 1] Graphic: Display page 5\n"
              " #2. [00:00.250 track 2] Graphic: Store page INVALID\n"
              " #3. [00:01.000 track 2] Display text: abc\n");
    EXPECT_EQ(lines.err, QString());
    EXPECT_EQ(lines.status, 0);

    const CliRun json = run({"describe", "--json", "song.mid"});
    EXPECT_EQ(json.status, 0);
    const QJsonObject document = QJsonDocument::fromJson(json.out.toUtf8()).object();
    EXPECT_EQ(document["kind"].toString(), "midi");
    EXPECT_EQ(document["count"].toInt(), 3);
    EXPECT_TRUE(document["problems"].toArray().isEmpty());
    const QJsonArray messages = document["messages"].toArray();
    ASSERT_EQ(messages.size(), 3);
    const QJsonObject text = messages[2].toObject();
    EXPECT_EQ(text["tick"].toInt(), 384);
    EXPECT_EQ(text["seconds"].toDouble(), 1.0);
    EXPECT_EQ(text["time"].toString(), "00:01.000");
    EXPECT_EQ(text["track"].toInt(), 2);
    EXPECT_EQ(text["description"].toString(), "Display text: abc");
    EXPECT_EQ(text["line"].toString(), " #3. [00:01.000 track 2] Display text: abc");
    EXPECT_EQ(text["cleaned"].toString(), "F0 41 10 45 12 10 00 00 61 62 63 4A F7");
    EXPECT_EQ(messages[1].toObject()["cleaned"].toString(), "F0 41 10 45 12 10 03 20 00 F7");

    // Cut inside its second track: what stands before the damage is still described.
    ByteArray cut = Song();
    cut.resize(cut.size() - 10);
    write("cut.mid", cut);
    const CliRun damaged = run({"describe", "cut.mid"});
    EXPECT_EQ(damaged.status, 1);
    EXPECT_EQ(damaged.out, " #1. [00:00.250 track 1] Graphic: Display page 5\n");
    EXPECT_EQ(damaged.err,
              "lumidot-cli: cut.mid: offset 50: chunk length 32 runs past the end of the "
              "file (22 bytes follow)\n");
}

TEST_F(CliFilesTest, RepairChangesOnlyTheWrongChecksums) {
    // The invalid page's checksum is wrong already; those of the display message and of the
    // text are broken here.
    ByteArray song = Song();
    song[40] = song[80] = 0x00;
    write("song.mid", song);

    const CliRun repaired = run({"repair", "song.mid", "fixed.mid"});
    EXPECT_EQ(repaired.status, 0);
    EXPECT_EQ(repaired.err, QString());
    EXPECT_EQ(repaired.out,
              "[00:00.250 track 1] checksum at offset 40 changed from 00 to 4B\n"
              "[00:00.250 track 2] checksum at offset 64 changed from 00 to 4D\n"
              "[00:01.000 track 2] checksum at offset 80 changed from 00 to 4A\n"
              "3 checksums repaired; fixed.mid written\n");
    const QByteArray original = read("song.mid");
    QByteArray expected = original;
    expected[40] = 0x4B;
    expected[64] = 0x4D;
    expected[80] = 0x4A;
    EXPECT_EQ(read("fixed.mid"), expected);
    EXPECT_EQ(original, QByteArray(reinterpret_cast<const char*>(song.data()),
                                   static_cast<qsizetype>(song.size())))
        << "the input stays as it was";
    const QByteArray fixed = read("fixed.mid");

    const CliRun again = run({"repair", "--json", "fixed.mid", "again.mid"});
    EXPECT_EQ(again.status, 0);
    const QJsonObject document = QJsonDocument::fromJson(again.out.toUtf8()).object();
    EXPECT_TRUE(document["repairs"].toArray().isEmpty());
    EXPECT_EQ(read("again.mid"), fixed);

    write("hex.txt", Hex("46 30 20 46 37"));
    const CliRun text = run({"repair", "hex.txt", "out.txt"});
    EXPECT_EQ(text.status, 1);
    EXPECT_EQ(text.err,
              "lumidot-cli: hex.txt: neither a MIDI file nor a .syx file (describe cleans "
              "hex text)\n");
    ByteArray cut = song;
    cut.resize(40);
    write("cut.mid", cut);
    const CliRun damaged = run({"repair", "cut.mid", "out.mid"});
    EXPECT_EQ(damaged.status, 1);
    EXPECT_TRUE(damaged.err.startsWith("lumidot-cli: cut.mid: offset 18: chunk length"));
    EXPECT_FALSE(exists("out.txt"));
    EXPECT_FALSE(exists("out.mid"));
}

}  // namespace
}  // namespace lumidot::testing
