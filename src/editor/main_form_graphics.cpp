// MainForm's graphic editor: the ten pages, the page being edited, the pixel grid, the
// drag handle and the whole-page buttons.
#include <QPushButton>

#include "codec/graphic_page.h"
#include "editor/drag_handle.h"
#include "editor/edit_history.h"
#include "pages/page_ops.h"
#include "editor/pixel_grid.h"
#include "editor/up_down.h"
#include "mainwindow/main_form.h"
#include "mainwindow/small_widgets.h"
#include "mainwindow/input_codes.h"
#include "ui_main_form.h"

namespace lumidot {

namespace {

const QColor kClearButtonFace(255, 128, 128);

// One step of a drag on the handle: a cell's width across, a row's pitch down.
constexpr int kDragStepX = PixelGrid::kCellWidth;
constexpr int kDragStepY = PixelGrid::kRowPitch;

// One shift per whole step between the drag anchor and the pointer along one axis. The
// anchor moves a step per shift, so what is left of the movement counts towards the next
// event: a slow drag moves the picture as far as a fast one.
void DragAlong(MainForm& form, float& anchor, double pointer, int step, void (MainForm::*forward)(),
               void (MainForm::*backward)()) {
    for (int steps = DragSteps(pointer - anchor, step); steps != 0;) {
        const int direction = steps > 0 ? 1 : -1;
        (form.*(direction > 0 ? forward : backward))();
        anchor += static_cast<float>(direction * step);
        steps -= direction;
    }
}

}  // namespace

void MainForm::buildPixelGrid() {
    PixelGrid& grid = *ui->lblFDPixelBase;
    // In front of the grey rectangle, which shows through the gaps between the cells.
    grid.raise();
    grid.show();
    model_.setPixels(Page{});
    grid.setCells(model_.pages().pixels());
    FDPixelUnderMouse = -1;
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

    PixelGrid* grid = ui->lblFDPixelBase;
    connect(grid, &PixelGrid::cellMouseMove, this, &MainForm::FDPixelMouseMove);
    connect(grid, &PixelGrid::cellMouseDown, this, &MainForm::FDPixelMouseDown);
    connect(grid, &PixelGrid::gapMouseMove, this, &MainForm::FDSurfaceMouseMove);

    DragHandle* handle = ui->picMove;
    handle->setPixmap(LoadPicture(QStringLiteral(":/move.xpm")));
    connect(handle, &DragHandle::mouseDown, this,
            [this](double x, double y, int) { picMove_MouseDown(x, y); });
    connect(handle, &DragHandle::mouseMove, this,
            [this](double x, double y, int buttons) { picMove_MouseMove(buttons, x, y); });
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

// --- painting ----------------------------------------------------------------------------

void MainForm::FDPixelMouseMove(int index, int /*buttons*/, int shift) {
    FDPixelUnderMouse = static_cast<std::int16_t>(index);
    if (shift != kShiftMask && shift != kCtrlMask) return;
    paint(index, shift, false);
}

void MainForm::paint(int index, int shift, bool byKey) {
    history_->painting(byKey);
    model_.paintPixel(index, shift == kShiftMask);
    refreshView();
}

void MainForm::FDPixelMouseDown(int index, int button) {
    // A click paints by its button alone, whatever modifiers are held.
    if (button == kLeftButton) {
        FDPixelMouseMove(index, button, kShiftMask);
    } else if (button == kRightButton) {
        FDPixelMouseMove(index, button, kCtrlMask);
    }
}

void MainForm::Form_KeyDown(int keyCode, int /*shift*/) {
    // Only the key that went down counts, so Shift pressed while Ctrl is held still paints.
    if (FDPixelUnderMouse < 0) return;
    if (keyCode == kKeyShift) {
        paint(FDPixelUnderMouse, kShiftMask, true);
    } else if (keyCode == kKeyCtrl) {
        paint(FDPixelUnderMouse, kCtrlMask, true);
    }
}

// --- dragging ----------------------------------------------------------------------------

void MainForm::picMove_MouseDown(double x, double y) {
    FDDragX = static_cast<float>(x);
    FDDragY = static_cast<float>(y);
}

void MainForm::picMove_MouseMove(int buttons, double x, double y) {
    if (buttons != kLeftButton) return;
    history_->dragging();
    // Across first, then down.
    DragAlong(*this, FDDragX, x, kDragStepX, &MainForm::cmdFDShiftRight_Click,
              &MainForm::cmdFDShiftLeft_Click);
    DragAlong(*this, FDDragY, y, kDragStepY, &MainForm::cmdFDShiftDown_Click,
              &MainForm::cmdFDShiftUp_Click);
}

}  // namespace lumidot
