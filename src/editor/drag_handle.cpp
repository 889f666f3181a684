#include "editor/drag_handle.h"

#include <QMouseEvent>

#include "mainwindow/input_codes.h"

namespace lumidot {

DragHandle::DragHandle(QWidget* parent) : QLabel(parent) {
    setAlignment(Qt::AlignCenter);
    // Movements over the handle are its own; they must not count as leaving the grid for
    // the bare frame behind it.
    setAttribute(Qt::WA_NoMousePropagation);
}

void DragHandle::mousePressEvent(QMouseEvent* event) {
    emit mouseDown(event->position().x(), event->position().y(), ButtonState(event->button()));
}

void DragHandle::mouseMoveEvent(QMouseEvent* event) {
    // While a button is held Qt keeps sending the movements here wherever the pointer goes,
    // so one drag can cover the whole screen.
    emit mouseMove(event->position().x(), event->position().y(), ButtonState(event->buttons()));
}

}  // namespace lumidot
