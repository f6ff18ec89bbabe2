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
        ready = play.desktop.frames == 1 && !GameRunning && !play.main.Timer1.Enabled() &&
                play.ShownBoard() == play.ComposedBoard();
    };
    play.Drag(1, 1, 220 + CellSize, 220 + CellSize);
    EXPECT_TRUE(ready);
}

TEST(Keys, ScrollTheBoardLikeTheBarsUnlessAPieceIsHeld) {
    GameFixture play;
    play.StartGrid(2, 2);
    const auto view = [&play](Key key) {
        play.main.DeliverKeyDown(key);
        return std::pair(-play.main.picScreen.Left(), -play.main.picScreen.Top());
    };
    const double x = 240, y = 135;
    const std::pair<Key, std::pair<double, double>> presses[] = {
        {Key::Left, {x - 16, y}},  {Key::Right, {x, y}},   {Key::Down, {x, y + 16}},      {Key::Up, {x, y}},
        {Key::End, {x, 320}},      {Key::Down, {x, 320}},  {Key::PageUp, {x, 320 - 213}}, {Key::Home, {x, 0}},
        {Key::PageDown, {x, 213}}, {Key::Escape, {x, 213}}};
    for (const auto& [key, expected] : presses) EXPECT_EQ(view(key), expected) << int(key);
    play.Press(play.Middle(1, 1));
    EXPECT_EQ(view(Key::End), std::pair(x, 213.0));
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
