// A rectangle is drawn band by band, so that a band's pixels stay in the cache from the
// background to the topmost piece. Order within a band: background, rims of the lying pieces,
// then the pieces from the last element to the first, the held one with its rim in its turn.
#include "core/board/painter.h"

#include <algorithm>

namespace PuzzleModule {

namespace {

// Pixels of a band: half of what the second cache of a common processor holds.
constexpr int BandPixels = 1 << 17;
constexpr int LeastBandRows = 32;

// Calls draw(x, y, x within the tile, y within the tile, length) for the part of each span inside
// `band`, for a piece at X, Y.
template <typename Draw>
void ForEachSpan(const SpanTable& table, int X, int Y, int reach, const Rect& band, Draw draw) {
    const int top = std::max(band.y - Y, 0), bottom = std::min(band.Bottom() - Y, table.RowCount());
    if (top >= bottom) return;
    const bool whole = X >= band.x && X + reach <= band.Right();
    for (const Span& span : table.Rows(top, bottom)) {
        int from = span.x, to = span.x + span.length;
        if (!whole) {
            from = std::max(from, band.x - X);
            to = std::min(to, band.Right() - X);
            if (from >= to) continue;
        }
        draw(X + from, Y + span.y, from, span.y, to - from);
    }
}

}  // namespace

void BoardPainter::Paint(const Scene& scene, const Rect& area) {
    OnCanvas(scene.density, scene.pixels, scene.stride, [&]<int K>(const Canvas<K>& canvas) {
        const int rows = std::max(BandPixels / (area.width * K * K), LeastBandRows / K);
        for (int y = area.y; y < area.Bottom(); y += rows)
            PaintBand(canvas, scene, {area.x, y, area.width, std::min(rows, area.Bottom() - y)});
    });
}

template <int K>
void BoardPainter::PaintBand(const Canvas<K>& canvas, const Scene& scene, const Rect& band) {
    canvas.FillBackground(scene.background, band);
    FindPieces(scene, band);
    // Rims come before any piece, so they show on the background only; among themselves their
    // order does not matter.
    for (const int element : found_)
        if (element != scene.picked) InvertRim(canvas, scene.pieces[element], band);
    for (auto element = found_.rbegin(); element != found_.rend(); ++element) {
        const PieceRec& piece = scene.pieces[*element];
        if (*element == scene.picked) InvertRim(canvas, piece, band);
        LayPiece(canvas, scene, piece, band);
    }
}

void BoardPainter::FindPieces(const Scene& scene, const Rect& band) {
    found_.clear();
    ForEachPiece(scene.pieces, band, [this](int element) { found_.push_back(element); });
    std::ranges::sort(found_);
}

template <int K>
void BoardPainter::InvertRim(const Canvas<K>& canvas, const PieceRec& piece, const Rect& band) const {
    ForEachSpan(spans_[piece.MaskIndex].rim, piece.X, piece.Y, Reach(), band,
                [&canvas](int x, int y, int, int, int length) { canvas.InvertRun(x, y, length); });
}

template <int K>
void BoardPainter::LayPiece(const Canvas<K>& canvas, const Scene& scene, const PieceRec& piece,
                            const Rect& band) const {
    if (piece.PieceId < 0 || piece.PieceId > scene.surfaces.UBound()) return;
    const Surface& surface = scene.surfaces[piece.PieceId];
    const SpanTable& shape = spans_[piece.MaskIndex].shape;
    const Rect stored = surface.StorageBounds();
    if (!surface.IsUniform() && stored.width >= spans_.TileSize() && stored.height >= spans_.TileSize()) {
        const Pixel* const from = surface.Row(0);
        const ptrdiff_t fromStride = surface.Stride();
        ForEachSpan(shape, piece.X, piece.Y, Reach(), band, [&](int x, int y, int tileX, int tileY, int length) {
            canvas.CopyRun(x, y, length, from, fromStride, tileX, tileY);
        });
        return;
    }
    // What a surface does not keep of the tile is its background, and beyond its size the white of the mask stays.
    ForEachSpan(shape, piece.X, piece.Y, Reach(), band, [&](int x, int y, int tileX, int tileY, int length) {
        canvas.CopyRunOfPart(x, y, length, surface, tileX, tileY);
    });
}

}  // namespace PuzzleModule
