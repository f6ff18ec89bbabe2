// The game's data: state, piece records and the level table.
//
// Everything is read and written in place. Lengths are pixels unless said otherwise;
// x runs right, y down, both from 0.
#pragma once
#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>

#include "core/piece_list.h"

namespace PuzzleModule {

// The four lengths of a game; they belong together and are only ever set as a set.
struct LevelSizes {
    int16_t TileSize = 0;    // side of a piece's square: 20 TileUnit
    int16_t CellSize = 0;    // side of a grid cell: 11 TileUnit
    int16_t TileUnit = 0;    // 3, 4, 5, 6 or 8
    int16_t ScatterGap = 0;  // gap of the scatter lattice, in TileUnit: 1, 2 or 3
    bool operator==(const LevelSizes&) const = default;
};

// Sizes of `level` (0, 1, 3, 4, 5) on a screen of `screenWidthPx`; nothing for any other level.
std::optional<LevelSizes> SizesOfLevel(int16_t level, int16_t screenWidthPx);

// Writes and reads TileSize, CellSize, TileUnit and ScatterGap as a set.
void SetSizes(const LevelSizes& sizes);
LevelSizes CurrentSizes();

// The level's name in the status line: "Kids A", "Kids B", "Fácil", "Medio", "Dificil"; empty
// for any other value. (The menu's captions differ for levels 4 and 5.)
std::string LevelName(const int16_t& Level);

// Margin between the tile's edge and its body: (TileSize - CellSize) \ 2.
int Margin();

extern int16_t ScreenWidthPx;  // written once, when the main window loads
extern int16_t ScreenHeightPx;
extern int16_t GridCols;
extern int16_t GridRows;
extern int16_t TileSize;
extern int16_t CellSize;
extern int16_t TileUnit;
extern int16_t ScatterGap;
extern int16_t PictureWidth;  // size at which the picture is painted on picMaster
extern int16_t PictureHeight;
extern PieceList Pieces;     // element 0 lies on top
extern int16_t PickedPiece;  // element of Pieces held by the mouse, -1 if none
extern int16_t GameLevel;    // level of the game on the board
extern int16_t ChosenLevel;  // level last chosen in the menu
extern int32_t ElapsedSeconds;
extern bool GameRunning;
extern bool ThumbsOpen;          // the picture dialog is open
extern std::string AppFolder;    // ends in the path separator
extern std::string PicturePath;  // of the last picture chosen

// The picture from which the pieces on the board were cut; what a save names.
extern std::string BoardPicturePath;

// Wave files in memory, valid until the process ends.
extern std::span<const std::byte> WaveClick, WaveGiro, WaveComplete, WaveRotate;

// Everything above at its start value: no game, no pieces. For the start and for tests.
void ResetState();

// Upper bound of Pieces; -1 while there are none.
inline int UpperBound() { return int(Pieces.size()) - 1; }

}  // namespace PuzzleModule
