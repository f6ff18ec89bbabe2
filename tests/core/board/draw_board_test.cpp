// The board against its literal meaning, on random boards under random sequences of changes. Each
// comparison looks at the surface and at a screen that only gets the damage handed on.
#include "core/board/draw_board.h"

#include <functional>

#include "tests/core/small_game.h"
#include "tests/reference/literal_board.h"
#include "tests/support/window_dump.h"

namespace PuzzleModule {
namespace {

struct RandomPlay : SurfaceListener {
    RandomPlay(uint32_t seed, Density density) : random(seed) {
        game.surfaces.SetDensity(density);
        for (Surface* surface : {&board, &background, &shown, &expected}) surface->SetDensity(density);
        board.SetListener(this);
        Resize(320, 260);
        NewGame();
    }

    // Shows what Refresh hands on, and nothing else.
    void SurfaceRefreshed(const Region& damage) override {
        for (const Rect& r : damage) {
            BitBlt(shown, r.x, r.y, r.width, r.height, board, r.x, r.y, RasterOp::SrcCopy);
            handed += r.width * r.height;
        }
    }

    // One change of any kind that the program, or anything else, might make between two compositions.
    std::string Change() {
        const std::pair<const char*, std::function<void()>> changes[] = {
            {"new game", [&] { NewGame(); }},
            {"pick-up", [&] { PickUp(Below(int(Pieces.size()))); }},
            {"turn", [&] { RotatePiece(int16_t(Below(int(Pieces.size()))), game.surfaces.picTmp); }},
            {"thrown piece", [&] { Throw(Any()); }},
            {"shuffle", [&] { std::shuffle(Pieces.begin(), Pieces.end(), random); }},
            {"to the front", [&] { ToFront(Below(int(Pieces.size()))), PickedPiece = -1; }},
            {"background colour", [&] { background.SetBackground(OpaqueBits | uint32_t(random())); }},
            {"background",
             [&] {
                 FillRect(background, {Below(90), Below(90), 70, 50}, Below(0xFFFFFF));
             }},
            {"repainted surface",
             [&] {
                 FillRect(SurfaceOf(Any()), {Margin() + 1, Margin() + 1, 4, 4}, Below(0xFFFFFF));
             }},
            {"wiped surface", [&] { SurfaceOf(Any()).Cls(); }},
            {"another piece held", [&] { PickedPiece = int16_t(Below(int(Pieces.size()) + 1) - 1); }},
            {"new size", [&] { Resize(120 + Below(250), 100 + Below(200)); }},
            {"piece gone", [&] { Pieces.size() > 1 ? Pieces.pop_back() : NewGame(); }},
        };
        const size_t any = size_t(Below(40));
        if (any >= std::size(changes)) return Drag(), "drag";
        changes[any].second();
        return changes[any].first;
    }

    int Below(int bound) { return int(random() % uint32_t(bound)); }

    PieceRec& Any() { return Pieces[size_t(Below(int(Pieces.size())))]; }
    Surface& SurfaceOf(const PieceRec& piece) { return game.surfaces.picPat[piece.PieceId]; }

    void NewGame() {
        game.Cut(AllUnits[Below(5)], Below(4) == 0 ? 0 : 5, 2 + Below(6), 2 + Below(5), uint32_t(random()));
        const bool joined = Below(2) == 0;
        for (PieceRec& piece : Pieces)
            if (joined ? Below(8) == 0 : Below(3) != 0) Throw(piece);
        PickedPiece = -1;
        background.SetBackground(OpaqueBits | uint32_t(random()));
        const Rect pixels = background.PixelBounds();
        // On noise whatever is brought from where it does not belong shows.
        if (Below(3) != 0)
            std::generate_n(background.DrawAll(), pixels.width * pixels.height, [&] { return OpaqueBits | random(); });
    }
    void Resize(int width, int height) {
        for (Surface* surface : {&board, &background, &shown, &expected}) surface->Resize(width, height);
    }
    // Somewhere on the board or over any of its edges.
    void Throw(PieceRec& piece) {
        piece.X = int16_t(Below(board.Width() + 2 * TileSize) - TileSize - 20);
        piece.Y = int16_t(Below(board.Height() + 2 * TileSize) - TileSize - 20);
    }
    void ToFront(int k) { std::rotate(Pieces.begin(), Pieces.begin() + k, Pieces.begin() + k + 1); }
    // With it goes a block of the picture, or whatever chance tells.
    void PickUp(int element) {
        ToFront(element), PickedPiece = 0;
        const int cols = 2 + Below(GridCols), rows = 2 + Below(GridRows), share = 1 + Below(4), block = Below(3);
        for (PieceRec& piece : Pieces)
            piece.InGroup = (block ? piece.Col < cols && piece.Row < rows : Below(4) < share) ? -1 : 0;
    }
    void Drag() {
        if (PickedPiece < 0) return PickUp(Below(int(Pieces.size())));
        const int reach = Below(3) == 0 ? 200 : 9, dx = Below(2 * reach) - reach, dy = Below(2 * reach) - reach;
        for (size_t i = 0; i < Pieces.size(); ++i) {
            if (std::as_const(Pieces)[i].InGroup == 0) continue;
            Pieces[i].X = int16_t(Pieces[i].X + dx);
            Pieces[i].Y = int16_t(Pieces[i].Y + dy);
        }
    }

    SmallGame game;
    Surface board, background, shown, expected;
    int handed = 0;  // pixels
    std::minstd_rand random;
};

TEST(DrawBoard, IsTheLiteralSequenceAfterAnyChange) {
    const uint32_t first = std::random_device{}();
    for (uint32_t run = 0; run < 30; ++run) {
        SCOPED_TRACE("seed " + std::to_string(first + run));
        const Density density(run % 2 == 0 ? 1 : 2 + int(run / 2 % 2));
        RandomPlay play(first + run, density);
        std::string story;
        for (int step = 0; step < 80 / density.PerUnit(); ++step) {
            for (int changes = 1 + play.Below(2); changes > 0; --changes) story += ", " + play.Change();
            reference::DrawBoard(play.expected, play.background);
            DrawBoard(play.board, play.background);
            ASSERT_EQ(PixelsOf(play.board), PixelsOf(play.expected)) << story;
            ASSERT_EQ(PixelsOf(play.shown), PixelsOf(play.expected)) << "not handed on: " << story;
        }
    }
}

// A slow computer shows what is drawn in vain: so many pixels are handed on at most after each change.
TEST(DrawBoard, HandsOnLittleMoreThanWhatChanged) {
    RandomPlay play(1, Density(1));
    play.game.Cut(4, 5, 8, 6);
    play.Resize(1500, 1000);
    const auto move = [](int first, int end, int every, int dx, int dy) {
        for (int id = first; id < end; id += every) {
            PieceRec& piece = Pieces[size_t(id)];
            piece.X = int16_t(piece.X + dx), piece.Y = int16_t(piece.Y + dy);
        }
    };
    for (const auto& [pixels, change] :
         std::initializer_list<std::pair<int, std::function<void()>>>{{1500 * 1000, [] {}},
                                                                      {5670, [&] { move(47, 48, 1, 900, 500); }},
                                                                      {74685, [&] { move(0, 32, 1, 30, 0); }},
                                                                      {74160, [&] { move(0, 32, 1, 7, 11); }},
                                                                      {185304, [&] { move(1, 48, 2, 500, 0); }},
                                                                      {3645, [&] { play.ToFront(20); }}}) {
        play.handed = 0;
        change();
        DrawBoard(play.board, play.background);
        EXPECT_LE(play.handed, pixels);
    }
}

}  // namespace
}  // namespace PuzzleModule
