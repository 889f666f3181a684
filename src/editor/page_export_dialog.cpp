#include "editor/page_export_dialog.h"

#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QRadioButton>
#include <QSpinBox>
#include <QVBoxLayout>

#include "mainwindow/look.h"

namespace lumidot {

PageExportDialog::PageExportDialog(QWidget* owner) : QDialog(owner, kDialogFlags) {
    setObjectName(QStringLiteral("PageExportDialog"));
    setWindowTitle(tr("Export Page as Image"));
    auto* layout = new QVBoxLayout(this);
    auto* form = new QFormLayout;

    auto* sizeRow = new QHBoxLayout;
    scaleSpin_ = new QSpinBox(this);
    scaleSpin_->setObjectName(QStringLiteral("scaleSpin"));
    scaleSpin_->setRange(1, kLargestScale);
    scaleSpin_->setPrefix(QStringLiteral("\u00d7 "));
    sizeLabel_ = new QLabel(this);
    sizeLabel_->setObjectName(QStringLiteral("sizeLabel"));
    sizeRow->addWidget(scaleSpin_);
    sizeRow->addWidget(sizeLabel_);
    sizeRow->addStretch();
    form->addRow(tr("&Scale:"), sizeRow);
    qobject_cast<QLabel*>(form->labelForField(sizeRow))->setBuddy(scaleSpin_);

    auto* colours = new QVBoxLayout;
    lcdColours_ = new QRadioButton(tr("&LCD: dark grey dots on amber"), this);
    lcdColours_->setObjectName(QStringLiteral("lcdColours"));
    blackWhite_ = new QRadioButton(tr("&Black dots on white"), this);
    blackWhite_->setObjectName(QStringLiteral("blackWhite"));
    blackWhite_->setChecked(true);
    colours->addWidget(lcdColours_);
    colours->addWidget(blackWhite_);
    form->addRow(tr("Colours:"), colours);
    layout->addLayout(form);

    EndWithOkCancel(this, layout);

    connect(scaleSpin_, &QSpinBox::valueChanged, this, &PageExportDialog::showSize);
    showSize();
}

int PageExportDialog::scale() const {
    return scaleSpin_->value();
}

PageColours PageExportDialog::colours() const {
    return lcdColours_->isChecked() ? PageColours::Lcd : PageColours::BlackWhite;
}

void PageExportDialog::showSize() {
    const int side = kPageSide * scale();
    sizeLabel_->setText(tr("%1 x %2 pixels, PNG").arg(side).arg(side));
}

}  // namespace lumidot
