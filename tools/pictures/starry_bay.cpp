// The bay of the starry night: bare domes of rock, a village with its lamps lit, boats.
#include "countryside.h"
#include "paint/terrain.h"
#include "starry_sky.h"

namespace pictures {
using namespace paint;

namespace {

constexpr Eye Bay{120, 610, 1300, 420, 12000};

struct Dome {
    double x, z, height, radius, steep;
};
constexpr Dome Domes[] = {{-640, 3500, 690, 300, 3.2},  {-330, 3400, 270, 330, 2},  {-1500, 4600, 480, 700, 1.6},
                          {-2150, 5200, 760, 620, 2.4}, {800, 1500, 250, 640, 1.5}, {1250, 1750, 380, 620, 1.6},
                          {430, 1020, 70, 300, 1.5}};

double Land(double x, double z) {
    const double wx = x + 60 * Fbm(x / 300, z / 300, 3, 31), wz = z + 60 * Fbm(x / 300 + 5, z / 300, 3, 32);
    double h = -12;
    for (const Dome& d : Domes) {
        const double far = Length({wx - d.x, wz - d.z}) / d.radius;
        if (far < 1) h = std::max(h, (d.height + 12) * (1 - std::pow(far, d.steep)) - 12);
    }
    if (z > 5200) {
        const double range = Smooth(5600, 8600, z + 500 * Fbm(x / 1500, 3, 2, 33));
        const double wave = Ridge(x / 2600 + 2, z / 2600, 3, 34) - 0.3;
        h = std::max(h, -12 + range * (200 + 1900 * wave + 160 * Fbm(x / 420, z / 420, 3, 38)));
    }
    return h > 0 ? h + 9 * Fbm(x / 60, z / 60, 4, 35) * Smooth(0, 30, h) : h;
}

// Water has the sky in it, and a path of moonlight.
Rgb Water(Spot s, const Canvas& backdrop) {
    const Vec at = Bay.OnCanvas(backdrop, s);
    const double near = Smooth(4000, 450, s.z);
    const double wave = Noise(s.x / 16, s.z / 12, 60) + 0.6 * Noise(s.x / 50, s.z / 40, 61);
    const Rgb mirrored = backdrop.Sample(at.x + 14 * wave * near, 2 * Bay.horizon - at.y + (26 * wave - 40) * near);
    const Rgb c = Mix(mirrored * Hex(0x86a8e6), Hex(0x0f2a5c), 0.35 * near) * (1 + 0.25 * wave);
    const double path = std::exp(-std::pow((at.x - StarryMoon.x) / (26 + 60 * near), 2));
    return Mix(c, Hex(0xfff0b0), path * Smooth(-0.1, 0.5, wave));
}

// Woods, and bare rock where it is steep, in the light of the moon from the left.
Rgb Shade(Spot s, const Canvas& backdrop) {
    if (s.h <= 0) return Water(s, backdrop);
    const double e = std::max(1.5, s.z * 0.0012);
    const double hx = (Land(s.x + e, s.z) - Land(s.x - e, s.z)) / (2 * e);
    const double hz = (Land(s.x, s.z + e) - Land(s.x, s.z - e)) / (2 * e);
    const double steep = std::hypot(hx, hz), lit = Clamp01((hx * 0.75 + 0.4 + hz * 0.4) / std::hypot(steep, 1));
    const Rgb wood = Ramp({Hex(0x123a4a), Hex(0x1f5a58), Hex(0x3f7a58)}, 0.5 + 0.8 * Fbm(s.x / 40, s.z / 40, 3, 36));
    const Rgb rock = Ramp({Hex(0x3a4478), Hex(0x5a5f94), Hex(0x7f7aa4)}, 0.5 + 0.8 * Fbm(s.x / 90, s.h / 60, 4, 37));
    const Rgb light = Hex(0x5a62c0) * 0.75 + Rgb{1.2, 1.45, 1.55} * (1.7 * lit * lit);
    return Mix(Mix(wood, rock, Smooth(0.7, 1.2, steep)) * light, Hex(0x5f96c0), 0.7 * (1 - std::exp(-s.z / 11000)));
}

// The light of a lamp on the water below it: short strokes, wider apart the farther.
void DrawGleam(Canvas& canvas, Random& random, Vec from, double length, Rgb light) {
    for (double t = 0; t < 1; t += 2.6 / length) {
        const double half = (3 + 7 * t) * random.Between(0.3, 1);
        const Vec at = from + Vec{random.Between(-1, 1) * (2 + 5 * t), t * length};
        canvas.Line(at - Vec{half, 0}, at + Vec{half, 0}, 2.2, light, 0.9 * (1 - t * 0.8));
    }
}

void DrawBoat(Canvas& canvas, Random& random, Vec middle, double size, Rgb hull, Rgb sail) {
    auto at = [=](double x, double y) { return middle + Vec{x, -y} * size; };
    canvas.Fill(
        at(-1, 0), at(1, -1),
        [=](Vec p) {
            return Ellipse(p, at(0, -0.28), Vec{0.9, 0.2} * size);
        },
        Hex(0x0a1a40), 0.7, size * 0.15);
    DrawGleam(canvas, random, at(0.62, -0.22), size * 1.8, Hex(0xffc860));
    canvas.Area({at(-1, 0.2), at(1.05, 0.26), at(0.72, -0.2), at(-0.75, -0.2)}, hull);
    canvas.Line(at(-0.98, 0.18), at(1.03, 0.24), size * 0.09, Hex(0xfff0d0));
    canvas.Line(at(-0.05, 0.2), at(-0.05, 1.95), size * 0.06, Hex(0x5a3a2a));
    canvas.Area({at(0, 1.9), at(0.78, 0.36), at(0.02, 0.34)}, sail);
    canvas.Area({at(-0.1, 1.7), at(-0.1, 0.36), at(-0.75, 0.34)}, sail * 0.8);
    canvas.Glow(at(0.62, 0.5), size * 1.1, Hex(0xffb040), 0.8);
    canvas.Disc(at(0.62, 0.5), size * 0.12, Hex(0xfff4c0));
}

struct Place {
    Vec at;  // x and z
    enum { Tree, House, Chapel } kind;
};

std::vector<Place> Places() {
    Random random(12);
    std::vector<Place> list = {{{545, 1180}, Place::Chapel}};
    for (int i = 0; i < 9000 && list.size() < 190; ++i) {
        const Vec at{random.Between(100, 1250), random.Between(800, 1800)};
        const bool house = list.size() < 44;
        bool room = Land(at.x, at.y) > 4 && at.x / at.y < 0.63;
        for (const Place& other : list) {
            const bool chapel = other.kind == Place::Chapel;  // stands alone, nothing before it
            const Vec off{at.x - other.at.x, (at.y - other.at.y) * (chapel && at.y < other.at.y ? 0.6 : 1)};
            room = room && Length(off) > (chapel ? 120 : house ? 62 : 24);
        }
        if (room) list.push_back({at, house ? Place::House : Place::Tree});
    }
    std::sort(list.begin(), list.end(), [](const Place& a, const Place& b) { return a.at.y > b.at.y; });
    return list;
}

void DrawVillage(Canvas& canvas) {
    Random random(12);
    for (const Place& place : Places()) {
        const Vec foot = Bay.OnCanvas(canvas, {place.at.x, place.at.y, Land(place.at.x, place.at.y)});
        const double unit = Bay.focal / place.at.y;
        switch (place.kind) {
            case Place::Chapel:
                canvas.Glow(foot - Vec{0, unit * 40}, unit * 130, Hex(0xffa040), 0.45);
                DrawChapel(canvas, foot, unit * 125, Hour::Night);
                break;
            case Place::House:
                canvas.Glow(foot - Vec{0, unit * 8}, unit * 50, Hex(0xffa040), 0.35);
                DrawCottage(canvas, random, foot, unit * random.Between(34, 44), Hour::Night);
                break;
            case Place::Tree: {
                const Rgb leaves = Ramp({Hex(0x3f8a6a), Hex(0x5fa860), Hex(0x9ab060)}, random.Next());
                DrawTree(canvas, random, foot, unit * random.Between(26, 44), leaves, Hour::Night);
                break;
            }
        }
    }
}

// Lamps along the quay, where the hill comes down to the water.
void DrawQuay(Canvas& canvas) {
    Random random(14);
    for (double column = 985; column < canvas.Width(); column += 38) {
        const double across = (column - canvas.Width() / 2.0) / Bay.focal;
        double z = Bay.nearest;
        while (z < 2500 && Land(across * z, z) < 2) z *= 1.004;
        const Vec at = Bay.OnCanvas(canvas, {across * z, z, 2}), lamp = at - Vec{0, 22};
        DrawGleam(canvas, random, at + Vec{0, 6}, 70, Hex(0xffc060));
        canvas.Line(at, lamp, 2.5, Hex(0x2a2a48));
        canvas.Glow(lamp, 46, Hex(0xffa848), 0.6);
        canvas.Disc(lamp, 4.5, Hex(0xfff0b0));
    }
}

}  // namespace

void DrawBay(Canvas& canvas) {
    const Canvas backdrop = canvas;
    DrawTerrain(
        canvas, Bay, 0.003, [](double x, double z) { return std::max(0.0, Land(x, z)); },
        [&](Spot s) { return Shade(s, backdrop); });
    Random random(4);
    for (int i = 0; i < 70; ++i) {  // lamps along the far shore
        const Vec at{random.Between(0, 1150), random.Between(630, 637)};
        const Rgb light = random.Of<Rgb>({Hex(0xffd070), Hex(0xffe8a8), Hex(0xffa850)});
        DrawGleam(canvas, random, at + Vec{0, 4}, random.Between(12, 40), light);
        canvas.Disc(at, 2.4, light);
    }
    DrawVillage(canvas);
    DrawQuay(canvas);
    DrawBoat(canvas, random, {640, 690}, 22, Hex(0x8a3a3a), Hex(0xc8d0e0));
    DrawBoat(canvas, random, {870, 725}, 32, Hex(0x2f5a8a), Hex(0xe8c0a0));
    DrawBoat(canvas, random, {500, 770}, 40, Hex(0x3a7a5a), Hex(0xd8d8f0));
    DrawBoat(canvas, random, {760, 822}, 52, Hex(0xa84a3a), Hex(0xf0d8a8));
}

}  // namespace pictures
