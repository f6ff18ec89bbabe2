// Bitmaps read some rows at a time, against the same files decoded whole.
#include <gtest/gtest.h>

#include <QFile>
#include <random>

#include "platform/qt/pictures/bmp_bands.h"
#include "platform/qt/pictures/picture_file.h"
#include "tests/platform/qt/fixture.h"

namespace {

struct Kind {
    const char* name;
    int bits;
    std::vector<uint32_t> masks;  // none: no compression
    uint32_t header = 40;
    uint32_t gap = 0;  // bytes between header and rows
    bool banded = true;
};

const Kind Kinds[] = {
    {"24 bits", 24, {}},
    {"32 bits", 32, {}},
    {"16 bits", 16, {}},
    {"555", 16, {0x7C00, 0x03E0, 0x001F}},
    {"565", 16, {0xF800, 0x07E0, 0x001F}},
    {"32 bits with masks", 32, {0xFF, 0xFF00, 0xFF0000}},
    {"24 bits, long header", 24, {}, 124, 0},
    {"transparency", 32, {0xFF0000, 0xFF00, 0xFF, 0xFF000000}, 108, 0},
    {"24 bits, other header", 24, {}, 64, 0},
    {"24 bits and a gap", 24, {}, 40, 777},
    {"565 and a gap", 16, {0xF800, 0x07E0, 0x001F}, 40, 33},
    {"palette", 8, {}, 40, 0, false},
    {"24 bits, far gap", 24, {}, 40, 70000, false},
    {"impossible masks", 32, {0xFFFFFFFF, 0xFF00, 0xFF}},
};

std::string Little(uint32_t value, int bytes = 4) {
    std::string text;
    for (int i = 0; i < bytes; ++i) text += char(value >> 8 * i & 255);
    return text;
}

int Stride(int width, int bits) { return (width * bits + 31) / 32 * 4; }

// A bitmap of random rows.
std::string Bitmap(const Kind& kind, int width, int height, std::mt19937& random) {
    std::string rest = Little(uint32_t(width)) + Little(uint32_t(height)) + Little(1, 2) +
                       Little(uint32_t(kind.bits), 2) + Little(kind.masks.empty() ? 0 : 3) + Little(0) + Little(2835) +
                       Little(2835) + Little(0) + Little(0);
    const auto masks = [&] {
        for (const uint32_t mask : kind.masks) rest += Little(mask);
    };
    if (kind.header > 64) masks();
    rest.resize(kind.header - 4, '\0');
    if (kind.header <= 64) masks();
    if (kind.bits == 8)
        for (uint32_t i = 0; i < 256; ++i) rest += Little(i * 0x30705 & 0xFFFFFF);
    rest.resize(rest.size() + kind.gap, '\0');
    std::string rows(size_t(Stride(width, kind.bits) * std::abs(height)), '\0');
    for (char& c : rows) c = char(random());
    const uint32_t rowsAt = uint32_t(14 + 4 + rest.size());
    return "BM" + Little(uint32_t(rowsAt + rows.size())) + Little(0) + Little(rowsAt) + Little(kind.header) + rest +
           rows;
}

// The mean of each square of `side` pixels.
Surface Means(const Surface& whole, int side) {
    Surface means((whole.Width() + side - 1) / side, (whole.Height() + side - 1) / side);
    Pixel* out = means.DrawAll();
    for (int y = 0; y < whole.Height(); y += side)
        for (int x = 0; x < whole.Width(); x += side) {
            uint32_t sums[3] = {}, count = 0;
            for (int v = y; v < std::min(y + side, whole.Height()); ++v)
                for (int u = x; u < std::min(x + side, whole.Width()); ++u, ++count)
                    for (int c = 0; c < 3; ++c) sums[c] += whole.At(u, v) >> 8 * c & 255;
            *out = OpaqueBits;
            for (int c = 0; c < 3; ++c) *out |= (sums[c] + count / 2) / count << 8 * c;
            ++out;
        }
    return means;
}

testing::AssertionResult Same(const Surface& a, const Surface& b) {
    if (a.Bounds() != b.Bounds()) return testing::AssertionFailure() << "sizes differ";
    for (int y = 0; y < a.Height(); ++y)
        for (int x = 0; x < a.Width(); ++x)
            if (a.At(x, y) != b.At(x, y)) return testing::AssertionFailure() << "differ at " << x << "," << y;
    return testing::AssertionSuccess();
}

bool Banded(const std::string& path) {
    QFile file(QString::fromStdString(path));
    return file.open(QIODevice::ReadOnly) && BmpBands::In(file);
}

}  // namespace

// What a cut header leaves is taken by both or by neither.
TEST(BmpBands, TheReducedPictureIsThatOfTheWholeDecodePixelForPixel) {
    const ScratchFolder folder;
    std::mt19937 random(11);
    Pace none;
    for (const Kind& kind : Kinds)
        for (const Size size : {Size{37, 153}, {41, -139}, {64, 128}, {1, 70}}) {
            const std::string all = Bitmap(kind, size.width, size.height, random);
            for (const size_t kept : {all.size(), size_t(10), size_t(20), size_t(53), size_t(60)}) {
                SCOPED_TRACE(kind.name + (" " + std::to_string(size.height) + ", bytes: ") + std::to_string(kept));
                const std::string path = folder.Write("b.bmp", all.substr(0, kept));
                EXPECT_TRUE(kept < all.size() || Banded(path) == kind.banded);
                const std::optional<Picture> whole = ReadPicture(path, {0, 0});
                for (const int side : {2, 5, 17}) {
                    const Size atLeast{std::max(1, size.width / side), std::abs(size.height) / side};
                    const int fits = std::min(size.width / atLeast.width, std::abs(size.height) / atLeast.height);
                    const std::optional<Picture> reduced = ReadPicture(path, atLeast, none, 1);
                    ASSERT_EQ(reduced.has_value(), whole.has_value());
                    if (!whole || kept < all.size()) break;
                    EXPECT_EQ(reduced->Natural, whole->Natural);
                    EXPECT_TRUE(Same(reduced->Image, Means(whole->Image, fits))) << "by " << fits;
                }
            }
        }
}

TEST(BmpBands, RowsThatACutFileLacksAreBlackAndTheOthersAsEver) {
    const ScratchFolder folder;
    std::mt19937 random(12);
    for (const int height : {40, -40}) {
        const std::string all = Bitmap(Kinds[0], 21, height, random);
        const std::optional<Picture> whole = ReadPicture(folder.Write("all.bmp", all), {0, 0});
        const int stride = Stride(21, 24);
        folder.Write("cut.bmp",
                     all.substr(0, size_t(54 + 12 * stride + stride - 1)));  // twelve rows and nearly one more
        QFile file(QString::fromStdString(folder.File("cut.bmp")));
        ASSERT_TRUE(file.open(QIODevice::ReadOnly));
        std::optional<BmpBands> bands = BmpBands::In(file);
        ASSERT_TRUE(bands && whole);
        for (int top = 0; top < 40; top += 7) {
            const QImage rows = bands->Rows(top, std::min(7, 40 - top));
            ASSERT_FALSE(rows.isNull());
            for (int y = top; y < std::min(top + 7, 40); ++y)
                for (int x = 0; x < 21; ++x) {
                    const bool there = height < 0 ? y < 12 : y >= 28;
                    EXPECT_EQ(rows.pixel(x, y - top), there ? whole->Image.At(x, y) : OpaqueBits) << x << "," << y;
                }
        }
    }
}
