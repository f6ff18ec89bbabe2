// At what size a picture is played: pure arithmetic from picture, cell and screen.
#pragma once
#include <cstdint>
#include <optional>

#include "platform/drawing/geometry.h"

namespace PuzzleModule {

struct Fit {
    int16_t MasterWidth = 0, MasterHeight = 0;  // of picMaster: whole cells
    int16_t GridCols = 0, GridRows = 0;
    int16_t FrameWidth = 0, FrameHeight = 0;      // the white rectangle (new game only; else as the picture)
    int16_t PictureWidth = 0, PictureHeight = 0;  // size at which the picture is painted
    Rect FrameRect() const;                       // on picMaster, centred
    Rect PictureRect() const;                     // on picMaster, centred
    // A grid needs at least two cells on each side.
    bool TooSmall(int cellSize) const { return MasterWidth < 2 * cellSize || MasterHeight < 2 * cellSize; }
};

// The largest number of cells that a new picture may cover on a screen, before its grid is rounded up. Nothing if
// the screen has more cells than 16 bits can count.
std::optional<int16_t> CellLimit(int cellSize, int screenWidth, int screenHeight);

// A new game: the picture is reduced until it covers at most 1/4.5 of the screen, each side is
// rounded up to whole cells, the picture grown and balanced into the grid with a white frame.
// Nothing if a number on the way does not fit 16 bits.
std::optional<Fit> FitNewGame(Size natural, int cellSize, int screenWidth, int screenHeight);

// A restored game: saved width and height taken as they are, other factors, no frame.
std::optional<Fit> FitRestoredGame(int pictureWidth, int pictureHeight, int cellSize);

// The same into a grid that is known: where the grid reckoned from the picture is not the game's.
// A picture larger than the grid is cut down to it.
std::optional<Fit> FitRestoredGame(int pictureWidth, int pictureHeight, int cellSize, int cols, int rows);

// The miniature: place and size inside its panel, in the panel's units.
struct MiniatureFit {
    double Left, Top, Width, Height;
};
std::optional<MiniatureFit> FitMiniature(Size picture, double panelWidth, double panelHeight);

}  // namespace PuzzleModule
