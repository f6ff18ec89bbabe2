// Storage that comes late.
#include "platform/drawing/surface.h"

#include <gtest/gtest.h>

#include "platform/drawing/raster.h"

namespace {

TEST(Surface, ClearSurfaceAsLargeAsAnyBoardKeepsNoPixels) {
    Surface board(200000, 200000, BlackPixel);
    board.SetBackground(ToPixel(Rgb(1, 2, 3)));
    FillRect(board, {10, 10, 100000, 100000}, Rgb(1, 2, 3));
    EXPECT_TRUE(board.IsUniform());
    EXPECT_EQ(Point(board, 199999, 199999), Rgb(1, 2, 3));
}

}  // namespace
