// Pictures from files, without a window.
#pragma once
#include <optional>
#include <string>

#include "platform/drawing/picture.h"
#include "platform/qt/pictures/reduced.h"

// See PictureSize and LoadPicture in platform/drawing/picture.h.
std::optional<Size> ReadPictureSize(const std::string& path);
std::optional<Picture> ReadPicture(const std::string& path, Size atLeast);

// The same, pausing at a pace while it decodes; nothing if the picture is no longer wanted. One of `reducedFrom` pixels
// and more is reduced to what suffices for `atLeast`.
std::optional<Picture> ReadPicture(const std::string& path, Size atLeast, Pace& pace,
                                   int64_t reducedFrom = ReducedFrom);
