// What the window sends to the module on request: the messages of the output pane, or every
// page stored followed by the display of page 1.
#pragma once

#include <vector>

#include "codec/gs_message.h"
#include "decode/hex_messages.h"

namespace lumidot {

class PageModel;
class WindowModel;

// The messages the output pane shows: read in the window's layout, or, when the pane holds
// text that is not laid out that way (a decoding result is written without layout), in the
// plain layout of one space between bytes.
HexMessages PaneMessages(const WindowModel& model);

// The ten store messages of the pages as the user sees them (the open page as drawn), then
// the message that displays page 1.
std::vector<ByteArray> AllPagesMessages(const PageModel& pages);

}  // namespace lumidot
