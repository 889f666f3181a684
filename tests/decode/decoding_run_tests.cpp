// Whole decoding runs through the real window: clipboard in, pane, page, results window.
#include <QLabel>
#include <QLocale>
#include <random>

#include "decode/frm_decoded.h"
#include "mainwindow/read_only_text_box.h"
#include "support/main_form_fixture.h"
#include "ui_frm_decoded.h"

namespace lumidot::testing {
namespace {

class DecodingRunTest : public MainFormTest {
protected:
    void SetUp() override {
        QLocale::setDefault(QLocale(QLocale::English, QLocale::UnitedStates));
        MainFormTest::SetUp();
        fake.prompts.onModal = [this](QDialog& dialog) {
            auto& results = static_cast<frmDecoded&>(dialog);
            countLabel = results.form().lblNumDecoded->text();
            resultText = results.form().txtDecodedOut->text();
            cleanInfo = results.form().lblCleanInfo->text();
            QTest::keyClick(&dialog, Qt::Key_Return);
        };
    }
    void TearDown() override {
        MainFormTest::TearDown();
        QLocale::setDefault(QLocale::system());
    }
    // Puts text on the clipboard and presses "Read from clipboard".
    void decode(const QString& clipboardText) {
        fake.clipboard.text = clipboardText;
        QTest::mouseClick(ui().cmdSysExDecode, Qt::LeftButton);
    }
    QString failureTitle() const {
        return fake.prompts.shown.empty() ? QString() : fake.prompts.shown.back().title;
    }

    QString countLabel, resultText, cleanInfo;
};

const QString kDisplay5 = QStringLiteral("F0 41 10 45 12 10 20 00 05 4B F7");
const QString kText = QStringLiteral("F0 41 10 45 12 10 00 00 61 62 63 4A F7");

TEST_F(DecodingRunTest, DisplayPageFiveWithALineEnd) {
    decode(kDisplay5 + QStringLiteral("\r\n"));
    EXPECT_EQ(resultText, QStringLiteral(" #1. Graphic: Display page 5\r\n"));
    EXPECT_EQ(pane(), kDisplay5);
    EXPECT_EQ(window->FDPageNum(), 5);
    EXPECT_TRUE(ui().optSEGDisplay->isChecked());
    EXPECT_EQ(countLabel, QStringLiteral("1 SysEx message has been decoded as follows:"));
    EXPECT_TRUE(cleanInfo.startsWith(QStringLiteral("Cleaned version of the message is now")));
}

struct RunRow {
    const char* name;
    const char* clipboard;
    const char* results;  // empty when the run fails
    const char* failure;  // title of the box, empty when the run succeeds
};

class DecodingRowTest : public DecodingRunTest, public ::testing::WithParamInterface<RunRow> {};

TEST_P(DecodingRowTest, DecodesOrRefuses) {
    const RunRow& row = GetParam();
    decode(QString::fromLatin1(row.clipboard));
    EXPECT_EQ(failureTitle(), QString::fromLatin1(row.failure));
    EXPECT_EQ(resultText, QString::fromLatin1(row.results));
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(
    Clipboard, DecodingRowTest,
    ::testing::Values(
        RunRow{"NoSysEx", "F0 F7", " #1. (No SysEx)\r\n", ""},
        RunRow{"NoSpace", "F0F7", "", "Nothing to decode!"},
        RunRow{"EmptyClipboard", "", "", "Nothing to decode!"},
        RunRow{"LowerCase", "f0 41 10 45 12 10 00 00 61 62 63 4a f7", " #1. Display text: abc\r\n", ""},
        RunRow{"CrLf", "F0 41 10 45 12 10 00 00 61 62 63 4A F7\r\nF0 F7", " #1. Display text: abc\r\n #2. (No SysEx)\r\n", ""},
        RunRow{"Lf", "F0 41 10 45 12 10 00 00 61 62 63 4A F7\nF0 F7", " #1. Display text: abc\r\n #2. (No SysEx)\r\n", ""},
        RunRow{"Cr", "F0 41 10 45 12 10 00 00 61 62 63 4A F7\rF0 F7", " #1. Display text: abc\r\n #2. (No SysEx)\r\n", ""},
        RunRow{"BlankLines", "F0 41 10 45 12 10 00 00 61 62 63 4A F7\r\n\r\n\n\rF0 F7\r\n", " #1. Display text: abc\r\n #2. (No SysEx)\r\n", ""},
        RunRow{"LeadingLineBreak", "\r\nF0 F7", "", "Invalid character!"},
        RunRow{"NotHex", "F0 4G F7", "", "Invalid character!"},
        RunRow{"TextAfterLastF7", "F0 F7 41", "", "Is this SysEx?"},
        RunRow{"NoLeadingF0", "41 10 F7", "", "Is this SysEx?"},
        RunRow{"TabsBetweenBytes", "F0\t41\t10\t45\t12\t10\t20\t00\t05\t4B\tF7", " #1. Graphic: Display page 5\r\n", ""},
        RunRow{"DoubledSpaces", "F0  41 10 45 12 10 20 00 05 4B  F7", " #1. Graphic: Display page 5\r\n", ""}),
    [](const auto& info) { return std::string(info.param.name); });
// clang-format on

struct LayoutRow {
    const char* name;
    const char* prefix;
    const char* suffix;
    const char* separator;
    const char* clipboard;
};

class DecodingLayoutTest : public DecodingRunTest,
                           public ::testing::WithParamInterface<LayoutRow> {};

TEST_P(DecodingLayoutTest, ReadsTheUsersLayoutBack) {
    const LayoutRow& row = GetParam();
    ui().txtHexPrefix->setText(QString::fromLatin1(row.prefix));
    ui().txtHexSuffix->setText(QString::fromLatin1(row.suffix));
    ui().txtHexSep->setText(QString::fromLatin1(row.separator));
    decode(QString::fromLatin1(row.clipboard));
    EXPECT_EQ(failureTitle(), QString());
    EXPECT_EQ(resultText, QStringLiteral(" #1. Graphic: Display page 5\r\n"));
    EXPECT_EQ(window->FDPageNum(), 5);
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(
    Layouts, DecodingLayoutTest,
    ::testing::Values(
        LayoutRow{"PrefixSuffixSpace", "0x", ",", " ", "0xF0, 0x41, 0x10, 0x45, 0x12, 0x10, 0x20, 0x00, 0x05, 0x4B, 0xF7,"},
        LayoutRow{"OtherCharactersSameLengths", "0x", ",", " ", "$$F0;_$$41;_$$10;_$$45;_$$12;_$$10;_$$20;_$$00;_$$05;_$$4B;_$$F7;"},
        LayoutRow{"NoSeparator", "", "", "", "F04110451210200005" "4BF7"},
        LayoutRow{"OnLinesWithSuffix", "", "h", "", "F0h41h10h45h\r\n12h10h20h00h05h4Bh\r\nF7h"}),
    [](const auto& info) { return std::string(info.param.name); });
// clang-format on

TEST_F(DecodingRunTest, AFailedRunSaysWhyAndLeavesThePaneExactlyAsItWas) {
    ui().txtHexSuffix->setText(QStringLiteral("h"));
    const QString before = pane();
    decode(QStringLiteral("this is not SysEx"));
    ASSERT_EQ(failureTitle(), QStringLiteral("Invalid character!"));
    EXPECT_EQ(fake.prompts.shown.back().icon, Prompts::Icon::Exclamation);
    EXPECT_EQ(fake.prompts.shown.back().prompt,
              QStringLiteral("SysEx message must only contain these characters:\r\n"
                             "0 1 2 3 4 5 6 7 8 9 A B C D E F\r\n\r\n"
                             "It can also contain spaces, tabs and new-line characters (they "
                             "will be ignored). If you have specified a suffix / prefix / custom "
                             "separator, the message on the clipboard must also follow that "
                             "format."));
    EXPECT_EQ(pane(), before);
    EXPECT_EQ(fake.prompts.modalRuns, 0) << "no results window after a failure";
}

TEST_F(DecodingRunTest, EveryMessageGivesOneCleanedLineInOrder) {
    // Text, an invalid store page (pane untouched), a GS message with a wrong checksum.
    decode(kText + QStringLiteral("\r\nF0 41 10 45 12 10 03 20 00 F7\r\n") +
           QStringLiteral("F0 41 10 42 12 40 00 7F 00 00 F7"));
    EXPECT_EQ(resultText,
              QStringLiteral(" #1. Display text: abc\r\n #2. Graphic: Store page INVALID\r\n"
                             " #3. (Unrecognised SysEx - GS checksum changed from 00 to 41)\r\n"));
    EXPECT_EQ(pane(), kText + QStringLiteral("\r\nF0 41 10 45 12 10 03 20 00 F7\r\n") +
                          QStringLiteral("F0 41 10 42 12 40 00 7F 00 41 F7"));
    EXPECT_EQ(ui().txtTextIn->text(), QStringLiteral("abc"));
}

TEST_F(DecodingRunTest, TwelveMessagesNumberFromTheTenthWithoutLeadingSpace) {
    QStringList messages;
    for (int i = 0; i < 12; ++i) messages << QStringLiteral("F0 F7");
    decode(messages.join(QLatin1Char(' ')));
    EXPECT_EQ(countLabel, QStringLiteral("12 SysEx messages have been decoded as follows:"));
    EXPECT_TRUE(resultText.contains(QStringLiteral("\r\n #9. (No SysEx)\r\n#10. (No SysEx)\r\n")));
    EXPECT_TRUE(cleanInfo.startsWith(QStringLiteral("Cleaned versions of the messages are now")));
    EXPECT_EQ(pane().count(QStringLiteral("\r\n")), 11);
}

TEST_F(DecodingRunTest, ThousandsOfRandomAndCutMessagesDecodeToOneLineEach) {
    std::mt19937 random(2024);
    QStringList messages;
    for (int i = 0; i < 3000; ++i) {
        // Random bytes below F0 (so the count is known), often with a real GS header and a
        // store, text or display address, sometimes cut short.
        QStringList bytes{QStringLiteral("F0")};
        if (random() % 2)
            bytes << QStringLiteral("41 10 45 12 10 0%1 00").arg(random() % 8).split(' ');
        const int length = static_cast<int>(random() % 80);
        for (int b = 0; b < length; ++b)
            bytes << QStringLiteral("%1").arg(random() % 0xF0, 2, 16, QLatin1Char('0')).toUpper();
        if (random() % 4) bytes << QStringLiteral("F7");
        messages << bytes.join(QLatin1Char(' '));
    }
    messages.last() += QStringLiteral(" F7");
    decode(messages.join(QStringLiteral("\r\n")));
    EXPECT_EQ(failureTitle(), QString());
    EXPECT_EQ(countLabel, QStringLiteral("3,000 SysEx messages have been decoded as follows:"));
    EXPECT_EQ(resultText.count(QStringLiteral("\r\n")), 3000);
    EXPECT_TRUE(resultText.contains(QStringLiteral("\r\n#3000. "))) << "four digits, no padding";
    EXPECT_EQ(pane().count(QStringLiteral("\r\n")), 2999) << "one cleaned line per message";
}

TEST_F(DecodingRunTest, CleanedMessagesReachTheClipboardLastWithAutomaticCopy) {
    QTest::mouseClick(ui().chkSysExCopyAuto, Qt::LeftButton);
    decode(kText + QStringLiteral("\r\n") + kDisplay5);
    EXPECT_EQ(fake.clipboard.text, kText + QStringLiteral("\r\n") + kDisplay5);
}

TEST_F(DecodingRunTest, CtrlVInThePaneDecodesAndPastesNothing) {
    fake.clipboard.text = kDisplay5;
    ui().txtSysExOut->setFocus();
    QTest::keyClick(ui().txtSysExOut, Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(resultText, QStringLiteral(" #1. Graphic: Display page 5\r\n"));
    EXPECT_EQ(pane(), kDisplay5);
}

}  // namespace
}  // namespace lumidot::testing
