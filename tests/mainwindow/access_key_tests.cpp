// The window's access keys (Alt with the underlined letter of a button) against the menu
// bar's, which share two of their letters: the window's own buttons come first.
#include <gtest/gtest.h>

#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>

#include "support/main_form_fixture.h"
#include "ui_main_form.h"

namespace lumidot::testing {
namespace {

struct AccessKeyRow {
    const char* name;
    Qt::Key key;
    const char* button;  // objectName of the button the key clicks
};

void PrintTo(const AccessKeyRow& row, std::ostream* os) {
    *os << row.name;
}

class AccessKeyTest : public MainFormTest, public ::testing::WithParamInterface<AccessKeyRow> {};

// Alt+F was "Read from clipboard" and Alt+E "Clear" before the menu bar had a File and an
// Edit menu: each press still clicks the button (a second press too, which a shortcut
// shared with the menu bar would give to the menu) and opens no menu.
TEST_P(AccessKeyTest, EveryPressClicksTheWindowsButton) {
    const AccessKeyRow& row = GetParam();
    ASSERT_TRUE(QTest::qWaitForWindowActive(window.get()));
    auto* button = window->findChild<QPushButton*>(QLatin1String(row.button));
    ASSERT_NE(button, nullptr);
    QSignalSpy clicks(button, &QAbstractButton::clicked);
    for (int press = 1; press <= 2; ++press) {
        QTest::keyClick(window.get(), row.key, Qt::AltModifier);
        EXPECT_TRUE(clicks.wait(1000) || clicks.count() == press) << "press " << press;
        EXPECT_EQ(clicks.count(), press);
        EXPECT_EQ(window->menuBar()->activeAction(), nullptr) << "a menu opened";
        if (QWidget* popup = QApplication::activePopupWidget()) popup->close();
        ASSERT_TRUE(QTest::qWaitForWindowActive(window.get()));
    }
}

INSTANTIATE_TEST_SUITE_P(
    Keys, AccessKeyTest,
    ::testing::Values(AccessKeyRow{"AltFReadsTheClipboard", Qt::Key_F, "cmdSysExDecode"},
                      AccessKeyRow{"AltEClearsThePage", Qt::Key_E, "cmdFDClear"},
                      AccessKeyRow{"AltIInverts", Qt::Key_I, "cmdFDInvert"}),
    [](const auto& info) { return std::string(info.param.name); });

// The menus that share no letter with the window still open with Alt and their letter.
TEST_F(AccessKeyTest, AltHOpensTheHelpMenu) {
    ASSERT_TRUE(QTest::qWaitForWindowActive(window.get()));
    QTest::keyClick(window.get(), Qt::Key_H, Qt::AltModifier);
    QTRY_VERIFY_WITH_TIMEOUT(QApplication::activePopupWidget() != nullptr, 1000);
    EXPECT_EQ(QApplication::activePopupWidget()->objectName(), QStringLiteral("menuHelp"));
    QApplication::activePopupWidget()->close();
}

}  // namespace
}  // namespace lumidot::testing
