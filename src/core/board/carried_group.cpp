// The shapes are marked pixel by pixel, the marks reduced to cells, and the largest rectangles of full
// cells are taken out one after the other.
#include "core/board/carried_group.h"

namespace PuzzleModule {

void CarriedGroup::Take(const std::vector<int>& elements, const std::vector<PieceRec>& pieces, int drawable,
                        const TileSpans& spans) {
    elements_ = elements;
    contained_.assign(pieces.size(), false);
    lowest_ = -1;
    hidden_.clear();
    hiddenArea_ = 0;
    outline_ = {};
    if (elements.empty()) return;
    const Rect bounds = BoundsOf(pieces, spans.TileSize());
    if (int64_t(bounds.width) * bounds.height > LargestArea) return;
    filled_.Reset(bounds.width, bounds.height);
    const PieceRec& first = pieces[size_t(elements[0])];
    for (const int element : elements) {
        const PieceRec& piece = pieces[size_t(element)];
        contained_[size_t(element)] = true;
        lowest_ = std::max(lowest_, element);
        const bool drawn = piece.PieceId >= 0 && piece.PieceId < drawable;
        if (piece.MaskIndex < 0 || piece.MaskIndex >= TileCount) continue;
        const TileSpans::Tile& tile = spans[piece.MaskIndex];
        outline_ = Unite(outline_, {piece.X - first.X + tile.bounds.x, piece.Y - first.Y + tile.bounds.y,
                                    tile.bounds.width, tile.bounds.height});
        if (drawn) MarkShape(piece, bounds, tile.shape);
    }
    filled_.Reduce(Cell, cells_);
    while (hidden_.size() < MostRects) {
        const Rect rect = LargestRect();
        const int64_t area = int64_t(rect.width) * rect.height * Cell * Cell;
        if (area < LeastArea) return;
        hiddenArea_ += area;
        for (int y = rect.y; y < rect.Bottom(); ++y) cells_.Clear(y, rect.x, rect.Right() - 1);
        hidden_.push_back({bounds.x + rect.x * Cell - first.X, bounds.y + rect.y * Cell - first.Y, rect.width * Cell,
                           rect.height * Cell});
    }
}

Rect CarriedGroup::BoundsOf(const std::vector<PieceRec>& pieces, int tileSize) const {
    Rect bounds;
    for (const int element : elements_) {
        const PieceRec& piece = pieces[size_t(element)];
        bounds = Unite(bounds, {piece.X, piece.Y, tileSize, tileSize});
    }
    return bounds;
}

void CarriedGroup::MarkShape(const PieceRec& piece, const Rect& bounds, const SpanTable& shape) {
    const int x = piece.X - bounds.x, y = piece.Y - bounds.y;
    for (const Span& span : shape.Rows(0, shape.RowCount()))
        filled_.Set(y + span.y, x + span.x, x + span.x + span.length - 1);
}

// In cells. Row by row, each column knows how many full cells stand above one another; columns whose
// heights rise stay open until a lower one ends their rectangles.
Rect CarriedGroup::LargestRect() {
    Rect best;
    const int width = cells_.Width();
    heights_.assign(size_t(width) + 1, 0);
    for (int y = 0; y < cells_.Height(); ++y) {
        open_.clear();
        for (int x = 0; x <= width; ++x) {
            int& height = heights_[size_t(x)];
            height = x < width && cells_.At(x, y) ? height + 1 : 0;
            while (!open_.empty() && heights_[size_t(open_.back())] >= height) {
                const int tall = heights_[size_t(open_.back())];
                open_.pop_back();
                const int left = open_.empty() ? 0 : open_.back() + 1;
                if (int64_t(x - left) * tall > int64_t(best.width) * best.height)
                    best = {left, y - tall + 1, x - left, tall};
            }
            open_.push_back(x);
        }
    }
    return best;
}

}  // namespace PuzzleModule
