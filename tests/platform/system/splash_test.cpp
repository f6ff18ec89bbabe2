// The banner: its shape, its colours, and the calm place for the version.
#include <gtest/gtest.h>

#include <algorithm>
#include <optional>

#include "platform/drawing/bmp.h"
#include "platform/system/resources.h"

namespace {

constexpr Pixel Yellow = 0xFFFFFF00, Blue = 0xFF46549D;

class Splash : public testing::Test {
protected:
    void SetUp() override {
        picture = DecodeBmp(LoadResData("SPLASH", "PICTURE"));
        ASSERT_TRUE(picture && picture->Bounds() == (Rect{0, 0, 614, 223}));
    }
    // The columns from the first to the last that are shown in rows top..bottom.
    std::pair<int, int> Extent(int top, int bottom) const {
        std::pair<int, int> extent{614, -1};
        for (int y = top; y <= bottom; ++y)
            for (int x = 0; x < 614; ++x)
                if (picture->At(x, y) != Yellow) extent = {std::min(extent.first, x), std::max(extent.second, x)};
        return extent;
    }
    int Count(Pixel colour, const Rect& within) const {
        int count = 0;
        for (int y = within.y; y < within.Bottom(); ++y)
            for (int x = within.x; x < within.Right(); ++x) count += picture->At(x, y) == colour;
        return count;
    }
    std::optional<Surface> picture;
};

TEST_F(Splash, HasTheShapeOfOnePieceWithTwoKnobs) {
    EXPECT_EQ(Extent(12, 215), std::pair(2, 611));
    EXPECT_EQ(Extent(1, 11), std::pair(87, 131));
    EXPECT_EQ(Extent(216, 219), std::pair(488, 532));
    for (const int y : {0, 1, 219, 220}) EXPECT_EQ(Extent(y, y).second >= 0, y == 1 || y == 219) << y;
}

TEST_F(Splash, IsMostlyBlueSeeThroughInHolesTooAndCalmWhereTheVersionStands) {
    EXPECT_GT(Count(Blue, {0, 0, 614, 223}), 614 * 223 / 2);
    EXPECT_NEAR(Count(Yellow, {0, 0, 614, 223}) * 100.0 / (614 * 223), 9.5, 0.4);
    EXPECT_GT(Count(Yellow, {20, 30, 570, 170}), 400);
    EXPECT_EQ(Count(Blue, {490, 118, 72, 21}), 72 * 21);
}

// Smoothing towards the see-through colour would leave such pixels along every edge.
TEST_F(Splash, LeavesNoYellowishFringe) {
    for (int i = 0; i < 614 * 223; ++i) {
        const Pixel p = picture->At(i % 614, i / 614);
        const int r = int(p >> 16 & 255), g = int(p >> 8 & 255), b = int(p & 255);
        ASSERT_TRUE(p == Yellow || r <= 215 || g <= 215 || b >= 90) << i % 614 << ", " << i / 614;
    }
}

}  // namespace
