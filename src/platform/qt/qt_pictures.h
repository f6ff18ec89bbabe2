// Pictures from files, without a window.
#pragma once
#include <optional>
#include <string>

#include "platform/picture.h"

// See PictureSize and LoadPicture in platform/picture.h.
std::optional<Size> ReadPictureSize(const std::string& path);
std::optional<Picture> ReadPicture(const std::string& path, Size atLeast);
