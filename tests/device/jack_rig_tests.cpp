// The sender through RtMidi to a real JACK server (dummy backend) and a receiver of ours:
// the exact bytes in the exact order with the module's pauses between them, the newest
// picture winning, a receiver that quits reported once, and the errors of a missing server
// or port. Run by run_with_jack.sh, which starts the private server.
#include <gtest/gtest.h>

#include <algorithm>
#include <condition_variable>
#include <cstdlib>
#include <future>
#include <mutex>

#include "codec/graphic_page.h"
#include "device/jack_rig.h"
#include "device/midi_sender.h"
#include "device/rtmidi_port.h"

namespace lumidot::device::testing {
namespace {

using namespace std::chrono_literals;

Bytes ToBytes(const std::string& hexText) {
    ByteArray bytes;
    EXPECT_TRUE(HexTextToBytes(hexText, bytes));
    return bytes;
}

// A picture of its own for each page: every (page + 1)th pixel on, from pixel `shift`.
Page Picture(int page, int shift = 0) {
    Page pixels{};
    for (int i = shift; i < kPagePixels; i += page + 1) pixels[i] = true;
    return pixels;
}

// The receiver sees a message in the first JACK cycle after we hand it over, once JACK's
// threads get the processor. On a busy machine without realtime scheduling that is now and
// then tens of milliseconds later (two messages may even arrive in one cycle after a
// stall), and never by the same amount for every message. So each pause as handed over is
// checked exactly, and the pauses as received typically (their median) to within a cycle:
// pacing from a message's start, or a port that bunches messages, fails that.
Micros CycleTime() {
    const char* period = std::getenv("LUMIDOT_TEST_JACK_PERIOD_US");
    return Micros{period ? std::atoll(period) : 21333};
}

// The real port, with the moment of each hand-over noted on the receiver's clock.
class HandOverTimes final : public OutputPort {
public:
    HandOverTimes(std::unique_ptr<OutputPort> port, std::vector<Micros>* times)
        : port_(std::move(port)), times_(times) {}
    PortList list() override { return port_->list(); }
    Problem open(const std::string& name) override { return port_->open(name); }
    Problem send(const Bytes& message) override {
        times_->push_back(SteadyClock().now());
        return port_->send(message);
    }
    void close() override { port_->close(); }

private:
    std::unique_ptr<OutputPort> port_;
    std::vector<Micros>* times_;
};

// Which of the messages arrived, by their index ("0 1 2 ..."), for failure messages.
std::string Arrived(const std::vector<Received>& received, const std::vector<Bytes>& sent) {
    std::string list;
    for (const auto& r : received) {
        const auto found = std::find(sent.begin(), sent.end(), r.bytes);
        list += found == sent.end() ? "? " : std::to_string(found - sent.begin()) + " ";
    }
    return list;
}

class JackRigTest : public ::testing::Test {
protected:
    void SetUp() override {
        const std::string missing = MissingRig();
        ASSERT_TRUE(missing.empty()) << missing;
        api_ = *MidiApiFromEnvironment();
    }

    std::unique_ptr<MidiSender> makeSender() {
        return std::make_unique<MidiSender>(
            std::make_unique<HandOverTimes>(std::make_unique<RtMidiPort>(api_, "lumidot-test"),
                                            &handOvers_),
            clock_,
            SenderListener{[this](const Problem& p) {
                               std::lock_guard lock(mutex_);
                               problems_.push_back(p);
                               reported_.notify_all();
                           },
                           {}});
    }

    // The listener hears of a problem on the sender's thread, a moment after the sender's
    // status already says so.
    std::vector<Problem> problems(std::size_t atLeast = 0) {
        std::unique_lock lock(mutex_);
        reported_.wait_for(lock, 5s, [&] { return problems_.size() >= atLeast; });
        return problems_;
    }

    MidiApi api_ = MidiApi::Jack;
    std::vector<Micros> handOvers_;  // written by the sender's thread, read after drain()
    SteadyClock clock_;
    std::mutex mutex_;
    std::condition_variable reported_;
    std::vector<Problem> problems_;
};

#define START_RECEIVER(receiver)                                   \
    do {                                                           \
        std::string reason;                                        \
        ASSERT_TRUE((receiver).waitUntilListed(reason)) << reason; \
    } while (0)

TEST_F(JackRigTest, TenStoresThenDisplayArriveExactlyWithThePauses) {
    Receiver receiver("lumidot-receiver");
    START_RECEIVER(receiver);
    auto sender = makeSender();
    ASSERT_FALSE(sender->open(receiver.port()).get());
    EXPECT_EQ(sender->gapMs(), 40);

    std::vector<Bytes> messages;
    for (int page = kFirstPage; page <= kLastPage; ++page) {
        messages.push_back(ToBytes(MakeGraphicStoreSysEx(Picture(page), page)));
    }
    messages.push_back(ToBytes(MakeGraphicDisplaySysEx(1)));
    for (const auto& m : messages) sender->send(m);
    ASSERT_TRUE(sender->drain(10s));

    const std::vector<Received> received = receiver.waitFor(messages.size());
    ASSERT_EQ(received.size(), messages.size()) << "arrived: " << Arrived(received, messages);
    ASSERT_EQ(handOvers_.size(), messages.size());
    std::vector<Micros> pauses;
    Micros handed = Micros::max();
    for (std::size_t i = 0; i < received.size(); ++i) {
        EXPECT_EQ(received[i].bytes, messages[i]) << "message " << i;
        if (i == 0) continue;
        const Micros cable = WireTime(messages[i - 1].size());
        handed = std::min(handed, handOvers_[i] - handOvers_[i - 1] - cable);
        EXPECT_GE(handOvers_[i] - handOvers_[i - 1] - cable, 40ms) << "before message " << i;
        pauses.push_back(received[i].at - received[i - 1].at - cable);
    }
    std::sort(pauses.begin(), pauses.end());
    const Micros median = pauses[pauses.size() / 2];
    EXPECT_GE(median + CycleTime(), 40ms);
    std::printf(
        "pause after a message's end: handed over at least %.2f ms; received at least "
        "%.2f ms, median %.2f ms\n",
        handed.count() / 1000.0, pauses.front().count() / 1000.0, median.count() / 1000.0);
    EXPECT_TRUE(problems().empty());
}

// A picture painted faster than the module takes it: the first and the newest arrive, and
// nothing in between is worth the wait.
TEST_F(JackRigTest, LivePaintingCatchesUpWithTheNewest) {
    Receiver receiver("lumidot-receiver");
    START_RECEIVER(receiver);
    auto sender = makeSender();
    ASSERT_FALSE(sender->open(receiver.port()).get());
    Bytes newest;
    for (int step = 0; step < 50; ++step) {
        newest = ToBytes(MakeGraphicStoreSysEx(Picture(1, step), 1));
        sender->send(newest);
    }
    ASSERT_TRUE(sender->drain(10s));
    const std::vector<Received> received = receiver.waitFor(1);
    ASSERT_GE(received.size(), 1u);
    EXPECT_LE(received.size(), 2u);
    EXPECT_EQ(received.back().bytes, newest);
}

TEST_F(JackRigTest, ReceiverQuittingIsReportedOnceAndAnotherPortWorks) {
    auto sender = makeSender();
    {
        Receiver receiver("lumidot-receiver");
        START_RECEIVER(receiver);
        ASSERT_FALSE(sender->open(receiver.port()).get());
        sender->send(ToBytes(MakeGraphicDisplaySysEx(1)));
        ASSERT_TRUE(sender->drain(10s));
        ASSERT_EQ(receiver.waitFor(1).size(), 1u);
        receiver.stop();
    }
    for (int page = kFirstPage; page <= 3; ++page) {
        sender->send(ToBytes(MakeGraphicDisplaySysEx(page)));
        sender->send(ToBytes(MakeGraphicStoreSysEx(Picture(page), page)));
    }
    EXPECT_FALSE(sender->drain(10s));
    EXPECT_EQ(sender->status(), SenderStatus::PortLost);
    const std::vector<Problem> lost = problems(1);
    ASSERT_EQ(lost.size(), 1u);
    EXPECT_EQ(lost[0].kind, ProblemKind::PortLost);
    EXPECT_EQ(lost[0].port, "lumidot-receiver:in");

    Receiver another("lumidot-other");
    START_RECEIVER(another);
    ASSERT_FALSE(sender->open(another.port()).get());
    const Bytes display = ToBytes(MakeGraphicDisplaySysEx(2));
    sender->send(display);
    ASSERT_TRUE(sender->drain(10s));
    const std::vector<Received> received = another.waitFor(1);
    ASSERT_EQ(received.size(), 1u);
    EXPECT_EQ(received[0].bytes, display);
    EXPECT_EQ(problems().size(), 1u);
}

TEST_F(JackRigTest, OpeningFailsClearly) {
    Receiver receiver("lumidot-receiver");
    START_RECEIVER(receiver);
    RtMidiPort port(api_, "lumidot-test");
    const PortList ports = port.list();
    EXPECT_FALSE(ports.problem);
    EXPECT_NE(std::find(ports.names.begin(), ports.names.end(), receiver.port()),
              ports.names.end());

    const Problem unknown = port.open("nobody:in");
    EXPECT_EQ(unknown.kind, ProblemKind::NoSuchPort);
    EXPECT_EQ(unknown.port, "nobody:in");

    // The same program with no server under the name it is given.
    const std::string server = std::getenv("JACK_DEFAULT_SERVER");
    setenv("JACK_DEFAULT_SERVER", (server + "-absent").c_str(), 1);
    RtMidiPort stranded(api_, "lumidot-stranded");
    const Problem none = stranded.open(receiver.port());
    const PortList nothing = stranded.list();
    setenv("JACK_DEFAULT_SERVER", server.c_str(), 1);
    EXPECT_EQ(none.kind, ProblemKind::NoMidiSystem);
    EXPECT_EQ(none.port, receiver.port());
    EXPECT_EQ(nothing.problem.kind, ProblemKind::NoMidiSystem);
    EXPECT_TRUE(nothing.names.empty());
}

}  // namespace
}  // namespace lumidot::device::testing
