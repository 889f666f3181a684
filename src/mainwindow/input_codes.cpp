#include "mainwindow/input_codes.h"

#include <QKeyEvent>

namespace lumidot {

int ButtonState(Qt::MouseButtons buttons) {
    int state = 0;
    if (buttons & Qt::LeftButton) state |= kLeftButton;
    if (buttons & Qt::RightButton) state |= kRightButton;
    if (buttons & Qt::MiddleButton) state |= kMiddleButton;
    return state;
}

int ShiftState(Qt::KeyboardModifiers modifiers) {
    int state = 0;
    if (modifiers & Qt::ShiftModifier) state |= kShiftMask;
    if (modifiers & Qt::ControlModifier) state |= kCtrlMask;
    if (modifiers & Qt::AltModifier) state |= kAltMask;
    return state;
}

int KeyCode(const QKeyEvent& event) {
    switch (event.key()) {
        case Qt::Key_Shift:
            return kKeyShift;
        case Qt::Key_Control:
            return kKeyCtrl;
        default:
            return event.key();
    }
}

}  // namespace lumidot
