// The menu's switches, the colour of the board, and a restart.
#include <gtest/gtest.h>

#include "tests/support/game_fixture.h"

using namespace PuzzleModule;

TEST(Menu, SwitchesAndColourAreWrittenAtOnceAndReadAtTheNextStart) {
    GameFixture play;
    play.Menu("mnuSounds");
    EXPECT_NE(play.folder.Read("config.ini").find("Som=False"), std::string::npos);
    play.Menu("mnuStatus");
    const auto answer = [&play](std::optional<Color> color) {
        play.desktop.colorAnswers.push_back([color](Color, std::span<Color, 16>) { return color; });
        play.Menu("mnuBackground");
    };
    answer(0x0000FF);
    EXPECT_EQ(play.main.picScreen.Image.At(5, 5), 0xFFFF0000u);  // recoloured without a game, too
    answer(std::nullopt);
    frmMain next;
    next.Form_Load();
    EXPECT_FALSE(next.mnuSounds->Checked());
    EXPECT_FALSE(next.mnuStatus->Checked());
    EXPECT_EQ(next.picScreen.BackColor(), 0x0000FF);
    EXPECT_EQ(next.Surfaces.picBG.Background(), 0xFFFF0000u);
}

TEST(Menu, RestartAsksAndKeepsEverythingUnlessTheAnswerIsYes) {
    GameFixture play;
    play.StartGrid(4, 3);
    play.desktop.Advance(5);
    const State before = play.Snapshot();
    play.Menu("mnuShuffle");
    ASSERT_EQ(play.desktop.boxes.size(), 1u);
    EXPECT_EQ(play.desktop.boxes[0].style, 36);
    EXPECT_EQ(play.Snapshot(), before);
    play.main.HScroll1.DeliverValue(480, false);
    play.desktop.boxAnswers.push_back(MsgBoxResult::Yes);
    play.Menu("mnuShuffle");
    EXPECT_NE(play.Snapshot(), before);
    EXPECT_EQ(play.main.picScreen.Left(), -480);  // the view stays where the player put it
    EXPECT_EQ(ElapsedSeconds, 0);
    EXPECT_TRUE(play.ShowsThePieces());
}
