// The messages written in hex text, as bytes ready to be sent: the output pane's text or a
// file of hex text, read in the user's layout exactly as a decoding run reads the clipboard.
#pragma once

#include <QString>
#include <vector>

#include "codec/gs_message.h"
#include "decode/hex_digits.h"

namespace lumidot {

struct ByteLayout;

struct HexMessages {
    // The checks of a decoding run: no messages at all unless Ok.
    HexCheck check = HexCheck::Ok;
    // Each complete message, F0 ... F7, in order.
    std::vector<ByteArray> messages;
    // Messages that were not complete (no F7, or another status byte before it): a port
    // must never be handed one, as the module would take whatever follows as its rest.
    int incomplete = 0;
};

// Every message of the text laid out in layout. Bytes after a message's F7 and before the
// next F0 belong to no message.
HexMessages ReadHexMessages(const QString& text, const ByteLayout& layout);

}  // namespace lumidot
