// Which pieces lie near a rectangle, at a cost that grows with what lies there and not with the pile.
//
// The board is divided into fields; each has a list of the elements whose tile begins in it. Whatever
// begins beyond the board counts to the outermost field on that side.
#pragma once
#include <vector>

#include "core/piece_rec.h"
#include "platform/drawing/geometry.h"

namespace PuzzleModule {

class PlaceIndex {
public:
    // All places anew, by element.
    void Reset(const Rect& board, const std::vector<PieceRec>& pieces);
    void Move(int element, int x, int y);

    // Calls visit(element), in no order, for all whose tile of `reach` by `reach` pixels may touch `rect`, and for
    // some that lie near.
    template <typename Visit>
    void ForEachNear(const Rect& rect, int reach, Visit visit) const {
        if (first_.empty()) return;
        const int left = Column(rect.x - reach), right = Column(rect.Right() - 1), bottom = Row(rect.Bottom() - 1);
        for (int row = Row(rect.y - reach); row <= bottom; ++row)
            for (int column = left; column <= right; ++column)
                for (int i = first_[size_t(row * columns_ + column)]; i != None; i = next_[size_t(i)]) visit(i);
    }

private:
    static constexpr int None = -1;
    static constexpr int FieldSide = 128;  // pixels

    int Column(int x) const { return std::clamp(x / FieldSide, 0, columns_ - 1); }
    int Row(int y) const { return std::clamp(y / FieldSide, 0, rows_ - 1); }
    void Insert(int element, int field);
    void Remove(int element);

    int columns_ = 1, rows_ = 1;
    std::vector<int> first_;                    // element of each field, or None
    std::vector<int> field_, next_, previous_;  // of each element
};

}  // namespace PuzzleModule
