// The rows of a read-only text as a text box shows them: lines split at CR LF, LF and CR,
// wrapped to a width after spaces (anywhere inside a word longer than a row), and where each
// character stands on its row. The text is kept as one string; the only other memory is
// the list of where lines and rows begin, built in one pass when first asked for.
#pragma once

#include <QFont>
#include <QHash>
#include <QString>
#include <cstdint>
#include <unordered_map>
#include <utility>
#include <vector>

namespace lumidot {

class TextRows {
public:
    // Advances in 64ths of a pixel, the font engine's own unit, so that sums along a row
    // are exact and agree with where the painter puts the glyphs.
    using Fixed = std::int64_t;
    static constexpr Fixed kUnit = 64;

    // One character as drawn: a code point (a surrogate pair counts as one) with the
    // combining marks that follow it. simple means a single printable ASCII character.
    struct Cluster {
        qsizetype start;
        int length;
        Fixed x;
        Fixed width;
        bool simple;
    };

    void setText(const QString& text);
    const QString& text() const { return text_; }
    void setFont(const QFont& font);
    // Rows wrap to width pixels; a negative width keeps every line on one row.
    void setWrapWidth(qreal width);

    qsizetype rowCount();
    qsizetype rowStart(qsizetype row);
    // Where the row's text ends: before the line break, or where the next row begins.
    qsizetype rowEnd(qsizetype row);
    // The row the caret at position stands on.
    qsizetype rowOf(qsizetype position);
    bool rowEndsLine(qsizetype row);
    // Pixels of the widest line (without wrapping).
    qreal widestLine();

    // Pixels from the row's start to position, which lies on the row.
    qreal xOf(qsizetype row, qsizetype position);
    // The caret position nearest to x pixels from the row's start.
    qsizetype positionAt(qsizetype row, qreal x);
    // Where End puts the caret: the row's end, or before the space a wrapped row ends in.
    qsizetype rowCaretEnd(qsizetype row);
    // Where the row's text ends without the spaces a wrapped row hangs past its end.
    qsizetype rowTextEnd(qsizetype row);
    // The characters of the row that reach into [fromX, toX) pixels, in order.
    void visibleClusters(qsizetype row, qreal fromX, qreal toX, std::vector<Cluster>& out);

    // One character on or back; a line break counts as one character.
    qsizetype nextPosition(qsizetype position);
    qsizetype previousPosition(qsizetype position);
    qsizetype nextWordStart(qsizetype position);
    qsizetype previousWordStart(qsizetype position);
    // The word a double click at position selects, as [first, second).
    std::pair<qsizetype, qsizetype> wordAt(qsizetype position);

    qsizetype lineOf(qsizetype position);
    qsizetype lineStart(qsizetype line) {
        ensureLines();
        return lineStarts_[line];
    }
    qsizetype lineEnd(qsizetype line);
    qreal spaceWidth();

private:
    // Combining marks kept with one character; more start characters of their own, so that
    // a pathological run of marks never becomes one giant glyph cluster.
    static constexpr int kMaxMarks = 16;
    static bool isMark(char32_t c);

    struct Mark {
        qsizetype position;
        Fixed x;
    };

    void ensureLines();
    void ensureRows();
    void buildRows();
    Fixed widthOf(char32_t codePoint);
    Fixed measure(const QString& character) const;
    // The character at position, x from the row's start; step is the quick way for ASCII.
    Cluster clusterAt(qsizetype position, qsizetype end, Fixed x);
    Cluster step(qsizetype position, qsizetype end, Fixed x);
    // A place on the row at or before position (or x) to start walking from.
    Mark startNear(qsizetype row, qsizetype position, Fixed x);

    QString text_;
    QFont font_;
    Fixed wrapWidth_ = -1;
    Fixed tabStop_ = 80 * kUnit;

    Fixed ascii_[128] = {};
    // The one advance of every printable ASCII character, or 0 if they differ.
    Fixed uniform_ = 0;
    // Other characters measured once: the first plane in a flat table, the rest in a hash.
    std::vector<std::int32_t> bmp_;
    QHash<char32_t, Fixed> astral_;

    bool linesValid_ = false;
    bool rowsValid_ = false;
    bool widestValid_ = false;
    std::vector<qsizetype> lineStarts_;
    // With wrapping only; without it, rows are lines.
    std::vector<qsizetype> rowStarts_;
    Fixed widest_ = 0;
    // Rows too long to walk from their start: a mark every few thousand characters.
    std::unordered_map<qsizetype, std::vector<Mark>> marks_;
};

}  // namespace lumidot
