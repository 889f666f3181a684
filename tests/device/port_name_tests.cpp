// Choosing the MIDI system by name, and finding a saved port again among the listed ones.
#include <gtest/gtest.h>

#include "device/rtmidi_port.h"

namespace lumidot::device {
namespace {

TEST(PortNameTest, SamePort) {
    const struct {
        const char* listed;
        const char* wanted;
        bool same;
    } rows[] = {
        {"midi-monitor:input", "midi-monitor:input", true},
        {"FastLane USB:Port A 20:0", "FastLane USB:Port A 20:0", true},
        {"FastLane USB:Port A 24:0", "FastLane USB:Port A 20:0", true},  // plugged in again
        {"FastLane USB:Port A 20:0", "FastLane USB:Port B 20:0", false},
        {"FastLane USB:Port B 20:1", "FastLane USB:Port A 20:0", false},
        {"Synth 1:0 20:0", "Synth 1:0 21:0", true},
        {"Port 1", "Port 2", false},  // a number that is not ALSA's stays part of the name
        {"Synth x20:0", "Synth x21:0", false},
        {"Synth 20:0a", "Synth 21:0a", false},
        {"Synth 20:0", "Synth", true},
        {"", "Synth", false},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(SamePort(row.listed, row.wanted), row.same) << row.listed << " / " << row.wanted;
    }
}

TEST(PortNameTest, ParseMidiApi) {
    const std::pair<const char*, std::optional<MidiApi>> rows[] = {
        {"", MidiApi::Default},  {"alsa", MidiApi::Alsa}, {"ALSA", MidiApi::Alsa},
        {"jack", MidiApi::Jack}, {"Jack", MidiApi::Jack}, {"pulse", std::nullopt},
        {"jack ", std::nullopt},
    };
    for (const auto& [text, api] : rows) EXPECT_EQ(ParseMidiApi(text), api) << text;
}

}  // namespace
}  // namespace lumidot::device
