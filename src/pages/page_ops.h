// Whole-page operations on a 256-pixel page. Each returns a new page; shifts wrap around.
#pragma once

#include <cstdint>

#include "codec/graphic_page.h"

namespace lumidot {

// A value of 0 or more unchanged; a negative one with the modulus added until it is not.
std::int32_t WrapIndex(std::int32_t value, std::int32_t modulus);

Page ShiftUp(const Page& page);     // the top row reappears at the bottom
Page ShiftDown(const Page& page);   // the bottom row reappears at the top
Page ShiftLeft(const Page& page);   // the left column reappears at the right
Page ShiftRight(const Page& page);  // the right column reappears at the left
Page Invert(const Page& page);
Page ClearedPage();

// Steps of a drag: the distance divided by the step, rounded half to even.
int DragSteps(double distance, double step);

}  // namespace lumidot
