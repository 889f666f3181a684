// The picture the picture tests draw, import and export: irregular, so that a page that comes
// out mirrored, shifted or transposed cannot pass for it.
#pragma once

#include <QImage>

#include "codec/graphic_page.h"
#include "support/picture_files.h"

namespace lumidot::testing {

inline bool SampleAt(int row, int column) {
    return (row * 7 + column * 3) % 5 == 0 || row == column || (row == 0 && column == 15);
}

inline Page SamplePage() {
    Page page{};
    for (int i = 0; i < kPagePixels; ++i) page[i] = SampleAt(i / kPageSide, i % kPageSide);
    return page;
}

// Black on white, each pixel of the sample drawn as a square of scale x scale.
inline QImage SampleImage(int scale = 1) {
    return BlackOnWhite(16 * scale, 16 * scale,
                        [scale](int x, int y) { return SampleAt(y / scale, x / scale); });
}

}  // namespace lumidot::testing
