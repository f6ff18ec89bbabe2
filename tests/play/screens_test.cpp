// Every size of screen with every level and every shape of photograph: a game starts, the player can bring
// each of its pieces under the pointer, and he wins it.
#include <gtest/gtest.h>

#include "tests/support/game_fixture.h"

using namespace PuzzleModule;

namespace {

// A game starts, is saved and restored as it was, the middle of each piece can be brought into the window,
// clear of the bars, and the player wins.
void PlayOn(GameFixture& play, int level, Size photograph) {
    SCOPED_TRACE(testing::Message() << "level " << level << ", " << photograph.width << " x " << photograph.height);
    frmMain& main = play.main;
    ASSERT_TRUE(play.Start(play.AddPicture("photo.bmp", photograph), int16_t(level)));
    const std::vector<PieceRec> saved = Pieces;
    play.desktop.fileAnswers = {play.folder / "a.pzl", play.folder / "a.pzl"};
    play.Menu("mnuSaveGame"), play.Menu("mnuLoadGame");
    EXPECT_EQ(std::vector<PieceRec>(Pieces), saved);
    for (const PieceRec& piece : std::as_const(Pieces)) {
        const int x = piece.X + TileSize / 2, y = piece.Y + TileSize / 2;
        main.HScroll1.DeliverValue(x - 300, false), main.VScroll1.DeliverValue(y - 300, false);
        const Rect shown{main.HScroll1.Value(), main.VScroll1.Value(), int(main.ScaleWidth()) - 17,
                         int(main.ScaleHeight()) - 17};
        EXPECT_TRUE(main.picScreen.Image.Bounds().Contains(x, y) && shown.Contains(x, y));
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
        for (const Size photograph : {Size{6000, 4000}, {4000, 1800}, {3000, 4000}}) PlayOn(play, level, photograph);
}
