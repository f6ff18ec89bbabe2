// Whole-pixel sizes, rectangles and small lists of rectangles.
// x runs right, y down; a rectangle covers x .. x + width - 1.
#pragma once
#include <algorithm>
#include <vector>

struct Size {
    int width = 0;
    int height = 0;
    bool operator==(const Size&) const = default;
};

struct Rect {
    int x = 0;
    int y = 0;
    int width = 0;
    int height = 0;
    bool operator==(const Rect&) const = default;

    int Right() const { return x + width; }    // first column beyond
    int Bottom() const { return y + height; }  // first row beyond
    bool Empty() const { return width <= 0 || height <= 0; }
    bool Contains(int px, int py) const { return px >= x && py >= y && px < Right() && py < Bottom(); }
};

// What two rectangles share; empty (zero size) if nothing.
inline Rect Intersect(const Rect& a, const Rect& b) {
    const int left = std::max(a.x, b.x), top = std::max(a.y, b.y);
    const int right = std::min(a.Right(), b.Right()), bottom = std::min(a.Bottom(), b.Bottom());
    if (right <= left || bottom <= top) return {};
    return {left, top, right - left, bottom - top};
}

// Smallest rectangle that holds both; an empty one adds nothing.
inline Rect Unite(const Rect& a, const Rect& b) {
    if (a.Empty()) return b;
    if (b.Empty()) return a;
    const int left = std::min(a.x, b.x), top = std::min(a.y, b.y);
    return {left, top, std::max(a.Right(), b.Right()) - left, std::max(a.Bottom(), b.Bottom()) - top};
}

using Region = std::vector<Rect>;
