// Things that stand in the country. Light comes from the right. `foot` is the middle of where a
// thing meets the ground, `size` its height in pixels.
#pragma once
#include "paint/paint.h"

namespace pictures {

// By night everything is dim and blue, and the windows are lit.
enum class Hour { Morning, Night };

void DrawTree(paint::Canvas& canvas, paint::Random& random, paint::Vec foot, double size, paint::Rgb leaves, Hour hour);
void DrawAraucaria(paint::Canvas& canvas, paint::Random& random, paint::Vec foot, double size, paint::Rgb needles);
// A bare tree in full bloom, many times forked.
void DrawBloomingTree(paint::Canvas& canvas, paint::Random& random, paint::Vec foot, double size, paint::Rgb bloom);
// A cottage with its long side and its right gable in sight.
void DrawCottage(paint::Canvas& canvas, paint::Random& random, paint::Vec foot, double size, Hour hour);
// A small white church, seen from the front.
void DrawChapel(paint::Canvas& canvas, paint::Vec foot, double size, Hour hour);

}  // namespace pictures
