// Ridge behind ridge in the morning mist, a lake that mirrors them, pines in front.
#include "pictures.h"

namespace pictures {
using namespace paint;

namespace {

constexpr int Width = 1600, Height = 900;
constexpr double Shore = 640;
constexpr Vec Sun{1130, 330};

Rgb Sky(Vec p) {
    Rgb c = Ramp({Hex(0x3d5a99), Hex(0x7d83bf), Hex(0xd99bb0), Hex(0xf7b98c), Hex(0xfde3a9)}, p.y / 470);
    const double cloud = Smooth(0.02, 0.5, Fbm(p.x / 330, p.y / 75, 6, 41));
    c = Mix(c, Mix(Hex(0xfff0d0), Hex(0xe88f8f), Smooth(120, 360, std::abs(p.y - 260))), 0.75 * cloud);
    const double d = Length(p - Sun);
    return c + Hex(0xffc070) * (0.55 * std::exp(-d / 170)) + Hex(0xfff6d0) * Smooth(52, 44, d);
}

struct Ridgeline {
    double base, height, scale;
    Rgb top, foot;
};

double Crest(const Ridgeline& r, double x, uint32_t seed) {
    return r.base - r.height * (Ridge(x / r.scale, seed * 3.7, 6, seed) - 0.45) * 1.9;
}

void DrawRidge(Canvas& canvas, const Ridgeline& r, uint32_t seed) {
    for (int x = 0; x < Width; ++x) {
        const double crest = Crest(r, x, seed), slope = Crest(r, x + 6, seed) - Crest(r, x - 6, seed);
        for (int y = std::max(0, int(crest) - 1); y < Shore; ++y) {
            const double depth = y - crest;
            // Rock lit from the right: gullies run down from the crest.
            const double gully = Fbm((x + y * 0.45 + slope * 3) / 52, (y - x * 0.2) / 75.0, 6, seed + 9);
            const double light = Clamp01(0.5 + slope * 0.018 * std::exp(-depth / 90) + 0.55 * gully);
            Rgb c = Mix(r.top * 0.72, Mix(r.top, Hex(0xffd9a8), 0.35), light);
            const double mist = Smooth(0, 1, depth / (r.height * 1.25)) * 0.85;
            c = Mix(c, r.foot, mist * (0.85 + 0.3 * Noise(x / 160.0, y / 40.0, seed + 20)));
            canvas.At(x, y) = Mix(canvas.At(x, y), c, Clamp01(depth + 0.5));
        }
    }
}

void DrawLake(Canvas& canvas) {
    for (int y = int(Shore); y < Height; ++y) {
        const double depth = y - Shore;
        for (int x = 0; x < Width; ++x) {
            const double wave = Noise(x / 60.0, y / (2.5 + depth * 0.03), 60);
            const double ripple = Noise(x / 9.0, y / 2.2, 61);
            const Rgb mirror =
                canvas.Sample(x + wave * (2 + depth * 0.07), 2 * Shore - 1 - y + wave * (1 + depth * 0.08));
            Rgb c = mirror * Hex(0xc2cfe2) + Hex(0x0a1830) * 0.5;
            c = Mix(c, Hex(0x203a66), 0.06 + 0.3 * Smooth(0, 300, depth));
            if (ripple + 0.5 * wave > 0.62) c = Mix(c, Hex(0xffe9c4), 0.4 * std::exp(-std::abs(x - Sun.x) / 260));
            canvas.At(x, y) = c;
        }
    }
    canvas.Fill(
        {0, Shore - 8}, {Width, Shore + 8}, [](Vec p) { return std::abs(p.y - Shore) - 3; }, Hex(0xfbe6cf), 0.35, 12);
}

// A bank in front with grass, stones and flowers.
void DrawBank(Canvas& canvas) {
    Random random(5);
    auto edge = [](double x) {
        return 850 - 190 * std::exp(-std::pow((x - 40) / 330, 2)) - 120 * std::exp(-std::pow((x - 1610) / 260, 2)) +
               16 * Fbm(x / 60, 3, 4, 70);
    };
    for (int x = 0; x < Width; ++x)
        for (int y = int(edge(x)); y < Height; ++y)
            canvas.At(x, y) =
                Mix(Hex(0x46592f), Hex(0x14241c), Clamp01((y - edge(x)) / 120) + 0.3 * Fbm(x / 18.0, y / 12.0, 3, 71));
    for (int i = 0; i < 5200; ++i) {
        const double x = random.Between(0, Width), y = edge(x) + random.Between(-2, 210) * random.Next();
        if (y > Height + 10) continue;
        const Rgb blade = Mix(Mix(Hex(0x2c4a22), Hex(0x8a9a3c), random.Next()), Hex(0xf0c060), 0.25 * random.Next());
        canvas.Line({x, y}, {x + random.Between(-7, 7), y - random.Between(8, 26)}, 1.6, blade);
    }
    for (int i = 0; i < 420; ++i) {
        const double x = random.Between(0, Width), y = edge(x) + random.Between(4, 150);
        const Rgb petal = random.Of<Rgb>({Hex(0xf6d743), Hex(0xe85d75), Hex(0xffffff), Hex(0xb07be0), Hex(0xf29b38)});
        for (int k = 0; k < 5; ++k) canvas.Disc(Vec{x, y} + Polar(3.1, k * 2 * Pi / 5), 2.2, petal);
        canvas.Disc({x, y}, 1.8, Hex(0x7a4a12));
    }
}

}  // namespace

void DrawPine(Canvas& canvas, Vec foot, double height, Rgb colour, uint32_t seed) {
    Random random(seed);
    canvas.Line(foot, foot - Vec{0, height * 0.95}, std::max(1.5, height * 0.025), colour * 0.6);
    const int tiers = std::max(7, int(height / 9));
    for (int i = 0; i < tiers; ++i) {
        const double t = double(i) / tiers, y = foot.y - height * (0.08 + 0.9 * t);
        const double half = std::max(height * 0.03, height * 0.62 / tiers);
        const double reach = height * 0.23 * (1 - t) * random.Between(0.75, 1.15) + 1.5;
        for (int side = -1; side <= 1; side += 2) {
            const Vec tip{foot.x + side * reach * random.Between(0.8, 1.1), y + reach * random.Between(0.3, 0.5)};
            canvas.Area({{foot.x, y - half}, tip, {foot.x + side * reach * 0.4, y + half * 0.8}, {foot.x, y + half}},
                        colour * random.Between(0.75, 1.25) + Hex(0xffc880) * (side > 0 ? 0.05 : 0.0));
        }
    }
}

Canvas Mountains() {
    Canvas canvas(Width, Height);
    canvas.Each(Sky);
    const Ridgeline ridges[] = {{430, 150, 420, Hex(0xb79bb8), Hex(0xf6cdb0)},
                                {485, 170, 360, Hex(0x8f83ae), Hex(0xeebfae)},
                                {540, 150, 300, Hex(0x666f9f), Hex(0xd8b3b4)},
                                {585, 130, 270, Hex(0x45588a), Hex(0xb9a4b6)},
                                {628, 95, 240, Hex(0x2b4569), Hex(0x8f93ad)}};
    uint32_t seed = 12;
    for (const Ridgeline& r : ridges) DrawRidge(canvas, r, seed++);
    Random random(3);
    for (int i = 0; i < 260; ++i) {
        const double x = random.Between(0, Width), far = random.Next();
        DrawPine(canvas, {x, Shore + 1 - 26 * far}, random.Between(18, 46) * (1 - 0.4 * far),
                 Mix(Hex(0x1d3a3c), Hex(0x4c6480), far), uint32_t(i));
    }
    DrawLake(canvas);
    DrawBank(canvas);
    for (double x : {30.0, 96.0, 150.0, 228.0, 300.0, 1440.0, 1500.0, 1578.0})
        DrawPine(canvas, {x, 800 + 40 * std::sin(x)}, 250 + 170 * Hash(int(x), 1, 2), Hex(0x1b3026), uint32_t(x));
    for (int i = 0; i < 14; ++i) {  // a flight of birds
        const Vec p{420.0 + 27 * i + 9 * std::sin(i * 5.0), 190 + 34 * std::abs(i - 6) * 0.6 + 6 * std::sin(i * 3.0)};
        canvas.Path({p + Vec{-9, -5}, p, p + Vec{9, -5}}, 2, Hex(0x2a2c4c));
    }
    canvas.Finish(0.25, 0.012, 8);
    return canvas;
}

}  // namespace pictures
