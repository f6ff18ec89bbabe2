// The menu, its switches, the colour of the board, and the clock's text.
#include <gtest/gtest.h>

#include "tests/support/game_fixture.h"

using namespace PuzzleModule;

TEST(Menu, ItemsAreGreyedAtTheOpeningAndOnlyThere) {
    GameFixture play;
    const auto enabled = [&play] {
        std::string text;
        for (const char* name : {"mnuSaveGame", "mnuShuffle", "mnuHints", "MnDesistir"})
            text += play.Item(name).Enabled() ? '1' : '0';
        return text;
    };
    const auto opened = [&] { return play.Menu("mnuGame"), play.Menu("mnuOptions"), enabled(); };
    EXPECT_EQ(enabled(), "1111");
    EXPECT_EQ(opened(), "0000");
    play.StartGrid(2, 2);
    EXPECT_EQ(enabled(), "0000");  // a shortcut follows the last opening
    EXPECT_EQ(opened(), "1111");
    play.Menu("MnDesistir");
    EXPECT_EQ(enabled(), "1111");
    EXPECT_EQ(opened(), "0100");
    play.desktop.boxAnswers.push_back(MsgBoxResult::Yes);
    play.Menu("mnuShuffle");
    play.SolveAllButLast(220, 220);
    play.Drag(1, 1, 220 + CellSize, 220 + CellSize);
    EXPECT_EQ(opened(), "0100");
}

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
    const GameFixture::State before = play.Snapshot();
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
    EXPECT_EQ(play.ShownBoard(), play.ComposedBoard());
}

TEST(Clock, GoesOnInWholeHoursPastEveryNarrowNumber) {
    GameFixture play;
    play.StartGrid(2, 2);
    const std::pair<int32_t, const char*> cases[] = {
        {59, "00:00:59"},    {60, "00:01:00"},      {3600, "01:00:00"},          {32767, "09:06:07"},
        {32768, "09:06:08"}, {360000, "100:00:00"}, {INT32_MAX, "596523:14:07"}, {INT32_MAX, "596523:14:07"}};
    for (const auto& [seconds, text] : cases) {
        ElapsedSeconds = std::max(ElapsedSeconds, seconds - 1);
        play.main.Timer1_Timer();
        EXPECT_EQ(play.main.lblElapsed.Caption(), std::string("Fácil - ") + text);
    }
}
