#include "pages/page_ops.h"

#include <cfenv>
#include <cmath>

namespace lumidot {

std::int32_t WrapIndex(std::int32_t value, std::int32_t modulus) {
    while (value < 0) value += modulus;
    return value;
}

// The shifts read from the source page and write a separate result, so a pixel moved early
// in the loop is never read again as if it were still in its old place.

Page ShiftUp(const Page& page) {
    Page shifted{};
    for (int i = 0; i < kPagePixels; ++i) shifted[i] = page[(i + kPageSide) % kPagePixels];
    return shifted;
}

Page ShiftDown(const Page& page) {
    Page shifted{};
    for (int i = 0; i < kPagePixels; ++i) shifted[i] = page[WrapIndex(i - kPageSide, kPagePixels)];
    return shifted;
}

Page ShiftLeft(const Page& page) {
    Page shifted{};
    for (int i = 0; i < kPagePixels; ++i) {
        const bool lastColumn = (i + 1) % kPageSide == 0;
        shifted[i] = lastColumn ? page[i - (kPageSide - 1)] : page[i + 1];
    }
    return shifted;
}

Page ShiftRight(const Page& page) {
    Page shifted{};
    for (int i = 0; i < kPagePixels; ++i) {
        const bool firstColumn = i % kPageSide == 0;
        shifted[i] = firstColumn ? page[i + (kPageSide - 1)] : page[i - 1];
    }
    return shifted;
}

Page Invert(const Page& page) {
    Page inverted{};
    for (int i = 0; i < kPagePixels; ++i) inverted[i] = !page[i];
    return inverted;
}

Page ClearedPage() {
    return Page{};
}

int DragSteps(double distance, double step) {
    // Halves go to the even neighbour, so a drag of exactly half a cell does not move yet.
    // Set the mode explicitly rather than trusting whatever the process left behind.
    const int savedMode = std::fegetround();
    std::fesetround(FE_TONEAREST);
    const double steps = std::nearbyint(distance / step);
    std::fesetround(savedMode);
    return static_cast<int>(steps);
}

}  // namespace lumidot
