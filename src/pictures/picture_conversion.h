// Turning any picture into a 16 x 16 page: the one conversion behind the import dialog, the
// clipboard's paste and lumidot-cli. Qt Gui's QImage only, no widgets and no display.
//
// Dark becomes on, as on the LCD, where the pixels that are on are the dark ones: black on
// white comes in as drawn. Transparent areas, and the margins around a picture that does not
// fill the page, count as white and so stay off.
#pragma once

#include <QImage>
#include <array>

#include "codec/graphic_page.h"

namespace lumidot {

enum class PictureFit {
    Margins,  // scaled to fit inside the page, proportions kept, off pixels around it
    Crop,     // scaled to fill the page, proportions kept, the overhang cut off evenly
    Stretch,  // scaled to the page's square, proportions lost
};

enum class PictureTone {
    Threshold,  // each pixel on or off by its own lightness
    Dither,     // error diffusion: shades of grey become patterns of on and off
};

struct PictureOptions {
    PictureFit fit = PictureFit::Margins;
    PictureTone tone = PictureTone::Threshold;
    // With PictureTone::Threshold: a pixel is on when its lightness (0 black to 255 white)
    // is below the threshold. The two ends are absolute: 0 leaves every pixel off and 255
    // turns every pixel on, white and transparent ones included.
    int threshold = 128;
    // Light becomes on instead of dark (for white on black). Transparent areas stay off.
    bool invert = false;
};

constexpr int kDefaultThreshold = 128;
constexpr int kMaxThreshold = 255;

// A picture ready to be converted again and again with other options, as the import dialog
// does at every move of a control: a large picture is reduced once, and each fit is scaled
// once and kept.
class PreparedPicture {
public:
    PreparedPicture() = default;
    explicit PreparedPicture(const QImage& source);

    bool isNull() const { return working_.isNull(); }
    // The picture as it is converted: reduced once if it was large, premultiplied alpha.
    const QImage& reduced() const { return working_; }
    // The picture scaled and placed on the page's 16 x 16 pixels, transparent around it.
    const QImage& fitted(PictureFit fit) const;
    Page convert(const PictureOptions& options) const;

private:
    QImage working_;
    mutable std::array<QImage, 3> fitted_;
};

// One picture converted once.
Page ConvertPicture(const QImage& source, const PictureOptions& options);

}  // namespace lumidot
