// The group of a held piece, walked out literally: each walker searches the whole pile for the neighbour
// and calls the cross walkers on it. Slow and deep; what ships must leave the same marks.
#pragma once
#include "core/game_state.h"

namespace literal {

using namespace PuzzleModule;

enum Way { Left, Right, Up, Down };

inline void Join(int i, Way way) {
    constexpr int Across[] = {-1, 1, 0, 0}, Below[] = {0, 0, -1, 1};
    constexpr Way Crossing[][2] = {{Up, Down}, {Up, Down}, {Right, Left}, {Left, Right}};
    for (;;) {
        const PieceRec& a = Pieces[size_t(i)];
        const int col = a.Col + Across[way], row = a.Row + Below[way];
        if (col < 0 || row < 0 || col >= GridCols || row >= GridRows) return;
        const int id = a.PieceId + Across[way] + Below[way] * GridCols;
        int j = 0;
        while (j <= UpperBound() && (j == i || Pieces[size_t(j)].PieceId != id)) ++j;
        if (j > UpperBound()) return;
        PieceRec& b = Pieces[size_t(j)];
        if (b.InGroup || b.Rotation != 0 || b.Col != col || b.Row != row) return;
        if (b.X != a.X + Across[way] * CellSize || b.Y != a.Y + Below[way] * CellSize) return;
        b.GroupDX = int16_t(b.X - Pieces[size_t(PickedPiece)].X);
        b.GroupDY = int16_t(b.Y - Pieces[size_t(PickedPiece)].Y);
        b.InGroup = -1;
        for (const Way crossing : Crossing[way]) Join(j, crossing);
        i = j;
    }
}

inline void CollectGroup(int i) {
    for (const Way way : {Left, Right, Up, Down}) Join(i, way);
}

}  // namespace literal
