// Rules of play that need no window: the lattice, home, completion, the move to show.
#pragma once
#include <cstdint>
#include <optional>

#include "platform/drawing/geometry.h"

namespace PuzzleModule {

// `value` on the lattice of 11 pixels, CellSize / TileUnit at every size, on which drops land. Not narrowed.
double OnLattice(double value);

// Element of the first piece at Col 0, Row 0 with Rotation 0, or -1.
int UprightTopLeft();

// Fits every piece to the lattice and clears all group marks.
void SettlePieces();

// True if the piece stands upright where it belongs relative to the reference point.
bool IsHome(int index, int RefX, int RefY);

// True if every piece does.
bool IsComplete(int16_t RefX, int16_t RefY);

// The two frames of one move worth making: the place, then the piece. Nothing if all is in place.
struct ShownMove {
    Rect Place, Piece;
};
std::optional<ShownMove> MoveToShow();

}  // namespace PuzzleModule
