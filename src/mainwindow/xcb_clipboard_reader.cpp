#include "mainwindow/xcb_clipboard_reader.h"

#include <poll.h>
#include <xcb/xcb.h>

#include <QByteArray>
#include <QGuiApplication>
#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <optional>
#include <vector>

#include "mainwindow/clipboard_access.h"

// Last: Xlib's macros (None, Bool, Status) must not meet the headers above.
#include <X11/Xlib.h>

namespace lumidot {
namespace {

using Clock = std::chrono::steady_clock;

// A read that fails every attempt holds the window for ten waits and nine pauses; a few
// milliseconds per attempt go to connecting, so the sum leaves room below two seconds.
static_assert(kClipboardAttempts * kXcbAnswerTimeout.count() +
                      (kClipboardAttempts - 1) * kClipboardPauseMs <=
                  1800,
              "a failing clipboard read must stay well under two seconds");

struct FreeDeleter {
    void operator()(void* p) const { std::free(p); }
};
template <typename T>
using Owned = std::unique_ptr<T, FreeDeleter>;

enum Atom {
    kClipboard,
    kTargets,
    kIncr,
    kUtf8String,
    kTextPlainUtf8,
    kString,
    kText,
    kTransferProperty,
    kAtomCount
};
constexpr std::array<const char*, kAtomCount> kAtomNames = {
    "CLIPBOARD", "TARGETS", "INCR", "UTF8_STRING", "text/plain;charset=utf-8", "STRING", "TEXT",
    // The property of our own window that owners write their answer into.
    "LUMIDOT_CLIPBOARD"};

// The text formats we ask for, best first: the two UTF-8 ones, then the older Latin-1 STRING
// and TEXT, which lets the owner pick the type.
constexpr std::array<Atom, 4> kTextTargets = {kUtf8String, kTextPlainUtf8, kString, kText};

// Large enough for any property the server can hold; four times it still fits 32 bits.
constexpr uint32_t kWholeProperty = 0x1FFFFFFF;

struct Property {
    xcb_atom_t type = XCB_NONE;
    QByteArray data;
};

enum class Answer { Got, Refused, Failed };

// One attempt: a fresh connection, a private window, the conversions, and all of it gone
// when the attempt ends. Nothing is kept between attempts, so a late answer to an attempt
// that gave up can never be mistaken for the answer to a later one.
class Session {
public:
    Session(const char* display, std::chrono::milliseconds timeout)
        : connection_(xcb_connect(display, &screenNumber_)), timeout_(timeout) {}
    ~Session() { xcb_disconnect(connection_); }
    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;

    XcbClipboardRead read(const xcb_connection_t* app);

private:
    bool internAtoms();
    xcb_window_t selectionOwner();
    bool createWindow();
    Answer convert(Atom target, Clock::time_point deadline, Property& out);
    bool readProperty(Property& out);
    Owned<xcb_generic_event_t> waitFor(uint8_t type, Clock::time_point deadline,
                                       bool (*match)(const Session&, const xcb_generic_event_t*));

    xcb_connection_t* connection_;
    int screenNumber_ = 0;
    std::chrono::milliseconds timeout_;
    std::array<xcb_atom_t, kAtomCount> atoms_{};
    xcb_window_t window_ = XCB_NONE;
    Atom pendingTarget_ = kTargets;
};

bool Session::internAtoms() {
    std::array<xcb_intern_atom_cookie_t, kAtomCount> cookies;
    for (int i = 0; i < kAtomCount; ++i) {
        cookies[i] = xcb_intern_atom(connection_, 0, static_cast<uint16_t>(strlen(kAtomNames[i])),
                                     kAtomNames[i]);
    }
    bool ok = true;
    for (int i = 0; i < kAtomCount; ++i) {
        Owned<xcb_intern_atom_reply_t> reply(
            xcb_intern_atom_reply(connection_, cookies[i], nullptr));
        if (reply) {
            atoms_[i] = reply->atom;
        } else {
            ok = false;
        }
    }
    return ok;
}

xcb_window_t Session::selectionOwner() {
    Owned<xcb_get_selection_owner_reply_t> reply(xcb_get_selection_owner_reply(
        connection_, xcb_get_selection_owner(connection_, atoms_[kClipboard]), nullptr));
    return reply ? reply->owner : XCB_NONE;
}

bool Session::createWindow() {
    xcb_screen_iterator_t screens = xcb_setup_roots_iterator(xcb_get_setup(connection_));
    for (int i = 0; i < screenNumber_ && screens.rem > 0; ++i) xcb_screen_next(&screens);
    if (screens.rem == 0) return false;
    window_ = xcb_generate_id(connection_);
    // Property changes are how a large transfer tells us that its next piece is there.
    const uint32_t events = XCB_EVENT_MASK_PROPERTY_CHANGE;
    xcb_create_window(connection_, XCB_COPY_FROM_PARENT, window_, screens.data->root, 0, 0, 1, 1, 0,
                      XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, XCB_CW_EVENT_MASK,
                      &events);
    return true;
}

// Waits until an event of the given type that `match` accepts arrives, dropping the others.
// Returns null when the deadline passes or the connection breaks.
Owned<xcb_generic_event_t> Session::waitFor(uint8_t type, Clock::time_point deadline,
                                            bool (*match)(const Session&,
                                                          const xcb_generic_event_t*)) {
    xcb_flush(connection_);
    const int fd = xcb_get_file_descriptor(connection_);
    for (;;) {
        while (xcb_generic_event_t* raw = xcb_poll_for_event(connection_)) {
            Owned<xcb_generic_event_t> event(raw);
            // Answers come by SendEvent, which sets the top bit of the type.
            if ((event->response_type & 0x7F) == type && match(*this, event.get())) return event;
        }
        if (xcb_connection_has_error(connection_)) return nullptr;
        const auto left =
            std::chrono::ceil<std::chrono::milliseconds>(deadline - Clock::now()).count();
        if (left <= 0) return nullptr;
        pollfd readable{fd, POLLIN, 0};
        if (poll(&readable, 1, static_cast<int>(left)) < 0 && errno != EINTR) return nullptr;
    }
}

// Reads and deletes our property; a large answer comes as INCR, piece by piece, each piece
// announced by a new value of the property after we deleted the one before.
bool Session::readProperty(Property& out) {
    auto fetch = [this](Property& piece) {
        Owned<xcb_get_property_reply_t> reply(xcb_get_property_reply(
            connection_,
            xcb_get_property(connection_, 1, window_, atoms_[kTransferProperty],
                             XCB_GET_PROPERTY_TYPE_ANY, 0, kWholeProperty),
            nullptr));
        if (!reply) return false;
        piece.type = reply->type;
        piece.data = QByteArray(static_cast<const char*>(xcb_get_property_value(reply.get())),
                                xcb_get_property_value_length(reply.get()));
        return true;
    };
    if (!fetch(out)) return false;
    if (out.type != atoms_[kIncr]) return true;

    out = Property{};
    for (;;) {
        auto event =
            waitFor(XCB_PROPERTY_NOTIFY, Clock::now() + timeout_,
                    [](const Session& s, const xcb_generic_event_t* e) {
                        const auto* p = reinterpret_cast<const xcb_property_notify_event_t*>(e);
                        return p->window == s.window_ && p->atom == s.atoms_[kTransferProperty] &&
                               p->state == XCB_PROPERTY_NEW_VALUE;
                    });
        Property piece;
        if (!event || !fetch(piece)) return false;
        // A piece of length zero ends the transfer.
        if (piece.data.isEmpty()) return true;
        if (out.type == XCB_NONE) out.type = piece.type;
        out.data += piece.data;
    }
}

// Asks the owner to convert the clipboard to `target` and reads the answer.
Answer Session::convert(Atom target, Clock::time_point deadline, Property& out) {
    pendingTarget_ = target;
    xcb_convert_selection(connection_, window_, atoms_[kClipboard], atoms_[target],
                          atoms_[kTransferProperty], XCB_CURRENT_TIME);
    auto event =
        waitFor(XCB_SELECTION_NOTIFY, deadline, [](const Session& s, const xcb_generic_event_t* e) {
            const auto* n = reinterpret_cast<const xcb_selection_notify_event_t*>(e);
            return n->requestor == s.window_ && n->selection == s.atoms_[kClipboard] &&
                   n->target == s.atoms_[s.pendingTarget_];
        });
    if (!event) return Answer::Failed;
    // The owner says it cannot convert to this target.
    if (reinterpret_cast<xcb_selection_notify_event_t*>(event.get())->property == XCB_NONE) {
        return Answer::Refused;
    }
    return readProperty(out) ? Answer::Got : Answer::Failed;
}

QString DecodeText(const Property& answer, xcb_atom_t utf8, xcb_atom_t textPlainUtf8) {
    QByteArray data = answer.data;
    // Some older owners send a C string with its terminating zero.
    if (data.endsWith('\0')) data.chop(1);
    if (answer.type == utf8 || answer.type == textPlainUtf8) return QString::fromUtf8(data);
    // STRING is Latin-1; so is COMPOUND_TEXT (an answer to TEXT) as long as it switches to no
    // other character set, which hex text never needs.
    return QString::fromLatin1(data);
}

XcbClipboardRead Session::read(const xcb_connection_t* app) {
    XcbClipboardRead result;
    if (xcb_connection_has_error(connection_) || !internAtoms()) return result;

    const xcb_window_t owner = selectionOwner();
    if (owner == XCB_NONE) {
        result.outcome = XcbClipboardOutcome::Text;
        return result;
    }
    // Windows of Qt's own connection carry its resource id base. Asking Qt across the server
    // would wait for an answer that only our own (now blocked) event loop could give.
    if (app != nullptr) {
        const xcb_setup_t* setup = xcb_get_setup(const_cast<xcb_connection_t*>(app));
        if ((owner & ~setup->resource_id_mask) == setup->resource_id_base) {
            result.outcome = XcbClipboardOutcome::OwnedByUs;
            return result;
        }
    }
    if (!createWindow()) return result;

    // Everything up to the owner's first answer shares one deadline, so an owner that lists
    // its formats but never sends the text costs no more than one that answers nothing.
    const Clock::time_point deadline = Clock::now() + timeout_;
    Property targets;
    const Answer listed = convert(kTargets, deadline, targets);
    if (listed == Answer::Failed) return result;

    std::vector<Atom> wanted;
    if (listed == Answer::Got) {
        std::vector<xcb_atom_t> offered(static_cast<size_t>(targets.data.size()) / 4);
        std::memcpy(offered.data(), targets.data.constData(), offered.size() * 4);
        for (Atom target : kTextTargets) {
            if (std::find(offered.begin(), offered.end(), atoms_[target]) != offered.end()) {
                wanted.push_back(target);
            }
        }
        // Formats listed, none of them text (only a picture, say): an empty text.
        if (wanted.empty()) {
            result.outcome = XcbClipboardOutcome::Text;
            return result;
        }
    } else {
        // An owner that cannot list its formats may still convert to text.
        wanted.assign(kTextTargets.begin(), kTextTargets.end());
    }

    for (Atom target : wanted) {
        Property answer;
        const Answer got = convert(target, deadline, answer);
        if (got == Answer::Failed) return result;
        if (got == Answer::Got) {
            result.outcome = XcbClipboardOutcome::Text;
            result.text = DecodeText(answer, atoms_[kUtf8String], atoms_[kTextPlainUtf8]);
            return result;
        }
    }
    // It offers text but refuses to hand it over.
    return result;
}

}  // namespace

XcbClipboardRead ReadXcbClipboard(const QNativeInterface::QX11Application& app,
                                  std::chrono::milliseconds timeout) {
    // The display Qt itself opened (it may come from -display rather than $DISPLAY).
    Display* display = app.display();
    Session session(display != nullptr ? XDisplayString(display) : nullptr, timeout);
    return session.read(app.connection());
}

}  // namespace lumidot
