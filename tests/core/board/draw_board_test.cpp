// The board against its literal meaning, on random boards under random sequences of changes. Each
// comparison looks at the surface and at a screen that only gets the damage handed on.
#include "core/board/draw_board.h"

#include <functional>

#include "tests/core/small_game.h"
#include "tests/reference/literal_board.h"

namespace PuzzleModule {
namespace {

// Shows what Refresh hands on, and nothing else.
class Screen : public SurfaceListener {
public:
    explicit Screen(Surface& source) : source_(source) { Resize(); }
    ~Screen() override { source_.SetListener(nullptr); }
    void Resize() {
        Shown.Resize(source_.Width(), source_.Height());
        Shown.SetDensity(source_.PixelDensity());
        source_.SetListener(this);
    }
    void SurfaceRefreshed(const Region& damage) override {
        Last = damage;
        for (const Rect& r : damage) BitBlt(Shown, r.x, r.y, r.width, r.height, source_, r.x, r.y, RasterOp::SrcCopy);
    }
    Surface Shown;
    Region Last;

private:
    Surface& source_;
};

class RandomPlay {
public:
    RandomPlay(uint32_t seed, Density density) : random_(seed) {
        game_.surfaces.SetDensity(density);
        for (Surface* surface : {&board, &background}) surface->SetDensity(density);
        screen.Resize();
        NewGame();
    }

    // One change of any kind that the program, or anything else, might make between two compositions.
    std::string Change() {
        const std::pair<const char*, std::function<void()>> changes[] = {
            {"new game", [&] { NewGame(); }},
            {"pick-up", [&] { PickUp(Below(int(Pieces.size()))); }},
            {"turn", [&] { RotatePiece(int16_t(Below(int(Pieces.size()))), game_.surfaces.picTmp); }},
            {"drop", [&] { Drop(); }},
            {"thrown piece", [&] { Throw(Any()); }},
            {"shuffle", [&] { std::shuffle(Pieces.begin(), Pieces.end(), random_); }},
            {"two swapped", [&] { std::swap(Any(), Any()); }},
            {"sort", [&] { std::ranges::sort(Pieces, {}, &PieceRec::PieceId); }},
            {"foreign drawing", [&] { Line(board, Below(90), Below(90), 60, 50, Below(0xFFFFFF)); }},
            {"background colour", [&] { background.SetBackground(OpaqueBits | uint32_t(random_())); }},
            {"background",
             [&] {
                 FillRect(background, {Below(90), Below(90), 70, 50}, Below(0xFFFFFF));
             }},
            {"repainted surface", [&] { PaintInside(Any()); }},
            {"another piece held", [&] { PickedPiece = int16_t(Below(int(Pieces.size()) + 1) - 1); }},
            {"cleared", [&] { board.Cls(); }},
            {"new size", [&] { NewSize(); }},
            {"piece gone", [&] { Pieces.size() > 1 ? Pieces.pop_back() : NewGame(); }},
        };
        const size_t any = size_t(Below(40));
        if (any >= std::size(changes)) return Drag(), "drag";
        changes[any].second();
        return changes[any].first;
    }

    int Below(int bound) { return int(random_() % uint32_t(bound)); }

    Surface board{320, 260}, background{320, 260};
    Screen screen{board};

private:
    PieceRec& Any() { return Pieces[size_t(Below(int(Pieces.size())))]; }

    void NewGame() {
        game_.Cut(AllUnits[Below(5)], Below(4) == 0 ? 0 : 5, 2 + Below(6), 2 + Below(5), uint32_t(random_()));
        const bool joined = Below(2) == 0;
        for (PieceRec& piece : Pieces)
            if (joined ? Below(8) == 0 : Below(3) != 0) Throw(piece);
        PickedPiece = -1;
        // Noise: whatever is brought from where it does not belong shows.
        background.SetBackground(OpaqueBits | uint32_t(random_()));
        if (Below(3) == 0) return;
        const Rect pixels = background.PixelBounds();
        std::generate_n(background.DrawAll(), pixels.width * pixels.height,
                        [&] { return OpaqueBits | Pixel(random_()); });
    }
    void NewSize() {
        board.Resize(120 + Below(250), 100 + Below(200));
        background.Resize(board.Width(), board.Height());
        screen.Resize();
    }
    // Somewhere on the board or over any of its edges.
    void Throw(PieceRec& piece) {
        piece.X = int16_t(Below(board.Width() + 2 * TileSize) - TileSize - 20);
        piece.Y = int16_t(Below(board.Height() + 2 * TileSize) - TileSize - 20);
    }
    // With it goes a block of the picture, or whatever chance tells.
    void PickUp(int element) {
        std::rotate(Pieces.begin(), Pieces.begin() + element, Pieces.begin() + element + 1);
        PickedPiece = 0;
        const int cols = 2 + Below(GridCols), rows = 2 + Below(GridRows), share = 1 + Below(4), block = Below(3);
        for (PieceRec& piece : Pieces) {
            piece.InGroup = (block ? piece.Col < cols && piece.Row < rows : Below(4) < share) ? -1 : 0;
            piece.GroupDX = int16_t(piece.X - Pieces[0].X);
            piece.GroupDY = int16_t(piece.Y - Pieces[0].Y);
        }
    }
    void Drag() {
        if (PickedPiece < 0) return PickUp(Below(int(Pieces.size())));
        const int reach = Below(3) == 0 ? 200 : 9;
        Pieces[0].X = int16_t(Pieces[0].X + Below(2 * reach) - reach);
        Pieces[0].Y = int16_t(Pieces[0].Y + Below(2 * reach) - reach);
        for (size_t i = 1; i < Pieces.size(); ++i) {
            if (Pieces[i].InGroup == 0) continue;
            Pieces[i].X = int16_t(Pieces[0].X + Pieces[i].GroupDX);
            Pieces[i].Y = int16_t(Pieces[0].Y + Pieces[i].GroupDY);
        }
    }
    void Drop() {
        PickedPiece = -1;
        for (PieceRec& piece : Pieces) {
            piece.X = int16_t(piece.X / 11 * 11);
            piece.Y = int16_t(piece.Y / 11 * 11);
            piece.InGroup = 0;
        }
    }
    void PaintInside(const PieceRec& piece) {
        Surface& surface = game_.surfaces.picPat[piece.PieceId];
        for (int x = 0; x < TileSize; ++x)
            if (game_.White(piece.MaskIndex, x, TileSize / 2)) SetPixel(surface, x, TileSize / 2, Below(0xFFFFFF));
    }

    SmallGame game_;
    std::minstd_rand random_;
};

TEST(DrawBoard, IsTheLiteralSequenceAfterAnyChange) {
    const uint32_t first = std::random_device{}();
    for (uint32_t run = 0; run < 40; ++run) {
        const uint32_t seed = first + run;
        SCOPED_TRACE("seed " + std::to_string(seed));
        const Density density(run % 2 == 0 ? 1 : 2 + int(run / 2 % 2));
        RandomPlay play(seed, density);
        std::string story;
        for (int step = 0; step < 80 / density.PerUnit(); ++step) {
            for (int changes = 1 + play.Below(2); changes > 0; --changes) story += ", " + play.Change();
            Surface expected(play.board.Width(), play.board.Height());
            expected.SetDensity(density);
            reference::DrawBoard(expected, play.background);
            DrawBoard(play.board, play.background);
            ASSERT_EQ(FirstDifference(play.board, expected), "") << story;
            ASSERT_EQ(FirstDifference(play.screen.Shown, expected), "") << "not handed on: " << story;
        }
    }
}

// Whatever the picture's pixels are, they stand in the outlines as they are.
TEST(DrawBoard, ASolvedBoardShowsThePictureAtEveryDensity) {
    for (const int unit : AllUnits)
        for (int k = 1; k <= Density::Most; ++k) {
            SmallGame game;
            game.surfaces.SetDensity(Density(k));
            game.Cut(unit, 5, 4, 3);
            Surface board(game.surfaces.picMaster.Width(), game.surfaces.picMaster.Height()), background(1, 1);
            board.SetDensity(Density(k));
            background.SetDensity(Density(k));
            background.Resize(board.Width(), board.Height());
            DrawBoard(board, background);
            EXPECT_EQ(FirstDifference(board, game.surfaces.picMaster), "") << unit << " " << k;
        }
}

// A slow computer shows what is drawn in vain: after each change, how many rectangles are handed on at most, and how
// many pixels they hold.
TEST(DrawBoard, HandsOnLittleMoreThanWhatChanged) {
    SmallGame game(4, 5, 8, 6);
    Surface board(1500, 1000), background(1500, 1000);
    Screen screen(board);
    DrawBoard(board, background);
    using Which = bool (*)(const PieceRec&);
    const auto move = [](Which wanted, int dx, int dy) {
        for (PieceRec& piece : Pieces)
            if (wanted(piece)) piece.X = int16_t(piece.X + dx), piece.Y = int16_t(piece.Y + dy);
    };
    const Which last = [](const PieceRec& piece) { return piece.PieceId == 47; };
    const Which group = [](const PieceRec& piece) { return piece.Row < 4; };
    const Which chequered = [](const PieceRec& piece) { return (piece.Row + piece.Col) % 2 == 0; };
    struct Case {
        const char* change;
        size_t rects;
        int pixels;
        std::function<void()> make;
    };
    for (const Case& c : {
             Case{"nothing", 0, 0, [] {}},
             Case{"a jump", 2, 5670, [&] { move(last, 900, 500); }},
             Case{"a step", 1, 3102, [&] { move(last, 3, 2); }},
             Case{"a group", 1, 74685, [&] { move(group, 30, 0); }},
             Case{"its next step", 1, 74160, [&] { move(group, 7, 11); }},
             Case{"a piece to the front", 1, 3645, [] { std::rotate(&Pieces[0], &Pieces[20], &Pieces[20] + 1); }},
             Case{"it is held", 1, 3645, [] { PickedPiece = 0; }},
             Case{"a turn", 1, 5994, [&] { RotatePiece(7, game.surfaces.picTmp); }},
             Case{"many pieces", 8, 215480, [&] { move(chequered, 500, 0); }},
         }) {
        screen.Last.clear();
        c.make();
        DrawBoard(board, background);
        int pixels = 0;
        for (const Rect& rect : screen.Last) pixels += rect.width * rect.height;
        EXPECT_LE(screen.Last.size(), c.rects) << c.change;
        EXPECT_LE(pixels, c.pixels) << c.change;
    }
}

}  // namespace
}  // namespace PuzzleModule
