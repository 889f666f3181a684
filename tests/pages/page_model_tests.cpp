// The page model on its own, without a window; the page operations are tested through the
// editor's buttons.
#include <gtest/gtest.h>

#include <initializer_list>
#include <vector>

#include "pages/page_model.h"
#include "pages/page_ops.h"

namespace lumidot {
namespace {

Page PixelsOn(std::initializer_list<int> indexes) {
    Page page{};
    for (int i : indexes) page[i] = true;
    return page;
}

// Distances in steps, halves going to the even neighbour.
TEST(DragStepsTest, RoundsHalvesToEven) {
    const std::pair<double, int> rows[] = {{11, 0}, {12, 1}, {33, 2}, {55, 2}, {-11, 0}, {-33, -2}};
    for (const auto& [distance, steps] : rows)
        EXPECT_EQ(DragSteps(distance, 22), steps) << distance;
}

class PageModelTest : public ::testing::Test {
protected:
    void SetUp() override {
        model.setListener([this](PageModel::Change change, int detail) {
            changes.push_back({change, detail});
        });
    }
    PageModel model;
    std::vector<std::pair<PageModel::Change, int>> changes;
};

TEST_F(PageModelTest, OpeningTheOpenPageOrNoPageChangesNothing) {
    for (int page : {1, 0, 11, -1}) EXPECT_FALSE(model.open(page)) << page;
    EXPECT_EQ(model.current(), 1);
    EXPECT_TRUE(changes.empty());
}

TEST_F(PageModelTest, AllPagesShowTheOpenPageAsEdited) {
    model.copyTo(7);
    model.setPixels(PixelsOn({1, 2}));
    model.copyTo(3);
    const Pages pages = model.all();
    EXPECT_EQ(pages[0], PixelsOn({1, 2}));
    EXPECT_EQ(pages[2], PixelsOn({1, 2}));
    EXPECT_EQ(pages[6], Page{}) << "copied before the pixels were set";
    EXPECT_EQ(model.page(3), PixelsOn({1, 2}));
}

TEST_F(PageModelTest, EveryChangeIsReportedOnce) {
    model.setPixel(4, true);
    model.apply(ShiftRight);
    model.copyTo(9);
    model.open(9);
    model.setPixel(300, true);  // not a pixel: nothing
    const std::vector<std::pair<PageModel::Change, int>> expected = {
        {PageModel::Change::Pixel, 4},
        {PageModel::Change::Pixels, 1},
        {PageModel::Change::Memory, 9},
        {PageModel::Change::OpenPage, 9},
    };
    EXPECT_EQ(changes, expected);
    EXPECT_EQ(model.pixels(), PixelsOn({5}));
}

// What an undo does: every page put back and a page opened, whatever was open or unsaved.
TEST_F(PageModelTest, RestoringPutsBackEveryPageAndOpensTheGivenOneWithoutStoringTheOpenOne) {
    Pages saved{};
    saved[1] = PixelsOn({2});
    saved[6] = PixelsOn({6, 7});
    model.setPixels(PixelsOn({100}));  // page 1 edited, not yet stored
    model.setPage(4, PixelsOn({44}));
    EXPECT_EQ(model.page(4), PixelsOn({44}));
    model.setPage(1, PixelsOn({11}));
    EXPECT_EQ(model.pixels(), PixelsOn({11})) << "the open page is set where it is edited";

    model.restore(saved, 7);
    EXPECT_EQ(model.current(), 7);
    EXPECT_EQ(model.pixels(), PixelsOn({6, 7}));
    EXPECT_EQ(model.all(), saved) << "the edits of page 1 are not stored on the way";
    ASSERT_TRUE(model.open(2));
    EXPECT_EQ(model.pixels(), PixelsOn({2}));
    model.restore(saved, 2);
    model.restore(saved, 0);  // not a page: nothing
    const std::vector<std::pair<PageModel::Change, int>> expected = {
        {PageModel::Change::Pixels, 1},   {PageModel::Change::Memory, 4},
        {PageModel::Change::Pixels, 1},   {PageModel::Change::OpenPage, 7},
        {PageModel::Change::OpenPage, 2}, {PageModel::Change::Pixels, 2},
    };
    EXPECT_EQ(changes, expected);
}

}  // namespace
}  // namespace lumidot
