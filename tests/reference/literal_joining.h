// The group of a held piece, walked out literally: each walker searches the whole pile for the neighbour
// and calls the cross walkers on it. Slow and deep; what ships must leave the same marks.
#pragma once
#include "core/game_state.h"

namespace literal {

using namespace PuzzleModule;

inline int Search(int id, int except) {
    for (int j = 0; j <= UpperBound(); ++j)
        if (j != except && Pieces[size_t(j)].PieceId == id) return j;
    return -1;
}

inline void Take(int j) {
    PieceRec& piece = Pieces[size_t(j)];
    piece.GroupDX = int16_t(piece.X - Pieces[size_t(PickedPiece)].X);
    piece.GroupDY = int16_t(piece.Y - Pieces[size_t(PickedPiece)].Y);
    piece.InGroup = -1;
}

inline bool Free(int j) { return j >= 0 && !Pieces[size_t(j)].InGroup && Pieces[size_t(j)].Rotation == 0; }

enum Way { Left, Right, Up, Down };

inline void Join(int i, Way way) {
    constexpr int Across[] = {-1, 1, 0, 0}, Below[] = {0, 0, -1, 1};
    constexpr Way Crossing[][2] = {{Up, Down}, {Up, Down}, {Right, Left}, {Left, Right}};
    for (;;) {
        const PieceRec& a = Pieces[size_t(i)];
        const int col = a.Col + Across[way], row = a.Row + Below[way];
        if (col < 0 || row < 0 || col >= GridCols || row >= GridRows) return;
        const int j = Search(a.PieceId + Across[way] + Below[way] * GridCols, i);
        if (!Free(j)) return;
        const PieceRec& b = Pieces[size_t(j)];
        if (b.Col != col || b.Row != row) return;
        if (b.X != a.X + Across[way] * CellSize || b.Y != a.Y + Below[way] * CellSize) return;
        Take(j);
        for (const Way crossing : Crossing[way]) Join(j, crossing);
        i = j;
    }
}

inline void CollectGroup(int i) {
    for (const Way way : {Left, Right, Up, Down}) Join(i, way);
}

}  // namespace literal
