// From decoded images to the game's surfaces, made smaller where there are more pixels than will be painted.
#pragma once
#include <QImage>
#include <functional>
#include <optional>
#include <stop_token>

#include "platform/drawing/geometry.h"
#include "platform/drawing/surface.h"

inline constexpr int64_t ReducedFrom = 4'000'000;  // pixels from which a picture is reduced while it is taken over

// How many pixels of a picture's side may become one: more than one only where there are `from` pixels or more and
// fewer suffice.
int Reduction(Size size, Size atLeast, int64_t from = ReducedFrom);

// Some rows of a picture; a null image if they cannot be had.
using RowsOfPicture = std::function<QImage(int top, int count)>;

// The picture with each square of `side` pixels made one, the mean of its colours; opaque, what is transparent over
// white. Goes by bands of rows, so that a large picture is never in memory twice. Nothing without the rows, or if a
// stop is asked for.
std::optional<Surface> Reduced(Size size, int side, const RowsOfPicture& rowsOf, const std::stop_token& stop);
