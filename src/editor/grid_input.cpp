#include "editor/grid_input.h"

#include <QApplication>
#include <QKeyEvent>
#include <QMenuBar>

#include "editor/drag_handle.h"
#include "editor/edit_history.h"
#include "editor/pixel_grid.h"
#include "mainwindow/input_codes.h"
#include "mainwindow/main_form.h"
#include "pages/page_ops.h"
#include "ui_main_form.h"

namespace lumidot {

namespace {

// One step of a drag on the handle: a cell's width across, a row's pitch down.
constexpr int kDragStepX = PixelGrid::kCellWidth;
constexpr int kDragStepY = PixelGrid::kRowPitch;

// One shift per whole step between the drag anchor and the pointer along one axis. The
// anchor moves a step per shift, so what is left of the movement counts towards the next
// event: a slow drag moves the picture as far as a fast one.
void DragAlong(MainForm& form, float& anchor, double pointer, int step, void (MainForm::*forward)(),
               void (MainForm::*backward)()) {
    for (int steps = DragSteps(pointer - anchor, step); steps != 0;) {
        const int direction = steps > 0 ? 1 : -1;
        (form.*(direction > 0 ? forward : backward))();
        anchor += static_cast<float>(direction * step);
        steps -= direction;
    }
}

}  // namespace

GridInput::GridInput(MainForm& window) : window_(window) {
    Ui::MainForm& ui = window.form();
    PixelGrid* grid = ui.lblFDPixelBase;
    connect(grid, &PixelGrid::cellMouseMove, this, &GridInput::FDPixelMouseMove);
    connect(grid, &PixelGrid::cellMouseDown, this, &GridInput::FDPixelMouseDown);
    connect(grid, &PixelGrid::gapMouseMove, this, &GridInput::FDSurfaceMouseMove);
    DragHandle* handle = ui.picMove;
    connect(handle, &DragHandle::mouseDown, this,
            [this](double x, double y, int) { picMove_MouseDown(x, y); });
    connect(handle, &DragHandle::mouseMove, this,
            [this](double x, double y, int buttons) { picMove_MouseMove(buttons, x, y); });

    // Key preview: every key press in the window passes through eventFilter first, before
    // the text boxes' own key handling.
    qApp->installEventFilter(this);
    // The pointer leaving the cells is seen on the window's and the graphic frame's own
    // surfaces; the grey rectangle behind the cells lets the frame see it too. Any other
    // control keeps the move to itself, so the last cell stays the one under the mouse.
    window.setMouseTracking(true);
    window.clientArea()->setMouseTracking(true);
    ui.frmFrameDraw->setMouseTracking(true);
    ui.Shape1->setAttribute(Qt::WA_TransparentForMouseEvents);
    for (QWidget* child : window.findChildren<QWidget*>()) {
        if (child != window.clientArea() && child != ui.frmFrameDraw && child != ui.Shape1 &&
            child != ui.lblFDPixelBase && child != window.menuBar() &&
            !window.menuBar()->isAncestorOf(child)) {
            child->setAttribute(Qt::WA_NoMousePropagation);
        }
    }
}

GridInput::~GridInput() {
    qApp->removeEventFilter(this);
}

bool GridInput::eventFilter(QObject* watched, QEvent* event) {
    Ui::MainForm& ui = window_.form();
    if (event->type() == QEvent::MouseMove &&
        (watched == ui.frmFrameDraw || watched == &window_ || watched == window_.clientArea())) {
        FDSurfaceMouseMove();
        return false;
    }
    if (event->type() != QEvent::KeyPress) return false;
    auto* widget = qobject_cast<QWidget*>(watched);
    if (widget == nullptr || widget->window() != &window_) return false;
    // A key press travels up from the focused control to its parents; handle it once.
    QWidget* focus = window_.focusWidget();
    if (widget != (focus ? focus : &window_)) return false;

    const auto& key = static_cast<const QKeyEvent&>(*event);
    Form_KeyDown(KeyCode(key), ShiftState(key.modifiers()));
    return false;
}

// --- painting ----------------------------------------------------------------------------

void GridInput::FDPixelMouseMove(int index, int /*buttons*/, int shift) {
    FDPixelUnderMouse = static_cast<std::int16_t>(index);
    if (shift != kShiftMask && shift != kCtrlMask) return;
    paint(index, shift, false);
}

void GridInput::paint(int index, int shift, bool byKey) {
    window_.history().painting(byKey);
    window_.model().paintPixel(index, shift == kShiftMask);
    window_.refreshView();
}

void GridInput::FDPixelMouseDown(int index, int button) {
    // A click paints by its button alone, whatever modifiers are held.
    if (button == kLeftButton) {
        FDPixelMouseMove(index, button, kShiftMask);
    } else if (button == kRightButton) {
        FDPixelMouseMove(index, button, kCtrlMask);
    }
}

void GridInput::Form_KeyDown(int keyCode, int /*shift*/) {
    // Only the key that went down counts, so Shift pressed while Ctrl is held still paints.
    if (FDPixelUnderMouse < 0) return;
    if (keyCode == kKeyShift) {
        paint(FDPixelUnderMouse, kShiftMask, true);
    } else if (keyCode == kKeyCtrl) {
        paint(FDPixelUnderMouse, kCtrlMask, true);
    }
}

// --- dragging ----------------------------------------------------------------------------

void GridInput::picMove_MouseDown(double x, double y) {
    FDDragX = static_cast<float>(x);
    FDDragY = static_cast<float>(y);
}

void GridInput::picMove_MouseMove(int buttons, double x, double y) {
    if (buttons != kLeftButton) return;
    window_.history().dragging();
    // Across first, then down.
    DragAlong(window_, FDDragX, x, kDragStepX, &MainForm::cmdFDShiftRight_Click,
              &MainForm::cmdFDShiftLeft_Click);
    DragAlong(window_, FDDragY, y, kDragStepY, &MainForm::cmdFDShiftDown_Click,
              &MainForm::cmdFDShiftUp_Click);
}

}  // namespace lumidot
