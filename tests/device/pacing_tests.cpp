// The pacing of messages through the sender, with a clock the test moves: pauses never
// shorter than the setting (nor longer than needed), the newest message for an address
// replacing a queued older one, order kept otherwise, nothing lost.
#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <random>

#include "device/harness.h"
#include "device/messages.h"

namespace lumidot::device::testing {
namespace {

using namespace std::chrono_literals;

struct Arrival {
    int atMs;
    // Queued together, before the sender looks again; a name ending in "!" is queued to go
    // out whatever follows it.
    std::vector<std::string> messages;
};

// The message of a name in an arrival, and how it is queued.
std::string Named(const std::string& name) {
    return name.ends_with('!') ? name.substr(0, name.size() - 1) : name;
}
MidiSender::Queueing QueueingOf(const std::string& name) {
    return name.ends_with('!') ? MidiSender::Queueing::Every : MidiSender::Queueing::LatestWins;
}

struct PacingCase {
    const char* name;
    int gapMs;           // as set
    int effectiveGapMs;  // as kept
    int sendTakesMs;
    std::vector<Arrival> arrivals;
    std::vector<std::string> sent;
};

void PrintTo(const PacingCase& c, std::ostream* os) {
    *os << c.name;
}

// Every message starts as soon as it may: when it arrived, or when the one before is off the
// cable (counted from when the port returned) and the pause has passed; the first one a
// pause after the port was opened at `start`.
void ExpectPaced(const std::vector<Delivery>& delivered, Micros start, Micros gap, Micros sendTakes,
                 const std::function<Micros(std::size_t, Micros)>& arrival) {
    Micros free = start;
    for (std::size_t i = 0; i < delivered.size(); ++i) {
        const Micros at = delivered[i].at;
        const Micros arrived = arrival(i, at);
        EXPECT_EQ((at - start).count(), (std::max(arrived, free + gap) - start).count())
            << "message " << i << " (" << NameOf(delivered[i].bytes) << ")";
        if (i > 0) {
            const Micros silence =
                at - (delivered[i - 1].at + WireTime(delivered[i - 1].bytes.size()));
            EXPECT_GE(silence, gap) << "pause before message " << i;
        }
        free = at + sendTakes + WireTime(delivered[i].bytes.size());
    }
}

class PacingTest : public ::testing::TestWithParam<PacingCase> {};

TEST_P(PacingTest, SendsAsPacedAndReplaced) {
    const PacingCase& c = GetParam();
    Harness h;
    h.sender.setGap(c.gapMs);
    EXPECT_EQ(h.sender.gapMs(), c.effectiveGapMs);
    h.port->sendTakes = Micros{c.sendTakesMs * 1000};
    ASSERT_FALSE(h.open());
    const Micros start = h.clock.now();
    for (const Arrival& a : c.arrivals) {
        h.runUntil(start + Micros{a.atMs * 1000});
        for (const auto& name : a.messages) h.sender.send(Message(Named(name)), QueueingOf(name));
    }
    h.runToEnd();

    std::vector<std::string> sent;
    for (const auto& d : h.port->delivered) sent.push_back(NameOf(d.bytes));
    EXPECT_EQ(sent, c.sent);
    // A message arrived with the last arrival that carried it before it was sent.
    ExpectPaced(h.port->delivered, start, Micros{c.effectiveGapMs * 1000},
                Micros{c.sendTakesMs * 1000}, [&](std::size_t i, Micros at) {
                    Micros arrived = start;
                    for (const Arrival& a : c.arrivals) {
                        const Micros t = start + Micros{a.atMs * 1000};
                        const auto named = [&](const std::string& n) {
                            return Named(n) == NameOf(h.port->delivered[i].bytes);
                        };
                        if (t <= at && std::any_of(a.messages.begin(), a.messages.end(), named)) {
                            arrived = t;
                        }
                    }
                    return arrived;
                });
    EXPECT_TRUE(h.problems.empty());
    EXPECT_EQ(h.sender.status(), SenderStatus::Ready);
}

// clang-format off
const PacingCase kPacingCases[] = {
    {"FirstMessageWaitsAPauseAfterOpening", 40, 40, 0, {{0, {"S1a"}}}, {"S1a"}},
    {"MessageLongAfterOpeningGoesAtOnce", 40, 40, 0, {{300, {"S1a"}}}, {"S1a"}},
    {"DifferentAddressesKeepTheirOrder", 40, 40, 0, {{0, {"S1a", "T1", "D1", "S2a"}}},
     {"S1a", "T1", "D1", "S2a"}},
    {"NewestStoreOfAPageWins", 40, 40, 0, {{0, {"S1a", "S1b", "S1c"}}}, {"S1c"}},
    // S1a leaves at 40 ms; the three after it arrive while it may not be followed yet.
    {"PaintingFasterThanTheModuleTakes", 40, 40, 0,
     {{40, {"S1a"}}, {50, {"S1b"}}, {70, {"S1c"}}, {90, {"S1d"}}}, {"S1a", "S1d"}},
    {"ReplacementJoinsTheEnd", 40, 40, 0, {{40, {"X1"}}, {41, {"S1a", "T1", "S1b"}}},
     {"X1", "T1", "S1b"}},
    // Storing page 1 shows it, so the display asked for last must still come last.
    {"LastDisplayStaysLast", 40, 40, 0, {{40, {"X1"}}, {41, {"D2", "S1a", "D3"}}},
     {"X1", "S1a", "D3"}},
    {"OtherDeviceIdIsAnotherAddress", 40, 40, 0, {{0, {"S1a", "E1a", "S1b"}}}, {"E1a", "S1b"}},
    {"OtherMessagesAreNeverReplaced", 40, 40, 0, {{0, {"X1", "X1", "X1"}}}, {"X1", "X1", "X1"}},
    // A file or the pages sent on request: every message goes, in order.
    {"MessagesSentEachAllGo", 40, 40, 0, {{0, {"S1a!", "S1b!", "S1a!"}}}, {"S1a", "S1b", "S1a"}},
    {"LiveMessageLeavesOneSentEach", 40, 40, 0, {{0, {"S1a!", "S1b", "S1c"}}},
     {"S1a", "S1c"}},
    {"OneSentEachLeavesALiveOne", 40, 40, 0, {{0, {"S1a", "S1b!", "S1c!"}}},
     {"S1a", "S1b", "S1c"}},
    {"LateMessageGoesAtOnce", 40, 40, 0, {{0, {"T1"}}, {500, {"T2"}}}, {"T1", "T2"}},
    // T1 leaves at 40 ms and is 12 bytes, 3.84 ms on the cable: its pause ends at 83.84 ms.
    {"ArrivalJustBeforeThePauseEnds", 40, 40, 0, {{40, {"T1"}}, {83, {"T2"}}}, {"T1", "T2"}},
    {"ArrivalJustAfterThePauseEnds", 40, 40, 0, {{40, {"T1"}}, {84, {"T2"}}}, {"T1", "T2"}},
    {"PauseBelowTheLeastIsRaised", 5, 20, 0, {{0, {"S1a", "S2a", "T1"}}}, {"S1a", "S2a", "T1"}},
    {"PauseAboveTheMostIsLowered", 900, 500, 0, {{0, {"T1", "D1"}}}, {"T1", "D1"}},
    {"PauseAsSet", 100, 100, 0, {{0, {"T1", "D1", "X1"}}}, {"T1", "D1", "X1"}},
    // A port that keeps the caller: the message may have left only as the call ended.
    {"SlowPortDelaysTheNext", 40, 40, 60, {{0, {"S1a", "S2a", "T1"}}}, {"S1a", "S2a", "T1"}},
};
// clang-format on

INSTANTIATE_TEST_SUITE_P(Cases, PacingTest, ::testing::ValuesIn(kPacingCases),
                         [](const auto& info) { return std::string(info.param.name); });

// Hundreds of messages of every kind at random moments: whatever the timing, each address's
// newest message arrives, no message of another kind is lost, and messages keep the order
// in which their newest versions were queued.
TEST(PacingTest, NothingLostAndOrderKept) {
    for (unsigned seed = 1; seed <= 20; ++seed) {
        SCOPED_TRACE(seed);
        Harness h;
        std::mt19937 random(seed);
        h.sender.setGap(20 + static_cast<int>(random() % 60));
        ASSERT_FALSE(h.open());
        const Micros start = h.clock.now();
        // Each message carries its serial number in bytes 8 and 9.
        std::map<Bytes, std::pair<int, Micros>> queued;  // message -> serial, arrival
        std::map<std::uint64_t, int> newest;             // address -> serial of newest
        std::vector<int> unkeyed;
        Micros at = start;
        for (int serial = 0; serial < 300; ++serial) {
            at += Micros{static_cast<int>(random() % 30000)};
            h.runUntil(at);
            const auto b1 = static_cast<std::uint8_t>(serial >> 7),
                       b2 = static_cast<std::uint8_t>(serial & 0x7F);
            Bytes message;
            switch (random() % 4) {
                case 0:
                    message = {0xF0, 0x7D, 0x00, b1, b2, 0xF7};
                    break;
                case 1:
                    message = DataSet(0x10, {0x10, 0x00, 0x00, b1, b2});
                    break;
                case 2:
                    message = DataSet(0x10, {0x10, 0x20, 0x00, b1, b2});
                    break;
                default:
                    message =
                        DataSet(0x10, {0x10, static_cast<std::uint8_t>(1 + random() % 5),
                                       static_cast<std::uint8_t>(random() % 2 ? 0x40 : 0), b1, b2});
            }
            queued[message] = {serial, at};
            if (auto key = ReplacementKey(message)) {
                newest[*key] = serial;
            } else {
                unkeyed.push_back(serial);
            }
            h.sender.send(message);
        }
        h.runToEnd();

        std::vector<int> serials;
        for (const auto& d : h.port->delivered) serials.push_back(queued.at(d.bytes).first);
        EXPECT_TRUE(std::is_sorted(serials.begin(), serials.end()));
        for (const auto& [key, serial] : newest) {
            EXPECT_TRUE(std::count(serials.begin(), serials.end(), serial)) << serial;
        }
        for (int serial : unkeyed) {
            EXPECT_TRUE(std::count(serials.begin(), serials.end(), serial)) << serial;
        }
        ExpectPaced(
            h.port->delivered, start, Micros{h.sender.gapMs() * 1000}, Micros{0},
            [&](std::size_t i, Micros) { return queued.at(h.port->delivered[i].bytes).second; });
    }
}

}  // namespace
}  // namespace lumidot::device::testing
