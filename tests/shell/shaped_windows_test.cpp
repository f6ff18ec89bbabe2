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

// A body with a knob above and one below, mostly blue, with holes, and no pixel almost of the colour at any edge.
TEST(RegionFromPicture, MakesTheBannerOnePieceWithTwoKnobs) {
    const std::optional<Surface> banner = DecodeBmp(LoadResData("SPLASH", "PICTURE"));
    ASSERT_TRUE(banner && banner->Bounds() == (Rect{0, 0, 614, 223}));
    const Region region = PicDeclerations::RegionFromPicture(&*banner, Yellow).value();
    ExpectExactCover(*banner, region);
    EXPECT_LT(region.size(), 300u) << "equal rows are one band";
    const auto extent = [&region](int top, int bottom) {
        std::pair<int, int> columns{614, -1};
        for (const Rect& r : region)
            if (r.y <= bottom && r.Bottom() > top)
                columns = {std::min(columns.first, r.x), std::max(columns.second, r.Right() - 1)};
        return columns;
    };
    EXPECT_EQ(extent(12, 215), std::pair(2, 611));
    EXPECT_EQ(extent(1, 11), std::pair(87, 131));
    EXPECT_EQ(extent(216, 219), std::pair(488, 532));
    int blue = 0, yellow = 0;
    for (int i = 0; i < 614 * 223; ++i) {
        const Color c = Point(*banner, i % 614, i / 614);
        blue += c == Rgb(70, 84, 157), yellow += c == Yellow;
        ASSERT_TRUE(c == Yellow || (c & 255) <= 215 || (c >> 8 & 255) <= 215 || c >> 16 >= 90)
            << i % 614 << ", " << i / 614;
    }
    EXPECT_GT(blue, 614 * 223 / 2);
    EXPECT_NEAR(yellow * 100.0 / (614 * 223), 9.5, 0.4);
    EXPECT_EQ(PicDeclerations::RegionFromPicture(nullptr, Yellow), std::nullopt);
}

}  // namespace
