#include "editor/up_down.h"

#include <QKeyEvent>
#include <QLabel>
#include <QMouseEvent>
#include <QPainter>
#include <QStyle>
#include <QStyleOption>
#include <QWheelEvent>
#include <algorithm>

namespace lumidot {

// Stepping past either end stops there instead of wrapping round. Both spinners choose a
// page: on the page spinner every step is a page change that stores and regenerates, and on
// the copy dialog's a wrap from 10 to 1 would silently aim the copy at a distant page. A
// user holding the arrow to reach the last page should land on it and stay there.

UpDown::UpDown(QWidget* parent) : QWidget(parent) {
    setFocusPolicy(Qt::StrongFocus);
    setAttribute(Qt::WA_Hover);
}

void UpDown::setValue(int value) {
    const int clamped = std::clamp(value, minimum_, maximum_);
    if (clamped == value_) return;
    value_ = clamped;
    showInBuddy();
    update();  // an arrow greys out at its end
    emit valueChanged(value_);
}

void UpDown::setRange(int minimum, int maximum) {
    minimum_ = minimum;
    maximum_ = std::max(minimum, maximum);
    setValue(value_);
}

void UpDown::setBuddy(QLabel* label) {
    buddy_ = label;
    showInBuddy();
}

void UpDown::showInBuddy() {
    if (buddy_) buddy_->setText(QString::number(value_));
}

QSize UpDown::sizeHint() const {
    return {16, 17};
}

void UpDown::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    const int upperHeight = height() / 2;
    const QRect halves[2] = {QRect(0, 0, width(), upperHeight),
                             QRect(0, upperHeight, width(), height() - upperHeight)};
    for (int half = 0; half < 2; ++half) {
        const int direction = half == 0 ? 1 : -1;
        const bool atEnd = direction == 1 ? value_ >= maximum_ : value_ <= minimum_;

        QStyleOptionButton button;
        button.initFrom(this);
        button.rect = halves[half];
        button.state |= pressedHalf_ == direction ? QStyle::State_Sunken : QStyle::State_Raised;
        style()->drawPrimitive(QStyle::PE_PanelButtonBevel, &button, &painter, this);

        QStyleOption arrow;
        arrow.initFrom(this);
        arrow.rect = halves[half].adjusted(3, 2, -3, -2);
        if (atEnd || !isEnabled()) arrow.state &= ~QStyle::State_Enabled;
        style()->drawPrimitive(
            direction == 1 ? QStyle::PE_IndicatorArrowUp : QStyle::PE_IndicatorArrowDown, &arrow,
            &painter, this);
    }
}

void UpDown::mousePressEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton) {
        QWidget::mousePressEvent(event);
        return;
    }
    pressedHalf_ = event->position().y() < height() / 2 ? 1 : -1;
    update();
    if (pressedHalf_ == 1) {
        stepUp();
    } else {
        stepDown();
    }
}

void UpDown::mouseReleaseEvent(QMouseEvent* event) {
    pressedHalf_ = 0;
    update();
    QWidget::mouseReleaseEvent(event);
}

void UpDown::keyPressEvent(QKeyEvent* event) {
    switch (event->key()) {
        case Qt::Key_Up:
            stepUp();
            break;
        case Qt::Key_Down:
            stepDown();
            break;
        default:
            QWidget::keyPressEvent(event);
            return;
    }
}

void UpDown::wheelEvent(QWheelEvent* event) {
    const int delta = event->angleDelta().y();
    if (delta > 0) {
        stepUp();
    } else if (delta < 0) {
        stepDown();
    }
    event->accept();
}

}  // namespace lumidot
