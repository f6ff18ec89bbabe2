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

void JoinLeft(int i), JoinRight(int i), JoinUp(int i), JoinDown(int i);

inline void JoinLeft(int i) {
    for (;;) {
        const PieceRec& a = Pieces[size_t(i)];
        if (a.Col < 1) return;
        const int j = Search(a.PieceId - 1, i);
        if (!Free(j)) return;
        const PieceRec& b = Pieces[size_t(j)];
        if (b.Col != a.Col - 1 || b.Row != a.Row || b.X != a.X - CellSize || b.Y != a.Y) return;
        Take(j), JoinUp(j), JoinDown(j);
        i = j;
    }
}

inline void JoinRight(int i) {
    for (;;) {
        const PieceRec& a = Pieces[size_t(i)];
        if (a.Col >= GridCols - 1) return;
        const int j = Search(a.PieceId + 1, i);
        if (!Free(j)) return;
        const PieceRec& b = Pieces[size_t(j)];
        if (b.Col != a.Col + 1 || b.Row != a.Row || b.X != a.X + CellSize || b.Y != a.Y) return;
        Take(j), JoinUp(j), JoinDown(j);
        i = j;
    }
}

inline void JoinUp(int i) {
    for (;;) {
        const PieceRec& a = Pieces[size_t(i)];
        if (a.Row < 1) return;
        const int j = Search(a.PieceId - GridCols, i);
        if (!Free(j)) return;
        const PieceRec& b = Pieces[size_t(j)];
        if (b.Col != a.Col || b.Row != a.Row - 1 || b.Y != a.Y - CellSize || b.X != a.X) return;
        Take(j), JoinRight(j), JoinLeft(j);
        i = j;
    }
}

inline void JoinDown(int i) {
    for (;;) {
        const PieceRec& a = Pieces[size_t(i)];
        if (a.Row >= GridRows - 1) return;
        const int j = Search(a.PieceId + GridCols, i);
        if (!Free(j)) return;
        const PieceRec& b = Pieces[size_t(j)];
        if (b.Col != a.Col || b.Row != a.Row + 1 || b.Y != a.Y + CellSize || b.X != a.X) return;
        Take(j), JoinLeft(j), JoinRight(j);
        i = j;
    }
}

inline void CollectGroup(int i) { JoinLeft(i), JoinRight(i), JoinUp(i), JoinDown(i); }

}  // namespace literal
