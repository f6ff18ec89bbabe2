// The thumbnail list without a folder: cells, selection, bar.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>

#include "browser/thumbs_ctl.h"
#include "tests/support/yielding_desktop.h"

using testing::ElementsAre;

namespace {

constexpr Color Grey = 0xC0C0C0, Black = 0;

// As large as in the dialog: a sheet of four columns, a bar of 3400.
class ThumbsCtlTest : public testing::Test {
protected:
    ThumbsCtlTest() {
        PuzzleModule::TileSize = 80;
        thumbs.Place(0, 0, 7650, 3420);
        thumbs.Clear();
    }
    void AddItems(int count, Size natural = {40, 30}) {
        for (int i = 0; i < count; ++i) {
            const std::string path = "/p/" + std::to_string(thumbs.ListCount() + 1) + ".bmp";
            desktop.Add(path, natural);
            thumbs.AddItem(path);
        }
    }
    const CellSheet::Cell& Cell(int k) { return thumbs.picInterior.At(k); }
    Color FrameColor(int k) { return Cell(k).frame.backColor; }

    YieldingDesktop desktop;
    Label label{"Label1"};
    ThumbsCtl thumbs{"ThumbsCtl1", label};
};

}  // namespace

TEST_F(ThumbsCtlTest, ThumbnailFillsTheBoxOnOneSideAndItsSizeIsToldInCutPixels) {
    struct Case {
        Size natural;
        double width, height;
        Size pixels;
        const char* text;
    };
    for (const Case& c :
         {Case{{800, 600}, 1635, 1226, {109, 82}, "800 x 599"}, Case{{640, 480}, 1635, 1226, {109, 82}, "639 x 479"},
          Case{{600, 800}, 1125, 1500, {75, 100}, "599 x 800"},
          Case{{1050, 1000}, 1575, 1500, {105, 100}, "1049 x 999"},
          Case{{512, 512}, 1500, 1500, {100, 100}, "512 x 512"}, Case{{120, 40}, 1635, 545, {109, 36}, "119 x 39"},
          Case{{2000, 1}, 1635, 1, {109, 0}, "1999 x 0"}}) {
        AddItems(1, c.natural);
        const int k = thumbs.ListCount();
        const CellSheet::Figure& figure = Cell(k).figure;
        EXPECT_EQ(std::pair(figure.width, figure.height), std::pair(c.width, c.height)) << c.text;
        EXPECT_EQ(figure.image.Bounds(), (Rect{0, 0, c.pixels.width, c.pixels.height})) << c.text;
        EXPECT_EQ(thumbs.SizeTexts()[size_t(k)], c.text);
        EXPECT_EQ(figure.left - Cell(k).frame.left, (1725 - c.width) / 2) << c.text;
        EXPECT_EQ(figure.top - Cell(k).frame.top, (1680 - c.height) / 2) << c.text;
    }
}

TEST_F(ThumbsCtlTest, ThumbnailsKeepThePixelsOfTheDisplayAsFarAsTheBarReaches) {
    Form form("form", "", ScaleMode::Twips, FormBorder::FixedDialog);
    form.AddChild(thumbs);
    desktop.scale = 1.5;
    AddItems(85, {800, 600});
    for (const auto& [k, width, height] : {std::array{1, 164, 123}, {84, 164, 123}, {85, 109, 82}}) {
        EXPECT_EQ(Cell(k).figure.image.Bounds(), (Rect{0, 0, width, height})) << k;
        EXPECT_EQ(Cell(k).figure.width, 1635);
    }
}

TEST_F(ThumbsCtlTest, RowsOfFourDownToTheTwentiethWhereTheBarKeepsItsEnd) {
    AddItems(1);
    EXPECT_EQ(thumbs.picInterior.Height(), 2010);
    EXPECT_EQ(thumbs.scrThumbs.Max(), -1390);
    AddItems(75);
    EXPECT_EQ(thumbs.scrThumbs.Max(), 19 * 1810 + 200 - 3400);
    AddItems(2);
    EXPECT_EQ(thumbs.picInterior.Height(), 20 * 1810 + 200);
    EXPECT_EQ(thumbs.scrThumbs.Max(), 19 * 1810 + 200 - 3400);
    for (const auto& [k, left, top] : {std::array{1, 0, 200}, {4, 5505, 200}, {5, 0, 1990}, {78, 1835, 34210}}) {
        EXPECT_EQ(Cell(k).frame.left, left) << k;
        EXPECT_EQ(Cell(k).frame.top, top) << k;
        EXPECT_TRUE(Cell(k).frame.visible && Cell(k).figure.visible) << k;
    }
}

TEST_F(ThumbsCtlTest, SelectionTurnsTheOldFrameGreyThenTheNewOneBlackThenTells) {
    thumbs.SetForeColor(0x112233);
    AddItems(3);
    std::vector<std::string> events;
    thumbs.ImageClick = [&](int16_t& PicIndex, std::string& Filename) {
        EXPECT_EQ(FrameColor(PicIndex), Black);
        events.push_back("click " + Filename);
    };
    thumbs.ImageDblClick = [&](int16_t&, std::string& Filename) { events.push_back("double " + Filename); };

    EXPECT_EQ(FrameColor(2), 0x112233);
    thumbs.imgFigura_Click(2);
    thumbs.lblFigura_Click(3);
    EXPECT_EQ(FrameColor(1), 0x112233);
    EXPECT_EQ(FrameColor(2), Grey);
    EXPECT_EQ(FrameColor(3), Black);
    thumbs.imgFigura_DblClick(1);  // selects, but leaves the frames
    EXPECT_EQ(thumbs.ItemIndex(), "1");
    EXPECT_EQ(thumbs.HighlightedIndex(), 3);
    thumbs.imgFigura_Click(9);  // no such item: the old frame is left, nobody is told
    EXPECT_EQ(FrameColor(3), Grey);
    thumbs.imgFigura_DblClick(9);
    EXPECT_THAT(events, ElementsAre("click /p/2.bmp", "click /p/3.bmp", "double /p/1.bmp"));
}

TEST_F(ThumbsCtlTest, PointerOnTheSheetBecomesTheListsEvents) {
    AddItems(2);
    std::vector<std::string> events;
    thumbs.ImageMouseDown = [&](int16_t& k, int16_t& button, int16_t&, float& x, float&, std::string& path) {
        events.push_back("down " + std::to_string(k) + " " + std::to_string(button) + " " + std::to_string(int(x)));
        path = "changed";  // a copy
    };
    thumbs.ImageClick = [&](int16_t&, std::string& path) { events.push_back("click " + path); };
    thumbs.ImageDblClick = [&](int16_t&, std::string& path) { events.push_back("double " + path); };
    thumbs.ImageMouseUp = [&](int16_t& k, int16_t&, int16_t&, float& x, float&, std::string& path) {
        if (!events.back().starts_with("down")) thumbs.Clear();  // the name outlives its place in the list
        events.push_back("up " + std::to_string(k) + " " + std::to_string(int(x)) + " " + path);
    };
    const float x = 1835 / 15.0f + 10, y = 200 / 15.0f + 40;
    thumbs.picInterior.DeliverMouseDown(1, 0, x, y);
    thumbs.picInterior.DeliverMouseUp(1, 0, x, y);
    thumbs.picInterior.DeliverDblClick(x, y);
    thumbs.picInterior.DeliverMouseUp(1, 0, x + 1, y);
    // In twips of the thumbnail.
    EXPECT_THAT(events, ElementsAre("down 2 1 110", "up 2 110 /p/2.bmp", "click /p/2.bmp", "double /p/2.bmp",
                                    "up 2 125 /p/2.bmp"));
    EXPECT_EQ(thumbs.ListCount(), 0);
}

TEST(SetBarRange, NegativeBecomesZeroAndTooLongLeavesTheEnd) {
    for (const auto& [given, left, max] :
         {std::array{-5, 0, 0}, {31999, 31999, 31999}, {32000, 32000, 32767}, {200, 200, 200}}) {
        ScrollBar bar("V", Orientation::Vertical);
        int32_t length = given;
        ThumbsCtl::SetBarRange(bar, length, 0, 40);  // a small step of 0 is refused
        EXPECT_EQ(length, left);
        EXPECT_EQ(bar.Max(), max);
        EXPECT_EQ(bar.SmallChange(), 1);
        EXPECT_EQ(bar.LargeChange(), 40);
    }
}
