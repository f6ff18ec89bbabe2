// A scan in the real message loop, and what the player does while one of its pictures is half decoded.
#include <gtest/gtest.h>

#include <QTimer>
#include <utility>

#include "browser/thumbs_ctl.h"
#include "core/game_state.h"
#include "platform/qt/desktop.h"
#include "platform/system/files.h"
#include "tests/platform/qt/fixture.h"
#include "tests/support/picture_files.h"

namespace {

bool IsOpen(const std::string& path) {
    for (const auto& handle : std::filesystem::directory_iterator("/proc/self/fd")) {
        std::error_code gone;
        if (std::filesystem::read_symlink(handle, gone) == path) return true;
    }
    return false;
}

// Has an event ready when a decoding begins.
class ActingDesktop : public QtDesktop {
public:
    int decodings = 0;
    int actIn = 0;  // the number of a decoding
    std::function<void()> act;

    void DoEventsDecoding(const std::string& path, Size atLeast, const std::function<bool()>& wanted) override {
        if (++decodings == actIn)
            QTimer::singleShot(0, this, [this, path] {
                EXPECT_TRUE(IsOpen(path)) << "the event came before or after the decoding";
                act();
            });
        QtDesktop::DoEventsDecoding(path, atLeast, wanted);
    }
};

class Scanning : public testing::Test {
protected:
    Scanning() : before(InstallBackend(&desktop)) {
        PuzzleModule::ResetState();
        PuzzleModule::TileSize = 60;
        PuzzleModule::ThumbsOpen = true;
        thumbs.Place(0, 0, 7650, 3420);
        thumbs.Clear();
        for (int variant = 1; variant <= 5; ++variant) {
            const std::string name = "/" + std::to_string(variant) + ".bmp";
            std::filesystem::create_directory(folder.File(variant <= 3 ? "old" : "new"));
            WritePicture(folder.File(variant <= 3 ? "old" : "new") + name, {220, 150 + variant}, variant);
        }
    }
    ~Scanning() override { InstallBackend(before); }

    void Scan(const std::string& name) {
        std::string path = folder.File(name);
        thumbs.ScanPath(path);
    }

    // Numbers of the pictures on the sheet, in order; -1 for one that shows another's pixels.
    std::vector<int> Shown() {
        std::vector<int> shown;
        for (int16_t k = 1; k <= thumbs.ListCount(); ++k) {
            const std::string path = *thumbs.ItemData(k);
            const Surface& image = thumbs.picInterior.At(k).figure.image;
            const Surface expected = Stretched(LoadPicture(path)->Image, {image.Width(), image.Height()});
            bool same = image.Width() > 50;
            for (int y = 0; y < image.Height(); ++y)
                for (int x = 0; x < image.Width(); ++x) same = same && image.At(x, y) == expected.At(x, y);
            shown.push_back(same ? std::stoi(FileTitle(path)) : -1);
        }
        std::sort(shown.begin(), shown.end());  // the file system's order is any
        return shown;
    }

    const ScratchFolder folder;
    ActingDesktop desktop;
    Backend* const before;
    Label label{"Label1"};
    ThumbsCtl thumbs{"ThumbsCtl1", label};
};

}  // namespace

TEST_F(Scanning, AnotherFolderInMidDecodeLeavesItsOwnPicturesOnly) {
    for (const int in : {1, 2, 3}) {
        desktop.decodings = 0;
        desktop.actIn = in;
        desktop.act = [&] {
            thumbs.Clear();
            Scan("new");
        };
        thumbs.Clear();
        Scan("old");
        EXPECT_EQ(Shown(), (std::vector{4, 5})) << in;
        EXPECT_EQ(desktop.decodings, in + 2) << in;
    }
}

TEST_F(Scanning, ClosingInMidDecodeAddsNothingMore) {
    for (const int in : {1, 2, 3}) {
        desktop.decodings = 0;
        desktop.actIn = in;
        desktop.act = [] { PuzzleModule::ThumbsOpen = false; };
        thumbs.Clear();
        Scan("old");
        EXPECT_EQ(thumbs.ListCount(), in - 1) << in;
        EXPECT_EQ(desktop.decodings, in) << in;
        PuzzleModule::ThumbsOpen = true;
    }
}

TEST_F(Scanning, APictureChosenInMidDecodeIsReadWholeAndTheScanLosesNone) {
    std::optional<Picture> chosen;
    desktop.actIn = 2;
    desktop.act = [&] { chosen = LoadPicture(folder.File("new/5.bmp")); };
    Scan("old");
    ASSERT_TRUE(chosen);
    EXPECT_EQ(chosen->Image.Bounds(), (Rect{0, 0, 220, 155}));
    EXPECT_EQ(Shown(), (std::vector{1, 2, 3}));
}
