// Ctrl+A and Ctrl+C in the program's text boxes.
#pragma once

#include <Qt>

#include "mainwindow/platform.h"

class QWidget;
class QKeyEvent;

namespace lumidot {

// Shift-state values as the key handlers see them.
constexpr int kShiftMask = 1;
constexpr int kCtrlMask = 2;
constexpr int kAltMask = 4;
// Sum of kShiftMask, kCtrlMask and kAltMask for the modifiers of an event.
int ShiftState(Qt::KeyboardModifiers modifiers);

// With Ctrl alone: A selects the whole text of box, C copies its selection through
// SetClipboardText. box is a QLineEdit or a ReadOnlyTextBox. It never consumes the key.
void HandleTextBoxKeys(Platform& platform, QWidget* box, int keyCode, int shift);

}  // namespace lumidot
