// What the board means: the plain sequence of block operations, each over whole squares.
#pragma once
#include "platform/drawing/surface.h"

namespace reference {

// Composes all of `dest` afresh. 1 + 3n block operations for n pieces.
void DrawBoard(Surface& dest, const Surface& background);

}  // namespace reference
