// Saving and restoring through the menu.
#include <gtest/gtest.h>

#include "tests/support/game_fixture.h"

using namespace PuzzleModule;

class SavedGames : public testing::Test {
protected:
    void Do(const char* command, const std::string& name) {
        play.desktop.fileAnswers.push_back(play.folder / name);
        play.Menu(command);
    }
    void Save(const std::string& name) { Do("mnuSaveGame", name); }
    void Load(const std::string& name) { Do("mnuLoadGame", name); }
    // The piece lines: what follows the ten lines of the header.
    std::string PieceLines(const std::string& name) {
        const std::string text = play.folder.Read(name);
        size_t at = 0;
        for (int line = 0; line < 10; ++line) at = text.find('\n', at) + 1;
        return text.substr(at);
    }
    GameFixture play;
};

TEST_F(SavedGames, RestoredGameStandsAsItWasSavedWhateverWasPlayedMeanwhile) {
    play.StartGrid(7, 5, 4);
    play.Drag(2, 3, -11, 330);
    play.desktop.Advance(75);
    Save("a.pzl");
    const std::string picture = BoardPicturePath;
    std::vector<PieceRec> pieces = Pieces;
    for (PieceRec& piece : pieces) piece.GroupDX = piece.GroupDY = 0;

    play.StartGrid(3, 3, 0);
    play.desktop.PostInput([] { ADD_FAILURE() << "input reached the game while it was restored"; });
    Load("a.pzl");
    EXPECT_EQ(Pieces, pieces);
    EXPECT_EQ(ElapsedSeconds, 75);
    EXPECT_TRUE(GameLevel == 4 && ChosenLevel == 4 && CurrentSizes() == *SizesOfLevel(4, 1920));
    EXPECT_EQ(BoardPicturePath, picture);
    EXPECT_TRUE(GameRunning && play.main.Timer1.Enabled() && play.main.Pointer() == MousePointer::Default);
    EXPECT_TRUE(play.main.picStatus.Visible());
    EXPECT_TRUE(play.ShowsThePieces());
    Save("b.pzl");
    EXPECT_EQ(PieceLines("b.pzl"), PieceLines("a.pzl"));
    EXPECT_TRUE(PlayToTheEnd(play.main));
}

TEST_F(SavedGames, ADroppedGameIsTakenUpAndAHeldPieceLetGo) {
    play.StartGrid(3, 2, 0);
    Save("a.PZL");
    const std::string saved = play.folder / "a.pzl";
    play.StartGrid(4, 3, 4);
    play.Press(play.Middle(1, 1));
    for (const std::string& refused : {play.folder.Write("a.txt", play.folder.Read("a.pzl")), play.folder / "no.pzl"})
        play.main.DeliverFile(refused);
    ASSERT_TRUE(GridCols == 4 && PickedPiece != -1);
    play.main.DeliverFile(play.folder.Write("bad.pzl", "x"));
    EXPECT_TRUE(GridCols == 4 && PickedPiece == -1);
    play.main.DeliverFile(saved);
    EXPECT_TRUE(GridCols == 3 && GameRunning && PickedPiece == -1 && play.main.Timer1.Enabled());
    EXPECT_EQ(play.main.Pointer(), MousePointer::Default);
}

TEST_F(SavedGames, SaveStopsTheClockAroundItsDialogAndALoadDoesNot) {
    play.StartGrid(3, 3);
    for (const auto& [command, saves] : {std::pair{"mnuSaveGame", true}, {"mnuLoadGame", false}}) {
        bool runs = saves;
        play.desktop.whileModal = [&] { runs = play.main.Timer1.Enabled(); };
        play.Menu(command);  // cancelled
        EXPECT_EQ(runs, !saves);
        EXPECT_TRUE(play.main.Timer1.Enabled());
        EXPECT_EQ(play.desktop.fileRequests.back().save, saves);
        EXPECT_EQ(play.desktop.fileRequests.back().folder, play.folder / "Save");
    }
    EXPECT_EQ(play.folder.Entries(), 2);  // the picture, and the folder of saved games made for the dialog
}

TEST_F(SavedGames, FailedWriteKeepsTheOldFileAndTheGame) {
    play.StartGrid(3, 3);
    Save("here.pzl");
    const std::string old = play.folder.Read("here.pzl");
    BoardPicturePath += "\nline";  // cannot be written
    Save("here.pzl");
    EXPECT_EQ(play.folder.Read("here.pzl"), old);
    EXPECT_TRUE(GameRunning);
    EXPECT_TRUE(play.main.Timer1.Enabled());
    EXPECT_EQ(play.main.Pointer(), MousePointer::Default);
}
