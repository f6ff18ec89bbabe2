// Pictures for tests: a pattern in which every pixel tells its place, as a pixel
// rule, as a surface and as a 24-bit BMP file.
#pragma once
#include <cstdint>
#include <fstream>
#include <string>

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

// A whole BMP file, 24 bits a pixel, bottom row first. Written out by hand, so that it
// checks the program's own readers.
inline std::string PatternBmp(Size size, int variant = 0) {
    const uint32_t rowBytes = uint32_t(size.width * 3 + 3) / 4 * 4;
    const uint32_t dataBytes = rowBytes * uint32_t(size.height);
    std::string out;
    out.reserve(54 + dataBytes);
    const auto put = [&out](uint32_t value, int bytes) {
        for (int i = 0; i < bytes; ++i) out += char(value >> (8 * i) & 0xFF);
    };
    out += "BM";
    for (uint32_t field : {54 + dataBytes, 0u, 54u, 40u, uint32_t(size.width), uint32_t(size.height)}) put(field, 4);
    put(1, 2), put(24, 2);
    for (uint32_t field : {0u, dataBytes, 3780u, 3780u, 0u, 0u}) put(field, 4);
    for (int y = size.height - 1; y >= 0; --y) {
        for (int x = 0; x < size.width; ++x) put(PatternPixel(x, y, variant), 3);
        out.resize((out.size() - 54 + 3) / 4 * 4 + 54, '\0');
    }
    return out;
}

// Writes such a file and returns its path.
inline std::string WritePicture(const std::string& path, Size size, int variant = 0) {
    std::ofstream(path, std::ios::binary) << PatternBmp(size, variant);
    return path;
}
