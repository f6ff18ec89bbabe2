// Playing through the real handlers: holds, wins, and the ends of the number range.
#include <gtest/gtest.h>

#include "tests/support/game_fixture.h"

using namespace PuzzleModule;

namespace {

struct Played {
    Size screen;
    Size picture;
    int16_t level;
};

class PlayToTheEndOf : public testing::TestWithParam<Played> {};

}  // namespace

TEST_P(PlayToTheEndOf, WinsByTheMouseAlone) {
    const Played& game = GetParam();
    GameFixture play(game.screen);
    ASSERT_TRUE(play.Start(play.AddPicture("picture.bmp", game.picture), game.level));
    ASSERT_TRUE(PlayToTheEnd(play.main)) << Pieces.size() << " pieces";
    ASSERT_EQ(play.desktop.boxes.size(), 1u);
    EXPECT_EQ(play.desktop.boxes[0].text, "Jogo Completo");
    EXPECT_EQ(play.desktop.boxes[0].title, "Parabéns!!");
    EXPECT_EQ(play.desktop.boxes[0].style, 48);
    EXPECT_FALSE(play.main.Timer1.Enabled());

    // The whole picture stands on the board, wherever it was assembled: picMaster's body, pixel for pixel.
    const Surface& master = play.main.Surfaces.picMaster;
    const PieceRec& first = play.Piece(0, 0);
    int different = 0;
    for (int y = 0; y < master.Height(); ++y)
        for (int x = 0; x < master.Width(); ++x) {
            const int bx = first.X + Margin() + x, by = first.Y + Margin() + y;
            if (play.main.picScreen.Image.Bounds().Contains(bx, by))
                different += play.main.picScreen.Image.At(bx, by) != master.At(x, y);
        }
    EXPECT_EQ(different, 0);
}

INSTANTIATE_TEST_SUITE_P(Games, PlayToTheEndOf,
                         testing::Values(Played{{1366, 768}, {640, 480}, 0}, Played{{1366, 768}, {480, 640}, 1},
                                         Played{{1920, 1080}, {3000, 2000}, 3}, Played{{1024, 768}, {800, 600}, 4},
                                         Played{{1920, 1080}, {400, 300}, 5}, Played{{800, 600}, {200, 150}, 5}));

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

TEST(Winning, GroupThatClosesTheLastGapEndsTheGameWithoutTheHeldPieceBeingTheLast) {
    GameFixture play;
    play.StartGrid(3, 2);
    play.Solve(220, 220);
    for (int row = 0; row < 2; ++row) play.Put(row, 2, 660, 220 + row * CellSize);
    play.Drag(0, 2, 220 + 2 * CellSize, 220);
    EXPECT_FALSE(GameRunning);
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

TEST(Winning, SwitchedOffSoundsStaySilentAllThrough) {
    GameFixture play;
    play.StartGrid(2, 2);
    play.SolveAllButLast(220, 220);
    play.Menu("mnuSounds");
    play.Drag(1, 1, 220 + CellSize, 220 + CellSize);
    EXPECT_FALSE(GameRunning);
    EXPECT_EQ(play.Sounds(), "");
}

// --- A hold and the commands that open something ---------------------------------------------

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

TEST(Release, EveryPieceIsFittedToTheLatticeAndNoMarkIsLeft) {
    GameFixture play;
    play.StartGrid(3, 3);
    play.Solve(222, 217);
    play.Drag(2, 2, 227, 223);
    for (const PieceRec& piece : Pieces) {
        EXPECT_EQ(piece.X % 11, 0);
        EXPECT_EQ(piece.Y % 11, 0);
        EXPECT_FALSE(piece.InGroup);
    }
}
