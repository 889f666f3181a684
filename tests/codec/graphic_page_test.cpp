#include "codec/graphic_page.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <map>
#include <random>
#include <vector>

namespace lumidot {
namespace {

TEST(MakeGraphicDisplaySysExTest, MatchesWholeFrame) {
    EXPECT_EQ(MakeGraphicDisplaySysEx(1), "F0 41 10 45 12 10 20 00 01 4F F7");
    EXPECT_EQ(MakeGraphicDisplaySysEx(10), "F0 41 10 45 12 10 20 00 0A 46 F7");
    EXPECT_EQ(MakeGraphicDisplaySysEx(0), "F0 41 10 45 12 10 20 00 00 50 F7");
    // Set duration is only ever received, but shares the frame.
    EXPECT_EQ(MakeGSSysExText({0x10, 0x20, 0x01, 0x01}, kModelDisplay),
              "F0 41 10 45 12 10 20 01 01 4E F7");
    EXPECT_EQ(MakeGraphicDisplaySysEx(11), "");
}

// Frame text of a store message whose data bytes are 00 except the ones listed.
std::string StoreFrame(const char* address, const std::map<int, int>& data, int checksum) {
    std::string frame = std::string("F0 41 10 45 12 ") + address;
    char byte[4];
    for (int i = 0; i < kPackedPageBytes; ++i) {
        std::snprintf(byte, sizeof byte, " %02X", data.count(i) ? data.at(i) : 0);
        frame += byte;
    }
    std::snprintf(byte, sizeof byte, " %02X", checksum);
    return frame + byte + " F7";
}

Page PixelsOn(const std::vector<int>& on) {
    Page page{};
    for (int pixel : on) page[pixel] = true;
    return page;
}

TEST(MakeGraphicStoreSysExTest, MatchesWholeFrame) {
    Page allOn;
    allOn.fill(true);
    std::map<int, int> allOnData;
    for (int i = 0; i < kPackedPageBytes; ++i) allOnData[i] = i < 48 ? 0x1F : 0x10;
    std::vector<int> diagonal;
    for (int r = 0; r < kPageSide; ++r) diagonal.push_back(kPageSide * r + r);

    const struct {
        Page pixels;
        std::uint8_t page;
        std::string frame;
    } rows[] = {
        {Page{}, 1, StoreFrame("10 01 00", {}, 0x6F)},
        {allOn, 2, StoreFrame("10 01 40", allOnData, 0x5F)},
        {PixelsOn({0}), 1, StoreFrame("10 01 00", {{0, 0x10}}, 0x5F)},
        {PixelsOn({15}), 1, StoreFrame("10 01 00", {{48, 0x10}}, 0x5F)},
        {PixelsOn({244}), 1, StoreFrame("10 01 00", {{15, 0x01}}, 0x6E)},
        {PixelsOn({39}), 1, StoreFrame("10 01 00", {{18, 0x04}}, 0x6B)},  // row 2, column 7
        {Page{}, 9, StoreFrame("10 05 00", {}, 0x6B)},
        {Page{}, 10, StoreFrame("10 05 40", {}, 0x2B)},
        {PixelsOn(diagonal), 3,
         "F0 41 10 45 12 10 02 00 10 08 04 02 01 00 00 00 00 00 00 00 00 00 00 00 "
         "00 00 00 00 00 10 08 04 02 01 00 00 00 00 00 00 00 00 00 00 00 00 00 00 "
         "00 00 10 08 04 02 01 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 10 "
         "01 F7"},
        {Page{}, 0, ""},
        {Page{}, 11, ""},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(MakeGraphicStoreSysEx(row.pixels, row.page), row.frame) << int{row.page};
    }
}

TEST(PackPageTest, UnpackGivesEveryPageBack) {
    std::mt19937 random(20240501);
    for (int i = 0; i < 2000; ++i) {
        Page page;
        for (bool& pixel : page) pixel = (random() & 1) != 0;
        const ByteArray packed = PackPage(page);
        ASSERT_EQ(packed.size(), static_cast<std::size_t>(kPackedPageBytes));
        EXPECT_EQ(UnpackPage(packed.data()), page) << "page " << i;
    }
}

TEST(UnpackPageTest, IgnoresBitsOutsideThePicture) {
    std::mt19937 random(7);
    for (int i = 0; i < 500; ++i) {
        ByteArray raw(kPackedPageBytes);
        for (std::uint8_t& b : raw) b = static_cast<std::uint8_t>(random());
        // What survives: bits 4-0 in strips 0 to 2, bit 4 alone in strip 3.
        ByteArray meaningful = raw;
        for (int j = 0; j < kPackedPageBytes; ++j) meaningful[j] &= j < 48 ? 0x1F : 0x10;
        EXPECT_EQ(PackPage(UnpackPage(raw.data())), meaningful) << "sample " << i;
    }
}

}  // namespace
}  // namespace lumidot
