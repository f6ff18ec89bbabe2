// Few rectangles that together hold many small ones.
#pragma once
#include <cstdint>
#include <vector>

#include "platform/geometry.h"

namespace PuzzleModule {

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
    std::vector<uint64_t> grid_;
    size_t wordsPerRow_ = 0;
    int gridRows_ = 0;
};

}  // namespace PuzzleModule
