// Strokes of oil paint.
#include "brush.h"

namespace paint {
namespace {

double Apart(Rgb a, Rgb b) { return (std::abs(a.r - b.r) + std::abs(a.g - b.g) + std::abs(a.b - b.b)) / 3; }

// A painting under way: its colours and how thick the paint lies.
struct Easel {
    Canvas colours, relief;
};

// Where a place lies on a stroke: off its middle, right of it positive, and how many points along.
struct OnStroke {
    double across, along;
};
OnStroke Nearest(Vec p, const std::vector<Vec>& line) {
    OnStroke best{1e9, 0};
    for (size_t i = 1; i < line.size(); ++i) {
        const Vec a = line[i - 1], d = line[i] - a;
        const double t = Clamp01(Dot(p - a, d) / std::max(1e-9, Dot(d, d)));
        const Vec off = p - a - d * t;
        const double far = Length(off);
        if (far < std::abs(best.across)) best = {d.x * off.y > d.y * off.x ? far : -far, double(i) - 1 + t};
    }
    return best;
}

// Lays one stroke. Its bristles leave furrows along it; its end is ragged.
void Stroke(Easel& easel, const std::vector<Vec>& line, double radius, Rgb colour, uint32_t seed) {
    Vec from{1e9, 1e9}, to{-1e9, -1e9};
    for (Vec p : line) {
        from = {std::min(from.x, p.x - radius), std::min(from.y, p.y - radius)};
        to = {std::max(to.x, p.x + radius), std::max(to.y, p.y + radius)};
    }
    const int right = std::min(easel.colours.Width(), int(to.x) + 1);
    const int low = std::min(easel.colours.Height(), int(to.y) + 1);
    for (int y = std::max(0, int(from.y)); y < low; ++y) {
        for (int x = std::max(0, int(from.x)); x < right; ++x) {
            const OnStroke on = Nearest({x + 0.5, y + 0.5}, line);
            const double across = on.across / radius, left = double(line.size()) - 1 - on.along;
            if (std::abs(across) >= 1) continue;
            const double bristle = Noise(across * 2.6, on.along * 0.3, seed);
            const double end = (left + 0.35) * 1.6 + bristle * 0.7;
            const double cover = Clamp01(1.3 * std::min((1 - std::abs(across)) * 2.2, end));
            const double thick = (0.55 + 0.45 * bristle) * std::sqrt(1 - across * across) * std::sqrt(radius);
            easel.colours.At(x, y) = Mix(easel.colours.At(x, y), colour * (1 + 0.05 * bristle), cover);
            easel.relief.At(x, y) = Mix(easel.relief.At(x, y), Rgb{thick, 0, 0}, cover);
        }
    }
}

// The strokes of one brush, in no order.
void Layer(Easel& easel, const Canvas& picture, const Brush& brush, const std::function<double(Vec)>& way,
           Random& random) {
    const int factor = std::max(1, int(brush.radius * 0.8));
    const Canvas rough = picture.Reduced(factor);  // a broad brush sees no fine things
    auto seen = [&](Vec p) { return rough.Sample(p.x / factor, p.y / factor); };
    std::vector<Vec> starts;
    for (double y = 0; y < picture.Height(); y += brush.radius)
        for (double x = 0; x < picture.Width(); x += brush.radius)
            starts.push_back({x + brush.radius * random.Next(), y + brush.radius * random.Next()});
    for (size_t i = starts.size(); i > 1; --i) std::swap(starts[i - 1], starts[size_t(random.Below(int(i)))]);
    for (Vec p : starts) {
        const Rgb colour = seen(p);
        if (brush.wanted > 0 && Apart(colour, easel.colours.Sample(p.x, p.y)) < brush.wanted) continue;
        std::vector<Vec> line{p};
        for (int i = 0; i < int(brush.reach); ++i) {
            const Vec next = line.back() + Polar(brush.radius, way(line.back()));
            const Rgb there = seen(next);
            if (i > 0 && Apart(there, colour) > Apart(there, easel.colours.Sample(next.x, next.y)) + 0.02) break;
            line.push_back(next);
        }
        const double value = 1 + brush.jitter * random.Between(-1, 1), warm = brush.jitter * random.Between(-0.5, 0.5);
        Stroke(easel, line, brush.radius, colour * Rgb{value + warm, value, value - warm},
               uint32_t(random.Below(1 << 20)));
    }
}

}  // namespace

Canvas PaintedOver(const Canvas& picture, const std::vector<Brush>& brushes, const std::function<double(Vec)>& way,
                   uint32_t seed) {
    const int width = picture.Width(), height = picture.Height();
    Easel easel{Canvas(width, height, Hex(0x203050)), Canvas(width, height)};
    Random random(seed);
    for (const Brush& brush : brushes) Layer(easel, picture, brush, way, random);
    Canvas out = easel.colours;
    for (int y = 1; y < height; ++y)
        for (int x = 1; x < width; ++x) {  // light from above left
            const double here = easel.relief.At(x, y).r;
            const double slope = 2 * here - easel.relief.At(x - 1, y).r - easel.relief.At(x, y - 1).r;
            out.At(x, y) = out.At(x, y) * (1 + std::clamp(0.09 * slope, -0.2, 0.25));
        }
    return out;
}

}  // namespace paint
