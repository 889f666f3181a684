#include "decode/message_list.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

#include "decode/decode_text.h"
#include "mainwindow/model_target.h"
#include "mainwindow/window_model.h"

namespace lumidot {

namespace {

// Minutes, seconds and milliseconds into text, as TimeText gives them; the number of
// characters written.
int WriteTime(char* text, std::size_t size, double seconds) {
    const long long total = std::llround(std::max(0.0, seconds) * 1000);
    return std::snprintf(text, size, "%02lld:%02lld.%03lld", total / 60000, total / 1000 % 60,
                         total % 1000);
}

// The place as PlaceText gives it, into text; the number of characters written.
int WritePlace(char* text, std::size_t size, const MessagePlace& place) {
    switch (place.kind) {
        case MessagePlace::Kind::Offset:
            return std::snprintf(text, size, "[offset %zu]", place.offset);
        case MessagePlace::Kind::Time: {
            text[0] = '[';
            const int length = 1 + WriteTime(text + 1, size - 1, place.seconds);
            return length + std::snprintf(text + length, size - static_cast<std::size_t>(length),
                                          " track %d]", place.track);
        }
        case MessagePlace::Kind::None:
            break;
    }
    return 0;
}

}  // namespace

QString TimeText(double seconds) {
    char text[40];
    return QString::fromLatin1(text, WriteTime(text, sizeof text, seconds));
}

QString PlaceText(const MessagePlace& place) {
    char text[80];
    return QString::fromLatin1(text, WritePlace(text, sizeof text, place));
}

DescribedMessage DescribeMessage(WindowModel& model, const std::string& digits) {
    const quint64 paneBefore = model.paneVersion();
    DescribedMessage described;
    described.description = QString::fromStdString(DescribeInto(model, digits));
    if (model.paneVersion() != paneBefore) {
        described.cleaned = model.pane();
    } else {
        // The message changed nothing in the pane: it stands in the result as it came, so
        // every message keeps its own line.
        QString bytes = SpaceHexPairs(QString::fromLatin1(digits));
        bytes.chop(1);
        described.cleaned = bytes.isEmpty() ? QStringLiteral("F0") : QStringLiteral("F0 ") + bytes;
    }
    return described;
}

void MessageListDescription::add(const std::string& digits, const MessagePlace& place) {
    entries_.push_back({place, DescribeMessage(model_, digits)});
}

void MessageListDescription::add(const ByteArray& message, const MessagePlace& place) {
    static constexpr char kDigits[] = "0123456789ABCDEF";
    // A run cuts its messages at every F0 and hands over what follows it.
    const std::size_t first = !message.empty() && message.front() == 0xF0 ? 1 : 0;
    std::string digits(2 * (message.size() - first), '0');
    for (std::size_t i = first, at = 0; i < message.size(); ++i, at += 2) {
        digits[at] = kDigits[message[i] >> 4];
        digits[at + 1] = kDigits[message[i] & 15];
    }
    add(digits, place);
}

QString MessageListDescription::numbered(std::size_t index) const {
    const Entry& entry = entries_[index];
    QString line;
    if (entry.place.kind == MessagePlace::Kind::None) {
        AppendNumberedLine(line, static_cast<int>(index + 1), entry.message.description);
        return line;
    }
    // Written for every message of a file: one string, formatted in place.
    char place[80];
    const int length = WritePlace(place, sizeof place, entry.place);
    QString explanation;
    explanation.reserve(length + 1 + entry.message.description.size());
    explanation += QLatin1String(place, length);
    explanation += QLatin1Char(' ');
    explanation += entry.message.description;
    AppendNumberedLine(line, static_cast<int>(index + 1), explanation);
    return line;
}

QString MessageListDescription::line(std::size_t index) const {
    QString text = numbered(index);
    text.chop(2);
    return text;
}

QString MessageListDescription::results() const {
    QString text;
    text.reserve(static_cast<qsizetype>(entries_.size()) * 64);
    for (std::size_t i = 0; i < entries_.size(); ++i) text += numbered(i);
    return text;
}

QString MessageListDescription::cleaned() const {
    QString text;
    for (std::size_t i = 0; i < entries_.size(); ++i) {
        if (i > 0) text += QStringLiteral("\r\n");
        text += entries_[i].message.cleaned;
    }
    return text;
}

}  // namespace lumidot
