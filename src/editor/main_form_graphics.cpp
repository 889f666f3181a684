// MainForm's graphic editor: the ten pages, the page being edited, the pixel grid, the
// drag handle and the whole-page buttons.
#include <QPushButton>

#include "codec/graphic_page.h"
#include "editor/drag_handle.h"
#include "editor/edit_history.h"
#include "editor/pixel_grid.h"
#include "editor/up_down.h"
#include "mainwindow/input_codes.h"
#include "mainwindow/main_form.h"
#include "mainwindow/small_widgets.h"
#include "pages/page_ops.h"
#include "ui_main_form.h"

namespace lumidot {

namespace {

const QColor kClearButtonFace(255, 128, 128);

}  // namespace

void MainForm::buildPixelGrid() {
    PixelGrid& grid = *ui->lblFDPixelBase;
    // In front of the grey rectangle, which shows through the gaps between the cells.
    grid.raise();
    grid.show();
    model_.setPixels(Page{});
    grid.setCells(model_.pages().pixels());
}

void MainForm::connectGraphicEditor() {
    UpDown& pageSpinner = *ui->udPageNum;
    pageSpinner.setRange(kFirstPage, kLastPage);
    pageSpinner.setBuddy(ui->lblPageNum);
    connect(&pageSpinner, &UpDown::valueChanged, this, [this](int page) {
        model_.openPage(page);
        refreshView();
    });

    const std::pair<QPushButton*, void (MainForm::*)()> buttons[] = {
        {ui->cmdFDClear, &MainForm::cmdFDClear_Click},
        {ui->cmdFDCopy, &MainForm::cmdFDCopy_Click},
        {ui->cmdFDInvert, &MainForm::cmdFDInvert_Click},
        {ui->cmdFDPageDisplay, &MainForm::cmdFDPageDisplay_Click},
        {ui->cmdFDShiftUp, &MainForm::cmdFDShiftUp_Click},
        {ui->cmdFDShiftDown, &MainForm::cmdFDShiftDown_Click},
        {ui->cmdFDShiftLeft, &MainForm::cmdFDShiftLeft_Click},
        {ui->cmdFDShiftRight, &MainForm::cmdFDShiftRight_Click},
    };
    for (const auto& [button, handler] : buttons) {
        connect(button, &QPushButton::clicked, this, handler);
    }

    ui->cmdFDClear->setFace(kClearButtonFace);

    ui->picMove->setPixmap(LoadPicture(QStringLiteral(":/move.xpm")));
}

// --- pages -------------------------------------------------------------------------------

void MainForm::SetPageNum(std::uint8_t page) {
    // Callers pass pages they have validated; anything else is a mistake that must not
    // open a neighbouring page by clamping.
    model_.openPage(page);
    refreshView();
}

void MainForm::SetFDPixelColAll(const Page& pixels) {
    model_.setPixels(pixels);
    refreshView();
}

void MainForm::FDGraphicChanged(bool selectStore) {
    model_.graphicChanged(selectStore);
    refreshView();
}

// --- whole-page buttons ------------------------------------------------------------------

void MainForm::cmdFDClear_Click() {
    const Prompts::Answer answer = platform().prompts.showMessage(
        this, QStringLiteral("Clear page %1?").arg(FDPageNum()),
        QStringLiteral("Really erase this page?"), Prompts::Icon::Question, Prompts::Buttons::YesNo,
        Prompts::Answer::Yes);
    if (answer != Prompts::Answer::Yes) return;
    const EditGroup step(*history_, QStringLiteral("Clear"));
    model_.editPage([](const Page&) { return ClearedPage(); });
    refreshView();
}

void MainForm::cmdFDInvert_Click() {
    const EditGroup step(*history_, QStringLiteral("Invert"));
    model_.editPage(Invert);
    refreshView();
}
void MainForm::cmdFDShiftUp_Click() {
    const EditGroup step(*history_, QStringLiteral("Shift"));
    model_.editPage(ShiftUp);
    refreshView();
}
void MainForm::cmdFDShiftDown_Click() {
    const EditGroup step(*history_, QStringLiteral("Shift"));
    model_.editPage(ShiftDown);
    refreshView();
}
void MainForm::cmdFDShiftLeft_Click() {
    const EditGroup step(*history_, QStringLiteral("Shift"));
    model_.editPage(ShiftLeft);
    refreshView();
}
void MainForm::cmdFDShiftRight_Click() {
    const EditGroup step(*history_, QStringLiteral("Shift"));
    model_.editPage(ShiftRight);
    refreshView();
}

void MainForm::cmdFDPageDisplay_Click() {
    model_.displayNoPage();
    refreshView();
}

void MainForm::cmdFDCopy_Click() {
    if (!pageCopy_ || pageCopy_->closedByCloseButton()) {
        pageCopy_ = std::make_unique<frmPageCopy>(this, pageCopyMemory_);
    }
    pageCopy_->SetPageNumSource(static_cast<std::uint8_t>(FDPageNum()));
    platform().prompts.runModal(*pageCopy_);

    const int dest = pageCopy_->GetPageNumDest();
    if (!IsPageNumber(dest)) return;  // cancelled
    EditGroup step(*history_, QStringLiteral("Copy to page %1").arg(dest));
    model_.pages().copyTo(dest);
    step.finish();
    platform().prompts.showMessage(
        this, QStringLiteral("Copied"),
        QStringLiteral("Copied to page %1\r\nYou are still editing page %2.")
            .arg(dest)
            .arg(FDPageNum()),
        Prompts::Icon::Information, Prompts::Buttons::Ok, Prompts::Answer::Ok);
}

}  // namespace lumidot
