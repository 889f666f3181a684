#include "mainwindow/export_messages.h"

#include <QStringList>

#include "codec/graphic_page.h"
#include "decode/hex_digits.h"
#include "mainwindow/window_model.h"

namespace lumidot {
namespace {

// Microseconds a byte takes on a MIDI cable: 31,250 baud, ten bits with start and stop.
constexpr int kWireMicrosPerByte = 320;

ByteArray BytesOfText(const std::string& spacedHex) {
    ByteArray bytes;
    HexTextToBytes(spacedHex, bytes);
    return bytes;
}

// The messages of one line read in this layout; false when the line does not read as
// messages in it.
bool ReadLine(const QString& line, const ByteLayout& layout, std::vector<ByteArray>& messages) {
    HexCheck check = HexCheck::Ok;
    const HexDigits digits =
        ReadHexDigitsOf(line, layout.prefix, layout.suffix, layout.separator, &check);
    if (check != HexCheck::Ok) return false;
    MessageReader reader(digits);
    for (std::string message; reader.next(message);) {
        ByteArray bytes{0xF0};
        HexTextToBytes(message, bytes);
        messages.push_back(std::move(bytes));
    }
    return true;
}

}  // namespace

std::optional<std::vector<ByteArray>> PaneMessages(const QString& pane, const ByteLayout& layout) {
    std::vector<ByteArray> messages;
    const QStringList lines =
        QString(pane).replace(QLatin1Char('\r'), QLatin1Char('\n')).split(QLatin1Char('\n'));
    for (const QString& line : lines) {
        if (line.trimmed().isEmpty()) continue;
        if (!ReadLine(line, layout, messages) && !ReadLine(line, ByteLayout{}, messages)) {
            return std::nullopt;
        }
    }
    if (messages.empty()) return std::nullopt;
    return messages;
}

std::vector<ByteArray> PageStoreMessages(const Pages& pages) {
    std::vector<ByteArray> messages;
    for (int page = kFirstPage; page <= kLastPage; ++page) {
        messages.push_back(
            BytesOfText(MakeGraphicStoreSysEx(pages[page - 1], static_cast<std::uint8_t>(page))));
    }
    return messages;
}

std::vector<TimedMessage> TimedPageMessages(const Pages& pages) {
    std::vector<ByteArray> messages = PageStoreMessages(pages);
    messages.push_back(BytesOfText(MakeGraphicDisplaySysEx(kFirstPage)));
    std::vector<TimedMessage> timed;
    long long startMs = 0;
    for (ByteArray& message : messages) {
        const long long wireMs =
            (static_cast<long long>(message.size()) * kWireMicrosPerByte + 999) / 1000;
        timed.push_back({static_cast<double>(startMs) / 1000, std::move(message)});
        startMs += wireMs + kModulePauseMs;
    }
    return timed;
}

}  // namespace lumidot
