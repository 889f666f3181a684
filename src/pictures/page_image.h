// A page as a picture, for export and for the clipboard.
#pragma once

#include <QColor>
#include <QImage>

#include "codec/graphic_page.h"

namespace lumidot {

enum class PageColours {
    Lcd,         // as on the module and in the grid: dark grey on amber
    BlackWhite,  // black on white
};

// The LCD's colours, as the pixel grid shows them.
inline const QColor kLcdOnColour(50, 50, 50);
inline const QColor kLcdOffColour(255, 200, 80);

// 16 x 16 pixels times scale (1 or more) each way, every page pixel a square of scale x scale.
QImage PageImage(const Page& page, int scale, PageColours colours);

}  // namespace lumidot
