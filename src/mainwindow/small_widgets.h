// Small widgets the main window's layout needs and Qt lacks.
#pragma once

#include <QCheckBox>
#include <QPushButton>
#include <QWidget>

namespace lumidot {

// A left-pointing arrow drawn with three lines: a shaft and the two strokes of its head.
class LeftArrow : public QWidget {
    Q_OBJECT
public:
    explicit LeftArrow(QWidget* parent = nullptr);

protected:
    void paintEvent(QPaintEvent* event) override;
};

// A check box whose caption wraps onto further lines within its width.
class WrappingCheckBox : public QCheckBox {
    Q_OBJECT
public:
    explicit WrappingCheckBox(QWidget* parent = nullptr);

protected:
    void paintEvent(QPaintEvent* event) override;
    bool hitButton(const QPoint& pos) const override;
};

// A push button with an optional small picture above its caption (the caption wraps if
// needed) and an optional face of one flat colour.
class PictureButton : public QPushButton {
    Q_OBJECT
public:
    explicit PictureButton(QWidget* parent = nullptr);
    // A picture whose magenta pixels become transparent.
    void setPicture(const QString& resource);
    // The button's face in exactly this colour, a little darker while pressed.
    void setFace(const QColor& colour);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QPixmap picture_;
    QColor face_;
};

// Loads a picture from the resources with its magenta pixels made transparent.
QPixmap LoadPicture(const QString& resource);

}  // namespace lumidot
