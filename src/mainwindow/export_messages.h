// The bytes the File menu writes: the messages in the output pane, and the ten pages as
// store messages, raw or timed for a MIDI file.
#pragma once

#include <QString>
#include <optional>
#include <vector>

#include "codec/gs_message.h"
#include "files/midi_file.h"
#include "pages/page_model.h"

namespace lumidot {

struct ByteLayout;

// After a data-set message has left the MIDI cable the module needs this long before it
// takes the next one.
constexpr int kModulePauseMs = 40;

// The messages the output pane shows, each F0 ... as written. Every line is read back as a
// decoding run reads the clipboard, in the user's layout; a line that does not read so is
// read as the plain spaced hex that the pane also holds for a message the describer left
// as it came. Nothing when a line holds no message either way, or the pane holds none.
std::optional<std::vector<ByteArray>> PaneMessages(const QString& pane, const ByteLayout& layout);

// The store messages of pages 1 to 10, in that order.
std::vector<ByteArray> PageStoreMessages(const Pages& pages);

// The ten store messages, then the display message of page 1, the first at time 0 and each
// later one once the one before it has left the cable (at 31,250 baud, ten bits a byte) and
// the module has had its pause, in whole milliseconds.
std::vector<TimedMessage> TimedPageMessages(const Pages& pages);

}  // namespace lumidot
