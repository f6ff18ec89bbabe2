// Where the board is composed: the pixels of an image, reached by units.
#pragma once
#include <algorithm>
#include <climits>
#include <cstring>

#include "platform/drawing/surface.h"

namespace PuzzleModule {

// An image of K by K pixels a unit. Places and lengths count in units; nothing is clipped. K is known to the compiler,
// so that an ordinary screen pays nothing for the dense ones.
template <int K>
class Canvas {
public:
    Canvas(Pixel* pixels, ptrdiff_t stride) : pixels_(pixels), stride_(stride) {}

    // The background's part of `band`, its colour where it keeps no pixels. Both have one density.
    void FillBackground(const Surface& background, const Rect& band) const {
        const Rect stored = Intersect(band, background.IsUniform() ? Rect{} : background.StorageBounds());
        for (int y = band.y * K; y < band.Bottom() * K; ++y) {
            Pixel* row = pixels_ + y * stride_ + band.x * K;
            const int copied = y < stored.Bottom() * K ? stored.width * K : 0;
            if (copied > 0) std::memcpy(row, background.Row(y) + band.x * K, size_t(copied) * sizeof(Pixel));
            std::fill(row + copied, row + band.width * K, background.Background());
        }
    }

    // A run of a row from pixels of the same density.
    void CopyRun(int x, int y, int length, const Pixel* from, ptrdiff_t fromStride, int fromX, int fromY) const {
        Pixel* out = At(x, y);
        const Pixel* in = from + fromY * K * fromStride + fromX * K;
        for (int row = 0; row < K; ++row, out += stride_, in += fromStride) CopyPixels(out, in, length * K);
    }

    // The same of a surface that keeps less than the run: its background there, white beyond its size.
    void CopyRunOfPart(int x, int y, int length, const Surface& source, int fromX, int fromY) const {
        for (int row = 0; row < K; ++row) {
            Pixel* out = At(x, y) + row * stride_;
            for (int i = 0; i < length * K; ++i)
                out[i] = source.Bounds().Contains(fromX + i / K, fromY) ? source.At(fromX * K + i, fromY * K + row)
                                                                        : WhitePixel;
        }
    }

    // Inverts the colours of a run. Most runs are single units.
    void InvertRun(int x, int y, int length) const {
        Pixel* out = At(x, y);
        for (int row = 0; row < K; ++row, out += stride_) {
            *out ^= RgbBits;
            for (int i = 1; i < length * K; ++i) out[i] ^= RgbBits;
        }
    }

    // Brings pixels from where they are to `places`, which lie dx, dy further. The places may overlap what they come
    // from, but not each other: row by row against the way, nothing is overwritten before it was moved.
    void Move(Region places, int dx, int dy) const {
        std::ranges::sort(places, {}, [dx](const Rect& place) { return dx > 0 ? -place.x : place.x; });
        int top = INT_MAX, bottom = 0;
        for (const Rect& place : places) {
            top = std::min(top, place.y * K);
            bottom = std::max(bottom, place.Bottom() * K);
        }
        for (int i = 0; i < bottom - top; ++i) {
            const int y = dy > 0 ? bottom - 1 - i : top + i;
            for (const Rect& place : places) {
                if (y < place.y * K || y >= place.Bottom() * K) continue;
                Pixel* row = pixels_ + y * stride_ + place.x * K;
                std::memmove(row, row - dy * K * stride_ - dx * K, size_t(place.width) * K * sizeof(Pixel));
            }
        }
    }

private:
    // Runs are short, so four pixels at a time in place beat a call; the last step may write some pixels twice.
    static void CopyPixels(Pixel* out, const Pixel* in, int length) {
        constexpr int step = 4;
        if (length < step) {
            for (int i = 0; i < length; ++i) out[i] = in[i];
            return;
        }
        for (int i = 0; i < length - step; i += step) std::memcpy(out + i, in + i, step * sizeof(Pixel));
        std::memcpy(out + length - step, in + length - step, step * sizeof(Pixel));
    }

    Pixel* At(int x, int y) const { return pixels_ + y * K * stride_ + x * K; }

    Pixel* pixels_;
    ptrdiff_t stride_;
};

// Calls draw(canvas) with a canvas of that density.
template <typename Draw>
void OnCanvas(Density density, Pixel* pixels, ptrdiff_t stride, Draw draw) {
    switch (density.PerUnit()) {
        case 1:
            return draw(Canvas<1>(pixels, stride));
        case 2:
            return draw(Canvas<2>(pixels, stride));
        default:
            return draw(Canvas<3>(pixels, stride));
    }
}
static_assert(Density::Most == 3);

}  // namespace PuzzleModule
