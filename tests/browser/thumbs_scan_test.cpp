// Scanning real folders, and what the player can do in the middle of a scan.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "browser/thumbs_ctl.h"
#include "platform/system/files.h"
#include "tests/support/temp_folder.h"
#include "tests/support/yielding_desktop.h"

using testing::UnorderedElementsAre;

namespace {

// Notes each time the label comes and goes.
class LabelWatch : public Peer {
public:
    LabelWatch(Label& label, std::vector<bool>& seen) : label_(label), seen_(seen) {}
    void Mirror(Aspect aspect) override {
        if (aspect == Aspect::Visible) seen_.push_back(label_.Visible());
    }

private:
    Label& label_;
    std::vector<bool>& seen_;
};

class ThumbsScanTest : public testing::Test {
protected:
    ThumbsScanTest() {
        PuzzleModule::TileSize = 60;
        PuzzleModule::ThumbsOpen = true;
        label.SetVisible(false);
        label.AttachPeer(std::make_unique<LabelWatch>(label, labelSeen));
        thumbs.Place(0, 0, 7650, 3420);
        thumbs.Clear();
    }
    void Scan(std::string path) { thumbs.ScanPath(path); }
    std::vector<std::string> Items() {
        std::vector<std::string> items;
        for (int16_t k = 1; k <= thumbs.ListCount(); ++k) items.push_back(FileTitle(*thumbs.ItemData(k)));
        return items;
    }

    TempFolder folder;
    YieldingDesktop desktop;
    Label label{"Label1"};
    ThumbsCtl thumbs{"ThumbsCtl1", label};
    std::vector<bool> labelSeen;
};

}  // namespace

TEST_F(ThumbsScanTest, NameEndingsAloneDecide) {
    for (const char* name : {"foto.JpG", "a.bmp", "b.GIF", ".jpg", "foto.jpeg", "foto.png", "jpg", "bmp.txt"})
        folder.Write(name, "");
    folder.MakeFolder("ferias.jpg");
    std::string path = folder.Path();
    thumbs.ScanPath(path);
    EXPECT_EQ(path, folder.WithSlash());
    EXPECT_THAT(Items(), UnorderedElementsAre("foto.JpG", "a.bmp", "b.GIF", "ferias.jpg"));
    thumbs.ScanPath(path);  // adds, and has its separator already
    EXPECT_EQ(path, folder.WithSlash());
    EXPECT_EQ(thumbs.ListCount(), 8);
}

TEST_F(ThumbsScanTest, WhatDoesNotDecodeShowsTheLastPictureThatDid) {
    const std::string good = WritePicture(folder / "boa.bmp", {80, 60});
    const std::string bad = folder.Write("ruim.jpg", std::string(5 * 1024 - 1, 'x'));
    const std::string dir = folder.MakeFolder("pasta.gif");
    for (const std::string& path : {bad, good, dir, bad}) thumbs.AddItem(path);

    const auto figure = [this](int k) -> const CellSheet::Figure& { return thumbs.picInterior.At(k).figure; };
    EXPECT_EQ(figure(1).toolTip, "ruim.jpg (4k) - 0 x 0");
    EXPECT_TRUE(figure(1).image.IsUniform());
    EXPECT_EQ(std::pair(figure(1).width, figure(1).height), std::pair(1635.0, 1500.0));
    EXPECT_FALSE(figure(2).image.IsUniform());
    EXPECT_EQ(thumbs.picInterior.At(3).frame.toolTip, "pasta.gif (0k) - 80 x 60");
    EXPECT_EQ(figure(4).toolTip, "ruim.jpg (4k) - 80 x 60");
    for (const int k : {3, 4})
        for (int x = 0; x < 109; x += 9)
            EXPECT_EQ(figure(k).image.At(x, 40), figure(2).image.At(x, 40)) << k << " " << x;
}

TEST_F(ThumbsScanTest, LabelComesWithTheFirstPictureAfterFourTenthsAndGoesWithTheScan) {
    struct Case {
        std::vector<double> seconds;  // each picture takes to decode
        std::vector<bool> seen;
    };
    int number = 0;
    for (const Case& c :
         {Case{{}, {}}, Case{{0.1, 0.29}, {}}, Case{{0.2, 0.2}, {true, false}}, Case{{0.5, 0.5, 0.5}, {true, false}}}) {
        const std::string name = std::to_string(++number);
        folder.MakeFolder(name);
        for (size_t i = 0; i < c.seconds.size(); ++i)
            desktop.pictures[folder.Write(name + "/" + std::to_string(i) + ".bmp", "x")] = {
                {9, 9}, [&, i](Size size) {
                    desktop.Advance(c.seconds[i]);
                    return PatternSurface(size);
                }};
        for (int i = 0; i < 50; ++i) folder.Write(name + "/" + std::to_string(i) + ".txt", "x");
        desktop.onYield = [&](int) {
            if (c.seconds.empty()) desktop.Advance(1);  // time alone shows nothing
        };
        labelSeen.clear();
        Scan(folder / name);
        EXPECT_EQ(labelSeen, c.seen) << name;
        EXPECT_FALSE(label.Visible());
    }
}

// A scan of two pictures yields six times or more; the other folder is chosen in each of them.
TEST_F(ThumbsScanTest, OuterScanEndsWithoutAnotherItemWhereverTheNewOneBegins) {
    for (const char* name : {"velha/v1.bmp", "velha/v2.bmp", "nova/n1.bmp", "nova/n2.bmp", "nova/n3.bmp"})
        folder.Write(name, PatternBmp({6, 4}));
    folder.MakeFolder("vazia");
    for (const char* next : {"nova", "vazia", "nirgendwo"}) {
        int before = 1;
        for (int turn = 1; before > 0; ++turn) {
            ASSERT_LT(turn, 50);
            before = 0;
            const int start = desktop.yields;
            desktop.onYield = [&](int yield) {
                if (yield - start != turn || before > 0) return;
                before = turn;
                desktop.Advance(1);
                labelSeen.clear();
                thumbs.Clear();
                Scan(folder / next);
            };
            thumbs.Clear();
            Scan(folder / "velha");
            if (before == 0) break;
            const size_t expected = next == std::string("nova") ? 3 : 0;
            EXPECT_TRUE(labelSeen.empty()) << "flashes after yield " << turn;
            EXPECT_EQ(Items().size(), expected) << next << " in yield " << turn;
            for (const std::string& item : Items()) EXPECT_EQ(item[0], 'n') << "yield " << turn;
            EXPECT_EQ(thumbs.picInterior.UpperBound(), int(expected)) << next << " in yield " << turn;
        }
    }
}
