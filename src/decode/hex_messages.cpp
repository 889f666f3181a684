#include "decode/hex_messages.h"

#include <algorithm>

#include "mainwindow/window_model.h"

namespace lumidot {

HexMessages ReadHexMessages(const QString& text, const ByteLayout& layout) {
    HexMessages result;
    const HexDigits digits =
        ReadHexDigitsOf(text, layout.prefix, layout.suffix, layout.separator, &result.check);
    if (result.check != HexCheck::Ok) return result;
    MessageReader reader(digits);
    for (std::string hex; reader.next(hex);) {
        ByteArray bytes{0xF0};
        HexTextToBytes(hex, bytes);
        const auto end = std::find_if(bytes.begin() + 1, bytes.end(),
                                      [](std::uint8_t byte) { return byte >= 0x80; });
        if (end == bytes.end() || *end != 0xF7) {
            ++result.incomplete;
            continue;
        }
        bytes.erase(end + 1, bytes.end());
        result.messages.push_back(std::move(bytes));
    }
    return result;
}

}  // namespace lumidot
