#include "pictures/page_image.h"

#include <algorithm>

namespace lumidot {

QImage PageImage(const Page& page, int scale, PageColours colours) {
    scale = std::max(1, scale);
    const QRgb on = colours == PageColours::Lcd ? kLcdOnColour.rgb() : qRgb(0, 0, 0);
    const QRgb off = colours == PageColours::Lcd ? kLcdOffColour.rgb() : qRgb(255, 255, 255);
    QImage image(kPageSide * scale, kPageSide * scale, QImage::Format_RGB32);
    for (int y = 0; y < image.height(); ++y) {
        auto* line = reinterpret_cast<QRgb*>(image.scanLine(y));
        const int row = y / scale;
        for (int x = 0; x < image.width(); ++x)
            line[x] = page[row * kPageSide + x / scale] ? on : off;
    }
    return image;
}

}  // namespace lumidot
