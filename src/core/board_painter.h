// Draws any rectangle of the board from its background and all pieces.
#pragma once
#include <algorithm>
#include <cstdint>
#include <vector>

#include "core/game_state.h"
#include "core/game_surfaces.h"
#include "core/tile_spans.h"

namespace PuzzleModule {

class BoardPainter {
public:
    // The pixels that a piece can change: its shape, and the rim one pixel right of it and below.
    Rect BoundsOf(const PieceRec& piece) const {
        if (piece.MaskIndex < 0 || piece.MaskIndex >= TileCount) return {};
        const Rect& bounds = spans_[piece.MaskIndex].bounds;
        return {piece.X + bounds.x, piece.Y + bounds.y, bounds.width, bounds.height};
    }

    void UseStrip(const Surface& strip, int tileSize) { spans_.Update(strip, tileSize); }

    // Where the pieces lie, by element; for finding those that touch a rectangle.
    void SetPlaces(const std::vector<PieceRec>& pieces);
    void SetPlace(int element, const PieceRec& piece) {
        columns_[size_t(element)] = CellOf(piece.X);
        rows_[size_t(element)] = CellOf(piece.Y);
    }

    struct Scene {
        Pixel* pixels;  // of the destination
        ptrdiff_t stride;
        const Surface& background;
        const PieceRec* pieces;  // as in SetPlaces
        int picked;
        const PieceSurfaces& surfaces;
    };

    // Composes `area`, which lies inside the destination, afresh.
    void Paint(const Scene& scene, const Rect& area);

private:
    void PaintBand(const Scene& scene, const Rect& band);
    // The side of the square that holds shape and rim of any tile.
    int Reach() const { return spans_.TileSize() + 1; }
    void FindPieces(const Scene& scene, const Rect& band);
    void InvertRim(const Scene& scene, const PieceRec& piece, const Rect& band);
    void LayPiece(const Scene& scene, const PieceRec& piece, const Rect& band);

    // Places are kept in cells of 64 pixels, one byte each. What lies beyond counts to the outermost cell:
    // the order of places is kept, so a comparison of cells never misses a piece.
    static int8_t CellOf(int coordinate) { return int8_t(std::clamp(coordinate >> 6, -128, 127)); }

    TileSpans spans_;
    size_t pieceCount_ = 0;
    std::vector<int8_t> columns_, rows_;  // by element, padded to whole blocks
    std::vector<int> found_;              // elements that touch the band, topmost first
};

}  // namespace PuzzleModule
