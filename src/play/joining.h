// The joining rule: two pieces are joined exactly when they are neighbours in the picture, both
// upright, and lie one cell apart on the board. Nothing is stored; the group of a held piece is
// found anew at every pick-up.
#pragma once
#include <cstdint>

namespace PuzzleModule {

// Marks every piece joined to the held piece `Index`, directly or through others: InGroup, GroupDX,
// GroupDY. Linear in the number of pieces.
void CollectGroup(int16_t Index);
void JoinLeft(int16_t Index);
void JoinRight(int16_t Index);
void JoinUp(int16_t Index);
void JoinDown(int16_t Index);

}  // namespace PuzzleModule
