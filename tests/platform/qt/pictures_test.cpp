// Pictures from files, against what was written or against Qt's plain decoding.
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <QImage>
#include <QImageReader>
#include <QImageWriter>
#include <random>

#include "platform/qt/pictures/picture_file.h"
#include "tests/platform/qt/fixture.h"

namespace {

// Four quarters of clearly different colours.
QImage Quarters(int width, int height) {
    QImage image(width, height, QImage::Format_RGB32);
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x)
            image.setPixel(x, y, (x < width / 2 ? 0xFF200000u : 0xFFE00000u) | (y < height / 2 ? 0x2000u : 0xE000u));
    return image;
}

std::string SavedJpeg(const ScratchFolder& folder, const QImage& image, QImageIOHandler::Transformations turn = {}) {
    const std::string path = folder.File("p.jpg");
    QImageWriter writer(QString::fromStdString(path), "jpeg");
    writer.setQuality(95);
    writer.setTransformation(turn);
    EXPECT_TRUE(writer.write(image));
    return path;
}

int Apart(Pixel a, Pixel b) {
    int most = 0;
    for (const int shift : {0, 8, 16}) most = std::max(most, std::abs(int(a >> shift & 255) - int(b >> shift & 255)));
    return most;
}

std::string Little(uint32_t value, int bytes) {
    std::string text;
    for (int i = 0; i < bytes; ++i) text += i < 4 ? char(value >> 8 * i & 255) : char(0);
    return text;
}

// A BMP of 24 bits a pixel; rows from the top down if `height` is negative.
std::string Bmp(int width, int height, const std::string& rows) {
    return "BM" + Little(uint32_t(54 + rows.size()), 4) + Little(0, 4) + Little(54, 4) + Little(40, 4) +
           Little(uint32_t(width), 4) + Little(uint32_t(height), 4) + Little(1, 2) + Little(24, 2) + Little(0, 4) +
           Little(uint32_t(rows.size()), 4) + Little(0, 16) + rows;
}

}  // namespace

TEST(Pictures, PhotographsStandUprightWhateverTheirOrientationMark) {
    const ScratchFolder folder;
    const QImage plain = Quarters(48, 32);
    for (int turn = 0; turn < 8; ++turn) {
        const auto transformation = QImageIOHandler::Transformations(turn);
        const std::string path = SavedJpeg(folder, plain, transformation);
        QImage expected = plain;
        if (transformation & QImageIOHandler::TransformationMirror) expected = expected.mirrored(true, false);
        if (transformation & QImageIOHandler::TransformationFlip) expected = expected.mirrored(false, true);
        if (transformation & QImageIOHandler::TransformationRotate90)
            expected = expected.transformed(QTransform().rotate(90));
        const std::optional<Size> size = ReadPictureSize(path);
        ASSERT_TRUE(size) << turn;
        EXPECT_EQ(*size, (Size{expected.width(), expected.height()})) << turn;
        const std::optional<Picture> picture = ReadPicture(path, {0, 0});
        ASSERT_TRUE(picture) << turn;
        EXPECT_EQ(picture->Natural, *size) << turn;
        for (const auto& [x, y] : {std::pair{4, 4}, {-5, 4}, {4, -5}, {-5, -5}}) {
            const int px = x < 0 ? expected.width() + x : x, py = y < 0 ? expected.height() + y : y;
            EXPECT_LT(Apart(picture->Image.At(px, py), expected.pixel(px, py)), 24) << turn << ": " << px << "," << py;
        }
    }
}

TEST(Pictures, AScaledPictureIsNeverSmallerThanAskedForAndKeepsItsProportions) {
    const ScratchFolder folder;
    const unsigned seed = std::random_device{}();
    SCOPED_TRACE("seed " + std::to_string(seed));
    std::mt19937 random(seed);
    const auto pick = [&](int low, int high) { return std::uniform_int_distribution(low, high)(random); };
    for (int round = 0; round < 60; ++round) {
        const Size natural{pick(1, 400), pick(1, 400)};
        const bool turned = pick(0, 1) == 1;
        const std::string path =
            SavedJpeg(folder, Quarters(natural.width, natural.height),
                      turned ? QImageIOHandler::TransformationRotate90 : QImageIOHandler::TransformationNone);
        const Size upright = turned ? Size{natural.height, natural.width} : natural;
        const Size asked{pick(1, upright.width), pick(1, upright.height)};
        const std::optional<Picture> picture = ReadPicture(path, asked);
        ASSERT_TRUE(picture);
        EXPECT_EQ(picture->Natural, upright);
        EXPECT_GE(picture->Image.Width(), asked.width);
        EXPECT_GE(picture->Image.Height(), asked.height);
        const auto part = [](int side, int eighths) { return (side * eighths + 7) / 8; };
        int fewest = 1;
        while (part(upright.width, fewest) < asked.width || part(upright.height, fewest) < asked.height) ++fewest;
        EXPECT_LE(picture->Image.Width(), part(upright.width, fewest));
        // Both sides by the same eighths, each rounded up, and no more of them than it takes.
        const double across = double(picture->Image.Width()) / upright.width;
        EXPECT_NEAR(picture->Image.Height(), across * upright.height, 1 + double(upright.height) / upright.width);
    }
}

TEST(Pictures, OnlyRegularFilesOfTheThreeFormatsAreOpened) {
    const ScratchFolder folder;
    ASSERT_TRUE(Quarters(8, 8).save(QString::fromStdString(folder.File("png.jpg")), "PNG"));
    ASSERT_EQ(mkfifo(folder.File("fifo.jpg").c_str(), 0600), 0);
    for (const std::string& path :
         {folder.File("png.jpg"), folder.File("fifo.jpg"), folder.File("missing.jpg"), folder.File(""),
          folder.Write("empty.jpg", ""), folder.Write("text.gif", "GIF as they say"),
          folder.Write("short.jpg", "\xFF\xD8\xFF\xE0"), folder.Write("short.gif", "GIF89a"),
          folder.Write("short.bmp", "BM"), folder.Write("none.bmp", Bmp(0, 0, ""))}) {
        EXPECT_FALSE(ReadPictureSize(path)) << path;
        EXPECT_FALSE(ReadPicture(path, {10, 10})) << path;
    }
}

TEST(Pictures, ASizeBeyondTheMemoryOfTheProgramIsRefused) {
    const ScratchFolder folder;
    for (const auto& [width, height] : {std::pair{30000, 30000}, {65535, 2000}, {2147483647, 1}, {200000, -200000}}) {
        const std::string path = folder.Write("huge.bmp", Bmp(width, height, std::string(64, '\0')));
        EXPECT_FALSE(ReadPicture(path, {10, 10})) << width << " x " << height;
    }
}

TEST(Pictures, APhotographInSeveralPassesIsReadUnlessItsPassesWouldFillTheMemory) {
    const ScratchFolder folder;
    QImageWriter writer(QString::fromStdString(folder.File("p.jpg")), "jpeg");
    writer.setProgressiveScanWrite(true);
    ASSERT_TRUE(writer.write(Quarters(90, 70)));
    EXPECT_TRUE(ReadPicture(folder.File("p.jpg"), {0, 0}));
    // The headers of square photographs in three colours of the same fineness; one pass for all colours, or for one.
    const auto square = [&](const char* kind, const char* side, const std::string& pass) {
        return ReadPictureSize(
            folder.Write("square.jpg", std::string("\xFF\xD8\xFF") + kind + std::string("\0\x11\x08", 3) + side + side +
                                           std::string("\3\1\x11\0\2\x11\0\3\x11\0\xFF\xDA", 12) + pass));
    };
    const std::string all("\0\x0C\3\1\0\2\0\3\0\0\x3F\0", 12), one("\0\x08\1\1\0\0\x3F\0", 8);
    EXPECT_TRUE(square("\xC0", "\x75\x30", all));  // 30000 pixels, row by row
    EXPECT_FALSE(square("\xC0", "\x75\x30", one));
    EXPECT_FALSE(square("\xC2", "\x75\x30", all));  // progressive
    EXPECT_TRUE(square("\xC2", "\x15\x30", all));   // 5424 pixels
}

TEST(Pictures, AFileNameIsItsBytes) {
    const ScratchFolder folder;
    const std::string path = folder.Write("foto \xE7\xFF.bmp", Bmp(1, 1, std::string("\x01\x02\x03\0", 4)));
    EXPECT_EQ(ReadPictureSize(path), (Size{1, 1}));
}
