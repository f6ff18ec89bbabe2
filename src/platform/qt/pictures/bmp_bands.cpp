// Rows of an uncompressed bitmap, each band presented to the library as a bitmap of its own.
#include "platform/qt/pictures/bmp_bands.h"

#include <QBuffer>
#include <QImageReader>
#include <QtEndian>
#include <climits>
#include <cstdlib>

namespace {

// Places in the header. The sizes of its second part are those that the library knows.
constexpr qsizetype RowsAt = 10, KindAt = 14, WidthAt = 18, HeightAt = 22, BitsAt = 28, CompressionAt = 30;
constexpr uint32_t Plain = 40, Os2 = 64, Version4 = 108, Version5 = 124;
constexpr uint32_t NoCompression = 0, Masks = 3;
constexpr int64_t LongestHead = 1 << 16;

template <typename T>
T At(const QByteArray& bytes, qsizetype place) {
    return qFromLittleEndian<T>(bytes.constData() + place);
}

}  // namespace

std::optional<BmpBands> BmpBands::In(QIODevice& file) {
    BmpBands bands(file);
    if (!file.seek(0)) return std::nullopt;
    bands.head_ = file.read(KindAt + qsizetype(Plain));
    if (bands.head_.size() < KindAt + qsizetype(Plain)) return std::nullopt;
    const uint32_t kind = At<quint32>(bands.head_, KindAt), compression = At<quint32>(bands.head_, CompressionAt);
    const int bits = At<quint16>(bands.head_, BitsAt);
    const bool masked = compression == Masks && (bits == 16 || bits == 32);
    if (kind != Plain && kind != Os2 && kind != Version4 && kind != Version5) return std::nullopt;
    if (!masked && (compression != NoCompression || (bits != 16 && bits != 24 && bits != 32))) return std::nullopt;

    const int64_t least = KindAt + kind + (masked && kind < Version4 ? 12 : 0);
    const int64_t rowsAt = At<quint32>(bands.head_, RowsAt);
    if (rowsAt < least || rowsAt > LongestHead || rowsAt >= file.size()) return std::nullopt;
    bands.head_ += file.read(rowsAt - bands.head_.size());

    const int width = At<qint32>(bands.head_, WidthAt), height = At<qint32>(bands.head_, HeightAt);
    if (bands.head_.size() != rowsAt || width <= 0 || height == 0 || height == INT_MIN) return std::nullopt;
    bands.height_ = std::abs(height);
    bands.topDown_ = height < 0;
    bands.stride_ = (int64_t(width) * bits + 31) / 32 * 4;
    return bands;
}

QImage BmpBands::Rows(int top, int count) {
    const int first = topDown_ ? top : height_ - top - count;  // in the file's order
    QByteArray bytes = head_;
    qToLittleEndian<qint32>(topDown_ ? -count : count, bytes.data() + HeightAt);
    const qint64 whole = bytes.size() + count * stride_;
    if (file_->seek(head_.size() + first * stride_)) {
        const QByteArray rows = file_->read(count * stride_);
        bytes.append(rows.constData(), rows.size() / stride_ * stride_);
    }
    bytes.append(whole - bytes.size(), '\0');

    QBuffer buffer(&bytes);
    buffer.open(QIODevice::ReadOnly);
    QImageReader reader(&buffer, "bmp");
    reader.setAutoDetectImageFormat(false);
    return reader.read();
}
