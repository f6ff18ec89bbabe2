// Cutting a picture into pieces, and turning a piece.
#pragma once
#include "core/game_surfaces.h"

namespace PuzzleModule {

// Makes one record and one surface per cell of `source` (picMaster), in row-major order,
// upright. Reads TileSize, CellSize and GameLevel; writes Pieces (X and Y are left to the
// caller) and `picPat`. `masks` is the working strip.
void CutPieces(const Surface& source, const Surface& masks, PieceSurfaces& picPat);

// Turns element Index a quarter clockwise about its tile's centre: surface, Rotation and
// MaskIndex. `Scratch` holds at least TileSize x TileSize and is overwritten. Draws nothing.
void RotatePiece(int16_t Index, Surface& Scratch);

}  // namespace PuzzleModule
