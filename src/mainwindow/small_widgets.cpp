#include "mainwindow/small_widgets.h"

#include <QApplication>
#include <QBitmap>
#include <QImage>
#include <QPainter>
#include <QStyleOptionButton>
#include <QStylePainter>

namespace lumidot {

LeftArrow::LeftArrow(QWidget* parent) : QWidget(parent) {}

void LeftArrow::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setPen(QPen(palette().color(QPalette::WindowText), 1));
    const int y = height() / 2;
    const int left = 1;
    const int right = width() - 2;
    painter.drawLine(left, y, right, y);
    painter.drawLine(left, y, left + 4, y - 4);
    painter.drawLine(left, y, left + 4, y + 4);
}

WrappingCheckBox::WrappingCheckBox(QWidget* parent) : QCheckBox(parent) {}

void WrappingCheckBox::paintEvent(QPaintEvent*) {
    QStylePainter painter(this);
    QStyleOptionButton option;
    initStyleOption(&option);
    const QString caption = option.text;
    option.text.clear();
    const QRect indicator = style()->subElementRect(QStyle::SE_CheckBoxIndicator, &option, this);
    option.rect = indicator;
    option.rect.moveTop((height() - indicator.height()) / 2);
    painter.drawControl(QStyle::CE_CheckBox, option);
    const int textLeft = indicator.right() + 5;
    const QRect textRect(textLeft, 0, width() - textLeft, height());
    style()->drawItemText(
        &painter, textRect,
        Qt::AlignLeft | Qt::AlignVCenter | Qt::TextWordWrap | Qt::TextShowMnemonic, palette(),
        isEnabled(), caption, QPalette::WindowText);
    if (hasFocus()) {
        QStyleOptionFocusRect focus;
        focus.initFrom(this);
        focus.rect = painter.fontMetrics()
                         .boundingRect(textRect,
                                       Qt::AlignLeft | Qt::AlignVCenter | Qt::TextWordWrap |
                                           Qt::TextShowMnemonic,
                                       caption)
                         .adjusted(-1, 0, 1, 0);
        painter.drawPrimitive(QStyle::PE_FrameFocusRect, focus);
    }
}

bool WrappingCheckBox::hitButton(const QPoint& pos) const {
    return rect().contains(pos);
}

PictureButton::PictureButton(QWidget* parent) : QPushButton(parent) {}

void PictureButton::setPicture(const QString& resource) {
    picture_ = LoadPicture(resource);
    update();
}

void PictureButton::paintEvent(QPaintEvent*) {
    QStylePainter painter(this);
    QStyleOptionButton option;
    initStyleOption(&option);
    const QString caption = option.text;
    option.text.clear();
    option.icon = QIcon();
    painter.drawControl(QStyle::CE_PushButton, option);
    if (face_.isValid()) {
        // Inside the style's frame and its one-pixel bevel, one flat colour: the style would
        // paint its own gradient over any palette colour.
        painter.fillRect(rect().adjusted(2, 2, -2, -2), isDown() ? face_.darker(115) : face_);
    }

    const int shift = isDown() ? 1 : 0;
    const int pictureTop = 4 + shift;
    QRect textRect(2 + shift, shift, width() - 4, height());
    if (!picture_.isNull()) {
        painter.drawPixmap((width() - picture_.width()) / 2 + shift, pictureTop, picture_);
        const int textTop = pictureTop + picture_.height();
        textRect = QRect(2 + shift, textTop, width() - 4, height() - textTop - 2);
    }
    style()->drawItemText(
        &painter, textRect,
        Qt::AlignHCenter | Qt::AlignVCenter | Qt::TextWordWrap | Qt::TextShowMnemonic, palette(),
        isEnabled(), caption, QPalette::ButtonText);
    if (hasFocus()) {
        QStyleOptionFocusRect focus;
        focus.initFrom(this);
        focus.rect = rect().adjusted(3, 3, -3, -3);
        painter.drawPrimitive(QStyle::PE_FrameFocusRect, focus);
    }
}

QPixmap LoadPicture(const QString& resource) {
    const QImage image(resource);
    QPixmap pixmap = QPixmap::fromImage(image);
    pixmap.setMask(
        QBitmap::fromImage(image.createMaskFromColor(qRgb(255, 0, 255), Qt::MaskInColor)));
    return pixmap;
}

void PictureButton::setFace(const QColor& colour) {
    face_ = colour;
    QPalette palette = this->palette();
    palette.setColor(QPalette::Button, colour);
    setPalette(palette);
    update();
}

}  // namespace lumidot
