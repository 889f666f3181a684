// Reads the X11 CLIPBOARD selection as text with a deadline of our own.
//
// Qt's QClipboard::text() on X11 waits five seconds for each answer of the selection owner and
// then returns an empty string as if the clipboard were empty. An owner that never answers (a
// hung program, a misbehaving clipboard manager) would freeze the window for many seconds and
// the failed read would pass for an empty clipboard. This reader asks the owner itself, on a
// connection of its own, and gives up after a short wait, so that the caller can count a
// failed attempt and retry as it does for any other clipboard failure.
#pragma once

#include <QString>
#include <chrono>

namespace QNativeInterface {
struct QX11Application;
}

namespace lumidot {

// How long the owner may take to answer one attempt's request, and to send each further
// piece of a large transfer. Ten attempts of this length and nine pauses of 15 ms between
// them must stay well under two seconds, the longest a failing read may hold the window.
constexpr std::chrono::milliseconds kXcbAnswerTimeout{150};

enum class XcbClipboardOutcome {
    Text,       // text holds the clipboard's text; empty when it holds none
    OwnedByUs,  // this program owns the clipboard: Qt answers from memory
    Failed,     // no answer in time, every text conversion refused, or no X connection
};

struct XcbClipboardRead {
    XcbClipboardOutcome outcome = XcbClipboardOutcome::Failed;
    QString text;
};

// One read of the clipboard on the display the application runs on. Blocks for at most
// about `timeout` while the owner is silent, longer only while a large transfer keeps
// arriving. Processes no Qt events.
XcbClipboardRead ReadXcbClipboard(const QNativeInterface::QX11Application& app,
                                  std::chrono::milliseconds timeout = kXcbAnswerTimeout);

}  // namespace lumidot
