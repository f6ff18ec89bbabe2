// The sample pictures. Each is drawn by one routine in a file of its own; all measures are
// pixels of the finished picture, all chance comes from fixed seeds.
#pragma once
#include "paint/paint.h"

namespace pictures {

using paint::Canvas;

Canvas Mountains();
Canvas Balloons();
Canvas StarrySky();
Canvas Aquarium();
Canvas Quilt();
Canvas Garden();
Canvas AutumnLeaves();
Canvas CityAtDusk();
Canvas OldMap();
Canvas Shells();
Canvas StainedGlass();
Canvas Tiles();
Canvas Toucan();
Canvas HillsideHouses();

}  // namespace pictures
