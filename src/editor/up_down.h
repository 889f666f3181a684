// An up-down spinner: two small arrow buttons stacked, with a value between a minimum and
// a maximum. Its number is shown by a separate buddy label. It does not wrap at its ends.
#pragma once

#include <QWidget>

class QLabel;

namespace lumidot {

class UpDown : public QWidget {
    Q_OBJECT
public:
    explicit UpDown(QWidget* parent = nullptr);

    int value() const { return value_; }
    // Clamped to the range; emits valueChanged only when the value changes.
    void setValue(int value);
    void setRange(int minimum, int maximum);
    int minimum() const { return minimum_; }
    int maximum() const { return maximum_; }
    void stepUp() { setValue(value_ + 1); }
    void stepDown() { setValue(value_ - 1); }
    // The label that shows the value and follows it.
    void setBuddy(QLabel* label);

    QSize sizeHint() const override;

signals:
    void valueChanged(int value);

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;

private:
    void showInBuddy();

    int value_ = 1;
    int minimum_ = 1;
    int maximum_ = 10;
    int pressedHalf_ = 0;  // 1 up, -1 down, 0 none: drawn sunken while held
    QLabel* buddy_ = nullptr;
};

}  // namespace lumidot
