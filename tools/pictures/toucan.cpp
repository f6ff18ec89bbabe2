// A toucan among leaves, laid in small stones.
#include "pictures.h"

namespace pictures {
using namespace paint;

namespace {

constexpr int Width = 1200, Height = 1600;

void DrawLeaf(Canvas& canvas, Vec root, double length, double angle, double width, Rgb colour) {
    const Vec reach{length + 4, length + 4};
    canvas.Fill(
        root - reach, root + reach,
        [=](Vec p) {
            const Vec q = Turned(p - root, -angle);
            const double t = q.x / length;
            return t < 0 || t > 1 ? 9.0
                                  : std::abs(q.y - 22 * std::sin(t * 3)) - width * std::sin(Pi * std::pow(t, 0.7));
        },
        [=](Vec p, double) {
            const Vec q = Turned(p - root, -angle);
            const double side = q.y - 22 * std::sin(q.x / length * 3);
            if (std::abs(side) < 4) return Mix(colour, Hex(0xe8f0a0), 0.7);
            return colour * (side > 0 ? 1.2 : 0.75) *
                   (std::fmod(q.x - std::abs(side) * 0.9 + 900, 46.0) < 9 ? 1.25 : 1.0);
        });
}

void DrawBlossom(Canvas& canvas, Vec at, double r, Rgb petal, Rgb heart) {
    for (int i = 0; i < 6; ++i) {
        const double a = i * Pi / 3 + 0.3;
        canvas.Fill(
            at - Vec{r * 1.2, r * 1.2}, at + Vec{r * 1.2, r * 1.2},
            [=](Vec p) {
                return Ellipse(Turned(p - at, -a), {r * 0.55, 0}, {r * 0.5, r * 0.26});
            },
            [=](Vec p, double) { return Mix(heart, petal, Smooth(0.15, 0.7, Length(p - at) / r)); });
    }
    canvas.Disc(at, r * 0.2, heart);
}

// What the stones show, before it is laid.
Canvas Cartoon() {
    Canvas c(Width, Height);
    c.Each([](Vec p) {
        const double d = Length(p - Vec{800, 420});
        Rgb sky =
            Ramp({Hex(0xfff0a8), Hex(0xfdc95e), Hex(0xf59a52), Hex(0xdf6a6a), Hex(0x8a4f8f), Hex(0x3a4a8c)}, d / 1250);
        return std::sin(std::atan2(p.y - 420, p.x - 800) * 28) > 0.4 ? sky * 1.07 : sky * 0.97;
    });
    c.Disc({800, 420}, 190, Hex(0xfff7d0));
    c.Disc({800, 420}, 150, Hex(0xfffbea));
    Random random(19);
    for (int i = 0; i < 84; ++i) {
        const bool left = i % 2;
        const Vec root =
            i < 58 ? Vec{left ? random.Between(-60, 160) : random.Between(1040, 1260), random.Between(0, 1600)}
                   : Vec{random.Between(0, Width), random.Between(1450, 1650)};
        const double aim = i < 58 ? (left ? random.Between(-0.9, 0.9) : Pi + random.Between(-0.9, 0.9))
                                  : -Pi / 2 + random.Between(-0.9, 0.9);
        DrawLeaf(c, root, random.Between(210, 370), aim, random.Between(34, 64),
                 Mix(Mix(Hex(0x1f6a3e), Hex(0x6aa83a), random.Next()), Hex(0x1a7a80), 0.5 * random.Next()));
    }
    c.Path(Curve({{-20, 1235}, {260, 1195}, {600, 1215}, {900, 1165}, {1230, 1190}}, 16, false), 62, Hex(0x6a4426));
    c.Path(Curve({{-20, 1222}, {260, 1182}, {600, 1202}, {900, 1152}, {1230, 1177}}, 16, false), 20, Hex(0xa87a44));
    for (Vec at : {Vec{150, 1090}, Vec{1010, 1080}, Vec{1090, 1370}, Vec{120, 1420}, Vec{330, 1490}, Vec{880, 1500},
                   Vec{90, 210}, Vec{1120, 760}, Vec{60, 720}})
        DrawBlossom(c, at, 92 + 30 * std::sin(at.x), at.y > 1200 ? Hex(0xe83a6a) : Hex(0xf7f0e0), Hex(0xf5b81c));
    // Tail, body, breast.
    c.Area(Curve({{470, 1130}, {560, 1130}, {545, 1440}, {505, 1510}, {440, 1500}, {425, 1420}}, 10, true),
           Hex(0x1a2236));
    c.Area(Curve({{470, 1180}, {520, 1180}, {500, 1300}, {455, 1300}}, 8, true), Hex(0xc8322e));
    c.Area(Curve({{500, 560},
                  {640, 540},
                  {720, 640},
                  {745, 830},
                  {700, 1040},
                  {600, 1180},
                  {500, 1200},
                  {430, 1080},
                  {405, 860},
                  {430, 680}},
                 12, true),
           Hex(0x1e2840));
    c.Area(Curve({{405, 800}, {470, 820}, {520, 960}, {510, 1120}, {450, 1200}, {400, 1080}, {385, 920}}, 10, true),
           Hex(0x2f4570));
    for (int i = 0; i < 5; ++i)
        c.Path(Curve({{405.0 + 16 * i, 850.0 + 30 * i}, {440.0 + 14 * i, 990.0 + 20 * i}, {440.0 + 10 * i, 1140.0}}, 8,
                     false),
               9, Hex(0x5a7fb8));
    c.Area(Curve({{590, 640}, {690, 640}, {735, 760}, {720, 900}, {650, 960}, {590, 880}, {575, 760}}, 12, true),
           Hex(0xfdf3d0));
    c.Area(Curve({{600, 660}, {690, 670}, {720, 760}, {690, 800}, {620, 780}}, 10, true), Hex(0xf9d23c));
    c.Path(Curve({{640, 962}, {690, 925}, {722, 880}}, 8, false), 22, Hex(0xd8382e));
    // Head, beak, eye.
    c.Fill(
        {430, 380}, {760, 720},
        [](Vec p) {
            return Ellipse(p, {590, 545}, {138, 140});
        },
        Hex(0x1e2840));
    const std::vector<Vec> beak = Curve({{650, 450},
                                         {760, 400},
                                         {900, 405},
                                         {1010, 480},
                                         {1060, 590},
                                         {1062, 680},
                                         {1020, 660},
                                         {940, 600},
                                         {820, 590},
                                         {700, 610},
                                         {655, 570}},
                                        14, true);
    c.Area(beak, Hex(0xf59a1c));
    c.Fill(
        {640, 380}, {1080, 700},
        [&](Vec p) {
            return std::max(Polygon(p, beak), Segment(p, {680, 440}, {940, 440}, 26));
        },
        Hex(0xfbd640));
    c.Fill(
        {640, 380}, {1080, 700},
        [&](Vec p) {
            return std::max(Polygon(p, beak),
                            p.y - 520 + (p.x - 650) * -0.12 > 0 ? -(p.y - 520 - (p.x - 650) * 0.12) : 9.0);
        },
        Hex(0xe8602a));
    c.Fill(
        {940, 380}, {1090, 700},
        [&](Vec p) {
            return std::max(Polygon(p, beak), Circle(p, {1090, 650}, 92));
        },
        Hex(0x1c1c28));
    c.Path(Curve({{660, 520}, {780, 522}, {900, 535}, {1000, 580}}, 10, false), 9, Hex(0x7a2a18));
    c.Path(Curve({{652, 452}, {645, 510}, {655, 572}}, 8, false), 20, Hex(0x10141f));
    c.Disc({592, 500}, 62, Hex(0x3fb0d8));
    c.Disc({592, 500}, 46, Hex(0xf7b32b));
    c.Disc({594, 500}, 30, Hex(0x10121c));
    c.Disc({582, 488}, 10, Hex(0xffffff));
    for (double x : {520.0, 610.0})
        for (int k = -1; k <= 1; ++k) c.Path({{x, 1150}, {x + k * 22, 1218}}, 15, Hex(0x8fa8c0));
    return c;
}

}  // namespace

Canvas Toucan() {
    const Canvas cartoon = Cartoon();
    Canvas canvas(Width, Height);
    constexpr double Stone = 13.5;
    canvas.Each([&](Vec p) {
        // Stones run round the sun and the bird: the lattice is bent a little everywhere.
        const Vec bend{26 * Fbm(p.x / 260, p.y / 260, 2, 3), 26 * Fbm(p.x / 260, p.y / 260, 2, 4)};
        const Vec q = (p + bend) * (1 / Stone);
        const Cell cell = Cells(q.x, q.y, 15, 0.55);
        const Vec centre = cell.centre * Stone - bend;
        Rgb colour = cartoon.Sample(centre.x, centre.y);
        colour = colour * (0.84 + 0.3 * IdHash(cell.id, 1)) +
                 Rgb{IdHash(cell.id, 2) - 0.5, IdHash(cell.id, 3) - 0.5, IdHash(cell.id, 4) - 0.5} * 0.07;
        const double gap = cell.second - cell.nearest;
        const Vec off = q - cell.centre;
        colour = colour * (1 - 0.32 * (off.x + off.y) * (0.4 + IdHash(cell.id, 5))) *
                 (0.97 + 0.06 * Hash(int(p.x), int(p.y), 9));
        if (IdHash(cell.id, 6) > 0.9)
            colour = colour + Hex(0xffe8b0) * (0.35 * Smooth(0.3, 0.05, Length(off + Vec{0.15, 0.15})));  // gilded
        const Rgb grout = Hex(0xcfc0a4) * (0.72 + 0.2 * Hash(int(p.x), int(p.y), 8));
        return Mix(grout * 0.75, colour, Smooth(0.06, 0.16, gap));
    });
    canvas.Finish(0.22, 0.0, 1);
    return canvas;
}

}  // namespace pictures
