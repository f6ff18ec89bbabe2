// Every step that draws, beside a model that goes pixel by pixel and, where it combines them, bit by bit.
#include <cmath>

#include "platform/drawing/picture.h"
#include "platform/drawing/raster.h"
#include "tests/support/transcript.h"

namespace {

struct Dice {
    uint32_t seed = std::random_device{}();
    std::mt19937 engine{seed};
    int operator()(int from, int to) { return std::uniform_int_distribution<int>(from, to)(engine); }
    Color SomeColor() { return (*this)(0, 3) == 0 ? (*this)(0, 1) * 0xFFFFFF : (*this)(0, 0xFFFFFF); }
    // A place or a length, now and then as far out as a number goes.
    int Far(int from, int to) { return (*this)(0, 99) ? (*this)(from, to) : (*this)(0, 1) ? INT32_MAX : INT32_MIN; }
};

// Uniform, part-stored or whole, of pixels of all kinds, `density` to the unit.
Surface SomeSurface(Dice& dice, int density) {
    Surface surface(dice(0, 9) ? dice(1, 22) : 0, dice(1, 22), ToPixel(dice.SomeColor()));
    surface.SetDensity(Density(density));
    if (dice(0, 2) == 0) surface.SetStorage(dice(0, 4) ? dice(0, 24) : 0, dice(0, 24));
    if (dice(0, 2) == 0) return surface;
    Pixel* pixels = surface.Draw(surface.Bounds());
    for (int i = 0; i < surface.PixelBounds().width * surface.PixelBounds().height; ++i)
        if (dice(0, 3)) pixels[i] = ToPixel(dice.SomeColor());
    return surface;
}

std::vector<Pixel> AllPixels(const Surface& surface) {
    std::vector<Pixel> pixels;
    const Rect all = surface.PixelDensity().Pixels(surface.Bounds());
    for (int y = 0; y < all.height; ++y)
        for (int x = 0; x < all.width; ++x) pixels.push_back(surface.At(x, y));
    return pixels;
}

// Byte 2 of an operation's number is its truth table: the bit at 2 * source + destination.
Pixel ByTruthTable(RasterOp op, Pixel dest, Pixel source) {
    Pixel result = OpaqueBits;
    for (int bit = 0; bit < 24; ++bit) {
        const uint32_t s = source >> bit & 1, d = dest >> bit & 1;
        result |= (uint32_t(op) >> 16 >> (2 * s + d) & 1) << bit;
    }
    return result;
}

// The share of source pixel s in target pixel d: by the length they have in common, or by the cubic of Catmull and Rom.
double Share(int s, int d, int source, int target) {
    if (target <= source) {
        const double from = double(d) * source / target, to = double(d + 1) * source / target;
        return std::max(0.0, std::min(to, s + 1.0) - std::max(from, double(s))) * target / source;
    }
    double share = 0;
    const double centre = (d + 0.5) * source / target - 0.5;
    for (int i = int(std::floor(centre)) - 1; i <= std::floor(centre) + 2; ++i) {
        const double t = std::fabs(centre - i);
        if (std::clamp(i, 0, source - 1) == s)  // beyond the edge the outermost pixel goes on
            share += t < 1 ? 1 - 2.5 * t * t + 1.5 * t * t * t : t < 2 ? 2 - 4 * t + 2.5 * t * t - 0.5 * t * t * t : 0;
    }
    return share;
}

int Channel(Pixel pixel, int which) { return int(pixel >> (8 * which) & 0xFF); }

// Pixel x, y of `target` pixels with `image` stretched over them, all three channels, to within `error`.
void ExpectStretched(Pixel actual, const Surface& image, Size target, int x, int y, double error) {
    const Rect from = image.PixelDensity().Pixels(image.Bounds());
    const auto near = [](int d, int source, int size) {
        const int first = int(int64_t(d) * source / size) - 3, last = int(int64_t(d + 1) * source / size) + 3;
        return std::pair(std::max(first, 0), std::min(last, source - 1));
    };
    const auto [left, right] = near(x, from.width, target.width);
    const auto [top, bottom] = near(y, from.height, target.height);
    double sum[3] = {};
    for (int row = top; row <= bottom; ++row)
        for (int column = left; column <= right; ++column)
            for (int c = 0; c < 3; ++c)
                sum[c] += Share(column, x, from.width, target.width) * Share(row, y, from.height, target.height) *
                          Channel(image.At(column, row), c);
    for (int c = 0; c < 3; ++c) ASSERT_NEAR(Channel(actual, c), std::clamp(sum[c], 0.0, 255.0), error) << x << "," << y;
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

}  // namespace

TEST(Drawing, EveryStepEqualsItsRulePixelByPixel) {
    constexpr RasterOp Ops[] = {RasterOp::SrcCopy, RasterOp::SrcPaint, RasterOp::SrcAnd, RasterOp::SrcInvert,
                                RasterOp::MergePaint};
    Dice dice;
    for (int round = 0; round < 9000; ++round) {
        SCOPED_TRACE("seed " + std::to_string(dice.seed) + ", round " + std::to_string(round));
        const int k = dice(1, 3), from = dice(0, 2) ? k : 1;
        Surface dest = SomeSurface(dice, k);
        const Surface source = SomeSurface(dice, from);
        const std::vector<Pixel> before = AllPixels(dest);
        std::vector<Pixel> expected = before;
        const auto each = [&](auto drawn) {  // drawn(x, y, pixel): what pixel x, y becomes
            for (int i = 0; i < int(expected.size()); ++i) {
                const int x = i % (dest.Width() * k), y = i / (dest.Width() * k);
                if (dest.StorageBounds().Contains(x / k, y / k)) expected[size_t(i)] = drawn(x, y, before[size_t(i)]);
            }
        };
        const int x = dice.Far(-20, 24), y = dice.Far(-20, 24), width = dice.Far(-3, 40), height = dice.Far(-3, 40);
        const auto inside = [&](int64_t column, int64_t row) {
            return column >= x && column < int64_t(x) + width && row >= y && row < int64_t(y) + height;
        };
        const Color color = dice.SomeColor();
        const uint64_t revision = dest.Revision();
        dest.Refresh();
        switch (dice(0, 7)) {
            default: {
                const int fromX = dice.Far(-20, 24), fromY = dice.Far(-20, 24);
                const RasterOp op = Ops[dice(0, 4)];
                BitBlt(dest, x, y, width, height, source, fromX, fromY, op);
                each([&](int px, int py, Pixel old) {
                    const int64_t column = int64_t(px / k) - x + fromX, row = int64_t(py / k) - y + fromY;
                    if (!inside(px / k, py / k) || column < 0 || column >= source.Width() || row < 0 ||
                        row >= source.Height())
                        return old;
                    const auto within = [&](int64_t unit, int pixel) { return int(unit) * from + pixel % k % from; };
                    return ByTruthTable(op, old, source.At(within(column, px), within(row, py)));
                });
                break;
            }
            case 1:
                FillRect(dest, {x, y, width, height}, color);
                each([&](int px, int py, Pixel old) { return inside(px / k, py / k) ? ToPixel(color) : old; });
                break;
            case 2: {
                Line(dest, x, y, width, height, color);
                const auto [left, right] = std::minmax({int64_t(x), int64_t(x) + width});
                const auto [top, bottom] = std::minmax({int64_t(y), int64_t(y) + height});
                each([&, l = left, r = right, t = top, b = bottom](int px, int py, Pixel old) {
                    const int column = px / k, row = py / k;
                    const bool upright = (column == l || column == r) && row >= t && row <= b;
                    const bool flat = (row == t || row == b) && column >= l && column <= r;
                    return upright || flat ? ToPixel(color) : old;
                });
                break;
            }
            case 3:
                SetPixel(dest, x, y, color);
                each([&](int px, int py, Pixel old) { return px / k == x && py / k == y ? ToPixel(color) : old; });
                break;
            case 4: {
                const int side = dice(1, 24), last = side * k - 1;
                TurnClockwise(dest, source, side);
                const Rect both = Intersect(dest.StorageBounds(), source.StorageBounds());
                if (from != k || source.IsUniform() || both.width < side || both.height < side) break;
                each(
                    [&](int px, int py, Pixel old) { return px > last || py > last ? old : source.At(py, last - px); });
                break;
            }
        }
        ASSERT_EQ(AllPixels(dest), expected);
        for (size_t i = 0; i < before.size(); ++i) {
            const int column = int(i) % (dest.Width() * k) / k, row = int(i) / (dest.Width() * k) / k;
            const auto told = [&](const Rect& damage) { return damage.Contains(column, row); };
            ASSERT_TRUE(before[i] == expected[i] || std::ranges::any_of(dest.Damage(), told));
            ASSERT_EQ(Point(dest, column, row), ToColor(dest.At(column * k, row * k)));
        }
        ASSERT_EQ(dest.Revision() > revision, !dest.Damage().empty());
        ASSERT_EQ(Point(dest, -1, 0) + Point(dest, 0, dest.Height()), -2);
    }
}

TEST(PaintPicture, IsAnAverageOrASmoothCurveAndClipsWithoutATrace) {
    Dice dice;
    for (int round = 0; round < 500; ++round) {
        SCOPED_TRACE("seed " + std::to_string(dice.seed) + ", round " + std::to_string(round));
        const int k = dice(1, 3);
        Surface dest = SomeSurface(dice, k);
        const Surface image = SomeSurface(dice, dice(1, 3));
        const Rect target{dice(-20, 20), dice(-20, 20), dice(0, 3) ? dice(-1, 60) : image.Width(),
                          dice(0, 3) ? dice(0, 60) : image.Height()};
        const std::vector<Pixel> before = AllPixels(dest);
        PaintPicture(dest, target, image);
        const Rect pixels = dest.PixelDensity().Pixels(target);
        for (int i = 0; i < int(before.size()); ++i) {
            const int x = i % (dest.Width() * k), y = i / (dest.Width() * k);
            if (target.Contains(x / k, y / k) && dest.StorageBounds().Contains(x / k, y / k) && image.Width() > 0)
                ExpectStretched(dest.At(x, y), image, {pixels.width, pixels.height}, x - pixels.x, y - pixels.y, 0.6);
            else
                ASSERT_EQ(dest.At(x, y), before[size_t(i)]);
            if (HasFatalFailure()) return;
        }
    }
    // As long as pictures are: sums beyond 16 bits, weights beyond 15, and products beyond 28.
    const Size cases[][2] = {{{2, 520}, {2, 2}},        {{3, 1000}, {2, 2}},   {{1, 50000}, {1, 40000}},
                             {{20000, 3}, {50, 7}},     {{3, 20000}, {7, 50}}, {{40000, 1}, {39999, 1}},
                             {{1500, 300}, {1400, 299}}};
    for (const auto& [natural, size] : cases) {
        Surface image(natural.width, natural.height);
        Pixel* pixels = image.DrawAll();
        for (int i = 0; i < natural.width * natural.height; ++i) pixels[i] = ToPixel(dice.SomeColor());
        const Surface small = Stretched(image, size);
        for (int i = 0; i < std::min(size.width * size.height, 50); ++i) {
            const int x = dice(0, size.width - 1), y = dice(0, size.height - 1);
            ExpectStretched(small.At(x, y), image, size, x, y, 0.6);
        }
    }
}

TEST(StretchMask, TakesThePixelUnderTheCentreAndWhiteOnABoundary) {
    Dice dice;
    SCOPED_TRACE("seed " + std::to_string(dice.seed));
    for (int round = 0; round < 150; ++round) {
        Surface source(dice(0, 16), dice(1, 16), BlackPixel), dest(dice(1, 32), dice(1, 32));
        for (int i = 0; i < source.Width() * source.Height() / 2; ++i)
            SetPixel(source, dice(0, source.Width() - 1), dice(0, source.Height() - 1), 0xFFFFFF);
        if (round % 3 == 0) dest.SetStorage(dice(0, 32), dice(0, 32));
        StretchMask(dest, source);
        const Rect stored = source.Width() ? dest.StorageBounds() : Rect();
        for (int y = 0; y < dest.Height(); ++y)
            for (int x = 0; x < dest.Width(); ++x)
                ASSERT_EQ(dest.At(x, y), stored.Contains(x, y) ? NearestWhiteWins(dest, source, x, y) : WhitePixel)
                    << "round " << round << " at " << x << ", " << y;
    }
}

TEST(Surface, KeepsWhatWasDrawnAndTellsWhereOnce) {
    struct Listener : SurfaceListener {
        void SurfaceRefreshed(const Region& damage) override { transcript.Hear(testing::PrintToString(damage)); }
        Transcript transcript;
    } listener;
    Transcript& transcript = listener.transcript;
    Surface board(4, 3, BlackPixel), other(2, 2);
    board.SetListener(&listener);
    transcript.state = [&] {
        State all;
        for (const auto& [name, surface] : {std::pair("board", &board), {"other", &other}})
            all[name] = PixelsOf(*surface) + " x" + std::to_string(surface->PixelDensity().PerUnit()) + " stores " +
                        testing::PrintToString(surface->PixelBounds()) + " by " + std::to_string(surface->Stride()) +
                        " drawn " + testing::PrintToString(surface->Damage());
        return all;
    };
    const auto number = [&] { return transcript.Draw<int>({-1, 0, 1, 2, 3, 3, 4, 9}); };
    const auto size = [&](auto set) {
        const int width = number();
        (board.*set)(width, number());
    };
    const auto area = [&] {
        const int x = number(), y = number(), width = number();
        return Rect{x, y, width, number()};
    };
    const auto color = [&] { return Pixel(transcript.Draw<int>({0, 0x102030, 0xFFFFFF})); };
    uint64_t last = 0;
    const auto newer = [&] { return std::exchange(last, board.Revision()) < board.Revision(); };
    transcript.Walk(150, Steps() | STEP(board.Resize(number() + 4, 6)) | STEP(size(&Surface::Resize)) |
                             STEP(board.SetDensity(Density(number()))) | STEP(size(&Surface::SetStorage)) |
                             STEP(board.SetBackground(color())) | STEP(board.Cls(), newer()) |
                             STEP(FillRect(board, area(), color()), newer()) | STEP(FillRect(board, area(), color())) |
                             STEP(FillRect(board, area(), color())) | STEP(SetPixel(board, number(), 1, 7), newer()) |
                             STEP(board.Draw(area()) != nullptr) | STEP(board.Touch(area()), newer()) |
                             STEP(board.Refresh(), newer()) | STEP(board = std::move(other), newer()) |
                             STEP(other = std::move(board), newer()));
    DO(board.Resize(40, 40), board.SetBackground(0), board.Refresh());
    for (int i = 0; i < 20; ++i) DO(SetPixel(board, i * 7 % 20, i * 3 % 20, i));
    // As large as any board, but clear: no pixels.
    DO(board.Resize(200000, 200000), FillRect(board, {10, 10, 100000, 100000}, 0), board.IsUniform());
    for (const double scale : {-1.0, 0.5, 1.0, 1.01, 2.0, 2.25, 3.0, 7.0}) DO(Density::ForScale(scale).PerUnit());
}
