#include "decode/decode_text.h"

#include <QStringView>

#include "codec/gs_message.h"

namespace lumidot {

namespace {

bool IsBlank(QChar c) {
    return c == QLatin1Char(' ') || c == QLatin1Char('\t');
}

bool IsLineBreak(QChar c) {
    return c == QLatin1Char('\r') || c == QLatin1Char('\n');
}

bool IsHexDigit(QChar c) {
    const char16_t u = c.unicode();
    return (u >= '0' && u <= '9') || (u >= 'A' && u <= 'F') || (u >= 'a' && u <= 'f');
}

// The runs of blanks in text, as (start, length) pairs.
QList<std::pair<qsizetype, qsizetype>> BlankRuns(QStringView text) {
    QList<std::pair<qsizetype, qsizetype>> runs;
    for (qsizetype i = 0; i < text.size();) {
        if (!IsBlank(text[i])) {
            ++i;
            continue;
        }
        const qsizetype start = i;
        while (i < text.size() && IsBlank(text[i])) ++i;
        runs.append({start, i - start});
    }
    return runs;
}

}  // namespace

QString CollapseRepeats(const QString& text, const QString& unit) {
    if (unit.isEmpty()) return text;
    // Replacing "unit unit" by "unit" over and over until nothing changes ends in the one
    // text without a doubled unit that these replacements can reach, whatever the order.
    // Building the result one character at a time and dropping the last unit whenever the
    // result ends in a doubled one reaches that same text in a single pass.
    const QString doubled = unit + unit;
    const QChar last = unit.back();
    QString out;
    out.reserve(text.size());
    for (QChar c : text) {
        out.append(c);
        if (c == last && out.size() >= doubled.size() &&
            QStringView(out).right(doubled.size()) == doubled) {
            out.chop(unit.size());
        }
    }
    return out;
}

QString ExtractHexPairs(const QString& text, int prefixLength, int suffixLength,
                        int separatorLength) {
    const qsizetype step =
        qsizetype(qMax(0, prefixLength)) + qMax(0, suffixLength) + qMax(0, separatorLength) + 2;
    QString pairs;
    pairs.reserve(text.size() / step * 2 + 2);
    for (qsizetype pos = qMax(0, prefixLength); pos < text.size(); pos += step) {
        pairs.append(QStringView(text).mid(pos, 2));
    }
    return pairs;
}

bool IsHexText(const QString& text) {
    return std::all_of(text.cbegin(), text.cend(), IsHexDigit);
}

QString SpaceHexPairs(const QString& text) {
    QString spaced;
    spaced.reserve(text.size() + text.size() / 2 + 1);
    for (qsizetype pos = 0; pos < text.size(); pos += 2) {
        spaced.append(QStringView(text).mid(pos, 2));
        spaced.append(QLatin1Char(' '));
    }
    return spaced;
}

QString LineBreaksToSeparator(const QString& text, const QString& separator) {
    // CR LF, lone LF and lone CR all count as line breaks and a run of them, blank lines
    // included, stands for a single break: so each run of CR and LF characters, in any
    // mix, becomes one separator.
    QString out;
    out.reserve(text.size());
    for (qsizetype i = 0; i < text.size();) {
        if (!IsLineBreak(text[i])) {
            out.append(text[i++]);
            continue;
        }
        while (i < text.size() && IsLineBreak(text[i])) ++i;
        out.append(separator);
    }
    return out;
}

MessageCutter::MessageCutter(QStringView digits) : digits_(digits), at_(nextStart(0)) {}

qsizetype MessageCutter::nextStart(qsizetype from) const {
    // Only whole bytes count: an F and a 0 from two neighbouring bytes are no F0.
    for (qsizetype i = from; i + 1 < digits_.size(); i += 2) {
        const char16_t high = digits_[i].unicode();
        if ((high == 'F' || high == 'f') && digits_[i + 1] == QLatin1Char('0')) return i;
    }
    return digits_.size();
}

bool MessageCutter::next(QStringView& message) {
    if (at_ >= digits_.size()) return false;
    const qsizetype start = at_ + 2;
    at_ = nextStart(start);
    message = digits_.mid(start, at_ - start);
    return true;
}

QString NormaliseWhitespace(const QString& text, const QString& prefix, const QString& suffix,
                            const QString& separator) {
    const QString gap = suffix + separator + prefix;
    const auto gapRuns = BlankRuns(gap);
    QString out;
    out.reserve(text.size());
    if (gapRuns.isEmpty()) {
        for (QChar c : text) {
            if (!IsBlank(c)) out.append(c);
        }
        return out;
    }

    qsizetype end = text.size();
    while (end > 0 && IsBlank(text[end - 1])) --end;
    if (gapRuns.size() > 1) return text.left(end);

    const QStringView run = QStringView(gap).mid(gapRuns[0].first, gapRuns[0].second);
    qsizetype i = 0;
    while (i < end && IsBlank(text[i])) out.append(text[i++]);
    while (i < end) {
        if (!IsBlank(text[i])) {
            out.append(text[i++]);
            continue;
        }
        while (IsBlank(text[i])) ++i;  // stops before end: text[end - 1] is not blank
        out.append(run);
    }
    return out;
}

HexCheck CheckHexDigits(const QString& digits) {
    if (digits.size() < 4) return HexCheck::TooShort;
    if (!IsHexText(digits)) return HexCheck::NotHex;
    if (digits.left(2).toLower() != QLatin1String("f0") ||
        digits.right(2).toLower() != QLatin1String("f7")) {
        return HexCheck::NotSysEx;
    }
    return HexCheck::Ok;
}

QString ReadHexDigits(const QString& text, const QString& prefix, const QString& suffix,
                      const QString& separator) {
    const QString laidOut = LineBreaksToSeparator(text, separator);
    const int p = int(prefix.size());
    const int s = int(suffix.size());
    const int e = int(separator.size());
    const QString plain = ExtractHexPairs(laidOut, p, s, e);
    if (CheckHexDigits(plain) == HexCheck::Ok) return plain;
    const QString normalised =
        ExtractHexPairs(NormaliseWhitespace(laidOut, prefix, suffix, separator), p, s, e);
    return CheckHexDigits(normalised) == HexCheck::Ok ? normalised : plain;
}

QString NumberedLine(int number, const QString& explanation) {
    const std::string label = PadText("#" + std::to_string(number), " ", 3, false);
    // One line per message of a long run or a file: built in one string.
    QString line;
    line.reserve(static_cast<qsizetype>(label.size()) + explanation.size() + 4);
    line += QLatin1String(label.data(), static_cast<qsizetype>(label.size()));
    line += QLatin1String(". ");
    line += explanation;
    line += QLatin1String("\r\n");
    return line;
}

}  // namespace lumidot
