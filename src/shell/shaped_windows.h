// Turns a picture into the shape of a window.
#pragma once
#include <optional>

#include "platform/drawing/geometry.h"
#include "platform/drawing/surface.h"

namespace PicDeclerations {

// All of the picture's rectangle less the pixels of exactly `TransparentColor`, as disjoint rectangles.
// Nothing if there is no picture.
std::optional<Region> RegionFromPicture(const Surface* Picture, const Color& TransparentColor);

}  // namespace PicDeclerations
