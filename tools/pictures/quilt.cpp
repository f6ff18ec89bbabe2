// A patchwork quilt of twelve times nine blocks, sewn from two dozen printed cottons.
#include "pictures.h"

namespace pictures {
using namespace paint;

namespace {

constexpr int Width = 1600, Height = 1200, Border = 56;
constexpr double Block = 124;

const std::vector<Rgb> Dyes = {Hex(0xb8312f), Hex(0xe4572e), Hex(0xf2a33c), Hex(0xf5d565), Hex(0x7fa650), Hex(0x2f7d5b),
                               Hex(0x2a9d8f), Hex(0x4a90c2), Hex(0x27548a), Hex(0x5b4b9a), Hex(0x9a4c95), Hex(0xd86a94),
                               Hex(0xf3c9b5), Hex(0x8a5a3c), Hex(0xf6ead2), Hex(0x3b3f5c)};

// The print of cotton number `n` at a point of the cloth.
Rgb Cotton(int n, Vec p) {
    const Rgb ground = Dyes[size_t(n) % Dyes.size()], ink = Dyes[size_t(n * 7 + 5) % Dyes.size()],
              pale = Mix(ground, Hex(0xfff8e8), 0.6);
    const Vec q = Turned(p, n * 0.6);
    Rgb c = ground;
    switch (n % 8) {
        case 0: {  // dots
            const Cell dot = Cells(p.x / 13, p.y / 13, 5, 0);
            c = Mix(pale, ground, Smooth(0.2, 0.27, dot.nearest));
            break;
        }
        case 1:
            c = std::sin(q.x / 2.3) > 0.35 ? pale : ground;
            break;
        case 2: {  // gingham
            const int over = (std::sin(p.x / 3.4) > 0) + (std::sin(p.y / 3.4) > 0);
            c = over == 0 ? Mix(ground, Hex(0xfffaf0), 0.75) : over == 1 ? Mix(ground, Hex(0xfffaf0), 0.35) : ground;
            break;
        }
        case 3: {  // small flowers
            const Cell f = Cells(p.x / 22, p.y / 22, uint32_t(n), 0.5);
            const Vec d = (Vec{p.x / 22, p.y / 22} - f.centre) * 22;
            const double r = Length(d), a = std::atan2(d.y, d.x) + IdHash(f.id, 1) * 6;
            if (r < 4.6 + 2.4 * std::cos(5 * a)) c = Mix(ink, Hex(0xfffaf0), 0.4);
            if (r < 2.1) c = Hex(0xf5d565);
            break;
        }
        case 4:
            c = Mix(ground, pale, 0.35 + 0.5 * std::sin(6 * Fbm(p.x / 34, p.y / 34, 3, uint32_t(n))));
            break;
        case 5:
            c = std::sin(q.x / 3.2 + 1.6 * std::sin(q.y / 5)) > 0.5 ? pale : ground;
            break;
        case 6: {  // checks of two colours
            c = (int(std::floor(q.x / 9)) + int(std::floor(q.y / 9))) % 2 ? ground : Mix(ground, ink, 0.35);
            break;
        }
        default:
            c = Mix(ground, pale, 0.12 * std::sin(p.x * 1.4) * std::sin(p.y * 1.4));
    }
    return c * (0.97 + 0.06 * Hash(int(p.x), int(p.y / 2), 6)) * (0.985 + 0.03 * Hash(int(p.x / 2), int(p.y), 7));
}

// Which patch of its block covers u, v (-1 to 1), counted from 0; the seams are where it changes.
int Patch(int pattern, double u, double v) {
    const double au = std::abs(u), av = std::abs(v), r = std::sqrt(u * u + v * v), a = std::atan2(v, u);
    const int quarter = (u > 0) + 2 * (v > 0);
    switch (pattern) {
        case 0: {  // pinwheel
            const bool turn = (u * v > 0) ? au > av : au < av;
            return turn ? 0 : 1;
        }
        case 1: {  // eight-pointed star
            if (std::max(au, av) < 0.5) return au + av < 0.5 ? 2 : 0;
            if (std::min(au, av) > 0.5) return 1;
            return std::min(au, av) < std::max(au, av) - 0.5 ? 0 : 1;
        }
        case 2: {  // log cabin
            for (int ring = 0; ring < 4; ++ring) {
                const double side = 0.2 + 0.2 * ring;
                if (std::max(au, av) < side) return ring == 0 ? 4 : (u + v > 0) ? ring % 2 : 2 + ring % 2;
            }
            return (u + v > 0) ? 0 : 2;
        }
        case 3:
            return std::fmod(v * 2 + 4, 1.0) > 2 * std::abs(au - 0.5) ? (u > 0 ? 0 : 2) : 1;  // flying geese
        case 4: {                                                                             // heart
            const double x = u * 1.25, y = -v * 1.25 + 0.15;
            const double k = x * x + y * y - 0.62;
            return k * k * k - x * x * y * y * y < 0 ? 0 : 1;
        }
        case 5:
            return r < 0.3 ? 2 : r < 0.92 ? (int(std::floor((a + Pi) * 8 / Pi)) % 2) : 3;  // plate
        case 6:
            return int(std::floor((u + 1) * 1.5)) % 2 == int(std::floor((v + 1) * 1.5)) % 2
                       ? 0
                       : (quarter == 0 || quarter == 3 ? 1 : 2);  // nine patch
        case 7: {                                                 // flower with a stalk
            const Vec p{u, v + 0.3};
            const double pr = Length(p), pa = std::atan2(p.y, p.x);
            if (pr < 0.16) return 2;
            if (pr < 0.42 + 0.13 * std::cos(6 * pa)) return 0;
            if (au < 0.06 && v > 0) return 3;
            return Ellipse(Turned({au - 0.3, v - 0.55}, 0.7), {0, 0}, {0.3, 0.12}) < 0 ? 3 : 1;
        }
        case 8:
            return int(std::floor((au + av) * 3.2)) % 3;  // diamonds
        default:
            return Length({u + 1, v + 1}) < 1.3   ? (Length({u + 1, v + 1}) < 0.7 ? 0 : 2)
                   : Length({u - 1, v - 1}) < 0.6 ? 2
                                                  : 1;  // fans
    }
}

Rgb QuiltPixel(Vec p) {
    const Vec q{p.x - Border, p.y - Border};
    const double edge = std::min({p.x, p.y, Width - p.x, Height - p.y});
    if (edge < Border) {
        const double puff = std::sin(Pi * Clamp01((edge - 4) / (Border - 4)));
        const int strip = int(std::floor((p.x + p.y) / 34));
        return Cotton(edge < 16 ? 24 : (strip % 2 ? 9 : 3), p) * (0.62 + 0.42 * puff);
    }
    const int col = int(q.x / Block), row = int(q.y / Block);
    const double u = (q.x / Block - col) * 2 - 1, v = (q.y / Block - row) * 2 - 1;
    const int pattern = (col * 3 + row * 7 + int(Hash(col, row, 1) * 3)) % 10;
    const int turn = int(Hash(col, row, 2) * 4);
    const Vec t = Turned({u, v}, turn * Pi / 2);
    auto patch = [&](double x, double y) { return Patch(pattern, x, y); };
    const int here = patch(t.x, t.y), base = int(Hash(col, row, 3) * 64);
    Rgb c = Cotton(base + here * (3 + int(Hash(col, row, 4) * 9)) + here, p + Vec{17.0 * here, 9.0 * here});
    // Distance to the nearest seam, felt out in eight directions: patches puff up between seams.
    double seam = std::min(1 - std::abs(u), 1 - std::abs(v)) * Block / 2;
    Vec pull{};
    for (int k = 0; k < 8; ++k) {
        for (double d = 1; d <= 9; d += 2) {
            const Vec s = t + Polar(d * 2 / Block, k * Pi / 4);
            if (patch(s.x, s.y) != here || std::max(std::abs(s.x), std::abs(s.y)) > 1) {
                seam = std::min(seam, d);
                pull = pull + Turned(Polar(1 / d, k * Pi / 4), -turn * Pi / 2);
                break;
            }
        }
    }
    const double light = Clamp01(0.5 + (pull.x + pull.y) * 0.16);
    c = c * (0.66 + 0.36 * Smooth(0, 7, seam)) * (0.86 + 0.28 * light);
    if (seam > 4.0 && seam < 5.6 && std::fmod(p.x + p.y * 1.3, 9.0) < 5)
        c = Mix(c, Hex(0xfff8e0), 0.6);  // quilting stitches
    return c * (1 + 0.07 * Fbm(p.x / 60, p.y / 60, 3, 9));
}

}  // namespace

Canvas Quilt() {
    Canvas canvas(Width * 2, Height * 2);
    canvas.Each([](Vec p) { return QuiltPixel(p * 0.5); });
    Canvas out = canvas.Reduced(2);
    out.Finish(0.22, 0.01, 2);
    return out;
}

}  // namespace pictures
