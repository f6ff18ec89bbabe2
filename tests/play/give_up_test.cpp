// What may happen while the picture of a given-up game is laid out.
#include <gtest/gtest.h>

#include "play/rules.h"
#include "tests/support/game_fixture.h"

using namespace PuzzleModule;

namespace {

std::vector<int> Order() {
    std::vector<int> ids;
    for (const PieceRec& piece : Pieces) ids.push_back(piece.PieceId);
    return ids;
}

}  // namespace

TEST(GivingUp, NoCommandAtAYieldCanReplaceRebuildOrReorderThePieces) {
    GameFixture play;
    play.StartGrid(5, 4, 3);
    play.desktop.fileAnswers.push_back(play.folder / "a.pzl");
    play.Menu("mnuSaveGame");
    const std::vector<int> order = Order();
    play.desktop.log.clear();
    play.desktop.onFrame = [&] {
        play.desktop.fileAnswers.assign(2, play.folder / "a.pzl");
        play.desktop.boxAnswers.assign(1, MsgBoxResult::Yes);
        for (const char* command : {"mnuNewGame(5)", "mnuShuffle", "mnuSaveGame", "mnuLoadGame", "MnDesistir",
                                    "mnuGame", "mnuOptions", "mnuHints", "mnuSounds", "mnuStatus"})
            play.desktop.PostInput([&play, command] { play.Key(command); });
        play.desktop.PostInput([&play] { play.Click({300, 300}, 1); });
        play.desktop.PostInput([&play] { play.Wheel(0, -1); });
        play.desktop.PostInput([&play] { play.main.DeliverResize({1000, 700}); });
    };
    play.Key("MnDesistir");
    play.desktop.onFrame = nullptr;
    play.desktop.RunPending();
    EXPECT_EQ(play.desktop.frames, 20 / 2);
    EXPECT_EQ(Order(), order);
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
}
