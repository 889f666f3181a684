// lumidot-cli ports and send, the real binary against a private JACK server (dummy backend)
// and our receiver: the receiver listed, every message of a .syx, a MIDI file and hex text
// arriving byte for byte in order with the module's pauses (a MIDI file's messages no sooner
// than their times), and one-line errors with exit status 1 for a port or a server that is
// not there. Run by run_with_jack.sh, which starts the server.
#include <gtest/gtest.h>

#include <QFile>
#include <QTemporaryDir>
#include <algorithm>
#include <fstream>

#include "cli/cli_run.h"
#include "codec/graphic_page.h"
#include "device/jack_rig.h"
#include "device/pacing_queue.h"
#include "files/file_bytes.h"
#include "files/midi_file.h"
#include "files/syx_file.h"

namespace lumidot::testing {
namespace {

using device::Bytes;
using device::Micros;
using device::WireTime;
using device::testing::CycleTime;
using device::testing::JackTest;
using device::testing::Received;
using namespace std::chrono_literals;

// Ten pages of their own and the display of page 1, as the module is usually sent them.
std::vector<Bytes> TenPagesAndDisplay() {
    std::vector<Bytes> messages;
    for (int page = kFirstPage; page <= kLastPage; ++page) {
        Page pixels{};
        for (int i = page; i < kPagePixels; i += page + 2) pixels[i] = true;
        messages.push_back(Hex(MakeGraphicStoreSysEx(pixels, static_cast<std::uint8_t>(page))));
    }
    messages.push_back(Hex(MakeGraphicDisplaySysEx(1)));
    return messages;
}

QByteArray Raw(const ByteArray& bytes) {
    return QByteArray(reinterpret_cast<const char*>(bytes.data()),
                      static_cast<qsizetype>(bytes.size()));
}

class CliJackTest : public JackTest {
protected:
    void SetUp() override {
        JackTest::SetUp();
        ASSERT_TRUE(folder.isValid());
        // No preferences of the user's: send goes only where it is told.
        qputenv("XDG_CONFIG_HOME", folder.filePath(QStringLiteral("config")).toUtf8());
        qputenv("LUMIDOT_MIDI_LOG", log().toUtf8());
    }
    void TearDown() override {
        qunsetenv("LUMIDOT_MIDI_LOG");
        qunsetenv("XDG_CONFIG_HOME");
    }

    QString log() const { return folder.filePath(QStringLiteral("handed-over.txt")); }
    void write(const QString& name, const QByteArray& bytes) {
        QFile file(folder.filePath(name));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
    }
    CliRun send(const QStringList& args, const QByteArray& input = {}) {
        QStringList all{QStringLiteral("send"), QStringLiteral("--port"),
                        QString::fromStdString(receiver.port())};
        return RunCli(folder.path(), all + args, input);
    }
    // The moments lumidot-cli handed each message to JACK, from its log.
    std::vector<Micros> handOvers() const {
        std::vector<Micros> times;
        std::ifstream in(log().toStdString());
        for (std::string line; std::getline(in, line);) {
            times.push_back(Micros{std::atoll(line.c_str())});
        }
        return times;
    }

    // Every message arrived as sent, each handed over at least gap after the one before
    // ended on the cable, and typically received so (within a cycle of JACK's).
    void expectPaced(const std::vector<Bytes>& sent, std::chrono::milliseconds gap) {
        const std::vector<Received> received = receiver.waitFor(sent.size());
        ASSERT_EQ(received.size(), sent.size());
        const std::vector<Micros> handed = handOvers();
        ASSERT_EQ(handed.size(), sent.size());
        std::vector<Micros> pauses;
        for (std::size_t i = 0; i < sent.size(); ++i) {
            EXPECT_EQ(HexOf(received[i].bytes), HexOf(sent[i])) << "message " << i;
            if (i == 0) continue;
            const Micros cable = WireTime(sent[i - 1].size());
            EXPECT_GE(handed[i] - handed[i - 1] - cable, gap) << "before message " << i;
            pauses.push_back(received[i].at - received[i - 1].at - cable);
        }
        if (pauses.empty()) return;
        std::sort(pauses.begin(), pauses.end());
        EXPECT_GE(pauses[pauses.size() / 2] + CycleTime(), gap);
    }

    QTemporaryDir folder;
};

TEST_F(CliJackTest, PortsListsTheReceiver) {
    const CliRun run = RunCli(folder.path(), {QStringLiteral("ports")});
    EXPECT_EQ(run.status, 0) << run.err.toStdString();
    EXPECT_TRUE(run.out.split(QLatin1Char('\n')).contains(QString::fromStdString(receiver.port())))
        << run.out.toStdString();
    EXPECT_EQ(run.err, QString());
}

struct SendCase {
    const char* name;
    const char* file;  // "-": standard input
    QByteArray (*contents)(const std::vector<Bytes>&);
    QStringList options;
    int gapMs;
};

void PrintTo(const SendCase& c, std::ostream* os) {
    *os << c.name;
}

class CliSendTest : public CliJackTest, public ::testing::WithParamInterface<SendCase> {};

TEST_P(CliSendTest, DeliversEveryMessageInOrderWithThePauses) {
    const SendCase& c = GetParam();
    const std::vector<Bytes> messages = TenPagesAndDisplay();
    const QByteArray contents = c.contents(messages);
    const bool fromInput = QLatin1String(c.file) == QLatin1String("-");
    if (!fromInput) write(QString::fromLatin1(c.file), contents);

    const CliRun run = send(c.options + QStringList{QString::fromLatin1(c.file)},
                            fromInput ? contents : QByteArray());
    EXPECT_EQ(run.status, 0) << run.err.toStdString();
    EXPECT_EQ(run.err, QString());
    EXPECT_EQ(
        run.out,
        QStringLiteral("11 messages sent to %1\n").arg(QString::fromStdString(receiver.port())));
    expectPaced(messages, std::chrono::milliseconds(c.gapMs));
}

QByteArray AsSyx(const std::vector<Bytes>& messages) {
    return Raw(WriteSyx(messages));
}
// All at time 0: the pauses alone space them.
QByteArray AsMidiAllAtOnce(const std::vector<Bytes>& messages) {
    std::vector<TimedMessage> timed;
    for (const Bytes& bytes : messages) timed.push_back({0.0, bytes});
    return Raw(WriteMidi(timed));
}
// One message a line in a layout of its own.
QByteArray AsHexLines(const std::vector<Bytes>& messages) {
    QByteArray text;
    for (const Bytes& bytes : messages) {
        text += "0x" + QByteArray::fromStdString(HexOf(bytes)).replace(' ', ",0x") + "\n";
    }
    return text;
}

// clang-format off
const SendCase kSendCases[] = {
    {"Syx", "pages.syx", AsSyx, {}, 40},
    {"SyxWithLongerGap", "pages.syx", AsSyx, {"--gap", "90"}, 90},
    {"MidiFileAllAtOnce", "pages.mid", AsMidiAllAtOnce, {}, 40},
    {"HexTextOnStandardInput", "-", AsHexLines, {"--layout", "0x,,,"}, 40},
};
// clang-format on

INSTANTIATE_TEST_SUITE_P(Cases, CliSendTest, ::testing::ValuesIn(kSendCases),
                         [](const auto& info) { return std::string(info.param.name); });

// A MIDI file's own times are kept; where they are closer than the pause, the pause wins.
TEST_F(CliJackTest, MidiFileKeepsItsTimesWithThePauseAsTheLeast) {
    const std::vector<Bytes> messages = TenPagesAndDisplay();
    const double seconds[] = {0.0, 0.25, 0.26, 0.5};
    std::vector<TimedMessage> timed;
    for (std::size_t i = 0; i < std::size(seconds); ++i) timed.push_back({seconds[i], messages[i]});
    write(QStringLiteral("timed.mid"), Raw(WriteMidi(timed)));

    const CliRun run = send({QStringLiteral("timed.mid")});
    EXPECT_EQ(run.status, 0) << run.err.toStdString();
    const std::vector<Bytes> sent(messages.begin(), messages.begin() + std::size(seconds));
    expectPaced(sent, 40ms);
    const std::vector<Micros> handed = handOvers();
    ASSERT_EQ(handed.size(), std::size(seconds));
    for (std::size_t i = 1; i < std::size(seconds); ++i) {
        const auto due = Micros{static_cast<long long>(seconds[i] * 1e6)};
        EXPECT_GE(handed[i] - handed[0], due - 2ms) << "message " << i << " went before its time";
    }
    // The third is due 10 ms after the second, but the pause holds it back (expectPaced).
    EXPECT_LT(handed[3] - handed[0], 600ms) << "the pause delays only the message it holds back";
}

struct RefusalCase {
    const char* name;
    QStringList args;  // "PORT" stands for the receiver's port
    bool serverAbsent;
    const char* error;  // the start of the one line on standard error
};

void PrintTo(const RefusalCase& c, std::ostream* os) {
    *os << c.name;
}

class CliRefusalTest : public CliJackTest, public ::testing::WithParamInterface<RefusalCase> {};

TEST_P(CliRefusalTest, OneLineAndStatus1AndNothingArrives) {
    const RefusalCase& c = GetParam();
    write(QStringLiteral("pages.syx"), Raw(WriteSyx(TenPagesAndDisplay())));
    QStringList args = c.args;
    args.replaceInStrings(QStringLiteral("PORT"), QString::fromStdString(receiver.port()));
    const QByteArray server = qgetenv("JACK_DEFAULT_SERVER");
    if (c.serverAbsent) qputenv("JACK_DEFAULT_SERVER", server + "-absent");
    const CliRun run = RunCli(folder.path(), args);
    qputenv("JACK_DEFAULT_SERVER", server);

    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(run.out, QString());
    EXPECT_TRUE(run.err.startsWith(QString::fromUtf8(c.error))) << run.err.toStdString();
    EXPECT_EQ(run.err.count(QLatin1Char('\n')), 1) << run.err.toStdString();
    EXPECT_TRUE(receiver.waitFor(0).empty());
}

// clang-format off
const RefusalCase kRefusalCases[] = {
    {"NoSuchPort", {"send", "--port", "nobody:in", "pages.syx"}, false,
     "lumidot-cli: there is no MIDI port \"nobody:in\" (lumidot-cli ports lists them)"},
    {"NoServerToSendTo", {"send", "--port", "PORT", "pages.syx"}, true,
     "lumidot-cli: the MIDI system cannot be reached"},
    {"NoServerToList", {"ports"}, true, "lumidot-cli: the MIDI system cannot be reached"},
};
// clang-format on

INSTANTIATE_TEST_SUITE_P(Cases, CliRefusalTest, ::testing::ValuesIn(kRefusalCases),
                         [](const auto& info) { return std::string(info.param.name); });

}  // namespace
}  // namespace lumidot::testing
