// Pictures from files, without a window.
#pragma once
#include <optional>
#include <stop_token>
#include <string>

#include "platform/drawing/picture.h"
#include "platform/qt/pictures/reduced.h"

// See PictureSize and LoadPicture in platform/drawing/picture.h.
std::optional<Size> ReadPictureSize(const std::string& path);
// Nothing, too, as soon as a stop is asked for. A picture of `reducedFrom` pixels and more is reduced to what suffices
// for `atLeast`. May run on any thread.
std::optional<Picture> ReadPicture(const std::string& path, Size atLeast, std::stop_token stop = {},
                                   int64_t reducedFrom = ReducedFrom);
