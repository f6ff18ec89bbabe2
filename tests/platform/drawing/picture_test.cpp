// Pictures from files: BMP byte by byte, and what is opened at all.
#include "platform/drawing/picture.h"

#include <gtest/gtest.h>

#include "platform/drawing/bmp.h"
#include "platform/headless/desktop.h"
#include "tests/support/picture_files.h"
#include "tests/support/temp_folder.h"

namespace {

std::span<const std::byte> Bytes(const std::string& file) { return std::as_bytes(std::span(file)); }

// `file` with other numbers in it, each at its place, four bytes long.
std::string With(std::string file, std::initializer_list<std::pair<size_t, int32_t>> numbers) {
    for (const auto& [at, value] : numbers)
        for (size_t i = 0; i < 4; ++i) file[at + i] = char(value >> (8 * i) & 0xFF);
    return file;
}

void ExpectPattern(const std::string& file, Size size, bool topDown) {
    const std::optional<Surface> surface = DecodeBmp(Bytes(file));
    ASSERT_TRUE(surface && BmpSize(Bytes(file)) == size && surface->Bounds() == (Rect{0, 0, size.width, size.height}));
    for (int y = 0; y < size.height; ++y)
        for (int x = 0; x < size.width; ++x)
            ASSERT_EQ(surface->At(x, y), PatternPixel(x, topDown ? size.height - 1 - y : y)) << x << ", " << y;
}

}  // namespace

TEST(Bmp, IsWrittenAndReadPixelForPixelInEveryFormAndRefusedInAnyOther) {
    for (const Size size : {Size{1, 1}, {2, 5}, {3, 3}, {17, 4}}) {
        const std::string file = PatternBmp(size);
        EXPECT_EQ(EncodeBmp(PatternSurface(size)), file);
        ExpectPattern(file, size, false);
        ExpectPattern(With(file, {{22, -size.height}}), size, true);
        std::string wide = With(file.substr(0, 54), {{28, 32}, {30, 0}});
        for (int y = size.height - 1; y >= 0; --y)
            for (int x = 0; x < size.width; ++x)
                for (int i = 0; i < 4; ++i) wide += char(PatternPixel(x, y) >> (8 * i) & 0xFF);
        ExpectPattern(wide, size, false);
        // The places of the colours named, behind a header of 40 bytes or within a longer one.
        std::string fields = With(wide, {{28, 32 | 3 << 16}, {30, 3}});
        fields.insert(54, std::string("\0\0\xFF\0\0\xFF\0\0\xFF\0\0\0", 12));
        ExpectPattern(With(fields, {{10, 66}}), size, false);
        ExpectPattern(With(fields, {{10, 66}, {14, 52}}), size, false);
        for (const size_t at : {54u, 58u, 62u}) EXPECT_FALSE(DecodeBmp(Bytes(With(fields, {{10, 66}, {at, 1}}))));
        fields.insert(66, std::string(1024 - 52, 'x'));
        ExpectPattern(With(fields, {{10, 1038}, {14, 1024}}), size, false);
        EXPECT_FALSE(DecodeBmp(Bytes(With(fields, {{10, 1039}, {14, 1025}}))));
    }
    const std::string good = PatternBmp({5, 4});
    for (size_t length = 0; length < good.size() - 1; ++length) EXPECT_FALSE(DecodeBmp(Bytes(good.substr(0, length))));
    EXPECT_TRUE(DecodeBmp(Bytes(good.substr(0, good.size() - 1)))) << "the last row without its filling";
    const std::pair<size_t, int32_t> cases[] = {{0, 'X'}, {18, 0},         {18, -5},    {18, INT32_MAX}, {22, 0},
                                                {22, -5}, {22, INT32_MIN}, {22, 32767}, {30, 1},         {30, 3},
                                                {28, 16}, {28, 8},         {10, 20},    {10, -1},        {10, 53},
                                                {10, 56}, {14, -1},        {14, 39},    {14, 41}};
    for (const auto& change : cases)
        EXPECT_FALSE(DecodeBmp(Bytes(With(good, {change})))) << change.first << ": " << change.second;
    for (const size_t at : {18, 22})
        for (const int32_t side : {32767, 32768})
            EXPECT_EQ(BmpSize(Bytes(With(good, {{at, side}}))).has_value(), side < 32768);
}

TEST(LoadPicture, NothingButARegularFileReachesTheDesktop) {
    const TempFolder folder;
    HeadlessDesktop desktop;
    const std::string missing = folder / "missing.bmp";
    const std::string paths[] = {folder.MakeFifo("fifo.bmp"), folder.MakeFolder("folder.bmp"),
                                 folder.Write("file.bmp", ""), missing};
    for (const std::string& path : paths) {
        desktop.pictures[path] = {{4, 3}, [](Size) { return Surface(4, 3); }};
        desktop.log.clear();
        const bool opened = path == paths[2] || path == missing;  // what is missing is the desktop's to refuse
        EXPECT_EQ(PictureSize(path), opened ? std::optional(Size{4, 3}) : std::nullopt) << path;
        EXPECT_EQ(LoadPicture(path).has_value(), opened) << path;
        DoEventsDecoding(path, {4, 3});
        EXPECT_EQ(desktop.log, std::vector<std::string>{"events"}) << path;
    }
}
