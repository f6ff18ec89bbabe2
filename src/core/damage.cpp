// A handful of parts is united pair by pair. Many are marked on a grid of cells, one bit a cell;
// runs of cells of one row become rectangles, equal runs of following rows grow together. Where
// the outline is too ragged for that, the cells are doubled.
#include "core/damage.h"

#include <bit>
#include <cstddef>
#include <cstdint>
#include <limits>

namespace PuzzleModule {

namespace {

constexpr size_t FewParts = 6;
constexpr size_t MostRuns = 24;  // before they are united pair by pair
constexpr int FinestCell = 32;
constexpr int WordBits = 64;

int64_t Area(const Rect& rect) { return int64_t(rect.width) * rect.height; }

// Pixels that a union of the two draws beyond what the two draw.
int64_t Waste(const Rect& a, const Rect& b) { return Area(Unite(a, b)) - Area(a) - Area(b); }

// Sets bits first to last of a row of words.
void SetBits(uint64_t* row, int first, int last) {
    for (int word = first / WordBits; word <= last / WordBits; ++word) {
        const int from = std::max(first - word * WordBits, 0), to = std::min(last - word * WordBits, WordBits - 1);
        row[word] |= (~uint64_t{0} >> (WordBits - 1 - (to - from))) << from;
    }
}

// The first bit at or after `from` that equals `value`, or `end`.
int FindBit(const uint64_t* row, int from, int end, bool value) {
    while (from < end) {
        const uint64_t word = (value ? row[from / WordBits] : ~row[from / WordBits]) >> (from % WordBits);
        if (word != 0) return std::min(from + std::countr_zero(word), end);
        from = (from / WordBits + 1) * WordBits;
    }
    return end;
}

}  // namespace

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
    gridRows_ = cellsOf(bounds.height);
    wordsPerRow_ = size_t(cellsOf(bounds.width) + WordBits - 1) / WordBits;
    grid_.assign(size_t(gridRows_) * wordsPerRow_, 0);
    for (const Rect& part : parts) {
        const int first = (part.x - bounds.x) / cell, last = (part.Right() - 1 - bounds.x) / cell;
        const int bottom = (part.Bottom() - 1 - bounds.y) / cell;
        for (int row = (part.y - bounds.y) / cell; row <= bottom; ++row)
            SetBits(grid_.data() + size_t(row) * wordsPerRow_, first, last);
    }
    return ReadRows(bounds, cell);
}

bool DamageMerger::ReadRows(const Rect& bounds, int cell) {
    result_.clear();
    const int cols = (bounds.width + cell - 1) / cell;
    size_t openFrom = 0;  // rectangles before this one ended before the row above
    for (int row = 0; row < gridRows_; ++row) {
        const uint64_t* bits = grid_.data() + size_t(row) * wordsPerRow_;
        while (openFrom < result_.size() && result_[openFrom].Bottom() < bounds.y + row * cell) ++openFrom;
        for (int x = FindBit(bits, 0, cols, true); x < cols;) {
            const int end = FindBit(bits, x, cols, false);
            AddRun({bounds.x + x * cell, bounds.y + row * cell, (end - x) * cell, cell}, openFrom);
            x = FindBit(bits, end, cols, true);
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
