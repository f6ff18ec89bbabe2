// A bed of flowers, each a formula: rings of petals round a heart.
#include "pictures.h"

namespace pictures {
using namespace paint;

namespace {

constexpr int Width = 1600, Height = 1200;

struct Petals {
    int count;
    double inner, outer, width;  // in radii of the flower
    double point;                // 0 round, 1 pointed
    Rgb root, tip;
};

void DrawRing(Canvas& canvas, Vec at, double r, double turn, const Petals& k, uint32_t seed) {
    for (int pass = 0; pass < 2; ++pass) {
        for (int i = pass; i < k.count; i += 2) {
            const double angle = turn + i * 2 * Pi / k.count + 0.12 * (Hash(i, 1, seed) - 0.5);
            const double stretch = 0.92 + 0.16 * Hash(i, 2, seed);
            const double reach = k.outer * r * stretch, from = k.inner * r;
            auto shape = [=](Vec p) {
                const Vec q = Turned(p - at, -angle);
                const double t = Clamp01((q.x - from) / (reach - from));
                const double round = std::sqrt(std::max(0.0, 1 - std::pow(2 * t - 1, 2))) * (0.6 + 0.4 * t),
                             sharp = std::sin(Pi * std::pow(t, 0.75)) * 0.95;
                const double half = k.width * r * Mix(round, sharp, k.point);
                return std::max({std::abs(q.y) - half, from - q.x, q.x - reach});
            };
            canvas.Fill(
                at - Vec{reach + 6, reach + 6}, at + Vec{reach + 6, reach + 6},
                [=](Vec p) {
                    return shape(p - Vec{2, 3});
                },
                Hex(0x101a10), 0.35, 5);
            canvas.Fill(at - Vec{reach + 2, reach + 2}, at + Vec{reach + 2, reach + 2}, shape, [=](Vec p, double d) {
                const Vec q = Turned(p - at, -angle);
                const double t = Clamp01((q.x - from) / (reach - from));
                Rgb c = Mix(k.root, k.tip, Smooth(0.05, 0.8, t));
                c = c * (1 + 0.10 * std::sin(q.y / (k.width * r) * 13 + 2 * Noise(q.x / 9, q.y / 5, seed)));  // veins
                const double light =
                    0.82 + 0.22 * Clamp01(0.5 - 0.5 * std::sin(angle + 0.7) - 0.5 * q.y / (k.width * r));
                return c * light * (0.78 + 0.22 * Smooth(0, -5, d));
            });
        }
    }
}

// A heart of seeds, each one golden angle on from the last.
void DrawHeart(Canvas& canvas, Vec at, double r, Rgb outer, Rgb inner) {
    canvas.Disc(at + Vec{1, 2}, r * 1.06, Hex(0x201408), 0.45, 4);
    canvas.Disc(at, r, outer * 0.55);
    const int n = int(r * r / 7);
    for (int i = n - 1; i >= 0; --i) {
        const double t = std::sqrt(double(i) / n);
        const Vec p = at + Polar(r * t * 0.97, i * 2.39996);
        canvas.Disc(p, 1.5 + 0.5 * t,
                    Mix(inner, outer, t) * (0.8 + 0.35 * Clamp01(0.5 - (p.x - at.x + p.y - at.y) / (2 * r))));
    }
}

void DrawLeaf(Canvas& canvas, Vec at, double length, double angle, Rgb colour) {
    auto shape = [=](Vec p) {
        const Vec q = Turned(p - at, -angle);
        const double t = q.x / length;
        return t < 0 || t > 1
                   ? std::max(-q.x, q.x - length) + std::abs(q.y)
                   : std::abs(q.y) - length * 0.26 * std::sin(Pi * std::pow(t, 0.8)) * (1 + 0.05 * std::sin(t * 60));
    };
    const Vec reach{length + 6, length + 6};
    canvas.Fill(
        at - reach, at + reach,
        [=](Vec p) {
            return shape(p - Vec{4, 6});
        },
        Hex(0x040a06), 0.5, 8);
    canvas.Fill(at - reach, at + reach, shape, [=](Vec p, double) {
        const Vec q = Turned(p - at, -angle);
        const double vein = std::abs(std::fmod(std::abs(q.x - std::abs(q.y) * 1.1) / length * 9, 1.0) - 0.5);
        Rgb c = colour * (q.y > 0 ? 1.12 : 0.82);
        if (std::abs(q.y) < 1.3 || vein < 0.06) c = Mix(c, Hex(0xc8e0a0), 0.45);
        return c * (0.85 + 0.25 * q.x / length);
    });
}

struct Kind {
    Rgb outer, mid, heart;
};

void DrawFlower(Canvas& canvas, Random& random, Vec at, double r) {
    const std::vector<Kind> kinds = {
        {Hex(0xfdf8ef), Hex(0xf4e6d0), Hex(0xf2b51d)}, {Hex(0xe8365d), Hex(0xa5123c), Hex(0xf5c542)},
        {Hex(0xf6a81c), Hex(0xd95f0e), Hex(0x5a2a0c)}, {Hex(0xb06be0), Hex(0x6a2fa8), Hex(0xf8d85a)},
        {Hex(0xf78fb3), Hex(0xd8447e), Hex(0xfbe08a)}, {Hex(0x5d8df0), Hex(0x2a4fc0), Hex(0xfff0a0)},
        {Hex(0xfbdf4b), Hex(0xf0a015), Hex(0x7a3f10)}, {Hex(0xf2672e), Hex(0xb7271a), Hex(0x2a1408)},
        {Hex(0xf8d3e0), Hex(0xe88fb5), Hex(0xb8d060)}, {Hex(0xd04fc0), Hex(0x8a1f80), Hex(0xf2e04a)},
        {Hex(0x8fd0f0), Hex(0x3f8fd0), Hex(0xf7e58a)}, {Hex(0xc7284a), Hex(0x5f0c2a), Hex(0x1c0a10)}};
    const Kind& k = random.Of(kinds);
    const double turn = random.Between(0, 6.3);
    const uint32_t seed = uint32_t(random.Below(100000));
    switch (random.Below(6)) {
        case 0:  // daisy
            DrawRing(canvas, at, r, turn, {random.Below(8) + 16, 0.15, 1.0, 0.105, 0.3, k.mid, k.outer}, seed);
            DrawHeart(canvas, at, r * 0.27, k.heart, k.heart * 0.75 + Hex(0x503000) * 0.3);
            break;
        case 1:  // dahlia, ring within ring
            for (int i = 0; i < 6; ++i)
                DrawRing(
                    canvas, at, r, turn + i * 0.21,
                    {20 - i * 2, 0.05, 1.0 - i * 0.155, 0.15 - i * 0.008, 0.75, k.mid, Mix(k.outer, k.mid, i * 0.12)},
                    seed + uint32_t(i));
            DrawHeart(canvas, at, r * 0.1, k.heart, k.mid);
            break;
        case 2:  // broad petals
            DrawRing(canvas, at, r, turn, {6, 0.04, 1.0, 0.42, 0.12, k.mid, k.outer}, seed);
            DrawRing(canvas, at, r * 0.62, turn + 0.5, {6, 0.04, 1.0, 0.4, 0.12, k.mid * 0.8, k.mid}, seed + 3);
            DrawHeart(canvas, at, r * 0.17, k.heart, k.heart * 0.6);
            break;
        case 3:  // sunflower
            DrawRing(canvas, at, r, turn, {21, 0.2, 1.0, 0.11, 0.9, k.mid, k.outer}, seed);
            DrawRing(canvas, at, r * 0.86, turn + 0.15,
                     {21, 0.2, 1.0, 0.12, 0.9, k.mid, Mix(k.outer, Hex(0xffffff), 0.15)}, seed + 5);
            DrawHeart(canvas, at, r * 0.42, Hex(0x8a5a1c), Hex(0x3a1e0a));
            break;
        case 4:  // rose: petals wound inwards
            for (int i = 0; i < 7; ++i)
                DrawRing(canvas, at, r * (1 - i * 0.125), turn + i * 1.3,
                         {5, 0.0, 1.0, 0.5, 0.0, Mix(k.mid, Hex(0x200010), 0.1 * i), Mix(k.outer, k.mid, 0.1 * i)},
                         seed + uint32_t(i));
            break;
        default:  // pansy with a dark face
            DrawRing(canvas, at, r, turn, {5, 0.02, 1.0, 0.5, 0.0, k.heart, k.outer}, seed);
            DrawRing(canvas, at, r * 0.6, turn, {5, 0.02, 1.0, 0.3, 0.6, k.heart, k.mid * 0.6}, seed + 9);
            DrawHeart(canvas, at, r * 0.12, Hex(0xfff2a0), Hex(0xf0b020));
    }
}

}  // namespace

Canvas Garden() {
    Canvas canvas(Width, Height);
    canvas.Each([](Vec p) { return Mix(Hex(0x0c1f12), Hex(0x1e4426), 0.5 + 0.6 * Fbm(p.x / 90, p.y / 90, 5, 2)); });
    Random random(31);
    for (int i = 0; i < 1500; ++i)
        DrawLeaf(canvas, {random.Between(-40, Width), random.Between(-40, Height)}, random.Between(45, 115),
                 random.Between(0, 6.3),
                 Mix(Mix(Hex(0x1f5a2e), Hex(0x5f9a3c), random.Next()), Hex(0x2f7a6a), 0.4 * random.Next()) *
                     Mix(0.55, 1.05, i / 1500.0));
    struct Spot {
        Vec at;
        double r;
    };
    std::vector<Spot> spots;
    for (int i = 0; i < 9000; ++i) {
        const double r = i < 400 ? random.Between(88, 128) : i < 2500 ? random.Between(52, 84) : random.Between(24, 46);
        const Vec at{random.Between(10, Width - 10), random.Between(10, Height - 10)};
        bool free = true;
        for (const Spot& s : spots) free = free && Length(s.at - at) > (s.r + r) * 0.86;
        if (free) spots.push_back({at, r});
    }
    for (size_t i = spots.size(); i-- > 0;) DrawFlower(canvas, random, spots[i].at, spots[i].r);
    for (int i = 0; i < 7; ++i) {  // ladybirds
        const Vec at{random.Between(80, Width - 80), random.Between(80, Height - 80)};
        const double a = random.Between(0, 6.3);
        canvas.Disc(at + Vec{3, 4}, 13, Hex(0x000000), 0.4, 6);
        canvas.Disc(at + Polar(11, a), 7, Hex(0x16161c));
        canvas.Disc(at, 12.5, Hex(0xd8261c));
        canvas.Line(at - Polar(12, a), at + Polar(12, a), 1.8, Hex(0x16161c));
        for (double side : {-0.9, 0.9})
            for (double along : {-5.0, 3.0})
                canvas.Disc(at + Polar(along, a) + Polar(5.5, a + side * Pi / 1.8), 2.4, Hex(0x16161c));
        canvas.Disc(at + Vec{-4, -5}, 2.2, Hex(0xffffff), 0.6);
    }
    canvas.Finish(0.25, 0.01, 5);
    return canvas;
}

}  // namespace pictures
