// A handful of parts is united pair by pair. Many are marked on a grid of cells, one bit a cell;
// runs of cells of one row become rectangles, equal runs of following rows grow together. Where
// the outline is too ragged for that, the cells are doubled.
#include "core/board/damage.h"

#include <cstddef>
#include <cstdint>
#include <limits>

namespace PuzzleModule {

namespace {

constexpr size_t FewParts = 6;
constexpr size_t MostRuns = 24;  // before they are united pair by pair
constexpr int FinestCell = 32;

int64_t Area(const Rect& rect) { return int64_t(rect.width) * rect.height; }

// Pixels that a union of the two draws beyond what the two draw.
int64_t Waste(const Rect& a, const Rect& b) { return Area(Unite(a, b)) - Area(a) - Area(b); }

}  // namespace

Region Subtract(const Region& region, const Rect& hole) {
    Region rest;
    for (const Rect& rect : region) {
        const Rect shared = Intersect(rect, hole);
        if (shared.Empty()) {
            rest.push_back(rect);
            continue;
        }
        for (const Rect& side : {Rect{rect.x, rect.y, rect.width, shared.y - rect.y},
                                 Rect{rect.x, shared.Bottom(), rect.width, rect.Bottom() - shared.Bottom()},
                                 Rect{rect.x, shared.y, shared.x - rect.x, shared.height},
                                 Rect{shared.Right(), shared.y, rect.Right() - shared.Right(), shared.height}})
            if (!side.Empty()) rest.push_back(side);
    }
    return rest;
}

const Region& DamageMerger::Merge(const Region& parts, const Rect& bounds) {
    if (parts.size() <= FewParts) {
        result_ = parts;
    } else {
        for (int cell = FinestCell; !MergeOnGrid(parts, bounds, cell); cell *= 2) {
        }
    }
    UniteCheapest();
    return result_;
}

// False if that makes too many rectangles.
bool DamageMerger::MergeOnGrid(const Region& parts, const Rect& bounds, int cell) {
    const auto cellsOf = [cell](int length) { return (length + cell - 1) / cell; };
    grid_.Reset(cellsOf(bounds.width), cellsOf(bounds.height));
    for (const Rect& part : parts) {
        const int first = (part.x - bounds.x) / cell, last = (part.Right() - 1 - bounds.x) / cell;
        const int bottom = (part.Bottom() - 1 - bounds.y) / cell;
        for (int row = (part.y - bounds.y) / cell; row <= bottom; ++row) grid_.Set(row, first, last);
    }
    return ReadRows(bounds, cell);
}

bool DamageMerger::ReadRows(const Rect& bounds, int cell) {
    result_.clear();
    size_t openFrom = 0;  // rectangles before this one ended before the row above
    for (int row = 0; row < grid_.Height(); ++row) {
        while (openFrom < result_.size() && result_[openFrom].Bottom() < bounds.y + row * cell) ++openFrom;
        for (int x = grid_.Find(row, 0, true); x < grid_.Width();) {
            const int end = grid_.Find(row, x, false);
            AddRun({bounds.x + x * cell, bounds.y + row * cell, (end - x) * cell, cell}, openFrom);
            x = grid_.Find(row, end, true);
        }
        if (result_.size() > MostRuns) return false;
    }
    for (Rect& rect : result_) rect = Intersect(rect, bounds);
    return true;
}

// Lengthens the rectangle above that has the same width and place, or begins a new one.
void DamageMerger::AddRun(const Rect& run, size_t openFrom) {
    for (size_t i = openFrom; i < result_.size(); ++i) {
        Rect& above = result_[i];
        if (above.Bottom() == run.y && above.x == run.x && above.width == run.width) {
            above.height += run.height;
            return;
        }
    }
    result_.push_back(run);
}

// Unites pairs as long as that costs nothing, or there are too many.
void DamageMerger::UniteCheapest() {
    while (result_.size() > 1) {
        size_t bestA = 0, bestB = 1;
        int64_t least = std::numeric_limits<int64_t>::max();
        for (size_t a = 0; a < result_.size(); ++a)
            for (size_t b = a + 1; b < result_.size(); ++b)
                if (const int64_t waste = Waste(result_[a], result_[b]); waste < least) {
                    least = waste;
                    bestA = a;
                    bestB = b;
                }
        if (least > 0 && result_.size() <= MaxRects) return;
        result_[bestA] = Unite(result_[bestA], result_[bestB]);
        result_.erase(result_.begin() + std::ptrdiff_t(bestB));
    }
}

}  // namespace PuzzleModule
