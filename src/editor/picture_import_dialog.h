// "Import Picture": the picture and the page it becomes, side by side, following every
// change of the fit, the conversion, the inversion and the receiving page as it is made.
// An animation or a multi-page file can fill one page per frame.
#pragma once

#include <QDialog>
#include <QImage>
#include <memory>
#include <utility>
#include <vector>

#include "pictures/picture_conversion.h"

class QAbstractButton;
class QCheckBox;
class QLabel;
class QRadioButton;
class QSlider;
class QSpinBox;

namespace lumidot {

class PagePreview;

class PictureImportDialog : public QDialog {
    Q_OBJECT
public:
    // frames: the first frames of the picture (one for most files); totalFrames: all of them.
    // source: the picture's name for the caption. options: the last import's choices.
    PictureImportDialog(QWidget* owner, std::vector<QImage> frames, int totalFrames,
                        const QString& source, int currentPage, const PictureOptions& options);
    ~PictureImportDialog() override;

    PictureOptions options() const;
    // The pages that OK fills, first to last, with their new pixels.
    std::vector<std::pair<int, Page>> result() const;
    // Frames of the file that no page receives, with the choices as they are.
    int framesLeftOut() const;

private:
    void build(const QString& source, int currentPage, const PictureOptions& options);
    QWidget* buildOptions(const PictureOptions& options, int currentPage);
    // Shows the chosen frame and its page as the options make it.
    void update();
    const PreparedPicture& prepared(int frame) const;
    int frameShown() const;
    bool allFrames() const;
    int pagesFilled() const;

    std::vector<QImage> frames_;
    mutable std::vector<std::unique_ptr<PreparedPicture>> prepared_;
    int totalFrames_;
    int thumbnailFrame_ = -1;

    QLabel* sourceView_ = nullptr;
    QLabel* sourceCaption_ = nullptr;
    PagePreview* resultView_ = nullptr;
    QLabel* resultCaption_ = nullptr;
    QRadioButton* fitMargins_ = nullptr;
    QRadioButton* fitCrop_ = nullptr;
    QRadioButton* fitStretch_ = nullptr;
    QRadioButton* toneThreshold_ = nullptr;
    QRadioButton* toneDither_ = nullptr;
    QSlider* thresholdSlider_ = nullptr;
    QLabel* thresholdValue_ = nullptr;
    QCheckBox* invertBox_ = nullptr;
    QSpinBox* pageSpin_ = nullptr;
    QSpinBox* frameSpin_ = nullptr;
    QCheckBox* allFramesBox_ = nullptr;
    QLabel* framesNote_ = nullptr;
};

}  // namespace lumidot
