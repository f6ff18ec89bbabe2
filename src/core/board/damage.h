// Few rectangles that together hold many small ones.
#pragma once
#include <cstddef>

#include "core/board/bit_grid.h"
#include "platform/drawing/geometry.h"

namespace PuzzleModule {

// What of `region` lies outside `hole`, as rectangles that do not overlap if those of `region` don't.
Region Subtract(const Region& region, const Rect& hole);

class DamageMerger {
public:
    // As many rectangles as a surface remembers before it unites them all.
    static constexpr size_t MaxRects = 8;

    // At most MaxRects rectangles inside `bounds` that hold all of `parts` (which lie inside
    // `bounds`), with as little besides as can be found quickly. Linear in the number of parts.
    const Region& Merge(const Region& parts, const Rect& bounds);

private:
    bool MergeOnGrid(const Region& parts, const Rect& bounds, int cell);
    bool ReadRows(const Rect& bounds, int cell);
    void AddRun(const Rect& run, size_t openFrom);
    void UniteCheapest();

    Region result_;
    BitGrid grid_;
};

}  // namespace PuzzleModule
