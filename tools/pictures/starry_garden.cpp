// The garden from which one looks at the starry night.
#include "starry_sky.h"

namespace pictures {
using namespace paint;

namespace {

constexpr double WallTop = 918, WallFoot = 1000;
constexpr Vec Lantern{850, WallTop};

// What the lantern adds to a colour at a place.
Rgb ByLantern(Rgb c, Vec p) {
    return c + c * Hex(0xffb050) * (2.0 * std::exp(-Length(p - Lantern + Vec{0, 30}) / 130));
}

void DrawWall(Canvas& canvas) {
    const double width = canvas.Width(), height = canvas.Height();
    canvas.Fill(
        {0, WallFoot - 20}, {width, height}, [](Vec p) { return WallFoot + 5 * Fbm(p.x / 60, 1, 3, 40) - p.y; },
        [](Vec p, double) {
            return ByLantern(Mix(Hex(0x1c4a4a), Hex(0x0f2a3c), 0.5 + Fbm(p.x / 30, p.y / 16, 3, 41)), p);
        });
    auto wall = [=](Vec p) { return Box(p, {-9, WallTop + 3 * Noise(p.x / 40, 2, 42)}, {width + 9, WallFoot}); };
    canvas.Fill({0, WallTop}, {width, WallFoot + 5}, wall, [](Vec p, double) {
        if (p.y < WallTop + 15) return ByLantern(Hex(0x5a70a8) * (0.75 + 0.5 * Hash(int(p.x / 47), 1, 43)), p);
        const Cell stone = Cells(p.x / 36, p.y / 22, 44, 0.7);
        if (stone.second - stone.nearest < 0.1) return ByLantern(Hex(0x16204a), p);
        const Rgb face = Ramp({Hex(0x2a3a6a), Hex(0x44588a), Hex(0x5f6a98), Hex(0x6a6288)}, IdHash(stone.id, 1));
        return ByLantern(face * (1 + 0.3 * Noise(p.x / 9, p.y / 9, 45)), p);
    });
}

void DrawLantern(Canvas& canvas) {
    const Rgb iron = Hex(0x2a2438);
    auto at = [](double x, double y) { return Lantern + Vec{x, y}; };
    canvas.Glow(at(0, -40), 230, Hex(0xff9a38), 0.6);
    canvas.Area({at(-24, -8), at(24, -8), at(18, -74), at(-18, -74)}, Hex(0xffd870));
    canvas.Disc(at(0, -36), 13, Hex(0xfffbe0), 1, 8);
    for (double x : {-1.0, 1.0}) canvas.Line(at(24 * x, -6), at(18 * x, -76), 4, iron);
    canvas.Area({at(-29, 2), at(29, 2), at(25, -10), at(-25, -10)}, iron);
    canvas.Area({at(-26, -73), at(26, -73), at(9, -95), at(-9, -95)}, iron);
    canvas.Path(Curve({at(-11, -92), at(-13, -112), at(13, -112), at(11, -92)}, 6, false), 4, iron);
}

// A ginger cat sits with its back to us and looks at the moon.
void DrawCat(Canvas& canvas, Vec seat) {
    const std::vector<Vec> tail = Curve({{34, -12}, {66, 2}, {62, 46}, {74, 76}, {96, 70}}, 6, false);
    auto shape = [=](Vec p) {
        const Vec q = p - seat, mirrored{std::abs(q.x + 9), q.y};
        double d = std::min({Capsule(q, {0, -34}, {-3, -100}, 38, 23), Ellipse(q, {0, -24}, {50, 27}),
                             Ellipse(q, {-9, -136}, {32, 27})});
        d = std::min({d, Polygon(mirrored, {{5, -155}, {26, -182}, {31, -138}}), Polyline(q, tail, 10)});
        return d;
    };
    canvas.Fill(seat - Vec{90, 200}, seat + Vec{120, 100}, shape, [=](Vec p, double d) {
        const Vec q = p - seat;
        const double wave = std::sin(q.y / 7.5 + 2.2 * std::cos(q.x / 26)),
                     stripe = Smooth(0.2, 0.8, wave) * Smooth(4, 14, std::abs(q.x + 4));
        Rgb fur = Mix(Hex(0xe0802f), Hex(0x8a3c18), stripe * 0.85);
        fur = Mix(fur, Hex(0x7a3416), 0.6 * Smooth(5, 1, std::abs(q.x + 4)));  // the line along the back
        fur =
            fur * (0.8 + 0.3 * Noise(p.x / 6, p.y / 10, 46) - 0.2 * Smooth(-40, 0, q.y) + 0.15 * Smooth(-30, 30, q.x));
        return Mix(fur, q.x > -5 ? Hex(0xffd890) : Hex(0xa8d0f4), 0.8 * Smooth(-9, 0, d));
    });
}

// A frond of a palm, `reach` long, that leaves its top at an angle and hangs down.
void DrawFrond(Canvas& canvas, Random& random, Vec top, double angle, double reach, Rgb green) {
    std::vector<Vec> rib;
    for (int i = 0; i <= 20; ++i) {
        const double t = i / 20.0;
        rib.push_back(top + Vec{std::cos(angle) * t, std::sin(angle) * 0.75 * t + 0.55 * t * t} * reach);
    }
    for (size_t i = 3; i < rib.size(); i += 2)
        for (int side = -1; side <= 1; side += 2) {
            const Vec along = rib[i] - rib[i - 1], root = rib[i];
            const double length = reach * 0.27 * std::sin(Pi * (0.12 + 0.82 * double(i) / 20));
            const Vec tip = root + Turned(along * (length / Length(along)), side * 0.8) + Vec{0, length * 0.4};
            const bool upper = side * std::cos(angle) < 0;
            canvas.Fill(
                root - Vec{length + 9, length + 9}, root + Vec{length + 9, length * 1.5 + 9},
                [=](Vec p) { return Capsule(p, root, tip, 5.5, 1.5); },
                green * random.Between(0.6, 1.0) * (upper ? 1.7 : 1.0));
        }
    canvas.Path(rib, 5, Mix(green, Hex(0xd0f0c8), 0.55));
}

void DrawPalm(Canvas& canvas, Random& random, const std::vector<Vec>& through) {
    const std::vector<Vec> trunk = Curve(through, 10, false);
    for (size_t i = 1; i < trunk.size(); ++i) {
        const double w = Mix(34, 17, double(i) / double(trunk.size()));
        const Vec lit{w * 0.3, 0};
        canvas.Line(trunk[i - 1], trunk[i], w, i % 2 ? Hex(0x2a2c50) : Hex(0x35325a));
        canvas.Line(trunk[i - 1] + lit, trunk[i] + lit, w * 0.25, i % 2 ? Hex(0x7f9ac8) : Hex(0x5a6a9c));
    }
    const Vec top = trunk.back();
    for (int k = 0; k < 10; ++k) {  // from those behind, which hang lowest, to the upright ones
        const double off = (k % 2 ? 1 : -1) * (9.5 - k) * 0.235 + random.Between(-0.08, 0.08);
        const double reach = random.Between(175, 225), fresh = Clamp01(k / 9.0 + random.Between(-0.2, 0.2));
        DrawFrond(canvas, random, top, off - Pi / 2, reach, Mix(Hex(0x144a5a), Hex(0x3f9a6a), fresh));
    }
    for (int i = 0; i < 7; ++i)
        canvas.Disc(top + Polar(17, 0.3 + i * 0.42) + Vec{0, 10}, 11, Mix(Hex(0x5a3a34), Hex(0xa87a4a), random.Next()));
}

// An ellipse full of leaves, and flowers on them.
void DrawBlossoms(Canvas& canvas, Random& random, Vec at, Vec spread, int count, const std::vector<Rgb>& colours) {
    for (int i = 0; i < count * 2; ++i) {
        const Vec p = at + Vec{spread.x * random.Between(-1, 1), spread.y * random.Between(-1, 1)};
        if (Ellipse(p, at, spread) > 0) continue;
        const double s = random.Between(5, 9);
        if (i < count) {
            auto leaf = [=](Vec q) { return Ellipse(Turned(q - p, i * 1.7), {}, {s * 1.9, s * 0.8}); };
            const Rgb green = Mix(Hex(0x14484a), Hex(0x3f8a5c), random.Next());
            canvas.Fill(p - Vec{20, 20}, p + Vec{20, 20}, leaf, ByLantern(green, p));
            continue;
        }
        const double shade = random.Between(0.75, 1.05);
        const Rgb petal = ByLantern(random.Of(colours) * shade, p);
        for (int k = 0; k < 5; ++k)
            canvas.Disc(p + Polar(s * 0.75, k * 2 * Pi / 5 + i), s * 0.55, petal * (k == 1 ? 0.8 : 1.0));
        canvas.Disc(p, s * 0.35, Hex(0xffe890));
    }
}

}  // namespace

void DrawGarden(Canvas& canvas) {
    Random random(21);
    DrawWall(canvas);
    DrawLantern(canvas);
    DrawCat(canvas, {630, WallTop + 8});
    DrawPalm(canvas, random, {{95, 1090}, {130, 860}, {120, 640}, {165, 430}});
    DrawPalm(canvas, random, {{30, 1090}, {20, 900}, {-10, 700}, {15, 560}});
    const std::vector<Rgb> pinks = {Hex(0xf04f9a), Hex(0xd83a8a), Hex(0xff86b8), Hex(0xb84ac0)};
    const std::vector<Rgb> mixed = {Hex(0xfff4e0), Hex(0x8fb0ff), Hex(0xf7c84a), Hex(0xf07a5a), Hex(0xc08af0)};
    DrawBlossoms(canvas, random, {1450, 960}, {260, 110}, 420, pinks);
    DrawBlossoms(canvas, random, {160, 1010}, {260, 80}, 260,
                 {Hex(0x8fb0ff), Hex(0x6f86f0), Hex(0xc8d0ff), Hex(0xa07ae8)});
    DrawBlossoms(canvas, random, {760, 1060}, {560, 48}, 330, mixed);
}

}  // namespace pictures
