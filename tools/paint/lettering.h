// A round stroke alphabet of our own, with just the letters that our titles need.
#pragma once
#include "paint.h"

namespace paint {

// The strokes of `text` with its baseline starting at `origin` and capitals `size` high.
std::vector<std::vector<Vec>> Lettering(const std::string& text, Vec origin, double size);

}  // namespace paint
