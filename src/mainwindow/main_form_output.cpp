// The output pane: which message the inputs call for, laid out with the user's prefix,
// suffix and separator, and the copies to the clipboard.
#include <QButtonGroup>

#include "mainwindow/clipboard_access.h"
#include "mainwindow/main_form.h"
#include "ui_main_form.h"

namespace lumidot {

void MainForm::connectOutput() {
    auto* modes = new QButtonGroup(this);
    const struct {
        QPushButton* button;
        void (MainForm::*click)();
        OutputMode mode;
    } modeButtons[] = {
        {ui->optSEGStore, &MainForm::optSEGStore_Click, OutputMode::Store},
        {ui->optSEGDisplay, &MainForm::optSEGDisplay_Click, OutputMode::Display},
        {ui->optSEText, &MainForm::optSEText_Click, OutputMode::Text},
    };
    for (const auto& entry : modeButtons) {
        modes->addButton(entry.button);
        // A mode clicked again while selected still regenerates: it is a quick way back from
        // "Display none" or a decoding result to the message of the mode.
        connect(entry.button, &QPushButton::clicked, this, entry.click);
        // A button checked by other code selects its mode too, without regenerating.
        connect(entry.button, &QPushButton::toggled, this, [this, mode = entry.mode](bool on) {
            if (on) model_.setMode(mode);
        });
    }

    const std::pair<QLineEdit*, void (WindowModel::*)(const QString&)> fields[] = {
        {ui->txtTextIn, &WindowModel::setLcdText},
        {ui->txtHexPrefix, &WindowModel::setPrefix},
        {ui->txtHexSuffix, &WindowModel::setSuffix},
        {ui->txtHexSep, &WindowModel::setSeparator},
    };
    for (const auto& [box, set] : fields) {
        connect(box, &QLineEdit::textChanged, this, [this, set = set](const QString& text) {
            (model_.*set)(text);
            refreshView();
        });
    }

    connect(ui->cmdSysExCopy, &QPushButton::clicked, this, &MainForm::cmdSysExCopy_Click);
    connect(ui->cmdSysExDecode, &QPushButton::clicked, this, &MainForm::cmdSysExDecode_Click);
    connect(ui->chkSysExCopyAuto, &QCheckBox::clicked, this, &MainForm::chkSysExCopyAuto_Click);
}

void MainForm::chkSysExCopyAuto_Click() {
    model_.setCopyAuto(ui->chkSysExCopyAuto->checkState() == Qt::Checked);
}

void MainForm::optSEGStore_Click() {
    selectMode(ui->optSEGStore);
}
void MainForm::optSEGDisplay_Click() {
    selectMode(ui->optSEGDisplay);
}
void MainForm::optSEText_Click() {
    selectMode(ui->optSEText);
}

void MainForm::AutoSetSysExText() {
    model_.regenerate();
    refreshView();
}

void MainForm::SetSysExOutText(const QString& text) {
    model_.writeOutput(text);
    refreshView();
}

void MainForm::cmdSysExCopy_Click() {
    SetClipboardText(platform_, model_.pane(), this);
}

void MainForm::selectMode(QPushButton* button) {
    const OutputMode mode = button == ui->optSEGStore     ? OutputMode::Store
                            : button == ui->optSEGDisplay ? OutputMode::Display
                                                          : OutputMode::Text;
    model_.selectMode(mode);
    refreshView();
}

void MainForm::clearModes() {
    model_.setMode(OutputMode::None);
    refreshView();
}

}  // namespace lumidot
