// Every step that draws, what a surface keeps of it, and pictures in files.
#include <climits>

#include "platform/drawing/bmp.h"
#include "platform/drawing/picture.h"
#include "platform/drawing/raster.h"
#include "platform/headless/desktop.h"
#include "tests/support/picture_files.h"
#include "tests/support/temp_folder.h"
#include "tests/support/transcript.h"

namespace {

// Whole numbers by chance, the same at every run.
struct Dice {
    std::mt19937 engine;
    int operator()(int from, int to) { return from + int(engine() % uint32_t(to - from + 1)); }
    Color SomeColor() { return (*this)(0, 3) == 0 ? (*this)(0, 1) * 0xFFFFFF : (*this)(0, 0xFFFFFF); }
    // A place or a length, now and then as far out as a number goes.
    int Far(int from, int to) { return (*this)(0, 60) ? (*this)(from, to) : (*this)(0, 1) ? INT_MAX : INT_MIN; }
    void Fill(Surface& surface) {
        Pixel* const pixels = surface.Draw(surface.Bounds());
        for (int i = 0; i < surface.PixelBounds().width * surface.PixelBounds().height; ++i)
            if ((*this)(0, 3)) pixels[i] = ToPixel(SomeColor());
    }
};

// Uniform, part-stored or whole, of pixels of all kinds, `density` to the unit.
Surface SomeSurface(Dice& dice, int density) {
    const int width = dice(0, 9) ? dice(1, 22) : 0, height = dice(1, 22);
    Surface surface(width, height, ToPixel(dice.SomeColor()));
    surface.SetDensity(Density(density));
    const int storedWidth = dice(0, 4) ? dice(0, 24) : 0;
    if (dice(0, 2) == 0) surface.SetStorage(storedWidth, dice(0, 24));
    if (dice(0, 2)) dice.Fill(surface);
    return surface;
}

}  // namespace

TEST(Drawing, IsAsItAlwaysWasAndToldOnce) {
    const std::vector<RasterOp> ops{RasterOp::SrcCopy, RasterOp::SrcPaint, RasterOp::SrcAnd, RasterOp::SrcInvert,
                                    RasterOp::MergePaint};
    struct Listener : SurfaceListener {
        void SurfaceRefreshed(const Region& damage) override { transcript.Told("damage")(damage); }
        Transcript transcript;
    } listener;
    Transcript& transcript = listener.transcript;
    Dice dice;
    Surface dest;
    const auto draw = [&] {
        const int k = dest.PixelDensity().PerUnit(), x = dice.Far(-5, 9), y = dice.Far(-5, 9), side = dice(1, 24);
        const int width = dice.Far(-3, 30), height = dice.Far(-3, 30), fromX = dice.Far(-5, 9), fromY = dice.Far(-5, 9);
        Surface source = SomeSurface(dice, dice(0, 2) ? k : 1), image = SomeSurface(dice, dice(1, 3));
        const Color color = dice.SomeColor();
        const Rect area{x, y, width, height}, over{x % 21, y % 21, side - 1, side * 2};
        const Rect same{x % 21, y % 21, image.Width(), image.Height()};
        const auto draws =
            Steps() | STEP(k == 1 ? StretchMask(dest, image) : dest.Refresh()) |
            STEP(dest.Resize(dice.Far(-1, 9) % 40, 6)) | STEP(dest.SetStorage(side, x)) |
            STEP(dest.SetDensity(Density(side % 5))) | STEP(dest.SetBackground(Pixel(color))) | STEP(dest.Cls()) |
            STEP(dest = std::move(source), PixelsOf(source)) | STEP(FillRect(dest, area, color)) |
            STEP(Line(dest, x, y, width, height, color)) | STEP(SetPixel(dest, dice(0, 1) ? x : side, y, color)) |
            STEP(TurnClockwise(dest, source, side / 2)) | STEP(PaintPicture(dest, dice(0, 1) ? over : same, image)) |
            STEP(dest.Touch({x % 9, y % 9, 3, 2}));
        if (dice(0, 1))
            transcript.Walk(1, draws);
        else
            DO(BitBlt(dest, x, y, width, height, source, fromX, fromY, transcript.Draw(ops)));
    };
    uint64_t last = 0;
    transcript.state = [&] {
        const bool another = dest.Revision() > std::exchange(last, dest.Revision());
        return State{
            {"dest", PixelsOf(dest) + testing::PrintToString(std::tuple(dest.PixelBounds(), dest.Damage(), another,
                                                                        Point(dest, 4, 5), Point(dest, -1, 0)))}};
    };
    for (int round = 0; round < 700; ++round) {
        dest = SomeSurface(dice, dice(1, 3));
        dest.SetListener(&listener);
        DO(dest.Refresh());
        for (int more = round % 8 ? 0 : 13; more >= 0; --more) draw();
        DO(dest.Refresh(), dest.Stride());
    }
    for (const double scale : {-1.0, 0.5, 1.0, 1.01, 2.0, 2.25, 3.0, 7.0}) DO(Density::ForScale(scale).PerUnit());
    // As long as pictures are: sums beyond 16 bits, weights beyond 15, and products beyond 28.
    const Size cases[][2] = {{{2, 520}, {2, 2}},        {{3, 1000}, {2, 2}},   {{1, 50000}, {1, 40000}},
                             {{20000, 3}, {50, 7}},     {{3, 20000}, {7, 50}}, {{40000, 1}, {39999, 1}},
                             {{1500, 300}, {1400, 299}}};
    for (const auto& [natural, size] : cases) {
        Surface image(natural.width, natural.height);
        dice.Fill(image);
        DO(PixelsOf(Stretched(image, size)));
    }
}

TEST(Bmp, IsReadInEveryFormAndRefusedInAnyOther) {
    Transcript transcript;
    const auto read = [&transcript](const std::string& what, const std::string& file) {
        const auto bytes = std::as_bytes(std::span(file));
        const std::optional<Surface> surface = DecodeBmp(bytes);
        if (surface || BmpSize(bytes)) transcript.Write(what + (surface ? PixelsOf(*surface) : "has a size"));
    };
    for (const Size size : {Size{1, 1}, {2, 5}, {3, 3}, {5, 4}})
        transcript.Write(testing::PrintToString(EncodeBmp(PatternSurface(size))));
    for (const BitmapKind& kind : BitmapKinds) {
        for (const Size size : {Size{1, 1}, {2, 5}, {3, -3}, {5, 4}}) read("of its kind ", Bitmap(kind, size));
        const std::string file = Bitmap(kind, {2, 3});
        for (size_t at = 0; at < std::min<size_t>(file.size() - 3, 70); ++at)
            for (const int value : {0, 1, 3, 16, 53, 56, 32767, 32768, -5, INT_MIN})
                read(std::to_string(at) + " " + std::to_string(value) + " ",
                     std::string(file).replace(at, 4, Little(value)));
        for (size_t length = 0; length < std::min<size_t>(file.size(), 130); ++length)
            read("cut at " + std::to_string(length) + " ", file.substr(0, length));
        read("without its last byte ", file.substr(0, file.size() - 1));
        read("without its last filling ", file.substr(0, file.size() - 2));
    }
}

TEST(LoadPicture, NothingButARegularFileReachesTheDesktop) {
    Transcript transcript;
    const TempFolder folder;
    HeadlessDesktop desktop;
    for (const std::string& path : {folder.MakeFifo("fifo"), folder.MakeFolder("folder"), folder.Write("file", ""),
                                    folder / "missing"}) {  // what is missing is the desktop's to refuse
        desktop.pictures[path] = {{4, 3}, [](Size) { return Surface(4, 3); }};
        DO(std::pair(PictureSize(path), LoadPicture(path).has_value()));
        DO(DoEventsDecoding(path, {4, 3}), desktop.log.size());
    }
}
