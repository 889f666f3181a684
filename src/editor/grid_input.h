// The graphic editor's pointer and keys: painting cells with the mouse or with Shift and Ctrl
// over a cell (the window's key preview), and dragging the picture by its handle. It keeps
// the cell under the pointer and the drag's anchor, and forwards each change to the window.
#pragma once

#include <QObject>
#include <QPointF>
#include <cstdint>

namespace lumidot {

class MainForm;

class GridInput : public QObject {
public:
    // Watches window's keys (before its controls see them) and the pointer over its bare
    // surfaces.
    explicit GridInput(MainForm& window);
    ~GridInput() override;

    // Pointer over cell index with the buttons held and shift state (1 Shift, 2 Ctrl, 4 Alt).
    void FDPixelMouseMove(int index, int buttons, int shift);
    // One mouse button (1 left, 2 right, 4 middle) went down on cell index.
    void FDPixelMouseDown(int index, int button);
    // A key went down anywhere in the window (key preview).
    void Form_KeyDown(int keyCode, int shift);
    // The pointer moved over the bare window, the bare frame or a gap between cells.
    void FDSurfaceMouseMove() { FDPixelUnderMouse = -1; }
    void picMove_MouseDown(double x, double y);
    void picMove_MouseMove(int buttons, double x, double y);
    QPointF dragAnchor() const { return {FDDragX, FDDragY}; }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void paint(int index, int shift, bool byKey);

    MainForm& window_;
    std::int16_t FDPixelUnderMouse = -1;  // cell the pointer last moved over, or -1
    float FDDragX = 0;                    // drag anchor on picMove, in pixels
    float FDDragY = 0;
};

}  // namespace lumidot
