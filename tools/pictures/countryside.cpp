// Trees and houses of the pictures that show the country.
#include "countryside.h"

namespace pictures {
using namespace paint;

namespace {

Rgb In(Hour hour, Rgb colour) { return hour == Hour::Night ? colour * Rgb{0.5, 0.55, 0.85} : colour; }

// A clump of leaves or blossoms, dark below left, bright above right.
void DrawClump(Canvas& canvas, Random& random, Vec at, double radius, double speck, Rgb dark, Rgb bright) {
    const int specks = int(2.0 * std::pow(radius / speck, 2));
    canvas.Disc(at, radius * 0.75, dark, 0.8, radius * 0.5);
    for (int i = 0; i < specks; ++i) {
        const double late = double(i) / specks;  // the bright ones come last and lie nearer to the light
        const Vec off = Polar(radius * std::sqrt(random.Next()), random.Between(0, 2 * Pi)) +
                        Vec{0.3, -0.3} * (radius * (late - 0.5));
        const double side = Clamp01(0.5 + (off.x - off.y) / (2.6 * radius));
        canvas.Disc(at + off, speck * random.Between(0.6, 1.15),
                    Mix(dark, bright, Clamp01(0.7 * side + 0.5 * late - 0.1)) * random.Between(0.88, 1.12));
    }
}

// The tuft at the end of a bough of an araucaria of this size; `inward` leads back along the bough.
void DrawNeedles(Canvas& canvas, Random& random, Vec tip, Vec inward, double size, Rgb green) {
    for (int i = 0; i < 48; ++i) {
        const Vec from = tip + inward * random.Next() + Polar(size * 0.026 * random.Next(), random.Between(0, 2 * Pi));
        const Vec to = from + Polar(size * 0.028, random.Between(0, 2 * Pi)) - Vec{0, size * 0.006};
        canvas.Line(from, to, std::max(1.0, size * 0.006), green * random.Between(0.65, 1.35));
    }
}

// A bough and what forks off it; `tips` gathers where blossoms hang.
void DrawBough(Canvas& canvas, Random& random, Vec from, double angle, double length, double width,
               std::vector<Vec>& tips) {
    const Vec bend = from + Polar(length * 0.5, angle + random.Between(-0.2, 0.2)), to = from + Polar(length, angle);
    const std::vector<Vec> line = Curve({from, bend, to}, 6, false);
    for (double light : {0.0, 1.0})
        for (size_t i = 1; i < line.size(); ++i) {
            const double w = width * (1 - 0.35 * double(i) / double(line.size())) * Mix(1, 0.4, light);
            const Vec off{light * width * 0.2, 0};
            canvas.Line(line[i - 1] + off, line[i] + off, w, Mix(Hex(0x3a2a2e), Hex(0x9a6c50), light));
        }
    tips.push_back(to);
    if (width < 2.4) return;
    const int forks = width > 9 ? 3 : 2;
    for (int i = 0; i < forks; ++i) {
        const double turn = (i - (forks - 1) / 2.0) * random.Between(0.6, 1.0) + random.Between(-0.15, 0.15);
        const Vec fork = i == 0 ? to : bend + (to - bend) * random.Between(0.3, 1);
        const double shorter = random.Between(0.66, 0.84), thinner = random.Between(0.58, 0.68);
        DrawBough(canvas, random, fork, Mix(angle + turn, -Pi / 2, 0.16), length * shorter, width * thinner, tips);
    }
}

void DrawPane(Canvas& canvas, Vec a, Vec b, Hour hour) {
    const double rim = (b.x - a.x) * 0.16;
    canvas.Area({a - Vec{rim, rim}, {b.x + rim, a.y - rim}, b + Vec{rim, rim}, {a.x - rim, b.y + rim}},
                In(hour, Hex(0xfdf4e2)));
    const bool lit = hour == Hour::Night;
    canvas.Area({a, {b.x, a.y}, b, {a.x, b.y}}, lit ? Hex(0xffcc50) : Hex(0x34496a));
    if (lit) canvas.Glow((a + b) * 0.5, (b.x - a.x) * 2.2, Hex(0xffa040), 0.5);
    canvas.Line({(a.x + b.x) / 2, a.y}, {(a.x + b.x) / 2, b.y}, rim * 0.8, lit ? Hex(0xa8642c) : Hex(0xfdf4e2));
}

}  // namespace

void DrawTree(Canvas& canvas, Random& random, Vec foot, double size, Rgb leaves, Hour hour) {
    const double r = size * 0.36;
    canvas.Fill(
        foot - Vec{size * 1.2, size * 0.2}, foot + Vec{size * 0.3, size * 0.2},
        [=](Vec p) {
            return Ellipse(p, foot - Vec{size * 0.45, -size * 0.03}, {size * 0.6, size * 0.1});
        },
        Hex(0x22304a), 0.5, size * 0.08);
    canvas.Line(foot, foot - Vec{0, size * 0.5}, std::max(1.2, size * 0.07), In(hour, Hex(0x4a342c)));
    for (int i = 0; i < 6; ++i) {
        const Vec at = foot + Vec{r * random.Between(-0.8, 0.8), -size * (0.48 + 0.075 * i)};
        DrawClump(canvas, random, at, r * random.Between(0.55, 0.75), std::max(1.0, size * 0.035),
                  In(hour, leaves * Rgb{0.42, 0.52, 0.62}), In(hour, leaves * Rgb{1.4, 1.22, 0.95}));
    }
}

void DrawAraucaria(Canvas& canvas, Random& random, Vec foot, double size, Rgb needles) {
    const Vec top = foot - Vec{0, size};
    canvas.Fill(
        top - Vec{size, 0}, foot + Vec{size, 4},
        [=](Vec p) { return Capsule(p, foot, top, size * 0.026, size * 0.012); },
        [=](Vec p, double) {
            const double side = Clamp01(0.5 + (p.x - foot.x) / (size * 0.05));
            return Mix(Hex(0x4a3438), Hex(0xc08a64), side) * (0.8 + 0.35 * Noise(p.x / 5, p.y / 3, 4));
        });
    for (int tier = 0; tier < 6; ++tier) {  // from the longest boughs up to the crown
        const double t = tier / 5.0, reach = size * Mix(0.34, 0.1, std::pow(t, 1.6));
        const Vec root = top + Vec{0, size * Mix(0.3, 0, t)};
        for (int k = 0; k < 7; ++k) {
            const double across = std::cos(k * 2.399 + tier), depth = std::sin(k * 2.399 + tier);
            const Vec tip = root + Vec{reach * across, size * (0.035 * depth - 0.045)};
            canvas.Path(Curve({root, (root + tip) * 0.5 + Vec{0, size * 0.03}, tip}, 6, false),
                        std::max(1.0, size * 0.008), Hex(0x4a3a34));
            DrawNeedles(canvas, random, tip, (root - tip) * 0.12, size, needles * (0.75 + 0.2 * depth + 0.25 * across));
        }
    }
}

void DrawBloomingTree(Canvas& canvas, Random& random, Vec foot, double size, Rgb bloom) {
    std::vector<Vec> tips;
    DrawBough(canvas, random, foot, -Pi / 2 + 0.06, size * 0.3, size * 0.05, tips);
    for (Vec tip : tips)
        if (tip.y < foot.y - size * 0.36)
            DrawClump(canvas, random, tip, size * random.Between(0.02, 0.045), size * 0.0062,
                      bloom * Rgb{0.82, 0.6, 0.45}, Mix(bloom, Hex(0xfff6c8), 0.35));
}

void DrawCottage(Canvas& canvas, Random& random, Vec foot, double size, Hour hour) {
    const Rgb wall = In(hour, random.Of<Rgb>({Hex(0xfdf2dc), Hex(0xf6dca0), Hex(0xf2b89a), Hex(0xa8cfe0), Hex(0xf4f0ec),
                                              Hex(0xcfe0b0), Hex(0xf0c0c8)}));
    const Rgb tile = In(hour, random.Of<Rgb>({Hex(0xc8553d), Hex(0xb5442f), Hex(0xd06a44), Hex(0xa84a38)}));
    const Rgb door = random.Of<Rgb>({Hex(0x2f6a4a), Hex(0x27507a), Hex(0x8a2f2a), Hex(0x6a4a2a)});
    auto at = [=](double x, double y) { return foot + Vec{x, -y} * size; };
    canvas.Area({at(-1.45, 0.04), at(-0.95, 0.2), at(0.5, 0), at(0.5, -0.03)}, Hex(0x22304a), 0.4, 3);  // its shadow
    canvas.Area({at(-0.75, 0), at(0.5, 0), at(0.5, 0.55), at(-0.75, 0.55)}, wall * 0.8);
    canvas.Area({at(-0.75, 0.07), at(-0.75, 0), at(0.5, 0), at(0.5, 0.07)}, wall * 0.6);
    canvas.Area({at(0.5, 0), at(0.92, 0.09), at(0.92, 0.64), at(0.71, 1.02), at(0.5, 0.55)}, wall * 1.05);
    const std::vector<Vec> roof = {at(-0.81, 0.5), at(0.52, 0.5), at(0.74, 1.04), at(-0.46, 1.04)};
    canvas.Fill(
        at(-1, 1.2), at(1.2, 0), [&](Vec p) { return Polygon(p, roof); },
        [&](Vec p, double) {
            const double row = std::sin((p.y - roof[2].y) * 2 * Pi / std::max(3.0, size * 0.09));
            const double cup = std::sin(p.x * 2 * Pi / std::max(3.0, size * 0.07));
            return tile * (0.9 + 0.09 * row + 0.06 * cup + 0.15 * Noise(p.x / 6, p.y / 6, 5));
        });
    canvas.Line(roof[2], at(0.98, 0.59), std::max(1.5, size * 0.05), tile * 0.7);
    canvas.Area({at(-0.2, 0.4), at(-0.02, 0.4), at(-0.02, 0), at(-0.2, 0)}, door);
    DrawPane(canvas, at(-0.58, 0.4), at(-0.42, 0.19), hour);
    DrawPane(canvas, at(0.18, 0.4), at(0.34, 0.19), hour);
    DrawPane(canvas, at(0.65, 0.46), at(0.77, 0.26), hour);
}

void DrawChapel(Canvas& canvas, Vec foot, double size, Hour hour) {
    const Rgb white = In(hour, Hex(0xfff6e6)), trim = In(hour, Hex(0x4f7fb8)), tile = In(hour, Hex(0xb5442f));
    const Rgb iron = Hex(0x4a3a34), door = Hex(0x6a3a2a);
    auto at = [=](double x, double y) { return foot + Vec{x, -y} * size; };
    auto block = [&](double left, double low, double right, double high, Rgb colour) {
        canvas.Area({at(left, low), at(right, low), at(right, high), at(left, high)}, colour);
    };
    block(0.12, 0, 0.62, 0.36, white * 1.02);  // the nave behind, its roof
    canvas.Area({at(0.1, 0.36), at(0.66, 0.35), at(0.58, 0.52), at(0.1, 0.52)}, tile);
    for (double x : {0.22, 0.36, 0.5}) DrawPane(canvas, at(x, 0.26), at(x + 0.06, 0.12), hour);
    block(-0.3, 0, 0.14, 0.42, white * 0.86);  // the front
    canvas.Area({at(-0.32, 0.42), at(-0.08, 0.62), at(0.16, 0.42)}, white * 0.9);
    canvas.Path({at(-0.32, 0.42), at(-0.08, 0.62), at(0.16, 0.42)}, size * 0.025, trim);
    for (double x : {-0.23, 0.0}) DrawPane(canvas, at(x, 0.37), at(x + 0.07, 0.27), hour);
    canvas.Disc(at(-0.08, 0.47), size * 0.045, hour == Hour::Night ? Hex(0xffc84a) : trim);
    block(-0.13, 0, -0.03, 0.18, door);
    canvas.Disc(at(-0.08, 0.18), size * 0.05, door);
    block(-0.5, 0, -0.28, 0.66, white * 0.92);  // the tower
    for (double y : {0.4, 0.62}) block(-0.52, y, -0.26, y + 0.025, trim);
    canvas.Area({at(-0.53, 0.66), at(-0.39, 0.92), at(-0.25, 0.66)}, tile);
    canvas.Line(at(-0.39, 0.9), at(-0.39, 1.02), size * 0.016, iron);
    canvas.Line(at(-0.42, 0.97), at(-0.36, 0.97), size * 0.016, iron);
    DrawPane(canvas, at(-0.43, 0.58), at(-0.35, 0.46), hour);
}

}  // namespace pictures
