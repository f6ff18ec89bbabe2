// A sailor's map of islands that never were.
#include "pictures.h"

namespace pictures {
using namespace paint;

namespace {

constexpr int Width = 1600, Height = 1200;
constexpr Rgb Ink = Hex(0x4a2e1a);

// Height of the land: above 0 is dry.
double Land(Vec p) {
    double h = 0.62 * Fbm(p.x / 310, p.y / 310, 7, 42) + 0.22 * Fbm(p.x / 90, p.y / 90, 4, 52) - 0.03;
    const Vec big{1040, 430};
    h += 0.42 * std::exp(-std::pow(Length(p - big) / 210, 2)) +
         0.36 * std::exp(-std::pow(Length(p - Vec{420, 720}) / 190, 2)) +
         0.26 * std::exp(-std::pow(Length(p - Vec{480, 260}) / 120, 2)) +
         0.3 * std::exp(-std::pow(Length(p - Vec{1130, 950}) / 120, 2));
    const double edge = std::min({p.x, p.y, Width - p.x, Height - p.y});
    return h - 0.9 * Smooth(170, 60, edge) - 0.8 * std::exp(-std::pow(Length(p - Vec{1395, 985}) / 150, 2)) -
           0.5 * std::exp(-std::pow(Length(p - Vec{190, 480}) / 90, 2));
}

Rgb Paper(Vec p, Rgb c) {
    const double stain = Fbm(p.x / 240, p.y / 240, 6, 5), fibre = Fbm(p.x / 5, p.y / 14, 3, 6);
    c = c * (1 + 0.16 * stain + 0.05 * fibre);
    for (double fold : {Width / 3.0, Width * 2 / 3.0})
        c = c * (1 - 0.13 * std::exp(-std::abs(p.x - fold) / 4) + 0.07 * std::exp(-std::abs(p.x - fold - 8) / 5));
    return c * (1 - 0.13 * std::exp(-std::abs(p.y - Height / 2) / 4) +
                0.07 * std::exp(-std::abs(p.y - Height / 2 - 8) / 5));
}

Rgb Ground(Vec p) {
    const double h = Land(p);
    if (h < 0) {
        const double depth = Clamp01(-h * 3);
        Rgb c = Ramp({Hex(0xa9d0c0), Hex(0x7fb3b5), Hex(0x5f97a8)}, depth);
        const double gx = Land(p + Vec{1.5, 0}) - h, gy = Land(p + Vec{0, 1.5}) - h,
                     slope = std::max(0.0008, Length({gx, gy}) / 1.5);
        for (int i = 1; i <= 4; ++i) {  // lines that follow the coast, fainter outwards
            const double d = std::abs(-h / slope - i * 9.0);
            c = Mix(c, Hex(0x2f5f73), Clamp01(1.1 - d) * (0.75 - 0.15 * i));
        }
        return c;
    }
    const double gx = Land(p + Vec{2, 0}) - h, gy = Land(p + Vec{0, 2}) - h;
    Rgb c = Ramp({Hex(0xf0dfa8), Hex(0xb9c878), Hex(0x9cb266), Hex(0xc9a86a), Hex(0xb58a5c), Hex(0xefe4cf)}, h * 1.5);
    c = c * (1 - 9 * (gx * 0.8 + gy * 0.6));
    if (h < 0.012) c = Ink;
    return c;
}

// Straight courses between the compass roses, over the sea only.
void DrawRhumbs(Canvas& canvas) {
    const Vec hubs[] = {{1395, 985}, {190, 480}, {800, 130}};
    canvas.Each([&](Vec p) {
        Rgb c = canvas.At(int(p.x), int(p.y));
        for (const Vec& hub : hubs) {
            const Vec d = p - hub;
            const double step = std::atan2(d.y, d.x) * 16 / Pi, nearest = std::round(step);
            const double off = std::abs(step - nearest) * Pi / 16 * Length(d);
            if (off > 1.2 || Land(p) > 0) continue;
            c = Mix(c, int(nearest) % 4 == 0 ? Hex(0x7a3a2a) : Hex(0x4a6a5a), 0.4 * Clamp01(1.2 - off));
        }
        return c;
    });
}

void DrawMountain(Canvas& canvas, Vec at, double s, Random& random) {
    const Vec peak = at + Vec{random.Between(-0.1, 0.1) * s, -s};
    const Vec left = at + Vec{-s * 0.75, 0}, right = at + Vec{s * 0.8, 0},
              mid = at + Vec{s * random.Between(-0.1, 0.15), 0};
    canvas.Area({left, peak, right}, Hex(0xe6d2a6));
    canvas.Area({peak, right, mid}, Hex(0x9a7450));
    canvas.Area({peak, peak + Vec{-s * 0.22, s * 0.32}, peak + Vec{-s * 0.04, s * 0.24}, peak + Vec{s * 0.14, s * 0.36},
                 peak + Vec{s * 0.24, s * 0.31}},
                Hex(0xfdf6e6));
    canvas.Path({left, peak, right}, 2, Ink);
    for (int i = 1; i < 5; ++i)
        canvas.Line(Mix(peak.x, right.x, i / 5.0) < 0 ? peak : peak + (right - peak) * (i / 5.0),
                    peak + (mid - peak) * (i / 5.0 + 0.12), 1.2, Ink, 0.7);
}

void DrawTree(Canvas& canvas, Vec at, double s, Rgb leaf) {
    canvas.Line(at, at - Vec{0, s * 0.6}, 2.2, Ink);
    canvas.Disc(at - Vec{0, s}, s * 0.56, Ink);
    canvas.Disc(at - Vec{0, s}, s * 0.56 - 1.6, leaf);
    canvas.Disc(at - Vec{s * 0.18, s * 1.18}, s * 0.2, Mix(leaf, Hex(0xffffd0), 0.4));
}

void DrawTown(Canvas& canvas, Vec at, double s) {
    const Rgb wall = Hex(0xf6e8cc), roof = Hex(0xb5442f);
    for (int i = -1; i <= 1; ++i) {
        const double h = s * (i == 0 ? 1.3 : 0.8), x = at.x + i * s * 0.62, w = s * 0.32;
        canvas.Area({{x - w, at.y}, {x - w, at.y - h}, {x + w, at.y - h}, {x + w, at.y}}, wall);
        canvas.Path({{x - w, at.y}, {x - w, at.y - h}, {x + w, at.y - h}, {x + w, at.y}, {x - w, at.y}}, 1.6, Ink);
        canvas.Area({{x - w * 1.25, at.y - h}, {x, at.y - h - s * 0.62}, {x + w * 1.25, at.y - h}}, roof);
        canvas.Path(
            {{x - w * 1.25, at.y - h}, {x, at.y - h - s * 0.62}, {x + w * 1.25, at.y - h}, {x - w * 1.25, at.y - h}},
            1.6, Ink);
        canvas.Disc({x, at.y - h * 0.55}, s * 0.09, Ink);
    }
    canvas.Line({at.x, at.y - s * 1.9}, {at.x, at.y - s * 2.5}, 1.8, Ink);
    canvas.Area({{at.x, at.y - s * 2.5}, {at.x + s * 0.55, at.y - s * 2.32}, {at.x, at.y - s * 2.14}}, Hex(0x2f5a9a));
}

void DrawCompass(Canvas& canvas, Vec at, double r) {
    canvas.Disc(at, r * 1.12, Hex(0xf2e2b6));
    for (double k : {1.12, 1.06, 0.78, 0.74})
        canvas.Fill(
            at - Vec{r * 1.3, r * 1.3}, at + Vec{r * 1.3, r * 1.3},
            [=](Vec p) { return std::abs(Circle(p, at, r * k)) - 1.1; }, Ink);
    for (int i = 0; i < 72; ++i)
        canvas.Line(at + Polar(r * (i % 6 ? 1.0 : 0.94), i * Pi / 36), at + Polar(r * 1.06, i * Pi / 36),
                    i % 2 ? 1.2 : 2.4, Ink);
    for (int ring = 2; ring >= 0; --ring) {
        const int n = ring == 2 ? 8 : 4;
        for (int i = 0; i < n; ++i) {
            const double a = ring == 0 ? i * Pi / 2 : ring == 1 ? i * Pi / 2 + Pi / 4 : i * Pi / 4 + Pi / 8;
            const double reach = r * (ring == 0   ? 1.0
                                      : ring == 1 ? 0.76
                                                  : 0.52),
                         waist = r * (ring == 0 ? 0.19 : 0.15), turn = ring == 2 ? Pi / 8 : Pi / 4;
            const Rgb dark[] = {Hex(0x9a2f2a), Hex(0x27507a), Hex(0x5a7a4a)},
                      light[] = {Hex(0xe8b04a), Hex(0xa9c8d8), Hex(0xd8d0a0)};
            canvas.Area({at, at + Polar(waist, a - turn), at + Polar(reach, a)}, light[ring]);
            canvas.Area({at, at + Polar(waist, a + turn), at + Polar(reach, a)}, dark[ring]);
            canvas.Path({at, at + Polar(waist, a - turn), at + Polar(reach, a), at + Polar(waist, a + turn), at}, 1.3,
                        Ink);
        }
    }
    canvas.Disc(at, r * 0.07, Hex(0xe8b04a));
}

void DrawShip(Canvas& canvas, Vec at, double s, Rgb stripe) {
    canvas.Area(Curve({at + Vec{-s, -s * 0.32}, at + Vec{-s * 0.85, s * 0.1}, at + Vec{-s * 0.4, s * 0.3},
                       at + Vec{s * 0.4, s * 0.3}, at + Vec{s * 0.9, s * 0.05}, at + Vec{s * 1.2, -s * 0.3},
                       at + Vec{s * 0.3, -s * 0.02}, at + Vec{-s * 0.6, -s * 0.05}},
                      8, true),
                Hex(0x7a4a26));
    canvas.Path(Curve({at + Vec{-s, -s * 0.32}, at + Vec{-s * 0.5, -s * 0.06}, at + Vec{s * 0.3, -s * 0.02},
                       at + Vec{s * 1.2, -s * 0.3}},
                      8, false),
                3, Ink);
    for (int i = 0; i < 6; ++i) canvas.Disc(at + Vec{-s * 0.55 + i * s * 0.23, s * 0.12}, s * 0.045, Hex(0xf0d8a0));
    for (int m = -1; m <= 1; ++m) {
        const Vec foot = at + Vec{m * s * 0.55, -s * 0.04};
        const double tall = s * (m == 0 ? 1.6 : 1.25);
        canvas.Line(foot, foot - Vec{0, tall}, 3, Ink);
        for (int k = 0; k < 2; ++k) {
            const double y = foot.y - tall * (k ? 0.93 : 0.58), w = s * (k ? 0.24 : 0.32), h = tall * 0.32;
            canvas.Area(Curve({{foot.x - w, y},
                               {foot.x + w, y},
                               {foot.x + w * 1.25, y + h * 0.55},
                               {foot.x + w, y + h},
                               {foot.x - w, y + h},
                               {foot.x - w * 0.8, y + h * 0.5}},
                              6, true),
                        k ? Hex(0xfaf0da) : stripe);
            canvas.Path({{foot.x - w, y}, {foot.x + w, y}}, 2, Ink);
            canvas.Path(
                Curve({{foot.x + w, y}, {foot.x + w * 1.25, y + h * 0.55}, {foot.x + w, y + h}, {foot.x - w, y + h}}, 6,
                      false),
                1.6, Ink);
        }
        canvas.Area({foot - Vec{0, tall}, foot - Vec{-s * 0.26, tall - s * 0.07}, foot - Vec{0, tall - s * 0.14}},
                    Hex(0xc0392b));
    }
    for (int i = -2; i <= 3; ++i)
        canvas.Path(Curve({at + Vec{i * s * 0.45 - 14, s * 0.42}, at + Vec{i * s * 0.45, s * 0.36},
                           at + Vec{i * s * 0.45 + 14, s * 0.42}},
                          6, false),
                    2, Hex(0xf4f8f0));
}

void DrawSerpent(Canvas& canvas, Vec at, double s) {
    for (int i = 0; i < 4; ++i) {
        const Vec c = at + Vec{i * s * 0.8, 0};
        const double r = s * (0.46 - 0.06 * i);
        canvas.Fill(
            c - Vec{r + 20, r + 20}, c + Vec{r + 20, 4},
            [=](Vec p) { return std::max(std::abs(Circle(p, c, r)) - s * (0.15 - 0.02 * i), p.y - c.y); },
            [=](Vec p, double d) {
                return Mix(Hex(0x2f7a5a), Hex(0x9ac86a), Clamp01(-d / 12)) *
                       (std::sin(std::atan2(p.y - c.y, p.x - c.x) * 16) > 0 ? 1.0 : 0.85);
            });
    }
    const Vec neck = at + Vec{-s * 0.75, 0}, head = at + Vec{-s * 1.0, -s * 0.9};
    canvas.Path(Curve({neck, neck + Vec{s * 0.14, -s * 0.4}, head + Vec{s * 0.3, s * 0.05}, head}, 8, false), s * 0.24,
                Hex(0x3f8a5e));
    canvas.Area({head + Vec{s * 0.2, -s * 0.17}, head + Vec{-s * 0.36, -s * 0.02}, head + Vec{-s * 0.1, s * 0.1},
                 head + Vec{-s * 0.32, s * 0.2}, head + Vec{s * 0.15, s * 0.18}},
                Hex(0x3f8a5e));
    canvas.Disc(head + Vec{0.02 * s, -0.04 * s}, s * 0.055, Hex(0xfbe08a));
    canvas.Disc(head + Vec{0.01 * s, -0.04 * s}, s * 0.025, Ink);
    for (int i = 0; i < 9; ++i)
        canvas.Path(Curve({at + Vec{-s * 1.2 + i * s * 0.5, s * 0.06}, at + Vec{-s * 1.0 + i * s * 0.5, -s * 0.02},
                           at + Vec{-s * 0.8 + i * s * 0.5, s * 0.06}},
                          5, false),
                    2.2, Hex(0xf0f6ea));
}

void DrawBorder(Canvas& canvas) {
    const double outer = 22, inner = 62;
    canvas.Each([&](Vec p) {
        const double edge = std::min({p.x, p.y, Width - p.x, Height - p.y});
        const Rgb under = canvas.At(int(p.x), int(p.y));
        if (edge > inner) return under;
        if (edge < outer) return Hex(0xe9d7ac);
        if (edge < outer + 3 || edge > inner - 3) return Ink;
        const bool across = std::min(p.y, Height - p.y) < inner && p.x > inner && p.x < Width - inner;
        const double along = across ? p.x : p.y;
        if (std::max(std::min(p.x, Width - p.x), std::min(p.y, Height - p.y)) < inner) return Hex(0x9a2f2a);
        if (edge < outer + 14) return int(along / 37) % 2 ? Hex(0xf4e6c0) : Ink;
        const double wave = std::abs(std::fmod(along / 37, 1.0) - 0.5) * 44;
        return edge - outer - 15 < wave ? Hex(0x27507a) : Hex(0xe8b04a);
    });
}

}  // namespace

Canvas OldMap() {
    Canvas canvas(Width, Height);
    canvas.Each(Ground);
    DrawRhumbs(canvas);
    Random random(8);
    struct Mark {
        Vec at;
        int kind;
        double size;
    };
    std::vector<Mark> marks;
    for (int i = 0; i < 30000 && marks.size() < 420; ++i) {
        const Vec at{random.Between(90, Width - 90), random.Between(100, Height - 80)};
        const double h = Land(at);
        if (h < 0.07) continue;
        const int kind = h > 0.27 ? 0 : Noise(at.x / 90, at.y / 90, 33) > 0.0 ? 1 : (random.Next() < 0.05 ? 2 : 3);
        if (kind == 3) continue;
        const double size = kind == 0 ? random.Between(26, 46) : kind == 1 ? random.Between(11, 17) : 19;
        bool free = true;
        for (const Mark& m : marks)
            free = free && Length(m.at - at) > (m.size + size) * (kind == 1 && m.kind == 1 ? 0.55 : 0.8);
        if (free) marks.push_back({at, kind, size});
    }
    std::sort(marks.begin(), marks.end(), [](const Mark& a, const Mark& b) { return a.at.y < b.at.y; });
    for (const Mark& m : marks) {
        if (m.kind == 0)
            DrawMountain(canvas, m.at, m.size, random);
        else if (m.kind == 1)
            DrawTree(canvas, m.at, m.size, Mix(Hex(0x5a8a3c), Hex(0x9ab04a), random.Next()));
        else
            DrawTown(canvas, m.at, m.size);
    }
    // The way to the treasure.
    const std::vector<Vec> way =
        Curve({{300, 980}, {470, 900}, {640, 930}, {760, 800}, {800, 640}, {930, 560}, {1010, 470}}, 60, false);
    for (size_t i = 0; i + 12 < way.size(); i += 20)
        canvas.Path({way.begin() + long(i), way.begin() + long(i) + 11}, 5, Hex(0xb3261e));
    for (int side = -1; side <= 1; side += 2)
        canvas.Line(way.back() - Vec{20, 20.0 * side}, way.back() + Vec{20, 20.0 * side}, 9, Hex(0xb3261e));
    DrawCompass(canvas, {1395, 985}, 128);
    DrawCompass(canvas, {190, 480}, 70);
    DrawShip(canvas, {850, 890}, 58, Hex(0xd8584a));
    DrawShip(canvas, {1390, 690}, 50, Hex(0x4a7ab0));
    DrawShip(canvas, {790, 300}, 42, Hex(0xe0a83a));
    DrawSerpent(canvas, {720, 1060}, 62);
    DrawSerpent(canvas, {770, 505}, 36);
    DrawBorder(canvas);
    canvas.Each([&](Vec p) { return Paper(p, canvas.At(int(p.x), int(p.y))); });
    canvas.Finish(0.35, 0.015, 4);
    return canvas;
}

}  // namespace pictures
