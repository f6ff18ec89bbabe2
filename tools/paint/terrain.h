// Land seen from a height: a field of heights, marched column by column from near to far.
#pragma once
#include "paint.h"

namespace paint {

// A place on the land: x to the right of the eye, z away from it, h above zero.
struct Spot {
    double x = 0, z = 0, h = 0;
};

// Looks level along z, from `height` over x = 0, z = 0.
struct Eye {
    double height, horizon, focal;  // row of the horizon; pixels that one unit takes at distance one
    double nearest, farthest;

    Vec OnCanvas(const Canvas& canvas, Spot s) const {
        return {canvas.Width() / 2.0 + focal * s.x / s.z, horizon - focal * (s.h - height) / s.z};
    }
};

// Lays the land over the canvas. height(x, z) -> double; shade(Spot) -> Rgb, asked for what is seen.
// `step` is how much farther, in parts of the distance, each look goes than the one before.
template <class Height, class Shade>
void DrawTerrain(Canvas& canvas, const Eye& eye, double step, Height height, Shade shade) {
    constexpr int Sides = 2;  // columns in one column of pixels
    std::vector<Rgb> sum(size_t(canvas.Height()));
    std::vector<double> cover(size_t(canvas.Height()));
    for (int x = 0; x < canvas.Width(); ++x) {
        std::fill(sum.begin(), sum.end(), Rgb{});
        std::fill(cover.begin(), cover.end(), 0);
        for (int side = 0; side < Sides; ++side) {
            const double across = (x + (side + 0.5) / Sides - canvas.Width() / 2.0) / eye.focal;
            double top = canvas.Height();
            for (double z = eye.nearest; z < eye.farthest && top > 0; z *= 1 + step) {
                const Spot spot{across * z, z, height(across * z, z)};
                const double y = std::max(0.0, eye.OnCanvas(canvas, spot).y);
                if (y >= top) continue;
                const Rgb colour = shade(spot);
                for (int row = int(y); row < top; ++row) {
                    const double part = (std::min(top, row + 1.0) - std::max(y, double(row))) / Sides;
                    sum[size_t(row)] = sum[size_t(row)] + colour * part;
                    cover[size_t(row)] += part;
                }
                top = y;
            }
        }
        for (int y = 0; y < canvas.Height(); ++y)
            canvas.At(x, y) = canvas.At(x, y) * (1 - cover[size_t(y)]) + sum[size_t(y)];
    }
}

}  // namespace paint
