// The text steps a decoding run does not reach on their own: the one-pass collapse against
// its definition, and the edges of cutting checked digits into messages.
#include <gtest/gtest.h>

#include <QRandomGenerator>

#include "decode/decode_text.h"
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

QStringList Cut(const QString& digits) {
    QStringList pieces;
    MessageCutter cutter(digits);
    for (QStringView piece; cutter.next(piece);) pieces << piece.toString();
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
