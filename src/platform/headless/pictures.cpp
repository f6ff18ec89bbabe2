// Pictures of the desktop without a screen: made by the test, or BMP files.
#include <algorithm>
#include <cmath>

#include "platform/drawing/bmp.h"
#include "platform/headless/desktop.h"
#include "platform/system/files.h"

namespace {

// The smallest size in the proportions of `natural` that is nowhere below `atLeast`, and
// never above natural: what a decoder that can stop early would give.
Size ReducedSize(Size natural, Size atLeast) {
    if (natural.width <= 0 || natural.height <= 0 || atLeast.width <= 0 || atLeast.height <= 0) return natural;
    const double factor = std::max(double(atLeast.width) / natural.width, double(atLeast.height) / natural.height);
    if (factor >= 1) return natural;
    const auto reduced = [factor](int length, int floor) { return std::max(int(std::ceil(length * factor)), floor); };
    return {std::min(reduced(natural.width, atLeast.width), natural.width),
            std::min(reduced(natural.height, atLeast.height), natural.height)};
}

}  // namespace

std::optional<Size> HeadlessDesktop::PictureSize(const std::string& path) {
    if (const auto fake = pictures.find(path); fake != pictures.end()) return fake->second.natural;
    const std::optional<std::string> file = ReadFile(path);
    if (!file) return std::nullopt;
    return BmpSize(std::as_bytes(std::span(*file)));
}

std::optional<Picture> HeadlessDesktop::DecodePicture(const std::string& path, Size atLeast) {
    ++decodes;
    if (const auto fake = pictures.find(path); fake != pictures.end()) {
        const Size natural = fake->second.natural;
        return Picture{natural, fake->second.make(ReducedSize(natural, atLeast))};
    }
    const std::optional<std::string> file = ReadFile(path);
    if (!file) return std::nullopt;
    std::optional<Surface> image = DecodeBmp(std::as_bytes(std::span(*file)));
    if (!image) return std::nullopt;
    const Size natural{image->Width(), image->Height()};
    return Picture{natural, std::move(*image)};
}
