// The whole-page operations on their own: wrapping shifts, inversion, rounding of drags.
#include <gtest/gtest.h>

#include <string>

#include "editor/page_ops.h"

namespace lumidot {
namespace {

// An irregular picture, so that a shift that drops, doubles or mirrors a row or column
// cannot come out equal by accident.
Page Sample() {
    Page page{};
    for (int i = 0; i < kPagePixels; ++i) page[i] = (i * 7 + i / 16) % 5 == 0 || i == 17;
    return page;
}

struct ShiftRow {
    const char* name;
    Page (*shift)(const Page&);
    Page (*opposite)(const Page&);
};

class ShiftTest : public ::testing::TestWithParam<ShiftRow> {};

TEST_P(ShiftTest, SixteenShiftsRestoreThePage) {
    Page page = Sample();
    for (int i = 0; i < 15; ++i) {
        page = GetParam().shift(page);
        EXPECT_NE(page, Sample()) << "after " << i + 1;
    }
    EXPECT_EQ(GetParam().shift(page), Sample());
}

TEST_P(ShiftTest, TheOppositeShiftUndoesIt) {
    EXPECT_EQ(GetParam().opposite(GetParam().shift(Sample())), Sample());
}

INSTANTIATE_TEST_SUITE_P(Directions, ShiftTest,
                         ::testing::Values(ShiftRow{"Up", ShiftUp, ShiftDown},
                                           ShiftRow{"Down", ShiftDown, ShiftUp},
                                           ShiftRow{"Left", ShiftLeft, ShiftRight},
                                           ShiftRow{"Right", ShiftRight, ShiftLeft}),
                         [](const auto& info) { return std::string(info.param.name); });

TEST(PageOpsTest, InvertTwiceRestoresAndClearTurnsEverythingOff) {
    const Page inverted = Invert(Sample());
    for (int i = 0; i < kPagePixels; ++i) ASSERT_NE(inverted[i], Sample()[i]) << i;
    EXPECT_EQ(Invert(inverted), Sample());
    EXPECT_EQ(ClearedPage(), Page{});
}

struct DragRow {
    double distance, step;
    int steps;
};

class DragStepsTest : public ::testing::TestWithParam<DragRow> {};

TEST_P(DragStepsTest, RoundsHalvesToTheEvenNeighbour) {
    EXPECT_EQ(DragSteps(GetParam().distance, GetParam().step), GetParam().steps);
}

// Exactly half a step goes to the even neighbour, both ways.
INSTANTIATE_TEST_SUITE_P(Halves, DragStepsTest,
                         ::testing::Values(DragRow{11, 22, 0}, DragRow{33, 22, 2},
                                           DragRow{-11, 22, 0}, DragRow{-33, 22, -2},
                                           DragRow{15, 10, 2}, DragRow{-25, 10, -2}));

}  // namespace
}  // namespace lumidot
