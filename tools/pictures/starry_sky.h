// The parts of the starry night: the bay under its sky, and the garden from which we look.
#pragma once
#include "paint/paint.h"

namespace pictures {

constexpr paint::Vec StarryMoon{352, 205};

void DrawBay(paint::Canvas& canvas);     // mountains, water, village, boats
void DrawGarden(paint::Canvas& canvas);  // a wall with a cat and a lantern, palms, flowers

}  // namespace pictures
