// The three windows as the desktop sees them (title, fixed size, buttons, icon, place), and
// the main window's access keys against the menu bar's.
#include <QLabel>
#include <QMenuBar>
#include <QSignalSpy>

#include "decode/frm_decoded.h"
#include "editor/frm_page_copy.h"
#include "support/main_form_fixture.h"

namespace lumidot::testing {
namespace {

void ExpectFixedDialogLook(QWidget& window, const QString& title, QSize size) {
    SCOPED_TRACE(title.toStdString());
    EXPECT_EQ(window.windowTitle(), title);
    EXPECT_EQ(window.minimumSize(), size);
    EXPECT_EQ(window.maximumSize(), size);
    EXPECT_FALSE(window.windowFlags() & Qt::WindowMaximizeButtonHint);
    EXPECT_FALSE(window.windowIcon().isNull());
}

TEST_F(MainFormTest, WindowsHaveTheirTitlesSizesAndIcon) {
    // The main window: the designed client area below a menu bar, nothing else.
    const QSize client = window->clientArea()->size();
    EXPECT_EQ(client, QSize(600, 528));
    EXPECT_EQ(window->clientArea()->geometry().bottomLeft(), QPoint(0, window->height() - 1));
    ExpectFixedDialogLook(*window, QStringLiteral("Lumidot by Tarrowen (v1.0.5)"),
                          QSize(600, client.height() + window->menuBar()->height()));
    EXPECT_TRUE(window->windowFlags() & Qt::WindowMinimizeButtonHint);
    const QRect screen = window->screen()->availableGeometry();
    EXPECT_LE((window->frameGeometry().center() - screen.center()).manhattanLength(), 1)
        << "opens centred on the screen";

    frmDecoded results(window.get(), fake.platform);
    ExpectFixedDialogLook(results, QStringLiteral("SysEx Decoding Results"), QSize(697, 273));
    EXPECT_FALSE(results.windowFlags() & Qt::WindowMinimizeButtonHint);

    frmPageCopy::Memory memory;
    frmPageCopy copy(window.get(), memory);
    ExpectFixedDialogLook(copy, QStringLiteral("Copy To Page"), QSize(217, 121));
    EXPECT_FALSE(copy.windowFlags() & Qt::WindowMinimizeButtonHint);
}

// The coloured buttons show their faces as flat colours, as rendered with the window.
TEST_F(MainFormTest, ColouredButtonsShowFlatFaces) {
    const QImage shot = window->grab().toImage();
    const struct {
        QWidget* button;
        QColor face;
    } rows[] = {{ui().cmdFDClear, QColor(255, 128, 128)},
                {ui().cmdSysExDecode, QColor(255, 255, 128)},
                {ui().cmdSysExCopy, QColor(128, 255, 128)}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.button->objectName().toStdString());
        const QRect face = QRect(row.button->mapTo(window.get(), QPoint(0, 0)), row.button->size())
                               .adjusted(3, 3, -3, -3);
        // Its four inner corners, clear of the caption and the picture.
        for (QPoint p : {face.topLeft(), face.topRight(), face.bottomLeft(), face.bottomRight()}) {
            EXPECT_EQ(QColor(shot.pixel(p)), row.face) << p.x() << "," << p.y();
        }
    }
}

struct AccessKeyRow {
    const char* name;
    Qt::Key key;
    const char* button;  // objectName of the button the key clicks
};

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
TEST_F(MainFormTest, AltHOpensTheHelpMenu) {
    ASSERT_TRUE(QTest::qWaitForWindowActive(window.get()));
    QTest::keyClick(window.get(), Qt::Key_H, Qt::AltModifier);
    QTRY_VERIFY_WITH_TIMEOUT(QApplication::activePopupWidget() != nullptr, 1000);
    EXPECT_EQ(QApplication::activePopupWidget()->objectName(), QStringLiteral("menuHelp"));
    QApplication::activePopupWidget()->close();
}

}  // namespace
}  // namespace lumidot::testing
