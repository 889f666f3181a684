#include "editor/picture_import_dialog.h"

#include <QButtonGroup>
#include <QCheckBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>
#include <QRadioButton>
#include <QSlider>
#include <QSpinBox>
#include <QVBoxLayout>
#include <algorithm>

#include "editor/page_preview.h"
#include "mainwindow/look.h"

namespace lumidot {
namespace {

// The source is shown in a square as large as the page beside it.
constexpr int kViewSide = PagePreview::kSide;

// The picture as it will be judged: fitted into the view, over white as transparency is.
QPixmap Thumbnail(const QImage& picture) {
    const QSize size = picture.size().scaled(kViewSide, kViewSide, Qt::KeepAspectRatio);
    // A small picture is enlarged with hard edges, so that its pixels can be counted.
    const bool enlarged = size.width() >= picture.width();
    QImage shown(size.expandedTo(QSize(1, 1)), QImage::Format_RGB32);
    shown.fill(Qt::white);
    QPainter painter(&shown);
    painter.drawImage(shown.rect(),
                      picture.scaled(shown.size(), Qt::IgnoreAspectRatio,
                                     enlarged ? Qt::FastTransformation : Qt::SmoothTransformation));
    return QPixmap::fromImage(shown);
}

QRadioButton* Radio(const QString& text, const char* name, QWidget* parent) {
    auto* radio = new QRadioButton(text, parent);
    radio->setObjectName(QLatin1String(name));
    return radio;
}

}  // namespace

PictureImportDialog::PictureImportDialog(QWidget* owner, std::vector<QImage> frames,
                                         int totalFrames, const QString& source, int currentPage,
                                         const PictureOptions& options)
    : QDialog(owner, kDialogFlags),
      frames_(std::move(frames)),
      prepared_(frames_.size()),
      totalFrames_(std::max(totalFrames, int(frames_.size()))) {
    setObjectName(QStringLiteral("PictureImportDialog"));
    setWindowTitle(tr("Import Picture"));
    build(source, currentPage, options);
    update();
}

PictureImportDialog::~PictureImportDialog() = default;

void PictureImportDialog::build(const QString& source, int currentPage,
                                const PictureOptions& options) {
    auto* layout = new QVBoxLayout(this);
    auto* views = new QGridLayout;
    sourceView_ = new QLabel(this);
    sourceView_->setObjectName(QStringLiteral("sourceView"));
    sourceView_->setFixedSize(kViewSide, kViewSide);
    sourceView_->setAlignment(Qt::AlignCenter);
    resultView_ = new PagePreview(this);
    resultView_->setObjectName(QStringLiteral("resultView"));
    sourceCaption_ = new QLabel(this);
    sourceCaption_->setObjectName(QStringLiteral("sourceCaption"));
    sourceCaption_->setProperty("source", source);
    resultCaption_ = new QLabel(this);
    resultCaption_->setObjectName(QStringLiteral("resultCaption"));
    for (QLabel* caption : {sourceCaption_, resultCaption_}) {
        caption->setAlignment(Qt::AlignHCenter | Qt::AlignTop);
        caption->setFixedWidth(kViewSide);
        caption->setWordWrap(true);
    }
    views->addWidget(sourceView_, 0, 0);
    views->addWidget(resultView_, 0, 2);
    views->addWidget(sourceCaption_, 1, 0);
    views->addWidget(resultCaption_, 1, 2);
    auto* arrow = new QLabel(QStringLiteral("\u2192"), this);
    views->addWidget(arrow, 0, 1, Qt::AlignCenter);
    views->setHorizontalSpacing(12);
    layout->addLayout(views);
    layout->addWidget(buildOptions(options, currentPage));

    EndWithOkCancel(this, layout);
}

QWidget* PictureImportDialog::buildOptions(const PictureOptions& options, int currentPage) {
    auto* panel = new QWidget(this);
    auto* grid = new QGridLayout(panel);
    grid->setContentsMargins(0, 0, 0, 0);

    auto* fit = new QGroupBox(tr("Fit"), panel);
    auto* fitLayout = new QVBoxLayout(fit);
    fitMargins_ = Radio(tr("&Scale to fit, with margins"), "fitMargins", fit);
    fitCrop_ = Radio(tr("&Fill and crop"), "fitCrop", fit);
    fitStretch_ = Radio(tr("S&tretch"), "fitStretch", fit);
    for (QRadioButton* radio : {fitMargins_, fitCrop_, fitStretch_}) fitLayout->addWidget(radio);
    (options.fit == PictureFit::Crop      ? fitCrop_
     : options.fit == PictureFit::Stretch ? fitStretch_
                                          : fitMargins_)
        ->setChecked(true);

    auto* tone = new QGroupBox(tr("Conversion"), panel);
    auto* toneLayout = new QGridLayout(tone);
    toneThreshold_ = Radio(tr("T&hreshold:"), "toneThreshold", tone);
    toneDither_ = Radio(tr("&Dither (error diffusion)"), "toneDither", tone);
    thresholdSlider_ = new QSlider(Qt::Horizontal, tone);
    thresholdSlider_->setObjectName(QStringLiteral("thresholdSlider"));
    thresholdSlider_->setRange(0, kMaxThreshold);
    thresholdSlider_->setPageStep(16);
    thresholdSlider_->setValue(options.threshold);
    thresholdSlider_->setToolTip(
        tr("A pixel is on when its lightness (0 black to 255 white) is "
           "below this. 0 turns every pixel off, 255 every pixel on."));
    thresholdValue_ = new QLabel(tone);
    thresholdValue_->setObjectName(QStringLiteral("thresholdValue"));
    thresholdValue_->setMinimumWidth(
        thresholdValue_->fontMetrics().horizontalAdvance(QStringLiteral("000")));
    toneLayout->addWidget(toneThreshold_, 0, 0);
    toneLayout->addWidget(thresholdSlider_, 0, 1);
    toneLayout->addWidget(thresholdValue_, 0, 2);
    toneLayout->addWidget(toneDither_, 1, 0, 1, 3);
    (options.tone == PictureTone::Dither ? toneDither_ : toneThreshold_)->setChecked(true);
    // Two groups of options, each exclusive in its own box.
    auto* fitGroup = new QButtonGroup(this);
    for (QRadioButton* radio : {fitMargins_, fitCrop_, fitStretch_}) fitGroup->addButton(radio);
    auto* toneGroup = new QButtonGroup(this);
    toneGroup->addButton(toneThreshold_);
    toneGroup->addButton(toneDither_);

    invertBox_ = new QCheckBox(tr("&Invert: light pixels on (for white on black)"), panel);
    invertBox_->setObjectName(QStringLiteral("invertBox"));
    invertBox_->setChecked(options.invert);

    auto* pageRow = new QHBoxLayout;
    pageSpin_ = new QSpinBox(panel);
    pageSpin_->setObjectName(QStringLiteral("pageSpin"));
    pageSpin_->setRange(kFirstPage, kLastPage);
    pageSpin_->setValue(currentPage);
    auto* pageLabel = new QLabel(tr("Into &page:"), panel);
    pageLabel->setBuddy(pageSpin_);
    frameSpin_ = new QSpinBox(panel);
    frameSpin_->setObjectName(QStringLiteral("frameSpin"));
    frameSpin_->setRange(1, std::max(1, int(frames_.size())));
    auto* frameLabel = new QLabel(tr("Fra&me:"), panel);
    frameLabel->setBuddy(frameSpin_);
    auto* frameCount = new QLabel(tr("of %1").arg(totalFrames_), panel);
    pageRow->addWidget(pageLabel);
    pageRow->addWidget(pageSpin_);
    pageRow->addSpacing(16);
    pageRow->addWidget(frameLabel);
    pageRow->addWidget(frameSpin_);
    pageRow->addWidget(frameCount);
    pageRow->addStretch();
    allFramesBox_ = new QCheckBox(panel);
    allFramesBox_->setObjectName(QStringLiteral("allFramesBox"));
    framesNote_ = new QLabel(panel);
    framesNote_->setObjectName(QStringLiteral("framesNote"));
    framesNote_->setWordWrap(true);
    const bool animated = totalFrames_ > 1;
    for (QWidget* widget : {static_cast<QWidget*>(frameLabel), static_cast<QWidget*>(frameSpin_),
                            static_cast<QWidget*>(frameCount), static_cast<QWidget*>(allFramesBox_),
                            static_cast<QWidget*>(framesNote_)}) {
        widget->setVisible(animated);
    }
    allFramesBox_->setChecked(animated);

    grid->addWidget(fit, 0, 0);
    grid->addWidget(tone, 0, 1);
    grid->addWidget(invertBox_, 1, 0, 1, 2);
    grid->addLayout(pageRow, 2, 0, 1, 2);
    grid->addWidget(allFramesBox_, 3, 0, 1, 2);
    grid->addWidget(framesNote_, 4, 0, 1, 2);

    for (QRadioButton* radio : {fitMargins_, fitCrop_, fitStretch_, toneThreshold_, toneDither_}) {
        connect(radio, &QRadioButton::toggled, this, [this](bool on) {
            if (on) update();
        });
    }
    connect(thresholdSlider_, &QSlider::valueChanged, this, &PictureImportDialog::update);
    connect(invertBox_, &QCheckBox::toggled, this, &PictureImportDialog::update);
    connect(pageSpin_, &QSpinBox::valueChanged, this, &PictureImportDialog::update);
    connect(frameSpin_, &QSpinBox::valueChanged, this, &PictureImportDialog::update);
    connect(allFramesBox_, &QCheckBox::toggled, this, &PictureImportDialog::update);
    return panel;
}

PictureOptions PictureImportDialog::options() const {
    PictureOptions options;
    options.fit = fitCrop_->isChecked()      ? PictureFit::Crop
                  : fitStretch_->isChecked() ? PictureFit::Stretch
                                             : PictureFit::Margins;
    options.tone = toneDither_->isChecked() ? PictureTone::Dither : PictureTone::Threshold;
    options.threshold = thresholdSlider_->value();
    options.invert = invertBox_->isChecked();
    return options;
}

const PreparedPicture& PictureImportDialog::prepared(int frame) const {
    auto& kept = prepared_[static_cast<std::size_t>(frame)];
    if (!kept) kept = std::make_unique<PreparedPicture>(frames_[static_cast<std::size_t>(frame)]);
    return *kept;
}

int PictureImportDialog::frameShown() const {
    return frames_.empty() ? 0 : frameSpin_->value() - 1;
}

bool PictureImportDialog::allFrames() const {
    return totalFrames_ > 1 && allFramesBox_->isChecked();
}

int PictureImportDialog::pagesFilled() const {
    if (!allFrames()) return 1;
    return std::min(int(frames_.size()), kLastPage - pageSpin_->value() + 1);
}

int PictureImportDialog::framesLeftOut() const {
    return totalFrames_ - pagesFilled();
}

std::vector<std::pair<int, Page>> PictureImportDialog::result() const {
    std::vector<std::pair<int, Page>> pages;
    if (frames_.empty()) return pages;
    const PictureOptions chosen = options();
    const int first = allFrames() ? 0 : frameShown();
    for (int k = 0; k < pagesFilled(); ++k) {
        pages.push_back({pageSpin_->value() + k, prepared(first + k).convert(chosen)});
    }
    return pages;
}

void PictureImportDialog::update() {
    if (frames_.empty()) return;
    const int frame = frameShown();
    const PreparedPicture& picture = prepared(frame);
    if (frame != thumbnailFrame_) {
        thumbnailFrame_ = frame;
        sourceView_->setPixmap(Thumbnail(picture.reduced()));
        const QImage& original = frames_[static_cast<std::size_t>(frame)];
        QString caption = tr("%1\n%2 x %3 pixels")
                              .arg(sourceCaption_->property("source").toString())
                              .arg(original.width())
                              .arg(original.height());
        if (totalFrames_ > 1) caption += tr(", frame %1 of %2").arg(frame + 1).arg(totalFrames_);
        sourceCaption_->setText(caption);
    }
    resultView_->setPage(picture.convert(options()));
    thresholdSlider_->setEnabled(toneThreshold_->isChecked());
    thresholdValue_->setEnabled(toneThreshold_->isChecked());
    thresholdValue_->setText(QString::number(thresholdSlider_->value()));

    const int first = pageSpin_->value();
    const int page = first + (allFrames() ? frame : 0);
    resultCaption_->setText(page <= kLastPage ? tr("Page %1").arg(page)
                                              : tr("Left out: no page after page 10"));
    allFramesBox_->setText(tr("&One frame per page from page %1").arg(first));
    const int filled = pagesFilled();
    QString note = !allFrames()  ? tr("Only frame %1 goes to page %2").arg(frame + 1).arg(first)
                   : filled == 1 ? tr("Frame 1 goes to page %1").arg(first)
                                 : tr("Frames 1 to %1 go to pages %2 to %3")
                                       .arg(filled)
                                       .arg(first)
                                       .arg(first + filled - 1);
    const int left = framesLeftOut();
    note += left == 0   ? tr(".")
            : left == 1 ? tr("; 1 frame is left out.")
                        : tr("; %1 frames are left out.").arg(left);
    framesNote_->setText(note);
}

}  // namespace lumidot
