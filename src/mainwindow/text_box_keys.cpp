#include "mainwindow/text_box_keys.h"

#include <QLineEdit>

#include "mainwindow/clipboard_access.h"
#include "mainwindow/read_only_text_box.h"

namespace lumidot {

int ShiftState(Qt::KeyboardModifiers modifiers) {
    int state = 0;
    if (modifiers & Qt::ShiftModifier) state |= kShiftMask;
    if (modifiers & Qt::ControlModifier) state |= kCtrlMask;
    if (modifiers & Qt::AltModifier) state |= kAltMask;
    return state;
}

void HandleTextBoxKeys(Platform& platform, QWidget* box, int keyCode, int shift) {
    if (shift != kCtrlMask) return;
    auto* line = qobject_cast<QLineEdit*>(box);
    auto* multi = qobject_cast<ReadOnlyTextBox*>(box);
    if (keyCode == Qt::Key_A) {
        if (line) line->selectAll();
        if (multi) multi->selectAll();
    } else if (keyCode == Qt::Key_C) {
        const QString selected = line ? line->selectedText() : multi ? multi->selectedText()
                                                                     : QString();
        SetClipboardText(platform, selected, box);
    }
}

}  // namespace lumidot
