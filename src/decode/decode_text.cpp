#include "decode/decode_text.h"

#include <QStringView>

namespace lumidot {

namespace {

bool IsBlank(QChar c) {
    return c == QLatin1Char(' ') || c == QLatin1Char('\t');
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

void AppendNumberedLine(QString& results, int number, QStringView explanation) {
    // The label padded on the left to three characters, as PadText pads it.
    const QString label = QLatin1Char('#') + QString::number(number);
    for (qsizetype pad = 3 - label.size(); pad > 0; --pad) results += QLatin1Char(' ');
    results += label;
    results += QLatin1String(". ");
    results += explanation;
    results += QLatin1String("\r\n");
}

}  // namespace lumidot
