// A rectangle is drawn band by band, so that a band's pixels stay in the cache from the
// background to the topmost piece. Order within a band: background, rims of the lying pieces,
// then the pieces from the last element to the first, the held one with its rim in its turn.
#include "core/board/painter.h"

#include <algorithm>
#include <cstring>

namespace PuzzleModule {

namespace {

// Pixels of a band: half of what the second cache of a common processor holds.
constexpr int BandPixels = 1 << 17;
constexpr int LeastBandRows = 32;

void FillBackground(Pixel* pixels, ptrdiff_t stride, const Surface& background, const Rect& band) {
    const Rect stored = Intersect(band, background.IsUniform() ? Rect{} : background.StorageBounds());
    for (int y = band.y; y < band.Bottom(); ++y) {
        Pixel* row = pixels + y * stride + band.x;
        const int copied = y < stored.Bottom() ? stored.width : 0;
        if (copied > 0) std::memcpy(row, background.Row(y) + band.x, size_t(copied) * sizeof(Pixel));
        std::fill(row + copied, row + band.width, background.Background());
    }
}

// Copies a run of pixels. Runs are short, so four pixels at a time in place beat a call; the last step
// may write some pixels twice.
inline void CopyRun(Pixel* out, const Pixel* in, int length) {
    constexpr int step = 4;
    if (length < step) {
        for (int i = 0; i < length; ++i) out[i] = in[i];
        return;
    }
    for (int i = 0; i < length - step; i += step) std::memcpy(out + i, in + i, step * sizeof(Pixel));
    std::memcpy(out + length - step, in + length - step, step * sizeof(Pixel));
}

// Most runs of a rim are single pixels.
inline void InvertRun(Pixel* out, int length) {
    *out ^= RgbBits;
    for (int i = 1; i < length; ++i) out[i] ^= RgbBits;
}

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
    const int rows = std::max(BandPixels / area.width, LeastBandRows);
    for (int y = area.y; y < area.Bottom(); y += rows)
        PaintBand(scene, {area.x, y, area.width, std::min(rows, area.Bottom() - y)});
}

void BoardPainter::PaintBand(const Scene& scene, const Rect& band) {
    FillBackground(scene.pixels, scene.stride, scene.background, band);
    FindPieces(scene, band);
    // Rims come before any piece, so they show on the background only; among themselves their
    // order does not matter.
    for (const int element : found_)
        if (element != scene.picked) InvertRim(scene, scene.pieces[element], band);
    for (auto element = found_.rbegin(); element != found_.rend(); ++element) {
        const PieceRec& piece = scene.pieces[*element];
        if (*element == scene.picked) InvertRim(scene, piece, band);
        LayPiece(scene, piece, band);
    }
}

void BoardPainter::FindPieces(const Scene& scene, const Rect& band) {
    found_.clear();
    ForEachPiece(scene.pieces, band, [this](int element) { found_.push_back(element); });
    std::ranges::sort(found_);
}

void BoardPainter::InvertRim(const Scene& scene, const PieceRec& piece, const Rect& band) {
    ForEachSpan(
        spans_[piece.MaskIndex].rim, piece.X, piece.Y, Reach(), band,
        [&scene](int x, int y, int, int, int length) { InvertRun(scene.pixels + y * scene.stride + x, length); });
}

void BoardPainter::LayPiece(const Scene& scene, const PieceRec& piece, const Rect& band) {
    if (piece.PieceId < 0 || piece.PieceId > scene.surfaces.UBound()) return;
    const Surface& surface = scene.surfaces[piece.PieceId];
    const SpanTable& shape = spans_[piece.MaskIndex].shape;
    const Rect stored = surface.StorageBounds();
    if (!surface.IsUniform() && stored.width >= spans_.TileSize() && stored.height >= spans_.TileSize()) {
        const Pixel* const in = surface.Row(0);
        const ptrdiff_t inStride = surface.Stride();
        ForEachSpan(shape, piece.X, piece.Y, Reach(), band, [&](int x, int y, int tileX, int tileY, int length) {
            CopyRun(scene.pixels + y * scene.stride + x, in + tileY * inStride + tileX, length);
        });
        return;
    }
    // A surface that keeps less than the tile: what it does not keep is its background, and beyond
    // its size the white of the mask stays.
    ForEachSpan(shape, piece.X, piece.Y, Reach(), band, [&](int x, int y, int tileX, int tileY, int length) {
        Pixel* out = scene.pixels + y * scene.stride + x;
        for (int i = 0; i < length; ++i)
            out[i] = surface.Bounds().Contains(tileX + i, tileY) ? surface.At(tileX + i, tileY) : WhitePixel;
    });
}

}  // namespace PuzzleModule
