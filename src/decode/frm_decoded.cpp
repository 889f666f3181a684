#include "decode/frm_decoded.h"

#include <QCloseEvent>
#include <QLocale>
#include <QShowEvent>

#include "mainwindow/look.h"
#include "mainwindow/read_only_text_box.h"
#include "mainwindow/text_box_keys.h"
#include "ui_frm_decoded.h"

namespace lumidot {

QString FormatCount(qint32 count) {
    QLocale locale;
    // The C locale leaves group separators out unless asked; counts always have them.
    locale.setNumberOptions(locale.numberOptions() & ~QLocale::OmitGroupSeparator);
    return locale.toString(count);
}

frmDecoded::frmDecoded(QWidget* owner, Platform& platform)
    : QDialog(owner, kDialogFlags), ui(std::make_unique<Ui::frmDecoded>()), platform_(platform) {
    ui->setupUi(this);
    TakeOwnersLook(this, owner);

    StyleReadOnlyPane(ui->txtDecodedOut);
    new TextBoxKeys(platform_, ui->txtDecodedOut);

    connect(ui->cmdOK, &QPushButton::clicked, this, [this] { cmdOK_Click(); });
}

frmDecoded::~frmDecoded() = default;

void frmDecoded::SetAllText(qint32 NumDecoded, const QString& MainText) {
    const bool one = NumDecoded == 1;
    ui->lblNumDecoded->setText(FormatCount(NumDecoded) + QStringLiteral(" SysEx message") +
                               (one ? QStringLiteral(" has") : QStringLiteral("s have")) +
                               QStringLiteral(" been decoded as follows:"));
    ui->txtDecodedOut->setText(MainText);
    ui->lblCleanInfo->setText(
        QStringLiteral("Cleaned version") +
        (one ? QStringLiteral(" of the message is") : QStringLiteral("s of the messages are")) +
        QStringLiteral(" now being displayed at the bottom of the main window.\r\n"
                       "If you have ticked the checkbox to automatically copy text, that text "
                       "is now on the clipboard."));
}

void frmDecoded::showEvent(QShowEvent* event) {
    QDialog::showEvent(event);
    if (!event->spontaneous()) {
        // Centred on the screen rather than over the owner.
        CentreOnScreen(this);
    }
    ui->txtDecodedOut->setFocus();
    ui->txtDecodedOut->setCaretToStart();
}

void frmDecoded::closeEvent(QCloseEvent* event) {
    cmdOK_Click();
    event->accept();
}

void frmDecoded::cmdOK_Click() {
    accept();
}

}  // namespace lumidot
