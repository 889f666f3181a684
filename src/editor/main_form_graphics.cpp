// MainForm's graphic editor: the ten pages, the page being edited, the pixel grid, the
// drag handle and the whole-page buttons.
#include <QPushButton>

#include "codec/graphic_page.h"
#include "editor/drag_handle.h"
#include "editor/page_ops.h"
#include "editor/pixel_grid.h"
#include "editor/up_down.h"
#include "mainwindow/main_form.h"
#include "mainwindow/small_widgets.h"
#include "mainwindow/text_box_keys.h"
#include "ui_main_form.h"

namespace lumidot {

namespace {

const QColor kClearButtonFace(255, 128, 128);

// Key codes of the key preview.
constexpr int kShiftKey = 16;
constexpr int kCtrlKey = 17;

// Mouse-button values.
constexpr int kLeftButton = 1;
constexpr int kRightButton = 2;

// One step of a drag on the handle: a cell's width across, a row's pitch down.
constexpr int kDragStepX = PixelGrid::kCellWidth;
constexpr int kDragStepY = PixelGrid::kRowPitch;

bool IsPageNumber(int page) {
    return page >= kFirstPage && page <= kLastPage;
}

// A page operation applied to the page being edited: the whole grid is recoloured and the
// store-page output regenerated, even when nothing visible changed.
void ApplyToPage(MainForm& form, Page (*operation)(const Page&)) {
    form.FDPixels = operation(form.FDPixels);
    form.RedrawFDPixels();
    form.FDGraphicChanged(true);
}

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
    for (int i = 0; i < kPagePixels; ++i) {
        FDPixels[i] = false;
        SetFDPixelCol(i);
    }
    FDPixelUnderMouse = -1;
}

void MainForm::connectGraphicEditor() {
    UpDown& pageSpinner = *ui->udPageNum;
    pageSpinner.setRange(kFirstPage, kLastPage);
    pageSpinner.setBuddy(ui->lblPageNum);
    connect(&pageSpinner, &UpDown::valueChanged, this, [this] { udPageNum_Change(); });

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
        // Copied by an init-capture: clang 14 cannot capture a structured binding itself.
        connect(button, &QPushButton::clicked, this, [this, h = handler] { (this->*h)(); });
    }

    SetButtonFace(ui->cmdFDClear, kClearButtonFace);

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
    if (!IsPageNumber(page)) return;
    // An unchanged value emits nothing, so the open page is not reloaded from memory.
    ui->udPageNum->setValue(page);
}

void MainForm::udPageNum_Change() {
    const int newPage = ui->udPageNum->value();
    if (!IsPageNumber(FDPageNum) || !IsPageNumber(newPage)) return;
    FDPageMem[FDPageNum - 1] = FDPixels;
    FDPageNum = newPage;
    FDPixels = FDPageMem[FDPageNum - 1];
    RedrawFDPixels();
    // A page change shows that page's message: the text mode gives way to storing it.
    if (ui->optSEText->isChecked()) selectMode(ui->optSEGStore);
    FDGraphicChanged(ui->optSEGStore->isChecked());
}

void MainForm::SetFDPixelColAll(const Page& pixels) {
    FDPixels = pixels;
    RedrawFDPixels();
}

void MainForm::FDGraphicChanged(bool selectStore) {
    if (selectStore) selectMode(ui->optSEGStore);
    AutoSetSysExText();
}

void MainForm::SetFDPixelCol(int pixelIndex) {
    if (pixelIndex < 0 || pixelIndex >= kPagePixels) return;
    ui->lblFDPixelBase->setCell(pixelIndex, FDPixels[pixelIndex]);
}

void MainForm::RedrawFDPixels() {
    for (int i = 0; i < kPagePixels; ++i) SetFDPixelCol(i);
}

// --- whole-page buttons ------------------------------------------------------------------

void MainForm::cmdFDClear_Click() {
    const Prompts::Answer answer = platform().prompts.showMessage(
        this, QStringLiteral("Clear page %1?").arg(FDPageNum),
        QStringLiteral("Really erase this page?"), Prompts::Icon::Question, Prompts::Buttons::YesNo,
        Prompts::Answer::Yes);
    if (answer != Prompts::Answer::Yes) return;
    ApplyToPage(*this, [](const Page&) { return ClearedPage(); });
}

void MainForm::cmdFDInvert_Click() {
    ApplyToPage(*this, Invert);
}
void MainForm::cmdFDShiftUp_Click() {
    ApplyToPage(*this, ShiftUp);
}
void MainForm::cmdFDShiftDown_Click() {
    ApplyToPage(*this, ShiftDown);
}
void MainForm::cmdFDShiftLeft_Click() {
    ApplyToPage(*this, ShiftLeft);
}
void MainForm::cmdFDShiftRight_Click() {
    ApplyToPage(*this, ShiftRight);
}

void MainForm::cmdFDPageDisplay_Click() {
    selectMode(ui->optSEGDisplay);
    // Page 0 shows no page at all. The display option stays selected, so the next
    // regeneration replaces this with the selected page's display message.
    SetSysExOutText(QString::fromStdString(MakeGraphicDisplaySysEx(0)));
}

void MainForm::cmdFDCopy_Click() {
    if (!pageCopy_ || pageCopy_->closedByCloseButton()) {
        pageCopy_ = std::make_unique<frmPageCopy>(this, pageCopyMemory_);
    }
    pageCopy_->SetPageNumSource(static_cast<std::uint8_t>(FDPageNum));
    platform().prompts.runModal(*pageCopy_);

    const int dest = pageCopy_->GetPageNumDest();
    if (!IsPageNumber(dest)) return;  // cancelled
    FDPageMem[dest - 1] = FDPixels;
    platform().prompts.showMessage(
        this, QStringLiteral("Copied"),
        QStringLiteral("Copied to page %1\r\nYou are still editing page %2.")
            .arg(dest)
            .arg(FDPageNum),
        Prompts::Icon::Information, Prompts::Buttons::Ok, Prompts::Answer::Ok);
}

// --- painting ----------------------------------------------------------------------------

void MainForm::FDPixelMouseMove(int index, int /*buttons*/, int shift) {
    FDPixelUnderMouse = static_cast<std::int16_t>(index);
    if (shift == kShiftMask) {
        FDPixels[index] = true;
    } else if (shift == kCtrlMask) {
        FDPixels[index] = false;
    } else {
        return;
    }
    // Even an unchanged pixel regenerates: every stroke ends with the store message shown.
    SetFDPixelCol(index);
    FDGraphicChanged(true);
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
    if (keyCode == kShiftKey) {
        FDPixelMouseMove(FDPixelUnderMouse, 0, kShiftMask);
    } else if (keyCode == kCtrlKey) {
        FDPixelMouseMove(FDPixelUnderMouse, 0, kCtrlMask);
    }
}

void MainForm::FDSurfaceMouseMove() {
    FDPixelUnderMouse = -1;
}

// --- dragging ----------------------------------------------------------------------------

void MainForm::picMove_MouseDown(double x, double y) {
    FDDragX = static_cast<float>(x);
    FDDragY = static_cast<float>(y);
}

void MainForm::picMove_MouseMove(int buttons, double x, double y) {
    if (buttons != kLeftButton) return;
    // Across first, then down.
    DragAlong(*this, FDDragX, x, kDragStepX, &MainForm::cmdFDShiftRight_Click,
              &MainForm::cmdFDShiftLeft_Click);
    DragAlong(*this, FDDragY, y, kDragStepY, &MainForm::cmdFDShiftDown_Click,
              &MainForm::cmdFDShiftUp_Click);
}

}  // namespace lumidot
