// The Milky Way over a lake, a tent with a light in it.
#include "pictures.h"

namespace pictures {
using namespace paint;

namespace {

constexpr int Width = 1600, Height = 1067;
constexpr double Shore = 800;

Rgb Sky(Vec p) {
    Rgb c =
        Ramp({Hex(0x050920), Hex(0x0d1a44), Hex(0x1d3a72), Hex(0x3f6a94), Hex(0xc98a6a)}, std::pow(p.y / Shore, 1.25));
    // The band runs from the lower left to the upper right.
    const Vec q = Turned(p - Vec{760, 420}, 0.72);
    const double warp = 60 * Fbm(p.x / 260, p.y / 260, 4, 3);
    const double band = std::exp(-std::pow((q.y + warp) / 150, 2));
    const double dust = Fbm(q.x / 170, q.y / 75, 7, 14), glow = 0.55 + 0.6 * Fbm(q.x / 240, q.y / 110, 6, 24);
    const Rgb tint = Ramp({Hex(0x5a4fb0), Hex(0x8d6fd0), Hex(0xe8a9c0), Hex(0xffe2b8)},
                          Clamp01(0.45 + 0.9 * Fbm(q.x / 300, q.y / 130, 4, 34)));
    c = c + tint * (0.62 * band * std::max(0.0, glow));
    const double lane = std::exp(-std::pow((q.y + warp * 1.3 + 14) / 46, 2)) * Smooth(-0.15, 0.3, dust);
    c = c * (1 - 0.72 * lane);
    const double mist = Smooth(0.1, 0.55, Fbm(p.x / 210, p.y / 210, 5, 44)) * Smooth(760, 300, p.y);
    return c + Hex(0x1c5a6e) * (0.5 * mist * (1 - band));
}

void DrawStars(Canvas& canvas) {
    Random random(77);
    for (int i = 0; i < 5200; ++i) {
        const Vec p{random.Between(0, Width), random.Between(0, Shore)};
        const Vec q = Turned(p - Vec{760, 420}, 0.72);
        if (i > 1700 && random.Next() > std::exp(-std::pow(q.y / 170, 2))) continue;
        const double size = 0.4 + 1.1 * std::pow(random.Next(), 6);
        const Rgb colour = Ramp({Hex(0x9fc4ff), Hex(0xffffff), Hex(0xfff0d0), Hex(0xffc890)}, random.Next());
        canvas.Disc(p, size, colour, random.Between(0.35, 1) * Smooth(Shore, Shore - 240, p.y), 1.2);
    }
    for (int i = 0; i < 46; ++i) {
        const Vec p{random.Between(10, Width - 10), random.Between(10, 560)};
        const Rgb colour = Ramp({Hex(0xa8ccff), Hex(0xffffff), Hex(0xffdca8)}, random.Next());
        const double size = random.Between(1.4, 2.6);
        canvas.Glow(p, size * 9, colour, 0.5);
        canvas.Disc(p, size, Hex(0xffffff), 1, 1.5);
        for (int k = 0; k < 4; ++k) canvas.Line(p, p + Polar(size * 5, k * Pi / 2), 0.9, colour, 0.5);
    }
    const Vec head{1190, 150};  // a shooting star
    for (int i = 0; i < 130; ++i)
        canvas.Disc(head + Vec{2.1, -0.9} * double(i), 2.0 * (1 - i / 130.0) + 0.3, Hex(0xeaf4ff),
                    0.5 * (1 - i / 130.0));
    canvas.Glow(head, 26, Hex(0xffffff), 0.8);
}

void DrawRange(Canvas& canvas, double base, double height, double scale, Rgb colour, uint32_t seed) {
    for (int x = 0; x < Width; ++x) {
        const double crest = base - height * Ridge(x / scale, seed, 6, seed);
        for (int y = int(crest); y < Shore; ++y) {
            const double snow = Smooth(90, 0, y - crest + 60 * Fbm(x / 30.0, y / 40.0, 4, seed + 3));
            const double side = Clamp01(0.5 + 1.4 * Fbm((x + y * 0.5) / 40, y / 70.0, 5, seed + 5));
            const Rgb rock = Mix(colour * 0.65, colour * 1.25, side);
            canvas.At(x, y) = Mix(canvas.At(x, y), Mix(rock, Mix(Hex(0x8fa6cf), Hex(0x4a5f92), 1 - side), snow * 0.75),
                                  Clamp01(y - crest));
        }
    }
}

void DrawMoon(Canvas& canvas, Vec at, double r) {
    canvas.Glow(at, r * 7, Hex(0xbfd0ff), 0.35);
    canvas.Fill(
        at - Vec{r + 2, r + 2}, at + Vec{r + 2, r + 2}, [=](Vec p) { return Circle(p, at, r); },
        [=](Vec p, double) {
            const double sea = Smooth(0.0, 0.35, Fbm((p.x - at.x) / r * 1.7, (p.y - at.y) / r * 1.7, 5, 91));
            const Cell crater = Cells(p.x / 11, p.y / 11, 92);
            const double rim = Smooth(0.28, 0.2, crater.nearest) - Smooth(0.2, 0.12, crater.nearest);
            const double dark = Smooth(-0.15, 0.75, (p.x - at.x) / r);
            return Mix(Hex(0xfdf7e2), Hex(0xb9b7b4), 0.75 * sea) * (1 + 0.12 * rim) * Mix(1, 0.35, dark);
        });
}

void DrawCamp(Canvas& canvas) {
    Random random(6);
    auto edge = [](double x) {
        return 975 - 110 * std::exp(-std::pow((x - 330) / 420, 2)) - 60 * std::exp(-std::pow((x - 1650) / 300, 2)) +
               9 * Fbm(x / 50, 2, 4, 5);
    };
    for (int x = 0; x < Width; ++x) {
        for (int y = int(edge(x)); y < Height; ++y) {
            const double warm = std::exp(-Length(Vec{(x - 430.0) / 190, (y - 925.0) / 70}));
            const double stone = Fbm(x / 13.0, y / 8.0, 4, 15);
            canvas.At(x, y) = Hex(0x141c2c) * (1.1 + 0.9 * stone) + Hex(0xff9a40) * (warm * (0.75 + 0.5 * stone));
        }
    }
    for (int i = 0; i < 3400; ++i) {
        const double x = random.Between(0, Width), y = edge(x) + random.Between(0, 110);
        const double warm = std::exp(-Length(Vec{(x - 430) / 150, (y - 925) / 60}));
        canvas.Line({x, y}, {x + random.Between(-5, 5), y - random.Between(5, 18)}, 1.4,
                    Hex(0x1c2b30) + Hex(0xd08030) * warm);
    }
    canvas.Glow({430, 900}, 230, Hex(0xff9030), 0.45);
    const Vec a{330, 945}, b{545, 945}, top{425, 812};
    canvas.Fill(
        {320, 800}, {560, 950},
        [=](Vec p) {
            return Polygon(p, {a, {350, 880}, top, {505, 880}, b});
        },
        [](Vec p, double) {
            const double lamp = std::exp(-Length(Vec{(p.x - 430) / 62, (p.y - 905) / 55}));
            return Mix(Hex(0xa8451c), Hex(0xffd98a), Clamp01(lamp * 1.35)) * (0.9 + 0.1 * std::sin(p.x / 7));
        });
    canvas.Area({{405, 945}, {427, 835}, {452, 945}}, Hex(0xfff0b8));
    canvas.Area({{420, 945}, {427, 900}, {436, 945}}, Hex(0x7a3a14));
    canvas.Path({{350, 880}, top, {505, 880}}, 3, Hex(0x6a2a10));
    for (int i = 0; i < 5; ++i) canvas.Line(top, Vec{290.0 + 65 * i, 952}, 1, Hex(0xc08050), 0.5);
    // Somebody looks up.
    canvas.Fill(
        {590, 850}, {660, 970},
        [](Vec p) {
            return std::min({Capsule(p, {620, 905}, {622, 935}, 11, 13), Circle(p, {618, 886}, 10),
                             Capsule(p, {615, 940}, {608, 968}, 6, 4), Capsule(p, {627, 940}, {634, 968}, 6, 4)});
        },
        Hex(0x0a0e18));
}

}  // namespace

Canvas StarrySky() {
    Canvas canvas(Width, Height);
    canvas.Each(Sky);
    DrawStars(canvas);
    DrawMoon(canvas, {250, 190}, 62);
    DrawRange(canvas, 800, 330, 520, Hex(0x3a4f80), 7);
    DrawRange(canvas, 850, 260, 330, Hex(0x22345c), 19);
    Random random(2);
    for (int i = 0; i < 330; ++i)
        DrawPine(canvas, {random.Between(0, Width), Shore + 2 - 14 * random.Next()}, random.Between(22, 74),
                 Hex(0x0e1c2c) * random.Between(0.8, 1.5), uint32_t(i));
    for (int y = int(Shore); y < Height; ++y) {
        for (int x = 0; x < Width; ++x) {
            const double depth = y - Shore, wave = Noise(x / 48.0, y / (2.2 + depth * 0.02), 66);
            canvas.At(x, y) =
                canvas.Sample(x + wave * (1 + depth * 0.05), 2 * Shore - 1 - y + wave * (1 + depth * 0.04)) *
                    Mix(0.85, 0.6, depth / 260) +
                Hex(0x04102a) * 0.4;
        }
    }
    DrawCamp(canvas);
    for (double x : {30.0, 120.0, 205.0, 1330.0, 1420.0, 1492.0, 1570.0})
        DrawPine(canvas, {x, 985 + 20 * std::sin(x)}, 330 + 200 * Hash(int(x), 3, 4), Hex(0x0a141c), uint32_t(x));
    canvas.Finish(0.2, 0.012, 3);
    return canvas;
}

}  // namespace pictures
