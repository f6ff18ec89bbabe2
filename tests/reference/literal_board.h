// What the board means: the plain sequence of block operations, each over whole squares.
#pragma once
#include <utility>

#include "core/game_state.h"
#include "core/game_surfaces.h"
#include "platform/drawing/raster.h"

namespace reference {

using namespace PuzzleModule;

inline void BlitTile(Surface& dest, const PieceRec& piece, int offset, RasterOp op) {
    BitBlt(dest, piece.X + offset, piece.Y + offset, TileSize, TileSize, Surfaces->picMasks[1],
           piece.MaskIndex * TileSize, 0, op);
}

// Composes all of `dest` afresh. 1 + 3n block operations for n pieces.
inline void DrawBoard(Surface& dest, const Surface& background) {
    BitBlt(dest, 0, 0, dest.Width(), dest.Height(), background, 0, 0, RasterOp::SrcCopy);
    for (int i = 0; i <= UpperBound(); ++i)
        if (i != PickedPiece) BlitTile(dest, std::as_const(Pieces)[size_t(i)], 1, RasterOp::SrcInvert);
    for (int i = UpperBound(); i >= 0; --i) {
        const PieceRec& piece = std::as_const(Pieces)[size_t(i)];
        if (i == PickedPiece) BlitTile(dest, piece, 1, RasterOp::SrcInvert);
        BlitTile(dest, piece, 0, RasterOp::SrcPaint);
        BitBlt(dest, piece.X, piece.Y, TileSize, TileSize, std::as_const(Surfaces->picPat)[piece.PieceId], 0, 0,
               RasterOp::SrcAnd);
    }
}

}  // namespace reference
