// Signed distances of points to shapes.
#include "paint.h"

namespace paint {

double Circle(Vec p, Vec centre, double radius) { return Length(p - centre) - radius; }

double Ellipse(Vec p, Vec centre, Vec radii) {
    const Vec q{(p.x - centre.x) / radii.x, (p.y - centre.y) / radii.y};
    const double k = Length(q), slope = Length({q.x / radii.x, q.y / radii.y});
    return k < 1e-9 ? -std::min(radii.x, radii.y) : k * (k - 1) / slope;
}

double Box(Vec p, Vec from, Vec to, double corner) {
    const double dx = std::max(from.x - p.x, p.x - to.x) + corner, dy = std::max(from.y - p.y, p.y - to.y) + corner;
    return Length({std::max(dx, 0.0), std::max(dy, 0.0)}) + std::min(std::max(dx, dy), 0.0) - corner;
}

double Segment(Vec p, Vec a, Vec b, double radius) { return Capsule(p, a, b, radius, radius); }

double Capsule(Vec p, Vec a, Vec b, double radiusA, double radiusB) {
    const Vec line = b - a;
    const double t = Clamp01(Dot(p - a, line) / std::max(1e-12, Dot(line, line)));
    return Length(p - a - line * t) - Mix(radiusA, radiusB, t);
}

double Polyline(Vec p, const std::vector<Vec>& points, double radius) {
    double best = 1e9;
    for (size_t i = 1; i < points.size(); ++i) best = std::min(best, Segment(p, points[i - 1], points[i], 0));
    return best - radius;
}

double Polygon(Vec p, const std::vector<Vec>& corners) {
    double best = 1e9;
    bool inside = false;
    for (size_t i = 0, j = corners.size() - 1; i < corners.size(); j = i++) {
        const Vec a = corners[j], b = corners[i];
        best = std::min(best, Segment(p, a, b, 0));
        if ((a.y > p.y) != (b.y > p.y) && p.x < a.x + (p.y - a.y) / (b.y - a.y) * (b.x - a.x)) inside = !inside;
    }
    return inside ? -best : best;
}

std::vector<Vec> Curve(const std::vector<Vec>& through, int steps, bool closed) {
    std::vector<Vec> out;
    const int n = int(through.size());
    auto at = [&](int i) { return through[size_t(closed ? (i % n + n) % n : std::clamp(i, 0, n - 1))]; };
    for (int i = 0; i < (closed ? n : n - 1); ++i) {
        const Vec a = at(i - 1), b = at(i), c = at(i + 1), d = at(i + 2);
        for (int k = 0; k < steps; ++k) {
            const double t = double(k) / steps, t2 = t * t, t3 = t2 * t;
            out.push_back((b * 2 + (c - a) * t + (a * 2 - b * 5 + c * 4 - d) * t2 + (b * 3 - a - c * 3 + d) * t3) *
                          0.5);
        }
    }
    if (!closed) out.push_back(through.back());
    return out;
}

}  // namespace paint
