// Every clipboard read and write of the program: up to ten attempts, 15 ms apart, then
// one critical message box. Callers never see a failure.
#pragma once

#include <QString>

#include "mainwindow/platform.h"

class QWidget;

namespace lumidot {

constexpr int kClipboardAttempts = 10;
constexpr int kClipboardPauseMs = 15;

// The clipboard's text; empty when it holds none or when every attempt failed.
QString GetClipboardText(Platform& platform, QWidget* parent = nullptr);

// Clears the clipboard and sets the text, retrying as a whole.
void SetClipboardText(Platform& platform, const QString& text, QWidget* parent = nullptr);

}  // namespace lumidot
