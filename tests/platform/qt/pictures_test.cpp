// Pictures from files of every kind, at any size and pace, against the library's plain decoding.

#include <QBuffer>

#include "platform/drawing/bmp.h"
#include "platform/qt/pictures/bmp_bands.h"
#include "platform/qt/pictures/decoders.h"
#include "platform/qt/pictures/picture_file.h"
#include "platform/qt/pictures/reduced.h"
#include "tests/platform/qt/fixture.h"

namespace {

// A photograph of broad patches.
std::string Jpeg(int width, int height, int turn = 0, bool progressive = false) {
    QImage image(width, height, QImage::Format_RGB32);
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x) image.setPixel(x, y, x * 40 / width * 0x050103u + y * 30 / height * 0x020601u);
    QBuffer file;
    QImageWriter writer(&file, "jpeg");
    writer.setQuality(95);
    writer.setProgressiveScanWrite(progressive);
    writer.setTransformation(QImageIOHandler::Transformations(turn));
    EXPECT_TRUE(writer.write(image));
    return file.data().toStdString();
}

// Two pixels, one of them transparent.
const std::string Gif("GIF89a\2\0\1\0\x80\0\0\x10\x20\x30\xF0\x80\0!\xF9\4\1\0\0\1\0,\0\0\0\0\2\0\1\0\0\2\2\x44\x0A\0;",
                      45);

struct Pictures : QtFixture {
    Transcript transcript;
};

}  // namespace

// Bitmaps to the pixel; photographs by size, and near the library's picture. Where releases of the library differ, in
// colours of 16 bits and a mask over all of them, only that it is the library's picture.
TEST_F(Pictures, AreReadAsSmallAsTheyMayBe) {
    enum Told { All, Extent, Nothing };
    const auto read = [](const std::string& path, Size least, int64_t from, Told told) -> std::string {
        std::stop_source stop;
        stop.request_stop();
        EXPECT_FALSE(ReadPicture(path, least, stop.get_token(), from));
        const std::optional<Picture> picture = ReadPicture(path, least, {}, from);
        QImageReader reader(QString::fromStdString(path));
        reader.setAutoTransform(true);
        const QImage plain = reader.read();
        EXPECT_TRUE(told != Nothing || !picture == plain.isNull()) << path;
        if (!picture) return told == Nothing ? "" : "none";
        const auto& [natural, image] = *picture;
        const std::string pixels = PixelsOf(image);
        if (told == Extent) {
            const QImage shown(reinterpret_cast<const uchar*>(image.Row(0)), image.Width(), image.Height(),
                               QImage::Format_RGB32);
            EXPECT_LT(Apart(shown, plain.scaled(shown.size(), {}, Qt::SmoothTransformation)), 40) << path;
            return testing::PrintToString(natural) + " " + testing::PrintToString(image.Bounds());
        }
        const auto rows = [&plain](int top, int count) { return plain.copy(0, top, plain.width(), count); };
        EXPECT_EQ(pixels, PixelsOf(*Reduced(natural, Reduction(natural, least, from), rows, {}))) << path;
        return told == All ? testing::PrintToString(natural) + " " + pixels : "";
    };
    const auto look = [&](const std::string& path, Told told) {
        const Size whole = ReadPictureSize(path).value_or(Size{});
        for (const int part : {0, 1, 2, 5, 1000}) {
            const Size least = part ? Size{whole.width / part + 1, std::max(1, whole.height / part)} : Size{0, 5};
            const int64_t from = transcript.Draw(
                std::vector<int64_t>{1, whole.width * whole.height, whole.width * whole.height + 1, ReducedFrom});
            DO(read(path, least, from, told));
        }
    };
    for (const BitmapKind& kind : BitmapKinds)
        for (const Size size : {Size{37, 153}, {41, -139}, {64, 128}, {1, 70}}) {
            QFile file(QString::fromStdString(folder.Write("bitmap.jpg", Bitmap(kind, size))));
            DO(file.open(QIODevice::ReadOnly) && BmpBands::In(file));
            const bool odd = !kind.masks.empty() && kind.masks[0] == 0xFFFFFFFF;
            look(folder / "bitmap.jpg", kind.bits == 16 || odd ? Nothing : All);
        }
    for (int turn = 0; turn < 16; ++turn)
        look(folder.Write(std::to_string(turn), Jpeg(48 + turn, 90 - 5 * turn, turn % 8, turn > 7)), Extent);
    for (const bool progressive : {false, true}) look(folder.Write("large", Jpeg(300, 300, 0, progressive)), Extent);
    look(folder.Write("gif", Gif), All);
}

TEST_F(QtFixture, WhatIsNoPictureOrTooLargeForTheMemoryIsRefused) {
    ASSERT_TRUE(QImage(8, 8, QImage::Format_RGB32).save(QString::fromStdString(folder / "png.jpg"), "PNG"));
    folder.MakeFifo("fifo.jpg");
    folder.MakeFolder("folder.jpg");
    for (const std::string bytes : {"", "GIF as they say", "GIF89a", "BM", "\xFF\xD8\xFF\xE0"})
        folder.Write("short " + std::to_string(bytes.size()), bytes);
    // A screen of 65,340 pixels across and a frame of 60: the reader tells the one and decodes the other.
    folder.Write("told.gif", std::string("GIF89a\x3C\xFF\x1A\0\x80\0\0\0\0\0\xFF\xFF\xFF,", 20) +
                                 std::string("\0\0\0\0\x3C\0\x1A\0\0\2\2\x4C\1\0;", 15));
    for (const Size size : {Size{0, 0}, {9, 0}, {65536, 1}, {65535, -1603}, {9, INT_MIN}})
        folder.Write("size " + std::to_string(size.width + size.height), Bitmap({24}, size, 64));
    for (const auto& entry : std::filesystem::directory_iterator(folder.Path()))
        EXPECT_FALSE(ReadPicture(entry.path().string(), {10, 10})) << entry.path();
    EXPECT_FALSE(ReadPicture(folder / "missing.jpg", {1, 1}) || ReadPictureSize(folder / "short 6"));
    EXPECT_TRUE(ReadPicture(folder.Write("foto " + OddName + ".bmp", Bitmap({24}, {65535, 1602}, 64)), {1000, 25}));
}

// The headers of photographs, up to the passes whose coefficients would have to be kept.
TEST_F(Pictures, WhosePassesWouldFillTheMemoryAreRefused) {
    const std::string all("\xFF\xDA\0\x0C\3\1\0\2\0\3\0\0\x3F\0", 14), one("\xFF\xDA\0\x08\1\1\0\0\x3F\0", 10);
    const std::string tables =
        std::string("\xFF\xC4\0\x13", 4) + std::string(17, '\0') + std::string("\xFF\xFF\xE0\0\4ab", 7);
    const auto readable = [&](char kind, char sampling, int width, int height, const std::string& scan) {
        return ReadPictureSize(folder.Write("p", "\xFF\xD8" + std::string{char(0xFF), kind} +
                                                     std::string("\0\x11\x08", 3) + char(height >> 8) + char(height) +
                                                     char(width >> 8) + char(width) + "\3\1" + sampling +
                                                     std::string("\0\2\x11\0\3\x11\0", 7) + scan))
            .has_value();
    };
    // 905 units of 8 pixels, in each 3 times 128 bytes; 640 of 16, 6 times; 3072 of 16 by 200 of 8, 4 times; the same.
    for (const auto& [sampling, width, height] : std::initializer_list<std::tuple<char, int, int>>{
             {0x11, 7239, 7239}, {0x22, 10239, 10239}, {0x21, 49151, 1599}, {0x12, 1599, 49151}})
        for (const int more : {0, 1})
            for (const char kind : {'\xC0', '\xC1', '\xC2'})
                for (const std::string& scan : {all, one, tables + all})
                    DO(readable(kind, sampling, width + more, height + more, scan));
}

TEST_F(Pictures, DecodedInAYieldAreThereOnceAndForThatSizeOnly) {
    const std::string path = folder.Write("p", Jpeg(300, 300));
    const auto decode = [&](bool wanted) { DoEventsDecoding(path, {150, 100}, [=] { return wanted; }); };
    const auto there = [&](int height) {
        std::filesystem::rename(path, path + "-");
        const bool loaded = LoadPicture(path, {150, height}).has_value();
        std::filesystem::rename(path + "-", path);
        return loaded;
    };
    DO(decode(true), there(100));
    DO(there(100));
    DO(decode(true), there(101));
    DO(decode(false), there(100));
    DO(QTimer::singleShot(0, [&] { decode(true); }), decode(true), there(100));
}

// Which of those for images are loaded is seen in the real program.
TEST_F(QtFixture, PluginsForMoreThanPicturesAreFoundWhereTheyWere) {
    const auto found = [] {
        QFileInfoList files;
        for (const QString& place : QCoreApplication::libraryPaths())
            files += QDir(place + "/platforms").entryInfoList(QDir::Files);
        return files;
    };
    const QFileInfoList before = found();
    KeepToPictureDecoders();
    EXPECT_FALSE(before.empty());
    EXPECT_EQ(found(), before);
}
