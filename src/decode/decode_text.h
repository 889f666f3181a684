// The text steps of reading messages back: from clipboard text in the user's layout to
// the bare hex digits, and from those to one piece of text per message.
#pragma once

#include <QString>
#include <QStringList>

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

// Every two characters followed by one space ("F041" gives "F0 41 ").
QString SpaceHexPairs(const QString& text);

// Line breaks of any kind and any number in a row become one separator.
QString LineBreaksToSeparator(const QString& text, const QString& separator);

// Cuts spaced hex text at every F0 (either case); the pieces after each F0, without it.
QStringList SplitMessages(const QString& spacedHex);

}  // namespace lumidot
