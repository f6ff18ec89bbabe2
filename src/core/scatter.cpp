// The scatter: a lattice whose steps vary by a pixel, filled in random order from the top left
// of the window, with an area as large as the picture kept clear for the player's work.
#include "core/scatter.h"

#include <vector>

#include "core/game_state.h"
#include "core/pieces.h"
#include "platform/system/desktop.h"
#include "platform/system/numbers.h"
#include "platform/system/random.h"

namespace PuzzleModule {

namespace {

// Lattice points in the coordinates of the window's client area, row by row.
struct LatticePoint {
    double x = 0, y = 0;
};

// The lattice step: one or the other of two neighbouring numbers, drawn anew for each use.
double Step() { return CellSize + ScatterGap * TileUnit + 1 + Int(2 * Rnd()); }

// Moves `point` to the next lattice point outside the area kept clear. Ends for every window: where
// not even one cell fits beside the edge, each row holds the single point at TileUnit, and rows
// go on downward without bound.
void Advance(LatticePoint& point, const ScatterView& Board) {
    do {
        if (point.x == 0) point.x = 2 * TileUnit;
        if (point.y == 0) point.y = 2 * TileUnit;
        point.x += Step();
        if (CellSize + point.x > Board.WindowWidth) {
            point.y += Step();
            point.x = TileUnit;
        }
    } while (point.x - CellSize < Board.MasterWidth && point.y - CellSize < Board.MasterHeight);
}

// One element that is still without a place. Element 0 always comes first; the others are drawn
// until one is unused, and the generator takes up the clock before every draw.
int DrawUnused(std::vector<bool>& used, int turn) {
    for (;;) {
        Randomize(SecondsSinceMidnight());
        // In this order of adding no rounding can lead beyond the last element.
        const int n = turn == 0 ? 0 : 1 + int(Int(Rnd() * UpperBound()));
        if (used[size_t(n)]) continue;
        used[size_t(n)] = true;
        return n;
    }
}

// Brings the point to board coordinates and onto the pitch of drops. A value out of range
// leaves the coordinate as it was, and the snap takes what is there.
void Place(PieceRec& piece, const LatticePoint& point, const ScatterView& Board) {
    const int a = TileSize / TileUnit, b = CellSize / TileUnit;
    Store(piece.X, point.x - Board.BoardLeft);
    Store(piece.Y, point.y - Board.BoardTop);
    Store(piece.X, CInt(double(piece.X - a) / b) * b);
    Store(piece.Y, CInt(double(piece.Y - a) / b) * b);
}

void TurnSome(Surface& Scratch) {
    const double share = GameLevel == 0 ? 0.2 : GameLevel == 1 ? 0.5 : 0.7;
    const int turns = int(Int(Rnd() * UpperBound() * share));
    for (int j = 0; j <= turns; ++j) {
        // The last element is never drawn. The draw is made on every level.
        const auto element = int16_t(Int(Rnd() * UpperBound()));
        if (ChosenLevel > 1) RotatePiece(element, Scratch);
    }
}

}  // namespace

void ScatterPieces(const ScatterView& Board, Surface& Scratch) {
    if (Pieces.empty()) return;
    LatticePoint point;
    std::vector<bool> used(Pieces.size());
    for (int i = 0; i <= UpperBound(); ++i) {
        PieceRec& piece = Pieces[size_t(DrawUnused(used, i))];
        Advance(point, Board);
        Place(piece, point, Board);
    }
    TurnSome(Scratch);
}

}  // namespace PuzzleModule
