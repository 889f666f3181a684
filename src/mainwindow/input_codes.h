// Mouse buttons, shift state and key codes as the program's handlers see them: small
// numbers that are summed for several buttons or modifiers held together.
#pragma once

#include <Qt>

class QKeyEvent;

namespace lumidot {

// Mouse buttons.
constexpr int kLeftButton = 1;
constexpr int kRightButton = 2;
constexpr int kMiddleButton = 4;

// Shift state: the modifier keys held.
constexpr int kShiftMask = 1;
constexpr int kCtrlMask = 2;
constexpr int kAltMask = 4;

// Key codes: the modifier keys themselves, and letters as their upper-case character codes.
constexpr int kKeyShift = 16;
constexpr int kKeyCtrl = 17;
constexpr int kKeyA = 65;
constexpr int kKeyC = 67;
constexpr int kKeyV = 86;

// The sum of the buttons held.
int ButtonState(Qt::MouseButtons buttons);
// The sum of the modifiers held.
int ShiftState(Qt::KeyboardModifiers modifiers);
// The key code of a key event: Shift and Ctrl as 16 and 17, a letter or digit as its
// upper-case character code (which Qt's key code already is).
int KeyCode(const QKeyEvent& event);

}  // namespace lumidot
