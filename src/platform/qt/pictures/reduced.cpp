// Pixels of decoded images, taken over by bands.
#include "platform/qt/pictures/reduced.h"

#include <QPainter>
#include <algorithm>

namespace {

constexpr int BandRows = 64;

// Pixels in the game's order, what is transparent over white.
QImage OverWhite(const QImage& image) {
    if (!image.hasAlphaChannel()) return image.convertToFormat(QImage::Format_RGB32);
    QImage flat(image.size(), QImage::Format_RGB32);
    flat.fill(Qt::white);
    QPainter painter(&flat);
    painter.drawImage(0, 0, image);
    return flat;
}

const Pixel* RowOf(const QImage& band, int y) { return reinterpret_cast<const Pixel*>(band.constScanLine(y)); }

Pixel* CopyRow(const QImage& band, int y, Pixel* out) {
    const Pixel* row = RowOf(band, y);
    for (int x = 0; x < band.width(); ++x) *out++ = row[x] | OpaqueBits;
    return out;
}

// One row of the result from `rows` rows of the band.
Pixel* ReduceRows(const QImage& band, int top, int rows, int side, Pixel* out) {
    for (int left = 0; left < band.width(); left += side) {
        const int columns = std::min(side, band.width() - left);
        uint32_t red = 0, green = 0, blue = 0;
        for (int y = top; y < top + rows; ++y) {
            const Pixel* row = RowOf(band, y) + left;
            for (int x = 0; x < columns; ++x) {
                red += row[x] >> 16 & 255;
                green += row[x] >> 8 & 255;
                blue += row[x] & 255;
            }
        }
        const uint32_t count = uint32_t(rows * columns);
        const auto mean = [count](uint32_t sum) { return (sum + count / 2) / count; };
        *out++ = OpaqueBits | mean(red) << 16 | mean(green) << 8 | mean(blue);
    }
    return out;
}

}  // namespace

int Reduction(Size size, Size atLeast, int64_t from) {
    if (int64_t(size.width) * size.height < from || atLeast.width <= 0 || atLeast.height <= 0) return 1;
    return std::clamp(std::min(size.width / atLeast.width, size.height / atLeast.height), 1, BandRows);
}

std::optional<Surface> Reduced(Size size, int side, const RowsOfPicture& rowsOf, const std::stop_token& stop) {
    Surface surface((size.width + side - 1) / side, (size.height + side - 1) / side);
    Pixel* out = surface.DrawAll();
    const int most = BandRows / side * side;
    for (int top = 0; top < size.height; top += most) {
        if (stop.stop_requested()) return std::nullopt;
        const QImage rows = rowsOf(top, std::min(most, size.height - top));
        if (rows.isNull()) return std::nullopt;
        const QImage band = OverWhite(rows);
        for (int y = 0; y < band.height(); y += side)
            out = side > 1 ? ReduceRows(band, y, std::min(side, band.height() - y), side, out) : CopyRow(band, y, out);
    }
    return surface;
}
