#include "decode/message_list.h"

#include <cmath>

#include "decode/decode_text.h"
#include "mainwindow/model_target.h"
#include "mainwindow/window_model.h"

namespace lumidot {

QString TimeText(double seconds) {
    const long long total = std::llround(std::max(0.0, seconds) * 1000);
    return QStringLiteral("%1:%2.%3")
        .arg(total / 60000, 2, 10, QLatin1Char('0'))
        .arg(total / 1000 % 60, 2, 10, QLatin1Char('0'))
        .arg(total % 1000, 3, 10, QLatin1Char('0'));
}

QString PlaceText(const MessagePlace& place) {
    switch (place.kind) {
        case MessagePlace::Kind::Offset:
            return QStringLiteral("[offset %1]").arg(static_cast<qulonglong>(place.offset));
        case MessagePlace::Kind::Time:
            return QStringLiteral("[%1 track %2]").arg(TimeText(place.seconds)).arg(place.track);
        case MessagePlace::Kind::None:
            break;
    }
    return QString();
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
    std::string digits;
    digits.reserve(2 * message.size());
    for (std::size_t i = first; i < message.size(); ++i) {
        digits += kDigits[message[i] >> 4];
        digits += kDigits[message[i] & 15];
    }
    add(digits, place);
}

QString MessageListDescription::numbered(std::size_t index) const {
    const Entry& entry = entries_[index];
    const QString place = PlaceText(entry.place);
    const QString& description = entry.message.description;
    return NumberedLine(static_cast<int>(index + 1),
                        place.isEmpty() ? description : place + QLatin1Char(' ') + description);
}

QString MessageListDescription::line(std::size_t index) const {
    QString text = numbered(index);
    text.chop(2);
    return text;
}

QString MessageListDescription::results() const {
    QString text;
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
