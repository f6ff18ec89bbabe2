// A move shown, and giving up.
#include <gtest/gtest.h>

#include "play/rules.h"
#include "tests/support/game_fixture.h"

using namespace PuzzleModule;

namespace {

constexpr Pixel Yellow = 0xFFFFFF00u;

bool Framed(const Surface& board, int x, int y) {
    return board.At(x, y) == Yellow && board.At(x + CellSize, y + CellSize) == Yellow &&
           board.At(x + CellSize, y) == Yellow && board.At(x, y + CellSize / 2) == Yellow &&
           board.At(x + CellSize + 1, y) != Yellow && board.At(x + 1, y + 1) != Yellow;
}

}  // namespace

TEST(ShownMove, FramesTheUppermostMisplacedPieceAndItsPlaceUntilTheNextComposition) {
    GameFixture play;
    play.StartGrid(3, 2, 4);
    play.Solve(220, 220);
    play.Put(1, 2, 660, 550);
    play.Put(1, 0, 440, 660);
    play.Click(play.Middle(1, 0), 1);  // to the top
    play.Click(play.Middle(1, 2), 1);
    const GameFixture::State before = play.Snapshot();
    const uint64_t board = GameFixture::HashOf(play.main.picScreen.Image);
    play.Menu("mnuHints");
    const int m = Margin();
    EXPECT_TRUE(Framed(play.main.picScreen.Image, 660 + m, 550 + m));
    EXPECT_TRUE(Framed(play.main.picScreen.Image, 220 + 2 * CellSize + m, 220 + CellSize + m));
    EXPECT_FALSE(Framed(play.main.picScreen.Image, 440 + m, 660 + m));
    EXPECT_EQ(play.Snapshot(), before);

    play.Click(play.Middle(1, 2), 1);
    EXPECT_EQ(GameFixture::HashOf(play.main.picScreen.Image), board);
}

TEST(ShownMove, WithoutAnUprightTopLeftPieceThePlacesAreReckonedFromTheBoardsOrigin) {
    GameFixture play;
    play.StartGrid(2, 2);
    play.Solve(0, 0);
    EXPECT_FALSE(MoveToShow());
    play.Turn(0, 0, 2);
    const auto turned = MoveToShow();
    ASSERT_TRUE(turned);
    EXPECT_EQ(turned->Place, turned->Piece);  // right place, wrong turn
    play.Turn(0, 0, 0);
    play.Solve(220, 220);
    play.Turn(0, 0, 2);
    const auto moved = MoveToShow();
    ASSERT_TRUE(moved);
    EXPECT_EQ(moved->Piece.x - moved->Place.x, 220);
}

TEST(GivingUp, LaysThePictureOutAtTheVisibleCornerAndEndsTheGame) {
    struct Case {
        int scrolledX, scrolledY, x, y;
    };
    for (const Case& c : {Case{0, 0, -11, -11}, Case{100, 0, 88, -11}, Case{240, 135, 231, 121}}) {
        GameFixture play;
        play.StartGrid(5, 3, 3);
        play.Turn(0, 0, 3);
        play.desktop.Advance(3);
        play.Sounds();
        play.main.HScroll1.DeliverValue(c.scrolledX, false);
        play.main.VScroll1.DeliverValue(c.scrolledY, false);
        play.Menu("MnDesistir");
        for (int row = 0; row < 3; ++row)
            for (int col = 0; col < 5; ++col) {
                EXPECT_EQ(play.Piece(row, col).Rotation, 0);
                EXPECT_EQ(play.Piece(row, col).X, c.x + col * CellSize);
                EXPECT_EQ(play.Piece(row, col).Y, c.y + row * CellSize);
            }
        EXPECT_EQ(play.desktop.frames, 15 / 2);
        EXPECT_FALSE(GameRunning);
        EXPECT_FALSE(play.main.Timer1.Enabled());
        EXPECT_FALSE(play.main.Busy());
        EXPECT_TRUE(play.main.picScreen.Enabled());
        EXPECT_EQ(play.Sounds(), "");
        EXPECT_TRUE(play.desktop.boxes.empty());
        EXPECT_EQ(GameFixture::HashOf(play.main.picScreen.Image), play.ComposedBoard());
        play.Press({1500, 900});
        EXPECT_TRUE(play.main.Panning);
    }
}

TEST(GivingUp, NoCommandAtAYieldCanReplaceRebuildOrReorderThePieces) {
    GameFixture play;
    play.StartGrid(5, 4, 3);
    play.desktop.fileAnswers.push_back(play.folder / "a.pzl");
    play.Menu("mnuSaveGame");
    std::vector<int> order;
    for (const PieceRec& piece : Pieces) order.push_back(piece.PieceId);
    play.desktop.log.clear();
    play.desktop.onFrame = [&] {
        play.desktop.fileAnswers.assign(2, play.folder / "a.pzl");
        play.desktop.boxAnswers.assign(1, MsgBoxResult::Yes);
        for (const char* command : {"mnuNewGame(5)", "mnuShuffle", "mnuSaveGame", "mnuLoadGame", "MnDesistir"})
            play.desktop.PostInput([&play, command] { play.Key(command); });
        play.desktop.PostInput([&play] { play.Click({300, 300}, 1); });
        for (const char* harmless : {"mnuGame", "mnuOptions", "mnuHints", "mnuSounds", "mnuStatus"})
            play.desktop.PostInput([&play, harmless] { play.Key(harmless); });
        play.desktop.PostInput([&play] { play.main.picScreen.DeliverWheel(0, -1); });
        play.desktop.PostInput([&play] { play.main.DeliverResize({1000, 700}); });
    };
    play.Key("MnDesistir");
    play.desktop.onFrame = nullptr;
    play.desktop.RunPending();

    std::vector<int> orderAfter;
    for (const PieceRec& piece : Pieces) orderAfter.push_back(piece.PieceId);
    EXPECT_EQ(orderAfter, order);
    EXPECT_TRUE(IsComplete(play.Piece(0, 0).X, play.Piece(0, 0).Y));
    EXPECT_FALSE(GameRunning);
    for (const std::string& entry : play.desktop.log)
        EXPECT_TRUE(entry == "events" || entry == "paints") << entry << " was asked for while the walk went on";
}

TEST(GivingUp, ClosingTheWindowAtAYieldEndsTheProgram) {
    GameFixture play;
    play.StartGrid(5, 4, 3);
    play.desktop.onFrame = [&] { play.desktop.PostInput([&] { play.main.DeliverClose(); }); };
    EXPECT_THROW(play.Menu("MnDesistir"), HeadlessDesktop::ProgramEnded);
    EXPECT_EQ(play.desktop.frames, 1);
    EXPECT_EQ(play.desktop.log.back(), "end");
}
