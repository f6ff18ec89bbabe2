// The mask strip. One tile of the master, 80 pixels square, with a tab on top, sockets at
// both sides and a flat bottom (a character stands for 4 by 4 pixels, steps of 2 are lost):
//
//       0   18      40      62  79
//     0 . . . . . . . . . . . . . .      margin: 18 pixels
//       . . . . . . . # # . . . . .      tab: leaves the body at the middle of a side and
//       . . . . . . # # # # . . . .           runs to the very edge of the tile
//       . . . . . . . # # . . . . .
//    18 . . . . # # # # # # # . . .      body: 44 pixels square, the piece's own cell
//       . . . . # # # # # # # . . .
//       . . . . . . . # . . . . . .      socket: the same profile, black, inside the body
//       . . . . . . . # . . . . . .
//       . . . . # # # # # # # . . .
//    61 . . . . # # # # # # # . . .
//
// A tab is exactly the footprint of the neighbour's socket, one cell further on. Whatever
// lies right, below or left is the top's profile turned clockwise about the tile's centre.
#include "core/mask_strip.h"

#include "core/game_state.h"
#include "core/game_surfaces.h"
#include "platform/drawing/raster.h"

namespace PuzzleModule {

namespace {

constexpr Side F = Side::Flat, T = Side::Tab, S = Side::Socket;

}  // namespace

const std::array<TileSides, TileCount> TileVocabulary{{
    {S, T, S, T}, {T, S, T, S},                              //  0 and 1: inner pieces
    {F, T, S, F}, {F, F, T, S}, {S, F, F, T}, {T, S, F, F},  //  2 to 5: corners
    {F, F, S, T}, {T, F, F, S}, {S, T, F, F}, {F, S, T, F},  //  6 to 9: corners, mirrored
    {F, T, S, T}, {T, F, T, S}, {S, T, F, T}, {T, S, T, F},  // 10 to 13: edges with two tabs
    {F, S, T, S}, {S, F, S, T}, {T, S, F, S}, {S, T, S, F},  // 14 to 17: edges with two sockets
    {F, F, F, F},                                            // 18: the plain square
}};

namespace {

// Next tile after a clockwise quarter-turn.
constexpr std::array<int16_t, TileCount> TurnOf{1, 0, 3, 4, 5, 2, 7, 8, 9, 6, 11, 12, 13, 10, 15, 16, 17, 14, 18};

constexpr int BodyStart = 18, BodySize = 44;
constexpr int ProfileDepth = 18;

// Width of tab and socket at a distance of 1 to 18 from the body's edge: a neck, a head, a tip.
constexpr int ProfileWidth(int distance) {
    if (distance <= 2) return 12;
    if (distance <= 4) return 16;
    if (distance <= 12) return 20;
    if (distance <= 14) return 16;
    if (distance <= 16) return 12;
    return 8;
}

// `area` of a tile after `turns` clockwise quarter-turns about the tile's centre.
Rect Turned(Rect area, int turns) {
    for (; turns > 0; --turns) area = {MasterTileSize - area.Bottom(), area.x, area.height, area.width};
    return area;
}

// Draws tab or socket of one side: 0 top, 1 right, 2 bottom, 3 left.
void DrawSide(Surface& strip, int tileLeft, Side side, int turns) {
    if (side == Side::Flat) return;
    const Color color = side == Side::Tab ? Rgb(255, 255, 255) : Rgb(0, 0, 0);
    for (int distance = 1; distance <= ProfileDepth; ++distance) {
        const int width = ProfileWidth(distance);
        const int y = side == Side::Tab ? BodyStart - distance : BodyStart + distance - 1;
        Rect row = Turned({(MasterTileSize - width) / 2, y, width, 1}, turns);
        row.x += tileLeft;
        FillRect(strip, row, color);
    }
}

}  // namespace

Surface BuildMasterStrip() {
    Surface strip(TileCount * MasterTileSize, MasterTileSize, BlackPixel);
    for (int tile = 0; tile < TileCount; ++tile) {
        const int left = tile * MasterTileSize;
        const TileSides& sides = TileVocabulary[size_t(tile)];
        FillRect(strip, {left + BodyStart, BodyStart, BodySize, BodySize}, Rgb(255, 255, 255));
        DrawSide(strip, left, sides.top, 0);
        DrawSide(strip, left, sides.right, 1);
        DrawSide(strip, left, sides.bottom, 2);
        DrawSide(strip, left, sides.left, 3);
    }
    return strip;
}

// The whole strip in one stretch: tile i then starts at i x Size for every size.
void ScaleMasks(int16_t Size) {
    Surface& working = Surfaces->picMasks[1];
    working.Resize(TileCount * Size, Size);
    StretchMask(working, Surfaces->picMasks[0]);
}

int16_t TileForCell(int row, int col, int lastRow, int lastCol, int16_t level) {
    if (level == 0) return 18;
    const bool odd = (row + col) % 2 != 0;
    const auto pick = [odd](int16_t even, int16_t other) { return odd ? other : even; };
    // Corners come before edges: a cell in row 0 can be in the last column too.
    if (row == 0 && col == 0) return pick(2, 9);
    if (row == 0 && col == lastCol) return pick(6, 3);
    if (row == lastRow && col == 0) return pick(8, 5);
    if (row == lastRow && col == lastCol) return pick(4, 7);
    if (row == 0) return pick(10, 14);
    if (row == lastRow) return pick(12, 16);
    if (col == 0) return pick(17, 13);
    if (col == lastCol) return pick(15, 11);
    return pick(0, 1);
}

int16_t TurnedTile(int16_t tile) { return tile >= 0 && tile < TileCount ? TurnOf[size_t(tile)] : tile; }

bool HitTest(int16_t Index, int16_t X, int16_t Y) {
    if (Index < 0 || Index > UpperBound()) return false;
    const PieceRec& piece = Pieces[size_t(Index)];
    // One column too far reads the next tile on purpose; Point gives -1 beyond the strip, which is not black.
    return Point(Surfaces->picMasks[1], X - piece.X + piece.MaskIndex * TileSize, Y - piece.Y) != 0;
}

}  // namespace PuzzleModule
