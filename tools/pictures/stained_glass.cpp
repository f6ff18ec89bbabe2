// A tall church window: a rose above, a garden with a peacock's eyes below.
#include "pictures.h"

namespace pictures {
using namespace paint;

namespace {

constexpr int Width = 1200, Height = 1600;
constexpr Vec Rose{600, 560};

// A pane: which colour it has, and how far its nearest lead is in pixels.
struct Pane {
    int colour;
    double lead;
};

Pane InSectors(Vec p, int count, double shift, int first, int second) {
    const double r = Length(p), step = std::atan2(p.y, p.x) / (2 * Pi) * count + shift;
    const double in = step - std::floor(step);
    return {(int(std::floor(step)) % 2 + 2) % 2 ? first : second, std::min(in, 1 - in) * 2 * Pi * r / count};
}

Pane Ring(Vec p, double inner, double outer, Pane pane) {
    const double r = Length(p);
    pane.lead = std::min({pane.lead, r - inner, outer - r});
    return pane;
}

Pane RoseWindow(Vec p) {
    const double r = Length(p), angle = std::atan2(p.y, p.x);
    if (r < 46) return Ring(p, -99, 46, {3, 99});
    if (r < 112) return Ring(p, 46, 112, InSectors(p, 12, 0, 0, 4));
    // Petals with an eye in each.
    if (r < 262) {
        const double sector = 2 * Pi / 12, a = std::remainder(angle - sector / 2, sector);
        const Vec q{r * std::cos(a), r * std::sin(a)};
        const double petal = Ellipse(q, {187, 0}, {72, 39}), eye = Circle(q, {210, 0}, 21),
                     spot = Circle(q, {213, 0}, 9);
        const int index = int(std::floor((angle + Pi) / sector)) % 3;
        if (spot < 0) return {3, -spot + 3};
        if (eye < 0) return {1, std::min(-eye, spot)};
        if (petal < 0) return {index == 0 ? 0 : index == 1 ? 5 : 6, std::min(-petal, eye)};
        return Ring(p, 112, 262, {r < 190 ? 2 : 8, std::min(petal, std::abs(r - 190))});
    }
    if (r < 300) return Ring(p, 262, 300, InSectors(p, 48, 0, 3, 0));
    if (r < 430) {
        const double sector = 2 * Pi / 24, a = std::remainder(angle, sector);
        const Vec q{r * std::cos(a), r * std::sin(a)};
        const double disc = Circle(q, {372, 0}, 36), core = Circle(q, {372, 0}, 16);
        const int index = ((int(std::floor(angle / sector + 0.5)) % 4) + 4) % 4;
        if (core < 0) return {index % 2 ? 3 : 9, -core};
        if (disc < 0)
            return {
                index == 0   ? 4
                : index == 1 ? 1
                : index == 2 ? 7
                             : 5,
                std::min({-disc, core,
                          std::abs(std::remainder(std::atan2(q.y, q.x - 372), Pi / 3)) * Length(q - Vec{372, 0}) + 2})};
        return Ring(p, 300, 430, {r < 372 ? 8 : 2, disc});
    }
    return Ring(p, 430, 470, InSectors(p, 72, 0.5, 5, 9));
}

Pane Garden(Vec p) {
    // Tulips stand in three rows; sky of slanting panes behind.
    for (int row = 2; row >= 0; --row) {
        const double spacing = 150, base = 1310.0 + row * 118;
        const double shift = row % 2 ? 75 : 0, col = std::floor((p.x - shift) / spacing);
        for (double c = col - 1; c <= col + 1; ++c) {
            const Vec q = p - Vec{(c + 0.5) * spacing + shift, base};
            const int tint = int(Hash(int(c), row, 5) * 5);
            const int cup[] = {0, 4, 7, 3, 6};
            const double left = Ellipse(Turned(q, 0.35), {-20, -92}, {26, 58}),
                         right = Ellipse(Turned(q, -0.35), {20, -92}, {26, 58}), mid = Ellipse(q, {0, -98}, {21, 56});
            if (mid < 0) return {cup[tint], -mid};
            if (left < 0) return {cup[tint], std::min(-left, mid)};
            if (right < 0) return {cup[tint], std::min(-right, mid)};
            const double stalk = std::abs(q.x) - 6;
            if (stalk < 0 && q.y > -60 && q.y < 130) return {2, -stalk + 1};
            const double leafA = Ellipse(Turned(q, 0.5), {-2, 20}, {17, 76}),
                         leafB = Ellipse(Turned(q, -0.5), {2, 20}, {17, 76});
            if (leafA < 0) return {8, std::min({-leafA, stalk})};
            if (leafB < 0) return {2, std::min({-leafB, stalk})};
        }
    }
    const Vec q = Turned(p, 0.5) * (1 / 62.0);
    const Cell cell = Cells(q.x, q.y * 0.55, 9, 0.8);
    const int sky[] = {1, 5, 9, 1, 10};
    const int earth[] = {2, 8, 2, 8, 6};
    const bool low = p.y > 1330;
    return {(low ? earth : sky)[int(IdHash(cell.id, 1) * 4.99)], (cell.second - cell.nearest) * 40};
}

Rgb Window(Vec p) {
    // The stone frame: a pointed arch.
    const double half = 520, spring = 640;
    const double arch =
        p.y > spring ? std::abs(p.x - 600) - half
                     : std::max(Circle(p, {600 + 90, spring}, half + 90), Circle(p, {600 - 90, spring}, half + 90));
    const double frame = std::max(arch, p.y - 1540);
    if (frame > 0) {
        const double stone = Fbm(p.x / 36, p.y / 36, 5, 3);
        const double course = std::fmod(p.y, 92), brick = std::fmod(p.x + (int(p.y / 92) % 2) * 70 + 2000, 140);
        Rgb c = Mix(Hex(0x6a625c), Hex(0x9a8f82), 0.5 + 0.6 * stone);
        if (frame < 46)
            c = c * (frame < 10 ? 0.55 : frame < 30 ? 1.25 : 0.85);
        else if (course < 5 || brick < 5)
            c = c * 0.62;
        return c * 0.8;
    }
    const Vec fromRose = p - Rose;
    Pane pane = Length(fromRose) < 470 ? RoseWindow(fromRose) : Garden(p);
    if (std::abs(Length(fromRose) - 470) < 9) pane.lead = 0;
    const double bar =
        std::min(std::abs(p.y - 1085), std::min(std::abs(p.x - 340), std::abs(p.x - 860)) + (p.y < 1085 ? 99 : 0));
    pane.lead = std::min({pane.lead, bar - 4, -frame});
    const std::vector<Rgb> glass = {Hex(0xd8212e), Hex(0x1f4fc0), Hex(0x1f9a4a), Hex(0xffcf30),
                                    Hex(0xf5761f), Hex(0x2fa8e0), Hex(0x8a35b0), Hex(0xe8508f),
                                    Hex(0x7cc03a), Hex(0xe8f4fa), Hex(0x14307a)};
    Rgb c = glass[size_t(pane.colour)];
    const double cloud = Fbm(p.x / 60, p.y / 90, 4, 21),
                 bubble = Smooth(0.16, 0.05, Cells(p.x / 24, p.y / 24, 22).nearest);
    const double sun = 0.78 + 0.55 * std::exp(-std::pow(Length(p - Vec{470, 430}) / 560, 2));
    c = c * (sun + 0.22 * cloud) + Rgb{0.13, 0.13, 0.13} * (bubble + 0.5 * Smooth(0.2, 0.6, cloud));
    c = c * Mix(0.55, 1, Smooth(1, 15, pane.lead));
    const Rgb lead = Hex(0x16161c) + Hex(0x40444c) * (0.5 * Smooth(1.2, 0.2, std::abs(pane.lead - 0.8)));
    return Mix(lead, c, Smooth(2.6, 4.2, pane.lead));
}

}  // namespace

Canvas StainedGlass() {
    Canvas canvas(Width * 2, Height * 2);
    canvas.Each([](Vec p) { return Window(p * 0.5); });
    return canvas.Reduced(2);
}

}  // namespace pictures
