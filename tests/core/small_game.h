// A game without a window: surfaces, sizes and pieces cut from a picture of noise or from one
// that is easy to look at.
#pragma once
#include <gtest/gtest.h>

#include <random>
#include <string>

#include "core/game_state.h"
#include "core/game_surfaces.h"
#include "core/mask_strip.h"
#include "core/pieces.h"
#include "platform/drawing/raster.h"

namespace PuzzleModule {

inline LevelSizes SizesOfUnit(int unit) { return {int16_t(20 * unit), int16_t(11 * unit), int16_t(unit), 1}; }
inline constexpr int AllUnits[] = {3, 4, 5, 6, 8};

struct SmallGame {
    GameSurfaces surfaces;

    explicit SmallGame(int unit = 4, int level = 5, int cols = 2, int rows = 2) {
        ResetState();
        Surfaces = &surfaces;
        Cut(unit, level, cols, rows);
    }
    ~SmallGame() {
        Surfaces = nullptr;
        ResetState();
    }

    // Cuts a picture of noise, pixel by pixel; all pieces at home, the first cell's corner at 0, 0.
    void Cut(int unit, int level, int cols, int rows, uint32_t seed = 1) {
        SetSizes(SizesOfUnit(unit));
        GameLevel = ChosenLevel = int16_t(level);
        GridCols = int16_t(cols);
        GridRows = int16_t(rows);
        ScaleMasks(TileSize);
        surfaces.picMaster.Resize(cols * CellSize, rows * CellSize);
        const Rect pixels = surfaces.picMaster.PixelBounds();
        std::minstd_rand noise(seed);
        std::generate_n(surfaces.picMaster.DrawAll(), pixels.width * pixels.height,
                        [&] { return OpaqueBits | noise(); });
        Recut();
    }
    void Recut() {
        CutPieces(surfaces.picMaster, surfaces.picMasks[1], surfaces.picPat);
        for (PieceRec& piece : Pieces) {
            piece.X = int16_t(piece.Col * CellSize - Margin());
            piece.Y = int16_t(piece.Row * CellSize - Margin());
        }
    }

    // The pixels of one tile of the working strip.
    bool White(int tile, int x, int y) const { return surfaces.picMasks[1].At(tile * TileSize + x, y) == WhitePixel; }
};

}  // namespace PuzzleModule
