// Reading messages back from the clipboard.
#include "mainwindow/main_form.h"
#include "mainwindow/text_box_keys.h"
#include "ui_main_form.h"

namespace lumidot {

void MainForm::cmdSysExDecode_Click() {}

void MainForm::txtSysExOut_KeyDown(int keyCode, int shift) {
    HandleTextBoxKeys(platform_, ui->txtSysExOut, keyCode, shift);
}

}  // namespace lumidot
