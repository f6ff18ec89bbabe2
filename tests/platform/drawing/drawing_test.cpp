// Every step that draws, beside a model that goes pixel by pixel and, where it combines them, bit by bit.
#include <cmath>

#include "platform/drawing/bmp.h"
#include "platform/drawing/picture.h"
#include "platform/drawing/raster.h"
#include "platform/headless/desktop.h"
#include "tests/support/picture_files.h"
#include "tests/support/temp_folder.h"
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

// `file` with another number in it, four bytes long.
std::string With(std::string file, size_t at, int32_t value) {
    for (size_t i = 0; i < 4; ++i) file[at + i] = char(value >> (8 * i) & 0xFF);
    return file;
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
        const int fromX = dice.Far(-20, 24), fromY = dice.Far(-20, 24), side = dice(1, 24), last = side * k - 1;
        const int64_t right = int64_t(x) + width, bottom = int64_t(y) + height;
        const auto between = [](int64_t value, int64_t a, int64_t b) {
            return value >= std::min(a, b) && value <= std::max(a, b);
        };
        const auto inside = [&](int column, int row) {
            return column >= x && column < right && row >= y && row < bottom;
        };
        const RasterOp op = Ops[dice(0, 4)];
        const Color color = dice.SomeColor();
        const uint64_t revision = dest.Revision();
        dest.Refresh();
        switch (dice(0, 7)) {
            case 1:
                FillRect(dest, {x, y, width, height}, color);
                each([&](int px, int py, Pixel old) { return inside(px / k, py / k) ? ToPixel(color) : old; });
                break;
            case 2:
                Line(dest, x, y, width, height, color);
                each([&](int px, int py, Pixel old) {
                    const bool upright = (px / k == x || px / k == right) && between(py / k, y, bottom);
                    const bool flat = (py / k == y || py / k == bottom) && between(px / k, x, right);
                    return upright || flat ? ToPixel(color) : old;
                });
                break;
            case 3:
                SetPixel(dest, x, y, color);
                each([&](int px, int py, Pixel old) { return px / k == x && py / k == y ? ToPixel(color) : old; });
                break;
            case 4: {
                TurnClockwise(dest, source, side);
                const Rect both = Intersect(dest.StorageBounds(), source.StorageBounds());
                if (from != k || source.IsUniform() || both.width < side || both.height < side) break;
                each(
                    [&](int px, int py, Pixel old) { return px > last || py > last ? old : source.At(py, last - px); });
                break;
            }
            default:
                BitBlt(dest, x, y, width, height, source, fromX, fromY, op);
                each([&](int px, int py, Pixel old) {
                    const int64_t column = int64_t(px / k) - x + fromX, row = int64_t(py / k) - y + fromY;
                    const bool there = between(column, 0, source.Width() - 1) && between(row, 0, source.Height() - 1);
                    if (!inside(px / k, py / k) || source.Width() == 0 || !there) return old;
                    return ByTruthTable(op, old,
                                        source.At(int(column) * from + px % k % from, int(row) * from + py % k % from));
                });
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
    Transcript transcript;
    const auto size = [&] { return transcript.Draw<int>({1, 2, 3, 5, 8, 9}); };
    const auto stretch = [&] {
        const int width = size(), height = size(), toWidth = size();
        Surface source(width, height, BlackPixel), dest(toWidth, size());
        for (int i = 0; i < width * height / 2; ++i) {
            const int x = size() - 1;
            SetPixel(source, x, size() - 1, 0xFFFFFF);
        }
        dest.SetStorage(transcript.Draw<int>({0, 7, 9, 9}), 9);
        StretchMask(dest, source);
        for (const Surface* picture : {&source, &dest})
            for (int y = 0; y < picture->Height(); ++y) {
                std::string line = picture == &dest ? "        " : "    ";
                for (int x = 0; x < picture->Width(); ++x) line += picture->At(x, y) == WhitePixel ? '#' : '.';
                transcript.Write(line);
            }
    };
    for (int i = 0; i < 40; ++i) DO(stretch());
    Surface dest(2, 2, BlackPixel);
    DO(StretchMask(dest, Surface(0, 3)), dest.IsUniform());
}

TEST(Surface, KeepsWhatWasDrawnAndTellsWhereOnce) {
    struct Listener : SurfaceListener {
        void SurfaceRefreshed(const Region& damage) override { transcript.Told("damage")(damage); }
        Transcript transcript;
    } listener;
    Transcript& transcript = listener.transcript;
    Surface board(4, 3, BlackPixel), other(2, 2);
    board.SetListener(&listener);
    transcript.state = [&, last = uint64_t(0)]() mutable {
        const bool newer = std::exchange(last, board.Revision()) < board.Revision();
        return State{{"board", PixelsOf(board) + testing::PrintToString(std::tuple(board.PixelBounds(), board.Stride(),
                                                                                   board.Damage(), newer))},
                     {"other", PixelsOf(other) + testing::PrintToString(other.Damage())}};
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
    const auto color = [&] { return transcript.Draw<int>({0, 0x102030, 0xFFFFFF}); };
    const std::function<void()> fill = STEP(FillRect(board, area(), color()));
    transcript.Walk(150, Steps() | STEP(board.Resize(number() + 4, 6)) | STEP(size(&Surface::Resize)) | fill | fill |
                             STEP(board.SetDensity(Density(number()))) | STEP(size(&Surface::SetStorage)) |
                             STEP(board.SetBackground(Pixel(color()))) | STEP(board.Cls()) | STEP(board.Refresh()) |
                             STEP(SetPixel(board, number(), 1, 7)) | STEP(board.Draw(area()) != nullptr) |
                             STEP(board.Touch(area())) | STEP(void(board = std::move(other))) |
                             STEP(void(other = std::move(board))));
    DO(board.Resize(40, 40), board.SetBackground(0), board.Refresh());
    for (int i = 0; i < 20; ++i) DO(SetPixel(board, i * 7 % 20, i * 3 % 20, i));
    // As large as any board, but clear: no pixels.
    DO(board.Resize(200000, 200000), FillRect(board, {10, 10, 100000, 100000}, 0), board.IsUniform());
    for (const double scale : {-1.0, 0.5, 1.0, 1.01, 2.0, 2.25, 3.0, 7.0}) DO(Density::ForScale(scale).PerUnit());
}

TEST(Bmp, IsReadInEveryFormAndRefusedInAnyOther) {
    Transcript transcript;
    const auto read = [&transcript](const std::string& what, const std::string& file) {
        const auto bytes = std::as_bytes(std::span(file));
        const std::optional<Surface> surface = DecodeBmp(bytes);
        transcript.Write(what + (surface ? PixelsOf(*surface) : "refused") + (BmpSize(bytes) ? " has a size" : ""));
    };
    for (const Size size : {Size{1, 1}, {2, 5}, {3, 3}, {5, 4}}) {
        const std::string file = PatternBmp(size);
        EXPECT_EQ(EncodeBmp(PatternSurface(size)), file);
        transcript.Write(PixelsOf(PatternSurface(size)));
        // Of 32 bits, with the places of the colours named behind a header of 40 bytes or within a longer one.
        std::string wide = With(With(file.substr(0, 54), 28, 32), 30, 0);
        for (int i = size.width * size.height - 1; i >= 0; --i)
            wide = With(wide + "1234", wide.size(),
                        int32_t(PatternPixel(size.width - 1 - i % size.width, i / size.width)));
        std::string fields = With(With(With(wide, 28, 32 | 3 << 16), 30, 3), 10, 66);
        fields.insert(54, std::string("\0\0\xFF\0\0\xFF\0\0\xFF\0\0\0", 12));
        const std::string longest = With(fields, 10, 1038).insert(66, std::string(972, 'x')) + "x";
        read("wide ", wide), read("fields ", fields), read("longest ", With(longest, 14, 1024));
        read("too long ", With(With(longest, 10, 1039), 14, 1025));
        for (const size_t at : {54u, 58u, 62u}) read("field ", With(fields, at, 1));
        for (const auto& [at, value] : std::vector<std::pair<size_t, int32_t>>{
                 {10, 54},    {22, -size.height}, {0, 'X'}, {18, 0},         {18, -5},    {18, INT32_MAX},
                 {22, 0},     {22, -5},           {22, 6},  {22, INT32_MIN}, {18, 32767}, {18, 32768},
                 {22, 32767}, {22, 32768},        {30, 1},  {30, 3},         {28, 16},    {28, 8},
                 {10, 20},    {10, -1},           {10, 53}, {10, 56},        {14, -1},    {14, 39},
                 {14, 41}})
            read(std::to_string(at) + " " + std::to_string(value) + " ", With(file, at, value));
        for (size_t length = 0; length < file.size(); length += 1 + length % 7) read("", file.substr(0, length));
        read("without the last filling ", file.substr(0, file.find_last_not_of('\0') + 1));
    }
}

TEST(LoadPicture, NothingButARegularFileReachesTheDesktop) {
    const TempFolder folder;
    HeadlessDesktop desktop;
    const std::string file = folder.Write("file.bmp", ""), missing = folder / "missing.bmp";
    for (const std::string& path : {folder.MakeFifo("fifo.bmp"), folder.MakeFolder("folder.bmp"), file, missing}) {
        desktop.pictures[path] = {{4, 3}, [](Size) { return Surface(4, 3); }};
        const bool opened = path == file || path == missing;  // what is missing is the desktop's to refuse
        EXPECT_EQ(PictureSize(path), opened ? std::optional(Size{4, 3}) : std::nullopt) << path;
        EXPECT_EQ(LoadPicture(path).has_value(), opened) << path;
        DoEventsDecoding(path, {4, 3});
    }
    EXPECT_EQ(desktop.log, std::vector<std::string>(4, "events"));
}
