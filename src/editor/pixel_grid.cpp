#include "editor/pixel_grid.h"

#include <QMouseEvent>
#include <QPainter>
#include <cmath>

#include "mainwindow/input_codes.h"

namespace lumidot {

namespace {

const QColor kOnColour(50, 50, 50);
const QColor kOffColour(255, 200, 80);

// Column (or row) of a coordinate along one axis, or -1 when it falls into a gap or
// outside the grid.
int CellAlong(double coordinate, int pitch, int extent) {
    if (coordinate < 0) return -1;
    const int slot = static_cast<int>(std::floor(coordinate / pitch));
    if (slot >= kPageSide) return -1;
    return coordinate - slot * pitch < extent ? slot : -1;
}

}  // namespace

PixelGrid::PixelGrid(QWidget* parent) : QWidget(parent) {
    // Every movement over a cell may paint, not only movements with a button held.
    setMouseTracking(true);
    // Only the cells are painted: the grey rectangle behind must show in the gaps.
    setAttribute(Qt::WA_NoSystemBackground);
    setAutoFillBackground(false);
    // A movement over the grid is fully answered here, gaps included.
    setAttribute(Qt::WA_NoMousePropagation);
}

void PixelGrid::setCell(int index, bool on) {
    if (index < 0 || index >= kPagePixels || cells_[index] == on) return;
    cells_[index] = on;
    // The whole grid, not the cell: a page change repaints up to 256 cells, and collecting
    // that many small rectangles costs far more than painting the grid once.
    update();
}

void PixelGrid::setCells(const Page& page) {
    if (cells_ == page) return;
    cells_ = page;
    update();
}

int PixelGrid::cellAt(QPointF point) {
    const int column = CellAlong(point.x(), kColumnPitch, kCellWidth);
    const int row = CellAlong(point.y(), kRowPitch, kCellHeight);
    if (column < 0 || row < 0) return -1;
    return row * kPageSide + column;
}

QRect PixelGrid::cellRect(int index) {
    const int row = index / kPageSide;
    const int column = index % kPageSide;
    return {column * kColumnPitch, row * kRowPitch, kCellWidth, kCellHeight};
}

QSize PixelGrid::sizeHint() const {
    return {(kPageSide - 1) * kColumnPitch + kCellWidth, (kPageSide - 1) * kRowPitch + kCellHeight};
}

void PixelGrid::paintEvent(QPaintEvent* event) {
    QPainter painter(this);
    for (int i = 0; i < kPagePixels; ++i) {
        const QRect rect = cellRect(i);
        if (rect.intersects(event->rect()))
            painter.fillRect(rect, cells_[i] ? kOnColour : kOffColour);
    }
}

void PixelGrid::mouseMoveEvent(QMouseEvent* event) {
    const int index = cellAt(event->position());
    if (index >= 0) {
        emit cellMouseMove(index, ButtonState(event->buttons()), ShiftState(event->modifiers()));
    } else if (rect().contains(event->position().toPoint()) || overBareSurface(event)) {
        emit gapMouseMove();
    }
}

bool PixelGrid::overBareSurface(const QMouseEvent* event) const {
    // Outside the grid the movements only come here while a button pressed on a cell is
    // held. They count as leaving the cells when the pointer is over the frame or window
    // itself (the grid's ancestors); over another control they mean nothing, as they would
    // without the grab.
    QWidget* top = window();
    QWidget* under = top->childAt(top->mapFromGlobal(event->globalPosition().toPoint()));
    return under == nullptr || under == top || under->isAncestorOf(this);
}

void PixelGrid::mousePressEvent(QMouseEvent* event) {
    const int index = cellAt(event->position());
    if (index >= 0) emit cellMouseDown(index, ButtonState(event->button()));
}

}  // namespace lumidot
