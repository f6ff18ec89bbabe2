// Plain row loops over 32-bit pixels, written so that the compiler turns them into
// vector instructions. A library's blit is not used: none offers these five
// operations on memory, and they are most of the program's work.
//
// Every operation is reckoned once against bounds and storage of both surfaces.
// Pixels that a source does not store are its background: that part of the block is
// done with one constant pixel.
#include "platform/drawing/raster.h"

#include <cassert>
#include <cstring>
#include <utility>
#include <vector>

namespace {

// The top byte: AND and OR of two full bytes leave it full; the other two operations
// must not touch it.
template <RasterOp Op>
Pixel Combine(Pixel dest, Pixel source) {
    if constexpr (Op == RasterOp::SrcCopy) return source;
    if constexpr (Op == RasterOp::SrcPaint) return dest | source;
    if constexpr (Op == RasterOp::SrcAnd) return dest & source;
    if constexpr (Op == RasterOp::SrcInvert) return dest ^ (source & RgbBits);
    // White mask: ~mask adds nothing, the picture stays. Black: all turns white.
    if constexpr (Op == RasterOp::MergePaint) return dest | (~source & RgbBits);
}

// A block that lies inside everything it touches.
struct Block {
    int x, y, width, height;
    int sourceX, sourceY;
    bool Empty() const { return width <= 0 || height <= 0; }
    Rect Target() const { return {x, y, width, height}; }
};

// Cuts one axis down to what lies inside `destSize` and `sourceSize`. In 64 bits:
// callers hand in any int.
void ClipAxis(int& at, int& length, int& from, int destSize, int sourceSize) {
    const int64_t shift = int64_t(from) - at;
    const int64_t first = std::max<int64_t>({at, 0, -shift});
    const int64_t end = std::min<int64_t>({int64_t(at) + length, destSize, sourceSize - shift});
    at = int(std::min<int64_t>(first, destSize));
    length = int(std::max<int64_t>(end - first, 0));
    from = length > 0 ? int(first + shift) : 0;
}

// The part of `area` inside a surface of this size, for any int in `area`.
Rect ClipArea(const Rect& area, const Rect& bounds) {
    const int64_t left = std::max<int64_t>(area.x, bounds.x), top = std::max<int64_t>(area.y, bounds.y);
    const int64_t right = std::min<int64_t>(int64_t(area.x) + area.width, bounds.Right());
    const int64_t bottom = std::min<int64_t>(int64_t(area.y) + area.height, bounds.Bottom());
    if (right <= left || bottom <= top) return {};
    return {int(left), int(top), int(right - left), int(bottom - top)};
}

// Storage of `dest` for a block; storage that the block fills completely is not filled before.
Pixel* StorageFor(Surface& dest, const Rect& area, bool overwrites) {
    return overwrites && area == dest.StorageBounds() ? dest.DrawAll() : dest.Draw(area);
}

template <RasterOp Op>
void CombineRow(Pixel* __restrict out, const Pixel* __restrict in, size_t width) {
    if constexpr (Op == RasterOp::SrcCopy)
        std::memcpy(out, in, width * sizeof(Pixel));
    else
        for (size_t i = 0; i < width; ++i) out[i] = Combine<Op>(out[i], in[i]);
}

// A source of one pixel a unit: each becomes a square of pixels.
template <RasterOp Op>
void CombineEnlarged(Surface& dest, const Block& block, const Surface& source) {
    Pixel* const pixels = StorageFor(dest, block.Target(), Op == RasterOp::SrcCopy);
    const int k = dest.PixelDensity().PerUnit();
    const Rect target = dest.PixelDensity().Pixels(block.Target());
    std::vector<Pixel> wide(size_t(target.width));
    for (int row = 0; row < target.height; ++row) {
        const Pixel* in = source.Row(block.sourceY + row / k) + block.sourceX;
        if (row % k == 0)
            for (size_t i = 0; i < wide.size(); ++i) wide[i] = in[i / size_t(k)];
        CombineRow<Op>(pixels + size_t(target.y + row) * size_t(dest.Stride()) + target.x, wide.data(), wide.size());
    }
}

template <RasterOp Op>
void CombineStored(Surface& dest, const Block& block, const Surface& source) {
    if (source.PixelDensity() != dest.PixelDensity()) return CombineEnlarged<Op>(dest, block, source);
    Pixel* const pixels = StorageFor(dest, block.Target(), Op == RasterOp::SrcCopy);
    const Rect target = dest.PixelDensity().Pixels(block.Target());
    const int fromX = source.PixelDensity().Pixels(block.sourceX), fromY = source.PixelDensity().Pixels(block.sourceY);
    const size_t stride = size_t(dest.Stride());
    for (int row = 0; row < target.height; ++row)
        CombineRow<Op>(pixels + size_t(target.y + row) * stride + size_t(target.x), source.Row(fromY + row) + fromX,
                       size_t(target.width));
}

template <RasterOp Op>
void CombineConstant(Surface& dest, const Rect& area, Pixel source) {
    // Background on background needs no storage.
    if (dest.IsUniform() && Combine<Op>(dest.Background(), source) == dest.Background()) return dest.Touch(area);
    Pixel* const pixels = StorageFor(dest, area, Op == RasterOp::SrcCopy);
    const Rect target = dest.PixelDensity().Pixels(area);
    const size_t stride = size_t(dest.Stride()), width = size_t(target.width);
    for (int row = 0; row < target.height; ++row) {
        Pixel* out = pixels + size_t(target.y + row) * stride + size_t(target.x);
        for (size_t i = 0; i < width; ++i) out[i] = Combine<Op>(out[i], source);
    }
}

template <RasterOp Op>
void CombineBlock(Surface& dest, const Block& block, const Surface& source) {
    if (source.IsUniform()) return CombineConstant<Op>(dest, block.Target(), source.Background());
    // The stored part is a rectangle at the block's top left; right of it and below it
    // the source is background.
    Block stored = block;
    stored.width = std::clamp(source.StorageBounds().width - block.sourceX, 0, block.width);
    stored.height = std::clamp(source.StorageBounds().height - block.sourceY, 0, block.height);
    if (stored.Empty()) return CombineConstant<Op>(dest, block.Target(), source.Background());
    CombineStored<Op>(dest, stored, source);
    const Rect right{block.x + stored.width, block.y, block.width - stored.width, stored.height};
    const Rect below{block.x, block.y + stored.height, block.width, block.height - stored.height};
    for (const Rect& rest : {right, below})
        if (!rest.Empty()) CombineConstant<Op>(dest, rest, source.Background());
}

// The one or two source pixels under the centre of each target pixel of one axis. They
// are two where the centre falls on the boundary between them.
std::vector<std::pair<int, int>> CentresOf(int target, int source) {
    std::vector<std::pair<int, int>> centres(static_cast<size_t>(target));
    const int64_t unit = 2 * int64_t(target);
    for (int d = 0; d < target; ++d) {
        const int64_t place = (2 * int64_t(d) + 1) * source;
        const int after = int(place / unit);
        // A centre never falls on the outer edges, so `after` is 1 or more on a boundary.
        centres[size_t(d)] = {place % unit == 0 ? after - 1 : after, after};
    }
    return centres;
}

// Pixels of the blocks in which a square is turned: small enough that both blocks stay in
// the nearest cache.
constexpr int TurnBlock = 16;

}  // namespace

void TurnClockwise(Surface& dest, const Surface& source, int side) {
    const Rect square{0, 0, side, side};
    if (Intersect(square, dest.StorageBounds()) != square || Intersect(square, source.StorageBounds()) != square)
        return;
    if (source.IsUniform() || source.PixelDensity() != dest.PixelDensity()) return;
    const int s = dest.PixelDensity().Pixels(side);
    Pixel* const out = dest.Draw(square);
    const Pixel* const in = source.Row(0);
    const ptrdiff_t outStride = dest.Stride(), inStride = source.Stride();
    for (int top = 0; top < s; top += TurnBlock) {
        const int bottom = std::min(top + TurnBlock, s);
        for (int left = 0; left < s; left += TurnBlock) {
            const int right = std::min(left + TurnBlock, s);
            // Rows of the destination are written from end to end, columns of the source read upward.
            for (int x = left; x < right; ++x) {
                Pixel* to = out + x * outStride + (s - bottom);
                const Pixel* from = in + (bottom - 1) * inStride + x;
                for (int y = top; y < bottom; ++y, from -= inStride) *to++ = *from;
            }
        }
    }
}

void BitBlt(Surface& dest, int x, int y, int width, int height, const Surface& source, int sourceX, int sourceY,
            RasterOp op) {
    assert(&dest != &source);
    assert(source.PixelDensity() == dest.PixelDensity() || source.PixelDensity() == Density() || source.IsUniform());
    Block block{x, y, width, height, sourceX, sourceY};
    ClipAxis(block.x, block.width, block.sourceX, dest.StorageBounds().width, source.Width());
    ClipAxis(block.y, block.height, block.sourceY, dest.StorageBounds().height, source.Height());
    if (block.Empty()) return;
    switch (op) {
        case RasterOp::SrcCopy:
            return CombineBlock<RasterOp::SrcCopy>(dest, block, source);
        case RasterOp::SrcPaint:
            return CombineBlock<RasterOp::SrcPaint>(dest, block, source);
        case RasterOp::SrcAnd:
            return CombineBlock<RasterOp::SrcAnd>(dest, block, source);
        case RasterOp::SrcInvert:
            return CombineBlock<RasterOp::SrcInvert>(dest, block, source);
        case RasterOp::MergePaint:
            return CombineBlock<RasterOp::MergePaint>(dest, block, source);
    }
}

Color Point(const Surface& surface, int x, int y) {
    const Density density = surface.PixelDensity();
    return surface.Bounds().Contains(x, y) ? ToColor(surface.At(density.Pixels(x), density.Pixels(y))) : -1;
}

void SetPixel(Surface& surface, int x, int y, Color color) {
    if (surface.Bounds().Contains(x, y)) FillRect(surface, {x, y, 1, 1}, color);
}

void FillRect(Surface& dest, const Rect& area, Color color) {
    const Rect clipped = ClipArea(area, dest.StorageBounds());
    if (!clipped.Empty()) CombineConstant<RasterOp::SrcCopy>(dest, clipped, ToPixel(color));
}

void Line(Surface& dest, int x, int y, int width, int height, Color color) {
    // Corners in 64 bits, then as far out as the surface can tell: a side that lies
    // outside stays outside.
    const auto near = [](int64_t value) { return int(std::clamp<int64_t>(value, -1, 1 << 29)); };
    const int64_t farX = int64_t(x) + width, farY = int64_t(y) + height;
    const int left = near(std::min<int64_t>(x, farX)), right = near(std::max<int64_t>(x, farX));
    const int top = near(std::min<int64_t>(y, farY)), bottom = near(std::max<int64_t>(y, farY));
    const int across = right - left + 1, down = bottom - top + 1;
    FillRect(dest, {left, top, across, 1}, color);
    FillRect(dest, {left, bottom, across, 1}, color);
    FillRect(dest, {left, top, 1, down}, color);
    FillRect(dest, {right, top, 1, down}, color);
}

void StretchMask(Surface& dest, const Surface& source) {
    assert(&dest != &source);
    if (dest.StorageBounds().Empty() || source.Bounds().Empty()) return;
    const auto columns = CentresOf(dest.Width(), source.Width());
    const auto rows = CentresOf(dest.Height(), source.Height());
    const Rect stored = dest.StorageBounds();
    Pixel* out = dest.DrawAll();
    for (int y = 0; y < stored.height; ++y, out += dest.Stride()) {
        const auto [above, below] = rows[size_t(y)];
        for (int x = 0; x < stored.width; ++x) {
            const auto [left, right] = columns[size_t(x)];
            // OR lets white win; it is idle where both pixels of a pair are the same one.
            out[x] =
                source.At(left, above) | source.At(right, above) | source.At(left, below) | source.At(right, below);
        }
    }
}
