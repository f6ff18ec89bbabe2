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
    EXPECT_EQ(play.ShownBoard(), play.ComposedBoard());
    Save("b.pzl");
    EXPECT_EQ(PieceLines("b.pzl"), PieceLines("a.pzl"));
    EXPECT_TRUE(PlayToTheEnd(play.main));
}

TEST_F(SavedGames, FittingAgainAndAgainNeverMakesAGameUnloadable) {
    for (const Size cells : {Size{3, 2}, {5, 5}, {9, 4}}) {
        play.StartGrid(cells.width, cells.height, 5);
        Save("again.pzl");
        const std::string first = PieceLines("again.pzl");
        for (int round = 0; round < 30; ++round) {
            GameRunning = false;
            Load("again.pzl");
            ASSERT_TRUE(GameRunning) << "round " << round << " of " << cells.width;
            ASSERT_EQ(GridCols, cells.width);
            ASSERT_EQ(play.main.Surfaces.picMaster.Width(), cells.width * CellSize);
            Save("again.pzl");
            ASSERT_EQ(PieceLines("again.pzl"), first);
        }
    }
}

TEST_F(SavedGames, FileThatCannotBePlayedLeavesTheGameOnTheBoardAsItWas) {
    play.StartGrid(4, 3, 3);
    Save("good.pzl");
    const std::string good = play.folder.Read("good.pzl"), picture = BoardPicturePath;
    const auto with = [&good](const std::string& what, const std::string& instead) {
        std::string text = good;
        return text.replace(text.find(what), what.size(), instead);
    };
    const std::string noPicture = play.folder.Write("no picture.bmp", "nothing to decode");
    struct Case {
        const char* name;
        std::string text, message;
        bool cleared = false;
    };
    for (const Case& bad : std::vector<Case>{
             {"no text of a game", with(" 120 \r\n 66 ", " 120 \r\n sixty "), ""},
             {"numbers of no game", with(" 11 \r\n", " 10 \r\n"), "", true},
             {"picture gone", with(picture, picture + "x"), "O arquivo " + picture + "x não foi encontrado"},
             {"picture broken", with(picture, noPicture), "", true},
             {"a single cell",
              " 1 \r\n" + picture +
                  "\r\n 3 \r\n 40 \r\n 40 \r\n 120 \r\n 66 \r\n 6 \r\n 3 \r\n 0 \r\n"
                  " 11  11  0  0  0  0  2 \r\n",
              "A imagem selecionada é muito pequena!", true}}) {
        SCOPED_TRACE(bad.name);
        play.Drag(1, 1, 440, 330);  // shows the board again
        play.desktop.boxes.clear();
        play.main.picStatus.SetVisible(true);
        const GameFixture::State before = play.Snapshot();
        ChosenLevel = 1;
        play.folder.Write("bad.pzl", bad.text);
        Load("bad.pzl");

        EXPECT_EQ(play.Snapshot(), before);
        EXPECT_EQ(ChosenLevel, 1);
        EXPECT_EQ(PicturePath, picture);
        EXPECT_FALSE(play.main.picStatus.Visible());
        EXPECT_EQ(play.main.picScreen.Image.IsUniform(), bad.cleared);
        std::string boxes;
        for (const auto& box : play.desktop.boxes) boxes += box.text;
        EXPECT_EQ(boxes, bad.message);
    }
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
