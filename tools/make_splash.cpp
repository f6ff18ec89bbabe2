// Makes the banner that opens the program: make_splash FILE.bmp [DENSITY].
//
// 614 x 223 pixels, 24 bits; for dense screens as many times more along either side. Pure yellow is see-through: what
// is not yellow has the shape of one big jigsaw piece, with a knob above, a knob below and two holes where pieces of
// the small puzzle on it are missing. The outline is decided pixel by pixel and never smoothed, so that no yellowish
// fringe is left on the desktop behind it: a dense banner has the same one, enlarged. The program writes its version in
// white at 495, 122, so nothing is painted there.
#include <algorithm>
#include <cstdio>
#include <cstdlib>

#include "paint/lettering.h"
#include "paint/paint.h"

using namespace paint;

namespace {

constexpr int Width = 614, Height = 223;  // all measures here count in units of the plain banner
int density = 1;                          // pixels of a unit
constexpr Rgb Blue = Hex(0x46549d), Deep = Hex(0x2c376f), Light = Hex(0x7f8ccb), Yellow = Hex(0xffff00);

// The small puzzle: its top left corner, the side of a piece, how many.
constexpr double PuzzleX = 28, PuzzleY = 36, Side = 26;
constexpr int Columns = 6, Rows = 6;

// Half the width of a knob's row, `row` counted from its tip; 0 outside.
int KnobHalf(int row, const std::vector<int>& halves) {
    return row < 0 || row >= int(halves.size()) ? -1 : halves[size_t(row)];
}

bool InOutline(int x, int y) {
    const int above = KnobHalf(y - 1, {10, 14, 17, 19, 21, 22, 22, 22, 21, 20, 18});
    const int below = KnobHalf(219 - y, {17, 20, 22, 21});
    if (std::abs(x - 109) <= above || std::abs(x - 510) <= below) return true;
    if (x < 2 || x > 611 || y < 12 || y > 215) return false;
    const int left = std::min(x - 2, 611 - x), top = std::min(y - 12, 215 - y);
    return left + top >= 6 && (left > 0 || top >= 8) && (top > 0 || left >= 8);  // blunted corners
}

// Which piece of the small puzzle covers a point (u, v in sides of a piece), as a number;
// -1 outside. Each inner edge carries one knob, to the one side or the other by chance.
int PieceAt(double u, double v) {
    const int col = int(std::floor(u)), row = int(std::floor(v));
    auto inside = [](int c, int r) { return c >= 0 && c < Columns && r >= 0 && r < Rows; };
    if (!inside(col, row)) return -1;
    const int steps[4][2] = {{1, 0}, {-1, 0}, {0, 1}, {0, -1}};
    for (auto [dc, dr] : steps) {
        const int c = col + dc, r = row + dr;
        if (!inside(c, r)) continue;
        // The edge belongs to the cell left of or above it.
        const bool forward = Hash(std::min(col, c) * 2 + (dr != 0), std::min(row, r), 11) < 0.5;
        const bool ownsKnob = forward == (dc + dr > 0);
        if (ownsKnob) continue;  // it bulges away from here
        const Vec middle{col + 0.5 + dc * 0.5, row + 0.5 + dr * 0.5};
        const Vec centre = middle - Vec{dc * 0.15, dr * 0.15};
        const bool inKnob = Length(Vec{u, v} - centre) < 0.15;
        const bool inNeck = Length(Vec{u, v} - (middle - Vec{dc * 0.03, dr * 0.03})) < 0.085;
        if (inKnob || inNeck) return r * Columns + c;
    }
    return row * Columns + col;
}

constexpr int MissingA = 1 * Columns + 4, MissingB = 4 * Columns + 2;
bool Missing(int piece) { return piece == MissingA || piece == MissingB; }

// The picture on the small puzzle: evening over the sea, u and v from 0 to 6.
Rgb Scene(double u, double v) {
    const Vec sun{3.9, 2.9};
    const double d = Length(Vec{u, v} - sun);
    Rgb sky = Ramp({Hex(0x35407f), Hex(0x8b4f8c), Hex(0xe2736a), Hex(0xf9b26a), Hex(0xfbd58e)}, v / 3.6);
    sky = sky + Hex(0xffb347) * (0.5 * std::exp(-d * 0.9));
    if (Fbm(u * 0.8, v * 3.2, 4, 3) > 0.16 && v < 2.6) sky = Mix(sky, Hex(0xf7c0a0), 0.45);
    sky = Mix(sky, Hex(0xfff3cf), Clamp01((0.62 - d) * 12));
    const double far = 3.35 - 0.6 * Ridge(u * 0.55, 0.3, 4, 8) + 0.15;
    if (v > far) sky = Mix(Hex(0x6b3f7c), Hex(0x8d5485), Clamp01((v - far) * 2));
    if (v > 3.6) {
        const double glint = std::exp(-std::abs(u - sun.x) * (2.2 - 0.45 * (v - 3.6)));
        const double wave = Noise(u * 2.2, v * 9, 5);
        sky = Mix(Hex(0x4a5aa6), Hex(0x26307a), (v - 3.6) / 2.4) + Hex(0xff9a50) * (glint * (0.45 + 0.55 * wave));
    }
    const Vec p{u, v};
    const double hull = Polygon(p, {{0.75, 4.65}, {2.35, 4.65}, {2.05, 5.0}, {1.05, 5.0}});
    const double sail = Polygon(p, {{1.55, 2.55}, {1.62, 4.5}, {2.4, 4.5}}),
                 jib = Polygon(p, {{1.45, 2.9}, {1.48, 4.5}, {0.85, 4.5}});
    if (hull < 0) sky = Hex(0x7c2f35);
    if (sail < 0) sky = Mix(Hex(0xfdf4e3), Hex(0xe8c9a8), (u - 1.5) / 0.9);
    if (jib < 0) sky = Hex(0xf2a541);
    return sky;
}

// One point of the small puzzle, with the light and dark sides of its cuts.
Rgb PuzzleColour(double u, double v) {
    const int here = PieceAt(u, v);
    const double step = 1.1 / Side;
    Rgb colour = Scene(u, v);
    if (PieceAt(u - step, v - step) != here) colour = Mix(colour, Hex(0xffffff), 0.45);
    if (PieceAt(u + step, v + step) != here) colour = Mix(colour, Hex(0x101030), 0.55);
    return colour;
}

// One of 16 points within a pixel, in units.
Vec PointOf(int x, int y, int i) { return Vec{x + (i % 4 + 0.5) / 4, y + (i / 4 + 0.5) / 4} * (1.0 / density); }

Rgb PuzzlePixel(int x, int y) {
    Rgb sum;
    for (int i = 0; i < 16; ++i) {
        const Vec p = PointOf(x, y, i);
        sum = sum + PuzzleColour((p.x - PuzzleX) / Side, (p.y - PuzzleY) / Side);
    }
    return sum * (1.0 / 16);
}

// A loose piece of the small puzzle, turned, lying at `centre`.
void LayPiece(Canvas& canvas, int piece, Vec centre, double angle) {
    const Vec home{piece % Columns + 0.5, piece / Columns + 0.5};
    auto covers = [&](Vec p) {
        const Vec q = Turned(p - centre, -angle) * (1 / (Side * 1.25)) + home;
        return std::pair(PieceAt(q.x, q.y) == piece, q);
    };
    for (int y = int(centre.y - 40) * density; y < int(centre.y + 40) * density; ++y) {
        for (int x = int(centre.x - 40) * density; x < int(centre.x + 40) * density; ++x) {
            Rgb sum;
            double cover = 0, shadow = 0;
            for (int i = 0; i < 16; ++i) {
                const Vec p = PointOf(x, y, i);
                const auto [hit, q] = covers(p);
                if (covers(p - Vec{2.5, 3}).first) shadow += 1.0 / 16;
                if (!hit) continue;
                Rgb c = Scene(q.x, q.y);
                if (!covers(p - Vec{1.1, 1.1}).first) c = Mix(c, Hex(0xffffff), 0.5);
                if (!covers(p + Vec{1.1, 1.1}).first) c = Mix(c, Hex(0x101030), 0.5);
                sum = sum + c;
                cover += 1;
            }
            Rgb& out = canvas.At(x, y);
            out = Mix(out, Deep, 0.8 * shadow);
            if (cover > 0) out = Mix(out, sum * (1 / cover), cover / 16);
        }
    }
}

void Write(Canvas& canvas, const std::string& text, Vec origin, double size, double pen) {
    const auto lettering = [&](Vec at) { return Lettering(text, at * density, size * density); };
    for (const auto& stroke : lettering(origin + Vec{2, 3})) canvas.Path(stroke, pen * density, Deep, 0.85);
    for (const auto& stroke : lettering(origin)) canvas.Path(stroke, pen * density, Hex(0xffffff));
}

// A light edge at the top left and a dark one at the bottom right, as a cut piece has.
void Bevel(Canvas& canvas) {
    for (int y = 0; y < Height * density; ++y) {
        for (int x = 0; x < Width * density; ++x) {
            for (int depth = 3; depth >= 1; --depth) {
                const int column = x / density, row = y / density;
                if (!InOutline(column - depth, row - depth)) canvas.At(x, y) = Mix(Blue, Light, 1.1 - 0.25 * depth);
                if (!InOutline(column + depth, row + depth)) canvas.At(x, y) = Mix(Blue, Deep, 1.1 - 0.25 * depth);
            }
        }
    }
}

}  // namespace

int main(int argc, char** argv) {
    if (argc < 2 || argc > 3) return std::fprintf(stderr, "make_splash FILE.bmp [DENSITY]\n"), 2;
    density = argc > 2 ? std::clamp(std::atoi(argv[2]), 1, 8) : 1;
    Canvas canvas(Width * density, Height * density, Blue);
    Bevel(canvas);
    const Vec end{PuzzleX + Columns * Side, PuzzleY + Rows * Side};
    canvas.Fill(
        {0, 0}, Vec{240, 223} * density,
        [&](Vec p) {
            return Box(p * (1.0 / density), {PuzzleX + 2, PuzzleY + 3}, end + Vec{3, 4}, 2) * density;
        },
        Deep, 0.8, 3 * density);
    for (int y = int(PuzzleY) * density; y < int(end.y) * density; ++y)
        for (int x = int(PuzzleX) * density; x < int(end.x) * density; ++x) canvas.At(x, y) = PuzzlePixel(x, y);
    Write(canvas, "Fento-Lira", {222, 101}, 56, 8.5);
    Write(canvas, "Master", {224, 161}, 40, 6.5);
    LayPiece(canvas, MissingA, {424, 180}, 0.5);
    LayPiece(canvas, MissingB, {566, 174}, -0.35);
    for (int y = 0; y < Height * density; ++y) {
        for (int x = 0; x < Width * density; ++x) {
            const int column = x / density, row = y / density;
            const bool hole = Missing(PieceAt((column + 0.5 - PuzzleX) / Side, (row + 0.5 - PuzzleY) / Side));
            if (!InOutline(column, row) || hole) canvas.At(x, y) = Yellow;
        }
    }
    return canvas.WriteBmp(argv[1]) ? 0 : 1;
}
