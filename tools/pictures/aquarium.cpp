// A coral reef behind glass: fish, corals, weed, bubbles, light from above.
#include "pictures.h"

namespace pictures {
using namespace paint;

namespace {

constexpr int Width = 1600, Height = 1200;

double Floor(double x) { return 1010 + 40 * Fbm(x / 260, 1, 4, 3) + 25 * std::sin(x / 310); }

Rgb Water(Vec p) {
    Rgb c = Ramp({Hex(0x8fe3ee), Hex(0x2fb2d6), Hex(0x0f7cb8), Hex(0x0a4c8c), Hex(0x08306a)}, p.y / Height * 1.05);
    c = c * (1 + 0.12 * Fbm(p.x / 200, p.y / 200, 5, 1));
    const double ray = std::atan2(p.x - 500, p.y + 700);
    const double beam = Smooth(0.0, 0.7, Noise(ray * 24, 0.3, 2) + 0.5 * Noise(ray * 61, 1.7, 3));
    c = c + Hex(0xcffaff) * (0.3 * beam * Smooth(1050, 0, p.y));
    if (p.y > Floor(p.x)) {
        const double d = p.y - Floor(p.x), ripple = Noise(p.x / 42 + 2 * Noise(p.x / 150, p.y / 60, 5), p.y / 11, 4);
        Rgb sand = Mix(Hex(0xe9d7a0), Hex(0x9f8c66), Clamp01(d / 260)) * (1 + 0.16 * ripple) +
                   Rgb{0.06, 0.06, 0.06} * (Hash(int(p.x), int(p.y), 8) - 0.5);
        const Cell net = Cells(p.x / 90 + 0.3 * Noise(p.x / 60, p.y / 60, 6), p.y / 40, 7);
        sand = sand + Hex(0xfffbe0) * (0.25 * Smooth(0.12, 0.0, net.second - net.nearest));
        c = Mix(sand, Hex(0x1a6aa0), 0.28);
    }
    return c;
}

void DrawRocks(Canvas& canvas) {
    Random random(11);
    for (int i = 0; i < 26; ++i) {
        const double side = i % 2 ? random.Between(-40, 470) : random.Between(1080, 1640);
        const double r = random.Between(50, 150), y = Floor(side) + random.Between(-60, 40);
        const Rgb rock = Mix(Hex(0x5d5a86), Hex(0x84695f), random.Next());
        canvas.Fill(
            {side - r * 1.4, y - r * 1.4}, {side + r * 1.4, y + r * 1.4},
            [=](Vec p) {
                return Ellipse(p, {side, y}, {r * 1.1, r * 0.85}) + 16 * Fbm(p.x / 50, p.y / 50, 4, uint32_t(i));
            },
            [=](Vec p, double) {
                const double light = Clamp01(0.75 - (p.y - y) / r * 0.5 + 0.7 * Fbm(p.x / 26, p.y / 26, 5, 40));
                const Rgb algae = Mix(Hex(0x8f4a8c), Hex(0x3f8f70), Clamp01(0.5 + Fbm(p.x / 60, p.y / 60, 3, 41)));
                return Mix(rock, algae, 0.45 * Smooth(0.1, -0.6, (p.y - y) / r)) * (0.35 + 0.85 * light);
            });
    }
}

void Branch(Canvas& canvas, Random& random, Vec from, double angle, double length, double width, Rgb colour,
            int depth) {
    const Vec to = from + Polar(length, angle);
    canvas.Fill(
        {std::min(from.x, to.x) - width, std::min(from.y, to.y) - width},
        {std::max(from.x, to.x) + width, std::max(from.y, to.y) + width},
        [=](Vec p) { return Capsule(p, from, to, width / 2, width * 0.38); },
        [=](Vec p, double d) {
            return colour * (0.6 + 0.5 * Clamp01(-d / width * 2.2)) +
                   Rgb{0.1, 0.1, 0.1} * Smooth(0.2, 0.6, Noise(p.x / 5, p.y / 5, 9));
        });
    if (depth == 0) return canvas.Disc(to, width * 0.42, Mix(colour, Hex(0xffffff), 0.45));
    const int n = 2 + (random.Next() < 0.35);
    for (int i = 0; i < n; ++i)
        Branch(canvas, random, to,
               angle + (i - (n - 1) / 2.0) * random.Between(0.5, 0.85) + random.Between(-0.15, 0.15),
               length * random.Between(0.68, 0.85), width * 0.78, colour, depth - 1);
}

void DrawBrainCoral(Canvas& canvas, Vec at, double r, Rgb a, Rgb b, uint32_t seed) {
    canvas.Fill(
        at - Vec{r * 1.4, 0}, at + Vec{r * 1.4, r},
        [=](Vec p) {
            return Ellipse(p, at + Vec{r * 0.12, r * 0.34}, {r * 1.12, r * 0.16});
        },
        Hex(0x1c3a50), 0.6, 16);
    canvas.Fill(
        at - Vec{r + 4, r + 4}, at + Vec{r + 4, r * 0.5},
        [=](Vec p) {
            return std::max(Circle(p, at, r) + 4 * Noise(p.x / 30, p.y / 30, seed),
                            p.y - at.y - r * 0.32 - 9 * Noise(p.x / 22, 0.5, seed));
        },
        [=](Vec p, double d) {
            const double bend = std::sqrt(std::max(0.05, 1 - Dot(p - at, p - at) / (r * r)));
            const double maze =
                std::sin(11 * Fbm((p.x - at.x) / (70 * bend + 25), (p.y - at.y) / (70 * bend + 25), 3, seed));
            return Mix(b, a, Smooth(-0.5, 0.5, maze)) *
                   (0.45 + 0.55 * Clamp01(0.6 - (p.y - at.y) / r * 0.6) + 0.2 * Clamp01(-d / 30));
        });
}

void DrawWeed(Canvas& canvas, Vec foot, double height, double width, Rgb colour, double phase) {
    std::vector<Vec> spine;
    for (int i = 0; i <= 30; ++i) {
        const double t = i / 30.0;
        spine.push_back({foot.x + std::sin(t * 7 + phase) * 26 * t + 30 * t * std::sin(phase), foot.y - height * t});
    }
    for (size_t i = 1; i < spine.size(); ++i) {
        const double t = double(i) / 30, w = width * (0.35 + 0.65 * std::sin(Pi * std::min(1.0, t * 0.9 + 0.12)));
        canvas.Line(spine[i - 1], spine[i], w, Mix(colour * 0.6, colour * 1.25, t));
    }
    for (size_t i = 3; i < spine.size(); i += 2)
        for (int side = -1; side <= 1; side += 2)
            canvas.Fill(
                spine[i] - Vec{40, 40}, spine[i] + Vec{40, 40},
                [&](Vec p) {
                    const Vec q = Turned(p - spine[i], side * 0.7 + 0.2 * std::sin(phase + double(i)));
                    return Ellipse(q, {side * width * 0.9, 0}, {width * 0.95, width * 0.3});
                },
                Mix(colour * 0.7, colour * 1.3, double(i) / 30));
}

struct Fish {
    Vec at;
    double size;
    int facing, pattern;
    Rgb a, b, c;
    double tall;
};

Rgb Skin(const Fish& f, Vec q) {
    const double scale = 0.5 + 0.5 * std::sin(q.x * 52) * std::sin(q.y * 52 + (int(q.x * 16.6) % 2) * 1.5);
    Rgb c = Mix(f.a, f.a * 0.8, scale * 0.4);
    switch (f.pattern) {
        case 0: {  // three bands with dark edges
            for (double x : {0.62, 0.02, -0.55}) {
                const double d = std::abs(q.x - x + 0.07 * std::sin(q.y * 5)) - 0.11;
                if (d < 0)
                    c = f.b;
                else if (d < 0.035)
                    c = f.c;
            }
            break;
        }
        case 1:
            c = std::sin(q.y * 24 + 0.7 * std::sin(q.x * 5)) > 0.15 ? f.b : c;
            break;
        case 2:
            c = q.x < -0.1 + 0.5 * q.y ? f.b : c;
            break;
        case 3: {
            const Cell spot = Cells(q.x * 6.5, q.y * 6.5, 12, 0.6);
            if (spot.nearest < 0.3) c = spot.nearest < 0.17 ? f.c : f.b;
            break;
        }
        case 4:
            c = std::sin(q.x * 15 + q.y * q.y * 4) > 0.25 ? f.b : c;
            break;
        default:
            c = Ramp({f.b, f.a, f.c}, 0.5 + q.x * 0.5);
    }
    return c;
}

void DrawFish(Canvas& canvas, const Fish& f) {
    auto local = [&f](Vec p) { return Vec{(p.x - f.at.x) / f.size * f.facing, (p.y - f.at.y) / f.size}; };
    const double h = f.tall, s = f.size;
    auto body = [&](Vec q) { return Ellipse(q, {0.05, 0}, {0.95, h}); };
    auto tail = [&](Vec q) {
        return Polygon(q, {{-0.72, 0}, {-1.42, -h * 0.95}, {-1.22, 0}, {-1.42, h * 0.95}}) - 0.04;
    };
    auto fins = [&](Vec q) {
        const double top =
            Polygon(q, {{0.45, -h * 0.8}, {-0.1, -h * 1.55}, {-0.75, -h * 1.3}, {-0.62, -h * 0.55}}) - 0.04;
        const double low = Polygon(q, {{0.1, h * 0.85}, {-0.35, h * 1.45}, {-0.7, h * 1.1}, {-0.6, h * 0.55}}) - 0.04;
        return std::min(top, low);
    };
    const Vec reach{s * 1.6, s * (h * 1.7 + 0.1)};
    auto fin = [&](Vec p, double) {
        const Vec q = local(p);
        return Mix(f.b, f.c, 0.35) * (0.8 + 0.25 * std::sin(std::atan2(q.y, q.x + 0.6) * 34));
    };
    canvas.Fill(
        f.at - reach, f.at + reach, [&](Vec p) { return s * std::min(tail(local(p)), fins(local(p))); }, fin);
    canvas.Fill(
        f.at - reach, f.at + reach, [&](Vec p) { return s * body(local(p)); },
        [&](Vec p, double d) {
            const Vec q = local(p);
            const double light = 0.72 + 0.42 * Clamp01(0.4 - q.y / h * 0.75);
            Rgb c = Skin(f, q);
            if (q.x > 0.55 - 0.1 * q.y * q.y && q.x < 0.585 - 0.1 * q.y * q.y) c = c * 0.7;  // gill
            return c * light * (0.8 + 0.2 * Smooth(0, -0.08 * s, d)) +
                   Hex(0xffffff) * (0.16 * std::exp(-std::pow((q.y / h + 0.45) / 0.16, 2)));
        });
    canvas.Fill(
        f.at - reach, f.at + reach,
        [&](Vec p) {
            const Vec q = local(p);
            return s * (Polygon(q, {{0.32, 0.03}, {-0.14, 0.3 * h / 0.5}, {-0.12, 0.02}}) - 0.03);
        },
        fin);
    const Vec eye = f.at + Vec{0.7 * s * f.facing, -0.16 * h * s};
    canvas.Disc(eye, 0.115 * s, Hex(0xfff6d8));
    canvas.Disc(eye + Vec{0.015 * s * f.facing, 0}, 0.075 * s, Hex(0x141420));
    canvas.Disc(eye + Vec{-0.02 * s, -0.03 * s}, 0.025 * s, Hex(0xffffff));
    canvas.Line(f.at + Vec{0.985 * s * f.facing, 0.1 * h * s}, f.at + Vec{0.82 * s * f.facing, 0.22 * h * s},
                std::max(1.5, 0.025 * s), f.c * 0.5);
}

void DrawStar(Canvas& canvas, Vec at, double r, Rgb colour) {
    canvas.Fill(
        at - Vec{r, r}, at + Vec{r, r},
        [=](Vec p) {
            double d = 1e9;
            for (int i = 0; i < 5; ++i)
                d = std::min(d, Capsule(p, at, at + Polar(r * 0.85, i * 2 * Pi / 5 - 1.3), r * 0.26, r * 0.1));
            return d;
        },
        [=](Vec p, double d) {
            const Cell dot = Cells(p.x / 9, p.y / 9, 13);
            return colour * (0.65 + 0.4 * Clamp01(-d / (r * 0.2))) +
                   Hex(0xffe9c0) * (0.5 * Smooth(0.3, 0.15, dot.nearest));
        });
}

}  // namespace

Canvas Aquarium() {
    Canvas canvas(Width, Height);
    canvas.Each(Water);
    Random random(4);
    for (int i = 0; i < 46; ++i) {  // a shoal far away
        const double t = random.Next() * 6.3;
        DrawFish(canvas, {{850 + 330 * std::cos(t) * random.Next() + 3.0 * i, 330 + 120 * std::sin(t) * random.Next()},
                          random.Between(11, 17),
                          1,
                          5,
                          Hex(0x8fd8e8),
                          Hex(0x4a9cc8),
                          Hex(0xd8f6ff),
                          0.36});
    }
    DrawRocks(canvas);
    for (int i = 0; i < 17; ++i) {
        const double x = i < 8 ? random.Between(10, 480) : random.Between(1130, 1590);
        DrawWeed(canvas, {x, Floor(x) + 40}, random.Between(240, 620), random.Between(13, 22),
                 random.Of<Rgb>({Hex(0x3fa65a), Hex(0x83b93a), Hex(0x2a8f7a), Hex(0xb04a6a)}), random.Between(0, 6));
    }
    const Rgb corals[] = {Hex(0xf0605f), Hex(0xf59a3c), Hex(0xd65db1), Hex(0xf7d154),
                          Hex(0x9a6be0), Hex(0xff8fa3), Hex(0x58c6b0)};
    for (int i = 0; i < 15; ++i) {
        const double x = 40 + i * 112 + random.Between(-40, 40);
        Branch(canvas, random, {x, Floor(x) + random.Between(10, 60)}, -Pi / 2 + random.Between(-0.2, 0.2),
               random.Between(42, 66), random.Between(15, 24), corals[i % 7], 4);
    }
    DrawBrainCoral(canvas, {640, 1090}, 105, Hex(0xf2c14e), Hex(0x9a5a24), 61);
    DrawBrainCoral(canvas, {1010, 1120}, 82, Hex(0xe07bb5), Hex(0x7a2f6b), 62);
    DrawBrainCoral(canvas, {1370, 1080}, 120, Hex(0x7fd08a), Hex(0x2a6b52), 63);
    DrawBrainCoral(canvas, {200, 1115}, 95, Hex(0x8fb2f0), Hex(0x3a4a9a), 64);
    DrawStar(canvas, {830, 1130}, 62, Hex(0xe8552e));
    DrawStar(canvas, {450, 1145}, 48, Hex(0xf0a03a));
    DrawStar(canvas, {1180, 1160}, 44, Hex(0xc04a8f));
    const Rgb orange = Hex(0xf47b20), white = Hex(0xfdfaf0), black = Hex(0x1c1c28), yellow = Hex(0xf8d030),
              blue = Hex(0x2b5fd0), cyan = Hex(0x3fc8e0), pink = Hex(0xf07aa8), purple = Hex(0x7a45b8),
              green = Hex(0x4cb86a), red = Hex(0xd8343a);
    const Fish fish[] = {
        {{330, 330}, 118, 1, 0, orange, white, black, 0.5},  {{1250, 250}, 105, -1, 4, yellow, black, white, 0.78},
        {{820, 640}, 135, 1, 2, blue, yellow, black, 0.56},  {{1330, 620}, 120, -1, 1, red, white, purple, 0.5},
        {{240, 690}, 92, 1, 3, green, yellow, blue, 0.55},   {{560, 480}, 70, -1, 0, purple, yellow, black, 0.62},
        {{1040, 430}, 74, 1, 4, white, red, orange, 0.6},    {{620, 190}, 78, 1, 1, yellow, cyan, blue, 0.72},
        {{1060, 810}, 72, -1, 3, orange, white, red, 0.52},  {{520, 860}, 80, 1, 5, pink, purple, yellow, 0.5},
        {{1490, 420}, 66, -1, 0, orange, white, black, 0.5}, {{120, 480}, 56, 1, 2, yellow, blue, black, 0.6},
        {{900, 180}, 52, -1, 5, cyan, blue, white, 0.45},    {{1460, 830}, 70, -1, 4, cyan, blue, black, 0.7},
        {{1240, 920}, 46, 1, 0, red, white, black, 0.5},     {{390, 990}, 52, -1, 2, purple, orange, black, 0.55},
        {{760, 880}, 44, -1, 1, green, white, black, 0.6},   {{90, 130}, 60, 1, 4, pink, white, red, 0.75}};
    for (const Fish& f : fish) DrawFish(canvas, f);
    for (int i = 0; i < 150; ++i) {
        const double stream = random.Of<double>({420, 705, 1130, 1420});
        const Vec p{stream + random.Between(-34, 34), random.Between(30, 1080)};
        const double r = random.Between(3, 13) * (1.2 - p.y / 1600);
        canvas.Fill(
            p - Vec{r + 2, r + 2}, p + Vec{r + 2, r + 2}, [=](Vec q) { return std::abs(Circle(q, p, r)) - 0.9; },
            Hex(0xe8fcff), 0.8);
        canvas.Disc(p, r, Hex(0xbdf0ff), 0.16);
        canvas.Disc(p - Vec{r * 0.35, r * 0.35}, r * 0.22, Hex(0xffffff), 0.9);
    }
    canvas.Finish(0.25, 0.01, 6);
    return canvas;
}

}  // namespace pictures
