// The output pane: which message the inputs call for, laid out with the user's prefix,
// suffix and separator, and the copies to the clipboard.
#include <QButtonGroup>

#include "codec/graphic_page.h"
#include "codec/lcd_text.h"
#include "mainwindow/clipboard_access.h"
#include "mainwindow/main_form.h"
#include "ui_main_form.h"

namespace lumidot {

void MainForm::connectOutput() {
    modeGroup_ = new QButtonGroup(this);
    modeGroup_->addButton(ui->optSEGStore);
    modeGroup_->addButton(ui->optSEGDisplay);
    modeGroup_->addButton(ui->optSEText);
    // A mode clicked again while selected still regenerates: it is a quick way back from
    // "Display none" or a decoding result to the message of the mode.
    connect(ui->optSEGStore, &QPushButton::clicked, this, &MainForm::optSEGStore_Click);
    connect(ui->optSEGDisplay, &QPushButton::clicked, this, &MainForm::optSEGDisplay_Click);
    connect(ui->optSEText, &QPushButton::clicked, this, &MainForm::optSEText_Click);
    connect(ui->txtHexPrefix, &QLineEdit::textChanged, this, &MainForm::txtHexPrefix_Change);
    connect(ui->txtHexSuffix, &QLineEdit::textChanged, this, &MainForm::txtHexSuffix_Change);
    connect(ui->txtHexSep, &QLineEdit::textChanged, this, &MainForm::txtHexSep_Change);
    connect(ui->txtTextIn, &QLineEdit::textChanged, this, &MainForm::txtTextIn_Change);
    connect(ui->cmdSysExCopy, &QPushButton::clicked, this, &MainForm::cmdSysExCopy_Click);
    connect(ui->cmdSysExDecode, &QPushButton::clicked, this, &MainForm::cmdSysExDecode_Click);
    connect(ui->chkSysExCopyAuto, &QCheckBox::clicked, this, &MainForm::chkSysExCopyAuto_Click);
}

void MainForm::AutoSetSysExText() {
    const auto page = static_cast<std::uint8_t>(ui->udPageNum->value());
    std::string message;
    if (ui->optSEGStore->isChecked()) {
        message = MakeGraphicStoreSysEx(FDPixels, page);
    } else if (ui->optSEGDisplay->isChecked()) {
        message = MakeGraphicDisplaySysEx(page);
    } else if (ui->optSEText->isChecked()) {
        message = MakeTextSysEx(ui->txtTextIn->text().toStdString());
    } else {
        return;
    }
    SetSysExOutText(QString::fromStdString(message));
}

void MainForm::SetSysExOutText(const QString& text) {
    QString result;
    if (SkipOutputLayout) {
        result = text;
    } else {
        const QString prefix = ui->txtHexPrefix->text();
        const QString suffix = ui->txtHexSuffix->text();
        const QString separator = ui->txtHexSep->text();
        const QStringList bytes = text.split(QLatin1Char(' '));
        result.reserve(bytes.size() * (2 + prefix.size() + suffix.size() + separator.size()));
        for (qsizetype i = 0; i < bytes.size(); ++i) {
            if (i > 0) result += separator;
            result += prefix;
            result += bytes[i];
            result += suffix;
        }
    }
    writePane(result);
    if (SysExCopyAuto) cmdSysExCopy_Click();
}

void MainForm::setSysExOutText(const std::string& text) { writePane(QString::fromStdString(text)); }

void MainForm::writePane(const QString& text) {
    ++sysExOutWrites_;
    ui->txtSysExOut->setText(text);
}

QString MainForm::sysExOutText() const { return ui->txtSysExOut->text(); }

void MainForm::cmdSysExCopy_Click() { SetClipboardText(platform_, sysExOutText(), this); }

void MainForm::chkSysExCopyAuto_Click() {
    SysExCopyAuto = ui->chkSysExCopyAuto->checkState() == Qt::Checked;
}

void MainForm::optSEGStore_Click() { AutoSetSysExText(); }
void MainForm::optSEGDisplay_Click() { AutoSetSysExText(); }
void MainForm::optSEText_Click() { AutoSetSysExText(); }
void MainForm::txtHexPrefix_Change() { AutoSetSysExText(); }
void MainForm::txtHexSuffix_Change() { AutoSetSysExText(); }
void MainForm::txtHexSep_Change() { AutoSetSysExText(); }

void MainForm::selectMode(QPushButton* button) {
    button->setChecked(true);
    if (button == ui->optSEGStore) {
        optSEGStore_Click();
    } else if (button == ui->optSEGDisplay) {
        optSEGDisplay_Click();
    } else if (button == ui->optSEText) {
        optSEText_Click();
    }
}

void MainForm::clearModes() {
    // An exclusive group refuses to leave nothing checked; lift that for the moment.
    modeGroup_->setExclusive(false);
    for (QAbstractButton* button : modeGroup_->buttons()) {
        button->setAutoExclusive(false);
        button->setChecked(false);
        button->setAutoExclusive(true);
    }
    modeGroup_->setExclusive(true);
}

}  // namespace lumidot
