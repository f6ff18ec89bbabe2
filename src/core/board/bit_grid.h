// A grid of bits in which runs are set and found by whole words.
#pragma once
#include <cstddef>
#include <cstdint>
#include <vector>

namespace PuzzleModule {

class BitGrid {
public:
    // All bits off.
    void Reset(int width, int height);
    int Width() const { return width_; }
    int Height() const { return height_; }

    bool At(int x, int y) const { return Row(y)[x / WordBits] >> (x % WordBits) & 1; }
    // Bits first to last of row y, which lie within the grid.
    void Set(int y, int first, int last);
    void Clear(int y, int first, int last);
    // The first bit of row y at or after `from` that equals `value`, or the width.
    int Find(int y, int from, bool value) const;

    // Every `cell` by `cell` bits made one, on where all of them are. What is left over on the right and below
    // is dropped. 64 is a multiple of `cell`.
    void Reduce(int cell, BitGrid& cells) const;

private:
    static constexpr int WordBits = 64;
    const uint64_t* Row(int y) const { return words_.data() + size_t(y) * wordsPerRow_; }
    uint64_t* Row(int y) { return words_.data() + size_t(y) * wordsPerRow_; }

    int width_ = 0, height_ = 0;
    size_t wordsPerRow_ = 0;
    std::vector<uint64_t> words_;
};

}  // namespace PuzzleModule
