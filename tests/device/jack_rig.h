// What the JACK tests need around the sender: receivers of ours started and stopped, and
// what they recorded.
#pragma once

#include <gtest/gtest.h>
#include <sys/types.h>

#include <chrono>
#include <string>
#include <vector>

#include "device/midi_port.h"

namespace lumidot::device::testing {

struct Received {
    Micros at;
    Bytes bytes;
};

// A receiver on the private JACK server; stopped when this goes, whatever the test did.
class Receiver {
public:
    explicit Receiver(const std::string& client);
    ~Receiver();
    Receiver(const Receiver&) = delete;
    Receiver& operator=(const Receiver&) = delete;

    // The JACK port messages are sent to.
    std::string port() const { return client_ + ":in"; }
    // Waits until the port is listed; false (and why, in reason) when it never is.
    bool waitUntilListed(std::string& reason);
    // Waits until `count` messages have been recorded (or a second has passed without a
    // new one), and a little longer for any surplus; returns them all.
    std::vector<Received> waitFor(std::size_t count);
    // Ends the receiver and waits until it has gone.
    void stop();

private:
    std::vector<Received> read() const;

    std::string client_;
    std::string file_;
    pid_t pid_ = -1;
};

// Why the JACK tests cannot run in this environment, or empty when they can.
std::string MissingRig();

// The receiver sees a message in the first JACK cycle after we hand it over, once JACK's
// threads get the processor. On a busy machine without realtime scheduling that is now and
// then tens of milliseconds later, and never by the same amount for every message. So each
// pause as handed over is checked exactly, and the pauses as received typically (their
// median) to within this cycle: pacing from a message's start, or a port that bunches
// messages, fails that.
Micros CycleTime();

// The private server up and a receiver listed on it before the test begins; a test that
// cannot have both fails, saying why.
class JackTest : public ::testing::Test {
protected:
    void SetUp() override {
        const std::string missing = MissingRig();
        ASSERT_TRUE(missing.empty()) << missing;
        std::string reason;
        ASSERT_TRUE(receiver.waitUntilListed(reason)) << reason;
    }

    Receiver receiver{"lumidot-receiver"};
};

}  // namespace lumidot::device::testing
