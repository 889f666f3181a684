// 16 x 16 dot pictures and the messages that store and display them.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>

#include "codec/gs_message.h"

namespace lumidot {

constexpr int kPageSide = 16;
constexpr int kPagePixels = kPageSide * kPageSide;
constexpr int kPackedPageBytes = 64;
constexpr int kFirstPage = 1;
constexpr int kLastPage = 10;

// Element 16 * row + column, row 0 at the top; true is a pixel that is on.
using Page = std::array<bool, kPagePixels>;

// The 64 data bytes of a store message: four strips of columns 0-4, 5-9, 10-14 and 15,
// one byte per row, bit 4 the strip's first column.
ByteArray PackPage(const Page& pixels);

// The inverse of PackPage on 64 bytes starting at data; bits 7 to 5 of every byte and
// bits 3 to 0 of the last strip are ignored.
Page UnpackPage(const std::uint8_t* data);

// Store message for page 1 to 10; empty text for any other page number.
std::string MakeGraphicStoreSysEx(const Page& pixels, std::uint8_t page);

// Display message for page 1 to 10, or 0 to display no page; empty text above 10.
std::string MakeGraphicDisplaySysEx(std::uint8_t page);

// The same two messages as bytes (empty for a page out of range), for the live sending of
// every change: no hex text on the way.
ByteArray GraphicStoreMessage(const Page& pixels, std::uint8_t page);
ByteArray GraphicDisplayMessage(std::uint8_t page);

}  // namespace lumidot
