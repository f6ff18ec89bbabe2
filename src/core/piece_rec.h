// The record of one piece.
#pragma once
#include <cstdint>
#include <type_traits>

// One piece. The order of `Pieces` is the stacking order, element 0 on top.
struct PieceRec {
    int16_t X = 0;          // left edge of the tile, not of the body
    int16_t Y = 0;          // top edge of the tile
    int16_t Rotation = 0;   // quarter turns clockwise from upright, 0 to 3
    int16_t MaskIndex = 0;  // tile of the mask strip that has the present outline, 0 to 18
    int16_t Row = 0;        // in the solved picture, from 0
    int16_t Col = 0;
    int16_t PieceId = 0;  // Row x GridCols + Col; also the index of the piece's surface
    int16_t GroupDX = 0;  // while it moves with the held piece: its X minus the held piece's
    int16_t GroupDY = 0;
    int16_t InGroup = 0;  // False, or True while it moves with the held piece
    bool operator==(const PieceRec&) const = default;
};
static_assert(sizeof(PieceRec) == 20 && std::is_trivially_copyable_v<PieceRec>);
