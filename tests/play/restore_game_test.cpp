// Saving and restoring through the menu.
#include <gtest/gtest.h>

#include <sys/stat.h>

#include "tests/support/game_fixture.h"

using namespace PuzzleModule;

class SavedGames : public testing::Test {
protected:
    void Save(const std::string& name) {
        play.desktop.fileAnswers.push_back(play.folder / name);
        play.Menu("mnuSaveGame");
    }
    void Load(const std::string& name) {
        play.desktop.fileAnswers.push_back(play.folder / name);
        play.Menu("mnuLoadGame");
    }
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
    const std::string picture = BoardPicturePath, saved = PieceLines("a.pzl");
    const std::vector<PieceRec> pieces = Pieces;
    EXPECT_TRUE(play.main.Timer1.Enabled());

    play.StartGrid(3, 3, 0);
    Load("a.pzl");
    ASSERT_EQ(Pieces.size(), pieces.size());
    for (size_t i = 0; i < pieces.size(); ++i) {
        PieceRec wanted = pieces[i];
        wanted.GroupDX = wanted.GroupDY = 0;
        EXPECT_EQ(Pieces[i], wanted) << i;
    }
    EXPECT_EQ(ElapsedSeconds, 75);
    EXPECT_EQ(GameLevel, 4);
    EXPECT_EQ(ChosenLevel, 4);
    EXPECT_EQ(CurrentSizes(), SizesOfLevel(4, 1920));
    EXPECT_EQ(BoardPicturePath, picture);
    EXPECT_TRUE(GameRunning);
    EXPECT_TRUE(play.main.Timer1.Enabled());
    EXPECT_TRUE(play.main.picStatus.Visible());
    EXPECT_EQ(play.main.Pointer(), MousePointer::Default);
    EXPECT_EQ(GameFixture::HashOf(play.main.picScreen.Image), play.ComposedBoard());
    Save("b.pzl");
    EXPECT_EQ(PieceLines("b.pzl"), saved);
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
        const size_t at = text.find(what);
        return at == std::string::npos ? "" : text.replace(at, what.size(), instead);
    };
    const std::string noPicture = play.folder.Write("no picture.bmp", "nothing to decode");
    struct Case {
        const char* name;
        std::string text, message;
        bool cleared = false;
    };
    for (const Case& bad : std::vector<Case>{
             {"empty", "", ""},
             {"ends early", good.substr(0, good.size() / 2), ""},
             {"a word among the numbers", with(" 120 \r\n 66 ", " 120 \r\n sixty "), ""},
             {"sizes of two sets", with(" 120 \r\n 66 ", " 120 \r\n 55 "), ""},
             {"too many pieces", with(" 11 \r\n", " 32767 \r\n"), ""},
             {"one piece fewer", with(" 11 \r\n", " 10 \r\n"), ""},
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
        const int16_t chosen = ChosenLevel = 1;
        play.folder.Write("bad.pzl", bad.text);
        Load("bad.pzl");

        EXPECT_EQ(play.Snapshot(), before);
        EXPECT_EQ(ChosenLevel, chosen);
        EXPECT_EQ(PicturePath, picture);
        EXPECT_FALSE(play.main.picStatus.Visible());
        EXPECT_EQ(play.main.picScreen.Image.IsUniform(), bad.cleared);
        ASSERT_EQ(play.desktop.boxes.size(), bad.message.empty() ? 0u : 1u);
        if (!bad.message.empty()) {
            EXPECT_EQ(play.desktop.boxes[0].text, bad.message);
        }
    }
}

TEST_F(SavedGames, SaveStopsTheClockAroundItsDialogAndALoadDoesNot) {
    play.StartGrid(3, 3);
    bool runs = true;
    play.desktop.whileModal = [&] { runs = play.main.Timer1.Enabled(); };
    play.Menu("mnuSaveGame");  // cancelled
    EXPECT_FALSE(runs);
    EXPECT_TRUE(play.main.Timer1.Enabled());
    EXPECT_EQ(play.folder.Entries(), 2);  // the picture, and the folder of saved games made for the dialog
    play.desktop.whileModal = [&] { runs = play.main.Timer1.Enabled(); };
    play.Menu("mnuLoadGame");
    EXPECT_TRUE(runs);
    ASSERT_EQ(play.desktop.fileRequests.size(), 2u);
    EXPECT_TRUE(play.desktop.fileRequests[0].save);
    EXPECT_EQ(play.desktop.fileRequests[0].folder, play.folder / "Save");
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

TEST_F(SavedGames, NothingButPaintsAndTheClockComesInWhileAGameIsRestored) {
    play.StartGrid(3, 3);
    Save("a.pzl");
    play.desktop.PostInput([] { ADD_FAILURE() << "input reached the game while it was restored"; });
    Load("a.pzl");
    EXPECT_TRUE(GameRunning);
}
