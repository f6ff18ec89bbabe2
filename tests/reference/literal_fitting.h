// What fitting a picture means: one 16-bit number after the other, each rounded at its step.
#pragma once
#include <cmath>
#include <optional>

#include "core/fitting.h"

namespace literal {

struct NoShort {};

// The nearest whole number, ties to even; thrown where 16 bits do not hold it.
inline int16_t Short(double value) {
    const double whole = std::nearbyint(value);
    if (!(whole >= -32768 && whole <= 32767)) throw NoShort();
    return int16_t(whole);
}

// Both sides times `factor`, as long as `wanted(size)` says so and they become others.
template <typename Wanted>
Size Scaled(Size size, double factor, Wanted wanted) {
    for (Size before; wanted(size) && size != before; size = {Short(size.width * factor), Short(size.height * factor)})
        before = size;
    return size;
}

// Grown until it nearly fills the grid; then the side with the wider margin is stretched, and the margins made even.
inline PuzzleModule::Fit Fill(Size grid, int cell, Size picture, double growth, double widest, double tallest) {
    const int16_t w = Short(grid.width * cell), h = Short(grid.height * cell);
    auto [pw, ph] = Scaled(picture, growth, [&](Size s) { return s.width * growth < w && s.height * growth < h; });
    const int wide = pw, tall = ph, right = w - pw, below = h - ph;
    while (right > below && w - (pw + 1) > below && pw + 1 <= wide * widest) ++pw;
    while (below > right && h - (ph + 1) > right && ph + 1 <= tall * tallest) ++ph;
    pw -= (w - pw) % 2;
    ph -= (h - ph) % 2;
    return {w, h, int16_t(grid.width), int16_t(grid.height), Short(pw), Short(ph), Short(pw), Short(ph)};
}

// A side of whole cells gets one more.
inline Size GridAround(Size picture, int cell) { return {picture.width / cell + 1, picture.height / cell + 1}; }

inline std::optional<PuzzleModule::Fit> FitNew(Size natural, int cell, Size screen) try {
    const auto cells = [cell](Size s) { return (double(s.width) / cell) * (double(s.height) / cell); };
    const int limit = Short(Short(cells({Short(screen.width), Short(screen.height)})) / 4.5);
    const Size picture =
        Scaled({Short(natural.width), Short(natural.height)}, 0.95, [&](Size size) { return cells(size) > limit; });
    PuzzleModule::Fit fit = Fill(GridAround(picture, cell), cell, picture, 1.01, 1.03, 1.05);
    fit.PictureWidth = Short(fit.FrameWidth - 2);
    fit.PictureHeight = Short(fit.FrameHeight - 2);
    return fit;
} catch (NoShort) {
    return std::nullopt;
}

// A picture larger than a grid that is known is cut down to it.
inline std::optional<PuzzleModule::Fit> FitRestored(Size picture, int cell, Size grid) try {
    picture = {std::min(picture.width, grid.width * cell), std::min(picture.height, grid.height * cell)};
    return Fill(grid, cell, picture, 1.02, 1.03, 1.03);
} catch (NoShort) {
    return std::nullopt;
}

}  // namespace literal
