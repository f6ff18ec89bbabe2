// Stretching pictures: exact averages down, smooth up, the same pixels however clipped.
#include <gtest/gtest.h>

#include <random>

#include "platform/drawing/picture.h"
#include "platform/drawing/raster.h"
#include "tests/support/picture_files.h"

namespace {

int Channel(Pixel pixel, int which) { return int(pixel >> (8 * which) & 0xFF); }

Surface NoisySurface(Size size, uint32_t seed) {
    std::mt19937 engine(seed);
    Surface surface(size.width, size.height);
    Pixel* pixels = surface.DrawAll();
    for (size_t i = 0; i < size_t(size.width) * size_t(size.height); ++i) pixels[i] = OpaqueBits | Pixel(engine());
    return surface;
}

// The share of target pixel d that source pixel s covers.
double Share(int s, int d, int source, int target) {
    const double from = double(d) * source / target, to = double(d + 1) * source / target;
    return std::max(0.0, std::min(to, s + 1.0) - std::max(from, double(s))) * target / source;
}

TEST(PaintPicture, SmallerIsTheAverageOfTheAreaCovered) {
    const Surface image = NoisySurface({23, 17}, 5);
    for (const Size size : {Size{22, 16}, {7, 5}, {1, 1}, {11, 17}, {23, 3}}) {
        const Surface small = Stretched(image, size);
        for (int i = 0; i < 3 * size.width * size.height; ++i) {
            const int x = i / 3 % size.width, y = i / 3 / size.width;
            double mean = 0;
            for (int row = 0; row < 17; ++row)
                for (int column = 0; column < 23; ++column)
                    mean += Share(column, x, 23, size.width) * Share(row, y, 17, size.height) *
                            Channel(image.At(column, row), i % 3);
            ASSERT_NEAR(Channel(small.At(x, y), i % 3), mean, 0.5001)
                << size.width << "x" << size.height << " at " << x << ", " << y;
        }
    }
}

TEST(PaintPicture, LargerIsSmoothSymmetricalAndHoldsItsEnds) {
    Surface step(2, 1, BlackPixel);
    SetPixel(step, 1, 0, 0xFFFFFF);
    const Surface wide = Stretched(step, {16, 3});
    for (int x = 0; x < 16; ++x) {
        EXPECT_EQ(wide.At(x, 0), wide.At(x, 2));
        EXPECT_GE(Channel(wide.At(x, 1), 0), Channel(wide.At(std::max(x - 1, 0), 1), 0)) << x;
        EXPECT_NEAR(Channel(wide.At(x, 1), 0) + Channel(wide.At(15 - x, 1), 0), 255, 1) << x;
    }
    EXPECT_EQ(wide.At(0, 0), BlackPixel);
    EXPECT_EQ(wide.At(15, 0), WhitePixel);
    EXPECT_GT(Channel(wide.At(7, 0), 0), 90) << "no hard step in the middle";
}

TEST(PaintPicture, ClippedPixelsEqualThoseOfTheWholeAndTheRestIsUntouched) {
    const Surface image = NoisySurface({40, 31}, 3);
    const Color ground = Rgb(3, 5, 7);
    for (const Rect target :
         {Rect{-9, -7, 25, 20}, {10, 5, 90, 70}, {-50, 3, 130, 9}, {8, -30, 40, 60}, {-5, -5, 40, 31}}) {
        const Surface whole = Stretched(image, {target.width, target.height});
        Surface dest(30, 24);
        FillRect(dest, dest.Bounds(), ground);
        PaintPicture(dest, target, image);
        for (int y = 0; y < 24; ++y)
            for (int x = 0; x < 30; ++x)
                ASSERT_EQ(Point(dest, x, y), target.Contains(x, y) ? Point(whole, x - target.x, y - target.y) : ground)
                    << "target " << target.x << ", " << target.y << " at " << x << ", " << y;
    }
}

}  // namespace
