#include "codec/graphic_page.h"

namespace lumidot {

namespace {

// Columns are sent in strips of five, one byte per row of each strip; the last strip holds
// column 15 alone. Within a byte the strip's first column is bit 4.
constexpr int kStripWidth = 5;
constexpr int kStrips = 4;

}  // namespace

// A row as sixteen bits, column 0 the most significant: every strip is then a shift away.
// Pages are packed at every regeneration and unpacked for every store message decoded.
ByteArray PackPage(const Page& pixels) {
    ByteArray data(kPackedPageBytes);
    for (int row = 0; row < kPageSide; ++row) {
        const bool* pixel = &pixels[static_cast<std::size_t>(kPageSide * row)];
        unsigned bits = 0;
        for (int column = 0; column < kPageSide; ++column)
            bits = bits << 1 | (pixel[column] ? 1u : 0u);
        for (int strip = 0; strip < kStrips; ++strip) {
            // The strip's first column lands on bit 4, a narrower strip keeps its low bits 0.
            const int shift = kPageSide - kStripWidth * (strip + 1);
            const unsigned value = shift >= 0 ? bits >> shift : bits << -shift;
            data[static_cast<std::size_t>(kPageSide * strip + row)] =
                static_cast<std::uint8_t>(value & 0x1F);
        }
    }
    return data;
}

Page UnpackPage(const std::uint8_t* data) {
    Page pixels{};
    for (int row = 0; row < kPageSide; ++row) {
        unsigned bits = 0;
        for (int strip = 0; strip < kStrips; ++strip) {
            const unsigned value = data[kPageSide * strip + row] & 0x1Fu;
            const int shift = kPageSide - kStripWidth * (strip + 1);
            bits |= shift >= 0 ? value << shift : value >> -shift;
        }
        bool* pixel = &pixels[static_cast<std::size_t>(kPageSide * row)];
        for (int column = 0; column < kPageSide; ++column) {
            pixel[column] = (bits >> (kPageSide - 1 - column)) & 1u;
        }
    }
    return pixels;
}

std::string MakeGraphicStoreSysEx(const Page& pixels, std::uint8_t page) {
    if (page < kFirstPage || page > kLastPage) return {};
    // Two pages share each middle address byte: odd pages at 00, even ones at 40.
    ByteArray body{0x10, static_cast<std::uint8_t>(1 + (page - 1) / 2),
                   static_cast<std::uint8_t>(page % 2 == 0 ? 0x40 : 0x00)};
    const ByteArray data = PackPage(pixels);
    body.insert(body.end(), data.begin(), data.end());
    return MakeGSSysExText(body, kModelDisplay);
}

std::string MakeGraphicDisplaySysEx(std::uint8_t page) {
    if (page > kLastPage) return {};
    return MakeGSSysExText({0x10, 0x20, 0x00, page}, kModelDisplay);
}

}  // namespace lumidot
