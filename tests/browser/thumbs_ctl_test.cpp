// The thumbnail list without a folder: cells, selection, bar, stored properties.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <tuple>

#include "browser/thumbs_ctl.h"
#include "tests/browser/yielding_desktop.h"

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

TEST(PicScroll, LengthAloneLimitsMaxAndLargeStepOfTheVerticalBar) {
    for (const auto& [length, large, max, largeChange] :
         {std::array{32767, 500, 32767, 500}, {32768, 500, 32767, 32767}, {100, 40000, 100, 1}, {-50, 7, -50, 7}}) {
        ScrollBar vertical("V", Orientation::Vertical), horizontal("H", Orientation::Horizontal);
        cPicScroll().SetUpScrollBars(nullptr, vertical, length, 9, large, 1, 1, 1);
        cPicScroll().SetUpScrollBars(&horizontal, vertical, length, 9, large, 40000, 0, 60);
        EXPECT_EQ(vertical.Max(), max) << length;
        EXPECT_EQ(vertical.LargeChange(), largeChange) << length;
        EXPECT_EQ(horizontal.Max(), 32767);       // 40000 is refused
        EXPECT_EQ(horizontal.LargeChange(), 60);  // and the steps after it run
    }
}

TEST_F(ThumbsCtlTest, ThumbnailFillsTheBoxOnOneSideAndItsSizeIsToldInCutPixels) {
    struct Case {
        Size natural;
        double width, height;
        Size pixels;
        const char* text;
    };
    for (const Case& c :
         {Case{{800, 600}, 1635, 1226, {109, 82}, "800 x 599"}, Case{{640, 480}, 1635, 1226, {109, 82}, "639 x 479"},
          Case{{1024, 768}, 1635, 1226, {109, 82}, "1023 x 767"}, Case{{600, 800}, 1125, 1500, {75, 100}, "599 x 800"},
          Case{{1050, 1000}, 1575, 1500, {105, 100}, "1049 x 999"},
          Case{{512, 512}, 1500, 1500, {100, 100}, "512 x 512"}, Case{{120, 40}, 1635, 545, {109, 36}, "119 x 39"},
          Case{{2000, 1}, 1635, 1, {109, 0}, "1999 x 0"}}) {
        AddItems(1, c.natural);
        const int k = thumbs.ListCount();
        const CellSheet::Figure& figure = Cell(k).figure;
        EXPECT_EQ(figure.width, c.width) << c.text;
        EXPECT_EQ(figure.height, c.height) << c.text;
        EXPECT_EQ((Size{figure.image.Width(), figure.image.Height()}), c.pixels) << c.text;
        EXPECT_EQ(thumbs.SizeTexts()[size_t(k)], c.text);
        EXPECT_EQ(figure.left - Cell(k).frame.left, (1725 - c.width) / 2) << c.text;
        EXPECT_EQ(figure.top - Cell(k).frame.top, (1680 - c.height) / 2) << c.text;
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

TEST_F(ThumbsCtlTest, ItemsWaitWithoutCellsUntilAColumnFitsAndOldCellsNeverMove) {
    AddItems(5);
    const double height = thumbs.picInterior.Height();
    thumbs.SetColumnType(1);
    for (const int16_t none : {int16_t(0), int16_t(-3)}) {
        thumbs.SetColumns(none);
        AddItems(1);
    }
    EXPECT_EQ(thumbs.picInterior.UpperBound(), 5);
    EXPECT_EQ(thumbs.picInterior.Height(), height);
    thumbs.SetColumns(3);
    thumbs.SetHeight(3520);  // a new size builds what is missing
    EXPECT_EQ(thumbs.picInterior.UpperBound(), 7);
    EXPECT_EQ(Cell(4).frame.left, 5505);  // laid out in fours
    EXPECT_EQ(Cell(6).frame.left, 3670);  // in threes
    EXPECT_EQ(thumbs.picInterior.Height(), 3 * 1810 + 200);
    thumbs.SetColumns(20);
    AddItems(12);
    EXPECT_EQ(Cell(18).frame.left, 31195);
    EXPECT_EQ(Cell(19).frame.left, 0);  // beyond 16 bits
    EXPECT_EQ(thumbs.scrThumbs.Left(), 7390);
    thumbs.SetWidth(259);  // narrower than the bar with its margins: nothing but the places
    EXPECT_EQ(thumbs.picFundo.Width(), 7390);
    EXPECT_EQ(thumbs.picInterior.Width(), 7390 - 80);
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

    thumbs.SetForeColor(0x445566);  // over black frames too
    EXPECT_EQ(FrameColor(3), 0x445566);
}

TEST_F(ThumbsCtlTest, PointerOnTheSheetBecomesTheListsEvents) {
    AddItems(2);
    std::vector<std::string> events;
    thumbs.ImageMouseDown = [&](int16_t& k, int16_t& button, int16_t&, float& x, float&, std::string& path) {
        events.push_back("down " + std::to_string(k) + " " + std::to_string(button) + " " + std::to_string(int(x)));
        path = "changed";  // a copy
    };
    thumbs.ImageClick = [&](int16_t&, std::string& path) { events.push_back("click " + path); };
    thumbs.ImageDblClick = [&](int16_t&, std::string& path) {
        thumbs.Clear();  // the name outlives its place in the list
        events.push_back("double " + path);
    };
    const float x = 1835 / 15.0f + 10, y = 200 / 15.0f + 40;
    thumbs.picInterior.DeliverMouseDown(1, 0, x, y);
    thumbs.picInterior.DeliverMouseUp(1, 0, x, y);
    thumbs.picInterior.DeliverDblClick(x, y);
    EXPECT_THAT(events, ElementsAre("down 2 1 7", "click /p/2.bmp", "double /p/2.bmp"));
    EXPECT_EQ(thumbs.ListCount(), 0);
}

TEST_F(ThumbsCtlTest, ClearDropsListSelectionAndScrollButNoSizeText) {
    AddItems(40);
    thumbs.scrThumbs.SetValue(9000);
    EXPECT_EQ(thumbs.picInterior.Top(), -9000);
    thumbs.imgFigura_Click(7);
    thumbs.Clear();
    EXPECT_EQ(thumbs.ListCount(), 0);
    EXPECT_EQ(thumbs.ItemIndex(), "0");
    EXPECT_EQ(thumbs.HighlightedIndex(), 0);
    EXPECT_EQ(thumbs.ItemData(0), "");
    EXPECT_EQ(thumbs.ItemData(1), std::nullopt);
    EXPECT_EQ(thumbs.ItemData(-1), std::nullopt);
    EXPECT_EQ(thumbs.SizeTexts().size(), 41u);
    EXPECT_EQ(thumbs.scrThumbs.Max(), 200);
    EXPECT_EQ(thumbs.scrThumbs.Value(), 200);
    EXPECT_EQ(thumbs.scrThumbs.SmallChange(), 80);
    EXPECT_EQ(thumbs.scrThumbs.LargeChange(), 1133);
    AddItems(1);
    EXPECT_EQ(thumbs.scrThumbs.Value(), 0);
    EXPECT_EQ(thumbs.picInterior.Top(), 0);
}

TEST_F(ThumbsCtlTest, WheelMovesByRowsWithinTheBarAndNotAtAllOnAShortSheet) {
    AddItems(8);
    thumbs.picInterior.DeliverWheel(0, -1);
    EXPECT_EQ(thumbs.scrThumbs.Value(), 2 * 1810 + 200 - 3400);
    AddItems(12);
    thumbs.picInterior.DeliverWheel(0, -2);
    EXPECT_EQ(thumbs.scrThumbs.Value(), 420 + 2 * 1790);
    thumbs.picInterior.DeliverWheel(0, 9);
    EXPECT_EQ(thumbs.scrThumbs.Value(), 0);
    thumbs.Clear();
    AddItems(1);
    thumbs.picInterior.DeliverWheel(0, -1);
    EXPECT_EQ(thumbs.scrThumbs.Value(), 0);
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

TEST_F(ThumbsCtlTest, StoredPropertiesComeBackAndDefaultsAreNotStored) {
    PropertyBag plain, bag, odd;
    thumbs.UserControl_WriteProperties(plain);
    std::vector<std::string> marks;
    thumbs.PropertyChanged = [&](const std::string& name) { marks.push_back(name); };
    thumbs.SetBackColor(0xFFFFFF);
    thumbs.SetForeColor(0x010203);
    thumbs.SetPath("/fotos");
    thumbs.SetColumns(6);
    thumbs.SetColumnType(2);
    thumbs.SetImageToolTip(false);
    EXPECT_THAT(marks, ElementsAre("BackColor", "ForeColor", "Path", "ColumnType"));
    thumbs.UserControl_WriteProperties(bag);
    for (const char* name : {"BackColor", "ForeColor", "Path", "Columns", "ColumnType", "ImageToolTip"})
        EXPECT_TRUE(!plain.Holds(name) && bag.Holds(name)) << name;

    ThumbsCtl other("other", label);
    const auto all = [&other] {
        return std::tuple(other.BackColor(), other.picInterior.BackColor(), other.ForeColor(), other.Path(),
                          other.Columns(), other.ColumnType(), other.ImageToolTip());
    };
    other.UserControl_ReadProperties(bag);
    EXPECT_EQ(all(), std::tuple(0xFFFFFF, 0xFFFFFF, 0x010203, "/fotos", 6, 2, false));
    odd.WriteProperty("Columns", 70000, 1);
    odd.WriteProperty("ColumnType", std::string("dois"), std::string());
    other.UserControl_ReadProperties(odd);  // what does not convert is skipped, what is absent has its default
    EXPECT_EQ(all(), std::tuple(0x808080, 0x808080, 0xC0C0C0, "", 6, 2, true));
}
