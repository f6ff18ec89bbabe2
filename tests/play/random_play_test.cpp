// Random play through the real handlers: after each event the literal model must agree.
#include <gtest/gtest.h>

#include <random>

#include "core/board/draw_board.h"
#include "tests/reference/literal_play.h"
#include "tests/support/game_fixture.h"

using namespace PuzzleModule;

namespace {

class RandomPlay : public testing::Test {
protected:
    int Any(int below) { return int(random() % unsigned(below)); }

    // A new game: pieces at home but for some that lie anywhere, on the levels that turn as they lie.
    void Deal() {
        Release();
        const auto level = int16_t("01345"[Any(5)] - '0');
        play.StartGrid(2 + Any(3), 2 + Any(2), level);
        if (Any(3)) play.Solve(110, 110);
        for (PieceRec& piece : Pieces)
            if (Any(3) == 0) play.Put(piece.Row, piece.Col, Any(40) * 11, Any(30) * 11);
        DrawBoard(play.main.picScreen.Image, play.main.Surfaces.picBG);
        model.pieces = Pieces;
        model.running = true;
        model.turns = ChosenLevel > 1;
        Centre();
    }
    // The middle of the board in the middle of the screen.
    void Centre() {
        Fit();
        model.left = -240, model.top = -180;
    }
    void Fit() { model.lowestLeft = play.main.ScaleWidth() - 960, model.lowestTop = play.main.ScaleHeight() - 720; }
    void Release(int button = 1) {
        play.Release(at, int16_t(button));
        model.Release(button, at.x, at.y);
    }
    void MoveTo(GameFixture::Spot to) {
        play.Move(at = to);
        model.Move(at.x, at.y);
    }
    void Press(int button) {
        if (button == 1 && model.held >= 0) Release();
        play.Press(at, int16_t(button));
        model.Press(button, at.x, at.y);
    }
    GameFixture::Spot AnySpot() {
        const PieceRec& piece = std::as_const(Pieces)[size_t(Any(int(Pieces.size())))];
        if (Any(8) == 0) return {float(piece.X + TileSize * Any(2)), float(piece.Y + TileSize * Any(2))};
        if (Any(4)) return {float(piece.X + Any(TileSize + 2)), float(piece.Y + Any(TileSize + 2)) + 0.25f};
        constexpr float Far[] = {-32769, -32767.75f, 0, 32767.75f, 1e9f, -1e30f};
        if (Any(9) == 0) return {Far[Any(6)], Far[Any(6)]};
        return {float(Any(960)), float(Any(720))};
    }
    // A piece to its place beside another one, or nearly.
    void Carry() {
        at = play.Middle(Any(GridRows), Any(GridCols));
        Press(1);
        while (model.held >= 0 && model.turns && model.pieces[0].Rotation != 0 && Any(9)) Press(2), Release(2);
        if (model.held < 0) return;
        const PieceRec &piece = model.pieces[0], &other = model.pieces[size_t(Any(int(Pieces.size())))];
        MoveTo({at.x + float(other.X - piece.X + (piece.Col - other.Col) * CellSize + Any(13) - 6),
                at.y + float(other.Y - piece.Y + (piece.Row - other.Row) * CellSize + Any(13) - 6)});
        if (const int next = Any(3)) next == 1 ? Command() : Release();
    }
    void View() {
        ScrollBar &h = play.main.HScroll1, &v = play.main.VScroll1;
        const int chance = Any(12), x = Any(5) - 2, y = Any(5) - 2;
        if (chance == 0)
            play.main.DeliverResize({200 + Any(500), 100 + Any(400)}), Fit(), model.Scroll(model.left, model.top);
        else if (chance < 3)
            h.DeliverValue(Any(600), chance == 1), model.Scroll(-h.Value(), model.top);
        else if (chance < 5)
            v.DeliverValue(Any(500), chance == 3), model.Scroll(model.left, -v.Value());
        else
            play.Wheel(x, y), model.Scroll(model.left + x * CellSize, model.top),
                model.Scroll(model.left, model.top + y * CellSize);
    }
    // It lets go what is held, and is abandoned if that completes the game.
    void Command() {
        constexpr const char* Commands[] = {"mnuShuffle",    "mnuSaveGame",  "mnuLoadGame", "mnuNewGame(3)",
                                            "mnuBackground", "mnuHowToPlay", "mnuAbout",    "mnuGame"};
        const bool held = model.held >= 0;
        const char* command = Commands[Any(8)];
        if (!GameFixture::Find(play.main.Menus, command)->Enabled()) return;
        play.desktop.log.clear(), play.desktop.fileAnswers.clear();
        command == Commands[7] ? play.Menu(command) : play.Key(command);
        const bool completed = !model.LetGo() && held;
        EXPECT_TRUE(!completed || play.desktop.log == std::vector<std::string>{"box Jogo Completo"}) << command;
        model.turns = ChosenLevel > 1;  // of the level last chosen
    }
    void Step(int chance) {
        play.Sounds(), model.sounds.clear();
        if (Any(model.running ? 40 : 6) == 0) return Deal();
        if (chance < 10) return Command();
        if (chance < 40) return Carry();
        if (chance < 50) return View();
        at = chance < 80 ? AnySpot() : at;
        if (chance < 65) return MoveTo(at);
        if (chance < 90) return Press(1 + Any(4) / 3);
        Release(1 + Any(4) / 3);
    }
    void Compare() {
        const frmMain& main = play.main;
        std::vector<PieceRec> pieces = Pieces;
        for (size_t i = 0; i < pieces.size(); ++i) {
            if (i == 0) pieces[i].InGroup = 0;  // of the one that is held it says nothing
            if (!pieces[i].InGroup) pieces[i].GroupDX = pieces[i].GroupDY = 0;
        }
        for (PieceRec& piece : model.pieces)
            if (!piece.InGroup) piece.GroupDX = piece.GroupDY = 0;
        EXPECT_EQ(pieces, model.pieces);
        EXPECT_EQ(PickedPiece, model.held);
        EXPECT_TRUE(GameRunning == model.running && main.Panning == model.panning);
        EXPECT_TRUE(main.picScreen.Left() == model.left && main.picScreen.Top() == model.top);
        EXPECT_TRUE(main.HScroll1.Value() == -model.left && main.VScroll1.Value() == -model.top);
        EXPECT_EQ(play.Sounds(), model.sounds);
    }

    const unsigned seed = std::random_device{}();
    std::mt19937 random{seed};
    GameFixture play{{480, 360}};
    LiteralPlay model;
    GameFixture::Spot at{0, 0};
};

}  // namespace

TEST_F(RandomPlay, GoesAsTheLiteralModelDoes) {
    SCOPED_TRACE("seed " + std::to_string(seed));
    int won = 0;
    Deal(), Compare();
    for (int step = 0; step < 4000 && !HasFailure(); ++step) {
        const int chance = Any(100);
        SCOPED_TRACE("step " + std::to_string(step) + ", " + std::to_string(chance));
        Step(chance);
        Compare();
        won += model.sounds.ends_with("COMPLETE ");
        EXPECT_TRUE(step % 100 || play.ShowsThePieces());
    }
    EXPECT_GT(won, 5);
}
