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

// Checked digits to the spaced text of each message, after its F0.
using MessagesRow = std::pair<QString, QStringList>;

class MessagesTest : public ::testing::TestWithParam<MessagesRow> {};

TEST_P(MessagesTest, SpacesThePairsAndCutsAtEveryF0) {
    EXPECT_EQ(SplitMessages(SpaceHexPairs(GetParam().first)), GetParam().second);
}

INSTANTIATE_TEST_SUITE_P(
    Rows, MessagesTest,
    ::testing::Values(MessagesRow{"F041F7f042F7", {" 41 F7 ", " 42 F7 "}},
                      // Bytes between an F7 and the next F0 stay with the earlier message.
                      MessagesRow{"F0F70001F0F7", {" F7 00 01 ", " F7 "}},
                      MessagesRow{"F0F0F7", {" ", " F7 "}},
                      // An odd digit count leaves a last byte of one digit.
                      MessagesRow{"F04F7", {" 4F 7 "}}));

}  // namespace
}  // namespace lumidot
