#include "mainwindow/look.h"

#include <QApplication>
#include <QBoxLayout>
#include <QDialog>
#include <QDialogButtonBox>
#include <QPushButton>
#include <QScreen>
#include <QStyle>

namespace lumidot {

void ApplyProgramLook() {
    if (QApplication::style()->name().compare(QStringLiteral("fusion"), Qt::CaseInsensitive) != 0) {
        QApplication::setStyle(QStringLiteral("Fusion"));
    }
    QFont font(QStringLiteral("Liberation Sans"));
    font.setStyleHint(QFont::SansSerif);
    font.setPixelSize(11);
    QApplication::setFont(font);
}

void TakeOwnersLook(QWidget* dialog, QWidget* owner) {
    dialog->setFixedSize(dialog->size());
    if (owner) {
        dialog->setFont(owner->font());
        dialog->setWindowIcon(owner->windowIcon());
    }
}

QFont TextBoxFont() {
    QFont font(QStringLiteral("Courier New"));
    font.setStyleHint(QFont::TypeWriter);
    font.setPixelSize(11);
    return font;
}

void CentreOnScreen(QWidget* window) {
    const QScreen* screen = window->screen() ? window->screen() : QGuiApplication::primaryScreen();
    QRect frame = window->frameGeometry();
    frame.moveCenter(screen->availableGeometry().center());
    window->move(frame.topLeft());
}

void StyleReadOnlyPane(QWidget* pane) {
    pane->setFont(TextBoxFont());
    QPalette palette = pane->palette();
    palette.setColor(QPalette::Base, palette.color(QPalette::Button));
    pane->setPalette(palette);
}

void SetTextColour(QWidget* widget, const QColor& colour) {
    QPalette palette = widget->palette();
    palette.setColor(QPalette::WindowText, colour);
    widget->setPalette(palette);
}

void SetBackgroundColour(QWidget* widget, const QColor& colour) {
    QPalette palette = widget->palette();
    palette.setColor(QPalette::Window, colour);
    widget->setPalette(palette);
}

void EndWithOkCancel(QDialog* dialog, QBoxLayout* layout) {
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, dialog);
    buttons->button(QDialogButtonBox::Ok)->setObjectName(QStringLiteral("cmdOK"));
    buttons->button(QDialogButtonBox::Cancel)->setObjectName(QStringLiteral("cmdCancel"));
    QObject::connect(buttons, &QDialogButtonBox::accepted, dialog, &QDialog::accept);
    QObject::connect(buttons, &QDialogButtonBox::rejected, dialog, &QDialog::reject);
    layout->addWidget(buttons);
    layout->setSizeConstraint(QLayout::SetFixedSize);
}

}  // namespace lumidot
