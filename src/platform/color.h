// Colours at the interfaces (0x00BBGGRR) and pixels in memory (0xFFRRGGBB).
#pragma once
#include <cstdint>

// A colour as settings, properties and dialogs know it: 0x00BBGGRR. A negative
// value is one of the desktop's own colours (0x80000000 + index).
using Color = int32_t;

// A pixel as surfaces hold it: 0xFFRRGGBB, top byte always 0xFF.
using Pixel = uint32_t;

inline constexpr Pixel OpaqueBits = 0xFF000000u;
inline constexpr Pixel RgbBits = 0x00FFFFFFu;
inline constexpr Pixel WhitePixel = 0xFFFFFFFFu;
inline constexpr Pixel BlackPixel = 0xFF000000u;

inline constexpr Color WindowColor = Color(0x80000005u);      // the desktop's window background
inline constexpr Color ButtonFaceColor = Color(0x8000000Fu);  // the desktop's button face

constexpr Color Rgb(int red, int green, int blue) { return red | green << 8 | blue << 16; }

// Swaps red and blue; both directions of the door between the two notations.
constexpr Pixel ToPixel(Color color) {
    const uint32_t c = uint32_t(color);
    return OpaqueBits | (c & 0xFFu) << 16 | (c & 0xFF00u) | (c >> 16 & 0xFFu);
}
constexpr Color ToColor(Pixel pixel) {
    return Color((pixel & 0xFFu) << 16 | (pixel & 0xFF00u) | (pixel >> 16 & 0xFFu));
}
