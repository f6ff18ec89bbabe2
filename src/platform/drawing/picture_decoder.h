// What pictures need of the desktop: a decoder of files. Game code calls the routines of picture.h.
#pragma once
#include <functional>
#include <optional>
#include <string>

#include "platform/drawing/picture.h"

// The caller has made sure that a file is a regular one.
class PictureDecoder {
public:
    virtual ~PictureDecoder() = default;

    virtual std::optional<Size> PictureSize(const std::string& path) = 0;
    virtual std::optional<Picture> DecodePicture(const std::string& path, Size atLeast) = 0;
    // A yield in which that picture may be decoded between the events, as long as it is `wanted`;
    // DecodePicture then has it at once.
    virtual void DoEventsDecoding(const std::string& path, Size atLeast, const std::function<bool()>& wanted) = 0;
};

// Makes `decoder` the one in use.
void InstallPictureDecoder(PictureDecoder* decoder);
