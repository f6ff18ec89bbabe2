// Stretching a picture over a rectangle.
//
// Each axis has its own filter: for every target pixel a run of source pixels with
// whole-number weights of one constant sum.
//   smaller   the weights are the lengths that the source pixels have in common with
//             the target pixel, so that they add up to the source's length exactly;
//   larger    four neighbours by Catmull-Rom's cubic, in 1/16384;
//   same      one pixel of weight 1.
// A target row is first added up vertically in 32 bits, then horizontally in 64, and
// divided once by the product of both sums: nothing is rounded on the way, and a plain
// colour stays what it is. Only target pixels that can be seen are reckoned.
#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>
#include <vector>

#include "platform/drawing/picture.h"
#include "platform/drawing/raster.h"

namespace {

struct Tap {
    int first = 0;  // source pixel of the first weight
    int count = 0;
    size_t weights = 0;  // where they stand in Filter::weights
};

// The filter of one axis for target pixels `begin` .. `end` - 1.
struct Filter {
    int begin = 0, end = 0;
    int64_t sum = 1;   // of the weights of any one target pixel
    bool box = false;  // weights by length covered
    std::vector<Tap> taps;
    std::vector<int32_t> weights;
    const Tap& At(int target) const { return taps[size_t(target - begin)]; }
    int FirstSource() const { return taps.front().first; }
    int EndSource() const { return taps.back().first + taps.back().count; }
};

// In units of 1/target source pixels, target pixel d covers d * source .. (d + 1) * source,
// and source pixel s covers s * target .. (s + 1) * target.
void AddBox(Filter& filter, int d, int target, int source) {
    const int64_t from = int64_t(d) * source, to = from + source;
    Tap tap{int(from / target), 0, filter.weights.size()};
    for (int64_t s = tap.first; s * target < to; ++s, ++tap.count)
        filter.weights.push_back(int32_t(std::min(to, (s + 1) * target) - std::max(from, s * target)));
    filter.taps.push_back(tap);
}

constexpr int CubicBits = 14;

// Weights of the four pixels about a point that lies t/4096 of the way from the second to the third.
std::array<int32_t, 4> CubicWeights(int64_t t) {
    const int64_t one = 4096, t2 = t * t, t3 = t2 * t;
    // Twice the weights, in 1/4096^3.
    const std::array<int64_t, 4> doubled = {-t * one * one + 2 * t2 * one - t3,
                                            2 * one * one * one - 5 * t2 * one + 3 * t3,
                                            t * one * one + 4 * t2 * one - 3 * t3, t3 - t2 * one};
    constexpr int shift = 37 - CubicBits;
    std::array<int32_t, 4> weights{};
    for (size_t i = 0; i < 4; ++i) weights[i] = int32_t((doubled[i] + (int64_t(1) << (shift - 1))) >> shift);
    // What rounding left over goes to the nearer of the two middle pixels.
    const int32_t rest = (1 << CubicBits) - (weights[0] + weights[1] + weights[2] + weights[3]);
    weights[t * 2 <= one ? 1 : 2] += rest;
    return weights;
}

// The centre of target pixel d lies at (2d + 1) * source / (2 * target) in the source.
void AddCubic(Filter& filter, int d, int target, int source) {
    const int64_t unit = 2 * int64_t(target);
    const int64_t place = (2 * int64_t(d) + 1) * source - target;  // from the centre of source pixel 0
    const int64_t below = place >= 0 ? place / unit : -1;
    const int64_t part = ((place - below * unit) * 4096 + target) / unit;
    const std::array<int32_t, 4> four = CubicWeights(part);
    // Beyond the edge the outermost pixel goes on.
    const int first = int(std::clamp<int64_t>(below - 1, 0, source - 1));
    const int last = int(std::clamp<int64_t>(below + 2, 0, source - 1));
    const Tap tap{first, last - first + 1, filter.weights.size()};
    filter.weights.resize(filter.weights.size() + size_t(tap.count));
    for (int i = 0; i < 4; ++i) {
        const int pixel = int(std::clamp<int64_t>(below - 1 + i, 0, source - 1));
        filter.weights[tap.weights + size_t(pixel - first)] += four[size_t(i)];
    }
    filter.taps.push_back(tap);
}

Filter MakeFilter(int begin, int end, int target, int source) {
    Filter filter;
    filter.begin = begin;
    filter.end = end;
    filter.box = target < source;
    filter.sum = target < source ? source : target > source ? 1 << CubicBits : 1;
    filter.taps.reserve(size_t(end - begin));
    for (int d = begin; d < end; ++d) {
        if (target < source) {
            AddBox(filter, d, target, source);
        } else if (target > source) {
            AddCubic(filter, d, target, source);
        } else {
            filter.taps.push_back({d, 1, filter.weights.size()});
            filter.weights.push_back(1);
        }
    }
    return filter;
}

// Divides by a constant: up to 2^28 by one multiplication, which is exact for numbers
// below 256 times the divisor.
class Divider {
public:
    explicit Divider(uint64_t divisor) : divisor_(divisor), inverse_(divisor > 1 ? ~uint64_t(0) / divisor + 1 : 0) {}
    uint32_t operator()(uint64_t value) const {
#ifdef __SIZEOF_INT128__
        __extension__ using Wide = unsigned __int128;
        if (inverse_ != 0 && divisor_ <= uint64_t(1) << 28) return uint32_t(Wide(value) * inverse_ >> 64);
#endif
        return uint32_t(value / divisor_);
    }

private:
    uint64_t divisor_, inverse_;
};

// Adds up source rows, four channels a pixel.
class ColumnSums {
public:
    ColumnSums(const Surface& image, int firstColumn, int endColumn)
        : image_(image), first_(firstColumn), sums_(size_t(endColumn - firstColumn) * 4), inside_(sums_.size()) {}

    const int32_t* Sum(const Filter& filter, int target);

private:
    // A stretch of columns whose sums stay in the nearest cache.
    static constexpr size_t Stretch = 4096;

    const uint8_t* Source(int row) const { return reinterpret_cast<const uint8_t*>(image_.Row(row) + first_); }
    void Add(int row, int32_t weight, size_t from, size_t count);
    void SumBox(const Tap& tap, const int32_t* weights, size_t from, size_t count);

    const Surface& image_;
    int first_;
    std::vector<int32_t> sums_;
    std::vector<uint16_t> inside_;
};

void ColumnSums::Add(int row, int32_t weight, size_t from, size_t count) {
    int32_t* __restrict out = sums_.data() + from;
    const uint8_t* __restrict in = Source(row) + from;
    if (weight >= INT16_MIN && weight <= INT16_MAX) {
        // 16 by 16 bits to 32 is what vector units multiply fastest.
        const int16_t narrow = int16_t(weight);
        for (size_t i = 0; i < count; ++i) out[i] += int32_t(narrow) * int32_t(int16_t(in[i]));
    } else {
        for (size_t i = 0; i < count; ++i) out[i] += weight * int32_t(in[i]);
    }
}

// A box of three rows or more: those between the two edges have one weight, so they are
// added up in 16 bits and multiplied once.
void ColumnSums::SumBox(const Tap& tap, const int32_t* weights, size_t from, size_t count) {
    uint16_t* __restrict inside = inside_.data() + from;
    const uint8_t* __restrict second = Source(tap.first + 1) + from;
    for (size_t i = 0; i < count; ++i) inside[i] = second[i];
    for (int k = 2; k < tap.count - 1; ++k) {
        const uint8_t* __restrict in = Source(tap.first + k) + from;
        for (size_t i = 0; i < count; ++i) inside[i] = uint16_t(inside[i] + in[i]);
    }
    const uint8_t* __restrict top = Source(tap.first) + from;
    const uint8_t* __restrict bottom = Source(tap.first + tap.count - 1) + from;
    const auto topWeight = uint16_t(weights[0]), insideWeight = uint16_t(weights[1]);
    const auto bottomWeight = uint16_t(weights[tap.count - 1]);
    int32_t* __restrict out = sums_.data() + from;
    for (size_t i = 0; i < count; ++i)
        out[i] = int32_t(uint32_t(topWeight) * uint16_t(top[i]) + uint32_t(insideWeight) * inside[i] +
                         uint32_t(bottomWeight) * uint16_t(bottom[i]));
}

const int32_t* ColumnSums::Sum(const Filter& filter, int target) {
    const Tap& tap = filter.At(target);
    const int32_t* weights = filter.weights.data() + tap.weights;
    // Up to 257 bytes fit into 16 bits; no weight of a box is larger than the inner ones.
    const bool box = filter.box && tap.count >= 3 && tap.count <= 258 && weights[1] <= UINT16_MAX;
    for (size_t from = 0; from < sums_.size(); from += Stretch) {
        const size_t count = std::min(Stretch, sums_.size() - from);
        if (box) {
            SumBox(tap, weights, from, count);
            continue;
        }
        std::fill_n(sums_.data() + from, count, 0);
        for (int k = 0; k < tap.count; ++k) Add(tap.first + k, weights[k], from, count);
    }
    return sums_.data();
}

// One target row out of the column sums, which begin at source column `firstColumn`.
void FinishRow(Pixel* out, const int32_t* sums, int firstColumn, const Filter& filter, const Divider& divide,
               int64_t area) {
    for (int x = filter.begin; x < filter.end; ++x) {
        const Tap& tap = filter.At(x);
        const int32_t* weight = filter.weights.data() + tap.weights;
        const int32_t* in = sums + size_t(tap.first - firstColumn) * 4;
        int64_t blue = 0, green = 0, red = 0;
        for (int k = 0; k < tap.count; ++k, in += 4) {
            blue += int64_t(weight[k]) * in[0];
            green += int64_t(weight[k]) * in[1];
            red += int64_t(weight[k]) * in[2];
        }
        // The cubic may overshoot at an edge.
        const auto channel = [&](int64_t sum) {
            return divide(uint64_t(std::clamp<int64_t>(sum, 0, 255 * area) + area / 2));
        };
        *out++ = OpaqueBits | channel(red) << 16 | channel(green) << 8 | channel(blue);
    }
}

// A copy that stores every pixel, for the rare image that does not.
Surface WhollyStored(const Surface& image) {
    Surface whole(image.Width(), image.Height());
    whole.SetDensity(image.PixelDensity());
    BitBlt(whole, 0, 0, image.Width(), image.Height(), image, 0, 0, RasterOp::SrcCopy);
    whole.Draw(whole.Bounds());  // white on white has kept nothing
    return whole;
}

}  // namespace

void PaintPicture(Surface& dest, const Rect& target, const Surface& image) {
    if (target.Empty() || image.Bounds().Empty()) return;
    if (image.IsUniform()) return FillRect(dest, target, ToColor(image.Background()));
    if (target.width == image.Width() && target.height == image.Height() && image.PixelDensity() == dest.PixelDensity())
        return BitBlt(dest, target.x, target.y, target.width, target.height, image, 0, 0, RasterOp::SrcCopy);
    if (image.StorageBounds() != image.Bounds()) return PaintPicture(dest, target, WhollyStored(image));

    const Rect area = Intersect(target, dest.StorageBounds());
    if (area.Empty()) return;
    const Rect all = dest.PixelDensity().Pixels(target), seen = dest.PixelDensity().Pixels(area);
    const Rect source = image.PixelBounds();
    const Filter across = MakeFilter(seen.x - all.x, seen.Right() - all.x, all.width, source.width);
    const Filter down = MakeFilter(seen.y - all.y, seen.Bottom() - all.y, all.height, source.height);
    const int64_t weight = across.sum * down.sum;
    const Divider divide{uint64_t(weight)};
    ColumnSums columns(image, across.FirstSource(), across.EndSource());
    Pixel* pixels = area == dest.StorageBounds() ? dest.DrawAll() : dest.Draw(area);
    for (int y = 0; y < seen.height; ++y) {
        const int32_t* sums = columns.Sum(down, down.begin + y);
        Pixel* out = pixels + size_t(seen.y + y) * size_t(dest.Stride()) + size_t(seen.x);
        FinishRow(out, sums, across.FirstSource(), across, divide, weight);
    }
}

Surface Stretched(const Surface& image, Size size) {
    Surface result(size.width, size.height);
    PaintPicture(result, result.Bounds(), image);
    return result;
}
