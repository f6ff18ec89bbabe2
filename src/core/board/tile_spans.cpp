// Runs of white in the working strip, found once per strip.
#include "core/board/tile_spans.h"

#include <algorithm>

namespace PuzzleModule {

void SpanTable::Clear(int rows) {
    spans_.clear();
    firstOfRow_.clear();
    rows_ = rows;
}

void SpanTable::Add(int y, int x, int length) {
    while (int(firstOfRow_.size()) <= y) firstOfRow_.push_back(uint32_t(spans_.size()));
    spans_.push_back({int16_t(y), int16_t(x), int16_t(length)});
}

void SpanTable::Close() { firstOfRow_.resize(size_t(rows_) + 1, uint32_t(spans_.size())); }

Rect SpanTable::Bounds() const {
    Rect bounds;
    for (const Span& span : spans_) bounds = Unite(bounds, {span.x, span.y, span.length, 1});
    return bounds;
}

void TileSpans::Update(const Surface& strip, int tileSize) {
    if (tileSize == tileSize_ && strip.Revision() == revision_) return;
    tileSize_ = std::max(tileSize, 0);
    revision_ = strip.Revision();
    for (int i = 0; i < TileCount; ++i) Read(tiles_[size_t(i)], strip, i * tileSize_);
}

namespace {

// Adds the runs of row y that `inside(x)` spells for x from 0 to width - 1.
template <typename Predicate>
void AddRuns(SpanTable& table, int y, int width, Predicate inside) {
    for (int x = 0; x < width;) {
        const int start = x;
        while (x < width && inside(x)) ++x;
        if (x > start) table.Add(y, start, x - start);
        while (x < width && !inside(x)) ++x;
    }
}

}  // namespace

void TileSpans::Read(Tile& tile, const Surface& strip, int left) {
    const int size = tileSize_;
    // Outside the tile, and outside the strip, nothing is inside a piece.
    const auto white = [&](int x, int y) {
        return x >= 0 && y >= 0 && x < size && y < size && strip.Bounds().Contains(left + x, y) &&
               strip.At(left + x, y) == WhitePixel;
    };
    tile.shape.Clear(size);
    for (int y = 0; y < size; ++y) AddRuns(tile.shape, y, size, [&](int x) { return white(x, y); });
    tile.shape.Close();
    tile.rim.Clear(size + 1);
    for (int y = 0; y <= size; ++y)
        AddRuns(tile.rim, y, size + 1, [&](int x) { return white(x - 1, y - 1) && !white(x, y); });
    tile.rim.Close();
    tile.bounds = Unite(tile.shape.Bounds(), tile.rim.Bounds());
}

}  // namespace PuzzleModule
