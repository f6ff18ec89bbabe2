// Pictures from files of every kind, at any size and pace, against the library's plain decoding.

#include <QBuffer>

#include "platform/drawing/bmp.h"
#include "platform/qt/pictures/bmp_bands.h"
#include "platform/qt/pictures/picture_file.h"
#include "tests/platform/qt/fixture.h"

namespace {

std::mt19937 random_(11);

std::string Little(int64_t value, int bytes = 4) {
    std::string text;
    for (int i = 0; i < bytes; ++i) text += char(value >> 8 * i & 255);
    return text;
}

struct Kind {
    int bits;
    std::vector<uint32_t> masks;    // none: no compression
    uint32_t header = 40, gap = 0;  // bytes, and those between header and rows
    bool banded = true;
};

const uint32_t Red = 0xFF0000, Green = 0xFF00, Blue = 0xFF;
const Kind Kinds[] = {{24, {}},
                      {32, {}},
                      {16, {}},
                      {16, {0x7C00, 0x3E0, 0x1F}},
                      {32, {Blue, Green, Red}},
                      {24, {}, 124},
                      {32, {Red, Green, Blue, 0xFF000000}, 108},
                      {24, {}, 64},
                      {24, {}, 40, 777},
                      {16, {0xF800, 0x7E0, 0x1F}, 40, 33},
                      {24, {}, 40, 65536 - 54},
                      {24, {}, 40, 65537 - 54, false},
                      {8, {}, 40, 0, false},
                      {24, {Red, Green, Blue}, 40, 0, false},
                      {32, {~0u, Green, Blue}}};

// A bitmap of random rows; a few of them if `most` says so.
std::string Bitmap(const Kind& kind, int width, int height, size_t most = SIZE_MAX) {
    std::string rest = Little(width) + Little(height) + Little(1, 2) + Little(kind.bits, 2) +
                       Little(kind.masks.empty() ? 0 : 3) + std::string(20, '\0'),
                masks;
    for (const uint32_t mask : kind.masks) masks += Little(mask);
    if (kind.header > 64) rest += masks;
    rest.resize(kind.header - 4, '\0');
    if (kind.header <= 64) rest += masks;
    for (uint32_t i = 0; kind.bits == 8 && i < 256; ++i) rest += Little(i * 0x30705 & 0xFFFFFF);
    rest.resize(rest.size() + kind.gap, '\0');
    const size_t stride = size_t(int64_t(width) * kind.bits + 31) / 32 * 4;
    std::string rows(std::min(most, stride * size_t(std::abs(height))), '\0');
    for (char& c : rows) c = char(random_());
    const uint32_t rowsAt = uint32_t(18 + rest.size());
    return "BM" + Little(rowsAt + rows.size()) + Little(0) + Little(rowsAt) + Little(kind.header) + rest + rows;
}

// A photograph of broad patches and fine grain.
std::string Jpeg(int width, int height, int turn = 0, bool progressive = false, bool grey = false) {
    QImage image(width, height, QImage::Format_RGB32);
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x)
            image.setPixel(x, y, (x * 40 / width * 0x050103u + y * 30 / height * 0x020601u + (random_() & 0x1F1F1F)));
    QBuffer file;
    QImageWriter writer(&file, "jpeg");
    writer.setQuality(95);
    writer.setProgressiveScanWrite(progressive);
    writer.setTransformation(QImageIOHandler::Transformations(turn));
    EXPECT_TRUE(writer.write(grey ? image.convertToFormat(QImage::Format_Grayscale8) : image));
    return file.data().toStdString();
}

// Two pixels, one of them transparent.
const std::string Gif("GIF89a\2\0\1\0\x80\0\0\x10\x20\x30\xF0\x80\0!\xF9\4\1\0\0\1\0,\0\0\0\0\2\0\1\0\0\2\2\x44\x0A\0;",
                      45);

// A picture's place on the disk, and how the library and a slow reduction read it.
struct Model {
    std::string path;
    bool jpeg;
    QImage whole;

    Model(const TempFolder& folder, const std::string& name, const std::string& bytes)
        : path(folder.Write(name, bytes)), jpeg(bytes.starts_with("\xFF\xD8")), whole(Decoded(8)) {}

    static int Part(int side, int eighths) { return (side * eighths + 7) / 8; }

    QImage Decoded(int eighths) const {
        QImageReader reader(QString::fromStdString(path));
        reader.setDecideFormatFromContent(true);
        reader.setAutoTransform(true);
        const QSize size = reader.size();
        if (eighths < 8) reader.setScaledSize({Part(size.width(), eighths), Part(size.height(), eighths)});
        return reader.read();
    }

    // As a bitmap: the mean of each square of pixels, what is transparent over white.
    std::string Reduced(Size least, int64_t from) const {
        const bool all = least.width <= 0 || least.height <= 0;
        int eighths = jpeg && !all ? 1 : 8;
        while (eighths < 8 &&
               (Part(whole.width(), eighths) < least.width || Part(whole.height(), eighths) < least.height))
            ++eighths;
        const QImage image = eighths < 8 ? Decoded(eighths) : whole;
        QImage flat(image.size(), QImage::Format_RGB32);
        flat.fill(Qt::white);
        QPainter(&flat).drawImage(0, 0, image);
        const int width = flat.width(), height = flat.height();
        const int side =
            width * height < from || all ? 1 : std::clamp(std::min(width / least.width, height / least.height), 1, 64);
        Surface means((width + side - 1) / side, (height + side - 1) / side);
        Pixel* out = means.DrawAll();
        for (int y = 0; y < height; y += side)
            for (int x = 0; x < width; x += side) {
                uint32_t sums[3] = {}, count = 0;
                for (int v = y; v < std::min(y + side, height); ++v)
                    for (int u = x; u < std::min(x + side, width); ++u, ++count)
                        for (int c = 0; c < 3; ++c) sums[c] += flat.pixel(u, v) >> 8 * c & 255;
                *out = OpaqueBits;
                for (int c = 0; c < 3; ++c) *out |= (sums[c] + count / 2) / count << 8 * c;
                ++out;
            }
        return EncodeBmp(means);
    }

    // Reads it, and gives it up.
    void Check(Size least, int64_t from) const {
        SCOPED_TRACE(path + " for " + std::to_string(least.width) + "x" + std::to_string(least.height));
        const std::optional<Picture> picture = ReadPicture(path, least, {}, from);
        EXPECT_TRUE(picture && EncodeBmp(picture->Image) == Reduced(least, from));
        EXPECT_TRUE(picture && picture->Natural == Size(whole.width(), whole.height()));
        std::stop_source stop;
        stop.request_stop();
        EXPECT_FALSE(ReadPicture(path, least, stop.get_token(), from));
    }
};

}  // namespace

TEST(Pictures, EveryFileIsTheLibrarysPictureReduced) {
    const TempFolder folder;
    std::vector<Model> models;
    const auto add = [&](const std::string& bytes) {
        return models.emplace_back(folder, std::to_string(models.size()), bytes).path;
    };
    for (const Kind& kind : Kinds)
        for (const Size size : {Size{37, 153}, {41, -139}, {64, 128}, {1, 70}}) {
            QFile file(QString::fromStdString(add(Bitmap(kind, size.width, size.height))));
            EXPECT_TRUE(file.open(QIODevice::ReadOnly) && BmpBands::In(file).has_value() == kind.banded);
        }
    for (int turn = 0; turn < 16; ++turn) add(Jpeg(48 + turn, 90 - 5 * turn, turn % 8, turn > 7, turn == 3));
    for (const bool progressive : {false, true}) add(Jpeg(300, 300, 0, progressive));
    add(Gif);
    for (const Model& model : models) {
        const Size whole{model.whole.width(), model.whole.height()};
        ASSERT_TRUE(model.whole.isNull() || ReadPictureSize(model.path) == whole) << model.path;
        for (const int part : {0, 1, 2, 5, 1000}) {
            const Size least = part ? Size{whole.width / part + 1, std::max(1, whole.height / part)} : Size{0, 5};
            const int64_t froms[] = {1, whole.width * whole.height, whole.width * whole.height + 1, ReducedFrom};
            if (!model.whole.isNull()) model.Check(least, froms[random_() % 4]);
        }
    }
}

TEST(Pictures, WhatIsNoPictureOrTooLargeForTheMemoryIsRefused) {
    const TempFolder folder;
    ASSERT_TRUE(QImage(8, 8, QImage::Format_RGB32).save(QString::fromStdString(folder / "png.jpg"), "PNG"));
    folder.MakeFifo("fifo.jpg");
    folder.MakeFolder("folder.jpg");
    for (const std::string bytes : {"", "GIF as they say", "GIF89a", "BM", "\xFF\xD8\xFF\xE0"})
        folder.Write("short " + std::to_string(bytes.size()), bytes);
    // A screen of 65,340 pixels across and a frame of 60: the reader tells the one and decodes the other.
    folder.Write("told.gif", std::string("GIF89a\x3C\xFF\x1A\0\x80\0\0\0\0\0\xFF\xFF\xFF,", 20) +
                                 std::string("\0\0\0\0\x3C\0\x1A\0\0\2\2\x4C\1\0;", 15));
    for (const Size size : {Size{0, 0}, {9, 0}, {65536, 1}, {65535, -1603}, {9, INT_MIN}})
        folder.Write("size " + std::to_string(size.width + size.height), Bitmap(Kinds[0], size.width, size.height, 64));
    for (const auto& entry : std::filesystem::directory_iterator(folder.Path()))
        EXPECT_FALSE(ReadPicture(entry.path().string(), {10, 10})) << entry.path();
    EXPECT_FALSE(ReadPicture(folder / "missing.jpg", {1, 1}) || ReadPictureSize(folder / "short 6"));
    EXPECT_TRUE(ReadPicture(folder.Write("foto " + OddName + ".bmp", Bitmap(Kinds[0], 65535, 1602, 64)), {1000, 25}));
}

// The headers of photographs, up to the passes whose coefficients would have to be kept.
TEST(Pictures, APhotographWhosePassesWouldFillTheMemoryIsRefused) {
    const TempFolder folder;
    const std::string all("\xFF\xDA\0\x0C\3\1\0\2\0\3\0\0\x3F\0", 14), one("\xFF\xDA\0\x08\1\1\0\0\x3F\0", 10);
    const std::string grey("\xFF\xC0\0\x0B\x08\x75\x30\x75\x30\1\1\x11\0\xFF\xDA\0\x08\1\1\0\0\x3F\0", 23);
    const auto frame = [](char kind, int sampling, int width, int height) {
        const auto big = [](int value) { return std::string{char(value >> 8), char(value)}; };
        return std::string{char(0xFF), kind} + std::string("\0\x11\x08", 3) + big(height) + big(width) + "\3\1" +
               char(sampling) + std::string("\0\2\x11\0\3\x11\0", 7);
    };
    const std::string tables("\xFF\xC4\0\x0B\x08\x75\x30\x75\x30\1\1\x11\0\xFF\xFF\xE0\0\4ab", 20);
    const std::tuple<std::string, bool> headers[] = {
        {frame('\xC0', 0x11, 30000, 30000) + all, true},  // row by row
        {frame('\xC0', 0x11, 30000, 30000) + one, false},
        {frame('\xC1', 0x11, 30000, 30000) + tables + one, false},
        {tables + frame('\xC2', 0x11, 30000, 30000) + all, false},
        {frame('\xC2', 0x11, 7239, 7239) + all, true},  // 905 units of 8 pixels, in each 3 times 128 bytes
        {frame('\xC2', 0x11, 7240, 7240) + all, false},
        {frame('\xC2', 0x22, 10239, 10239) + all, true},  // 640 of 16, 6 times
        {frame('\xC2', 0x22, 10240, 10240) + all, false},
        {frame('\xC2', 0x21, 49151, 1599) + all, true},  // 3072 of 16 by 200 of 8, 4 times
        {frame('\xC2', 0x21, 49152, 1599) + all, false},
        {frame('\xC2', 0x12, 1599, 49151) + all, true},
        {frame('\xC2', 0x12, 1599, 49152) + all, false},
        {grey, true},
    };
    for (const auto& [header, readable] : headers)
        EXPECT_EQ(ReadPictureSize(folder.Write("p.jpg", "\xFF\xD8" + header)).has_value(), readable) << header;
}

// A picture decoded in a yield is handed out once, for the size it was decoded for; a yield inside leaves it alone.
TEST_F(QtFixture, WhatAYieldHasDecodedIsThereOnceAndForThatSizeOnly) {
    const std::string outer = folder.Write("outer", Jpeg(300, 300)), inner = folder.Write("inner", Gif);
    std::string log;
    const auto look = [&](const std::string& path, Size least) {
        std::filesystem::rename(path, path + "-");
        log += LoadPicture(path, least) ? '+' : '-';
        std::filesystem::rename(path + "-", path);
    };
    QTimer::singleShot(0, [&] { DoEventsDecoding(inner, {3, 3}), look(inner, {3, 3}); });
    DoEventsDecoding(outer, {150, 100}, [] { return true; });
    look(outer, {150, 100}), look(outer, {150, 100});
    DoEventsDecoding(outer, {150, 100}), look(outer, {150, 101}), look(outer, {150, 100});
    DoEventsDecoding(outer, {150, 100}), look(inner, {150, 100});
    DoEventsDecoding(outer, {150, 100}, [] { return false; }), look(outer, {150, 100});
    EXPECT_EQ(log, "++-----");
    EXPECT_EQ(PictureSize(outer), (Size{300, 300}));
}
