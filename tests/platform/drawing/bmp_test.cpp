// Reading and writing BMP files.
#include "platform/drawing/bmp.h"

#include <gtest/gtest.h>

#include "tests/support/picture_files.h"

namespace {

std::optional<Surface> Decode(const std::string& bytes) { return DecodeBmp(std::as_bytes(std::span(bytes))); }

TEST(Bmp, IsWrittenAndReadPixelForPixelWhateverThePadding) {
    for (const Size size : {Size{1, 1}, {2, 5}, {3, 3}, {17, 4}}) {
        const std::string file = PatternBmp(size);
        EXPECT_EQ(EncodeBmp(PatternSurface(size)), file);
        const std::optional<Surface> surface = Decode(file);
        ASSERT_TRUE(surface && surface->Bounds() == (Rect{0, 0, size.width, size.height}));
        for (int y = 0; y < size.height; ++y)
            for (int x = 0; x < size.width; ++x) ASSERT_EQ(surface->At(x, y), PatternPixel(x, y)) << x << ", " << y;
    }
}

TEST(Bmp, RefusesWhatIsTruncatedForeignOrAbsurd) {
    const std::string good = PatternBmp({5, 4});
    for (size_t length = 0; length < good.size() - 1; ++length) EXPECT_FALSE(Decode(good.substr(0, length))) << length;
    const struct {
        size_t at;
        int32_t value;
    } cases[] = {{0, 'X'},    {18, 0}, {18, -5}, {18, INT32_MAX}, {22, 0},  {22, INT32_MIN},
                 {22, 32767}, {30, 1}, {10, 20}, {10, -1},        {14, -1}, {14, 12}};
    for (const auto& c : cases) {
        std::string bad = good;
        for (size_t i = 0; i < 4; ++i) bad[c.at + i] = char(c.value >> (8 * i) & 0xFF);
        EXPECT_FALSE(Decode(bad)) << c.at << ": " << c.value;
    }
}

}  // namespace
