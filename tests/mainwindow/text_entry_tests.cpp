// The LCD text: counters, notes, the 32-character limit and the text boxes' keys.
#include <QApplication>
#include <QClipboard>
#include <QLabel>

#include "mainwindow/read_only_text_box.h"
#include "support/main_form_fixture.h"

namespace lumidot::testing {
namespace {

const QColor kRed(255, 0, 0);
const QColor kGreen(0, 160, 0);

QColor TextColour(QLabel* label) { return label->palette().color(QPalette::WindowText); }

struct CounterRow {
    int length;
    const char* rem16;
    const char* rem32;
    bool scrolls;
};

class CounterTest : public MainFormTest, public ::testing::WithParamInterface<CounterRow> {};

TEST_P(CounterTest, CountersAndNotesFollowTheLength) {
    const CounterRow& row = GetParam();
    QTest::keyClicks(ui().txtTextIn, QString(row.length, QLatin1Char('x')));
    EXPECT_EQ(ui().lblTextInRem16->text(), QString::fromLatin1(row.rem16));
    EXPECT_EQ(ui().lblTextInRem32->text(), QString::fromLatin1(row.rem32));
    EXPECT_EQ(TextColour(ui().lblTextInRem16), row.scrolls ? kRed : kGreen);
    EXPECT_EQ(TextColour(ui().lblTextInRem32), row.scrolls ? kGreen : kRed);
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

struct KeyRow {
    Qt::KeyboardModifiers modifiers;
    Qt::Key key;
    bool selectsAll;
    bool copies;     // through the program's retrying writer
    bool boxCopies;  // through the text box's own copy
};

class TextBoxKeyTest : public MainFormTest, public ::testing::WithParamInterface<KeyRow> {};

TEST_P(TextBoxKeyTest, CtrlAAndCtrlCInTheLcdTextAndTheBoxsOwnCopy) {
    const KeyRow& row = GetParam();
    QGuiApplication::clipboard()->setText(QStringLiteral("before"));
    ui().txtTextIn->setText(QStringLiteral("Hello"));
    ui().txtTextIn->setFocus();
    ui().txtTextIn->setSelection(1, 3);  // "ell"
    QTest::keyClick(ui().txtTextIn, row.key, row.modifiers);
    EXPECT_EQ(ui().txtTextIn->selectedText() == QStringLiteral("Hello"), row.selectsAll);
    EXPECT_EQ(!fake.clipboard.written.empty(), row.copies);
    if (row.copies) {
        EXPECT_EQ(fake.clipboard.text, QStringLiteral("ell"));
    }
    EXPECT_EQ(QGuiApplication::clipboard()->text(),
              row.boxCopies ? QStringLiteral("ell") : QStringLiteral("before"));
}

INSTANTIATE_TEST_SUITE_P(
    Keys, TextBoxKeyTest,
    ::testing::Values(KeyRow{Qt::ControlModifier, Qt::Key_A, true, false, false},
                      KeyRow{Qt::ControlModifier, Qt::Key_C, false, true, false},
                      KeyRow{Qt::ControlModifier, Qt::Key_Insert, false, false, true},
                      KeyRow{Qt::ControlModifier | Qt::ShiftModifier, Qt::Key_A, false, false, false},
                      KeyRow{Qt::ControlModifier | Qt::ShiftModifier, Qt::Key_C, false, false, false},
                      KeyRow{Qt::ControlModifier | Qt::AltModifier, Qt::Key_C, false, false, false}));

TEST_F(MainFormTest, CtrlCInTheOutputPaneCopiesTheSelectionWithItsLineBreaks) {
    window->model().setSkipOutputLayout(true);
    window->SetSysExOutText(QStringLiteral("F0 F7\r\nF0 41 F7"));
    window->model().setSkipOutputLayout(false);
    ui().txtSysExOut->setFocus();
    QTest::keyClick(ui().txtSysExOut, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClick(ui().txtSysExOut, Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(fake.clipboard.text, QStringLiteral("F0 F7\r\nF0 41 F7"));
}

// Ctrl+Insert is the box's own copy, straight to the clipboard, still with CR LF.
TEST_F(MainFormTest, CtrlInsertInTheOutputPaneCopiesThroughTheBoxItself) {
    window->model().setSkipOutputLayout(true);
    window->SetSysExOutText(QStringLiteral("F0 F7\r\nF0 41 F7"));
    window->model().setSkipOutputLayout(false);
    fake.clipboard.text = QStringLiteral("old");
    QApplication::clipboard()->setText(QStringLiteral("old"));
    ui().txtSysExOut->setFocus();
    QTest::keyClick(ui().txtSysExOut, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClick(ui().txtSysExOut, Qt::Key_Insert, Qt::ControlModifier);
    EXPECT_EQ(QApplication::clipboard()->text(), QStringLiteral("F0 F7\r\nF0 41 F7"));
    EXPECT_EQ(fake.clipboard.text, QStringLiteral("old"));
}

TEST_F(MainFormTest, CtrlCWithNothingSelectedSetsEmptyText) {
    ui().txtTextIn->setText(QStringLiteral("Hello"));
    ui().txtTextIn->setFocus();
    ui().txtTextIn->deselect();
    fake.clipboard.text = QStringLiteral("old");
    QTest::keyClick(ui().txtTextIn, Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(fake.clipboard.clearCalls, 1);
    EXPECT_EQ(fake.clipboard.text, QString());
}

}  // namespace
}  // namespace lumidot::testing
