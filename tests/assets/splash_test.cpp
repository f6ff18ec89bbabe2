// The banner: its shape, its colours, and the calm place for the version.
#include <gtest/gtest.h>

#include <algorithm>
#include <optional>

#include "platform/bmp.h"
#include "platform/resources.h"

namespace {

constexpr Pixel Yellow = 0xFFFFFF00, Blue = 0xFF46549D;

class Splash : public testing::Test {
protected:
    void SetUp() override {
        picture = DecodeBmp(LoadResData("SPLASH", "PICTURE"));
        ASSERT_TRUE(picture);
        ASSERT_EQ(picture->Width(), 614);
        ASSERT_EQ(picture->Height(), 223);
    }
    // The columns from the first to the last that are shown in rows top..bottom.
    std::pair<int, int> Extent(int top, int bottom) const {
        std::pair<int, int> extent{614, -1};
        for (int y = top; y <= bottom; ++y)
            for (int x = 0; x < 614; ++x)
                if (picture->At(x, y) != Yellow) extent = {std::min(extent.first, x), std::max(extent.second, x)};
        return extent;
    }
    int Count(Pixel colour) const {
        int count = 0;
        for (int y = 0; y < 223; ++y)
            for (int x = 0; x < 614; ++x) count += picture->At(x, y) == colour;
        return count;
    }
    std::optional<Surface> picture;
};

TEST_F(Splash, HasTheShapeOfOnePieceWithTwoKnobs) {
    EXPECT_EQ(Extent(12, 215), std::pair(2, 611));
    EXPECT_EQ(Extent(1, 11), std::pair(87, 131));
    EXPECT_EQ(Extent(216, 219), std::pair(488, 532));
    EXPECT_EQ(Extent(0, 0).second, -1);
    EXPECT_EQ(Extent(220, 222).second, -1);
    EXPECT_NE(Extent(1, 1).second, -1);
    EXPECT_NE(Extent(219, 219).second, -1);
}

TEST_F(Splash, IsMostlyBlueAndSeeThroughInHolesToo) {
    const int all = 614 * 223;
    EXPECT_GT(Count(Blue), all / 2);
    EXPECT_NEAR(Count(Yellow) * 100.0 / all, 9.5, 0.4);
    int holes = 0;
    for (int y = 30; y < 200; ++y)
        for (int x = 20; x < 590; ++x) holes += picture->At(x, y) == Yellow;
    EXPECT_GT(holes, 400);
}

// Smoothing towards the see-through colour would leave such pixels along every edge.
TEST_F(Splash, LeavesNoYellowishFringe) {
    for (int y = 0; y < 223; ++y) {
        for (int x = 0; x < 614; ++x) {
            const Pixel p = picture->At(x, y);
            const int r = int(p >> 16 & 255), g = int(p >> 8 & 255), b = int(p & 255);
            ASSERT_TRUE(p == Yellow || r <= 215 || g <= 215 || b >= 90) << x << ", " << y;
        }
    }
}

TEST_F(Splash, KeepsThePlaceOfTheVersionCalm) {
    for (int y = 118; y < 139; ++y)
        for (int x = 490; x < 562; ++x) ASSERT_EQ(picture->At(x, y), Blue) << x << ", " << y;
}

}  // namespace
