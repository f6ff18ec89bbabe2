// The shapes of the working strip as runs of pixels.
//
// A tile's shape is laid on the board by copying these runs from the piece's surface: what OR
// with the mask and AND with the surface do in two passes over the whole square. The rim is
// the shape one pixel right and down, less the shape itself: that part of the inversion the
// piece covers again at once.
#pragma once
#include <array>
#include <cstdint>
#include <span>
#include <vector>

#include "core/mask_strip.h"
#include "platform/drawing/surface.h"

namespace PuzzleModule {

// Pixels x to x + length - 1 of row y, counted from the tile's corner.
struct Span {
    int16_t y, x, length;
};

// Spans in the order of their rows.
class SpanTable {
public:
    void Clear(int rows);
    void Add(int y, int x, int length);  // y never decreases
    void Close();

    // The spans of rows top to bottom - 1, which lie within the table.
    std::span<const Span> Rows(int top, int bottom) const {
        return {spans_.data() + firstOfRow_[size_t(top)], spans_.data() + firstOfRow_[size_t(bottom)]};
    }
    int RowCount() const { return rows_; }

    // The smallest rectangle that holds all spans.
    Rect Bounds() const;

private:
    std::vector<Span> spans_;
    std::vector<uint32_t> firstOfRow_;
    int rows_ = 0;
};

class TileSpans {
public:
    struct Tile {
        SpanTable shape;  // TileSize rows
        SpanTable rim;    // TileSize + 1 rows
        Rect bounds;      // of both
    };

    // Reads all tiles of the strip anew unless it is the one that was read last.
    void Update(const Surface& strip, int tileSize);

    int TileSize() const { return tileSize_; }
    const Tile& operator[](int tile) const { return tiles_[size_t(tile)]; }

private:
    void Read(Tile& tile, const Surface& strip, int left);

    std::array<Tile, TileCount> tiles_;
    int tileSize_ = -1;
    uint64_t revision_ = 0;
};

}  // namespace PuzzleModule
