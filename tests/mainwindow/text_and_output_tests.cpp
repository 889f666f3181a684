// The LCD text and the output pane through the real window: counters, notes, the
// 32-character limit, byte layouts, modes, automatic copy and the text boxes' copy keys.
#include <QApplication>
#include <QCheckBox>
#include <QClipboard>
#include <QLabel>

#include "mainwindow/read_only_text_box.h"
#include "support/main_form_fixture.h"

namespace lumidot::testing {
namespace {

const QString kResult = QStringLiteral("F0 F7\r\nF0 41 F7");

QColor TextColour(QLabel* label) {
    return label->palette().color(QPalette::WindowText);
}

struct CounterRow {
    int length;
    const char* rem16;
    const char* rem32;
    bool scrolls;
};

class CounterTest : public MainFormTest, public ::testing::WithParamInterface<CounterRow> {};

TEST_P(CounterTest, CountersAndNotesFollowTheLength) {
    const CounterRow& row = GetParam();
    const QColor red(255, 0, 0), green(0, 160, 0);
    QTest::keyClicks(ui().txtTextIn, QString(row.length, QLatin1Char('x')));
    EXPECT_EQ(ui().lblTextInRem16->text(), QString::fromLatin1(row.rem16));
    EXPECT_EQ(ui().lblTextInRem32->text(), QString::fromLatin1(row.rem32));
    EXPECT_EQ(TextColour(ui().lblTextInRem16), row.scrolls ? red : green);
    EXPECT_EQ(TextColour(ui().lblTextInRem32), row.scrolls ? green : red);
    EXPECT_EQ(ui().frmTextInArrow32->isVisible(), row.scrolls);
    EXPECT_EQ(ui().frmTextInArrow16->isVisible(), !row.scrolls);
}

INSTANTIATE_TEST_SUITE_P(Lengths, CounterTest,
                         ::testing::Values(CounterRow{0, "16", "32", false},
                                           CounterRow{16, "0", "16", false},
                                           CounterRow{17, "-1", "15", true},
                                           CounterRow{32, "-16", "0", true}));

TEST_F(MainFormTest, TheThirtyThirdCharacterIsRefusedWhateverItsSource) {
    const QString thirtyTwo = QStringLiteral("ABCDEFGHIJKLMNOPQRSTUVWXYZ012345");
    QTest::keyClicks(ui().txtTextIn, thirtyTwo + QStringLiteral("6"));
    EXPECT_EQ(ui().txtTextIn->text(), thirtyTwo);
    ui().txtTextIn->setText(thirtyTwo + QStringLiteral("789"));
    EXPECT_EQ(ui().txtTextIn->text(), thirtyTwo);
    EXPECT_EQ(pane(), QStringLiteral("F0 41 10 45 12 10 00 00 41 42 43 44 45 46 47 48 49 4A "
                                     "4B 4C 4D 4E 4F 50 51 52 53 54 55 56 57 58 59 5A 30 31 "
                                     "32 33 34 35 62 F7"));
}

TEST_F(MainFormTest, TypingSwitchesToTextAndDeletingKeepsIt) {
    window->selectMode(ui().optSEGDisplay);
    QTest::keyClicks(ui().txtTextIn, QStringLiteral("a"));
    EXPECT_TRUE(ui().optSEText->isChecked());
    EXPECT_EQ(pane(), QStringLiteral("F0 41 10 45 12 10 00 00 61 0F F7"));
    QTest::keyClick(ui().txtTextIn, Qt::Key_Backspace);
    EXPECT_TRUE(ui().optSEText->isChecked());
    EXPECT_EQ(pane(), QStringLiteral("F0 41 10 45 12 10 00 00 70 F7"));
}

struct LayoutRow {
    const char* prefix;
    const char* suffix;
    const char* separator;
    const char* pane;
};

class LayoutTest : public MainFormTest, public ::testing::WithParamInterface<LayoutRow> {};

TEST_P(LayoutTest, LaysOutEveryByteOfHi) {
    const LayoutRow& row = GetParam();
    QTest::keyClicks(ui().txtTextIn, QStringLiteral("Hi"));
    ui().txtHexPrefix->setText(row.prefix);
    ui().txtHexSuffix->setText(row.suffix);
    ui().txtHexSep->setText(row.separator);
    EXPECT_EQ(pane(), QString::fromLatin1(row.pane));
}

INSTANTIATE_TEST_SUITE_P(
    Hi, LayoutTest,
    ::testing::Values(
        LayoutRow{"", "", " ", "F0 41 10 45 12 10 00 00 48 69 3F F7"},
        LayoutRow{"0x", "", ",", "0xF0,0x41,0x10,0x45,0x12,0x10,0x00,0x00,0x48,0x69,0x3F,0xF7"},
        LayoutRow{"", "h", " ", "F0h 41h 10h 45h 12h 10h 00h 00h 48h 69h 3Fh F7h"},
        LayoutRow{"", "", "", "F04110451210000048693FF7"},
        LayoutRow{"$", "", ", ", "$F0, $41, $10, $45, $12, $10, $00, $00, $48, $69, $3F, $F7"}));

TEST_F(MainFormTest, ModesFollowTheirButtonsAndThePageSpinner) {
    ui().udPageNum->setValue(3);
    QTest::mouseClick(ui().optSEGDisplay, Qt::LeftButton);
    EXPECT_EQ(pane(), QStringLiteral("F0 41 10 45 12 10 20 00 03 4D F7"));
    QTest::mouseClick(ui().optSEGStore, Qt::LeftButton);
    EXPECT_TRUE(pane().startsWith(QStringLiteral("F0 41 10 45 12 10 02 00 00 ")));
    QTest::mouseClick(ui().optSEText, Qt::LeftButton);
    EXPECT_EQ(pane(), QStringLiteral("F0 41 10 45 12 10 00 00 70 F7"));
}

TEST_F(MainFormTest, ExactlyOneModeIsSelectedAndSelectingItAgainRegenerates) {
    window->selectMode(ui().optSEGDisplay);
    EXPECT_FALSE(ui().optSEGStore->isChecked());
    EXPECT_FALSE(ui().optSEText->isChecked());
    window->clearModes();
    const QString before = pane();
    window->AutoSetSysExText();
    EXPECT_EQ(pane(), before) << "no mode selected regenerates nothing";
    ui().optSEGStore->setChecked(true);
    window->model().writePane(QStringLiteral("something else"));
    const quint64 writes = window->model().paneVersion();
    window->selectMode(ui().optSEGStore);
    EXPECT_EQ(window->model().paneVersion(), writes + 1);
    EXPECT_TRUE(pane().startsWith(QStringLiteral("F0 41 10 45 12 10 01 00")));
}

// A run's result is copied as it stands, and a change of layout regenerates the pane.
TEST_F(MainFormTest, CopyButtonCopiesAResultAsItIsAndALayoutChangeReplacesIt) {
    showResult(kResult);
    EXPECT_EQ(pane(), kResult);
    QTest::mouseClick(ui().cmdSysExCopy, Qt::LeftButton);
    EXPECT_EQ(fake.clipboard.text, kResult);
    ui().txtHexPrefix->setText(QStringLiteral("0x"));
    EXPECT_TRUE(pane().startsWith(QStringLiteral("0xF0 0x41 0x10 0x45 0x12 0x10 0x01 0x00")));
}

TEST_F(MainFormTest, AutomaticCopyFollowsTheCheckBox) {
    QTest::mouseClick(ui().chkSysExCopyAuto, Qt::LeftButton);
    EXPECT_TRUE(window->SysExCopyAuto());
    EXPECT_TRUE(fake.clipboard.written.empty()) << "ticking alone copies nothing";
    QTest::keyClicks(ui().txtTextIn, QStringLiteral("H"));
    ASSERT_FALSE(fake.clipboard.written.empty());
    EXPECT_EQ(fake.clipboard.text, QStringLiteral("F0 41 10 45 12 10 00 00 48 28 F7"));

    QTest::mouseClick(ui().chkSysExCopyAuto, Qt::LeftButton);
    EXPECT_FALSE(window->SysExCopyAuto());
    const size_t copies = fake.clipboard.written.size();
    QTest::keyClicks(ui().txtTextIn, QStringLiteral("i"));
    EXPECT_EQ(fake.clipboard.written.size(), copies) << "unticked: clipboard untouched";
}

// Keys pressed in a text box holding "Hello" with "ell" selected, or in the pane holding a
// result of two lines. Ctrl+C goes through the program's retrying writer (clear, then set);
// Ctrl+Insert is the box's own copy, straight to the system clipboard.
struct CopyKeyRow {
    const char* name;
    const char* control;
    const char* keys;
    std::vector<QString> written;  // by the program's writer
    QString system;                // the system clipboard after
    bool selectsAll = false;
};

class CopyKeyTest : public MainFormTest, public ::testing::WithParamInterface<CopyKeyRow> {};

TEST_P(CopyKeyTest, CtrlACtrlCAndCtrlInsert) {
    const CopyKeyRow& row = GetParam();
    QGuiApplication::clipboard()->setText(QStringLiteral("before"));
    ui().txtTextIn->setText(QStringLiteral("Hello"));
    showResult(kResult);
    auto* control = window->findChild<QWidget*>(QLatin1String(row.control));
    control->setFocus();
    ui().txtTextIn->setSelection(1, 3);
    for (const QString& keys : QString(row.keys).split(u' ')) {
        QTest::keySequence(control, QKeySequence(keys));
    }
    EXPECT_EQ(ui().txtTextIn->selectedText() == QStringLiteral("Hello"), row.selectsAll);
    EXPECT_EQ(fake.clipboard.written, row.written);
    EXPECT_EQ(fake.clipboard.clearCalls, int(row.written.size()));
    EXPECT_EQ(QGuiApplication::clipboard()->text(), row.system);
}

INSTANTIATE_TEST_SUITE_P(
    Keys, CopyKeyTest,
    ::testing::Values(
        CopyKeyRow{"CtrlA", "txtTextIn", "Ctrl+A", {}, "before", true},
        CopyKeyRow{"CtrlC", "txtTextIn", "Ctrl+C", {"ell"}, "before"},
        CopyKeyRow{"CtrlInsert", "txtTextIn", "Ctrl+Ins", {}, "ell"},
        CopyKeyRow{"CtrlShiftA", "txtTextIn", "Ctrl+Shift+A", {}, "before"},
        CopyKeyRow{"CtrlShiftC", "txtTextIn", "Ctrl+Shift+C", {}, "before"},
        CopyKeyRow{"CtrlAltC", "txtTextIn", "Ctrl+Alt+C", {}, "before"},
        CopyKeyRow{
            "CtrlCWithNothingSelectedCopiesEmptyText", "txtTextIn", "End Ctrl+C", {""}, "before"},
        CopyKeyRow{"PaneCtrlCKeepsLineBreaks", "txtSysExOut", "Ctrl+A Ctrl+C", {kResult}, "before"},
        CopyKeyRow{"PaneCtrlInsertKeepsLineBreaks", "txtSysExOut", "Ctrl+A Ctrl+Ins", {}, kResult},
        CopyKeyRow{"PaneCtrlInsertWithNothingSelected", "txtSysExOut", "Ctrl+Ins", {}, "before"}),
    [](const auto& info) { return std::string(info.param.name); });

}  // namespace
}  // namespace lumidot::testing
