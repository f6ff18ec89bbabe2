// The valley of the picture of the mountains: where its land lies, and what stands on it. All
// places are x to the right of the eye, z away from it.
#pragma once
#include "paint/terrain.h"

namespace pictures {

constexpr paint::Eye Valley{230, 400, 1400, 560, 17000};
constexpr double BridgeZ = 1130;  // there the road crosses the river

double RiverX(double z);
// How far a place lies outside the river or the road; negative in it.
double RiverSide(double x, double z);
double RoadSide(double x, double z);
// The height of the ground without what grows on it; more octaves make it rougher.
double ValleyGround(double x, double z, int octaves);

void DrawValleyLife(paint::Canvas& canvas);  // village, bridge, trees, cattle
void DrawBirds(paint::Canvas& canvas);
void DrawKnoll(paint::Canvas& canvas);  // the hill from which we look, with its big trees

}  // namespace pictures
