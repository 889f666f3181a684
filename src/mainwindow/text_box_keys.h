// Ctrl+A and Ctrl+C in the program's text boxes.
#pragma once

#include <QObject>
#include <functional>

#include "mainwindow/input_codes.h"
#include "mainwindow/platform.h"

class QWidget;

namespace lumidot {

// With Ctrl alone: A selects the whole text of box, C copies its selection through
// SetClipboardText. box is a QLineEdit or a ReadOnlyTextBox. It never consumes the key.
void HandleTextBoxKeys(Platform& platform, QWidget* box, int keyCode, int shift);

// The key handling of one text box, installed on it: every key press goes to keyDown (by
// default HandleTextBoxKeys alone) before the box sees it, and the box then handles the key
// as it would, except Ctrl+C, which keyDown has already answered: the box's own copy would
// put the selection on the clipboard a second time, with its own line breaks.
class TextBoxKeys : public QObject {
public:
    using KeyDown = std::function<void(int keyCode, int shift)>;
    TextBoxKeys(Platform& platform, QWidget* box, KeyDown keyDown = {});

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    Platform& platform_;
    QWidget* box_;
    KeyDown keyDown_;
};

}  // namespace lumidot
