// Pixels as surfaces hold them, and the door between them and colours.
#pragma once
#include "platform/system/color.h"

// 0xFFRRGGBB, top byte always 0xFF.
using Pixel = uint32_t;

inline constexpr Pixel OpaqueBits = 0xFF000000u;
inline constexpr Pixel RgbBits = 0x00FFFFFFu;
inline constexpr Pixel WhitePixel = 0xFFFFFFFFu;
inline constexpr Pixel BlackPixel = 0xFF000000u;

// Swaps red and blue; both directions of the door.
constexpr Pixel ToPixel(Color color) {
    const uint32_t c = uint32_t(color);
    return OpaqueBits | (c & 0xFFu) << 16 | (c & 0xFF00u) | (c >> 16 & 0xFFu);
}
constexpr Color ToColor(Pixel pixel) {
    return Color((pixel & 0xFFu) << 16 | (pixel & 0xFF00u) | (pixel >> 16 & 0xFFu));
}
