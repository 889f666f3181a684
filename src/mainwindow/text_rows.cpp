#include "mainwindow/text_rows.h"

#include <QFontMetricsF>
#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>

#include "mainwindow/row_breaks.h"

namespace lumidot {
namespace {

// Rows longer than this (in UTF-16 code units) are walked from marks this far apart.
constexpr qsizetype kMarkSpan = 2048;
constexpr std::int32_t kUnmeasured = -1;
constexpr qsizetype kAnyPosition = std::numeric_limits<qsizetype>::max();
constexpr TextRows::Fixed kAnyX = std::numeric_limits<TextRows::Fixed>::max();

constexpr std::uint64_t kOnes = 0x0001000100010001ULL;
constexpr std::uint64_t kHighBits = 0x8000800080008000ULL;

// Whether four UTF-16 code units read as one word are all printable ASCII, spaces included.
// A borrow or carry out of one lane only happens when that lane fails the test anyway.
inline bool AllPrintable(std::uint64_t four) {
    const std::uint64_t below = (four - 0x20 * kOnes) & ~four;
    const std::uint64_t above = (four + (0x7FFF - 0x7E) * kOnes) | four;
    return ((below | above) & kHighBits) == 0;
}

}  // namespace

bool TextRows::isMark(char32_t c) {
    const QChar::Category category = QChar::category(c);
    return category == QChar::Mark_NonSpacing || category == QChar::Mark_SpacingCombining ||
           category == QChar::Mark_Enclosing;
}

void TextRows::setText(const QString& text) {
    text_ = text;
    linesValid_ = rowsValid_ = widestValid_ = false;
    marks_.clear();
}

void TextRows::setFont(const QFont& font) {
    font_ = font;
    for (char16_t c = 0; c < 128; ++c) ascii_[c] = measure(QString(QChar(c)));
    // A monospaced font: printable ASCII can be measured four characters at a time.
    uniform_ = ascii_[u' '];
    for (char16_t c = 0x20; c < 0x7F; ++c) {
        if (ascii_[c] != uniform_) uniform_ = 0;
    }
    bmp_.clear();
    astral_.clear();
    rowsValid_ = widestValid_ = false;
    marks_.clear();
}

void TextRows::setWrapWidth(qreal width) {
    const Fixed wrap = width < 0 ? -1 : std::max<Fixed>(0, std::llround(width * kUnit));
    if (wrap == wrapWidth_) return;
    wrapWidth_ = wrap;
    rowsValid_ = false;
    marks_.clear();
}

TextRows::Fixed TextRows::measure(const QString& character) const {
    return std::llround(QFontMetricsF(font_).horizontalAdvance(character) * kUnit);
}

TextRows::Fixed TextRows::widthOf(char32_t c) {
    if (c < 128) return ascii_[c];
    if (c < 0x10000) {
        if (bmp_.empty()) bmp_.assign(0x10000, kUnmeasured);
        std::int32_t& width = bmp_[c];
        if (width == kUnmeasured) {
            const QChar::Category category = QChar::category(c);
            const bool zeroWidth =
                category == QChar::Mark_NonSpacing || category == QChar::Mark_Enclosing;
            width = zeroWidth ? 0 : static_cast<std::int32_t>(measure(QString(QChar(c))));
        }
        return width;
    }
    const auto found = astral_.constFind(c);
    if (found != astral_.constEnd()) return *found;
    const Fixed width = isMark(c) ? 0 : measure(QString::fromUcs4(&c, 1));
    astral_.insert(c, width);
    return width;
}

TextRows::Cluster TextRows::clusterAt(qsizetype i, qsizetype end, Fixed x) {
    const auto* s = reinterpret_cast<const char16_t*>(text_.constData());
    const char16_t c = s[i];
    Cluster cluster{i, 1, x, 0, false};
    if (c == u'\t') {
        // Tab stops count from the start of the row, as in a plain text edit.
        cluster.width = tabStop_ - x % tabStop_;
    } else if (c < 128) {
        cluster.width = ascii_[c];
        cluster.simple = c >= 0x20 && c < 0x7F;
    } else if (QChar::isHighSurrogate(c) && i + 1 < end && QChar::isLowSurrogate(s[i + 1])) {
        cluster.length = 2;
        cluster.width = widthOf(QChar::surrogateToUcs4(c, s[i + 1]));
    } else {
        cluster.width = widthOf(c);
    }
    for (int marks = 0; marks < kMaxMarks && i + cluster.length < end; ++marks) {
        const qsizetype at = i + cluster.length;
        if (s[at] < 0x300) break;
        char32_t code = s[at];
        int length = 1;
        if (QChar::isHighSurrogate(s[at]) && at + 1 < end && QChar::isLowSurrogate(s[at + 1])) {
            code = QChar::surrogateToUcs4(s[at], s[at + 1]);
            length = 2;
        }
        if (!isMark(code)) break;
        cluster.length += length;
        cluster.width += widthOf(code);
        cluster.simple = false;
    }
    return cluster;
}

TextRows::Cluster TextRows::step(qsizetype i, qsizetype end, Fixed x) {
    const auto* s = reinterpret_cast<const char16_t*>(text_.constData());
    const char16_t c = s[i];
    if (c < 128 && c != u'\t' && (i + 1 == end || s[i + 1] < 0x300)) {
        return {i, 1, x, ascii_[c], c >= 0x20 && c < 0x7F};
    }
    return clusterAt(i, end, x);
}

void TextRows::ensureLines() {
    if (linesValid_) return;
    lineStarts_.clear();
    lineStarts_.push_back(0);
    const auto* s = reinterpret_cast<const char16_t*>(text_.constData());
    const qsizetype n = text_.size();
    // Four characters at a time while none of them is a control character (13 or less).
    qsizetype i = 0;
    while (i < n) {
        for (std::uint64_t four; i + 4 <= n; i += 4) {
            std::memcpy(&four, s + i, sizeof four);
            if (((four - 14 * kOnes) & ~four & kHighBits) != 0) break;
        }
        for (const qsizetype stop = std::min(n, i + 4); i < stop; ++i) {
            const char16_t c = s[i];
            if (c == u'\n') {
                lineStarts_.push_back(i + 1);
            } else if (c == u'\r') {
                if (i + 1 < n && s[i + 1] == u'\n') ++i;
                lineStarts_.push_back(i + 1);
            }
        }
    }
    if (lineStarts_.capacity() > 2 * lineStarts_.size()) lineStarts_.shrink_to_fit();
    linesValid_ = true;
}

qsizetype TextRows::lineEnd(qsizetype line) {
    ensureLines();
    if (line + 1 >= static_cast<qsizetype>(lineStarts_.size())) return text_.size();
    const qsizetype next = lineStarts_[line + 1];
    const bool crLf =
        text_.at(next - 1) == u'\n' && next - 2 >= lineStarts_[line] && text_.at(next - 2) == u'\r';
    return next - (crLf ? 2 : 1);
}

qsizetype TextRows::lineOf(qsizetype position) {
    ensureLines();
    return std::upper_bound(lineStarts_.begin(), lineStarts_.end(), position) -
           lineStarts_.begin() - 1;
}

void TextRows::ensureRows() {
    ensureLines();
    if (rowsValid_) return;
    rowStarts_.clear();
    if (wrapWidth_ >= 0) buildRows();
    if (rowStarts_.capacity() > 2 * rowStarts_.size()) rowStarts_.shrink_to_fit();
    rowsValid_ = true;
}

// One pass over the text. Spaces never push a row over the width: they hang past its end,
// and the row may break after them. A word that does not fit moves to a new row; a word
// longer than a whole row breaks where the row is full.
void TextRows::buildRows() {
    const auto* s = reinterpret_cast<const char16_t*>(text_.constData());
    const qsizetype lines = lineStarts_.size();
    for (qsizetype line = 0; line < lines; ++line) {
        const qsizetype end = lineEnd(line);
        qsizetype rowStart = lineStarts_[line];
        rowStarts_.push_back(rowStart);
        Fixed x = 0;
        qsizetype breakAt = -1;
        Fixed xAtBreak = 0;
        char32_t before = 0;
        for (qsizetype i = rowStart; i < end;) {
            if (uniform_ > 0 && before < kFirstBreakingCodePoint) {
                // Whole groups of four printable ASCII characters that fit on the row; the
                // character after them must not be a mark that belongs to the last.
                while (i + 4 <= end && x + 4 * uniform_ <= wrapWidth_ &&
                       (i + 4 == end || s[i + 4] < 0x300)) {
                    std::uint64_t four;
                    std::memcpy(&four, s + i, sizeof four);
                    if (!AllPrintable(four)) break;
                    for (int k = 3; k >= 0; --k) {
                        if (s[i + k] == u' ') {
                            breakAt = i + k + 1;
                            xAtBreak = x + (k + 1) * uniform_;
                            break;
                        }
                    }
                    x += 4 * uniform_;
                    i += 4;
                    before = s[i - 1] == u' ' ? 0 : s[i - 1];
                }
                if (i >= end) break;
            }
            const char16_t c = s[i];
            char32_t code = c;
            Fixed width = 0;
            int length = 1;
            if (c < 0x80 && c != u'\t' && (i + 1 == end || s[i + 1] < 0x300)) {
                // Plain ASCII, nearly all of any clipboard: no call, no lookup beyond the table.
                width = ascii_[c];
                if (c == u' ') {
                    x += width;
                    breakAt = ++i;
                    xAtBreak = x;
                    before = 0;
                    continue;
                }
            } else {
                const Cluster cluster = clusterAt(i, end, x);
                width = cluster.width;
                length = cluster.length;
                if (IsBreakSpace(c)) {
                    x += width;
                    i += length;
                    breakAt = i;
                    xAtBreak = x;
                    before = 0;
                    continue;
                }
                if (QChar::isHighSurrogate(c) && length > 1 && QChar::isLowSurrogate(s[i + 1])) {
                    code = QChar::surrogateToUcs4(c, s[i + 1]);
                }
            }
            if ((code >= kFirstBreakingCodePoint || before >= kFirstBreakingCodePoint) &&
                before != 0 && MayBreakBetween(before, code)) {
                breakAt = i;
                xAtBreak = x;
            }
            if (x + width > wrapWidth_ && i > rowStart) {
                if (breakAt > rowStart) {
                    // The word so far holds no spaces, hence no tabs: its width just moves.
                    rowStart = breakAt;
                    x -= xAtBreak;
                    rowStarts_.push_back(rowStart);
                }
                if (x + width > wrapWidth_ && i > rowStart) {
                    rowStart = i;
                    x = 0;
                    rowStarts_.push_back(rowStart);
                }
            }
            x += width;
            i += length;
            before = code;
        }
    }
}

qsizetype TextRows::rowCount() {
    ensureRows();
    return wrapWidth_ >= 0 ? rowStarts_.size() : lineStarts_.size();
}

qsizetype TextRows::rowStart(qsizetype row) {
    ensureRows();
    return wrapWidth_ >= 0 ? rowStarts_[row] : lineStarts_[row];
}

qsizetype TextRows::rowEnd(qsizetype row) {
    ensureRows();
    if (wrapWidth_ < 0) return lineEnd(row);
    const qsizetype end = lineEnd(lineOf(rowStarts_[row]));
    return row + 1 < static_cast<qsizetype>(rowStarts_.size()) ? std::min(rowStarts_[row + 1], end)
                                                               : end;
}

bool TextRows::rowEndsLine(qsizetype row) {
    return rowEnd(row) == lineEnd(lineOf(rowStart(row)));
}

qsizetype TextRows::rowOf(qsizetype position) {
    ensureRows();
    if (wrapWidth_ < 0) return lineOf(position);
    return std::upper_bound(rowStarts_.begin(), rowStarts_.end(), position) - rowStarts_.begin() -
           1;
}

qreal TextRows::widestLine() {
    ensureLines();
    if (!widestValid_) {
        widest_ = 0;
        const auto* s = reinterpret_cast<const char16_t*>(text_.constData());
        const qsizetype lines = lineStarts_.size();
        for (qsizetype line = 0; line < lines; ++line) {
            const qsizetype end = lineEnd(line);
            Fixed x = 0;
            for (qsizetype i = lineStarts_[line]; i < end;) {
                if (uniform_ > 0) {
                    for (std::uint64_t four; i + 4 <= end && (i + 4 == end || s[i + 4] < 0x300);
                         i += 4) {
                        std::memcpy(&four, s + i, sizeof four);
                        if (!AllPrintable(four)) break;
                        x += 4 * uniform_;
                    }
                    if (i >= end) break;
                }
                const char16_t c = s[i];
                if (c < 0x80 && c != u'\t' && (i + 1 == end || s[i + 1] < 0x300)) {
                    x += ascii_[c];
                    ++i;
                } else {
                    const Cluster cluster = clusterAt(i, end, x);
                    x += cluster.width;
                    i += cluster.length;
                }
            }
            widest_ = std::max(widest_, x);
        }
        widestValid_ = true;
    }
    return static_cast<qreal>(widest_) / kUnit;
}

TextRows::Mark TextRows::startNear(qsizetype row, qsizetype position, Fixed x) {
    const qsizetype start = rowStart(row);
    const qsizetype end = rowEnd(row);
    if (end - start < 2 * kMarkSpan) return {start, 0};
    auto found = marks_.find(start);
    if (found == marks_.end()) {
        std::vector<Mark> marks{{start, 0}};
        Fixed at = 0;
        qsizetype next = start + kMarkSpan;
        for (qsizetype i = start; i < end;) {
            if (i >= next) {
                marks.push_back({i, at});
                next = i + kMarkSpan;
            }
            const Cluster cluster = step(i, end, at);
            at += cluster.width;
            i += cluster.length;
        }
        found = marks_.emplace(start, std::move(marks)).first;
    }
    const std::vector<Mark>& marks = found->second;
    // Positions and x both grow along the row, so the marks before both form a prefix.
    const auto after = std::partition_point(marks.begin(), marks.end(), [&](const Mark& mark) {
        return mark.position <= position && mark.x <= x;
    });
    return after == marks.begin() ? marks.front() : *(after - 1);
}

qreal TextRows::xOf(qsizetype row, qsizetype position) {
    const qsizetype end = rowEnd(row);
    const qsizetype target = std::min(position, end);
    const Mark from = startNear(row, target, kAnyX);
    Fixed x = from.x;
    for (qsizetype i = from.position; i < target;) {
        const Cluster cluster = step(i, end, x);
        if (i + cluster.length > target) break;
        x += cluster.width;
        i += cluster.length;
    }
    return static_cast<qreal>(x) / kUnit;
}

qsizetype TextRows::positionAt(qsizetype row, qreal x) {
    const Fixed target = std::llround(x * kUnit);
    const qsizetype end = rowEnd(row);
    const Mark from = startNear(row, kAnyPosition, target);
    Fixed at = from.x;
    for (qsizetype i = from.position; i < end;) {
        const Cluster cluster = step(i, end, at);
        if (target < at + cluster.width / 2) return i;
        at += cluster.width;
        i += cluster.length;
    }
    return rowCaretEnd(row);
}

void TextRows::visibleClusters(qsizetype row, qreal fromX, qreal toX, std::vector<Cluster>& out) {
    out.clear();
    const Fixed from = static_cast<Fixed>(std::floor(fromX * kUnit));
    const Fixed to = static_cast<Fixed>(std::ceil(toX * kUnit));
    const qsizetype end = rowEnd(row);
    const Mark start = startNear(row, kAnyPosition, from);
    Fixed at = start.x;
    for (qsizetype i = start.position; i < end && at < to;) {
        const Cluster cluster = step(i, end, at);
        if (at + cluster.width > from) out.push_back(cluster);
        at += cluster.width;
        i += cluster.length;
    }
}

qreal TextRows::spaceWidth() {
    return static_cast<qreal>(ascii_[' ']) / kUnit;
}

}  // namespace lumidot
