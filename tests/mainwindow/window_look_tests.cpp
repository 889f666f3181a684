// The three windows as the desktop sees them: title, fixed size, buttons, icon.
#include <QLabel>
#include <QMenuBar>

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

    frmDecoded results(window.get(), fake.platform);
    ExpectFixedDialogLook(results, QStringLiteral("SysEx Decoding Results"), QSize(697, 273));
    EXPECT_FALSE(results.windowFlags() & Qt::WindowMinimizeButtonHint);

    frmPageCopy::Memory memory;
    frmPageCopy copy(window.get(), memory);
    ExpectFixedDialogLook(copy, QStringLiteral("Copy To Page"), QSize(217, 121));
    EXPECT_FALSE(copy.windowFlags() & Qt::WindowMinimizeButtonHint);
}

TEST_F(MainFormTest, TheWindowOpensCentredOnTheScreen) {
    const QRect screen = window->screen()->availableGeometry();
    EXPECT_LE((window->frameGeometry().center() - screen.center()).manhattanLength(), 1);
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

}  // namespace
}  // namespace lumidot::testing
