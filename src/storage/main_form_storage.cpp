// memory.txt and settings.bin: the ten pages and the output layout between runs.
#include "mainwindow/main_form.h"
#include "ui_main_form.h"

namespace lumidot {

void MainForm::LoadMemoryAndSettings() { SetPageNum(1); }

void MainForm::SaveMemoryAndSettings() {}

}  // namespace lumidot
