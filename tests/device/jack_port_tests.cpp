// The sender through RtMidi to a real JACK server (dummy backend) when the receiver quits
// part way: reported once, and another port opened afterwards works as before. Sending in
// order with the module's pauses, and the errors of a missing server or port, are checked
// through lumidot-cli send on the same server. Run by run_with_jack.sh.
#include <gtest/gtest.h>

#include <condition_variable>
#include <mutex>

#include "codec/graphic_page.h"
#include "device/jack_rig.h"
#include "device/midi_sender.h"
#include "device/rtmidi_port.h"
#include "files/file_bytes.h"

namespace lumidot::device::testing {
namespace {

using namespace std::chrono_literals;
using JackPortTest = JackTest;

Bytes DisplayOf(int page) {
    return lumidot::testing::Hex(MakeGraphicDisplaySysEx(static_cast<std::uint8_t>(page)));
}

TEST_F(JackPortTest, ReceiverQuittingIsReportedOnceAndAnotherPortWorks) {
    std::mutex mutex;
    std::condition_variable reported;
    std::vector<Problem> problems;
    // The listener hears of a problem on the sender's thread, a moment after the sender's
    // status already says so.
    const auto problemsOnceThere = [&](std::size_t atLeast) {
        std::unique_lock lock(mutex);
        reported.wait_for(lock, 5s, [&] { return problems.size() >= atLeast; });
        return problems;
    };
    SteadyClock clock;
    MidiSender sender(std::make_unique<RtMidiPort>(MidiApi::Jack, "lumidot-test"), clock,
                      {[&](const Problem& p) {
                           std::lock_guard lock(mutex);
                           problems.push_back(p);
                           reported.notify_all();
                       },
                       {}});

    ASSERT_FALSE(sender.open(receiver.port()).get());
    sender.send(DisplayOf(1));
    ASSERT_TRUE(sender.drain(10s));
    ASSERT_EQ(receiver.waitFor(1).size(), 1u);
    receiver.stop();
    for (int page = kFirstPage; page <= kLastPage; ++page) {
        sender.send(DisplayOf(page), MidiSender::Queueing::Every);
    }
    EXPECT_FALSE(sender.drain(10s));
    EXPECT_EQ(sender.status(), SenderStatus::PortLost);
    const std::vector<Problem> lost = problemsOnceThere(1);
    ASSERT_EQ(lost.size(), 1u);
    EXPECT_EQ(lost[0].kind, ProblemKind::PortLost);
    EXPECT_EQ(lost[0].port, "lumidot-receiver:in");

    Receiver another("lumidot-other");
    std::string reason;
    ASSERT_TRUE(another.waitUntilListed(reason)) << reason;
    ASSERT_FALSE(sender.open(another.port()).get());
    sender.send(DisplayOf(2));
    ASSERT_TRUE(sender.drain(10s));
    const std::vector<Received> received = another.waitFor(1);
    ASSERT_EQ(received.size(), 1u);
    EXPECT_EQ(received[0].bytes, DisplayOf(2));
    EXPECT_EQ(problemsOnceThere(0).size(), 1u);
}

}  // namespace
}  // namespace lumidot::device::testing
