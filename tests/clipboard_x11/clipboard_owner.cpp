// A clipboard owner for the tests: takes the CLIPBOARD selection and answers requests the
// way its mode says, until another client takes the selection or it is killed.
//
//   clipboard_owner deaf            never answers anything
//   clipboard_owner refuse          refuses every conversion, the format list included
//   clipboard_owner half-deaf       lists text formats, never answers the text request
//   clipboard_owner refuse-text     lists text formats, refuses to convert to them
//   clipboard_owner image           lists only image/png
//   clipboard_owner serve FILE      serves FILE's bytes as UTF8_STRING (INCR above 256 KiB)
//   clipboard_owner legacy FILE     cannot list formats; serves FILE's bytes as STRING only
//   clipboard_owner stall-incr FILE starts an INCR transfer, sends one piece, then goes silent
//
// Prints "ready" on stdout once it owns the selection.
#include <xcb/xcb.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

namespace {

constexpr size_t kIncrThreshold = 256 * 1024;
constexpr size_t kPieceSize = 64 * 1024;

xcb_connection_t* connection;
std::string mode;
std::string text;

xcb_atom_t Intern(const char* name) {
    xcb_intern_atom_reply_t* reply = xcb_intern_atom_reply(
        connection, xcb_intern_atom(connection, 0, static_cast<uint16_t>(strlen(name)), name),
        nullptr);
    if (reply == nullptr) std::exit(2);
    const xcb_atom_t atom = reply->atom;
    std::free(reply);
    return atom;
}

struct Atoms {
    xcb_atom_t clipboard, targets, incr, utf8, imagePng;
} atoms;

// A large answer under way: the next piece goes out when the requestor deletes the property.
struct Transfer {
    xcb_window_t requestor;
    xcb_atom_t property;
    xcb_atom_t type;
    size_t sent;
};
std::vector<Transfer> transfers;

void Notify(const xcb_selection_request_event_t& request, xcb_atom_t property) {
    xcb_selection_notify_event_t notify{};
    notify.response_type = XCB_SELECTION_NOTIFY;
    notify.time = request.time;
    notify.requestor = request.requestor;
    notify.selection = request.selection;
    notify.target = request.target;
    notify.property = property;
    xcb_send_event(connection, 0, request.requestor, XCB_EVENT_MASK_NO_EVENT,
                   reinterpret_cast<const char*>(&notify));
    xcb_flush(connection);
}

void Put(xcb_window_t window, xcb_atom_t property, xcb_atom_t type, uint8_t format, uint32_t count,
         const void* data) {
    xcb_change_property(connection, XCB_PROP_MODE_REPLACE, window, property, type, format, count,
                        data);
}

void SendText(const xcb_selection_request_event_t& request, xcb_atom_t property, xcb_atom_t type) {
    if (text.size() <= kIncrThreshold) {
        Put(request.requestor, property, type, 8, static_cast<uint32_t>(text.size()), text.data());
        Notify(request, property);
        return;
    }
    const uint32_t events = XCB_EVENT_MASK_PROPERTY_CHANGE;
    xcb_change_window_attributes(connection, request.requestor, XCB_CW_EVENT_MASK, &events);
    const uint32_t size = static_cast<uint32_t>(text.size());
    Put(request.requestor, property, atoms.incr, 32, 1, &size);
    transfers.push_back({request.requestor, property, type, 0});
    Notify(request, property);
}

void OnRequest(const xcb_selection_request_event_t& request) {
    // Obsolete requestors name no property; the target then serves as one.
    const xcb_atom_t property = request.property != XCB_NONE ? request.property : request.target;
    if (mode == "deaf") return;
    if (mode == "refuse") return Notify(request, XCB_NONE);
    if (request.target == atoms.targets && mode != "legacy") {
        std::vector<xcb_atom_t> list = {atoms.targets};
        if (mode == "image") {
            list.push_back(atoms.imagePng);
        } else {
            list.push_back(atoms.utf8);
            list.push_back(XCB_ATOM_STRING);
        }
        Put(request.requestor, property, XCB_ATOM_ATOM, 32, static_cast<uint32_t>(list.size()),
            list.data());
        return Notify(request, property);
    }
    if (mode == "half-deaf") return;
    if (mode == "legacy") {
        if (request.target == XCB_ATOM_STRING) return SendText(request, property, XCB_ATOM_STRING);
        return Notify(request, XCB_NONE);
    }
    if ((mode == "serve" || mode == "stall-incr") &&
        (request.target == atoms.utf8 || request.target == XCB_ATOM_STRING)) {
        return SendText(request, property, atoms.utf8);
    }
    Notify(request, XCB_NONE);
}

void OnPropertyDeleted(const xcb_property_notify_event_t& event) {
    for (auto it = transfers.begin(); it != transfers.end(); ++it) {
        if (it->requestor != event.window || it->property != event.atom) continue;
        // The stalling owner sends its first piece and then nothing more.
        if (mode == "stall-incr" && it->sent > 0) return;
        const size_t piece = std::min(kPieceSize, text.size() - it->sent);
        Put(it->requestor, it->property, it->type, 8, static_cast<uint32_t>(piece),
            text.data() + it->sent);
        it->sent += piece;
        // The piece of length zero has gone out: the transfer is over.
        if (piece == 0) transfers.erase(it);
        xcb_flush(connection);
        return;
    }
}

}  // namespace

int main(int argc, char** argv) {
    if (argc < 2) {
        std::fprintf(stderr, "usage: clipboard_owner MODE [FILE]\n");
        return 2;
    }
    mode = argv[1];
    if (argc > 2) {
        std::ifstream file(argv[2], std::ios::binary);
        text.assign(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>());
    }
    connection = xcb_connect(nullptr, nullptr);
    if (xcb_connection_has_error(connection)) {
        std::fprintf(stderr, "clipboard_owner: cannot connect to the X server\n");
        return 2;
    }
    atoms = {Intern("CLIPBOARD"), Intern("TARGETS"), Intern("INCR"), Intern("UTF8_STRING"),
             Intern("image/png")};
    xcb_screen_t* screen = xcb_setup_roots_iterator(xcb_get_setup(connection)).data;
    const xcb_window_t window = xcb_generate_id(connection);
    xcb_create_window(connection, XCB_COPY_FROM_PARENT, window, screen->root, 0, 0, 1, 1, 0,
                      XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, 0, nullptr);
    xcb_set_selection_owner(connection, window, atoms.clipboard, XCB_CURRENT_TIME);
    xcb_get_selection_owner_reply_t* owner = xcb_get_selection_owner_reply(
        connection, xcb_get_selection_owner(connection, atoms.clipboard), nullptr);
    if (owner == nullptr || owner->owner != window) {
        std::fprintf(stderr, "clipboard_owner: could not take the clipboard\n");
        return 2;
    }
    std::free(owner);
    std::printf("ready\n");
    std::fflush(stdout);

    while (xcb_generic_event_t* event = xcb_wait_for_event(connection)) {
        switch (event->response_type & 0x7F) {
            case XCB_SELECTION_REQUEST:
                OnRequest(*reinterpret_cast<xcb_selection_request_event_t*>(event));
                break;
            case XCB_PROPERTY_NOTIFY: {
                const auto* p = reinterpret_cast<xcb_property_notify_event_t*>(event);
                if (p->state == XCB_PROPERTY_DELETE) OnPropertyDeleted(*p);
                break;
            }
            case XCB_SELECTION_CLEAR:
                std::free(event);
                return 0;
        }
        std::free(event);
    }
    return 0;
}
