#include "editor/page_preview.h"

#include <QPainter>

#include "pictures/page_image.h"

namespace lumidot {

PagePreview::PagePreview(QWidget* parent) : QWidget(parent) {
    setFixedSize(kSide, kSide);
}

void PagePreview::setPage(const Page& page) {
    if (page == page_) return;
    page_ = page;
    update();
}

void PagePreview::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    // The grey of the frame behind the grid shows between the dots.
    painter.fillRect(rect(), QColor(128, 128, 128));
    for (int i = 0; i < kPagePixels; ++i) {
        const int x = 1 + (i % kPageSide) * (kCell + 1);
        const int y = 1 + (i / kPageSide) * (kCell + 1);
        painter.fillRect(x, y, kCell, kCell, page_[i] ? kLcdOnColour : kLcdOffColour);
    }
}

}  // namespace lumidot
