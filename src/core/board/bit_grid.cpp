#include "core/board/bit_grid.h"

#include <algorithm>
#include <bit>

namespace PuzzleModule {

namespace {

constexpr uint64_t AllOn = ~uint64_t{0};

// Calls change(word, bits) for each word that holds some of the bits first to last.
template <typename Change>
void ForEachWord(uint64_t* row, int first, int last, int wordBits, Change change) {
    for (int word = first / wordBits; word <= last / wordBits; ++word) {
        const int from = std::max(first - word * wordBits, 0), to = std::min(last - word * wordBits, wordBits - 1);
        change(row[word], (AllOn >> (wordBits - 1 - (to - from))) << from);
    }
}

}  // namespace

void BitGrid::Reset(int width, int height) {
    width_ = std::max(width, 0);
    height_ = std::max(height, 0);
    wordsPerRow_ = size_t(width_ + WordBits - 1) / WordBits;
    words_.assign(size_t(height_) * wordsPerRow_, 0);
}

void BitGrid::Set(int y, int first, int last) {
    ForEachWord(Row(y), first, last, WordBits, [](uint64_t& word, uint64_t bits) { word |= bits; });
}

void BitGrid::Clear(int y, int first, int last) {
    ForEachWord(Row(y), first, last, WordBits, [](uint64_t& word, uint64_t bits) { word &= ~bits; });
}

int BitGrid::Find(int y, int from, bool value) const {
    const uint64_t* row = Row(y);
    while (from < width_) {
        const uint64_t word = (value ? row[from / WordBits] : ~row[from / WordBits]) >> (from % WordBits);
        if (word != 0) return std::min(from + std::countr_zero(word), width_);
        from = (from / WordBits + 1) * WordBits;
    }
    return width_;
}

void BitGrid::Reduce(int cell, BitGrid& cells) const {
    cells.Reset(width_ / cell, height_ / cell);
    const uint64_t all = AllOn >> (WordBits - cell);
    for (int y = 0; y < cells.height_; ++y)
        for (size_t word = 0; word < wordsPerRow_; ++word) {
            uint64_t shared = AllOn;
            for (int i = 0; i < cell; ++i) shared &= Row(y * cell + i)[word];
            for (int bit = 0; bit < WordBits; bit += cell) {
                const int x = (int(word) * WordBits + bit) / cell;
                if ((shared >> bit & all) == all && x < cells.width_) cells.Set(y, x, x);
            }
        }
}

}  // namespace PuzzleModule
