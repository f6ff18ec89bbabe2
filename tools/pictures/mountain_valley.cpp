// What stands in the valley of the mountains and on the hill in front of it.
#include "countryside.h"
#include "mountains.h"

namespace pictures {
using namespace paint;

namespace {

// Whether no hill hides a spot.
bool InSight(Spot s) {
    for (double t = 0.3; t < 0.98; t += 0.02)
        if (ValleyGround(s.x * t, s.z * t, 5) + 6 > Mix(Valley.height, s.h + 8, t)) return false;
    return true;
}

// A white bird; `beat` from -1, wings low, to 1, wings high.
void DrawHeron(Canvas& canvas, Vec middle, double size, double beat) {
    const Rgb lit = Hex(0xfffaf0), shade = Hex(0xb4aacc);
    auto at = [=](double x, double y) { return middle + Vec{x, -y} * size; };
    const double bend = 0.42 * beat, tip = bend - 0.06;
    canvas.Area({at(-0.2, 0), at(-0.42, bend), at(-0.95, tip), at(-0.34, bend - 0.24), at(0.1, -0.1)}, shade);
    canvas.Fill(
        at(-1, 1), at(1, -1), [=](Vec p) { return Capsule(p, at(-0.34, -0.06), at(0.2, 0), size * 0.05, size * 0.11); },
        lit);
    canvas.Path(Curve({at(0.2, 0), at(0.36, -0.1), at(0.42, 0.06), at(0.55, 0.05)}, 5, false), size * 0.07, lit);
    canvas.Line(at(0.55, 0.05), at(0.72, 0.02), size * 0.05, Hex(0xf0a030));
    canvas.Line(at(-0.3, -0.06), at(-0.72, -0.14), size * 0.05, Hex(0x4a3a48));
    canvas.Area({at(-0.12, 0), at(0.3, bend * 1.1), at(0.95, tip), at(0.38, bend - 0.26), at(0.16, -0.08)}, lit);
}

void DrawCow(Canvas& canvas, Random& random, Vec foot, double size) {
    const Rgb hide = random.Of<Rgb>({Hex(0xfdf4e6), Hex(0xe8d0b0), Hex(0x8a5a3c), Hex(0x4a3a38)});
    const double way = random.Next() < 0.5 ? -1 : 1;
    auto at = [=](double x, double y) { return foot + Vec{x, -y} * size; };
    canvas.Fill(
        at(-2, 1), at(1, -1),
        [=](Vec p) {
            return Ellipse(p, at(-0.5, 0), Vec{1, 0.14} * size);
        },
        Hex(0x22304a), 0.45, 2);
    for (double x : {-0.4, -0.25, 0.25, 0.4}) canvas.Line(at(x, 0.4), at(x, 0), size * 0.12, hide * 0.75);
    auto body = [=](Vec p) {
        return std::min(Capsule(p, at(-0.36, 0.5), at(0.36, 0.5), size * 0.22, size * 0.22),
                        Capsule(p, at(way * 0.5, 0.62), at(way * 0.78, 0.5), size * 0.13, size * 0.09));
    };
    canvas.Fill(at(-1, 1), at(1, 0), body, [=](Vec p, double) {
        const Vec q = p - at(0, 0.5);
        return hide * (0.8 + 0.35 * Smooth(-size, size, q.x - q.y));
    });
}

void DrawBridge(Canvas& canvas) {
    const Vec mid = Valley.OnCanvas(canvas, {RiverX(BridgeZ), BridgeZ, 0});
    const double unit = Valley.focal / BridgeZ, half = 74 * unit, high = 19 * unit;
    auto stone = [=](Vec p) {
        const Vec q = p - mid;
        const double deck = high - high * 0.45 * std::pow(q.x / half, 2);  // rises towards the middle
        double d = std::max({std::abs(q.x) - half, -q.y - deck, q.y});
        for (double at : {-0.52, 0.0, 0.52}) d = std::max(d, -Ellipse(q, {at * half, 0}, {half * 0.2, high * 0.66}));
        return d;
    };
    canvas.Fill(
        mid - Vec{half, 0}, mid + Vec{half, high},
        [=](Vec p) {
            return stone({p.x, 2 * mid.y - p.y});
        },
        Hex(0x3a3a68), 0.55, 3);
    canvas.Fill(mid - Vec{half, high * 1.2}, mid + Vec{half, 2}, stone, [=](Vec p, double d) {
        const Vec q = p - mid;
        const int course = int(std::floor(q.y / 4)), along = int(std::floor(q.x / 7 + (course % 2) * 0.5));
        const double block = Hash(along, course, 5);
        return Mix(Hex(0xa8886c), Hex(0xf0d4a8), 0.25 + 0.5 * block) * (d > -2.5 ? 1.12 : 0.92);
    });
}

void DrawSmoke(Canvas& canvas, Random& random, Vec from, double size) {
    for (int i = 0; i < 60; ++i) {
        const double t = i / 60.0;
        canvas.Disc(from + Vec{-size * (0.5 * t * t + 0.12 * std::sin(t * 9)), -size * t},
                    size * (0.02 + 0.09 * t) * random.Between(0.7, 1.2), Hex(0xfff0e4), 0.3 * (1 - t), size * 0.06);
    }
}

struct Thing {
    Vec at;  // x and z
    enum { Tree, Pine, House, Chapel, Cow, Bridge } kind;
};

// The village, no house on another.
void AddVillage(std::vector<Thing>& list, Random& random) {
    list = {{{-205, 1300}, Thing::Chapel}};
    for (int i = 0; i < 4000 && list.size() < 21; ++i) {
        const Vec at{random.Between(-400, 60), random.Between(1060, 1560)};
        bool room = RoadSide(at.x, at.y) > 16 && RiverSide(at.x, at.y) > 30 && ValleyGround(at.x, at.y, 6) < 8;
        for (const Thing& other : list) {
            const Vec off{(at.x - other.at.x) / 1.1, at.y - other.at.y};
            room = room && Length(off) > (other.kind == Thing::Chapel ? 95 : 62);
        }
        if (room) list.push_back({at, Thing::House});
    }
}

// Trees and cattle in the fields, not before the houses.
void AddFieldLife(std::vector<Thing>& list, Random& random) {
    const size_t built = list.size();
    for (int i = 0; i < 700; ++i) {
        const double z = 640 * std::pow(4.2, random.Next()), x = random.Between(-0.6, 0.6) * z, kind = random.Next();
        bool room = RoadSide(x, z) > 9 && RiverSide(x, z) > 12 && ValleyGround(x, z, 6) < 9;
        for (size_t k = 0; k < built; ++k) {
            const Vec off = Vec{x, z} - list[k].at;
            room = room && Length({off.x, off.y * (off.y < 0 ? 0.6 : 2)}) > 36;
        }
        if (room && Noise(x / 120, z / 120, 33) > -0.25)
            list.push_back({{x, z}, kind < 0.14 ? Thing::Cow : kind < 0.24 ? Thing::Pine : Thing::Tree});
    }
}

// Tall trees that overlook the wood.
void AddTallTrees(std::vector<Thing>& list, Random& random) {
    for (int i = 0; i < 420; ++i) {
        const double z = 1100 * std::pow(3.2, random.Next()), x = random.Between(-0.56, 0.56) * z;
        const double ground = ValleyGround(x, z, 6);
        if (ground > 18 && InSight({x, z, ground})) list.push_back({{x, z}, Thing::Pine});
    }
}

void DrawThing(Canvas& canvas, Random& random, const Thing& thing) {
    const double z = thing.at.y, unit = Valley.focal / z;
    const Vec foot = Valley.OnCanvas(canvas, {thing.at.x, z, ValleyGround(thing.at.x, z, 6)});
    switch (thing.kind) {
        case Thing::Tree: {
            const double size = unit * random.Between(17, 28);
            const Rgb leaves = random.Next() < 0.12
                                   ? random.Of<Rgb>({Hex(0xf0c030), Hex(0xd873b4), Hex(0xa880d0)})
                                   : Ramp({Hex(0x3f7038), Hex(0x5f8a3c), Hex(0x86a048)}, random.Next());
            return DrawTree(canvas, random, foot, size, leaves, Hour::Morning);
        }
        case Thing::Pine:
            return DrawAraucaria(canvas, random, foot, unit * random.Between(34, 46),
                                 Mix(Hex(0x3f6a44), Hex(0xb0a49c), Smooth(700, 3600, z)));
        case Thing::House:
            DrawCottage(canvas, random, foot, unit * random.Between(23, 28), Hour::Morning);
            if (random.Next() < 0.35) DrawSmoke(canvas, random, foot - Vec{unit * 10, unit * 24}, unit * 60);
            return;
        case Thing::Chapel:
            return DrawChapel(canvas, foot, unit * 86, Hour::Morning);
        case Thing::Cow:
            return DrawCow(canvas, random, foot, unit * 9);
        case Thing::Bridge:
            return DrawBridge(canvas);
    }
}

// Grass and flowers below a line, edge(x).
template <class Edge>
void DrawMeadow(Canvas& canvas, Random& random, Edge edge) {
    const int width = canvas.Width(), height = canvas.Height();
    for (int i = 0; i < 4200; ++i) {
        const double x = random.Between(0, width), y = edge(x) + 3 + 190 * std::pow(random.Next(), 1.3);
        if (y > height + 12) continue;
        const Rgb blade = Mix(Mix(Hex(0x2c4a2a), Hex(0x8a9a3c), random.Next()), Hex(0xffc860), 0.4 * random.Next());
        canvas.Line({x, y}, {x + random.Between(-6, 9), y - random.Between(8, 24)}, 1.6, blade);
    }
    for (int i = 0; i < 330; ++i) {
        const double x = random.Between(0, width), y = edge(x) + random.Between(4, 150), s = random.Between(0.8, 1.5);
        const Rgb petal = random.Of<Rgb>({Hex(0xf6d743), Hex(0xe85d75), Hex(0xffffff), Hex(0xb07be0), Hex(0xf29b38)});
        for (int k = 0; k < 5; ++k)
            canvas.Disc(Vec{x, y} + Polar(3.1 * s, k * 2 * Pi / 5 + x), 2.2 * s, petal * (k < 2 ? 0.86 : 1));
        canvas.Disc({x, y}, 1.8 * s, Hex(0x7a4a12));
    }
}

}  // namespace

void DrawValleyLife(Canvas& canvas) {
    Random random(31);
    std::vector<Thing> list;
    AddVillage(list, random);
    AddFieldLife(list, random);
    AddTallTrees(list, random);
    list.push_back({{RiverX(BridgeZ), BridgeZ}, Thing::Bridge});
    std::sort(list.begin(), list.end(), [](const Thing& a, const Thing& b) { return a.at.y > b.at.y; });
    for (const Thing& thing : list) DrawThing(canvas, random, thing);
}

void DrawBirds(Canvas& canvas) {
    for (int i = 0; i < 9; ++i) {
        const int rank = (i + 1) / 2;
        DrawHeron(canvas,
                  {905.0 - 34 * rank - 9 * (i % 2), 232 + (i % 2 ? -21.0 : 17.0) * rank + 4 * std::sin(i * 4.0)},
                  15 + 2 * Hash(i, 1, 2), std::sin(i * 2.3));
    }
}

void DrawKnoll(Canvas& canvas) {
    Random random(5);
    auto edge = [](double x) {
        const double left = std::exp(-std::pow((x - 30) / 330, 2)), right = std::exp(-std::pow((x - 1580) / 250, 2));
        return 891 - 150 * left - 120 * right + 10 * Fbm(x / 60, 3, 4, 70);
    };
    for (int x = 0; x < canvas.Width(); ++x)
        for (int y = std::max(0, int(edge(x))); y < canvas.Height(); ++y)
            canvas.At(x, y) =
                Mix(Hex(0x5c7034), Hex(0x1c3024), Clamp01((y - edge(x)) / 120) + 0.3 * Fbm(x / 18.0, y / 12.0, 3, 71));
    DrawBloomingTree(canvas, random, {128, 820}, 560, Hex(0xfaca34));
    DrawAraucaria(canvas, random, {1352, 870}, 280, Hex(0x4a7a4c));
    DrawAraucaria(canvas, random, {1500, 850}, 500, Hex(0x457048));
    DrawMeadow(canvas, random, edge);
}

}  // namespace pictures
