// picMove: a small picture of a four-way arrow that moves the graphic when dragged.
#pragma once

#include <QLabel>

namespace lumidot {

class DragHandle : public QLabel {
    Q_OBJECT
public:
    explicit DragHandle(QWidget* parent = nullptr);

signals:
    // Positions in the handle's own pixels; buttons as 1 left, 2 right, 4 middle.
    void mouseDown(double x, double y, int button);
    void mouseMove(double x, double y, int buttons);

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
};

}  // namespace lumidot
