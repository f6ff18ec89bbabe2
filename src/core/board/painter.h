// Draws any rectangle of the board from its background and all pieces.
#pragma once
#include <cstdint>
#include <vector>

#include "core/board/canvas.h"
#include "core/board/place_index.h"
#include "core/board/tile_spans.h"
#include "core/game_state.h"
#include "core/game_surfaces.h"

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

    const TileSpans& Spans() const { return spans_; }

    // Where the pieces lie, by element; for finding those that touch a rectangle.
    void SetPlaces(const Rect& board, const std::vector<PieceRec>& pieces) { places_.Reset(board, pieces); }
    void SetPlace(int element, const PieceRec& piece) { places_.Move(element, piece.X, piece.Y); }

    // Calls visit(element), in no order, for each of `pieces` whose bounds touch `rect`.
    template <typename Visit>
    void ForEachPiece(const PieceRec* pieces, const Rect& rect, Visit visit) const {
        places_.ForEachNear(rect, Reach(), [&](int element) {
            if (!Intersect(BoundsOf(pieces[element]), rect).Empty()) visit(element);
        });
    }

    struct Scene {
        Pixel* pixels;  // of the destination
        ptrdiff_t stride;
        Density density;  // of the destination, the background and the surfaces
        const Surface& background;
        const PieceRec* pieces;  // as in SetPlaces
        int picked;
        const PieceSurfaces& surfaces;
    };

    // Composes `area`, which lies inside the destination, afresh.
    void Paint(const Scene& scene, const Rect& area);

private:
    void FindPieces(const Scene& scene, const Rect& band);
    template <int K>
    void PaintBand(const Canvas<K>& canvas, const Scene& scene, const Rect& band);
    // The side of the square that holds shape and rim of any tile.
    int Reach() const { return spans_.TileSize() + 1; }
    template <int K>
    void InvertRim(const Canvas<K>& canvas, const PieceRec& piece, const Rect& band) const;
    template <int K>
    void LayPiece(const Canvas<K>& canvas, const Scene& scene, const PieceRec& piece, const Rect& band) const;

    TileSpans spans_;
    PlaceIndex places_;
    std::vector<int> found_;  // elements that touch the band, topmost first
};

}  // namespace PuzzleModule
