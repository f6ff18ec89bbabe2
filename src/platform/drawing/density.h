// How many pixels stand along one unit of length.
#pragma once
#include <algorithm>
#include <cmath>

#include "platform/drawing/geometry.h"

// The game reckons in units: the logical pixels of the screen. On a dense screen a surface that carries the picture
// keeps several pixels for each of them, k along either side. This is the one place that turns units into pixels.
class Density {
public:
    static constexpr int Most = 3;

    constexpr Density() = default;
    // 1 to Most; what lies outside counts as the nearest of them.
    constexpr explicit Density(int pixels) : pixels_(std::clamp(pixels, 1, Most)) {}

    // The smallest that is no coarser than a screen on which a unit is `scale` pixels long.
    static Density ForScale(double scale) { return Density(int(std::ceil(std::clamp(scale, 1.0, double(Most))))); }

    constexpr int PerUnit() const { return pixels_; }
    constexpr int Pixels(int units) const { return units * pixels_; }
    constexpr Size Pixels(Size units) const { return {Pixels(units.width), Pixels(units.height)}; }
    constexpr Rect Pixels(const Rect& units) const {
        return {Pixels(units.x), Pixels(units.y), Pixels(units.width), Pixels(units.height)};
    }
    bool operator==(const Density&) const = default;

private:
    int pixels_ = 1;
};
