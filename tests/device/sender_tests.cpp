// The sender around the pacing: a port failing part way reported once and survived, and, on
// its real worker thread, a caller that never waits.
#include <gtest/gtest.h>

#include <future>
#include <thread>

#include "device/harness.h"
#include "device/messages.h"

namespace lumidot::device::testing {
namespace {

using namespace std::chrono_literals;

void SendAll(MidiSender& sender, std::initializer_list<const char*> names) {
    for (const char* name : names) sender.send(Message(name));
}

struct FailureCase {
    const char* name;
    std::size_t failFrom;
    ProblemKind failure;
};

void PrintTo(const FailureCase& c, std::ostream* os) {
    *os << c.name;
}

class SendFailureTest : public ::testing::TestWithParam<FailureCase> {};

// The port fails part way: one report, nothing more tried, later messages dropped without a
// word, and a port opened afterwards works as before.
TEST_P(SendFailureTest, ReportedOnceThenGoesOnWithoutThePort) {
    const FailureCase& c = GetParam();
    Harness h;
    h.port->failFrom = c.failFrom;
    h.port->failure = c.failure;
    ASSERT_FALSE(h.open());
    SendAll(h.sender, {"S1a", "S2a", "T1", "D1", "X1"});
    h.runToEnd();
    SendAll(h.sender, {"S1b", "T2"});
    h.runToEnd();

    EXPECT_EQ(h.port->delivered.size(), c.failFrom);
    EXPECT_EQ(h.port->sends, c.failFrom + 1);
    ASSERT_EQ(h.problems.size(), 1u);
    EXPECT_EQ(h.problems[0].kind, c.failure);
    EXPECT_EQ(h.problems[0].port, kPortName);
    EXPECT_NE(DescribeProblem(h.problems[0]).find(kPortName), std::string::npos);
    EXPECT_EQ(std::count(h.statuses.begin(), h.statuses.end(), SenderStatus::PortLost), 1);
    EXPECT_STREQ(StatusText(h.sender.status()), "port lost");

    h.port->failFrom.reset();
    ASSERT_FALSE(h.open());
    SendAll(h.sender, {"T2"});
    h.runToEnd();
    EXPECT_EQ(NameOf(h.port->delivered.back().bytes), "T2");
    EXPECT_EQ(h.problems.size(), 1u);
    EXPECT_EQ(h.sender.status(), SenderStatus::Ready);
}

const FailureCase kFailureCases[] = {
    {"RefusedAtTheFirst", 0, ProblemKind::SendFailed},
    {"RefusedAtTheThird", 2, ProblemKind::SendFailed},
    {"PortGoneAtTheSecond", 1, ProblemKind::PortLost},
    {"PortGoneAtTheLast", 4, ProblemKind::PortLost},
};

INSTANTIATE_TEST_SUITE_P(Cases, SendFailureTest, ::testing::ValuesIn(kFailureCases),
                         [](const auto& info) { return std::string(info.param.name); });

// The real worker thread: while the port is stuck in a send, queueing goes on without
// waiting, and the newest messages follow once the port is free again.
TEST(WorkerThreadTest, QueueingNeverWaitsForThePort) {
    SteadyClock clock;
    auto* port = new RecordingPort(&clock);
    std::promise<void> entered, release;
    std::shared_future<void> released = release.get_future().share();
    port->duringSend = [&, first = true]() mutable {
        if (!first) return;
        first = false;
        entered.set_value();
        released.wait();
    };
    MidiSender sender(std::unique_ptr<OutputPort>(port), clock);
    ASSERT_FALSE(sender.open(kPortName).get());
    sender.send(Message("S1a"));
    ASSERT_EQ(entered.get_future().wait_for(10s), std::future_status::ready);

    auto queueing = std::async(std::launch::async, [&] {
        for (int i = 0; i < 1000; ++i) SendAll(sender, {"S1b", "T1", "S1c", "T2"});
    });
    const bool finished = queueing.wait_for(10s) == std::future_status::ready;
    EXPECT_EQ(sender.status(), SenderStatus::Sending);
    release.set_value();
    ASSERT_TRUE(finished) << "queueing waited for the port";
    ASSERT_TRUE(sender.drain(10s));

    std::vector<std::string> sent;
    for (const auto& d : port->delivered) sent.push_back(NameOf(d.bytes));
    EXPECT_EQ(sent, (std::vector<std::string>{"S1a", "S1c", "T2"}));
    for (std::size_t i = 1; i < port->delivered.size(); ++i) {
        const auto& before = port->delivered[i - 1];
        EXPECT_GE(port->delivered[i].at - before.at - WireTime(before.bytes.size()), 40ms);
    }
    // Drained means the last message is off the cable, not merely handed over.
    const auto& last = port->delivered.back();
    EXPECT_GE(clock.now(), last.at + WireTime(last.bytes.size()));
    EXPECT_EQ(sender.status(), SenderStatus::Ready);
}

}  // namespace
}  // namespace lumidot::device::testing
