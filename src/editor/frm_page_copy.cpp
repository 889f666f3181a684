#include "editor/frm_page_copy.h"

#include <QCloseEvent>
#include <QShowEvent>

#include "codec/graphic_page.h"
#include "mainwindow/look.h"
#include "ui_frm_page_copy.h"

namespace lumidot {

namespace {

// The source label's caption is made from this template kept with the label in the form.
constexpr char kTemplateProperty[] = "tag";
constexpr char kPageMarker[] = "%a";

}  // namespace

frmPageCopy::frmPageCopy(QWidget* owner, Memory& memory)
    : QDialog(owner, kDialogFlags), ui(std::make_unique<Ui::frmPageCopy>()), memory_(memory) {
    ui->setupUi(this);
    TakeOwnersLook(this, owner);

    ui->udPageNumDest->setRange(kFirstPage, kLastPage);
    ui->udPageNumDest->setBuddy(ui->lblPageNumDest);

    connect(ui->udPageNumDest, &UpDown::valueChanged, this, [this] { UpdateOKButton(); });
    connect(ui->cmdOK, &QPushButton::clicked, this, [this] { cmdOK_Click(); });
    connect(ui->cmdCancel, &QPushButton::clicked, this, [this] { cmdCancel_Click(); });

    UpdateOKButton();
}

frmPageCopy::~frmPageCopy() = default;

void frmPageCopy::SetPageNumSource(std::uint8_t sourcePage) {
    memory_.SourcePageNum = sourcePage;

    QString caption = ui->lblPageNumSource->property(kTemplateProperty).toString();
    caption.replace(QLatin1String(kPageMarker), QString::number(memory_.SourcePageNum));
    ui->lblPageNumSource->setText(caption);

    // Before the first use has ended, and whenever the spinner would point at the source
    // itself, suggest the neighbouring page; otherwise keep the last choice.
    UpDown& dest = *ui->udPageNumDest;
    if (memory_.DestPageNum == 0 || dest.value() == memory_.SourcePageNum) {
        dest.setValue(memory_.SourcePageNum < dest.maximum() ? memory_.SourcePageNum + 1
                                                             : memory_.SourcePageNum - 1);
    }
    // The spinner may not have moved (it kept the last choice), but the source has.
    UpdateOKButton();
}

void frmPageCopy::UpdateOKButton() {
    // A page cannot be copied onto itself.
    const bool enabled = ui->udPageNumDest->value() != memory_.SourcePageNum;
    ui->cmdOK->setEnabled(enabled);
    if (enabled && isVisible()) ui->cmdOK->setFocus();
}

void frmPageCopy::showEvent(QShowEvent* event) {
    QDialog::showEvent(event);
    ui->cmdOK->setFocus();
}

void frmPageCopy::cmdOK_Click() {
    memory_.DestPageNum = static_cast<std::uint8_t>(ui->udPageNumDest->value());
    accept();
}

void frmPageCopy::cmdCancel_Click() {
    memory_.DestPageNum = kCancelled;
    QDialog::reject();
}

void frmPageCopy::reject() {
    cmdCancel_Click();
}

void frmPageCopy::closeEvent(QCloseEvent* event) {
    // The window's close button. The owner makes a new dialog for the next use, so its
    // spinner starts again at 1 while the two remembered page numbers stay.
    closedByCloseButton_ = true;
    memory_.DestPageNum = kCancelled;
    QDialog::closeEvent(event);
}

}  // namespace lumidot
