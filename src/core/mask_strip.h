// The mask strip: 19 square tiles, white inside a piece, black outside, from which every
// piece takes its outline; and the vocabulary of tabs, sockets and flat sides they spell.
#pragma once
#include <array>
#include <cstdint>

#include "platform/drawing/surface.h"

namespace PuzzleModule {

inline constexpr int TileCount = 19;
inline constexpr int MasterTileSize = 80;

enum class Side : uint8_t { Flat, Tab, Socket };
struct TileSides {
    Side top, right, bottom, left;
};
extern const std::array<TileSides, TileCount> TileVocabulary;

// The master strip, 1520 x 80.
Surface BuildMasterStrip();

// Stretches the master strip onto the working strip, 19 x Size by Size.
void ScaleMasks(int16_t Size);

// The tile of the cell at row, col of a grid whose last cell is lastRow, lastCol.
// Level 0 has plain squares (18) only.
int16_t TileForCell(int row, int col, int lastRow, int lastCol, int16_t level);

// The tile index after a clockwise quarter-turn.
int16_t TurnedTile(int16_t tile);

// True if the board point X, Y lies on the shape of element Index of Pieces. Points one
// column or row beyond the tile read on in the strip; beyond the strip a point counts as
// on the piece.
bool HitTest(int16_t Index, int16_t X, int16_t Y);

}  // namespace PuzzleModule
