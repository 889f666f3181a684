#include <gtest/gtest.h>

#include <QRandomGenerator>

#include "decode/decode_text.h"
#include "support/qt_printers.h"

namespace lumidot {
namespace {

std::string Shown(const QString& text) {
    return ::testing::PrintToString(text);
}

// The doubled unit replaced by one unit, over and over, until the length stops changing.
QString CollapseByRepeatedReplacement(QString text, const QString& unit) {
    if (unit.isEmpty()) return text;
    qsizetype length;
    do {
        length = text.size();
        text.replace(unit + unit, unit);
    } while (text.size() != length);
    return text;
}

QString RandomText(QRandomGenerator& random, const QStringList& pieces, int maxPieces) {
    QString text;
    const int count = random.bounded(maxPieces + 1);
    for (int i = 0; i < count; ++i) text += pieces[random.bounded(int(pieces.size()))];
    return text;
}

// --- CollapseRepeats -------------------------------------------------------------------

struct CollapseRow {
    QString text;
    QString unit;
    QString expected;
};

class CollapseRepeatsTest : public ::testing::TestWithParam<CollapseRow> {};

TEST_P(CollapseRepeatsTest, LeavesNoDoubledUnit) {
    const CollapseRow& row = GetParam();
    EXPECT_EQ(CollapseRepeats(row.text, row.unit), row.expected)
        << Shown(row.text) << " unit " << Shown(row.unit);
}

INSTANTIATE_TEST_SUITE_P(
    Rows, CollapseRepeatsTest,
    ::testing::Values(CollapseRow{"a\r\r\rb\r\rc", "\r", "a\rb\rc"},
                      CollapseRow{"a\r\rb", "", "a\r\rb"},
                      // A unit that overlaps itself: "aaaa" becomes "aa", "aaa" stays.
                      CollapseRow{"aaaaa", "aa", "aaa"}, CollapseRow{"abAB", "ab", "abAB"}));

TEST(CollapseRepeatsTest, MatchesRepeatedReplacementOnRandomTexts) {
    QRandomGenerator random(20240517);
    const QStringList units = {"a", "ab", "aa", "aba", "abab", "aab", "baa", "\r"};
    for (int trial = 0; trial < 20000; ++trial) {
        const QString unit = units[random.bounded(int(units.size()))];
        const QString text = RandomText(random, {"a", "b", "\r", unit, unit + unit}, 12);
        ASSERT_EQ(CollapseRepeats(text, unit), CollapseByRepeatedReplacement(text, unit))
            << Shown(text) << " unit " << Shown(unit);
    }
}

TEST(CollapseRepeatsTest, LongRunsBecomeOneUnit) {
    const QString text = "F0" + QString(300000, '\r') + "F7" + QString("\r\n").repeated(100000);
    EXPECT_EQ(CollapseRepeats(text, "\r"), "F0\rF7" + QString("\r\n").repeated(100000));
}

// --- ExtractHexPairs -------------------------------------------------------------------

struct PairsRow {
    QString text;
    int prefix, suffix, separator;
    QString expected;
};

class ExtractHexPairsTest : public ::testing::TestWithParam<PairsRow> {};

TEST_P(ExtractHexPairsTest, TakesTheCharactersInTheDigitPlaces) {
    const PairsRow& row = GetParam();
    EXPECT_EQ(ExtractHexPairs(row.text, row.prefix, row.suffix, row.separator), row.expected)
        << Shown(row.text);
}

INSTANTIATE_TEST_SUITE_P(
    Rows, ExtractHexPairsTest,
    ::testing::Values(PairsRow{"F0 41 10 F7", 0, 0, 1, "F04110F7"},
                      // Three characters: the last one is picked up alone.
                      PairsRow{"F0F7", 0, 0, 1, "F07"}, PairsRow{"F04110F7", 0, 0, 0, "F04110F7"},
                      // Whatever stands in the prefix, suffix and separator places.
                      PairsRow{"$$F0;-ab41.\tzzF7!", 2, 1, 1, "F041F7"},
                      PairsRow{"0xF", 2, 0, 1, "F"}));

TEST(SpaceHexPairsTest, PutsASpaceAfterEveryPair) {
    EXPECT_EQ(SpaceHexPairs("F04110F7"), "F0 41 10 F7 ");
    EXPECT_EQ(SpaceHexPairs("F0F"), "F0 F ");
}

// --- LineBreaksToSeparator -------------------------------------------------------------

struct BreaksRow {
    QString text;
    QString separator;
    QString expected;
};

class LineBreaksTest : public ::testing::TestWithParam<BreaksRow> {};

TEST_P(LineBreaksTest, EveryRunOfLineBreaksBecomesOneSeparator) {
    const BreaksRow& row = GetParam();
    EXPECT_EQ(LineBreaksToSeparator(row.text, row.separator), row.expected) << Shown(row.text);
}

INSTANTIATE_TEST_SUITE_P(Rows, LineBreaksTest,
                         ::testing::Values(BreaksRow{"F7\r\n\r\n\n\r\rF0", " ", "F7 F0"},
                                           BreaksRow{"\r\nF0 F7\r\n", " ", " F0 F7 "},
                                           BreaksRow{"F7\r\nF0", "", "F7F0"},
                                           BreaksRow{"F7\n\nF0", ", ", "F7, F0"}));

TEST(LineBreaksTest, MatchesTheStepByStepReplacementOnRandomTexts) {
    QRandomGenerator random(7);
    for (int trial = 0; trial < 5000; ++trial) {
        const QString text = RandomText(random, {"\r", "\n", "\r\n", "F0", " "}, 10);
        const QString separator = RandomText(random, {" ", ",", "\r"}, 2);
        QString expected = text;
        expected.replace("\r\n", "\r").replace('\n', '\r');
        expected = CollapseRepeats(expected, "\r").replace('\r', separator);
        ASSERT_EQ(LineBreaksToSeparator(text, separator), expected)
            << Shown(text) << " separator " << Shown(separator);
    }
}

// --- SplitMessages -----------------------------------------------------------------------

class SplitMessagesTest : public ::testing::TestWithParam<std::pair<QString, QStringList>> {};

TEST_P(SplitMessagesTest, CutsAtEveryF0) {
    EXPECT_EQ(SplitMessages(GetParam().first), GetParam().second) << Shown(GetParam().first);
}

INSTANTIATE_TEST_SUITE_P(
    Rows, SplitMessagesTest,
    ::testing::Values(std::pair<QString, QStringList>{"F0 41 F7 ", {" 41 F7 "}},
                      std::pair<QString, QStringList>{"F0 41 F7 f0 42 F7 ", {" 41 F7 ", " 42 F7 "}},
                      // Bytes between an F7 and the next F0 stay with the earlier message.
                      std::pair<QString, QStringList>{"F0 F7 00 01 F0 F7 ", {" F7 00 01 ", " F7 "}},
                      std::pair<QString, QStringList>{"F0 F0 F7 ", {" ", " F7 "}},
                      std::pair<QString, QStringList>{"41 F7 ", {}}));

// --- CheckHexDigits, NumberedLine ---------------------------------------------------------

class CheckHexDigitsTest : public ::testing::TestWithParam<std::pair<QString, HexCheck>> {};

TEST_P(CheckHexDigitsTest, ReportsTheFirstCheckThatFails) {
    EXPECT_EQ(CheckHexDigits(GetParam().first), GetParam().second) << Shown(GetParam().first);
}

INSTANTIATE_TEST_SUITE_P(Rows, CheckHexDigitsTest,
                         ::testing::Values(std::pair{QString(""), HexCheck::TooShort},
                                           std::pair{QString("F0F"), HexCheck::TooShort},
                                           std::pair{QString("f0F7"), HexCheck::Ok},
                                           std::pair{QString("F0Z"), HexCheck::TooShort},
                                           std::pair{QString("F0 F7"), HexCheck::NotHex},
                                           std::pair{QString("F0G7"), HexCheck::NotHex},
                                           std::pair{QString("41F7"), HexCheck::NotSysEx},
                                           std::pair{QString("F0F77"), HexCheck::NotSysEx}));

TEST(NumberedLineTest, RightAlignsTheLabelInThreeCharacters) {
    EXPECT_EQ(NumberedLine(1, "Graphic: Display page 5"), " #1. Graphic: Display page 5\r\n");
    EXPECT_EQ(NumberedLine(10, "x"), "#10. x\r\n");
    EXPECT_EQ(NumberedLine(1234, ""), "#1234. \r\n");
}

}  // namespace
}  // namespace lumidot
