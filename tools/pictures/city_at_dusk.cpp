// A city by a river at dusk: towers, lit windows, a bridge, boats.
#include "pictures.h"

namespace pictures {
using namespace paint;

namespace {

constexpr int Width = 1600, Height = 1067;
constexpr double Quay = 705;

Rgb Sky(Vec p) {
    Rgb c =
        Ramp({Hex(0x1b1f4f), Hex(0x3b3580), Hex(0x8a4a94), Hex(0xdf6f74), Hex(0xf7a85e), Hex(0xfbd68a)}, p.y / Quay);
    const double streak = Fbm(p.x / 380 + p.y / 900, p.y / 44, 6, 3);
    c = Mix(c, Ramp({Hex(0x5a4a9a), Hex(0xe07a8a), Hex(0xffc48a)}, p.y / Quay), 0.8 * Smooth(0.05, 0.45, streak));
    const double d = Length(p - Vec{560, 600});
    return c + Hex(0xffa050) * (0.5 * std::exp(-d / 240)) + Hex(0xfff0c0) * Smooth(60, 50, d);
}

struct Tower {
    double x, width, top;
    Rgb wall;
    int crown, windows;
};

void DrawTower(Canvas& canvas, Random& random, const Tower& t, double haze) {
    const Rgb air = Hex(0xd08a90);
    const double right = t.x + t.width;
    auto at = [&](Rgb c) { return Mix(c, air, haze); };
    const double mid = t.x + t.width / 2, w = t.width;
    switch (t.crown) {
        case 1:
            canvas.Area({{t.x, t.top}, {mid, t.top - w * 0.9}, {right, t.top}}, at(t.wall * 0.8));
            canvas.Line({mid, t.top - w * 0.85}, {mid, t.top - w * 1.7}, 3, at(t.wall * 0.7));
            break;
        case 2:
            for (int i = 1; i <= 3; ++i)
                canvas.Area({{t.x + w * 0.14 * i, t.top + 1},
                             {t.x + w * 0.14 * i, t.top - 20.0 * i},
                             {right - w * 0.14 * i, t.top - 20.0 * i},
                             {right - w * 0.14 * i, t.top + 1}},
                            at(t.wall * (0.9 - 0.06 * i)));
            canvas.Line({mid, t.top - 58}, {mid, t.top - 130}, 3, at(Hex(0x40304a)));
            canvas.Glow({mid, t.top - 130}, 16, Hex(0xff5040), 0.9);
            break;
        case 3:
            canvas.Fill(
                {t.x, t.top - w}, {right, t.top + 2},
                [=](Vec p) {
                    return std::max(Ellipse(p, {mid, t.top}, {w / 2, w * 0.55}), p.y - t.top - 1);
                },
                [&](Vec p, double) { return at(t.wall * (1.1 - 0.5 * std::abs(p.x - t.x - w * 0.35) / w)); });
            canvas.Line({mid, t.top - w * 0.5}, {mid, t.top - w * 0.95}, 3, at(Hex(0x40304a)));
            break;
        case 4:
            canvas.Area({{t.x, t.top + 1}, {t.x, t.top - w * 0.7}, {right, t.top + 1}}, at(t.wall * 1.1));
            break;
        case 5:
            canvas.Line({t.x + w * 0.3, t.top}, {t.x + w * 0.3, t.top - 46}, 2, at(Hex(0x40304a)));
            canvas.Area({{t.x + w * 0.55, t.top},
                         {t.x + w * 0.55, t.top - 22},
                         {t.x + w * 0.85, t.top - 22},
                         {t.x + w * 0.85, t.top}},
                        at(t.wall * 0.6));
            break;
        default:
            break;
    }
    canvas.Fill(
        {t.x, t.top}, {right, Quay},
        [&](Vec p) {
            return Box(p, {t.x, t.top}, {right, Quay + 5});
        },
        [&](Vec p, double) {
            const double u = (p.x - t.x) / w;
            return at(t.wall * (0.75 + 0.4 * Smooth(0.7, 0, u)) * (1.05 - 0.25 * (p.y - t.top) / (Quay - t.top)));
        });
    const double stepX = t.windows == 1   ? 9
                         : t.windows == 2 ? w / 3.0
                                          : 13,
                 stepY = t.windows == 1   ? 14
                         : t.windows == 2 ? 11
                                          : 19;
    const std::vector<Rgb> lamps = {Hex(0xffd978), Hex(0xffe9a8), Hex(0xffc050),
                                    Hex(0xfff6d8), Hex(0x9fd8f0), Hex(0xffb070)};
    for (double y = t.top + 9; y < Quay - 8; y += stepY) {
        const bool floorLit = random.Next() < 0.85;
        for (double x = t.x + 4; x + stepX * 0.62 < right - 2; x += stepX) {
            const bool lit = floorLit && random.Next() < 0.62;
            const Rgb glass =
                lit ? random.Of(lamps) * random.Between(0.75, 1.05) : Mix(t.wall * 0.45, Hex(0x8a6a9a), 0.25);
            canvas.Fill(
                {x, y}, {x + stepX * 0.62, y + stepY * 0.58},
                [=](Vec p) {
                    return Box(p, {x, y}, {x + stepX * 0.62, y + stepY * 0.58});
                },
                at(glass));
        }
    }
    canvas.Line({t.x, t.top}, {right, t.top}, 2.4, at(Mix(t.wall, Hex(0xffc890), 0.5)));
}

void DrawBridge(Canvas& canvas) {
    const double deck = 742;
    const Rgb iron = Hex(0x3a2a4a), stone = Hex(0x5a4560);
    for (double pier : {930.0, 1330.0}) {
        canvas.Area({{pier - 20, 500}, {pier + 20, 500}, {pier + 26, 850}, {pier - 26, 850}}, stone);
        canvas.Area({{pier - 8, 560}, {pier + 8, 560}, {pier + 8, 700}, {pier - 8, 700}}, Hex(0xd8787a));
        canvas.Area({{pier - 28, 500}, {pier + 28, 500}, {pier + 22, 486}, {pier - 22, 486}}, stone * 1.2);
        canvas.Glow({pier, 478}, 30, Hex(0xffd890), 0.9);
    }
    auto cable = [&](double a, double ya, double b, double yb, double sag) {
        std::vector<Vec> line;
        for (int i = 0; i <= 60; ++i) {
            const double t = i / 60.0, x = Mix(a, b, t), y = Mix(ya, yb, t) + sag * 4 * t * (1 - t);
            line.push_back({x, y});
            if (i % 2 == 0) canvas.Line({x, y}, {x, deck}, 1.6, iron);
            if (i % 5 == 0) canvas.Glow({x, y}, 9, Hex(0xffe0a0), 0.8);
        }
        canvas.Path(line, 5, iron);
    };
    cable(930, 500, 1330, 500, 205);
    cable(660, 735, 930, 500, 60);
    cable(1330, 500, 1640, 735, 60);
    canvas.Fill(
        {640, deck}, {Width, deck + 22},
        [=](Vec p) {
            return Box(p, {640, deck}, {1700, deck + 20});
        },
        [=](Vec p, double) {
            return (int(p.x / 18) % 2 ? iron : iron * 1.25) * (p.y > deck + 5 && p.y < deck + 14 ? 0.8 : 1.25);
        });
    for (double x = 660; x < Width; x += 47) {
        canvas.Line({x, deck}, {x, deck - 24}, 2, iron);
        canvas.Glow({x, deck - 26}, 17, Hex(0xffdc90), 0.9);
        canvas.Disc({x, deck - 26}, 3, Hex(0xfff4d0));
    }
    const Rgb cars[] = {Hex(0xd8443a), Hex(0xf0c040), Hex(0x4a8ad0), Hex(0xf0f0f0)};
    for (int i = 0; i < 11; ++i) {
        const double x = 690 + i * 83;
        canvas.Fill(
            {x - 16, deck - 14}, {x + 16, deck},
            [=](Vec p) {
                return std::min(Box(p, {x - 15, deck - 8}, {x + 15, deck - 1}, 3),
                                Box(p, {x - 8, deck - 13}, {x + 7, deck - 6}, 3));
            },
            cars[i % 4]);
        canvas.Glow({x - 17, deck - 5}, 9, Hex(0xfff0c0), 0.9);
    }
}

void DrawBoat(Canvas& canvas, Vec at, double s, Rgb hull, bool sail) {
    canvas.Area({at + Vec{-s, 0}, at + Vec{s, 0}, at + Vec{s * 0.72, s * 0.34}, at + Vec{-s * 0.8, s * 0.34}}, hull);
    canvas.Line(at + Vec{-s, 0}, at + Vec{s, 0}, s * 0.06, Hex(0xf6e6c8));
    if (sail) {
        canvas.Line(at, at - Vec{0, s * 1.9}, s * 0.05, Hex(0x3a2a2a));
        canvas.Area({at + Vec{s * 0.06, -s * 1.85}, at + Vec{s * 0.06, -s * 0.15}, at + Vec{s * 0.85, -s * 0.15}},
                    Hex(0xf8dcb0));
        canvas.Area({at + Vec{-s * 0.06, -s * 1.6}, at + Vec{-s * 0.06, -s * 0.15}, at + Vec{-s * 0.7, -s * 0.15}},
                    Hex(0xe8745a));
    } else {
        canvas.Area({at + Vec{-s * 0.6, 0}, at + Vec{-s * 0.55, -s * 0.36}, at + Vec{s * 0.3, -s * 0.36},
                     at + Vec{s * 0.42, 0}},
                    Hex(0xf4ead8));
        for (int i = 0; i < 5; ++i)
            canvas.Disc(at + Vec{-s * 0.46 + i * s * 0.17, -s * 0.18}, s * 0.055, Hex(0xffc860));
    }
    canvas.Glow(at + Vec{s * 0.7, -s * 0.1}, s * 0.35, Hex(0xffe0a0), 0.8);
}

}  // namespace

Canvas CityAtDusk() {
    Canvas canvas(Width, Height);
    canvas.Each(Sky);
    Random random(23);
    for (int i = 0; i < 90; ++i)
        canvas.Disc({random.Between(0, Width), random.Between(0, 240)}, random.Between(0.6, 1.5), Hex(0xfff4e0),
                    random.Between(0.3, 0.9));
    const std::vector<Rgb> walls = {Hex(0x6a4a78), Hex(0x4a4a80), Hex(0x7a4a58), Hex(0x39506e), Hex(0x8a5a50),
                                    Hex(0x55406a), Hex(0x2f4a5a), Hex(0x9a6a58), Hex(0x704060)};
    for (int layer = 0; layer < 3; ++layer) {
        const double haze = layer == 0 ? 0.62 : layer == 1 ? 0.32 : 0.04;
        for (double x = -30; x < Width + 20;) {
            const double w = random.Between(46, 96) * (layer == 2 ? 1.12 : 1);
            const double rise = layer == 0   ? random.Between(180, 420)
                                : layer == 1 ? random.Between(130, 370)
                                             : random.Between(60, 210);
            const double hill =
                0.62 + 0.5 * std::exp(-std::pow((x - 1060) / 430, 2)) + 0.3 * std::exp(-std::pow((x - 180) / 200, 2));
            DrawTower(canvas, random, {x, w, Quay - rise * hill, random.Of(walls), random.Below(8), random.Below(3)},
                      haze);
            x += w + random.Between(layer == 2 ? -3 : 0, layer == 2 ? 10 : 26);
        }
    }
    for (int i = 0; i < 120; ++i) {  // trees and lamps along the quay
        const double x = i * 13.6 + random.Between(-5, 5), r = random.Between(9, 17);
        canvas.Disc({x, Quay - r * 0.6}, r, Mix(Hex(0x1f3040), Hex(0x3f4a38), random.Next()), 1, 3);
        if (i % 5 == 0) canvas.Glow({x, Quay - 24}, 26, Hex(0xffdc98), 0.8);
    }
    canvas.Fill(
        {0, Quay - 3}, {Width, Quay + 10},
        [](Vec p) {
            return Box(p, {-5, Quay - 3}, {Width + 5, Quay + 9});
        },
        [](Vec p, double) { return int(p.x / 14) % 3 ? Hex(0x4a3850) : Hex(0x5f4a60); });
    for (int y = int(Quay) + 9; y < Height; ++y) {
        for (int x = 0; x < Width; ++x) {
            const double depth = y - Quay, wave = Noise(x / 46.0, y / (2.0 + depth * 0.018), 66) +
                                                  0.5 * Noise(x / 110.0, y / (5.0 + depth * 0.03), 67);
            const Rgb mirror =
                canvas.Sample(x + wave * (2 + depth * 0.05), 2 * Quay - y * 1.0 + 6 + wave * (3 + depth * 0.11));
            canvas.At(x, y) = Mix(mirror * Hex(0xc8c0dc), Hex(0x1e2456), 0.2 + 0.22 * Smooth(0, 360, depth)) +
                              Hex(0xffb070) * (0.14 * Smooth(0.75, 1.1, wave) * std::exp(-std::abs(x - 560) / 190.0));
        }
    }
    DrawBridge(canvas);
    DrawBoat(canvas, {250, 850}, 62, Hex(0x7a2f3a), true);
    DrawBoat(canvas, {520, 800}, 40, Hex(0x2a4a7a), true);
    DrawBoat(canvas, {720, 930}, 84, Hex(0x30405a), false);
    DrawBoat(canvas, {1140, 880}, 66, Hex(0x8a4030), false);
    DrawBoat(canvas, {1480, 960}, 74, Hex(0x2f5a50), true);
    DrawBoat(canvas, {90, 965}, 50, Hex(0x5a3a70), false);
    canvas.Finish(0.25, 0.012, 1);
    return canvas;
}

}  // namespace pictures
