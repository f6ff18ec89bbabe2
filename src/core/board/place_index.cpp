#include "core/board/place_index.h"

namespace PuzzleModule {

void PlaceIndex::Reset(const Rect& board, const std::vector<PieceRec>& pieces) {
    columns_ = std::max(board.width, 0) / FieldSide + 1;
    rows_ = std::max(board.height, 0) / FieldSide + 1;
    first_.assign(size_t(columns_) * size_t(rows_), None);
    field_.resize(pieces.size());
    next_.resize(pieces.size());
    previous_.resize(pieces.size());
    for (size_t i = 0; i < pieces.size(); ++i) Insert(int(i), Row(pieces[i].Y) * columns_ + Column(pieces[i].X));
}

void PlaceIndex::Move(int element, int x, int y) {
    const int field = Row(y) * columns_ + Column(x);
    if (field == field_[size_t(element)]) return;
    Remove(element);
    Insert(element, field);
}

void PlaceIndex::Insert(int element, int field) {
    const int after = first_[size_t(field)];
    field_[size_t(element)] = field;
    previous_[size_t(element)] = None;
    next_[size_t(element)] = after;
    if (after != None) previous_[size_t(after)] = element;
    first_[size_t(field)] = element;
}

void PlaceIndex::Remove(int element) {
    const int before = previous_[size_t(element)], after = next_[size_t(element)];
    if (before != None)
        next_[size_t(before)] = after;
    else
        first_[size_t(field_[size_t(element)])] = after;
    if (after != None) previous_[size_t(after)] = before;
}

}  // namespace PuzzleModule
