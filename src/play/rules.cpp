// The lattice on which drops land, what is at home, and the move to show.
#include "play/rules.h"

#include "core/game_state.h"
#include "platform/system/numbers.h"

namespace PuzzleModule {

double OnLattice(double value) {
    constexpr int pitch = 11;
    return CInt(value / pitch) * pitch;
}

int UprightTopLeft() {
    for (size_t i = 0; i < Pieces.size(); ++i)
        if (Pieces[i].Col == 0 && Pieces[i].Row == 0 && Pieces[i].Rotation == 0) return int(i);
    return -1;
}

void SettlePieces() {
    for (PieceRec& piece : Pieces) {
        // The very ends of the 16-bit range have no lattice point beyond them: such a piece stays.
        Store(piece.X, OnLattice(piece.X));
        Store(piece.Y, OnLattice(piece.Y));
        piece.InGroup = False;
    }
}

bool IsHome(int index, int RefX, int RefY) {
    const PieceRec& piece = Pieces[size_t(index)];
    return piece.Rotation == 0 && piece.X - RefX == piece.Col * CellSize && piece.Y - RefY == piece.Row * CellSize;
}

bool IsComplete(int16_t RefX, int16_t RefY) {
    for (int i = 0; i <= UpperBound(); ++i)
        if (!IsHome(i, RefX, RefY)) return false;
    return true;
}

std::optional<ShownMove> MoveToShow() {
    const int topLeft = UprightTopLeft();
    const int refX = topLeft < 0 ? 0 : Pieces[size_t(topLeft)].X;
    const int refY = topLeft < 0 ? 0 : Pieces[size_t(topLeft)].Y;
    for (int i = 0; i <= UpperBound(); ++i) {
        if (IsHome(i, refX, refY)) continue;
        const PieceRec& piece = Pieces[size_t(i)];
        const int m = Margin();
        return ShownMove{{piece.Col * CellSize + refX + m, piece.Row * CellSize + refY + m, CellSize, CellSize},
                         {piece.X + m, piece.Y + m, CellSize, CellSize}};
    }
    return std::nullopt;
}

}  // namespace PuzzleModule
