// A wall of painted tiles, twelve patterns under one glaze.
#include "pictures.h"

namespace pictures {
using namespace paint;

namespace {

constexpr int Width = 1200, Height = 900, Columns = 12, Rows = 9, Side = 100;

const Rgb Glaze = Hex(0xf6f4ec), Blue = Hex(0x1f4e9e), Sky = Hex(0x6f9fd8), Yellow = Hex(0xf0b930),
          Rust = Hex(0xc2562c), Green = Hex(0x3c8a68), Navy = Hex(0x152f66);

// One pattern at u, v (-1 to 1 over the tile), drawn with the tile's three inks.
Rgb Pattern(int kind, double u, double v, const Rgb ink[3]) {
    const double au = std::abs(u), av = std::abs(v), r = std::sqrt(u * u + v * v), a = std::atan2(v, u);
    const double hi = std::max(au, av), lo = std::min(au, av);
    switch (kind) {
        case 0: {  // four-leaved flower, quarter circles in the corners
            const double corner = Length({1 - au, 1 - av});
            if (corner < 0.62) return corner < 0.2 ? ink[2] : corner < 0.42 ? ink[1] : corner < 0.5 ? Glaze : ink[0];
            if (r < 0.13) return ink[2];
            return r < 0.62 * std::abs(std::cos(2 * a)) + 0.05 ? (r < 0.4 * std::abs(std::cos(2 * a)) ? ink[1] : ink[0])
                                                               : Glaze;
        }
        case 1: {  // star of eight
            const double star = std::min(hi, (au + av) / std::sqrt(2.0));
            const double other = std::max(hi, (au + av) / std::sqrt(2.0));
            if (other < 0.26) return ink[2];
            if (other < 0.4) return Glaze;
            if (star < 0.62) return ink[0];
            if (star < 0.7) return Glaze;
            return star < 0.8 ? ink[1] : lo > 0.78 ? ink[2] : Glaze;
        }
        case 2: {  // interlaced rings round the corners
            double best = 9;
            for (int i = 0; i < 4; ++i)
                best = std::min(best, std::abs(Length({u - (i % 2 ? 1 : -1), v - (i / 2 ? 1 : -1)}) - 1.0));
            if (best < 0.09) return ink[0];
            if (best < 0.13) return Navy;
            if (r < 0.2) return ink[2];
            return r < 0.4 && std::cos(4 * a) > 0 ? ink[1] : (hi > 0.84 && lo < 0.2) ? ink[2] : Glaze;
        }
        case 3: {  // tulips towards the corners
            const double d = (au + av) / std::sqrt(2.0), s = std::abs(au - av) / std::sqrt(2.0);
            if (d > 0.72 && d < 1.22 && s < 0.3 * std::sin((d - 0.7) * 5.2)) return s < 0.09 ? ink[2] : ink[0];
            if (s < 0.045 && d < 0.8) return Green;
            if (d > 0.34 && d < 0.74 && std::abs(s - 0.13) < 0.08 * std::sin((d - 0.34) * 7.8)) return Green;
            if (r < 0.22) return r < 0.1 ? ink[2] : ink[1];
            return hi > 0.93 ? ink[1] : Glaze;
        }
        case 4: {  // knot of ribbons
            const double wave = std::abs(v - 0.4 * std::sin(u * Pi)), wave2 = std::abs(v + 0.4 * std::sin(u * Pi)),
                         wave3 = std::abs(u - 0.4 * std::sin(v * Pi)), wave4 = std::abs(u + 0.4 * std::sin(v * Pi));
            if (std::min(wave, wave3) < 0.085) return ink[0];
            if (std::min(wave2, wave4) < 0.085) return ink[1];
            if (std::min({wave, wave2, wave3, wave4}) < 0.125) return Navy;
            return r > 1.05 ? ink[2] : Glaze;
        }
        case 5: {  // rose of petals
            const double petals = 0.72 + 0.13 * std::cos(8 * a);
            if (r < 0.16) return ink[2];
            if (r < 0.2) return Navy;
            if (r < petals * 0.62) return std::cos(8 * a) > -0.3 ? ink[1] : ink[0];
            if (r < petals) return ink[0];
            if (r < petals + 0.06) return Navy;
            return lo > 0.7 ? (lo > 0.83 ? ink[2] : ink[1]) : Glaze;
        }
        case 6: {  // chequers on the slant
            const double x = (u + v) * 2.5, y = (u - v) * 2.5;
            const int cell = int(std::floor(x)) + int(std::floor(y));
            const double fx = x - std::floor(x) - 0.5, fy = y - std::floor(y) - 0.5;
            if (Length({fx, fy}) < 0.2) return cell % 2 ? ink[2] : Glaze;
            return cell % 2 ? ink[0] : (std::max(std::abs(fx), std::abs(fy)) < 0.36 ? Glaze : ink[1]);
        }
        case 7: {  // a caravel
            const Vec p{u, v};
            if (Polygon(p, {{-0.6, 0.35}, {0.65, 0.35}, {0.45, 0.62}, {-0.45, 0.62}}) < 0)
                return v < 0.42 ? ink[2] : ink[0];
            if (Polygon(p, {{-0.05, -0.7}, {-0.05, 0.26}, {-0.6, 0.26}}) < 0) return ink[1];
            if (Polygon(p, {{0.06, -0.55}, {0.06, 0.26}, {0.58, 0.26}}) < 0) return Sky;
            if (std::abs(u) < 0.03 && v > -0.82 && v < 0.36) return Navy;
            if (v > 0.62 && std::sin(u * 14) * 0.05 + 0.7 > v) return ink[0];
            return hi > 0.88 ? ink[0] : Glaze;
        }
        case 8: {  // bird
            const Vec p{u, v};
            if (Circle(p, {0.33, -0.3}, 0.045) < 0) return Navy;
            if (Polygon(p, {{0.46, -0.36}, {0.74, -0.24}, {0.46, -0.2}}) < 0) return Yellow;
            if (Ellipse(Turned(p, 0.5), {-0.1, 0.16}, {0.34, 0.16}) < 0) return ink[1];
            if (std::min(Circle(p, {0.3, -0.27}, 0.2), Ellipse(Turned(p, -0.35), {-0.05, 0.1}, {0.46, 0.3})) < 0)
                return ink[0];
            if (Polygon(p, {{-0.3, 0.1}, {-0.86, -0.1}, {-0.8, 0.12}, {-0.4, 0.32}}) < 0) return ink[0] * 0.8;
            if (std::abs(v - 0.56 - 0.05 * std::sin(u * 6)) < 0.04) return Rust;
            if (Length({std::abs(std::remainder(u, 0.36)) - 0.06, v - 0.68}) < 0.08 && v > 0.56) return Green;
            return hi > 0.88 ? ink[1] : Glaze;
        }
        case 9: {  // fish scales
            double best = 9;
            int row = 0;
            for (int j = -1; j < 6; ++j)
                for (int i = -1; i < 6; ++i) {
                    const Vec c{-1 + (i + 0.5 * (j % 2 != 0)) * 0.5, -1.1 + j * 0.4};
                    const double d = Length(Vec{u, v} - c);
                    if (d < 0.29 && v > c.y - 0.02 && d < best + 9) best = d, row = j;
                }
            if (best > 0.29) return ink[0];
            return best > 0.235 ? Navy : best > 0.15 ? (row % 2 ? ink[0] : ink[1]) : best > 0.08 ? Glaze : ink[2];
        }
        case 10: {  // pomegranate vase
            const Vec p{au, v};
            if (Ellipse(p, {0, 0.42}, {0.3, 0.3}) < 0 || Box(p, {-1, 0.62}, {0.22, 0.78}) < 0 ||
                Box(p, {-1, 0.08}, {0.18, 0.2}) < 0)
                return std::sin(v * 34) > 0.2 ? ink[0] : ink[1];
            if (std::abs(au - 0.42 * std::sin(std::max(0.0, 0.1 - v) * 2.1)) < 0.035 && v < 0.12 && v > -0.6)
                return Green;
            if (Circle(p, {0.42, -0.52}, 0.19) < 0) return Circle(p, {0.42, -0.52}, 0.1) < 0 ? ink[2] : Rust;
            if (Circle(p, {0, -0.42}, 0.24) < 0) return Circle(p, {0, -0.42}, 0.12) < 0 ? ink[2] : ink[0];
            if (Ellipse(Turned(p, 0.6), {0.3, -0.28}, {0.17, 0.07}) < 0) return Green;
            return hi > 0.88 ? ink[0] : Glaze;
        }
        default: {  // sun
            if (r < 0.36) {
                if (Circle({au, v}, {0.12, -0.08}, 0.045) < 0 ||
                    (std::abs(Length({u, v - 0.02}) - 0.2) < 0.03 && v > 0.1))
                    return Navy;
                return Yellow;
            }
            if (r < 0.4) return Rust;
            const double ray = std::cos(12 * a);
            if (r < 0.62 + 0.22 * ray) return ray > 0.25 ? Rust : Yellow;
            return hi > 0.9 ? ink[0] : lo > 0.7 && r > 1.08 ? ink[1] : Glaze;
        }
    }
}

}  // namespace

Canvas Tiles() {
    constexpr int Fine = 3;
    Canvas canvas(Width * Fine, Height * Fine);
    canvas.Each([](Vec fine) {
        const Vec p = fine * (1.0 / Fine);
        const int col = int(p.x) / Side, row = int(p.y) / Side;
        const double x = p.x - col * Side, y = p.y - row * Side;
        const double gap = std::min({x, y, Side - x, Side - y});
        if (gap < 1.5) return Hex(0xb8b0a0) * (0.9 + 0.2 * Hash(int(p.x), int(p.y), 1));
        static const Rgb inks[][3] = {{Blue, Sky, Yellow},  {Navy, Blue, Rust}, {Blue, Green, Yellow},
                                      {Rust, Yellow, Blue}, {Green, Sky, Rust}, {Sky, Blue, Rust}};
        const int kind = (col * 5 + row * 3 + int(Hash(col, row, 3) * 5)) % 12;
        const Rgb* ink = inks[size_t(Hash(col, row, 4) * 5.99)];
        // A hand's wobble in the drawing.
        const double u = (x / Side * 2 - 1) * 1.04 + 0.018 * Noise(p.x / 9, p.y / 9, 5),
                     v = (y / Side * 2 - 1) * 1.04 + 0.018 * Noise(p.x / 9, p.y / 9, 6);
        Rgb c = Pattern(kind, u, v, ink);
        c = c * (0.93 + 0.1 * Hash(col, row, 7) + 0.07 * Fbm(p.x / 22, p.y / 22, 3, 8));
        const double bevel = Smooth(1.5, 6, gap);
        c = c * Mix(x + y < Side ? 1.08 : 0.8, 1, bevel);
        const double gloss = std::exp(-std::pow((x - y * 0.6 - 20 - 30 * Hash(col, row, 9)) / 9, 2));
        return c + Rgb{0.09, 0.09, 0.09} * gloss * bevel;
    });
    return canvas.Reduced(Fine);
}

}  // namespace pictures
