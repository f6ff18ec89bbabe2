// Shells, stars and pebbles that a wave has left on the sand.
#include "pictures.h"

namespace pictures {
using namespace paint;

namespace {

constexpr int Width = 1600, Height = 1200;

// How far up the beach the foam has come at x.
double Foam(double x) { return 215 + 70 * std::sin(x / 260 + 0.6) + 45 * Fbm(x / 150, 2, 4, 4); }

Rgb Beach(Vec p) {
    const double wind = std::sin(p.y / 15 + 2.4 * Fbm(p.x / 170, p.y / 110, 4, 2) + p.x / 190);
    Rgb c = Mix(Hex(0xe9cf9f), Hex(0xd2ad78), 0.5 + 0.5 * Fbm(p.x / 240, p.y / 200, 5, 3)) * (1 + 0.075 * wind);
    c = c * (0.93 + 0.14 * Hash(int(p.x), int(p.y), 1));
    if (Hash(int(p.x / 2), int(p.y / 2), 2) > 0.988)
        c = Hash(int(p.x / 2), int(p.y / 2), 3) > 0.5 ? Hex(0xfff6e0) : Hex(0x8a6a4a);
    const double shore = Foam(p.x), d = p.y - shore;
    c = c * Mix(0.72, 1, Smooth(0, 190, d));  // wet
    if (d < 0) {
        Rgb sea = Ramp({Hex(0x1f86a0), Hex(0x4fb8bc), Hex(0xa8dcd0)}, 1 + d / 260);
        const Cell net = Cells(p.x / 62 + Noise(p.x / 50, p.y / 50, 6), p.y / 44, 7);
        sea = sea + Hex(0xf8fff0) * (0.5 * Smooth(0.14, 0, net.second - net.nearest));
        c = Mix(c, sea, Smooth(0, -80, d) * 0.85 + 0.12);
    }
    const Cell bubble = Cells(p.x / 9, p.y / 9, 8);
    const double lace = Smooth(34 + 26 * Fbm(p.x / 60, p.y / 30, 4, 9), 4, std::abs(d + 12)) *
                        (0.55 + 0.75 * Smooth(0.1, 0.45, bubble.nearest));
    return Mix(c, Hex(0xfdfefc), Clamp01(lace));
}

struct Pose {
    Vec at;
    double size, angle;
    Vec Local(Vec p) const { return Turned(p - at, -angle) * (1 / size); }
};

template <class Shape, class Colour>
void Lay(Canvas& canvas, const Pose& k, Shape shape, Colour colour, double drop = 0.12) {
    const Vec reach{k.size * 1.5, k.size * 1.5};
    const Vec shift{k.size * drop, k.size * drop * 1.2};
    canvas.Fill(
        k.at - reach, k.at + reach, [&](Vec p) { return k.size * shape(k.Local(p - shift)); }, Hex(0x4a3018), 0.5,
        k.size * 0.22);
    canvas.Fill(
        k.at - reach, k.at + reach, [&](Vec p) { return k.size * shape(k.Local(p)); },
        [&](Vec p, double d) { return colour(k.Local(p)) * (0.8 + 0.2 * Smooth(0, -k.size * 0.07, d)); });
}

// A fan of ribs.
void DrawScallop(Canvas& canvas, const Pose& k, Rgb a, Rgb b) {
    const Vec hinge{0, 0.8};
    auto shape = [=](Vec q) {
        const Vec d = q - hinge;
        const double angle = std::atan2(d.x, -d.y), ribs = 0.035 * std::cos(angle * 22);
        const double fan = std::max(Length(d) - 1.72 * (1 - 0.17 * angle * angle) - ribs, std::abs(angle) - 1.02);
        return std::min(fan, Box(q, {-0.42, 0.6}, {0.42, 0.88}, 0.1));
    };
    Lay(canvas, k, shape, [=](Vec q) {
        const Vec d = q - hinge;
        const double angle = std::atan2(d.x, -d.y), r = Length(d);
        const double rib = 0.5 + 0.5 * std::cos(angle * 22), ring = std::sin(r * 17 + 0.6 * std::sin(angle * 3));
        Rgb c = Mix(a, b, Smooth(-0.6, 0.8, ring) * Smooth(0.2, 1.4, r));
        c = Mix(c, Hex(0xfff4e6), 0.45 * Smooth(0.7, 0.1, r));
        return c * (0.74 + 0.34 * rib) * (1.06 - 0.16 * (q.x + q.y * 0.3));
    });
}

// A snail: a spiral whose coils grow by the same factor each turn.
void DrawSnail(Canvas& canvas, const Pose& k, Rgb a, Rgb b, Rgb c) {
    auto coil = [](Vec q) {  // turns outwards from the middle; .5 is the middle of a coil
        const double r = std::max(1e-4, Length(q)), angle = std::atan2(q.y, q.x) / (2 * Pi);
        return std::log(r) / std::log(2.15) - angle;
    };
    auto shape = [=](Vec q) {
        const double angle = std::atan2(q.y, q.x) / (2 * Pi);
        return Length(q) - std::pow(2.15, angle) * 0.72;
    };
    Lay(canvas, k, shape, [=](Vec q) {
        const double t = coil(q) + 10 - std::log(0.72) / std::log(2.15), in = t - std::floor(t);
        const double along = std::atan2(q.y, q.x) + 2 * Pi * std::floor(t);
        Rgb colour = Mix(a, b, Smooth(0.2, 0.8, 0.5 + 0.5 * std::sin(along * 9 + 4 * in)));
        if (std::abs(in - 0.62) < 0.09) colour = c;
        if (std::abs(in - 0.25) < 0.04) colour = Mix(colour, c, 0.6);
        const double round = std::sin(Pi * std::pow(in, 0.8));
        return colour * (0.5 + 0.55 * round) +
               Hex(0xffffff) * (0.25 * std::exp(-std::pow((in - 0.45) / 0.1, 2)) * Smooth(0.3, -0.6, q.x + q.y));
    });
}

// A tall turret of whorls.
void DrawTurret(Canvas& canvas, const Pose& k, Rgb a, Rgb b) {
    auto width = [](double t) { return 0.06 + 0.36 * t; };
    auto shape = [=](Vec q) {
        const double t = (q.y + 1) / 2, whorl = std::fmod(std::pow(std::max(0.001, t), 0.62) * 8 + 0.2 * q.x, 1.0);
        return std::max({std::abs(q.x) - width(t) * (0.86 + 0.16 * std::sin(Pi * whorl)), -1 - q.y,
                         q.y - 1 + 0.35 * q.x * q.x + 0.25 * q.x});
    };
    Lay(canvas, k, shape, [=](Vec q) {
        const double t = std::max(0.001, (q.y + 1) / 2), u = q.x / width(t);
        const double whorl = std::fmod(std::pow(t, 0.62) * 8 + 0.25 * q.x + 8, 1.0);
        const double spots = Noise(u * 2.2 + 9 * std::floor(std::pow(t, 0.62) * 8), whorl * 2.2, 12);
        const Rgb c = Mix(a, b, Smooth(0.0, 0.25, spots));
        return c * (0.55 + 0.5 * std::sin(Pi * std::pow(whorl, 0.7))) * (1.02 - 0.3 * u * u - 0.15 * u);
    });
}

void DrawStarfish(Canvas& canvas, const Pose& k, Rgb colour, Rgb dots) {
    auto shape = [=](Vec q) {
        double d = 9;
        for (int i = 0; i < 5; ++i) {
            const Vec tip = Polar(1, i * 2 * Pi / 5 - Pi / 2);
            d = std::min(d, Capsule(q, {0, 0}, tip + Vec{-tip.y, tip.x} * (0.12 * std::sin(i * 2.3)), 0.33, 0.09));
        }
        return d;
    };
    Lay(canvas, k, shape, [=](Vec q) {
        const Cell dot = Cells(q.x * 11, q.y * 11, 21, 0.7);
        double ridge = 9;
        for (int i = 0; i < 5; ++i)
            ridge = std::min(ridge, Segment(q, {0, 0}, Polar(0.95, i * 2 * Pi / 5 - Pi / 2), 0));
        return Mix(colour, dots, 0.75 * Smooth(0.32, 0.16, dot.nearest)) * (1.12 - 0.9 * ridge) +
               dots * (0.4 * Smooth(0.035, 0.01, ridge));
    });
}

void DrawSandDollar(Canvas& canvas, const Pose& k, Rgb tint) {
    Lay(
        canvas, k, [](Vec q) { return Length(q) - 0.9 - 0.02 * std::cos(std::atan2(q.y, q.x) * 5); },
        [=](Vec q) {
            const double r = Length(q), a = std::atan2(q.y, q.x);
            const double petal = std::abs(r - 0.42) / 0.3 + std::abs(std::sin(a * 2.5)) * 1.6;
            Rgb c = tint * (1.08 - 0.18 * (q.x + q.y)) * (0.97 + 0.05 * Noise(q.x * 30, q.y * 30, 3));
            if (petal < 1.0) c = c * (petal < 0.72 ? 0.94 + 0.05 * std::sin(r * 120) : 0.72);
            if (r < 0.05) c = c * 0.6;
            return c;
        });
}

void DrawPebble(Canvas& canvas, const Pose& k, Rgb a, Rgb b, uint32_t seed) {
    Lay(
        canvas, k,
        [=](Vec q) {
            return Ellipse(q, {0, 0}, {0.95, 0.68}) + 0.1 * Noise(q.x * 1.6 + seed, q.y * 1.6, seed);
        },
        [=](Vec q) {
            const double band = std::sin(q.x * 5 + q.y * 8 + 3 * Fbm(q.x * 1.5, q.y * 1.5, 4, seed));
            return Mix(a, b, Smooth(0.2, 0.9, band)) * (1.05 - 0.4 * (q.x * 0.5 + q.y)) +
                   Hex(0xffffff) * (0.25 * std::exp(-Length(q + Vec{0.3, 0.3}) * 5));
        });
}

}  // namespace

Canvas Shells() {
    Canvas canvas(Width, Height);
    canvas.Each(Beach);
    Random random(14);
    const std::vector<Rgb> tints = {Hex(0xf2b8a0), Hex(0xe8876a), Hex(0xf6dcc0), Hex(0xc96a6a),
                                    Hex(0xd9a06a), Hex(0xb8849a), Hex(0xf8efe2), Hex(0x9a6a4a),
                                    Hex(0xe6c0d0), Hex(0x8fa0b8), Hex(0xf0c46a)};
    struct Spot {
        Vec at;
        double r;
    };
    std::vector<Spot> spots;
    for (int i = 0; i < 26000; ++i) {
        const double r = i < 900 ? random.Between(72, 108) : i < 5000 ? random.Between(38, 66) : random.Between(12, 28);
        const Vec at{random.Between(20, Width - 20), random.Between(180, Height - 20)};
        if (at.y < Foam(at.x) + 20 + r * 0.6) continue;
        bool free = true;
        for (const Spot& s : spots) free = free && Length(s.at - at) > (s.r + r) * 1.03;
        if (free) spots.push_back({at, r});
    }
    for (const Spot& s : spots) {
        const Pose pose{s.at, s.r * 0.93, random.Between(0, 6.3)};
        const Rgb a = random.Of(tints), b = random.Of(tints);
        const int kind = s.r < 30 ? 5 + random.Below(3) : random.Below(6);
        if (kind == 0 || kind == 6)
            DrawScallop(canvas, pose, a, Mix(b, Hex(0x7a2f2a), 0.35));
        else if (kind == 1)
            DrawSnail(canvas, {s.at, s.r * 0.88, pose.angle}, Mix(a, Hex(0xfff6e8), 0.4), a * 0.85,
                      Mix(b, Hex(0x6a2f1a), 0.6));
        else if (kind == 2)
            DrawTurret(canvas, pose, Mix(a, Hex(0xfff2e0), 0.5), Mix(b, Hex(0x8a3f20), 0.6));
        else if (kind == 3)
            DrawStarfish(canvas, pose,
                         random.Of<Rgb>({Hex(0xe2602c), Hex(0xd83f4a), Hex(0xf0a038), Hex(0x9a4f9a), Hex(0x3f7fb0)}),
                         Hex(0xffe6c0));
        else if (kind == 4)
            DrawSandDollar(canvas, pose, Mix(Hex(0xf2e6d2), a, 0.3));
        else
            DrawPebble(canvas, pose,
                       random.Of<Rgb>(
                           {Hex(0x7a8a94), Hex(0xa59a8a), Hex(0x5f6a70), Hex(0xb8886a), Hex(0x8f9a80), Hex(0xd8d0c4)}),
                       random.Of<Rgb>({Hex(0xe8e4dc), Hex(0x4a5258), Hex(0xc8a890)}), uint32_t(random.Below(999)));
    }
    canvas.Finish(0.22, 0.0, 1);
    return canvas;
}

}  // namespace pictures
