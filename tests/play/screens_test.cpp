// Every size of screen with every level and every shape of photograph: a game starts, the player can bring
// each of its pieces under the pointer, and he wins it.
#include <gtest/gtest.h>

#include <algorithm>

#include "tests/support/game_fixture.h"

using namespace PuzzleModule;

namespace {

// Brings a bar as near as it goes to showing `at` in the middle; whether it then is in the window, clear of the bars.
bool Shows(ScrollBar& bar, double at, double window) {
    bar.DeliverValue(int(at - window / 2), false);
    return at >= bar.Value() && at < bar.Value() + window;
}

// A game starts, the middle of each piece can be brought into the window, and the player wins.
void PlayOn(GameFixture& play, int level, Size photograph) {
    SCOPED_TRACE(testing::Message() << "level " << level << ", " << photograph.width << " x " << photograph.height);
    frmMain& main = play.main;
    ASSERT_TRUE(play.Start(play.AddPicture("photo.bmp", photograph), int16_t(level)));
    EXPECT_TRUE(int(Pieces.size()) == GridCols * GridRows && std::min(GridCols, GridRows) >= 2);
    // No more of the screen than a good fifth, the cells by which the grid is rounded up not counted.
    EXPECT_LE((GridCols - 1) * (GridRows - 1) * CellSize * CellSize * 4.4, double(ScreenWidthPx) * ScreenHeightPx);
    for (const PieceRec& piece : std::as_const(Pieces)) {
        const int x = piece.X + TileSize / 2, y = piece.Y + TileSize / 2;
        EXPECT_TRUE(main.picScreen.Image.Bounds().Contains(x, y) && Shows(main.HScroll1, x, main.ScaleWidth() - 17) &&
                    Shows(main.VScroll1, y, main.ScaleHeight() - 17));
    }
    EXPECT_TRUE(play.Win());
}

class Screens : public testing::TestWithParam<Size> {};
INSTANTIATE_TEST_SUITE_P(AllSizes, Screens,
                         testing::Values(Size{800, 600}, Size{1024, 768}, Size{1366, 768}, Size{1920, 1080},
                                         Size{2560, 1440}, Size{3840, 2160}));

}  // namespace

TEST_P(Screens, EveryLevelAndShapeStartsShowsEveryPieceByScrollingAndIsWon) {
    GameFixture play(GetParam());
    for (const int level : {0, 1, 3, 4, 5})
        for (const Size photograph : {Size{4000, 3000}, {6000, 4000}, {3840, 2160}, {4000, 1800}, {3000, 4000}})
            PlayOn(play, level, photograph);
    // The board belongs to the primary screen; maximised on a larger one the window loses no piece beside the board.
    play.main.DeliverResize({3840, 2110});
    for (const int level : {0, 1, 3, 4, 5}) PlayOn(play, level, {6000, 4000});
    EXPECT_EQ(play.main.ScaleWidth(), 3840);
}
