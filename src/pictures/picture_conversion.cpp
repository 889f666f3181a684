#include "pictures/picture_conversion.h"

#include <algorithm>

namespace lumidot {
namespace {

// A picture whose shorter side is longer than this is reduced to it once, by averaging:
// every later fit then scales a few hundred thousand pixels instead of millions, and the
// page's 16 pixels still come from 32 source pixels or more each way.
constexpr int kWorkingShortSide = 512;

QImage Working(const QImage& source) {
    QImage working = source;
    const int shortSide = std::min(source.width(), source.height());
    if (shortSide > kWorkingShortSide) {
        const double factor = double(kWorkingShortSide) / shortSide;
        const QSize reduced(std::max(1, int(source.width() * factor + 0.5)),
                            std::max(1, int(source.height() * factor + 0.5)));
        working = source.scaled(reduced, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    }
    return working.convertToFormat(QImage::Format_ARGB32_Premultiplied);
}

QSize FittedSize(QSize source, PictureFit fit) {
    const QSize page(kPageSide, kPageSide);
    QSize size = page;
    if (fit == PictureFit::Margins) size = source.scaled(page, Qt::KeepAspectRatio);
    if (fit == PictureFit::Crop) size = source.scaled(page, Qt::KeepAspectRatioByExpanding);
    // A picture a hundred times wider than high still covers one row.
    return size.expandedTo(QSize(1, 1));
}

QImage Fit(const QImage& working, PictureFit fit) {
    const QSize size = FittedSize(working.size(), fit);
    // Enlarged pictures keep hard pixel edges (a small icon stays crisp); reduced ones are
    // averaged, so that each page pixel stands for everything it covers.
    const bool enlarged = size.width() >= working.width() && size.height() >= working.height();
    const QImage scaled =
        size == working.size()
            ? working
            : working
                  .scaled(size, Qt::IgnoreAspectRatio,
                          enlarged ? Qt::FastTransformation : Qt::SmoothTransformation)
                  .convertToFormat(QImage::Format_ARGB32_Premultiplied);

    QImage page(kPageSide, kPageSide, QImage::Format_ARGB32_Premultiplied);
    page.fill(Qt::transparent);
    // Centred: a margin or an overhang of an odd number of pixels leaves the extra one
    // at the right or bottom.
    const int left = (kPageSide - size.width()) / 2;
    const int top = (kPageSide - size.height()) / 2;
    for (int y = 0; y < kPageSide; ++y) {
        const int sourceY = y - top;
        if (sourceY < 0 || sourceY >= size.height()) continue;
        const auto* from = reinterpret_cast<const QRgb*>(scaled.constScanLine(sourceY));
        auto* to = reinterpret_cast<QRgb*>(page.scanLine(y));
        for (int x = 0; x < kPageSide; ++x) {
            const int sourceX = x - left;
            if (sourceX >= 0 && sourceX < size.width()) to[x] = from[sourceX];
        }
    }
    return page;
}

// Lightness 0 (black) to 255 (white) of each page pixel, inverted if asked, then laid over
// white by its opacity: transparent is white whether inverted or not.
QImage Lightness(const QImage& fitted, bool invert) {
    const QImage straight = fitted.convertToFormat(QImage::Format_ARGB32);
    QImage lightness(kPageSide, kPageSide, QImage::Format_Grayscale8);
    for (int y = 0; y < kPageSide; ++y) {
        const auto* from = reinterpret_cast<const QRgb*>(straight.constScanLine(y));
        uchar* to = lightness.scanLine(y);
        for (int x = 0; x < kPageSide; ++x) {
            const int grey = qGray(from[x]);
            const int ink = invert ? grey : 255 - grey;
            to[x] = uchar(255 - (ink * qAlpha(from[x]) + 127) / 255);
        }
    }
    return lightness;
}

}  // namespace

PreparedPicture::PreparedPicture(const QImage& source) {
    if (!source.isNull()) working_ = Working(source);
}

const QImage& PreparedPicture::fitted(PictureFit fit) const {
    QImage& kept = fitted_[static_cast<std::size_t>(fit)];
    if (kept.isNull() && !working_.isNull()) kept = Fit(working_, fit);
    return kept;
}

Page PreparedPicture::convert(const PictureOptions& options) const {
    Page page{};
    if (working_.isNull()) return page;
    const QImage lightness = Lightness(fitted(options.fit), options.invert);
    if (options.tone == PictureTone::Dither) {
        // Qt's Floyd-Steinberg diffusion to one bit per pixel; black is on.
        const QImage mono = lightness.convertToFormat(QImage::Format_Mono, Qt::DiffuseDither);
        for (int i = 0; i < kPagePixels; ++i) {
            page[i] = qGray(mono.pixel(i % kPageSide, i / kPageSide)) < 128;
        }
        return page;
    }
    // Qt's own threshold conversion cuts at a fixed 128; the slider's cut is the user's.
    for (int i = 0; i < kPagePixels; ++i) {
        const int value = lightness.constScanLine(i / kPageSide)[i % kPageSide];
        page[i] = options.threshold >= kMaxThreshold || value < options.threshold;
    }
    return page;
}

Page ConvertPicture(const QImage& source, const PictureOptions& options) {
    return PreparedPicture(source).convert(options);
}

}  // namespace lumidot
