// Fallen leaves, acorns and berries on the ground of a wood.
#include "pictures.h"

namespace pictures {
using namespace paint;

namespace {

constexpr int Width = 1600, Height = 1200;

// The edge of a leaf as a closed line round the origin, stalk at +x, about one unit long.
std::vector<Vec> Outline(int kind) {
    std::vector<Vec> out;
    switch (kind) {
        case 0: {  // maple: lobes with teeth
            const double lobes[][2] = {{0.14, 0.30}, {0.42, 0.62}, {0.62, 0.33}, {0.95, 0.50}, {1.12, 0.82},
                                       {1.32, 0.62}, {1.5, 0.36},  {1.86, 0.62}, {2.04, 0.98}, {2.22, 0.66},
                                       {2.5, 0.40},  {2.84, 0.72}, {2.98, 0.84}, {3.14, 1.12}};
            for (auto [a, r] : lobes) out.push_back(Polar(r, a));
            for (int i = 12; i >= 0; --i) out.push_back(Polar(lobes[i][1], -lobes[i][0]));
            return out;
        }
        case 1: {  // oak: round lobes
            for (int side = 1; side >= -1; side -= 2)
                for (int i = 0; i <= 40; ++i) {
                    const double t = side > 0 ? i / 40.0 : 1 - i / 40.0;
                    const double half =
                        0.36 * std::sin(Pi * std::pow(t, 0.75)) * (0.74 + 0.26 * std::cos(t * 32)) + 0.02;
                    out.push_back({0.7 - 1.7 * t, side * half});
                }
            return out;
        }
        default: {  // birch, beech: pointed, toothed; 3: long and narrow
            const double width = kind == 2 ? 0.42 : 0.2;
            for (int side = 1; side >= -1; side -= 2)
                for (int i = 0; i <= 44; ++i) {
                    const double t = side > 0 ? i / 44.0 : 1 - i / 44.0;
                    out.push_back({0.75 - 1.75 * t, side * (width * std::sin(Pi * std::pow(t, 0.62)) *
                                                            (1 + 0.09 * ((i % 2) ? 1 : -0.3)))});
                }
            return out;
        }
    }
}

double Veins(int kind, Vec q) {
    double d = std::abs(q.y) + (q.x > 0.72 ? 1 : 0);
    if (kind == 0) {
        for (double a : {1.12, 2.04, 3.14159, -2.04, -1.12}) d = std::min(d, Segment(q, {0.2, 0}, Polar(0.85, a), 0));
        return d;
    }
    for (double x = 0.5; x > -0.85; x -= 0.2)
        for (int side = -1; side <= 1; side += 2) d = std::min(d, Segment(q, {x, 0}, {x - 0.22, side * 0.34}, -0.004));
    return d;
}

void DrawLeaf(Canvas& canvas, Random& random, Vec at, double size, double shade) {
    const int kind = random.Below(8) < 4 ? 0 : 1 + random.Below(3);
    static const std::vector<std::vector<Vec>> outlines = {Outline(0), Outline(1), Outline(2), Outline(3)};
    const std::vector<Vec>& edge = outlines[size_t(kind)];
    const double angle = random.Between(0, 6.3);
    const std::vector<Rgb> colours = {Hex(0xc8321e), Hex(0xe2571e), Hex(0xf08c1e), Hex(0xf4b92c),
                                      Hex(0xf6d84e), Hex(0xa8222a), Hex(0x8a4a1e), Hex(0xb9a43a),
                                      Hex(0x7a8a34), Hex(0x742038), Hex(0xd87a3a)};
    const Rgb a = random.Of(colours), b = random.Of(colours);
    const uint32_t seed = uint32_t(random.Below(9999));
    auto local = [=](Vec p) { return Turned(p - at, -angle) * (1 / size); };
    const Vec reach{size * 1.25 + 12, size * 1.25 + 12};
    auto shape = [&](Vec p) {
        const Vec q = local(p);
        if (std::abs(q.x) > 1.2 || std::abs(q.y) > 1.2) return 50.0;
        return size *
               std::min(Polygon(q, edge), Capsule(q, {0.15, 0}, {1.12, 0.06 * std::sin(angle * 7)}, 0.014, 0.022));
    };
    canvas.Fill(
        at - reach, at + reach,
        [&](Vec p) {
            return shape(p - Vec{7, 9});
        },
        Hex(0x120a06), 0.5, 16);
    canvas.Fill(at - reach, at + reach, shape, [&](Vec p, double d) {
        const Vec q = local(p);
        const double blend = Clamp01(0.5 + 1.1 * Fbm(q.x * 2.2, q.y * 2.2, 4, seed) + 0.5 * (0.35 - Length(q)));
        Rgb c = Mix(b, a, blend);
        c = Mix(c, Hex(0x5c2c14), 0.55 * Smooth(0.34, 0.5, Fbm(q.x * 9, q.y * 9, 3, seed + 4)));  // blotches
        c = c * (0.8 + 0.2 * Smooth(0, -5, d));
        const double vein = Veins(kind, q);
        c = Mix(c, Mix(b, Hex(0xffe9b0), 0.55), 0.7 * Smooth(0.022, 0.006, vein));
        const double curl = 0.94 + 0.22 * Noise(q.x * 1.6 + 3, q.y * 1.6, seed + 8);
        return c * curl * shade;
    });
}

void DrawAcorn(Canvas& canvas, Vec at, double size, double angle) {
    auto local = [=](Vec p) { return Turned(p - at, -angle) * (1 / size); };
    const Vec reach{size * 1.5, size * 1.5};
    canvas.Fill(
        at - reach, at + reach,
        [&](Vec p) {
            return size * Ellipse(local(p - Vec{6, 8}), {0.05, 0}, {0.9, 0.55});
        },
        Hex(0x100804), 0.55, 12);
    canvas.Fill(
        at - reach, at + reach,
        [&](Vec p) {
            const Vec q = local(p);
            return size * std::min(Ellipse(q, {0.1, 0}, {0.72, 0.46}), Capsule(q, {0.7, 0}, {0.95, 0}, 0.1, 0.02));
        },
        [&](Vec p, double) {
            const Vec q = local(p);
            return Mix(Hex(0x7a4a16), Hex(0xd89a44), Clamp01(0.6 - q.y * 1.4)) +
                   Hex(0xffffff) * (0.5 * std::exp(-std::pow((q.y + 0.2) / 0.07, 2) - std::pow((q.x - 0.2) / 0.3, 2)));
        });
    canvas.Fill(
        at - reach, at + reach,
        [&](Vec p) {
            const Vec q = local(p);
            return size * std::min(std::max(Ellipse(q, {-0.25, 0}, {0.5, 0.56}), q.x + 0.12),
                                   Capsule(q, {-0.6, 0}, {-1.05, 0.12}, 0.07, 0.05));
        },
        [&](Vec p, double) {
            const Vec q = local(p);
            const Cell scale = Cells(q.x * 9, q.y * 9, 3, 0.3);
            return Mix(Hex(0x8f6a3c), Hex(0x4a3016), Smooth(0.2, 0.6, scale.nearest)) * (1.1 - 0.5 * (q.y + 0.3));
        });
}

}  // namespace

Canvas AutumnLeaves() {
    Canvas canvas(Width, Height);
    canvas.Each([](Vec p) { return Mix(Hex(0x1e140c), Hex(0x4a3420), 0.5 + 0.8 * Fbm(p.x / 30, p.y / 30, 5, 7)); });
    Random random(17);
    constexpr int Leaves = 560;
    for (int i = 0; i < Leaves; ++i) {
        const double t = double(i) / Leaves;
        DrawLeaf(canvas, random, {random.Between(-30, Width + 30), random.Between(-30, Height + 30)},
                 random.Between(58, 118), Mix(0.5, 1.08, std::pow(t, 0.8)));
    }
    for (int i = 0; i < 13; ++i)
        DrawAcorn(canvas, {random.Between(60, Width - 60), random.Between(60, Height - 60)}, random.Between(26, 38),
                  random.Between(0, 6.3));
    for (int i = 0; i < 10; ++i) {  // berries
        const Vec at{random.Between(60, Width - 60), random.Between(60, Height - 60)};
        for (int k = 0; k < 6; ++k) {
            const Vec p = at + Polar(random.Between(6, 26), random.Between(0, 6.3));
            canvas.Disc(p + Vec{4, 5}, 11, Hex(0x100404), 0.5, 7);
            canvas.Fill(
                p - Vec{13, 13}, p + Vec{13, 13}, [=](Vec q) { return Circle(q, p, 11); },
                [=](Vec q, double) {
                    return Mix(Hex(0xe8322a), Hex(0x6a0c14), Clamp01(Length(q - p + Vec{4, 5}) / 17));
                });
            canvas.Disc(p - Vec{3.5, 4}, 2.4, Hex(0xffffff), 0.8, 1.5);
        }
    }
    canvas.Finish(0.28, 0.012, 12);
    return canvas;
}

}  // namespace pictures
