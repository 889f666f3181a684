#include "mainwindow/text_box_keys.h"

#include <QKeyEvent>
#include <QLineEdit>

#include "mainwindow/clipboard_access.h"
#include "mainwindow/read_only_text_box.h"

namespace lumidot {

void HandleTextBoxKeys(Platform& platform, QWidget* box, int keyCode, int shift) {
    if (shift != kCtrlMask) return;
    auto* line = qobject_cast<QLineEdit*>(box);
    auto* multi = qobject_cast<ReadOnlyTextBox*>(box);
    if (keyCode == kKeyA) {
        if (line) line->selectAll();
        if (multi) multi->selectAll();
    } else if (keyCode == kKeyC) {
        const QString selected = line    ? line->selectedText()
                                 : multi ? multi->selectedText()
                                         : QString();
        SetClipboardText(platform, selected, box);
    }
}

TextBoxKeys::TextBoxKeys(Platform& platform, QWidget* box, KeyDown keyDown)
    : QObject(box), platform_(platform), box_(box), keyDown_(std::move(keyDown)) {
    box->installEventFilter(this);
}

bool TextBoxKeys::eventFilter(QObject* watched, QEvent* event) {
    if (watched != box_ || event->type() != QEvent::KeyPress) return false;
    const auto& key = static_cast<const QKeyEvent&>(*event);
    const int keyCode = KeyCode(key);
    const int shift = ShiftState(key.modifiers());
    if (keyDown_) {
        keyDown_(keyCode, shift);
    } else {
        HandleTextBoxKeys(platform_, box_, keyCode, shift);
    }
    return keyCode == kKeyC && shift == kCtrlMask;
}

}  // namespace lumidot
