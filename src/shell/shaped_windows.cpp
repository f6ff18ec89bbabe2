// A window's shape from the runs of one colour in a picture.
//
// Each row gives the stretches between its transparent runs. Rows with the same stretches
// are one band of rectangles, so that a piece with smooth sides stays a short list:
//
//     ##..##   band 1: two stretches, one row high
//     #....#   band 2: two stretches, two rows high
//     #....#
#include "shell/shaped_windows.h"

#include <algorithm>
#include <span>

namespace PicDeclerations {

namespace {

// The stretches of row y that aren't `transparent`, one pixel high.
Region RowOf(const Surface& picture, int y, std::optional<Pixel> transparent) {
    Region row;
    const int width = picture.Width();
    for (int x = 0; x < width;) {
        if (picture.At(x, y) == transparent) {
            ++x;
            continue;
        }
        const int start = x;
        while (x < width && picture.At(x, y) != transparent) ++x;
        row.push_back({start, y, x - start, 1});
    }
    return row;
}

bool SameStretches(std::span<const Rect> band, const Region& row) {
    return std::equal(band.begin(), band.end(), row.begin(), row.end(),
                      [](const Rect& a, const Rect& b) { return a.x == b.x && a.width == b.width; });
}

}  // namespace

std::optional<Region> RegionFromPicture(const Surface* Picture, const Color& TransparentColor) {
    if (!Picture) return std::nullopt;
    // A colour beyond 24 bits is that of no pixel.
    std::optional<Pixel> transparent;
    if (TransparentColor >= 0 && TransparentColor <= 0xFFFFFF) transparent = ToPixel(TransparentColor);

    Region region;
    size_t band = 0;  // where the band of the row before starts in `region`
    for (int y = 0; y < Picture->Height(); ++y) {
        const Region row = RowOf(*Picture, y, transparent);
        const std::span<Rect> above(region.begin() + ptrdiff_t(band), region.end());
        if (SameStretches(above, row)) {
            for (Rect& rect : above) ++rect.height;
        } else {
            band = region.size();
            region.insert(region.end(), row.begin(), row.end());
        }
    }
    return region;
}

}  // namespace PicDeclerations
