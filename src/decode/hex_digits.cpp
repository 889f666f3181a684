#include "decode/hex_digits.h"

#include "decode/decode_text.h"

namespace lumidot {
namespace {

bool IsPair(QChar high, QChar low, char expectedLow) {
    return (high == QLatin1Char('F') || high == QLatin1Char('f')) &&
           low.toLower() == QLatin1Char(expectedLow);
}

char Latin1(QChar c) {
    return static_cast<char>(c.unicode());
}

}  // namespace

HexDigits::HexDigits(QString text, QString separator, int prefixLength, int suffixLength,
                     bool lineBreaks)
    : text_(std::move(text)),
      separator_(std::move(separator)),
      prefixLength_(qMax(0, prefixLength)),
      step_(prefixLength_ + qMax(0, suffixLength) + separator_.size() + 2),
      lineBreaks_(lineBreaks) {}

bool HexDigits::Reader::fill() {
    // One tight loop over the text with the reading's state in locals: this runs over every
    // character of a clipboard that may hold megabytes, twice.
    const QChar* text = digits_.text_.constData();
    const qsizetype size = digits_.text_.size();
    const QChar* separator = digits_.separator_.constData();
    const qsizetype separatorSize = digits_.separator_.size();
    const bool lineBreaks = digits_.lineBreaks_;
    const qsizetype gap = digits_.step_ - 2;
    qsizetype at = at_, inSeparator = inSeparator_, untilPair = untilPair_;
    int pairLeft = pairLeft_;
    int count = 0;
    while (count < kBufferSize) {
        QChar c;
        if (inSeparator >= 0) {
            if (inSeparator == separatorSize) {
                inSeparator = -1;
                continue;
            }
            c = separator[inSeparator++];
        } else {
            if (at >= size) break;
            c = text[at];
            if (lineBreaks && IsLineBreak(c)) {
                // CR LF, lone LF and lone CR all count as line breaks and a run of them,
                // blank lines included, stands for a single one: one separator.
                while (at < size && IsLineBreak(text[at])) ++at;
                inSeparator = 0;
                continue;
            }
            ++at;
        }
        if (pairLeft == 0) {
            if (untilPair > 0) {
                --untilPair;
                continue;
            }
            pairLeft = 2;
        }
        buffer_[count++] = c;
        if (--pairLeft == 0) untilPair = gap;
    }
    at_ = at;
    inSeparator_ = inSeparator;
    untilPair_ = untilPair;
    pairLeft_ = pairLeft;
    buffered_ = count;
    taken_ = 0;
    return count > 0;
}

QString HexDigits::toString() const {
    QString digits;
    digits.reserve(text_.size() / step_ * 2 + 2);
    Reader read = reader();
    for (QChar c; read.next(c);) digits.append(c);
    return digits;
}

HexCheck HexDigits::check() const {
    qsizetype count = 0;
    bool allHex = true;
    QChar first[2], last[2];
    Reader read = reader();
    for (QChar c; read.next(c); ++count) {
        if (count < 2) first[count] = c;
        last[0] = last[1];
        last[1] = c;
        allHex = allHex && IsHexDigit(c);
    }
    if (count < 4) return HexCheck::TooShort;
    if (!allHex) return HexCheck::NotHex;
    if (!IsPair(first[0], first[1], '0') || !IsPair(last[0], last[1], '7')) {
        return HexCheck::NotSysEx;
    }
    return HexCheck::Ok;
}

HexDigits ReadHexDigitsOf(const QString& text, const QString& prefix, const QString& suffix,
                          const QString& separator, HexCheck* check) {
    const int p = int(prefix.size());
    const int s = int(suffix.size());
    HexDigits plain(text, separator, p, s, true);
    const HexCheck plainCheck = plain.check();
    if (check != nullptr) *check = plainCheck;
    if (plainCheck == HexCheck::Ok) return plain;
    HexDigits normalised(
        NormaliseWhitespace(LineBreaksToSeparator(text, separator), prefix, suffix, separator),
        separator, p, s, false);
    if (normalised.check() != HexCheck::Ok) return plain;
    if (check != nullptr) *check = HexCheck::Ok;
    return normalised;
}

QString ReadHexDigits(const QString& text, const QString& prefix, const QString& suffix,
                      const QString& separator) {
    return ReadHexDigitsOf(text, prefix, suffix, separator).toString();
}

HexCheck CheckHexDigits(const QString& digits) {
    return HexDigits(digits, QString(), 0, 0, false).check();
}

MessageReader::MessageReader(const HexDigits& digits) : reader_(digits) {
    QChar high, low;
    bool lone = false;
    while (nextPair(high, low, lone)) {
        if (IsPair(high, low, '0')) {
            inMessage_ = true;
            return;
        }
    }
}

bool MessageReader::nextPair(QChar& high, QChar& low, bool& lone) {
    lone = false;
    if (!reader_.next(high)) return false;
    if (reader_.next(low)) return true;
    lone = true;
    return false;
}

bool MessageReader::next(std::string& message) {
    if (!inMessage_) return false;
    message.clear();
    QChar high, low;
    bool lone = false;
    while (nextPair(high, low, lone)) {
        // Only whole bytes count: an F and a 0 from two neighbouring bytes are no F0.
        if (IsPair(high, low, '0')) return true;
        message += Latin1(high);
        message += Latin1(low);
    }
    if (lone) message += Latin1(high);
    inMessage_ = false;
    return true;
}

}  // namespace lumidot
