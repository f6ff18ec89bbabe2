// Pictures decoded from files, and painting them onto surfaces.
#pragma once
#include <functional>
#include <optional>
#include <string>

#include "platform/drawing/geometry.h"
#include "platform/drawing/surface.h"

// A decoded picture. `Natural` is the size the file declares, turned upright by
// its orientation mark; `Image` may hold fewer pixels than that when the caller
// asked for no more, always in the same proportions, and stands for the whole picture.
struct Picture {
    Size Natural;
    Surface Image;
};

// Size of a picture in units of 0.01 mm at 96 dots per inch, unrounded.
inline constexpr double HimetricPerPixel = 2540.0 / 96.0;

// Natural size of the picture in `path`, upright, read from the file's header.
// Nothing if it is not a regular file or its content is not BMP, GIF or JPG.
[[nodiscard]] std::optional<Size> PictureSize(const std::string& path);

// Decodes the first frame of a BMP, GIF or JPG; transparency shows white. `atLeast`
// names the largest size at which the picture will be painted: the decoder may stop
// at any resolution that is no smaller in either direction. {0, 0} asks for all of it.
// Nothing if the file cannot be read or decoded.
[[nodiscard]] std::optional<Picture> LoadPicture(const std::string& path, Size atLeast = {0, 0});

// Yields as DoEvents does, again and again until the picture that LoadPicture will be asked for next is decoded: the
// player is answered however large it is. Once `wanted` says no after an event, the picture is given up.
void DoEventsDecoding(const std::string& path, Size atLeast, const std::function<bool()>& wanted = {});

// Stretches the pixels of `image` over the rectangle of `dest`, clipped, which has as many pixels as the
// density of `dest` makes of it: area averaging where it becomes smaller, smooth interpolation where it
// becomes larger, a plain copy at its own size.
void PaintPicture(Surface& dest, const Rect& target, const Surface& image);

// A new surface of the given size with `image` stretched over all of it.
Surface Stretched(const Surface& image, Size size);
