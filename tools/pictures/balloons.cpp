// Hot-air balloons over a quilt of fields.
#include "pictures.h"

namespace pictures {
using namespace paint;

namespace {

constexpr int Width = 1600, Height = 1200;
constexpr double Horizon = 690;

Rgb Sky(Vec p) {
    Rgb c = Ramp({Hex(0x2f6fc0), Hex(0x5ea3e0), Hex(0xa9d6f2), Hex(0xfdeed2)}, p.y / Horizon);
    const double rise = Smooth(Horizon, 40, p.y);
    const double body = Fbm(p.x / 260, p.y / 150, 7, 5), lit = Fbm(p.x / 260 - 0.06, p.y / 150 - 0.12, 7, 5);
    const double cloud = Smooth(0.06, 0.34, body);
    const Rgb shade = Mix(Hex(0xc9cfe4), Hex(0xffffff), Clamp01(0.6 + 2.2 * (body - lit)));
    return Mix(c, shade, cloud * (0.35 + 0.65 * rise));
}

// Fields seen from above, flattened towards the horizon.
Rgb Fields(Vec p) {
    const double depth = 170 / (p.y - Horizon + 12);  // 0 near, large far
    const double hill = 1 + 0.28 * Noise(p.x / 420, p.y / 200, 31);
    const double u = (p.x - Width / 2) * depth / 95 * hill + 0.4 * Noise(p.x / 200, p.y / 120, 2), v = depth * 9.5;
    const Cell cell = Cells(u, v, 21, 0.85);
    const std::vector<Rgb> colours = {Hex(0x6a9a3b), Hex(0x91b04a), Hex(0xe3c152), Hex(0xd8a23e),
                                      Hex(0x4f8340), Hex(0xb9c766), Hex(0x9c6b3f), Hex(0x7fae6a),
                                      Hex(0xf0dc86), Hex(0xb08ac0), Hex(0xc75b4a), Hex(0x557d35)};
    Rgb c = colours[size_t(IdHash(cell.id, 1) * 11.99)];
    const Vec q = Turned({u, v}, IdHash(cell.id, 2) * Pi);
    const double near = Smooth(1.6, 0.3, depth);
    c = c * (1 + near * 0.13 * std::sin(q.x * (26 + 40 * IdHash(cell.id, 3))) + 0.12 * Fbm(u * 6, v * 6, 3, 8));
    const double hedge = cell.second - cell.nearest;
    if (hedge < 0.055) c = Mix(Hex(0x2c4f26), Hex(0x4a6f33), Hash(int(u * 40), int(v * 40), 3));
    const double road = std::abs(p.x - (760 + 190 * std::sin((p.y - Horizon) / 105) + (p.y - Horizon) * 0.6)) * depth;
    if (road < 7 && p.y > Horizon + 16) c = road < 5.2 ? Hex(0xe9dcc0) : Hex(0x6b7d43);
    return Mix(c, Hex(0xbcd3e2), Smooth(0.9, 9, depth) * 0.85);
}

struct Dress {
    Rgb a, b, c;
    int pattern, gores;
};

Rgb Cloth(const Dress& dress, double longitude, double height) {
    const double gore = longitude * dress.gores / Pi;
    const int strip = int(std::floor(gore));
    switch (dress.pattern) {
        case 0:
            return strip % 2 ? dress.a : dress.b;
        case 1:
            return std::abs(height) < 0.3 ? ((strip + int(std::floor(height * 10))) % 2 ? dress.c : dress.b)
                                          : (strip % 2 ? dress.a : dress.a * 0.85);
        case 2:
            return ((int(std::floor(height * 4 + gore * 0.5)) % 3) + 3) % 3 == 0
                       ? dress.c
                       : (int(std::floor(height * 4 + gore * 0.5)) % 2 ? dress.a : dress.b);
        case 3: {
            const double zig = std::abs(gore - strip - 0.5) * 0.35;
            const int band = int(std::floor((height + zig) * 5 + 20));
            return band % 3 == 0 ? dress.a : band % 3 == 1 ? dress.b : dress.c;
        }
        default:
            return height < -0.45 ? dress.c : height > 0.5 ? dress.b : (strip % 3 == 0 ? dress.b : dress.a);
    }
}

void DrawBalloon(Canvas& canvas, Vec at, double r, const Dress& dress, double haze) {
    const Vec basket = at + Vec{0, r * 1.78};
    const Rgb air = Hex(0xcfe2f2);
    for (int side = -1; side <= 1; side += 2)
        for (double k : {0.4, 1.0})
            canvas.Line(at + Vec{side * r * 0.3 * k, r * 1.2}, basket + Vec{side * r * 0.13 * k, -r * 0.1},
                        std::max(1.0, r * 0.014), Mix(Hex(0x4a3a2a), air, haze));
    auto envelope = [=](Vec p) {
        const double y = (p.y - at.y) / r;
        const double half =
            y < 0.25 ? std::sqrt(std::max(0.0, 1 - y * y)) : Mix(0.968, 0.26, std::pow((y - 0.25) / 1.02, 1.18));
        return std::max({std::abs(p.x - at.x) - half * r, (y - 1.27) * r, (-1 - y) * r});
    };
    canvas.Fill(at - Vec{r + 2, r + 2}, at + Vec{r + 2, r * 1.35}, envelope, [=](Vec p, double) {
        const double y = (p.y - at.y) / r;
        const double half = y < 0.25 ? std::sqrt(std::max(0.02, 1 - y * y))
                                     : Mix(0.968, 0.26, std::pow(std::min(1.0, (y - 0.25) / 1.02), 1.18));
        const double x = std::clamp((p.x - at.x) / (half * r), -0.999, 0.999), longitude = std::asin(x) + Pi;
        Rgb c = Cloth(dress, longitude, y);
        const double seam = std::abs(std::sin(longitude * dress.gores));
        c = c * (0.86 + 0.14 * Smooth(0, 0.3, seam));
        const double light = 0.62 + 0.5 * Clamp01(0.55 - 0.55 * x - 0.35 * y);
        c = c * light +
            Hex(0xffffff) * (0.28 * std::exp(-(std::pow((x + 0.42) / 0.22, 2) + std::pow((y + 0.45) / 0.3, 2))));
        if (y > 1.18) c = Hex(0x3a2c26);
        return Mix(c, air, haze);
    });
    canvas.Fill(
        basket - Vec{r, r}, basket + Vec{r, r},
        [=](Vec p) {
            return Box(p, basket - Vec{r * 0.15, r * 0.1}, basket + Vec{r * 0.15, r * 0.14}, r * 0.04);
        },
        [=](Vec p, double) {
            const double weave = std::sin(p.x * 60 / r) * std::sin(p.y * 60 / r);
            return Mix(Mix(Hex(0x8a5a2c), Hex(0x5d3818), 0.5 + 0.5 * weave), air, haze);
        });
}

}  // namespace

Canvas Balloons() {
    Canvas canvas(Width, Height);
    canvas.Each([](Vec p) { return p.y < Horizon ? Sky(p) : Fields(p); });
    for (int layer = 0; layer < 3; ++layer) {
        for (int x = 0; x < Width; ++x) {
            const double crest =
                Horizon + 6 + layer * 9 -
                (95 - layer * 24) * Ridge(x / (300.0 - 40 * layer), layer * 9.1, 5, uint32_t(50 + layer)) + 30;
            for (int y = int(crest); y < Horizon + 22 + 8 * layer; ++y) {
                const Rgb c =
                    Mix(Hex(0x6f93b8), Hex(0x6f9468), layer * 0.45) * (1 + 0.2 * Fbm(x / 30.0, y / 18.0, 4, 60));
                canvas.At(x, y) = Mix(canvas.At(x, y), Mix(c, Hex(0xdbe6ea), Smooth(crest, Horizon + 30, y) * 0.7),
                                      Clamp01(y - crest));
            }
        }
    }
    Random random(9);
    for (int i = 0; i < 900; ++i) {  // trees, smaller the farther
        const double t = std::pow(random.Next(), 1.6), y = Horizon + 26 + t * 480, size = 2.5 + t * 15;
        const double x = random.Between(0, Width);
        if (Noise(x / 150, y / 60, 77) < -0.05) continue;
        const Rgb green = Mix(Hex(0x3f6d33), Hex(0x86a04a), random.Next());
        canvas.Disc({x + size * 0.6, y + size * 0.4}, size, Hex(0x27401f), 0.35, size * 0.5);
        for (int k = 0; k < 5; ++k)
            canvas.Disc(Vec{x, y} + Polar(size * 0.45, k * 1.3), size * 0.6,
                        Mix(green * (0.75 + 0.1 * k), Hex(0xbcd3e2), (1 - t) * 0.35), 1, 2);
    }
    for (int i = 0; i < 34; ++i) {  // houses
        const double t = random.Next(), y = Horizon + 40 + t * 420, s = 3 + t * 12, x = random.Between(20, Width - 20);
        canvas.Area({{x - s, y}, {x + s, y}, {x + s, y - s}, {x - s, y - s}}, Hex(0xf6efe0));
        canvas.Area({{x - s * 1.2, y - s}, {x + s * 1.2, y - s}, {x, y - s * 1.9}}, Hex(0xb5472f));
        canvas.Disc({x, y - s * 0.45}, s * 0.22, Hex(0x4a5a70));
    }
    const Rgb red = Hex(0xd7342f), yellow = Hex(0xf7c52d), blue = Hex(0x2358b8), white = Hex(0xfdf6e6),
              green = Hex(0x2f9a58), purple = Hex(0x7b3fa0), orange = Hex(0xf07d22), teal = Hex(0x1aa0a5),
              pink = Hex(0xe8588f), navy = Hex(0x1d2c66);
    struct Place {
        Vec at;
        double r;
        Dress dress;
    };
    const Place far[] = {{{1010, 520}, 26, {red, white, navy, 0, 6}}, {{380, 575}, 22, {purple, yellow, white, 0, 6}},
                         {{690, 430}, 34, {green, white, red, 4, 6}}, {{1210, 590}, 18, {orange, yellow, red, 0, 5}},
                         {{95, 470}, 30, {teal, white, navy, 1, 6}},  {{1545, 480}, 36, {pink, white, purple, 3, 6}},
                         {{850, 610}, 15, {blue, yellow, red, 0, 5}}, {{540, 265}, 46, {navy, yellow, red, 3, 8}}};
    for (const Place& b : far) DrawBalloon(canvas, b.at, b.r, b.dress, 0.32);
    const Place nearby[] = {
        {{1270, 230}, 92, {orange, white, blue, 1, 8}},   {{860, 150}, 74, {teal, yellow, pink, 2, 8}},
        {{230, 700}, 84, {yellow, green, white, 0, 8}},   {{960, 780}, 66, {pink, purple, yellow, 3, 8}},
        {{310, 270}, 158, {red, yellow, blue, 3, 10}},    {{1330, 690}, 186, {blue, white, red, 4, 12}},
        {{640, 620}, 118, {purple, orange, white, 2, 10}}};
    for (const Place& b : nearby) DrawBalloon(canvas, b.at, b.r, b.dress, 0.03);
    canvas.Finish(0.2, 0.012, 4);
    return canvas;
}

}  // namespace pictures
