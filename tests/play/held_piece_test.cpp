// A piece in the hand when a command comes.
#include <gtest/gtest.h>

#include "tests/support/game_fixture.h"

using namespace PuzzleModule;

TEST(HeldPiece, CommandIsAbandonedIfTheReleaseCompletesTheGame) {
    for (const char* command : {"mnuShuffle", "mnuSaveGame", "mnuLoadGame", "mnuNewGame(3)", "mnuBackground",
                                "mnuHowToPlay", "mnuAbout", "MnDesistir"}) {
        GameFixture play;
        play.StartGrid(2, 2);
        play.Solve(220, 220);
        play.Put(1, 1, 500, 220);
        play.Press(play.Middle(1, 1));
        play.Move({float(220 + CellSize + TileSize / 2), float(220 + CellSize + TileSize / 2)});
        play.desktop.log.clear();
        play.Key(command);
        EXPECT_FALSE(GameRunning) << command;
        EXPECT_EQ(play.desktop.log, std::vector<std::string>{"box Jogo Completo"}) << command;
    }
}
