// Storage that comes late, what counts as drawn, and who hears of it.
#include "platform/drawing/surface.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/drawing/raster.h"

namespace {

using testing::ElementsAre;

struct Ear : SurfaceListener {
    std::vector<Region> heard;
    void SurfaceRefreshed(const Region& damage) override { heard.push_back(damage); }
};

TEST(Surface, ClearSurfaceAsLargeAsAnyBoardKeepsNoPixels) {
    Surface board(200000, 200000, BlackPixel);
    board.SetBackground(ToPixel(Rgb(1, 2, 3)));
    FillRect(board, {10, 10, 100000, 100000}, Rgb(1, 2, 3));
    EXPECT_TRUE(board.IsUniform());
    EXPECT_EQ(Point(board, 199999, 199999), Rgb(1, 2, 3));
}

TEST(Surface, PixelsThatMoveInAreHeardByTheListenerThatWasThere) {
    Surface surface(10, 10);
    Ear ear;
    surface.SetListener(&ear);
    Surface drawn(4, 3);
    FillRect(drawn, {1, 1, 1, 1}, 0);
    surface = std::move(drawn);
    surface.Refresh();
    ASSERT_EQ(ear.heard.size(), 1u);
    EXPECT_THAT(ear.heard[0], ElementsAre(Rect{0, 0, 4, 3}));
    EXPECT_EQ(Point(surface, 1, 1), 0);
}

}  // namespace
