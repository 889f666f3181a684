#include "codec/graphic_page.h"

#include <algorithm>
#include <bit>
#include <cstring>
#include <iterator>

namespace lumidot {

namespace {

// Columns are sent in strips of five, one byte per row of each strip; the last strip holds
// column 15 alone. Within a byte the strip's first column is bit 4.
constexpr int kStripWidth = 5;
constexpr int kStrips = 4;

// Eight cells (bools, each byte 0 or 1) as one byte, the first cell the highest bit. Read
// as one little-endian word, the multiplication gathers cell i at bit 63 - i, and no two
// of its products meet at or carry into the top byte.
unsigned EightCells(const bool* cells) {
    if constexpr (std::endian::native != std::endian::little) {
        unsigned bits = 0;
        for (int i = 0; i < 8; ++i) bits = bits << 1 | (cells[i] ? 1u : 0u);
        return bits;
    }
    std::uint64_t word;
    std::memcpy(&word, cells, sizeof word);
    return static_cast<unsigned>((word * 0x8040201008040201ULL) >> 56);
}

// A row as sixteen bits, column 0 the most significant: every strip is then a shift away.
// Pages are packed at every regeneration and unpacked for every store message decoded.
void PackPageInto(const Page& pixels, std::uint8_t* data) {
    for (int row = 0; row < kPageSide; ++row) {
        const bool* pixel = &pixels[static_cast<std::size_t>(kPageSide * row)];
        const unsigned bits = EightCells(pixel) << 8 | EightCells(pixel + 8);
        for (int strip = 0; strip < kStrips; ++strip) {
            // The strip's first column lands on bit 4, a narrower strip keeps its low bits 0.
            const int shift = kPageSide - kStripWidth * (strip + 1);
            const unsigned value = shift >= 0 ? bits >> shift : bits << -shift;
            data[static_cast<std::size_t>(kPageSide * strip + row)] =
                static_cast<std::uint8_t>(value & 0x1F);
        }
    }
}

}  // namespace

ByteArray PackPage(const Page& pixels) {
    ByteArray data(kPackedPageBytes);
    PackPageInto(pixels, data.data());
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

namespace {

// Where a store message puts page 1 to 10. Two pages share each middle address byte: odd
// pages at 00, even ones at 40.
std::array<std::uint8_t, 3> StoreAddress(std::uint8_t page) {
    return {0x10, static_cast<std::uint8_t>(1 + (page - 1) / 2),
            static_cast<std::uint8_t>(page % 2 == 0 ? 0x40 : 0x00)};
}

// Address and data of a store message; page is 1 to 10.
ByteArray StoreBody(const Page& pixels, std::uint8_t page) {
    const auto address = StoreAddress(page);
    ByteArray body(address.size() + kPackedPageBytes);
    std::copy(address.begin(), address.end(), body.begin());
    PackPageInto(pixels, body.data() + address.size());
    return body;
}

ByteArray DisplayBody(std::uint8_t page) {
    return {0x10, 0x20, 0x00, page};
}

}  // namespace

std::string MakeGraphicStoreSysEx(const Page& pixels, std::uint8_t page) {
    if (page < kFirstPage || page > kLastPage) return {};
    return MakeGSSysExText(StoreBody(pixels, page), kModelDisplay);
}

std::string MakeGraphicDisplaySysEx(std::uint8_t page) {
    if (page > kLastPage) return {};
    return MakeGSSysExText(DisplayBody(page), kModelDisplay);
}

ByteArray GraphicStoreMessage(const Page& pixels, std::uint8_t page) {
    if (page < kFirstPage || page > kLastPage) return {};
    // One allocation: live sending builds this for every painted cell.
    const std::uint8_t head[] = {0xF0, 0x41, 0x10, kModelDisplay, 0x12};
    const auto address = StoreAddress(page);
    ByteArray message(std::size(head) + address.size() + kPackedPageBytes + 2);
    std::uint8_t* const body = std::copy(std::begin(head), std::end(head), message.data());
    std::uint8_t* const data = std::copy(address.begin(), address.end(), body);
    PackPageInto(pixels, data);
    std::uint8_t* const checksum = data + kPackedPageBytes;
    *checksum = GSChecksum(body, checksum);
    checksum[1] = 0xF7;
    return message;
}

ByteArray GraphicDisplayMessage(std::uint8_t page) {
    if (page > kLastPage) return {};
    return MakeGSSysEx(DisplayBody(page), kModelDisplay);
}

}  // namespace lumidot
