// The text steps of reading messages back: from clipboard text in the user's layout to
// the bare hex digits, and from those to one piece of text per message.
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

// Every two characters followed by one space ("F041" gives "F0 41 ").
QString SpaceHexPairs(const QString& text);

// Line breaks of any kind and any number in a row become one separator.
QString LineBreaksToSeparator(const QString& text, const QString& separator);

// The messages in checked hex digits, one after the other: the digits after each byte F0
// (either case) up to the next byte F0 or the end, without the F0. Digits before the first F0
// belong to no message, and bytes between an F7 and the next F0 stay with the earlier message.
class MessageCutter {
public:
    explicit MessageCutter(QStringView digits);
    // The next message's digits; false when there is none left.
    bool next(QStringView& message);

private:
    qsizetype nextStart(qsizetype from) const;

    QStringView digits_;
    qsizetype at_;
};

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

// The checks that hex digits must pass before they are cut into messages, in this order.
enum class HexCheck {
    Ok,
    TooShort,  // fewer than 4 characters
    NotHex,    // a character that is not a hex digit
    NotSysEx,  // does not begin with F0 or does not end with F7
};
HexCheck CheckHexDigits(const QString& digits);

// Clipboard text in the user's layout to the bare hex digits: line breaks become
// separators, then the digits are read from their places. Only when that reading fails the
// checks is the text read again with its blanks normalised, and that reading is used if it
// passes. So every text that reads as messages as it stands reads exactly so, and the
// failure reported for a text that cannot be read is the one of the plain reading.
QString ReadHexDigits(const QString& text, const QString& prefix, const QString& suffix,
                      const QString& separator);

// Appends one line of the results to results: "#" and the number right-aligned in three
// characters, ". ", the explanation (UTF-8) and CR LF (" #1. ...", "#10. ...").
void AppendNumberedLine(QString& results, int number, const std::string& explanation);

}  // namespace lumidot
