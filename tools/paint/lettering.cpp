// Letters as strokes: units of the height of a capital, baseline at 0, y up.
#include "lettering.h"

namespace paint {
namespace {

using Stroke = std::vector<Vec>;

// Part of an ellipse, from one angle to another in degrees, anticlockwise if `to` is larger.
Stroke Arc(double cx, double cy, double rx, double ry, double from, double to) {
    Stroke out;
    for (int i = 0; i <= 24; ++i) {
        const double angle = (from + (to - from) * i / 24) * Pi / 180;
        out.push_back({cx + rx * std::cos(angle), cy + ry * std::sin(angle)});
    }
    return out;
}

struct Letter {
    std::vector<Stroke> strokes;
    double advance;
};

Letter Shape(char c) {
    switch (c) {
        case 'F':
            return {{{{0, 0}, {0, 1}, {0.54, 1}}, {{0, 0.53}, {0.44, 0.53}}}, 0.70};
        case 'L':
            return {{{{0, 1}, {0, 0}, {0.5, 0}}}, 0.72};
        case 'M':
            return {{{{0, 0}, {0.02, 1}, {0.42, 0.35}, {0.82, 1}, {0.84, 0}}}, 1.10};
        case 'a':
            return {{Arc(0.29, 0.31, 0.29, 0.31, 0, 360), {{0.58, 0.62}, {0.58, 0}}}, 0.84};
        case 'e': {
            Stroke s = Arc(0.29, 0.31, 0.29, 0.31, 4, 315);
            s.insert(s.begin(), Vec{0.02, 0.33});
            return {{s}, 0.80};
        }
        case 'i':
            return {{{{0, 0}, {0, 0.62}}, {{0, 0.9}, {0, 0.91}}}, 0.25};
        case 'n': {
            Stroke s = Arc(0.25, 0.36, 0.25, 0.26, 180, 0);
            s.push_back({0.5, 0});
            return {{{{0, 0}, {0, 0.62}}, s}, 0.75};
        }
        case 'o':
            return {{Arc(0.3, 0.31, 0.3, 0.31, 0, 360)}, 0.83};
        case 'r':
            return {{{{0, 0}, {0, 0.62}}, Arc(0.27, 0.34, 0.27, 0.28, 180, 75)}, 0.55};
        case 's': {
            Stroke s = Arc(0.24, 0.46, 0.20, 0.16, 25, 270), lower = Arc(0.24, 0.15, 0.22, 0.15, 90, -155);
            s.insert(s.end(), lower.begin(), lower.end());
            return {{s}, 0.66};
        }
        case 't': {
            Stroke s = Arc(0.30, 0.18, 0.18, 0.18, 180, 280);
            s.insert(s.begin(), Vec{0.12, 0.88});
            return {{s, {{-0.04, 0.62}, {0.36, 0.62}}}, 0.56};
        }
        case '-':
            return {{{{0, 0.33}, {0.3, 0.33}}}, 0.54};
        default:
            return {{}, 0.45};
    }
}

}  // namespace

std::vector<std::vector<Vec>> Lettering(const std::string& text, Vec origin, double size) {
    std::vector<Stroke> out;
    for (char c : text) {
        const Letter letter = Shape(c);
        for (const Stroke& stroke : letter.strokes) {
            out.emplace_back();
            for (Vec p : stroke) out.back().push_back({origin.x + p.x * size, origin.y - p.y * size});
        }
        origin.x += letter.advance * size;
    }
    return out;
}

}  // namespace paint
