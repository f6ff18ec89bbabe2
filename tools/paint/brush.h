// Paints a picture over again in oil: layer on layer of strokes, broad ones first, finer ones where
// the picture asks for them, and light that grazes the paint.
#pragma once
#include <functional>

#include "paint.h"

namespace paint {

struct Brush {
    double radius;
    double reach;   // how long a stroke gets, in radii
    double wanted;  // laid only where picture and painting differ by more than this, 0 to 1
    double jitter;  // how far the colour of a stroke may stray
};

// `way` gives the angle of the strokes at a place.
Canvas PaintedOver(const Canvas& picture, const std::vector<Brush>& brushes, const std::function<double(Vec)>& way,
                   uint32_t seed);

}  // namespace paint
