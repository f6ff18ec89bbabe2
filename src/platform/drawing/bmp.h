// Uncompressed BMP pictures of 24 and 32 bits a pixel: for pictures that the program
// carries, and for desktops without picture formats of their own.
#pragma once
#include <cstddef>
#include <optional>
#include <span>
#include <string>

#include "platform/drawing/geometry.h"
#include "platform/drawing/surface.h"

// The size that the header declares; nothing if this is no such BMP.
std::optional<Size> BmpSize(std::span<const std::byte> bytes);

// The picture, whichever of its rows comes first. Nothing if it is no such BMP or
// bytes are missing. A fourth byte in a pixel is not transparency; it is ignored.
std::optional<Surface> DecodeBmp(std::span<const std::byte> bytes);

// A whole file with 24 bits a pixel, bottom row first.
std::string EncodeBmp(const Surface& surface);
