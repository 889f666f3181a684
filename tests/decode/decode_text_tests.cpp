// The text steps a decoding run does not reach on their own: the one-pass collapse against
// its definition, and the edges of cutting checked digits into messages.
#include <gtest/gtest.h>

#include <QRandomGenerator>

#include "decode/decode_text.h"
#include "decode/hex_digits.h"
#include "support/qt_printers.h"

namespace lumidot {
namespace {

// The doubled unit replaced by one unit, over and over, until the text stops changing.
QString CollapseByRepeatedReplacement(QString text, const QString& unit) {
    for (QString before; !unit.isEmpty() && text != before;) {
        before = text;
        text.replace(unit + unit, unit);
    }
    return text;
}

// Units that overlap themselves, an empty unit, and upper case that must not match.
TEST(CollapseRepeatsTest, MatchesRepeatedReplacementOnRandomTexts) {
    QRandomGenerator random(20240517);
    const QStringList units = {"", "a", "ab", "aa", "aba", "abab", "aab", "baa", "\r"};
    for (int trial = 0; trial < 20000; ++trial) {
        const QString unit = units[random.bounded(int(units.size()))];
        const QStringList pieces = {"a", "b", "A", "\r", unit, unit + unit};
        QString text;
        for (int n = random.bounded(13); n > 0; --n)
            text += pieces[random.bounded(int(pieces.size()))];
        ASSERT_EQ(CollapseRepeats(text, unit), CollapseByRepeatedReplacement(text, unit))
            << ::testing::PrintToString(text) << " unit " << ::testing::PrintToString(unit);
    }
}

// Reading clipboard text in a layout, by its definition: line breaks become separators, the
// pairs are taken from their places, and only a reading that fails the checks is tried again
// with its blanks normalised.
QString ReadByDefinition(const QString& text, const QString& prefix, const QString& suffix,
                         const QString& separator) {
    const QString laidOut = LineBreaksToSeparator(text, separator);
    const int p = int(prefix.size()), s = int(suffix.size()), e = int(separator.size());
    const QString plain = ExtractHexPairs(laidOut, p, s, e);
    if (CheckHexDigits(plain) == HexCheck::Ok) return plain;
    const QString normalised =
        ExtractHexPairs(NormaliseWhitespace(laidOut, prefix, suffix, separator), p, s, e);
    return CheckHexDigits(normalised) == HexCheck::Ok ? normalised : plain;
}

TEST(ReadHexDigitsTest, MatchesItsDefinitionOnRandomTextsAndLayouts) {
    QRandomGenerator random(4242);
    const QStringList pieces = {"F0", "F7", "41", " ", "  ", "\r\n", "\n", "\r", ",", "x", "0x"};
    const QStringList layouts = {"", " ", ",", "0x", "h", ", ", "\t"};
    for (int trial = 0; trial < 20000; ++trial) {
        QString text;
        for (int n = random.bounded(16); n > 0; --n) text += pieces[random.bounded(int(pieces.size()))];
        const QString prefix = layouts[random.bounded(int(layouts.size()))];
        const QString suffix = layouts[random.bounded(int(layouts.size()))];
        const QString separator = layouts[random.bounded(int(layouts.size()))];
        ASSERT_EQ(ReadHexDigits(text, prefix, suffix, separator),
                  ReadByDefinition(text, prefix, suffix, separator))
            << ::testing::PrintToString(text) << " layout " << ::testing::PrintToString(prefix)
            << ::testing::PrintToString(suffix) << ::testing::PrintToString(separator);
    }
}

QStringList Cut(const QString& digits) {
    QStringList pieces;
    const HexDigits read(digits, QString(), 0, 0, false);
    MessageReader messages(read);
    for (std::string piece; messages.next(piece);) pieces << QString::fromStdString(piece);
    return pieces;
}

// Checked digits to the digits of each message, after its F0.
using MessagesRow = std::pair<QString, QStringList>;

class MessagesTest : public ::testing::TestWithParam<MessagesRow> {};

TEST_P(MessagesTest, CutsAtEveryByteF0) {
    EXPECT_EQ(Cut(GetParam().first), GetParam().second);
}

INSTANTIATE_TEST_SUITE_P(
    Rows, MessagesTest,
    ::testing::Values(MessagesRow{"F041F7f042F7", {"41F7", "42F7"}},
                      // Bytes between an F7 and the next F0 stay with the earlier message.
                      MessagesRow{"F0F70001F0F7", {"F70001", "F7"}},
                      MessagesRow{"F0F0F7", {"", "F7"}},
                      // An F and a 0 of two neighbouring bytes do not cut.
                      MessagesRow{"F01F05F7", {"1F05F7"}},
                      // An odd digit count leaves a last byte of one digit.
                      MessagesRow{"F04F7", {"4F7"}}));

// The cut against its definition: the digits written two by two with a space after each
// pair, and that text split at every "F0" in either case.
TEST(MessagesTest, MatchesSplittingTheSpacedTextOnRandomDigits) {
    QRandomGenerator random(77);
    const QStringList pairs = {"F0", "f0", "F7", "1F", "05", "0F", "00", "F", "0"};
    for (int trial = 0; trial < 20000; ++trial) {
        QString digits = QStringLiteral("F0");
        for (int n = random.bounded(9); n > 0; --n) digits += pairs[random.bounded(int(pairs.size()))];
        QStringList expected = SpaceHexPairs(digits).split(QStringLiteral("F0"), Qt::KeepEmptyParts,
                                                           Qt::CaseInsensitive);
        expected.removeFirst();
        for (QString& piece : expected) piece.remove(QLatin1Char(' '));
        ASSERT_EQ(Cut(digits), expected) << ::testing::PrintToString(digits);
    }
}

}  // namespace
}  // namespace lumidot
