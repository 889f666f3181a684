// The output pane through the real window: layout, modes, automatic copy.
#include <QCheckBox>
#include <QLabel>
#include <QSignalSpy>

#include "mainwindow/read_only_text_box.h"
#include "support/main_form_fixture.h"

namespace lumidot::testing {
namespace {

class OutputTest : public MainFormTest {
protected:
    void typeLcd(const QString& text) { QTest::keyClicks(ui().txtTextIn, text); }
    void setLayout(const QString& prefix, const QString& suffix, const QString& separator) {
        ui().txtHexPrefix->setText(prefix);
        ui().txtHexSuffix->setText(suffix);
        ui().txtHexSep->setText(separator);
    }
};

TEST_F(OutputTest, CaptionCarriesTheVersion) {
    EXPECT_EQ(window->windowTitle(), QStringLiteral("Lumidot by Tarrowen (v1.0.5)"));
}

struct LayoutRow {
    const char* prefix;
    const char* suffix;
    const char* separator;
    const char* pane;
};

class LayoutTest : public OutputTest, public ::testing::WithParamInterface<LayoutRow> {};

TEST_P(LayoutTest, LaysOutEveryByteOfHi) {
    const LayoutRow& row = GetParam();
    typeLcd(QStringLiteral("Hi"));
    setLayout(row.prefix, row.suffix, row.separator);
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

TEST_F(OutputTest, ModesFollowTheirButtonsAndThePageSpinner) {
    ui().udPageNum->setValue(3);
    QTest::mouseClick(ui().optSEGDisplay, Qt::LeftButton);
    EXPECT_EQ(pane(), QStringLiteral("F0 41 10 45 12 10 20 00 03 4D F7"));
    QTest::mouseClick(ui().optSEGStore, Qt::LeftButton);
    EXPECT_TRUE(pane().startsWith(QStringLiteral("F0 41 10 45 12 10 02 00 00 ")));
    QTest::mouseClick(ui().optSEText, Qt::LeftButton);
    EXPECT_EQ(pane(), QStringLiteral("F0 41 10 45 12 10 00 00 70 F7"));
}

TEST_F(OutputTest, ExactlyOneModeIsSelectedAndStoreComesFirst) {
    // Buttons of one group: selecting one unselects the others.
    window->selectMode(ui().optSEGDisplay);
    EXPECT_FALSE(ui().optSEGStore->isChecked());
    EXPECT_FALSE(ui().optSEText->isChecked());
    window->clearModes();
    const QString before = pane();
    window->AutoSetSysExText();
    EXPECT_EQ(pane(), before) << "no mode selected regenerates nothing";
    ui().optSEGStore->setChecked(true);
    window->AutoSetSysExText();
    EXPECT_TRUE(pane().startsWith(QStringLiteral("F0 41 10 45 12 10 01 00")));
}

TEST_F(OutputTest, SelectingTheSelectedModeFromCodeStillRegenerates) {
    window->model().writePane(QStringLiteral("something else"));
    const quint64 writes = window->model().paneVersion();
    window->selectMode(ui().optSEGStore);
    EXPECT_EQ(window->model().paneVersion(), writes + 1);
    EXPECT_TRUE(pane().startsWith(QStringLiteral("F0 41 10 45 12 10 01 00")));
}

TEST_F(OutputTest, LayoutChangeReplacesAMultiLineResult) {
    window->model().setSkipOutputLayout(true);
    window->SetSysExOutText(QStringLiteral("F0 F7\r\nF0 41 F7"));
    window->model().setSkipOutputLayout(false);
    EXPECT_EQ(pane(), QStringLiteral("F0 F7\r\nF0 41 F7"));
    ui().txtHexPrefix->setText(QStringLiteral("0x"));
    EXPECT_TRUE(pane().startsWith(QStringLiteral("0xF0 0x41 0x10 0x45 0x12 0x10 0x01 0x00")));
}

TEST_F(OutputTest, AutomaticCopyFollowsTheCheckBox) {
    QTest::mouseClick(ui().chkSysExCopyAuto, Qt::LeftButton);
    EXPECT_TRUE(window->SysExCopyAuto());
    EXPECT_TRUE(fake.clipboard.written.empty()) << "ticking alone copies nothing";

    typeLcd(QStringLiteral("H"));
    ASSERT_FALSE(fake.clipboard.written.empty());
    EXPECT_EQ(fake.clipboard.text, QStringLiteral("F0 41 10 45 12 10 00 00 48 28 F7"));

    QTest::mouseClick(ui().chkSysExCopyAuto, Qt::LeftButton);
    EXPECT_FALSE(window->SysExCopyAuto());
    const size_t copies = fake.clipboard.written.size();
    typeLcd(QStringLiteral("i"));
    EXPECT_EQ(fake.clipboard.written.size(), copies) << "unticked: clipboard untouched";
}

TEST_F(OutputTest, CopyButtonCopiesThePaneAsItIs) {
    window->model().setSkipOutputLayout(true);
    window->SetSysExOutText(QStringLiteral("F0 F7\r\nF0 41 F7"));
    window->model().setSkipOutputLayout(false);
    QTest::mouseClick(ui().cmdSysExCopy, Qt::LeftButton);
    EXPECT_EQ(fake.clipboard.text, QStringLiteral("F0 F7\r\nF0 41 F7"));
}

}  // namespace
}  // namespace lumidot::testing
