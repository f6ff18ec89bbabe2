// Decoding with pauses: what the events may do meanwhile, other decoding included.
#include <gtest/gtest.h>

#include <QImage>
#include <QImageWriter>
#include <QTimer>
#include <filesystem>
#include <random>

#include "platform/qt/pictures/picture_file.h"
#include "tests/platform/qt/fixture.h"
#include "tests/support/picture_files.h"

namespace {

// Pictures that take many reads, one for each way of decoding, with what a plain reading gives.
class Decoding : public testing::Test {
protected:
    struct File {
        std::string path;
        Size atLeast;
        int64_t reducedFrom;
        std::optional<Picture> plain;
    };

    Decoding() {
        files.push_back({Jpeg("pass.jpg", false), {0, 0}, ReducedFrom, {}});
        files.push_back({Jpeg("passes.jpg", true), {50, 50}, ReducedFrom, {}});
        files.push_back({WritePicture(folder.File("whole.bmp"), {300, 200}), {0, 0}, ReducedFrom, {}});
        files.push_back({WritePicture(folder.File("bands.bmp"), {200, 300}), {20, 20}, 1, {}});
        for (File& file : files) {
            Pace none;
            file.plain = Read(file, none);
        }
    }

    std::string Jpeg(const std::string& name, bool progressive) const {
        QImage noise(300, 300, QImage::Format_RGB32);
        std::minstd_rand random(5);
        for (int y = 0; y < 300; ++y)
            for (int x = 0; x < 300; ++x) noise.setPixel(x, y, 0xFF000000u | (random() & 0xFFFFFF));
        QImageWriter writer(QString::fromStdString(folder.File(name)), "jpeg");
        writer.setQuality(95);
        writer.setProgressiveScanWrite(progressive);
        EXPECT_TRUE(writer.write(noise));
        return folder.File(name);
    }

    static std::optional<Picture> Read(const File& file, Pace& pace) {
        return ReadPicture(file.path, file.atLeast, pace, file.reducedFrom);
    }

    static bool Same(const std::optional<Picture>& a, const std::optional<Picture>& b) {
        if (!a || !b || a->Natural != b->Natural || a->Image.Bounds() != b->Image.Bounds()) return false;
        for (int y = 0; y < a->Image.Height(); ++y)
            for (int x = 0; x < a->Image.Width(); ++x)
                if (a->Image.At(x, y) != b->Image.At(x, y)) return false;
        return true;
    }

    // Reads a file and in its second pause the next one, and so on inside each other.
    void ReadNested(size_t first, size_t left) {
        const File& file = files[first % files.size()];
        int pauses = 0;
        const auto turn = [&] {
            if (++pauses == 2 && left > 0) ReadNested(first + 1, left - 1);
            return true;
        };
        Pace pace(turn, 0);
        EXPECT_TRUE(Same(Read(file, pace), file.plain)) << file.path << " with " << left << " inside";
        EXPECT_GE(pauses, int(std::filesystem::file_size(file.path) / 20000)) << file.path;
        EXPECT_GE(pauses, 3) << file.path;
    }

    const ScratchFolder folder;
    std::vector<File> files;
};

}  // namespace

TEST_F(Decoding, PicturesReadInTheMiddleOfEachOtherComeOutAsEver) {
    for (size_t first = 0; first < files.size(); ++first) ReadNested(first, 2 * files.size());
}

TEST_F(Decoding, APictureThatNobodyWantsAnyMoreIsGivenUpWithoutAFurtherPause) {
    for (const File& file : files) {
        int pauses = 0;
        Pace pace([&pauses] { return ++pauses < 2; }, 0);
        EXPECT_FALSE(Read(file, pace)) << file.path;
        EXPECT_EQ(pauses, 2) << file.path;
    }
}

TEST_F(Decoding, WhatWasDecodedDuringAYieldIsThereOnceAndForThatSizeOnly) {
    QtFixture fixture;
    for (const size_t i : {size_t(0), size_t(2)}) {
        const File& file = files[i];
        bool answered = false;
        QTimer::singleShot(0, [&answered] { answered = true; });
        DoEventsDecoding(file.path, {150, 100}, [] { return true; });
        EXPECT_TRUE(answered);
        ASSERT_TRUE(std::filesystem::remove(file.path));
        EXPECT_TRUE(LoadPicture(file.path, {150, 100}));
        EXPECT_FALSE(LoadPicture(file.path, {150, 100}));
    }
    DoEventsDecoding(files[1].path, {20, 20}, [] { return true; });
    std::filesystem::remove(files[1].path);
    EXPECT_FALSE(LoadPicture(files[1].path, {21, 20}));
}

TEST_F(Decoding, AYieldInsideAYieldLeavesTheOuterOneItsPicture) {
    QtFixture fixture;
    const File &outer = files[0], &inner = files[2];
    std::optional<Picture> seen;
    QTimer::singleShot(0, [&] {
        DoEventsDecoding(inner.path, inner.atLeast);
        std::filesystem::remove(inner.path);
        seen = LoadPicture(inner.path, inner.atLeast);
    });
    DoEventsDecoding(outer.path, outer.atLeast);
    EXPECT_TRUE(Same(seen, inner.plain));
    std::filesystem::remove(outer.path);
    EXPECT_TRUE(Same(LoadPicture(outer.path, outer.atLeast), outer.plain));
}

TEST_F(Decoding, APictureGivenUpInAYieldIsReadAnewWhenAskedForAfterAll) {
    QtFixture fixture;
    for (const File& file : files) {
        int asked = 0;
        DoEventsDecoding(file.path, file.atLeast, [&asked] { return ++asked < 1; });
        EXPECT_TRUE(LoadPicture(file.path, file.atLeast)) << file.path;
    }
}
