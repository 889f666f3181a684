#include "codec/graphic_page.h"

namespace lumidot {

namespace {

// Columns are sent in strips of five, one byte per row of each strip; the last strip holds
// column 15 alone. Within a byte the strip's first column is bit 4.
constexpr int kStripWidth = 5;
constexpr int kStrips = 4;
constexpr std::uint8_t kFirstColumnBit = 0x10;

int StripColumns(int strip) {
    const int remaining = kPageSide - strip * kStripWidth;
    return remaining < kStripWidth ? remaining : kStripWidth;
}

}  // namespace

ByteArray PackPage(const Page& pixels) {
    ByteArray data;
    for (int strip = 0; strip < kStrips; ++strip) {
        for (int row = 0; row < kPageSide; ++row) {
            std::uint8_t value = 0;
            for (int k = 0; k < StripColumns(strip); ++k) {
                if (pixels[kPageSide * row + kStripWidth * strip + k])
                    value |= kFirstColumnBit >> k;
            }
            AppendByte(data, value);
        }
    }
    return data;
}

Page UnpackPage(const std::uint8_t* data) {
    Page pixels{};
    for (int strip = 0; strip < kStrips; ++strip) {
        for (int row = 0; row < kPageSide; ++row) {
            const std::uint8_t value = data[kPageSide * strip + row];
            for (int k = 0; k < StripColumns(strip); ++k) {
                pixels[kPageSide * row + kStripWidth * strip + k] =
                    (value & (kFirstColumnBit >> k)) != 0;
            }
        }
    }
    return pixels;
}

std::string MakeGraphicStoreSysEx(const Page& pixels, std::uint8_t page) {
    if (page < kFirstPage || page > kLastPage) return {};
    // Two pages share each middle address byte: odd pages at 00, even ones at 40.
    ByteArray body{0x10, static_cast<std::uint8_t>(1 + (page - 1) / 2),
                   static_cast<std::uint8_t>(page % 2 == 0 ? 0x40 : 0x00)};
    for (std::uint8_t b : PackPage(pixels)) AppendByte(body, b);
    return MakeGSSysExText(body, kModelDisplay);
}

std::string MakeGraphicDisplaySysEx(std::uint8_t page) {
    if (page > kLastPage) return {};
    return MakeGSSysExText({0x10, 0x20, 0x00, page}, kModelDisplay);
}

}  // namespace lumidot
