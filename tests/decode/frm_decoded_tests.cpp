// The results window through its real widgets, shown the way a decoding run shows it.
#include <gtest/gtest.h>

#include <QApplication>
#include <QClipboard>
#include <QLabel>
#include <QLocale>
#include <QPushButton>
#include <QTest>

#include "decode/frm_decoded.h"
#include "mainwindow/read_only_text_box.h"
#include "support/fakes.h"
#include "support/qt_printers.h"
#include "ui_frm_decoded.h"

namespace lumidot::testing {
namespace {

const QString kThreeLines =
    QStringLiteral(" #1. Display text: abc\r\n #2. Graphic: Display page 5\r\n #3. (No SysEx)\r\n");

class FrmDecodedTest : public ::testing::Test {
protected:
    void SetUp() override { window.SetAllText(3, kThreeLines); }
    void TearDown() override { QLocale::setDefault(QLocale::system()); }

    // Shows the window modally as a decoding run does; act runs while it is up.
    void showModally(const std::function<void()>& act) {
        fake.prompts.onModal = [&](QDialog&) {
            QApplication::setActiveWindow(&window);
            act();
        };
        fake.prompts.runModal(window);
    }
    ReadOnlyTextBox& box() { return *window.form().txtDecodedOut; }

    FakePlatform fake;
    QWidget owner;
    frmDecoded window{&owner, fake.platform};
};

const QLocale kUs(QLocale::English, QLocale::UnitedStates);

// A count, the locale it is shown in, and the number as the label writes it.
using CountRow = std::tuple<qint32, QLocale, const char*>;

class CountTextTest : public FrmDecodedTest, public ::testing::WithParamInterface<CountRow> {};

TEST_P(CountTextTest, LabelsNameTheCountInTheUsersLocale) {
    const auto& [count, locale, number] = GetParam();
    QLocale::setDefault(locale);
    window.SetAllText(count, kThreeLines);
    EXPECT_EQ(window.form().lblNumDecoded->text(),
              QString(number) + (count == 1 ? " SysEx message has" : " SysEx messages have") +
                  " been decoded as follows:");
    EXPECT_EQ(window.form().lblCleanInfo->text(),
              (count == 1 ? QString("Cleaned version of the message is")
                          : QString("Cleaned versions of the messages are")) +
                  " now being displayed at the bottom of the main window.\r\n"
                  "If you have ticked the checkbox to automatically copy text, that text is "
                  "now on the clipboard.");
}

INSTANTIATE_TEST_SUITE_P(
    Counts, CountTextTest,
    ::testing::Values(CountRow{1, kUs, "1"}, CountRow{12, kUs, "12"}, CountRow{1234, kUs, "1,234"},
                      CountRow{1234, QLocale(QLocale::German, QLocale::Germany), "1.234"},
                      // A program started with LANG=C still groups the digits.
                      CountRow{1234, QLocale::c(), "1,234"}));

// The first showing closes with Enter, the second with the close box; both act as OK.
TEST_F(FrmDecodedTest, EveryShowingStartsAtTheTopAndClosesAsOk) {
    int okClicks = 0, accepts = 0;
    QObject::connect(window.form().cmdOK, &QPushButton::clicked, [&] { ++okClicks; });
    QObject::connect(&window, &QDialog::accepted, [&] { ++accepts; });
    for (bool closeBox : {false, true}) {
        showModally([&] {
            EXPECT_EQ(window.focusWidget(), &box());
            EXPECT_EQ(box().caretPosition(), 0);
            EXPECT_FALSE(box().hasSelection());
            // Leave the caret on the last line with a selection behind it.
            QTest::keyClick(&box(), Qt::Key_End, Qt::ControlModifier);
            QTest::keyClick(&box(), Qt::Key_Up, Qt::ShiftModifier);
            ASSERT_TRUE(box().hasSelection());
            closeBox ? (void)window.close() : QTest::keyClick(&box(), Qt::Key_Return);
        });
        EXPECT_FALSE(window.isVisible());
    }
    EXPECT_EQ(okClicks, 1);
    EXPECT_EQ(accepts, 2);
}

// Ctrl+C copies through the retrying writer, with CR LF; nothing typed, pasted or cut
// changes the results, and the box's own copy with bare LFs never reaches the clipboard.
TEST_F(FrmDecodedTest, CopiesEverythingWithCrLfAndTypingChangesNothing) {
    QApplication::clipboard()->setText("pasted");
    fake.clipboard.failuresLeft = 2;
    showModally([&] {
        QTest::keyClick(&box(), Qt::Key_A, Qt::ControlModifier);
        QTest::keyClick(&box(), Qt::Key_C, Qt::ControlModifier);
        QTest::keyClicks(&box(), "abc");
        for (Qt::Key key : {Qt::Key_Delete, Qt::Key_Backspace, Qt::Key_Tab})
            QTest::keyClick(&box(), key);
        for (Qt::Key key : {Qt::Key_V, Qt::Key_X})
            QTest::keyClick(&box(), key, Qt::ControlModifier);
        window.accept();
    });
    EXPECT_EQ(fake.clipboard.written, std::vector<QString>{kThreeLines});
    EXPECT_FALSE(fake.sleeper.sleeps.empty());
    EXPECT_EQ(QApplication::clipboard()->text(), "pasted");
    EXPECT_EQ(box().text(), kThreeLines);
    EXPECT_EQ(box().toPlainText(), QString(kThreeLines).remove('\r'));
}

// Ctrl+Insert and the context menu's Copy are the box's own: straight to the clipboard,
// with CR LF all the same.
TEST_F(FrmDecodedTest, CtrlInsertCopiesWithCrLfStraightToTheClipboard) {
    QApplication::clipboard()->setText("old");
    showModally([&] {
        QTest::keyClick(&box(), Qt::Key_A, Qt::ControlModifier);
        QTest::keyClick(&box(), Qt::Key_Insert, Qt::ControlModifier);
        window.accept();
    });
    EXPECT_EQ(QApplication::clipboard()->text(), kThreeLines);
    EXPECT_TRUE(fake.clipboard.written.empty());
}

}  // namespace
}  // namespace lumidot::testing
