// Colours as settings, properties and dialogs know them.
#pragma once
#include <cstdint>

// 0x00BBGGRR. A negative value is one of the desktop's own colours (0x80000000 + index).
using Color = int32_t;

inline constexpr Color WindowColor = Color(0x80000005u);      // the desktop's window background
inline constexpr Color ButtonFaceColor = Color(0x8000000Fu);  // the desktop's button face

constexpr Color Rgb(int red, int green, int blue) { return red | green << 8 | blue << 16; }
