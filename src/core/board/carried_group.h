// What pieces that are carried about together hide: rectangles that their shapes fill without a gap.
//
// In such a rectangle nothing but the group is seen, so wherever the group goes, its pixels go along
// unchanged. They can be shifted instead of being drawn afresh.
#pragma once
#include <vector>

#include "core/board/bit_grid.h"
#include "core/board/tile_spans.h"
#include "core/piece_rec.h"
#include "platform/drawing/geometry.h"

namespace PuzzleModule {

class CarriedGroup {
public:
    // Fewer pieces are drawn afresh as quickly.
    static constexpr size_t FewestPieces = 4;

    // True if these elements are the group. Whoever moves anything else but them calls Forget.
    bool Is(const std::vector<int>& elements) const { return !elements_.empty() && elements == elements_; }
    void Forget() { elements_.clear(); }

    // Finds the rectangles. Elements from `drawable` on have no surface and hide nothing.
    void Take(const std::vector<int>& elements, const std::vector<PieceRec>& pieces, int drawable,
              const TileSpans& spans);

    bool Contains(int element) const { return size_t(element) < contained_.size() && contained_[size_t(element)]; }
    // The element lowest in the pile.
    int Lowest() const { return lowest_; }

    // What the group can change, and whether most of that is hidden; counted from the place of the first element.
    const Rect& Outline() const { return outline_; }
    bool IsCompact() const { return 2 * hiddenArea_ >= int64_t(outline_.width) * outline_.height; }

    // At most MostRects rectangles, none touching another, counted from the place of the first element.
    const Region& Hidden() const { return hidden_; }

private:
    static constexpr int Cell = 4;  // pixels; edges of the rectangles are found to that precision
    static constexpr size_t MostRects = 4;
    static constexpr int LeastArea = 64 * 64;          // pixels of a rectangle that is worth it
    static constexpr int64_t LargestArea = 1ll << 26;  // pixels within which the group must lie

    Rect BoundsOf(const std::vector<PieceRec>& pieces, int tileSize) const;
    void MarkShape(const PieceRec& piece, const Rect& bounds, const SpanTable& shape);
    Rect LargestRect();

    std::vector<int> elements_;
    std::vector<bool> contained_;
    int lowest_ = -1;
    Rect outline_;
    Region hidden_;
    int64_t hiddenArea_ = 0;
    BitGrid filled_, cells_;
    std::vector<int> heights_, open_;
};

}  // namespace PuzzleModule
