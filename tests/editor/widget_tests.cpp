// The editor's own widgets as they look and answer: the spinner, the cells over the grey
// rectangle, and the drag handle's picture.
#include <QLabel>
#include <QSignalSpy>
#include <QWheelEvent>

#include "editor/drag_handle.h"
#include "editor/editor_fixture.h"
#include "editor/up_down.h"

namespace lumidot::testing {
namespace {

enum class Action { ClickUpper, ClickLower, KeyUp, KeyDown, WheelUp, WheelDown };

struct SpinRow {
    const char* name;
    Action action;
    int start;
    int expected;
};

class UpDownTest : public ::testing::TestWithParam<SpinRow> {};

TEST_P(UpDownTest, StepsByOneAndStopsAtTheEnds) {
    QWidget parent;
    QLabel buddy(&parent);
    UpDown spinner(&parent);
    spinner.setGeometry(0, 0, 16, 17);
    spinner.setRange(1, 10);
    spinner.setValue(GetParam().start);
    spinner.setBuddy(&buddy);
    parent.show();
    QSignalSpy changes(&spinner, &UpDown::valueChanged);

    const auto wheel = [&](int delta) {
        QWheelEvent event(QPointF(8, 8), spinner.mapToGlobal(QPointF(8, 8)), {}, {0, delta},
                          Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
        QApplication::sendEvent(&spinner, &event);
    };
    switch (GetParam().action) {
        case Action::ClickUpper:
            QTest::mouseClick(&spinner, Qt::LeftButton, {}, {8, 3});
            break;
        case Action::ClickLower:
            QTest::mouseClick(&spinner, Qt::LeftButton, {}, {8, 14});
            break;
        case Action::KeyUp:
            QTest::keyClick(&spinner, Qt::Key_Up);
            break;
        case Action::KeyDown:
            QTest::keyClick(&spinner, Qt::Key_Down);
            break;
        case Action::WheelUp:
            wheel(120);
            break;
        case Action::WheelDown:
            wheel(-120);
            break;
    }
    EXPECT_EQ(spinner.value(), GetParam().expected);
    EXPECT_EQ(buddy.text(), QString::number(GetParam().expected));
    EXPECT_EQ(changes.count(), GetParam().start == GetParam().expected ? 0 : 1);
}

INSTANTIATE_TEST_SUITE_P(Actions, UpDownTest,
                         ::testing::Values(SpinRow{"ClickUpper", Action::ClickUpper, 5, 6},
                                           SpinRow{"ClickLower", Action::ClickLower, 5, 4},
                                           SpinRow{"KeyUp", Action::KeyUp, 5, 6},
                                           SpinRow{"KeyDown", Action::KeyDown, 5, 4},
                                           SpinRow{"WheelUp", Action::WheelUp, 5, 6},
                                           SpinRow{"WheelDown", Action::WheelDown, 5, 4},
                                           SpinRow{"ClickUpperAtTen", Action::ClickUpper, 10, 10},
                                           SpinRow{"KeyUpAtTen", Action::KeyUp, 10, 10},
                                           SpinRow{"ClickLowerAtOne", Action::ClickLower, 1, 1},
                                           SpinRow{"WheelDownAtOne", Action::WheelDown, 1, 1}),
                         [](const auto& info) { return std::string(info.param.name); });

using LookTest = EditorTest;

TEST_F(LookTest, CellsAreAmberOrDarkGreyWithTheGreyShowingBetween) {
    showPage(pixelsOn({0, 255}));
    const QImage frame = ui().frmFrameDraw->grab().toImage();
    const auto at = [&](int x, int y) { return QColor(frame.pixel(x, y)); };
    const QColor on(50, 50, 50), off(255, 200, 80), grey(128, 128, 128);
    EXPECT_EQ(at(106, 30), on);    // cell 0, its corner
    EXPECT_EQ(at(127, 38), on);    // cell 0, the opposite corner
    EXPECT_EQ(at(128, 34), grey);  // gap between columns 0 and 1
    EXPECT_EQ(at(130, 34), off);   // cell 1
    EXPECT_EQ(at(110, 39), grey);  // gap between rows 0 and 1
    EXPECT_EQ(at(110, 40), off);   // cell 16
    EXPECT_EQ(at(466, 180), on);   // cell 255
    EXPECT_EQ(at(487, 188), on);
    EXPECT_EQ(at(100, 26), grey);  // the rectangle around the grid
}

TEST_F(LookTest, DragHandleShowsTheArrowOnATransparentGround) {
    const QImage picture = ui().picMove->pixmap().toImage();
    ASSERT_EQ(picture.size(), QSize(32, 32));
    EXPECT_EQ(qAlpha(picture.pixel(0, 0)), 0);  // magenta ground
    EXPECT_EQ(qAlpha(picture.pixel(8, 12)), 0);
    EXPECT_EQ(picture.pixel(16, 16) & 0xFFFFFFu, 0u);  // black arrow, opaque
    EXPECT_EQ(qAlpha(picture.pixel(16, 16)), 255);
}

}  // namespace
}  // namespace lumidot::testing
