// Painted houses climb a hill above a bay.
#include "pictures.h"

namespace pictures {
using namespace paint;

namespace {

constexpr int Width = 1600, Height = 1200;

void Block(Canvas& canvas, Vec a, Vec b, Rgb colour) {
    canvas.Fill(
        a, b, [=](Vec p) { return Box(p, a, b); }, colour);
}

void DrawWindow(Canvas& canvas, Random& random, Vec a, Vec b, Rgb shutter, int style) {
    const double w = b.x - a.x, h = b.y - a.y, mid = (a.x + b.x) / 2;
    Block(canvas, a - Vec{2.5, 2.5}, b + Vec{2.5, 2.5}, Hex(0xfdf8ec));
    const bool lit = random.Next() < 0.2;
    canvas.Fill(
        a, b, [=](Vec p) { return Box(p, a, b); },
        [=](Vec p, double) {
            return lit ? Mix(Hex(0xffe9a0), Hex(0xf0a840), (p.y - a.y) / h)
                       : Mix(Hex(0x3a5a78), Hex(0x16263c), (p.y - a.y) / h + 0.3 * std::sin(p.x * 0.5));
        });
    canvas.Line({mid, a.y}, {mid, b.y}, 1.6, Hex(0xfdf8ec));
    canvas.Line({a.x, a.y + h * 0.45}, {b.x, a.y + h * 0.45}, 1.6, Hex(0xfdf8ec));
    if (style != 1)
        for (int side = -1; side <= 1; side += 2) {
            const double x = side < 0 ? a.x - w * 0.5 - 3 : b.x + 3;
            canvas.Fill(
                {x, a.y}, {x + w * 0.5, b.y},
                [=](Vec p) {
                    return Box(p, {x, a.y - 1}, {x + w * 0.5, b.y + 1});
                },
                [=](Vec p, double) { return shutter * (std::sin(p.y * 1.7) > 0.2 ? 1.0 : 0.74); });
        }
    if (style != 2) return;
    Block(canvas, {a.x - 6, b.y + 2}, {b.x + 6, b.y + 9}, Hex(0x8a4a2c));  // a window box
    for (int i = 0; i < 14; ++i)
        canvas.Disc(
            {random.Between(a.x - 6, b.x + 6), b.y + random.Between(-4, 5)}, random.Between(1.8, 3.4),
            random.Of<Rgb>({Hex(0xe83a5a), Hex(0xf7c53a), Hex(0x4f9a3c), Hex(0x3f7a34), Hex(0xf08ab0), Hex(0xffffff)}));
}

void DrawRoof(Canvas& canvas, Vec left, double width, double rise, int kind, Rgb tile) {
    const double over = width * 0.06;
    const std::vector<Vec> shape =
        kind == 0 ? std::vector<Vec>{left + Vec{-over, 0}, left + Vec{width * 0.5, -rise}, left + Vec{width + over, 0}}
                  : std::vector<Vec>{left + Vec{-over, 0}, left + Vec{width * 0.14, -rise * 0.75},
                                     left + Vec{width * 0.86, -rise * 0.75}, left + Vec{width + over, 0}};
    canvas.Fill(
        left - Vec{over + 2, rise + 2}, left + Vec{width + over + 2, 3}, [&](Vec p) { return Polygon(p, shape); },
        [=](Vec p, double) {
            const double row = std::fmod(p.y + 2000, 8.0), cup = std::sin((p.x + (int(p.y / 8) % 2) * 4.5) * 0.7);
            return tile * (0.78 + 0.1 * cup + 0.025 * row) * (0.9 + 0.22 * Hash(int(p.x / 9), int(p.y / 8), 4)) *
                   (p.x > left.x + width * 0.5 ? 0.88 : 1.08);
        });
    canvas.Line(left + Vec{-over, 1}, left + Vec{width + over, 1}, 4, tile * 0.5);
}

void DrawHouse(Canvas& canvas, Random& random, Vec foot, double width, double height) {
    const std::vector<Rgb> walls = {Hex(0xf2c14e), Hex(0xe8743b), Hex(0xd9534f), Hex(0x4fa3a5), Hex(0x6fa8dc),
                                    Hex(0xf4e3c1), Hex(0xb784c0), Hex(0x8bbf6a), Hex(0xf29ca3), Hex(0xe8a87c),
                                    Hex(0x3f7cac), Hex(0xfaf3e3), Hex(0xcf5c78), Hex(0x9fd3c7)};
    const std::vector<Rgb> paints = {Hex(0x2f6a4a), Hex(0x27507a), Hex(0x8a2f2a), Hex(0x4a3a6a),
                                     Hex(0xfaf3e3), Hex(0x1f7a80), Hex(0xb0762a)};
    const Rgb wall = random.Of(walls), shutter = random.Of(paints);
    const Vec a{foot.x, foot.y - height}, b{foot.x + width, foot.y + 40};
    canvas.Fill(
        {a.x - 2, a.y}, {b.x + 16, b.y},
        [=](Vec p) {
            return Box(p, a + Vec{6, 4}, b + Vec{10, 0});
        },
        Hex(0x2a1a2a), 0.4, 10);
    canvas.Fill(
        a, b, [=](Vec p) { return Box(p, a, b); },
        [=](Vec p, double) {
            const double worn = Fbm(p.x / 34, p.y / 34, 4, 6);
            return wall * (1.06 - 0.22 * (p.x - a.x) / width) * (1 + 0.09 * worn) * (p.y > foot.y - 12 ? 0.8 : 1.0);
        });
    const double rise = random.Between(0.28, 0.5) * width;
    DrawRoof(canvas, a, width, std::min(rise, 70.0), random.Below(2),
             random.Of<Rgb>({Hex(0xc8553d), Hex(0xb5442f), Hex(0xd8744a), Hex(0xa03a30), Hex(0x8a4a3a)}));
    if (random.Next() < 0.5) {
        const double x = foot.x + width * random.Between(0.2, 0.7);
        Block(canvas, {x, a.y - 58}, {x + 15, a.y - 18}, Hex(0xe6d3b8));
        Block(canvas, {x - 3, a.y - 62}, {x + 18, a.y - 56}, Hex(0x9a4a34));
    }
    const int floors = std::max(1, int(height / 62)), columns = std::max(1, int(width / 52));
    const int style = random.Below(3), door = random.Below(columns);
    for (int f = 0; f < floors; ++f)
        for (int c = 0; c < columns; ++c) {
            const double cw = width / columns, x = foot.x + c * cw + cw * 0.34,
                         y = a.y + 12 + f * (height - 6) / floors;
            if (f == floors - 1 && c == door) {
                Block(canvas, {x - 4, y - 1}, {x + cw * 0.4 + 4, foot.y + 1}, Hex(0xfaf3e3));
                const double right = x + cw * 0.4;
                canvas.Fill(
                    {x, y}, {right, foot.y},
                    [=](Vec p) {
                        return Box(p, {x, y + 3}, {right, foot.y});
                    },
                    [=](Vec p, double) { return shutter * (std::fmod(p.x - x, 7) < 1.4 ? 0.7 : 1.0); });
                canvas.Disc({right - 4, y + (foot.y - y) * 0.55}, 1.8, Hex(0xf6d860));
            } else {
                DrawWindow(canvas, random, {x, y + 4}, {x + cw * 0.32, y + 35}, shutter, style);
            }
        }
}

void DrawBush(Canvas& canvas, Random& random, Vec at, double r) {
    const Rgb green = Mix(Hex(0x2f6a38), Hex(0x8aa83c), random.Next());
    for (int i = 0; i < 16; ++i)
        canvas.Disc(at + Polar(r * random.Next() * 0.8, random.Between(0, 6.3)), r * random.Between(0.25, 0.5),
                    green * random.Between(0.65, 1.2), 1, 2);
    if (random.Next() < 0.5) {
        const Rgb bloom = random.Of<Rgb>({Hex(0xd83a8a), Hex(0xf7c53a), Hex(0xf4f0ff), Hex(0xe8552e)});
        for (int i = 0; i < 22; ++i)
            canvas.Disc(at + Polar(r * random.Next(), random.Between(0, 6.3)), random.Between(1.6, 3), bloom);
    }
}

void DrawPalm(Canvas& canvas, Random& random, Vec foot, double height) {
    const Vec top = foot + Vec{height * 0.16, -height};
    const std::vector<Vec> trunk = Curve({foot, foot + Vec{height * 0.02, -height * 0.5}, top}, 14, false);
    canvas.Path(trunk, height * 0.045, Hex(0x7a5a3a));
    for (size_t i = 0; i < trunk.size(); i += 1)
        canvas.Line(trunk[i] - Vec{height * 0.024, 0}, trunk[i] + Vec{height * 0.024, 2}, 1.5, Hex(0x4a3420));
    for (int k = 0; k < 13; ++k) {
        const double a = k * 2 * Pi / 13 + random.Between(-0.15, 0.15);
        std::vector<Vec> rib;
        for (int i = 0; i <= 12; ++i) {
            const double t = i / 12.0;
            rib.push_back(top + Vec{std::cos(a) * height * 0.4 * t,
                                    std::sin(a) * height * 0.22 * t + height * 0.2 * t * t - height * 0.08 * t});
        }
        const Rgb green = Mix(Hex(0x2f7a3a), Hex(0x9ab84a), random.Next());
        for (size_t i = 1; i < rib.size(); ++i)
            for (int side = -1; side <= 1; side += 2)
                canvas.Line(
                    rib[i],
                    rib[i] + Vec{side * height * 0.03 + std::cos(a) * 8, height * 0.075 * (1.1 - double(i) / 13)}, 3,
                    green * random.Between(0.75, 1.1));
        canvas.Path(rib, 2.5, green * 0.8);
    }
}

void DrawChurch(Canvas& canvas, Vec foot) {
    const Rgb white = Hex(0xfdf8ee), trim = Hex(0xe8b23c), roof = Hex(0xb5442f);
    Block(canvas, foot - Vec{100, 190}, foot + Vec{100, 30}, white);
    canvas.Area({foot + Vec{-62, -190}, foot + Vec{0, -262}, foot + Vec{62, -190}}, white);
    canvas.Path(Curve({foot + Vec{-64, -190}, foot + Vec{-34, -216}, foot + Vec{0, -264}, foot + Vec{34, -216},
                       foot + Vec{64, -190}},
                      8, false),
                7, trim);
    for (int side = -1; side <= 1; side += 2) {
        const Vec t = foot + Vec{side * 100.0, 0};
        Block(canvas, t - Vec{38, 292}, t + Vec{38, 30}, white * 0.97);
        for (double y : {292.0, 205.0, 110.0}) Block(canvas, t - Vec{42, y}, t + Vec{42, -y + 9}, trim);
        canvas.Fill(
            t - Vec{44, 360}, t + Vec{44, -285},
            [=](Vec p) {
                return std::max(Ellipse(p, t - Vec{0, 292}, {40, 54}), p.y - t.y + 292);
            },
            [=](Vec p, double) { return roof * (1.1 - 0.4 * (p.x - t.x + 40) / 80); });
        canvas.Line(t - Vec{0, 340}, t - Vec{0, 382}, 4, Hex(0x4a3a2a));
        canvas.Line(t - Vec{10, 368}, t - Vec{-10, 368}, 4, Hex(0x4a3a2a));
        canvas.Fill(
            t - Vec{18, 280}, t + Vec{18, -215},
            [=](Vec p) {
                return std::min(Box(p, t - Vec{14, 258}, t + Vec{14, -212}), Circle(p, t - Vec{0, 258}, 14));
            },
            Hex(0x2f4a6a));
        canvas.Disc(t - Vec{0, 236}, 9, Hex(0xd8a23a));
        Block(canvas, t - Vec{12, 180}, t + Vec{12, -135}, Hex(0x3a5a7a));
    }
    canvas.Fill(
        foot - Vec{30, 80}, foot + Vec{30, 30},
        [=](Vec p) {
            return std::min(Box(p, foot - Vec{26, 55}, foot + Vec{26, 30}), Circle(p, foot - Vec{0, 55}, 26));
        },
        Hex(0x2f6a4a));
    canvas.Disc(foot - Vec{0, 145}, 27, trim);
    canvas.Disc(foot - Vec{0, 145}, 22, Hex(0x3a6a9a));
    for (int i = 0; i < 8; ++i) canvas.Line(foot - Vec{0, 145}, foot - Vec{0, 145} + Polar(22, i * Pi / 4), 2, trim);
}

}  // namespace

Canvas HillsideHouses() {
    Canvas canvas(Width, Height);
    canvas.Each([](Vec p) {
        Rgb c = Ramp({Hex(0x3f8fd8), Hex(0x8fc8f0), Hex(0xe6f2ee)}, p.y / 480);
        c = Mix(c, Hex(0xffffff), Smooth(0.08, 0.4, Fbm(p.x / 260, p.y / 110, 6, 4)) * 0.9);
        const double far = 380 - 120 * Ridge(p.x / 420, 2, 5, 8);
        if (p.y > far)
            c = Mix(Hex(0x6f9ab8), Hex(0x8fb59a), Smooth(far, 440, p.y)) * (1 + 0.12 * Fbm(p.x / 40, p.y / 24, 4, 9));
        if (p.y > 400) {
            c = Mix(Hex(0x2f86b0), Hex(0x4fb0b8), Smooth(400, 640, p.y)) * (1 + 0.14 * Noise(p.x / 50, p.y / 4, 10));
            if (Noise(p.x / 16, p.y / 2.6, 11) > 0.72) c = c + Hex(0xffffff) * 0.25;
        }
        return c;
    });
    Random random(27);
    for (int i = 0; i < 17; ++i) {  // sails in the bay
        const Vec at{random.Between(20, 1580), random.Between(425, 600)};
        const double s = (at.y - 380) * 0.14;
        canvas.Area({at, at - Vec{0, s * 2}, at + Vec{s * 0.9, -s * 0.2}}, Hex(0xfdf8ee));
        canvas.Area({at - Vec{s * 0.2, s * 0.1}, at - Vec{s * 0.2, s * 1.6}, at - Vec{s * 0.9, s * 0.1}},
                    random.Of<Rgb>({Hex(0xe8552e), Hex(0xf2c14e), Hex(0x27507a)}));
        canvas.Area({at + Vec{-s, 0}, at + Vec{s, 0}, at + Vec{s * 0.7, s * 0.35}, at + Vec{-s * 0.7, s * 0.35}},
                    Hex(0x7a3a2a));
    }
    auto hill = [](double x) {
        return 600 - 320 * std::exp(-std::pow((x - 1120) / 380, 2)) - 190 * std::exp(-std::pow((x - 130) / 260, 2)) +
               60 * std::exp(-std::pow((x - 560) / 150, 2));
    };
    for (int x = 0; x < Width; ++x)
        for (int y = int(hill(x)); y < Height; ++y)
            canvas.At(x, y) = Mix(Hex(0x6f9a4a), Hex(0x3f6a3a), 0.5 + 0.7 * Fbm(x / 30.0, y / 30.0, 4, 12));
    DrawChurch(canvas, {1120, 400});
    for (int row = 0; row < 11; ++row) {
        const double lower = row * 96 + 30;
        std::vector<double> starts;
        for (double x = -60 - random.Between(0, 60); x < Width + 40;) {
            const double w = random.Between(84, 172) * (0.72 + 0.05 * row);
            const double y = hill(std::clamp(x + w / 2, 0.0, 1600.0)) + lower + random.Between(-12, 12);
            if (!(row == 0 && std::abs(x + w / 2 - 1120) < 230) && y < Height + 190) {
                for (int k = 0; k < 3; ++k)
                    DrawBush(canvas, random, {x + w * random.Next(), y - random.Between(0, 26)},
                             random.Between(14, 26));
                if (random.Next() < 0.12)
                    DrawPalm(canvas, random, {x + w * 0.5, y + 10}, random.Between(150, 230));
                else
                    DrawHouse(canvas, random, {x, y}, w, random.Between(72, 128) * (0.8 + 0.04 * row));
            }
            x += w + random.Between(-6, 34);
        }
        if (row % 2 == 1)  // washing between the houses
            for (int line = 0; line < 3; ++line) {
                const double x = random.Between(60, 1400), y = hill(x) + lower - 60;
                const std::vector<Vec> rope = Curve({{x, y}, {x + 60, y + 12}, {x + 120, y}}, 10, false);
                canvas.Path(rope, 1.4, Hex(0x4a3a2a));
                for (size_t i = 1; i + 3 < rope.size(); i += 4)
                    Block(canvas, rope[i], rope[i] + Vec{13, random.Between(14, 24)},
                          random.Of<Rgb>({Hex(0xfdfdfd), Hex(0xe85a6a), Hex(0x4a90d0), Hex(0xf7d24a), Hex(0x8ad0a0)}));
            }
    }
    canvas.Finish(0.2, 0.01, 7);
    return canvas;
}

}  // namespace pictures
