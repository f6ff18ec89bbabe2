// Every size of screen with every level and every shape of photograph: a game starts, the player can bring
// each of its pieces under the pointer, and he wins it.
#include <gtest/gtest.h>

#include <algorithm>

#include "tests/support/game_fixture.h"

using namespace PuzzleModule;

namespace {

constexpr Size Sizes[] = {{800, 600}, {1024, 768}, {1366, 768}, {1920, 1080}, {2560, 1440}, {3840, 2160}};
constexpr int16_t Levels[] = {0, 1, 3, 4, 5};
constexpr Size Photographs[] = {{4000, 3000}, {6000, 4000}, {3840, 2160}, {4000, 1800}, {3000, 4000}};

// Brings a bar as near as it goes to showing `at` in the middle; where `at` then is in the window.
double Shown(ScrollBar& bar, double at, double window) {
    bar.DeliverValue(int(at - window / 2), false);
    return at - bar.Value();
}

// The pieces of which no spot in the middle of the body can be brought into the window, clear of the bars.
int OutOfReach(frmMain& main) {
    const double width = main.ScaleWidth() - main.VScroll1.PixelRect().width;
    const double height = main.ScaleHeight() - main.HScroll1.PixelRect().height;
    int count = 0;
    for (const PieceRec& piece : Pieces) {
        const double x = Shown(main.HScroll1, piece.X + TileSize / 2, width);
        const double y = Shown(main.VScroll1, piece.Y + TileSize / 2, height);
        const bool onBoard = main.picScreen.Image.Bounds().Contains(piece.X + TileSize / 2, piece.Y + TileSize / 2);
        if (!onBoard || x < 0 || y < 0 || x >= width || y >= height) ++count;
    }
    return count;
}

class Screens : public testing::TestWithParam<Size> {};

}  // namespace

TEST_P(Screens, EveryLevelAndShapeStartsShowsEveryPieceByScrollingAndIsWon) {
    GameFixture play(GetParam());
    for (const int16_t level : Levels)
        for (const Size photograph : Photographs) {
            SCOPED_TRACE(testing::Message()
                         << "level " << level << ", " << photograph.width << " x " << photograph.height);
            ASSERT_TRUE(play.Start(play.AddPicture("photo.bmp", photograph), level));
            ASSERT_TRUE(GameRunning);
            EXPECT_EQ(int(Pieces.size()), GridCols * GridRows);
            EXPECT_GE(std::min(GridCols, GridRows), 2);
            // No more of the screen than a good fifth, the cells by which the grid is rounded up not counted.
            EXPECT_LE((GridCols - 1) * (GridRows - 1) * CellSize * CellSize * 4.4,
                      double(GetParam().width) * GetParam().height);
            EXPECT_EQ(OutOfReach(play.main), 0);
            EXPECT_TRUE(PlayToTheEnd(play.main));
            EXPECT_EQ(play.desktop.boxes.size(), 1u);
            play.desktop.boxes.clear();
        }
}

// The board belongs to the primary screen; the window may be maximised on a larger one.
TEST(LargerMonitor, LosesNoPieceBesideTheBoard) {
    for (const Size primary : {Size{800, 600}, {1366, 768}, {1920, 1080}}) {
        GameFixture play(primary);
        play.main.DeliverResize({3840, 2110});
        for (const int16_t level : Levels) {
            SCOPED_TRACE(testing::Message() << "level " << level << ", primary " << primary.width);
            ASSERT_TRUE(play.Start(play.AddPicture("photo.bmp", {6000, 4000}), level));
            ASSERT_EQ(play.main.ScaleWidth(), 3840);
            EXPECT_EQ(OutOfReach(play.main), 0);
            EXPECT_TRUE(PlayToTheEnd(play.main));
        }
    }
}

INSTANTIATE_TEST_SUITE_P(AllSizes, Screens, testing::ValuesIn(Sizes), [](const auto& screen) {
    return std::to_string(screen.param.width) + "x" + std::to_string(screen.param.height);
});
