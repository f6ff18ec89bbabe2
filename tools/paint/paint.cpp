// Colours, noise and the canvas of the picture makers.
#include "paint.h"

#include <fstream>

namespace paint {

Rgb Hsv(double hue, double saturation, double value) {
    auto channel = [&](double shift) {
        const double k = std::fmod(std::fmod(hue, 1.0) * 6 + 6 + shift, 6.0);
        return value - value * saturation * std::clamp(std::min(k, 4 - k), 0.0, 1.0);
    };
    return {channel(5), channel(3), channel(1)};
}

Rgb Ramp(const std::vector<Rgb>& stops, double t) {
    const double at = Clamp01(t) * double(stops.size() - 1);
    const size_t i = std::min(size_t(at), stops.size() - 2);
    return Mix(stops[i], stops[i + 1], at - double(i));
}

double Random::Next() {
    state_ = state_ * 6364136223846793005u + 1442695040888963407u;
    const uint64_t mixed = (state_ ^ (state_ >> 29)) * 0xbf58476d1ce4e5b9u;
    return double(mixed >> 11) / double(uint64_t(1) << 53);
}

double Hash(int x, int y, uint32_t seed) {
    uint32_t h = uint32_t(x) * 0x8da6b343u ^ uint32_t(y) * 0xd8163841u ^ seed * 0xcb1ab31fu;
    h = (h ^ (h >> 16)) * 0x7feb352du;
    h = (h ^ (h >> 15)) * 0x846ca68bu;
    return double(h ^ (h >> 16)) / 4294967296.0;
}

double Noise(double x, double y, uint32_t seed) {
    const int ix = int(std::floor(x)), iy = int(std::floor(y));
    const double fx = x - ix, fy = y - iy;
    auto corner = [&](int cx, int cy) {
        const double angle = 2 * Pi * Hash(ix + cx, iy + cy, seed);
        return std::cos(angle) * (fx - cx) + std::sin(angle) * (fy - cy);
    };
    const double u = fx * fx * fx * (fx * (fx * 6 - 15) + 10), v = fy * fy * fy * (fy * (fy * 6 - 15) + 10);
    return 1.5 * Mix(Mix(corner(0, 0), corner(1, 0), u), Mix(corner(0, 1), corner(1, 1), u), v);
}

double Fbm(double x, double y, int octaves, uint32_t seed) {
    double sum = 0, level = 0.55;
    for (int i = 0; i < octaves; ++i, level *= 0.5) {
        sum += level * Noise(x, y, seed + uint32_t(i));
        const Vec p = Turned({x * 2.03, y * 2.03}, 0.6);
        x = p.x + 11.3;
        y = p.y - 7.1;
    }
    return sum;
}

double Ridge(double x, double y, int octaves, uint32_t seed) {
    double sum = 0, level = 0.5;
    for (int i = 0; i < octaves; ++i, level *= 0.5) {
        sum += level * (1 - std::min(1.0, std::abs(Noise(x, y, seed + uint32_t(i)))));
        x = x * 2.07 + 5.2;
        y = y * 2.07 - 3.7;
    }
    return sum;
}

Cell Cells(double x, double y, uint32_t seed, double jitter) {
    const int ix = int(std::floor(x)), iy = int(std::floor(y));
    Cell best{9, 9, 0, {}};
    for (int cy = iy - 2; cy <= iy + 2; ++cy) {
        for (int cx = ix - 2; cx <= ix + 2; ++cx) {
            const Vec c{cx + 0.5 + jitter * (Hash(cx, cy, seed) - 0.5),
                        cy + 0.5 + jitter * (Hash(cx, cy, seed + 1) - 0.5)};
            const double d = Length(Vec{x, y} - c);
            if (d < best.nearest) {
                best = {d, best.nearest, uint32_t(Hash(cx, cy, seed + 2) * 4294967295.0), c};
            } else if (d < best.second) {
                best.second = d;
            }
        }
    }
    return best;
}

Canvas::Canvas(int width, int height, Rgb fill)
    : width_(width), height_(height), pixels_(size_t(width) * size_t(height), fill) {}

Rgb Canvas::Sample(double x, double y) const {
    return At(std::clamp(int(x), 0, width_ - 1), std::clamp(int(y), 0, height_ - 1));
}

void Canvas::Disc(Vec c, double radius, Rgb colour, double opacity, double soft) {
    const double reach = radius + soft;
    Fill(
        {c.x - reach, c.y - reach}, {c.x + reach, c.y + reach}, [=](Vec p) { return Circle(p, c, radius); }, colour,
        opacity, soft);
}

void Canvas::Line(Vec a, Vec b, double width, Rgb colour, double opacity) {
    const double m = width + 1;
    Fill(
        {std::min(a.x, b.x) - m, std::min(a.y, b.y) - m}, {std::max(a.x, b.x) + m, std::max(a.y, b.y) + m},
        [=](Vec p) { return Segment(p, a, b, width / 2); }, colour, opacity);
}

namespace {
// The box around points, widened by `m`.
void Bounds(const std::vector<Vec>& points, double m, Vec& from, Vec& to) {
    from = {1e9, 1e9};
    to = {-1e9, -1e9};
    for (Vec p : points) {
        from = {std::min(from.x, p.x - m), std::min(from.y, p.y - m)};
        to = {std::max(to.x, p.x + m), std::max(to.y, p.y + m)};
    }
}
}  // namespace

void Canvas::Path(const std::vector<Vec>& points, double width, Rgb colour, double opacity) {
    Vec from, to;
    Bounds(points, width + 1, from, to);
    Fill(
        from, to, [&](Vec p) { return Polyline(p, points, width / 2); }, colour, opacity);
}

void Canvas::Area(const std::vector<Vec>& corners, Rgb colour, double opacity, double soft) {
    Vec from, to;
    Bounds(corners, soft + 1, from, to);
    Fill(
        from, to, [&](Vec p) { return Polygon(p, corners); }, colour, opacity, soft);
}

void Canvas::Glow(Vec c, double radius, Rgb light, double strength) {
    for (int y = std::max(0, int(c.y - radius)); y < std::min(height_, int(c.y + radius) + 1); ++y) {
        for (int x = std::max(0, int(c.x - radius)); x < std::min(width_, int(c.x + radius) + 1); ++x) {
            const double t = 1 - Length(Vec{x + 0.5, y + 0.5} - c) / radius;
            if (t > 0) At(x, y) = At(x, y) + light * (strength * t * t);
        }
    }
}

void Canvas::Finish(double vignette, double grain, uint32_t seed) {
    for (int y = 0; y < height_; ++y) {
        for (int x = 0; x < width_; ++x) {
            const double dx = 2.0 * x / width_ - 1, dy = 2.0 * y / height_ - 1;
            const double shade = 1 - vignette * Smooth(0.7, 1.5, std::sqrt(dx * dx + dy * dy));
            const double speck = grain * (Hash(x, y, seed) - 0.5);
            At(x, y) = At(x, y) * shade + Rgb{speck, speck, speck};
        }
    }
}

Canvas Canvas::Reduced(int factor) const {
    Canvas out(width_ / factor, height_ / factor);
    for (int y = 0; y < out.height_; ++y) {
        for (int x = 0; x < out.width_; ++x) {
            Rgb sum;
            for (int v = 0; v < factor; ++v)
                for (int u = 0; u < factor; ++u) sum = sum + At(x * factor + u, y * factor + v);
            out.At(x, y) = sum * (1.0 / (factor * factor));
        }
    }
    return out;
}

namespace {
char Byte(double v) { return char(uint8_t(Clamp01(v) * 255 + 0.5)); }
}  // namespace

bool Canvas::WriteBmp(const std::string& path) const {
    const int stride = (width_ * 3 + 3) / 4 * 4;
    std::string out = "BM";
    auto put = [&out](uint32_t v, int bytes) {
        for (int i = 0; i < bytes; ++i) out += char(v >> 8 * i & 255);
    };
    put(uint32_t(54 + stride * height_), 4), put(0, 4), put(54, 4);
    put(40, 4), put(uint32_t(width_), 4), put(uint32_t(height_), 4), put(1, 2), put(24, 2), put(0, 4);
    put(uint32_t(stride * height_), 4), put(2835, 4), put(2835, 4), put(0, 4), put(0, 4);
    for (int y = height_ - 1; y >= 0; --y) {
        const size_t start = out.size();
        for (int x = 0; x < width_; ++x) {
            const Rgb& c = At(x, y);
            out += Byte(c.b), out += Byte(c.g), out += Byte(c.r);
        }
        out.resize(start + size_t(stride), '\0');
    }
    return bool(std::ofstream(path, std::ios::binary).write(out.data(), std::streamsize(out.size())).flush());
}

bool Canvas::WritePpm(const std::string& path) const {
    std::string out = "P6\n" + std::to_string(width_) + " " + std::to_string(height_) + "\n255\n";
    for (const Rgb& c : pixels_) out += Byte(c.r), out += Byte(c.g), out += Byte(c.b);
    return bool(std::ofstream(path, std::ios::binary).write(out.data(), std::streamsize(out.size())).flush());
}

}  // namespace paint
