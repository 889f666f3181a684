// The hex digits of clipboard text in the user's layout, read one at a time from the text
// itself. A clipboard may hold megabytes: a decoding run reads it twice (to check it, then
// to cut it into messages) rather than keep a copy of its digits besides its results.
#pragma once

#include <QString>
#include <string>

namespace lumidot {

// The checks that hex digits must pass before they are cut into messages, in this order.
enum class HexCheck {
    Ok,
    TooShort,  // fewer than 4 characters
    NotHex,    // a character that is not a hex digit
    NotSysEx,  // does not begin with F0 or does not end with F7
};

// The digits of a text laid out with a prefix, suffix and separator of given lengths: from
// the prefix's length on, two characters, then the next two after suffix, separator and
// prefix, and so on (the one character left at the very end, too). With lineBreaks set,
// every run of line breaks in the text counts as one separator first.
class HexDigits {
public:
    HexDigits(QString text, QString separator, int prefixLength, int suffixLength, bool lineBreaks);

    // Reads the digits in order, a few thousand at a time into a buffer of its own.
    class Reader {
    public:
        explicit Reader(const HexDigits& digits)
            : digits_(digits), untilPair_(digits.prefixLength_) {}
        // The next digit; false after the last.
        bool next(QChar& digit) {
            if (taken_ == buffered_ && !fill()) return false;
            digit = buffer_[taken_++];
            return true;
        }

    private:
        bool fill();

        static constexpr int kBufferSize = 4096;
        const HexDigits& digits_;
        qsizetype at_ = 0;            // in the text
        qsizetype inSeparator_ = -1;  // in the separator standing for a line break, or -1
        qsizetype untilPair_;         // characters to pass before the next pair starts
        int pairLeft_ = 0;            // characters of the current pair still to take
        QChar buffer_[kBufferSize];
        int buffered_ = 0;
        int taken_ = 0;
    };

    Reader reader() const { return Reader(*this); }
    QString toString() const;
    HexCheck check() const;

private:
    QString text_;
    QString separator_;
    qsizetype prefixLength_;
    qsizetype step_;  // from one pair to the next
    bool lineBreaks_;
};

// Clipboard text in the user's layout to its hex digits: line breaks become separators,
// then the digits are read from their places. Only when that reading fails the checks is
// the text read again with its blanks normalised, and that reading is used if it passes. So
// every text that reads as messages as it stands reads exactly so, and the failure reported
// for a text that cannot be read is the one of the plain reading. check, if given, receives
// the checks' verdict on the digits returned.
HexDigits ReadHexDigitsOf(const QString& text, const QString& prefix, const QString& suffix,
                          const QString& separator, HexCheck* check = nullptr);

// The same, all digits at once.
QString ReadHexDigits(const QString& text, const QString& prefix, const QString& suffix,
                      const QString& separator);

// The checks on digits already read.
HexCheck CheckHexDigits(const QString& digits);

// The messages in checked hex digits, one after the other: the digits after each byte F0
// (either case) up to the next byte F0 or the end, without the F0. Digits before the first F0
// belong to no message, and bytes between an F7 and the next F0 stay with the earlier message.
class MessageReader {
public:
    explicit MessageReader(const HexDigits& digits);
    // The next message's digits (Latin-1); false when there is none left.
    bool next(std::string& message);

private:
    // Reads one byte's two digits; false at the end, with a lone last digit in high.
    bool nextPair(QChar& high, QChar& low, bool& lone);

    HexDigits::Reader reader_;
    bool inMessage_ = false;
};

}  // namespace lumidot
