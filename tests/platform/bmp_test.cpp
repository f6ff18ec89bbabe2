// Reading and writing BMP files.
#include "platform/bmp.h"

#include <gtest/gtest.h>

#include <random>

#include "tests/support/picture_files.h"

namespace {

std::optional<Surface> Decode(const std::string& bytes) { return DecodeBmp(std::as_bytes(std::span(bytes))); }

void Put(std::string& file, size_t at, int32_t value, int length) {
    for (int i = 0; i < length; ++i) file[at + size_t(i)] = char(value >> (8 * i) & 0xFF);
}

// The pattern with four bytes a pixel, optionally top row first.
std::string Wide(Size size, bool topDown) {
    std::string file = PatternBmp({1, 1}).substr(0, 54);
    Put(file, 18, size.width, 4);
    Put(file, 22, topDown ? -size.height : size.height, 4);
    Put(file, 28, 32, 2);
    for (int row = 0; row < size.height; ++row)
        for (int x = 0; x < size.width; ++x) {
            file.resize(file.size() + 4);
            const int y = topDown ? row : size.height - 1 - row;
            Put(file, file.size() - 4, int32_t(PatternPixel(x, y) & RgbBits), 4);
        }
    return file;
}

void ExpectPattern(const std::optional<Surface>& surface, Size size) {
    ASSERT_TRUE(surface.has_value());
    ASSERT_EQ(surface->Bounds(), (Rect{0, 0, size.width, size.height}));
    for (int y = 0; y < size.height; ++y)
        for (int x = 0; x < size.width; ++x) ASSERT_EQ(surface->At(x, y), PatternPixel(x, y)) << x << ", " << y;
}

TEST(DecodeBmp, ReadsBothDepthsAndBothOrdersOfRows) {
    for (const Size size : {Size{1, 1}, {2, 5}, {3, 3}, {17, 4}}) {
        ExpectPattern(Decode(PatternBmp(size)), size);
        ExpectPattern(Decode(Wide(size, false)), size);
        ExpectPattern(Decode(Wide(size, true)), size);
    }
}

TEST(DecodeBmp, RefusesWhatIsTruncatedForeignOrAbsurd) {
    const std::string good = PatternBmp({5, 4});
    for (size_t length = 0; length < good.size() - 1; ++length) EXPECT_FALSE(Decode(good.substr(0, length))) << length;
    struct Case {
        const char* what;
        size_t at;
        int32_t value;
        int length;
    };
    const Case cases[] = {
        {"mark", 0, 'X', 1},
        {"no width", 18, 0, 4},
        {"negative width", 18, -5, 4},
        {"no height", 22, 0, 4},
        {"lowest height", 22, INT32_MIN, 4},
        {"vast width", 18, INT32_MAX, 4},
        {"vast height", 22, 32767, 4},
        {"depth", 28, 8, 2},
        {"packed", 30, 1, 4},
        {"data in header", 10, 20, 4},
        {"data beyond", 10, -1, 4},
        {"vast header", 14, -1, 4},
        {"small header", 14, 12, 4},
    };
    for (const Case& c : cases) {
        std::string bad = good;
        Put(bad, c.at, c.value, c.length);
        EXPECT_FALSE(Decode(bad)) << c.what;
    }
}

TEST(DecodeBmp, AnyBytesInTheHeaderAreSurvived) {
    const uint32_t seed = std::random_device{}();
    SCOPED_TRACE("seed " + std::to_string(seed));
    std::mt19937 engine(seed);
    for (int round = 0; round < 3000; ++round) {
        std::string bytes = PatternBmp({6, 6});
        for (int i = 0; i < 3; ++i) bytes[engine() % 66] = char(engine());
        const std::optional<Surface> surface = Decode(bytes);
        // No more pixels than the bytes of a file this long can hold.
        if (surface) {
            ASSERT_LE(size_t(surface->Width()) * size_t(surface->Height()) * 3, bytes.size());
        }
    }
}

TEST(EncodeBmp, MakesTheVeryFileThatHoldsTheSurface) {
    for (const Size size : {Size{1, 1}, {6, 2}, {7, 3}}) EXPECT_EQ(EncodeBmp(PatternSurface(size)), PatternBmp(size));
}

}  // namespace
