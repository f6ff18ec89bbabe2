#include "tests/reference/literal_board.h"

#include <utility>

#include "core/game_state.h"
#include "core/game_surfaces.h"
#include "platform/drawing/raster.h"

using namespace PuzzleModule;

namespace {

void BlitTile(Surface& dest, const PieceRec& piece, int offset, RasterOp op) {
    BitBlt(dest, piece.X + offset, piece.Y + offset, TileSize, TileSize, Surfaces->picMasks[1],
           piece.MaskIndex * TileSize, 0, op);
}

}  // namespace

void reference::DrawBoard(Surface& dest, const Surface& background) {
    BitBlt(dest, 0, 0, dest.Width(), dest.Height(), background, 0, 0, RasterOp::SrcCopy);
    for (int i = UpperBound(); i >= 0; --i)
        if (i != PickedPiece) BlitTile(dest, Pieces[size_t(i)], 1, RasterOp::SrcInvert);
    for (int i = UpperBound(); i >= 0; --i) {
        const PieceRec& piece = Pieces[size_t(i)];
        if (i == PickedPiece) BlitTile(dest, piece, 1, RasterOp::SrcInvert);
        BlitTile(dest, piece, 0, RasterOp::SrcPaint);
        BitBlt(dest, piece.X, piece.Y, TileSize, TileSize, std::as_const(Surfaces->picPat)[piece.PieceId], 0, 0,
               RasterOp::SrcAnd);
    }
}
