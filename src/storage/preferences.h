// The user's preferences beyond the program's two files (the MIDI port and how to send to
// it): QSettings in the platform's own place for them, never settings.bin, whose bytes are
// fixed. The window and lumidot-cli read the same ones.
#pragma once

#include <QSettings>
#include <memory>

namespace lumidot {

// The preferences of the application named by QCoreApplication (Lumidot for the program and
// lumidot-cli; each test names its own).
std::unique_ptr<QSettings> OpenPreferences();

// The keys of the MIDI preferences.
namespace preference {
inline constexpr char kMidiPort[] = "midi/port";
inline constexpr char kMidiGapMs[] = "midi/gapMs";
inline constexpr char kMidiLive[] = "midi/live";
}  // namespace preference

}  // namespace lumidot
