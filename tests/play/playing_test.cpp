// Playing through the real handlers: holds, wins, and the ends of the number range.
#include <gtest/gtest.h>

#include "tests/support/game_fixture.h"

using namespace PuzzleModule;

TEST(Winning, BoardIsOnTheScreenAndTheGameOverBeforeTheBoxOpens) {
    GameFixture play;
    play.StartGrid(2, 2);
    play.SolveAllButLast(220, 220);
    int framesBefore = -1;
    bool runs = true;
    play.desktop.whileModal = [&] {
        framesBefore = play.desktop.frames;
        runs = GameRunning || play.main.Timer1.Enabled();
        EXPECT_EQ(GameFixture::HashOf(play.main.picScreen.Image), play.ComposedBoard());
    };
    play.Drag(1, 1, 220 + CellSize, 220 + CellSize);
    EXPECT_EQ(framesBefore, 1);
    EXPECT_FALSE(runs);
}

TEST(Winning, TopLeftPieceTurnedAwayKeepsTheGameGoingWithoutTheHomeSound) {
    GameFixture play;
    play.StartGrid(2, 2);
    play.SolveAllButLast(220, 220);
    play.Turn(0, 0, 1);
    play.Sounds();
    play.Drag(1, 1, 220 + CellSize, 220 + CellSize);
    EXPECT_TRUE(GameRunning);
    EXPECT_EQ(play.Sounds(), "CLICK CLICK");
}

TEST(ReleaseHold, CommandIsAbandonedIfTheReleaseCompletesTheGame) {
    for (const char* command : {"mnuShuffle", "mnuSaveGame", "mnuLoadGame", "mnuNewGame(3)", "mnuBackground",
                                "mnuHowToPlay", "mnuAbout", "MnDesistir"}) {
        GameFixture play;
        play.StartGrid(2, 2);
        play.SolveAllButLast(220, 220);
        bool colorAsked = false;
        play.desktop.colorAnswers.push_back([&](Color, std::span<Color, 16>) {
            colorAsked = true;
            return std::nullopt;
        });
        play.Press(play.Middle(1, 1));
        play.Move({float(220 + CellSize + TileSize / 2), float(220 + CellSize + TileSize / 2)});
        play.desktop.log.clear();
        play.Key(command);
        EXPECT_FALSE(GameRunning) << command;
        EXPECT_EQ(play.desktop.log, std::vector<std::string>{"box Jogo Completo"}) << command;
        EXPECT_FALSE(colorAsked) << command;
    }
}

TEST(Dragging, PieceStopsAtTheEndsOfTheNumberRangeAndComesBack) {
    GameFixture play;
    play.StartGrid(2, 2);
    play.Solve(220, 220);
    play.Put(1, 1, 660, 660);
    const auto from = play.Middle(1, 1);
    play.Press(from);
    play.Move({100000, from.y});
    EXPECT_EQ(play.Piece(1, 1).X, 660);
    play.Move({-40000, -40000});
    EXPECT_EQ(play.Piece(1, 1).X, 660);
    EXPECT_EQ(play.Piece(1, 1).Y, 660);
    play.Release({1e9f, from.y + 22});
    EXPECT_EQ(play.Piece(1, 1).X, 660);
    EXPECT_EQ(play.Piece(1, 1).Y, 682);
    EXPECT_EQ(PickedPiece, -1);
    play.Press({1e30f, 1e30f});  // nothing there, and no number for it
    EXPECT_EQ(PickedPiece, -1);
}

TEST(Dragging, CompanionUnderAThirdPieceStaysUnderIt) {
    GameFixture play;
    play.StartGrid(3, 2);
    play.Solve(220, 220);
    play.Put(1, 0, 880, 220);
    const auto above = [&] { return play.ElementOf(1, 2) < play.ElementOf(0, 1); };
    play.Click(play.Middle(1, 2), 1);     // to the top
    play.Put(1, 2, 220 + CellSize, 220);  // over 0 1, which is joined to 0 0
    ASSERT_TRUE(above());
    play.Press(play.Middle(0, 0));
    play.Move({500, 500});
    EXPECT_TRUE(above());
    EXPECT_TRUE(play.Piece(0, 1).InGroup);
    EXPECT_EQ(PickedPiece, play.ElementOf(0, 0));
}
