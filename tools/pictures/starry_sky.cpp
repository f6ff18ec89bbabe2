// A starry night over a bay, in oil: a village on the shore, its lights in the water.
#include "starry_sky.h"

#include "paint/brush.h"
#include "pictures.h"

namespace pictures {
using namespace paint;

namespace {

constexpr int Width = 1600, Height = 1067;

// How far a place lies from the middle of the Milky Way, in its half widths; it climbs to the right.
double OffMilkyWay(Vec p) {
    return (p.y - (700 - 0.47 * p.x - 55 * std::sin(p.x / 230)) + 80 * Fbm(p.x / 240, p.y / 240, 3, 20)) / 115;
}

// The stars' river flows along itself, the rest of the sky in slow eddies around it.
double SkyWay(Vec p) {
    auto level = [](Vec q) { return OffMilkyWay(q) * 0.55 + 1.5 * Fbm(q.x / 330, q.y / 270, 3, 3); };
    return std::atan2(level(p) - level(p + Vec{2, 0}), level(p + Vec{0, 2}) - level(p));
}

Rgb Sky(Vec p) {
    Rgb c =
        Ramp({Hex(0x0b1246), Hex(0x15257a), Hex(0x1f459c), Hex(0x2f78b8), Hex(0x58aeb8), Hex(0xb8d0a4), Hex(0xf0c890)},
             p.y / 625);
    c = c * (1 + 0.45 * Fbm(p.x / 170, p.y / 110, 4, 23));
    c = Mix(c, Hex(0x5a2f9a), 0.5 * Smooth(0, 0.6, Fbm(p.x / 330 + 4, p.y / 260, 3, 24)) * Smooth(520, 250, p.y));
    const double off = OffMilkyWay(p), veil = Fbm(p.x / 120, p.y / 120, 5, 21);
    const double glow = std::exp(-off * off * 1.2) * Clamp01(0.62 + 0.95 * veil);
    const Rgb tint = Ramp({Hex(0x3f7fe0), Hex(0x6f55d8), Hex(0xb84fc0), Hex(0xe8709a)},
                          0.5 + 0.95 * Fbm(p.x / 180, p.y / 180, 3, 26));
    c = Mix(c, Ramp({tint * 0.8, tint, Mix(tint, Hex(0xffd8c8), 0.55), Hex(0xffefc8), Hex(0xfffbe8)}, glow),
            Clamp01(1.25 * glow));
    const double lane =
        std::exp(-std::pow((off + 0.1 + 0.6 * veil) / 0.17, 2)) * Smooth(-0.15, 0.2, Fbm(p.x / 100, p.y / 100, 4, 25));
    c = Mix(c, Hex(0x1f2478), 0.8 * lane * Smooth(1.4, 0.4, std::abs(off)));
    const double far = Length(p - StarryMoon);
    return Mix(c, Hex(0xbfe4e4), 0.75 * std::exp(-far / 110));
}

void DrawMoon(Canvas& canvas) {
    const double r = 62;
    canvas.Disc(StarryMoon, r + 5, Hex(0x4f86b8), 0.7, 10);
    canvas.Fill(
        StarryMoon - Vec{r, r}, StarryMoon + Vec{r, r},
        [=](Vec p) {
            return std::max(Circle(p, StarryMoon, r), -Circle(p, StarryMoon + Vec{25, -14}, r * 0.86));
        },
        [=](Vec p, double) {
            return Mix(Hex(0xffd468), Hex(0xfffbe0), Clamp01(0.6 + 0.8 * Fbm(p.x / 22, p.y / 22, 4, 9)));
        });
}

// The big stars throw rays.
void DrawBigStars(Canvas& canvas) {
    Random random(79);
    std::vector<Vec> big;
    for (int i = 0; i < 2000 && big.size() < 26; ++i) {
        const Vec p{random.Between(20, Width - 20), random.Between(20, 450)};
        bool room = Length(p - StarryMoon) > 170;
        for (Vec other : big) room = room && Length(p - other) > 125;
        if (!room) continue;
        big.push_back(p);
        const double s = random.Between(6, 11);
        const Rgb tint = random.Of<Rgb>({Hex(0xffe07a), Hex(0xbfe4ff), Hex(0xffb890), Hex(0xfff4c0)});
        canvas.Glow(p, s * 6, tint, 0.4);
        for (int k = 0; k < 8; ++k) {
            const double a = k * Pi / 4 + 0.3 * s, reach = s * (k % 2 == 0 ? 4.2 : 2.6);
            canvas.Fill(
                p - Vec{reach, reach}, p + Vec{reach, reach},
                [=](Vec q) { return Capsule(q, p + Polar(s * 1.3, a), p + Polar(reach, a), s * 0.3, s * 0.12); }, tint);
        }
        canvas.Disc(p, s, Mix(tint, Hex(0xffffff), 0.75));
    }
}

void DrawShootingStar(Canvas& canvas, Vec head, Vec tail) {
    canvas.Fill(
        head - Vec{20, 150}, tail + Vec{20, 150}, [=](Vec p) { return Capsule(p, head, tail, 7, 1); },
        [=](Vec p, double) { return Mix(Hex(0xfffbe0), Hex(0x4f80d0), Length(p - head) / Length(tail - head)); });
    canvas.Glow(head, 40, Hex(0xfff0c0), 0.6);
}

// The small ones are dabs on the dry paint; they crowd in the Milky Way.
void DrawSmallStars(Canvas& canvas, const std::function<bool(Vec)>& isSky) {
    Random random(77);
    const std::vector<Rgb> tints = {Hex(0xffffff), Hex(0xcfe6ff), Hex(0xfff0b0), Hex(0xffd0a0), Hex(0xffffff)};
    for (int i = 0; i < 3600; ++i) {
        const Vec p{random.Between(0, Width), random.Between(0, 600)};
        const double off = OffMilkyWay(p);
        if (random.Next() > 0.22 + 0.78 * std::exp(-off * off) || Length(p - StarryMoon) < 85 || !isSky(p)) continue;
        const double size = 1.0 + 2.4 * std::pow(random.Next(), 5);
        const Vec along = Polar(size * 0.7, SkyWay(p));
        canvas.Line(p - along, p + along, size * 1.7, random.Of(tints), random.Between(0.5, 1) * Smooth(620, 480, p.y));
    }
}

}  // namespace

Canvas StarrySky() {
    Canvas canvas(Width, Height);
    canvas.Each(Sky);
    DrawMoon(canvas);
    DrawBigStars(canvas);
    DrawShootingStar(canvas, {872, 172}, {1062, 58});
    const Canvas sky = canvas;
    DrawBay(canvas);
    DrawGarden(canvas);
    const Canvas rough = canvas.Reduced(4);
    auto lightness = [&](double x, double y) {
        const Rgb c = rough.Sample(x / 4, y / 4);
        return c.r + c.g + c.b;
    };
    auto isSky = [&](Vec p) {
        const Rgb here = canvas.Sample(p.x, p.y), above = sky.Sample(p.x, p.y);
        return here.r == above.r && here.g == above.g;
    };
    auto way = [&](Vec p) {
        if (isSky(p)) return SkyWay(p);
        // Things on the ground are stroked along their edges, what has none as water lies or grass stands.
        const double gx = lightness(p.x + 5, p.y) - lightness(p.x - 5, p.y),
                     gy = lightness(p.x, p.y + 5) - lightness(p.x, p.y - 5);
        return std::hypot(gx, gy) > 0.12 ? std::atan2(gx, -gy) : 0.25 * Noise(p.x / 60, p.y / 60, 7);
    };
    Canvas painting =
        PaintedOver(canvas, {{13, 8, 0, 0.17}, {8, 8, 0.1, 0.13}, {4.5, 6, 0.09, 0.07}, {2.6, 4, 0.11, 0.03}}, way, 5);
    DrawSmallStars(painting, isSky);
    painting.Finish(0.15, 0, 3);
    return painting;
}

}  // namespace pictures
