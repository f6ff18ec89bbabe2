// A BMP file: 14 bytes of file header, an information header of 40 bytes or more,
// then rows of blue, green, red, each row filled up to a multiple of four bytes.
#include "platform/drawing/bmp.h"

#include <cstdint>
#include <cstdlib>

namespace {

constexpr size_t HeaderBytes = 54;
constexpr uint32_t Uncompressed = 0, BitFields = 3;
constexpr int64_t MaxSide = 32767;

using Bytes = std::span<const std::byte>;

uint32_t Number(Bytes bytes, size_t at, size_t length) {
    uint32_t value = 0;
    for (size_t i = 0; i < length; ++i) value |= uint32_t(bytes[at + i]) << (8 * i);
    return value;
}

struct Layout {
    Size size;
    size_t pixelBytes = 0, rowBytes = 0, dataStart = 0;
    bool topDown = false;
};

// Bit fields are taken if they name the usual places of the three colours.
bool UsualFields(Bytes bytes) {
    return bytes.size() >= HeaderBytes + 12 && Number(bytes, 54, 4) == 0xFF0000 && Number(bytes, 58, 4) == 0xFF00 &&
           Number(bytes, 62, 4) == 0xFF;
}

std::optional<Layout> ReadLayout(Bytes bytes) {
    if (bytes.size() < HeaderBytes || bytes[0] != std::byte('B') || bytes[1] != std::byte('M')) return std::nullopt;
    const uint32_t headerSize = Number(bytes, 14, 4), depth = Number(bytes, 28, 2), packing = Number(bytes, 30, 4);
    if (headerSize < 40 || headerSize > 1024) return std::nullopt;
    const bool plain = packing == Uncompressed && (depth == 24 || depth == 32);
    if (!plain && !(packing == BitFields && depth == 32 && UsualFields(bytes))) return std::nullopt;

    const int64_t width = int32_t(Number(bytes, 18, 4)), height = int32_t(Number(bytes, 22, 4));
    if (width < 1 || width > MaxSide || height == 0 || std::abs(height) > MaxSide) return std::nullopt;
    Layout layout;
    layout.size = {int(width), int(std::abs(height))};
    layout.topDown = height < 0;
    layout.pixelBytes = depth / 8;
    layout.rowBytes = (size_t(width) * layout.pixelBytes + 3) / 4 * 4;
    layout.dataStart = Number(bytes, 10, 4);
    if (layout.dataStart < 14 + size_t(headerSize)) return std::nullopt;
    return layout;
}

void Put(std::string& out, uint32_t value, int length) {
    for (int i = 0; i < length; ++i) out += char(value >> (8 * i) & 0xFF);
}

}  // namespace

std::optional<Size> BmpSize(Bytes bytes) {
    const std::optional<Layout> layout = ReadLayout(bytes);
    return layout ? std::optional(layout->size) : std::nullopt;
}

std::optional<Surface> DecodeBmp(Bytes bytes) {
    const std::optional<Layout> layout = ReadLayout(bytes);
    if (!layout) return std::nullopt;
    const auto [width, height] = layout->size;
    // The file holds all rows, so what is allocated is bounded by what was read. The last
    // row may come without its filling.
    const size_t needed = layout->rowBytes * (size_t(height) - 1) + size_t(width) * layout->pixelBytes;
    if (layout->dataStart > bytes.size() || bytes.size() - layout->dataStart < needed) return std::nullopt;

    Surface surface(width, height);
    Pixel* out = surface.DrawAll();
    for (int y = 0; y < height; ++y) {
        const size_t row = size_t(layout->topDown ? y : height - 1 - y);
        const std::byte* in = bytes.data() + layout->dataStart + row * layout->rowBytes;
        for (int x = 0; x < width; ++x, in += layout->pixelBytes)
            *out++ = OpaqueBits | Pixel(in[2]) << 16 | Pixel(in[1]) << 8 | Pixel(in[0]);
    }
    return surface;
}

std::string EncodeBmp(const Surface& surface) {
    const uint32_t width = uint32_t(surface.Width()), height = uint32_t(surface.Height());
    const uint32_t rowBytes = (width * 3 + 3) / 4 * 4, dataBytes = rowBytes * height;
    std::string out = "BM";
    out.reserve(HeaderBytes + dataBytes);
    for (uint32_t field : {uint32_t(HeaderBytes) + dataBytes, 0u, uint32_t(HeaderBytes), 40u, width, height})
        Put(out, field, 4);
    Put(out, 1, 2);   // planes
    Put(out, 24, 2);  // bits a pixel
    // Packing, data length, 96 dots per inch twice, no palette.
    for (uint32_t field : {Uncompressed, dataBytes, 3780u, 3780u, 0u, 0u}) Put(out, field, 4);
    for (int y = surface.Height() - 1; y >= 0; --y) {
        const size_t rowEnd = out.size() + rowBytes;
        for (int x = 0; x < surface.Width(); ++x) Put(out, surface.At(x, y), 3);
        out.resize(rowEnd, '\0');
    }
    return out;
}
