// Playing through the real handlers: wins and holds that no script can tell.
#include <gtest/gtest.h>

#include "tests/support/game_fixture.h"

using namespace PuzzleModule;

TEST(Winning, BoardIsOnTheScreenAndTheGameOverBeforeTheBoxOpens) {
    GameFixture play;
    play.StartGrid(2, 2);
    play.SolveAllButLast(220, 220);
    bool ready = false;
    play.desktop.whileModal = [&] {
        ready = play.desktop.frames == 1 && !GameRunning && !play.main.Timer1.Enabled() && play.ShowsThePieces();
    };
    play.Drag(1, 1, 220 + CellSize, 220 + CellSize);
    EXPECT_TRUE(ready);
}

TEST(Keys, ScrollTheBoardLikeTheBarsUnlessAPieceIsHeld) {
    GameFixture play;
    play.StartGrid(2, 2);
    std::string views;
    for (const Key key : {Key::Left, Key::Right, Key::Down, Key::Up, Key::End, Key::Down, Key::PageUp, Key::Home,
                          Key::PageDown, Key::Escape}) {
        play.main.DeliverKeyDown(key);
        views += std::to_string(play.main.HScroll1.Value()) + "," + std::to_string(play.main.VScroll1.Value()) + " ";
    }
    EXPECT_EQ(views, "224,135 240,135 240,151 240,135 240,320 240,320 240,107 240,0 240,213 240,213 ");
    play.main.HScroll1.DeliverWheel({0, 1}), play.main.VScroll1.DeliverWheel({-1, 0});
    EXPECT_EQ(play.main.HScroll1.Value(), 240 - 66 + 66) << "the wheel over the lower bar turns sideways";
    play.Press(play.Middle(1, 1));
    play.main.DeliverKeyDown(Key::End);
    EXPECT_EQ(play.main.VScroll1.Value(), 213);
}

TEST(ReleaseHold, CommandIsAbandonedIfTheReleaseCompletesTheGame) {
    for (const char* command : {"mnuShuffle", "mnuSaveGame", "mnuLoadGame", "mnuNewGame(3)", "mnuBackground",
                                "mnuHowToPlay", "mnuAbout", "MnDesistir"}) {
        GameFixture play;
        play.StartGrid(2, 2);
        play.SolveAllButLast(220, 220);
        play.desktop.colorAnswers.push_back([command](Color, std::span<Color, 16>) {
            ADD_FAILURE() << "a colour was asked for by " << command;
            return std::nullopt;
        });
        play.Press(play.Middle(1, 1));
        play.Move({float(220 + CellSize + TileSize / 2), float(220 + CellSize + TileSize / 2)});
        play.desktop.log.clear();
        play.Key(command);
        EXPECT_FALSE(GameRunning) << command;
        EXPECT_EQ(play.desktop.log, std::vector<std::string>{"box Jogo Completo"}) << command;
    }
}
