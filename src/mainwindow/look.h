// The program's look in one place: style and fonts, the dialogs' frames, the read-only
// panes, coloured captions and where windows open.
#pragma once

#include <QColor>
#include <QFont>
#include <QWidget>

class QBoxLayout;
class QDialog;

namespace lumidot {

// The program's look, the same on every desktop: the Fusion style and an 11-pixel sans
// serif for captions, which the fixed layout was drawn for. Safe to call more than once.
void ApplyProgramLook();

// The program's dialogs: a title and a close box, nothing to minimise or maximise.
inline constexpr Qt::WindowFlags kDialogFlags = Qt::Dialog | Qt::CustomizeWindowHint |
                                                Qt::WindowTitleHint | Qt::WindowSystemMenuHint |
                                                Qt::WindowCloseButtonHint;

// Fixes a dialog at its designed size and gives it its owner's font and icon.
void TakeOwnersLook(QWidget* dialog, QWidget* owner);

// Ends a dialog's layout with OK (cmdOK) and Cancel (cmdCancel), which accept and reject it,
// and fixes the dialog at the size its contents need.
void EndWithOkCancel(QDialog* dialog, QBoxLayout* layout);

// Courier New at 11 pixels (8.25 points at 96 dpi) for the text boxes; fontconfig gives a
// metric-compatible face where Courier New itself is missing.
QFont TextBoxFont();

// Centres a shown window, title bar and borders included, on the screen it is on.
void CentreOnScreen(QWidget* window);

// A read-only text pane: the text boxes' font on the button face, so that it reads as
// something to look at, not to type into.
void StyleReadOnlyPane(QWidget* pane);

// Paints a widget's text (WindowText) or its background (Window) in a colour.
void SetTextColour(QWidget* widget, const QColor& colour);
void SetBackgroundColour(QWidget* widget, const QColor& colour);

}  // namespace lumidot
