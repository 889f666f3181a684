// The text steps of reading messages back from clipboard text in the user's layout (the
// reading of the digits themselves is in hex_digits.h), and the lines of the results.
#pragma once

#include <QString>
#include <QStringList>
#include <string>

namespace lumidot {

// Replaces unit written twice in a row by one unit until nothing changes. An empty unit
// leaves the text as it is.
QString CollapseRepeats(const QString& text, const QString& unit);

// The two characters of every byte in text laid out with a prefix, suffix and separator of
// these lengths: from position prefixLength (counting from 0), stepping by
// prefixLength + suffixLength + separatorLength + 2. The characters standing in the
// prefix, suffix and separator places are skipped without being compared.
QString ExtractHexPairs(const QString& text, int prefixLength, int suffixLength,
                        int separatorLength);

// True when every character is a hex digit of either case (true for empty text).
bool IsHexText(const QString& text);
inline bool IsHexDigit(QChar c) {
    const char16_t u = c.unicode();
    return (u >= '0' && u <= '9') || (u >= 'A' && u <= 'F') || (u >= 'a' && u <= 'f');
}
// CR or LF.
inline bool IsLineBreak(QChar c) {
    return c == QLatin1Char('\r') || c == QLatin1Char('\n');
}

// Every two characters followed by one space ("F041" gives "F0 41 ").
QString SpaceHexPairs(const QString& text);

// Line breaks of any kind and any number in a row become one separator.
QString LineBreaksToSeparator(const QString& text, const QString& separator);

// Spaces and tabs ("blanks") in text whose line breaks have already become separators,
// brought into the layout's own shape so that stray ones do not shift the byte positions.
// The gap between two bytes of laid-out text is suffix + separator + prefix:
//  - no blank in that gap: every blank in the text is removed;
//  - one run of blanks in it: every run of blanks between two other characters becomes
//    that run, blanks at the end are removed, blanks at the start are kept;
//  - several runs: only the blanks at the end are removed.
// Blanks at the start stay because a line break at the start becomes a leading separator,
// and a text that starts with one is refused; a leading space is treated the same.
// Text laid out with this prefix, suffix and separator keeps its digits in the same places.
QString NormaliseWhitespace(const QString& text, const QString& prefix, const QString& suffix,
                            const QString& separator);

// Appends one line of the results to results: "#" and the number right-aligned in three
// characters, ". ", the explanation and CR LF (" #1. ...", "#10. ...").
void AppendNumberedLine(QString& results, int number, QStringView explanation);

}  // namespace lumidot
