// Block operations between surfaces. Each clips once, against both surfaces, and
// then runs plain row loops; source and destination are different surfaces.
//
// Places and sizes count in units. Surfaces of one density give and take pixel by pixel; a source of one pixel a
// unit is enlarged for a denser destination. No operation goes the other way.
#pragma once
#include <cstdint>

#include "platform/drawing/surface.h"

enum class RasterOp : uint32_t {
    SrcCopy = 0xCC0020,     // destination = source
    SrcPaint = 0xEE0086,    // destination OR source
    SrcAnd = 0x8800C6,      // destination AND source
    SrcInvert = 0x660046,   // destination XOR source
    MergePaint = 0xBB0226,  // destination OR NOT source
};

// Combines the width x height block of `source` at sourceX, sourceY with that of
// `dest` at x, y. What lies outside either surface is left alone. The top byte
// of every pixel stays 0xFF.
void BitBlt(Surface& dest, int x, int y, int width, int height, const Surface& source, int sourceX, int sourceY,
            RasterOp op);

// The top-left square of `side` units turned a quarter clockwise: dest(side - 1 - y, x) = source(x, y) in pixels of
// their one density. Nothing happens if either does not store the square.
void TurnClockwise(Surface& dest, const Surface& source, int side);

// The first pixel of a unit as a colour, or -1 outside the surface.
Color Point(const Surface& surface, int x, int y);

// One unit set; nothing happens outside the surface.
void SetPixel(Surface& surface, int x, int y, Color color);

// Fills a rectangle, clipped.
void FillRect(Surface& dest, const Rect& area, Color color);

// The outline of a box whose far edges are included: the lines run through
// x, y and x + width, y + height. One unit wide, clipped.
void Line(Surface& dest, int x, int y, int width, int height, Color color);

// Stretches all of the black-and-white `source` onto all of `dest` by nearest
// neighbour at pixel centres, in whole numbers: target pixel d has its centre at
// (2d + 1) x source / (2 x target) in the source. Where that falls exactly on a
// boundary between source pixels, in either direction, white wins. Pure black and
// white in, pure black and white out.
void StretchMask(Surface& dest, const Surface& source);
