// Block operations against a model that works pixel by pixel and bit by bit.
#include "platform/drawing/raster.h"

#include <gtest/gtest.h>

#include <random>

namespace {

constexpr RasterOp AllOps[] = {RasterOp::SrcCopy, RasterOp::SrcPaint, RasterOp::SrcAnd, RasterOp::SrcInvert,
                               RasterOp::MergePaint};

// Byte 2 of an operation's number is its truth table: the bit at 2 * source + destination.
Pixel ByTruthTable(RasterOp op, Pixel dest, Pixel source) {
    const uint32_t table = uint32_t(op) >> 16;
    Pixel result = OpaqueBits;
    for (int bit = 0; bit < 24; ++bit) {
        const uint32_t s = source >> bit & 1, d = dest >> bit & 1;
        result |= (table >> (2 * s + d) & 1) << bit;
    }
    return result;
}

struct Dice {
    uint32_t seed = std::random_device{}();
    std::mt19937 engine{seed};
    int operator()(int from, int to) { return std::uniform_int_distribution<int>(from, to)(engine); }
    Color SomeColor() { return (*this)(0, 3) == 0 ? (*this)(0, 1) * 0xFFFFFF : (*this)(0, 0xFFFFFF); }
};

// Uniform, part-stored or whole, with pixels of all kinds.
Surface SomeSurface(Dice& dice) {
    Surface surface(dice(1, 24), dice(1, 24), ToPixel(dice.SomeColor()));
    if (dice(0, 2) == 0) surface.SetStorage(dice(0, 24), dice(0, 24));
    if (dice(0, 2) == 0) return surface;
    for (int y = 0; y < surface.Height(); ++y)
        for (int x = 0; x < surface.Width(); ++x)
            if (dice(0, 3)) SetPixel(surface, x, y, dice.SomeColor());
    return surface;
}

std::vector<Pixel> PixelsOf(const Surface& surface) {
    std::vector<Pixel> pixels;
    for (int y = 0; y < surface.Height(); ++y)
        for (int x = 0; x < surface.Width(); ++x) pixels.push_back(surface.At(x, y));
    return pixels;
}

TEST(BitBlt, EqualsItsTruthTableOnBlocksThatHangOverEveryEdge) {
    Dice dice;
    SCOPED_TRACE("seed " + std::to_string(dice.seed));
    for (int round = 0; round < 4000; ++round) {
        Surface dest = SomeSurface(dice);
        const Surface source = SomeSurface(dice);
        const RasterOp op = AllOps[dice(0, 4)];
        const int x = dice(-20, 24), y = dice(-20, 24), fromX = dice(-20, 24), fromY = dice(-20, 24);
        const int width = dice(-2, 40), height = dice(-2, 40);
        std::vector<Pixel> expected = PixelsOf(dest);
        for (int row = 0; row < height; ++row)
            for (int column = 0; column < width; ++column)
                if (dest.StorageBounds().Contains(x + column, y + row) &&
                    source.Bounds().Contains(fromX + column, fromY + row)) {
                    Pixel& pixel = expected[size_t(y + row) * size_t(dest.Width()) + size_t(x + column)];
                    pixel = ByTruthTable(op, pixel, source.At(fromX + column, fromY + row));
                }
        const std::vector<Pixel> before = PixelsOf(dest);
        dest.Refresh();
        BitBlt(dest, x, y, width, height, source, fromX, fromY, op);
        ASSERT_EQ(PixelsOf(dest), expected) << "round " << round;
        // Whatever has changed lies inside the damage.
        for (size_t i = 0; i < before.size(); ++i) {
            const int column = int(i) % dest.Width(), row = int(i) / dest.Width();
            const bool told =
                std::ranges::any_of(dest.Damage(), [&](const Rect& r) { return r.Contains(column, row); });
            ASSERT_TRUE(told || before[i] == expected[i]) << "round " << round;
        }
    }
}

TEST(Line, SidesOutsideTheSurfaceAreNotDrawnOnItsEdge) {
    Surface surface(10, 10);
    Line(surface, -3, -3, 100, 6, 0);
    for (int x = 0; x < 10; ++x)
        for (int y = 0; y < 10; ++y) EXPECT_EQ(Point(surface, x, y), y == 3 ? 0 : 0xFFFFFF) << x << ", " << y;
}

// White if any source pixel whose square, edges included, holds the centre is white.
Pixel NearestWhiteWins(const Surface& dest, const Surface& source, int x, int y) {
    const auto holds = [](int s, int d, int from, int to) {
        return 2 * to * s <= (2 * d + 1) * from && (2 * d + 1) * from <= 2 * to * (s + 1);
    };
    for (int row = 0; row < source.Height(); ++row)
        for (int column = 0; column < source.Width(); ++column)
            if (holds(column, x, source.Width(), dest.Width()) && holds(row, y, source.Height(), dest.Height()) &&
                source.At(column, row) == WhitePixel)
                return WhitePixel;
    return BlackPixel;
}

TEST(StretchMask, TakesThePixelUnderTheCentreAndWhiteOnABoundary) {
    Dice dice;
    SCOPED_TRACE("seed " + std::to_string(dice.seed));
    for (int round = 0; round < 150; ++round) {
        Surface source(dice(1, 16), dice(1, 16), BlackPixel);
        for (int i = 0; i < source.Width() * source.Height() / 2; ++i)
            SetPixel(source, dice(0, source.Width() - 1), dice(0, source.Height() - 1), 0xFFFFFF);
        Surface dest(dice(1, 32), dice(1, 32));
        StretchMask(dest, source);
        for (int y = 0; y < dest.Height(); ++y)
            for (int x = 0; x < dest.Width(); ++x)
                ASSERT_EQ(dest.At(x, y), NearestWhiteWins(dest, source, x, y))
                    << "round " << round << " at " << x << ", " << y;
    }
}

}  // namespace
