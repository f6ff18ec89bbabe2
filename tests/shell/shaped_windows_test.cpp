// A window's shape against the picture, pixel by pixel.
#include "shell/shaped_windows.h"

#include <gtest/gtest.h>

#include <random>

#include "platform/drawing/bmp.h"
#include "platform/drawing/raster.h"
#include "platform/system/resources.h"

namespace {

constexpr Color Yellow = Rgb(255, 255, 0);

// Every pixel lies in one rectangle if it isn't of the colour, in none if it is.
void ExpectExactCover(const Surface& picture, const Region& region) {
    std::vector<int> covered(size_t(picture.Width() * picture.Height()));
    for (const Rect& rect : region) {
        ASSERT_EQ(Intersect(rect, picture.Bounds()), rect);
        for (int y = rect.y; y < rect.Bottom(); ++y)
            for (int x = rect.x; x < rect.Right(); ++x) ++covered[size_t(y * picture.Width() + x)];
    }
    for (int y = 0; y < picture.Height(); ++y)
        for (int x = 0; x < picture.Width(); ++x)
            ASSERT_EQ(covered[size_t(y * picture.Width() + x)], Point(picture, x, y) != Yellow) << x << ", " << y;
}

TEST(RegionFromPicture, CoversExactlyWhatIsNotOfTheColour) {
    const unsigned seed = std::random_device{}();
    SCOPED_TRACE(seed);
    std::mt19937 random(seed);
    for (int round = 0; round < 300; ++round) {
        Surface picture(1 + int(random() % 12), 1 + int(random() % 12), ToPixel(Yellow));
        const auto density = random() % 5;
        for (int y = 0; y < picture.Height(); ++y)
            for (int x = 0; x < picture.Width(); ++x)
                if (random() % 4 < density) SetPixel(picture, x, y, random() % 2 ? Rgb(255, 255, 1) : Rgb(255, 254, 0));
        const auto region = PicDeclerations::RegionFromPicture(&picture, Yellow);
        ASSERT_TRUE(region);
        ExpectExactCover(picture, *region);
        if (HasFatalFailure()) return;
    }
}

TEST(RegionFromPicture, StaysShortAndTellsNothingFromNoPicture) {
    EXPECT_EQ(PicDeclerations::RegionFromPicture(nullptr, Yellow), std::nullopt);
    const Surface hole(9, 7, ToPixel(Yellow));
    EXPECT_EQ(PicDeclerations::RegionFromPicture(&hole, Yellow), Region{});
    Surface plain(9, 7, BlackPixel);
    EXPECT_EQ(PicDeclerations::RegionFromPicture(&plain, Yellow), (Region{{0, 0, 9, 7}}));
    EXPECT_EQ(PicDeclerations::RegionFromPicture(&plain, -1), (Region{{0, 0, 9, 7}}));
    SetPixel(plain, 4, 3, Yellow);
    EXPECT_EQ(PicDeclerations::RegionFromPicture(&plain, Yellow),
              (Region{{0, 0, 9, 3}, {0, 3, 4, 1}, {5, 3, 4, 1}, {0, 4, 9, 3}}));
}

}  // namespace
