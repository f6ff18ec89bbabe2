// Pictures for tests: a pattern in which every pixel tells its place, and bitmap files of all kinds.
#pragma once
#include <cstdint>
#include <random>
#include <string>
#include <vector>

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

// How a bitmap may be stored.
struct BitmapKind {
    int bits;
    std::vector<uint32_t> masks = {};  // none: no compression
    uint32_t header = 40, gap = 0;     // bytes, and those between header and rows
};
inline const BitmapKind BitmapKinds[] = {{24},
                                         {32},
                                         {16},
                                         {16, {0x7C00, 0x3E0, 0x1F}},
                                         {32, {0xFF, 0xFF00, 0xFF0000}},
                                         {24, {}, 124},
                                         {32, {0xFF0000, 0xFF00, 0xFF, 0xFF000000}, 108},
                                         {32, {0xFF0000, 0xFF00, 0xFF}},
                                         {24, {}, 64},
                                         {24, {}, 1024},
                                         {24, {}, 1025},
                                         {24, {}, 40, 777},
                                         {16, {0xF800, 0x7E0, 0x1F}, 40, 33},
                                         {24, {}, 40, 65536 - 54},
                                         {24, {}, 40, 65537 - 54},
                                         {8},
                                         {24, {0xFF0000, 0xFF00, 0xFF}},
                                         {32, {0xFFFFFFFF, 0xFF00, 0xFF}}};

// One of random rows; a few bytes of them if `most` says so. Downwards if the height is negative.
inline std::string Bitmap(const BitmapKind& kind, Size size, size_t most = SIZE_MAX) {
    std::string rest = Little(size.width) + Little(size.height) + Little(1, 2) + Little(kind.bits, 2) +
                       Little(kind.masks.empty() ? 0 : 3) + std::string(20, '\0'),
                masks;
    for (const uint32_t mask : kind.masks) masks += Little(mask);
    if (kind.header > 64) rest += masks;
    rest.resize(kind.header - 4, '\0');
    if (kind.header <= 64) rest += masks;
    for (uint32_t i = 0; kind.bits == 8 && i < 256; ++i) rest += Little(i * 0x30705 & 0xFFFFFF);
    rest.resize(rest.size() + kind.gap, '\0');
    const int64_t stride = (int64_t(size.width) * kind.bits + 31) / 32 * 4;
    std::string rows(std::min(most, size_t(stride * std::abs(int64_t(size.height)))), '\0');
    std::mt19937 random{uint32_t(size.width)};
    for (char& c : rows) c = char(random());
    const int64_t rowsAt = int64_t(18 + rest.size());
    return "BM" + Little(rowsAt + int64_t(rows.size())) + Little(0) + Little(rowsAt) + Little(kind.header) + rest +
           rows;
}
