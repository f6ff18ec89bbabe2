// Pictures for tests: a pattern in which every pixel tells its place.
#pragma once
#include <cstdint>

#include "platform/drawing/geometry.h"
#include "platform/drawing/surface.h"

// The pattern's pixel at x, y. Neighbours differ, and so do pictures of different `variant`.
inline Pixel PatternPixel(int x, int y, int variant = 0) {
    const uint32_t red = uint32_t(x * 7 + variant * 31) & 0xFF;
    const uint32_t green = uint32_t(y * 5 + variant * 67) & 0xFF;
    const uint32_t blue = uint32_t(((x >> 4) ^ (y >> 4)) * 37 + x + y * 3 + variant * 101) & 0xFF;
    return OpaqueBits | red << 16 | green << 8 | blue;
}

inline Surface PatternSurface(Size size, int variant = 0) {
    Surface surface(size.width, size.height);
    Pixel* pixels = surface.DrawAll();
    for (int y = 0; y < size.height; ++y)
        for (int x = 0; x < size.width; ++x)
            pixels[size_t(y) * size_t(surface.Stride()) + size_t(x)] = PatternPixel(x, y, variant);
    return surface;
}

// A number as files hold it.
inline std::string Little(int64_t value, int bytes = 4) {
    std::string text;
    for (int i = 0; i < bytes; ++i) text += char(value >> 8 * i & 0xFF);
    return text;
}
