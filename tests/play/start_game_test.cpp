// Starting a game: what the player gets.
#include <gtest/gtest.h>

#include "browser/frm_thumbs.h"
#include "tests/support/game_fixture.h"

using namespace PuzzleModule;

TEST(StartGame, PictureOf800By600On1024By768MakesFortyEightPieces) {
    GameFixture play({1024, 768});
    play.StartGrid(3, 2, 5);
    play.desktop.Advance(5);
    std::string path = play.AddPicture("a.bmp", {800, 600});
    play.desktop.Post([&] {
        int16_t index = 1;
        dynamic_cast<frmThumbs&>(*play.desktop.shown.back()).StartGame(index, path);
    });
    play.Menu("mnuNewGame(3)");
    EXPECT_EQ(Pieces.size(), 48u);
    EXPECT_EQ(CurrentSizes(), SizesOfLevel(3, 1024));
    EXPECT_TRUE(GameLevel == 3 && ElapsedSeconds == 0 && BoardPicturePath == path);
    // The picture in a white frame one pixel wide, the rest of the whole cells black.
    const Surface& master = play.main.Surfaces.picMaster;
    EXPECT_EQ(master.Bounds(), (Rect{0, 0, 528, 396}));
    EXPECT_EQ(master.At(0, 200), BlackPixel);
    EXPECT_EQ(master.At(1, 200), WhitePixel);
    EXPECT_NE(master.At(2, 200), WhitePixel);
    EXPECT_EQ(master.At(300, 0), WhitePixel);

    EXPECT_TRUE(GameRunning && play.main.Timer1.Enabled() && play.main.picStatus.Visible());
}

TEST(StartGame, StageIsClearedBeforeThePictureIsRead) {
    GameFixture play;
    play.StartGrid(3, 2);
    const std::string next = play.AddPicture("next.bmp", {400, 300}, 1);
    bool cleared = false;
    play.desktop.PostInput([] { ADD_FAILURE() << "input reached the game while it was built"; });
    const int decoded = play.desktop.decodes;
    play.main.StartGame(next, [&] {
        cleared = !play.main.picStatus.Visible() && play.desktop.decodes == decoded &&
                  play.main.Pointer() == MousePointer::Default;
    });
    EXPECT_EQ(play.desktop.decodes, decoded + 1);
    EXPECT_TRUE(cleared);
}
