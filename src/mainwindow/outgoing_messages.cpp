#include "mainwindow/outgoing_messages.h"

#include "codec/graphic_page.h"
#include "mainwindow/window_model.h"

namespace lumidot {
namespace {

ByteArray ToBytes(const std::string& hexText) {
    ByteArray bytes;
    HexTextToBytes(hexText, bytes);
    return bytes;
}

}  // namespace

HexMessages PaneMessages(const WindowModel& model) {
    HexMessages inLayout = ReadHexMessages(model.pane(), model.layout());
    if (!inLayout.messages.empty()) return inLayout;
    HexMessages plain = ReadHexMessages(model.pane(), ByteLayout{});
    return plain.messages.empty() ? inLayout : plain;
}

std::vector<ByteArray> AllPagesMessages(const PageModel& pages) {
    std::vector<ByteArray> messages;
    for (int page = kFirstPage; page <= kLastPage; ++page) {
        messages.push_back(
            ToBytes(MakeGraphicStoreSysEx(pages.page(page), static_cast<std::uint8_t>(page))));
    }
    messages.push_back(ToBytes(MakeGraphicDisplaySysEx(1)));
    return messages;
}

}  // namespace lumidot
