// A small painter for the programs that make the project's pictures.
//
// Colours are red, green, blue from 0 to 1; lengths are pixels, x right, y down, pixel
// centres at .5. A shape is a function that gives the signed distance of a point to its
// edge, negative inside; Fill turns that into smooth edges. Everything is reckoned from
// seeds, so that each run gives the same picture.
#pragma once
#include <algorithm>
#include <cmath>
#include <cstdint>
#include <string>
#include <vector>

namespace paint {

constexpr double Pi = 3.14159265358979323846;

struct Vec {
    double x = 0, y = 0;
};
inline Vec operator+(Vec a, Vec b) { return {a.x + b.x, a.y + b.y}; }
inline Vec operator-(Vec a, Vec b) { return {a.x - b.x, a.y - b.y}; }
inline Vec operator*(Vec a, double k) { return {a.x * k, a.y * k}; }
inline double Dot(Vec a, Vec b) { return a.x * b.x + a.y * b.y; }
inline double Length(Vec a) { return std::sqrt(a.x * a.x + a.y * a.y); }
inline Vec Turned(Vec a, double angle) {
    const double c = std::cos(angle), s = std::sin(angle);
    return {c * a.x - s * a.y, s * a.x + c * a.y};
}
inline Vec Polar(double radius, double angle) { return {radius * std::cos(angle), radius * std::sin(angle)}; }

struct Rgb {
    double r = 0, g = 0, b = 0;
};
inline Rgb operator+(Rgb a, Rgb b) { return {a.r + b.r, a.g + b.g, a.b + b.b}; }
inline Rgb operator*(Rgb a, double k) { return {a.r * k, a.g * k, a.b * k}; }
inline Rgb operator*(Rgb a, Rgb b) { return {a.r * b.r, a.g * b.g, a.b * b.b}; }
constexpr Rgb Hex(unsigned rrggbb) {
    return {double(rrggbb >> 16 & 255) / 255, double(rrggbb >> 8 & 255) / 255, double(rrggbb & 255) / 255};
}
Rgb Hsv(double hue, double saturation, double value);  // hue 0 to 1, wraps

inline double Clamp01(double v) { return std::clamp(v, 0.0, 1.0); }
inline double Mix(double a, double b, double t) { return a + (b - a) * t; }
inline Rgb Mix(Rgb a, Rgb b, double t) { return a * (1 - t) + b * t; }
// 0 below `from`, 1 above `to`, smooth between; `from` may be the larger one.
inline double Smooth(double from, double to, double v) {
    const double t = Clamp01((v - from) / (to - from));
    return t * t * (3 - 2 * t);
}
// The colour at `t` (0 to 1) of evenly spaced stops.
Rgb Ramp(const std::vector<Rgb>& stops, double t);

class Random {
public:
    explicit Random(uint64_t seed) : state_(seed * 2862933555777941757u + 3037000493u) {}
    double Next();  // 0 to 1, 1 excluded
    double Between(double a, double b) { return a + (b - a) * Next(); }
    int Below(int n) { return int(Next() * n); }
    template <class T>
    const T& Of(const std::vector<T>& list) {
        return list[size_t(Below(int(list.size())))];
    }

private:
    uint64_t state_;
};

double Hash(int x, int y, uint32_t seed);                      // 0 to 1
double Noise(double x, double y, uint32_t seed);               // smooth, about -1 to 1, features of size 1
double Fbm(double x, double y, int octaves, uint32_t seed);    // sum of ever finer noise, about -1 to 1
double Ridge(double x, double y, int octaves, uint32_t seed);  // 0 to 1, sharp crests

struct Cell {
    double nearest, second;  // distances to the two nearest points of a jittered lattice
    uint32_t id;             // a number of the nearest point
    Vec centre;
};
Cell Cells(double x, double y, uint32_t seed, double jitter = 1.0);
inline double IdHash(uint32_t id, uint32_t k) { return Hash(int(id), int(k), 77); }

// Signed distances.
double Circle(Vec p, Vec centre, double radius);
double Ellipse(Vec p, Vec centre, Vec radii);  // good near the edge
double Box(Vec p, Vec from, Vec to, double corner = 0);
double Segment(Vec p, Vec a, Vec b, double radius);
double Capsule(Vec p, Vec a, Vec b, double radiusA, double radiusB);
double Polyline(Vec p, const std::vector<Vec>& points, double radius);
double Polygon(Vec p, const std::vector<Vec>& corners);
std::vector<Vec> Curve(const std::vector<Vec>& through, int steps, bool closed);  // smooth line through points

class Canvas {
public:
    Canvas(int width, int height, Rgb fill = {});
    int Width() const { return width_; }
    int Height() const { return height_; }
    Rgb& At(int x, int y) { return pixels_[size_t(y) * size_t(width_) + size_t(x)]; }
    const Rgb& At(int x, int y) const { return pixels_[size_t(y) * size_t(width_) + size_t(x)]; }
    Rgb Sample(double x, double y) const;  // nearest pixel, clamped to the canvas

    // Every pixel: colour(Vec centre) -> Rgb.
    template <class Colour>
    void Each(Colour colour) {
        for (int y = 0; y < height_; ++y)
            for (int x = 0; x < width_; ++x) At(x, y) = colour(Vec{x + 0.5, y + 0.5});
    }
    // Lays `colour(Vec, distance) -> Rgb` over the shape `distance(Vec)`, looked for within
    // the box from..to. `soft` widens the edge.
    template <class Distance, class Colour>
    void Fill(Vec from, Vec to, Distance distance, Colour colour, double opacity = 1, double soft = 1) {
        const int left = std::max(0, int(from.x)), right = std::min(width_, int(to.x) + 2);
        const int top = std::max(0, int(from.y)), bottom = std::min(height_, int(to.y) + 2);
        for (int y = top; y < bottom; ++y) {
            for (int x = left; x < right; ++x) {
                const Vec p{x + 0.5, y + 0.5};
                const double d = distance(p);
                const double cover = opacity * Clamp01(0.5 - d / soft);
                if (cover > 0) At(x, y) = Mix(At(x, y), colour(p, d), cover);
            }
        }
    }
    template <class Distance>
    void Fill(Vec from, Vec to, Distance distance, Rgb colour, double opacity = 1, double soft = 1) {
        Fill(
            from, to, distance, [colour](Vec, double) { return colour; }, opacity, soft);
    }
    void Disc(Vec centre, double radius, Rgb colour, double opacity = 1, double soft = 1);
    void Line(Vec a, Vec b, double width, Rgb colour, double opacity = 1);
    void Path(const std::vector<Vec>& points, double width, Rgb colour, double opacity = 1);
    void Area(const std::vector<Vec>& corners, Rgb colour, double opacity = 1, double soft = 1);
    // Adds light around a point, falling off smoothly to nothing at `radius`.
    void Glow(Vec centre, double radius, Rgb light, double strength);

    // Darker towards the corners, a breath of grain: takes the machine look off.
    void Finish(double vignette, double grain, uint32_t seed);
    Canvas Reduced(int factor) const;  // each pixel the mean of factor x factor

    bool WriteBmp(const std::string& path) const;  // 24 bits, bottom row first
    bool WritePpm(const std::string& path) const;

private:
    int width_, height_;
    std::vector<Rgb> pixels_;
};

}  // namespace paint
