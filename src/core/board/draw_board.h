// Composing the board.
#pragma once
#include "platform/drawing/surface.h"

namespace PuzzleModule {

// Composes `dest` from `background` and all of Pieces, last element first, so that
// element 0 ends on top, and refreshes it. The pixels are always those of composing the
// whole board afresh; what is really drawn is what has changed since the last call.
//
// Both surfaces have one size. Pieces may hang over any edge; they are clipped. Reads
// Pieces, PickedPiece, picPat and the working masks, changes none of them. Cannot fail.
void DrawBoard(Surface& dest, const Surface& background);

}  // namespace PuzzleModule
