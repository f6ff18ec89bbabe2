// Cutting: one record and one surface per cell, the picture inside the outline and white
// around it. Turning: a quarter clockwise on the piece's own pixels, so that composing
// knows nothing of rotation.
#include "core/pieces.h"

#include <limits>

#include "core/game_state.h"
#include "core/mask_strip.h"
#include "platform/drawing/raster.h"

namespace PuzzleModule {

namespace {

// The record of the cell, its X and Y left as they are.
void FillRecord(PieceRec& piece, int row, int col, int id, int16_t tile) {
    piece.Col = int16_t(col);
    piece.Row = int16_t(row);
    piece.MaskIndex = tile;
    piece.Rotation = 0;
    piece.PieceId = int16_t(id);
    piece.GroupDX = piece.GroupDY = 0;
    piece.InGroup = 0;
}

// The square of `source` at x0, y0. Right of the source and below it its edge is repeated: at 100 and 60 the outline
// is a pixel wider than the cell, and no line of another colour is to run round the picture. On the other sides
// the mask is black.
void CopySquare(Surface& piece, const Surface& source, int x0, int y0) {
    BitBlt(piece, 0, 0, TileSize, TileSize, source, x0, y0, RasterOp::SrcCopy);
    const int lastX = source.Width() - 1, lastY = source.Height() - 1;
    const int beyondX = lastX + 1 - x0, beyondY = lastY + 1 - y0;
    for (int x = beyondX; x < TileSize; ++x) BitBlt(piece, x, 0, 1, TileSize, source, lastX, y0, RasterOp::SrcCopy);
    for (int y = beyondY; y < TileSize; ++y) BitBlt(piece, 0, y, TileSize, 1, source, x0, lastY, RasterOp::SrcCopy);
    FillRect(piece, {beyondX, beyondY, TileSize - beyondX, TileSize - beyondY}, Point(source, lastX, lastY));
}

// The square in the outline of `tile`, white around it.
void Stamp(Surface& piece, const Surface& source, int x0, int y0, const Surface& masks, int tile) {
    CopySquare(piece, source, x0, y0);
    BitBlt(piece, 0, 0, TileSize, TileSize, masks, tile * TileSize, 0, RasterOp::MergePaint);
}

}  // namespace

void CutPieces(const Surface& source, const Surface& masks, PieceSurfaces& picPat) {
    picPat.UnloadFromOne();
    if (CellSize <= 0) return;
    const int lastCol = source.Width() / CellSize - 1, lastRow = source.Height() / CellSize - 1;
    picPat[0].SetStorage(TileSize, TileSize);
    // Element 0 keeps the X and Y of the game before; the caller overwrites them.
    Pieces.resize(1);
    int id = 0;
    for (int row = 0; row <= lastRow; ++row) {
        for (int col = 0; col <= lastCol; ++col, ++id) {
            if (id > std::numeric_limits<int16_t>::max()) return;
            const int16_t tile = TileForCell(row, col, lastRow, lastCol, GameLevel);
            Pieces.resize(size_t(id) + 1);
            FillRecord(Pieces[size_t(id)], row, col, id, tile);
            if (id > 0) picPat.Load();
            Stamp(picPat[id], source, col * CellSize - Margin(), row * CellSize - Margin(), masks, tile);
        }
    }
}

void RotatePiece(int16_t Index, Surface& Scratch) {
    if (Index < 0 || Index > UpperBound()) return;
    PieceRec& piece = Pieces[size_t(Index)];
    if (piece.PieceId >= 0 && piece.PieceId <= Surfaces->picPat.UBound()) {
        Surface& surface = Surfaces->picPat[piece.PieceId];
        // A surface that was never drawn on is white all over, whichever way it is turned.
        if (!surface.IsUniform()) {
            BitBlt(Scratch, 0, 0, TileSize, TileSize, surface, 0, 0, RasterOp::SrcCopy);
            TurnClockwise(surface, Scratch, TileSize);
        }
    }
    piece.Rotation = (piece.Rotation + 1) & 3;
    piece.MaskIndex = TurnedTile(piece.MaskIndex);
}

}  // namespace PuzzleModule
