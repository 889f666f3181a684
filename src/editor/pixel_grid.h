// The 16 x 16 cells of the graphic page, painted as one widget and hit-tested per cell.
// Cell c of row r lies at (24c, 10r) within the widget, 22 x 9 pixels; between cells are
// gaps of 2 pixels across and 1 pixel down.
#pragma once

#include <QWidget>
#include <array>

#include "codec/graphic_page.h"

namespace lumidot {

class PixelGrid : public QWidget {
    Q_OBJECT
public:
    static constexpr int kCellWidth = 22;
    static constexpr int kCellHeight = 9;
    static constexpr int kColumnPitch = 24;
    static constexpr int kRowPitch = 10;

    explicit PixelGrid(QWidget* parent = nullptr);

    // Colour of cell index: on is dark grey, off amber.
    void setCell(int index, bool on);
    // Every cell at once, repainted once if any changed.
    void setCells(const Page& page);
    bool cell(int index) const { return cells_[index]; }
    // Index of the cell at a point in the widget, or -1 in a gap or outside.
    static int cellAt(QPointF point);
    static QRect cellRect(int index);

    QSize sizeHint() const override;

signals:
    // Pointer moved over a cell, with the mouse buttons held and the shift state
    // (1 Shift, 2 Ctrl, 4 Alt, summed).
    void cellMouseMove(int index, int buttons, int shift);
    // One mouse button (1 left, 2 right, 4 middle) went down on a cell.
    void cellMouseDown(int index, int button);
    // Pointer moved over a gap between cells, or, while a button pressed on a cell is held,
    // off the grid onto the bare frame or window.
    void gapMouseMove();

protected:
    void paintEvent(QPaintEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;

private:
    bool overBareSurface(const QMouseEvent* event) const;

    std::array<bool, kPagePixels> cells_{};
};

}  // namespace lumidot
