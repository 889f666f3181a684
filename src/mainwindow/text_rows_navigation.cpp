// Moving the caret through the text: by characters, over line breaks, and by words, and
// where a row's caret and text stop.
#include <array>
#include <string_view>

#include "mainwindow/text_rows.h"

namespace lumidot {
namespace {

// What a double click or Ctrl+arrow treats as one unit: a run of letters and digits, a run
// of punctuation, or a run of spaces.
enum class Kind { Space, Separator, Word };

constexpr std::u16string_view kSeparators = u".,?!@#$:;-<>[](){}=/+%&^*'\"`~|\\";
constexpr std::array<bool, 128> kIsSeparator = [] {
    std::array<bool, 128> table{};
    for (const char16_t c : kSeparators) table[c] = true;
    return table;
}();

Kind KindOf(QChar c) {
    if (c.unicode() < 128 && kIsSeparator[c.unicode()]) return Kind::Separator;
    return c.isSpace() ? Kind::Space : Kind::Word;
}

}  // namespace

qsizetype TextRows::nextPosition(qsizetype position) {
    const qsizetype line = lineOf(position);
    const qsizetype end = lineEnd(line);
    if (position >= end) {
        return line + 1 < static_cast<qsizetype>(lineStarts_.size()) ? lineStarts_[line + 1]
                                                                     : position;
    }
    return position + step(position, end, 0).length;
}

qsizetype TextRows::previousPosition(qsizetype position) {
    const qsizetype line = lineOf(position);
    const qsizetype start = lineStarts_[line];
    if (position <= start) return line > 0 ? lineEnd(line - 1) : 0;
    // Back to a character that is neither a mark nor the second half of a pair, then
    // forward character by character, so that both directions agree on the boundaries.
    qsizetype from = position - 1;
    for (int back = 0; from > start && back < 2 * kMaxMarks + 2; ++back) {
        const char16_t c = text_.at(from).unicode();
        if (!QChar::isLowSurrogate(c) && !(c >= 0x300 && isMark(c))) break;
        --from;
    }
    const qsizetype end = lineEnd(line);
    qsizetype last = from;
    for (qsizetype i = from; i < position; i += step(i, end, 0).length) last = i;
    return last;
}

std::pair<qsizetype, qsizetype> TextRows::wordAt(qsizetype position) {
    const qsizetype line = lineOf(position);
    const qsizetype start = lineStarts_[line];
    const qsizetype end = lineEnd(line);
    // On a space, or past the end, the word before it is meant.
    qsizetype at = position;
    if (at >= end || KindOf(text_.at(at)) == Kind::Space) {
        while (at > start && KindOf(text_.at(at - 1)) == Kind::Space) --at;
        if (at == start) return {position, position};
        --at;
    }
    const Kind kind = KindOf(text_.at(at));
    qsizetype first = at;
    qsizetype last = at + 1;
    while (first > start && KindOf(text_.at(first - 1)) == kind) --first;
    while (last < end && KindOf(text_.at(last)) == kind) ++last;
    return {first, last};
}

qsizetype TextRows::nextWordStart(qsizetype position) {
    const qsizetype end = lineEnd(lineOf(position));
    if (position >= end) return nextPosition(position);
    qsizetype at = position;
    const Kind kind = KindOf(text_.at(at));
    if (kind != Kind::Space) {
        while (at < end && KindOf(text_.at(at)) == kind) ++at;
    }
    while (at < end && KindOf(text_.at(at)) == Kind::Space) ++at;
    return at;
}

qsizetype TextRows::previousWordStart(qsizetype position) {
    const qsizetype start = lineStarts_[lineOf(position)];
    if (position <= start) return previousPosition(position);
    qsizetype at = position;
    while (at > start && KindOf(text_.at(at - 1)) == Kind::Space) --at;
    if (at > start) {
        const Kind kind = KindOf(text_.at(at - 1));
        while (at > start && KindOf(text_.at(at - 1)) == kind) --at;
    }
    return at;
}

qsizetype TextRows::rowCaretEnd(qsizetype row) {
    const qsizetype end = rowEnd(row);
    if (end > rowStart(row) && !rowEndsLine(row) && text_.at(end - 1).isSpace()) return end - 1;
    return end;
}

qsizetype TextRows::rowTextEnd(qsizetype row) {
    const qsizetype start = rowStart(row);
    qsizetype end = rowEnd(row);
    if (rowEndsLine(row)) return end;
    while (end > start && text_.at(end - 1).isSpace()) --end;
    return end;
}

}  // namespace lumidot
