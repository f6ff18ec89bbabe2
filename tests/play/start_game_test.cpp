// Starting a game: what the player gets, and what stays as it was when nothing comes of it.
#include <gtest/gtest.h>

#include "browser/frm_thumbs.h"
#include "tests/support/game_fixture.h"

using namespace PuzzleModule;

TEST(StartGame, PictureOf800By600On1024By768MakesFortyEightPieces) {
    GameFixture play({1024, 768});
    ASSERT_TRUE(play.Start(play.AddPicture("a.bmp", {800, 600}), 3));
    EXPECT_EQ(Pieces.size(), 48u);
    // The picture in a white frame one pixel wide, the rest of the whole cells black.
    const Surface& master = play.main.Surfaces.picMaster;
    EXPECT_EQ(master.Bounds(), (Rect{0, 0, 528, 396}));
    EXPECT_EQ(master.At(0, 200), BlackPixel);
    EXPECT_EQ(master.At(1, 200), WhitePixel);
    EXPECT_NE(master.At(2, 200), WhitePixel);
    EXPECT_EQ(master.At(300, 0), WhitePixel);

    EXPECT_TRUE(GameRunning);
    EXPECT_TRUE(play.main.Timer1.Enabled());
    EXPECT_TRUE(play.main.picStatus.Visible());
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

TEST(StartGame, FailureLeavesTheWholeGameOnTheBoardAsItWas) {
    struct Case {
        const char* name;
        Size picture;  // nothing: does not decode
        const char* message;
    };
    for (const Case& wrong : {Case{"small.bmp", {60, 60}, "A imagem selecionada é muito pequena!"},
                              Case{"narrow.bmp", {30, 400}, "A imagem selecionada é muito pequena!"},
                              Case{"broken.bmp", {}, nullptr}, Case{"huge.bmp", {40000, 300}, nullptr}}) {
        SCOPED_TRACE(wrong.name);
        GameFixture play;
        play.StartGrid(4, 3, 3);
        play.desktop.Advance(12);
        GameFixture::State before = play.Snapshot();
        before["clock runs"] = "0";
        const uint64_t board = play.ComposedBoard();
        const std::string path = wrong.picture.width ? play.AddPicture(wrong.name, wrong.picture)
                                                     : play.folder.Write(wrong.name, "no picture");
        EXPECT_FALSE(play.Start(path, 1));

        EXPECT_EQ(play.Snapshot(), before);
        EXPECT_EQ(PicturePath, path);
        EXPECT_EQ(ChosenLevel, 1);
        EXPECT_FALSE(play.main.picStatus.Visible());
        EXPECT_TRUE(play.main.picScreen.Image.IsUniform());
        ASSERT_EQ(play.desktop.boxes.size(), wrong.message ? 1u : 0u);
        if (wrong.message) {
            EXPECT_EQ(play.desktop.boxes[0].text, wrong.message);
            EXPECT_EQ(play.desktop.boxes[0].style, 16);
        }
        // The next composition brings the pieces back.
        EXPECT_EQ(play.ComposedBoard(), board);
        play.Click(play.Middle(0, 0), 1);
        EXPECT_EQ(play.ShownBoard(), play.ComposedBoard());
    }
}

// --- The menu's step and the dialog ----------------------------------------------------------

class NewGame : public testing::Test {
protected:
    // Opens the dialog at level 5 over a game of level 3 and lets `act` run in it.
    void Open(const std::function<void(frmThumbs&)>& act) {
        play.StartGrid(4, 3, 3);
        before = play.Snapshot();
        play.desktop.Post([this, act] { act(dynamic_cast<frmThumbs&>(*play.desktop.shown.back())); });
        play.Menu("mnuNewGame(5)");
        EXPECT_EQ(play.desktop.modalTrouble, "");
    }
    GameFixture play;
    GameFixture::State before;
};

TEST_F(NewGame, DialogSeesTheNewSizesAndClosingItBringsTheOldOnesBack) {
    LevelSizes seen;
    Open([&seen](frmThumbs& dialog) {
        seen = CurrentSizes();
        dialog.Unload();
    });
    EXPECT_EQ(seen, SizesOfLevel(5, 1920));
    EXPECT_EQ(play.Snapshot(), before);
    EXPECT_EQ(ChosenLevel, 5);
}

TEST_F(NewGame, AcceptedPictureIsAGameOfTheNewLevel) {
    std::string path = play.AddPicture("good.bmp", {300, 200});
    Open([&path](frmThumbs& dialog) {
        int16_t index = 1;
        dialog.StartGame(index, path);
    });
    EXPECT_EQ(CurrentSizes(), SizesOfLevel(5, 1920));
    EXPECT_EQ(GameLevel, 5);
    EXPECT_EQ(BoardPicturePath, path);
    EXPECT_EQ(ElapsedSeconds, 0);
    EXPECT_TRUE(GameRunning);
    EXPECT_EQ(play.main.Surfaces.picMasks[1].Height(), TileSize);
}
