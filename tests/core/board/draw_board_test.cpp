// The board against its literal meaning, on random boards under random sequences of changes. Each
// comparison looks at the surface and at a screen that only gets the damage handed on.
#include "core/board/draw_board.h"

#include "platform/drawing/picture.h"
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
    RandomPlay(SmallGame& game, uint32_t seed) : game_(game), random_(seed) {}

    int Below(int bound) { return int(random_() % uint32_t(bound)); }
    PieceRec& Any() { return Pieces[size_t(Below(int(Pieces.size())))]; }

    void NewGame(Surface& board) {
        game_.Cut(AllUnits[Below(5)], Below(4) == 0 ? 0 : 5, 2 + Below(6), 2 + Below(5), uint32_t(random_()));
        const bool joined = Below(3) == 0;
        for (PieceRec& piece : Pieces)
            if (joined ? Below(8) == 0 : Below(3) != 0) Throw(piece, board);
        PickedPiece = -1;
    }
    // Somewhere on the board or over any of its edges.
    void Throw(PieceRec& piece, const Surface& board) {
        piece.X = int16_t(Below(board.Width() + 2 * TileSize) - TileSize - 20);
        piece.Y = int16_t(Below(board.Height() + 2 * TileSize) - TileSize - 20);
    }
    void PickUp(int element) {
        std::rotate(Pieces.begin(), Pieces.begin() + element, Pieces.begin() + element + 1);
        PickedPiece = 0;
        const int share = 1 + Below(4);
        for (PieceRec& piece : Pieces) {
            piece.InGroup = Below(4) < share ? -1 : 0;
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

    // One change of any kind that the program, or anything else, might make between two compositions.
    const char* Change(Surface& board, Surface& background, Screen& screen) {
        switch (Below(24)) {
            case 0:
                return NewGame(board), "new game";
            case 1:
                return PickUp(Below(int(Pieces.size()))), "pick-up";
            case 2:
                return RotatePiece(int16_t(Below(int(Pieces.size()))), game_.surfaces.picTmp), "turn";
            case 3:
                return Drop(), "drop";
            case 4:
                return Throw(Any(), board), "thrown piece";
            case 5:
                return std::shuffle(Pieces.begin(), Pieces.end(), random_), "shuffle";
            case 6:
                return std::swap(Any(), Any()), "two swapped";
            case 7:
                return std::ranges::sort(Pieces, {}, &PieceRec::PieceId), "sort";
            case 8:
                return Line(board, Below(90), Below(90), 60, 50, Below(0xFFFFFF)), "foreign drawing";
            case 9:
                return background.SetBackground(OpaqueBits | uint32_t(random_())), "background colour";
            case 10:
                return FillRect(background, {Below(90), Below(90), 70, 50}, Below(0xFFFFFF)), "background";
            case 11:
                return PaintInside(Any()), "repainted surface";
            case 12:
                return PickedPiece = int16_t(Below(int(Pieces.size()) + 1) - 1), "another piece held";
            case 13:
                if (Below(3) != 0) return board.Cls(), "cleared";
                board.Resize(120 + Below(200), 100 + Below(150));
                background.Resize(board.Width(), board.Height());
                return screen.Resize(), "new size";
            case 14:
                return Pieces.pop_back(), Pieces.empty() ? NewGame(board) : void(), "piece gone";
            default:
                return Drag(), "drag";
        }
    }

private:
    SmallGame& game_;
    std::minstd_rand random_;
};

TEST(DrawBoard, IsTheLiteralSequenceAfterAnyChange) {
    const uint32_t first = std::random_device{}();
    for (uint32_t run = 0; run < 40; ++run) {
        const uint32_t seed = first + run;
        SCOPED_TRACE("seed " + std::to_string(seed));
        SmallGame game;
        RandomPlay play(game, seed);
        Surface board(260, 210), background(260, 210, ToPixel(Rgb(30, 90, 200)));
        const Density density(run % 2 == 0 ? 1 : 2 + play.Below(2));
        game.surfaces.SetDensity(density);
        for (Surface* surface : {&board, &background}) surface->SetDensity(density);
        Screen screen(board);
        play.NewGame(board);
        std::string story;
        for (int step = 0; step < 60 / density.PerUnit(); ++step) {
            for (int changes = 1 + play.Below(2); changes > 0; --changes)
                story = story + ", " + play.Change(board, background, screen);
            Surface expected(board.Width(), board.Height());
            expected.SetDensity(density);
            reference::DrawBoard(expected, background);
            DrawBoard(board, background);
            ASSERT_EQ(FirstDifference(board, expected), "") << story;
            ASSERT_EQ(FirstDifference(screen.Shown, expected), "") << "not handed on: " << story;
        }
    }
}

Surface Enlarged(const Surface& plain, Density density) {
    Surface dense(plain.Width(), plain.Height());
    dense.SetDensity(density);
    Pixel* out = dense.DrawAll();
    for (int y = 0; y < dense.PixelBounds().height; ++y)
        for (int x = 0; x < dense.PixelBounds().width; ++x)
            *out++ = plain.At(x / density.PerUnit(), y / density.PerUnit());
    return dense;
}

// Pieces turned, thrown about and held, as `density` shows them; the picture's pixels are squares of its pixels.
Surface ScatteredBoard(int unit, int level, Density density) {
    SmallGame game(unit, level, 4, 3);
    Surface board(300, 260), background(300, 260, ToPixel(Rgb(30, 90, 200)));
    const Surface master = Enlarged(game.surfaces.picMaster, density);
    game.surfaces.SetDensity(density);
    PaintPicture(game.surfaces.picMaster, master.Bounds(), master);
    game.Recut();
    for (Surface* surface : {&board, &background}) surface->SetDensity(density);
    RandomPlay play(game, 7);
    for (size_t i = 0; i < Pieces.size(); ++i) {
        if (i % 3 != 0) play.Throw(Pieces[i], board);
        for (size_t turn = 0; turn < i % 4; ++turn) RotatePiece(int16_t(i), game.surfaces.picTmp);
    }
    play.PickUp(5);
    for (int step = 0; step < 4; ++step) {
        DrawBoard(board, background);
        play.Drag();
    }
    DrawBoard(board, background);
    Line(board, 40, 30, 60, 50, 65535);
    return board;
}

TEST(DrawBoard, OnADenseScreenIsThePlainBoardEnlarged) {
    for (const int unit : AllUnits)
        for (const int level : {0, 5}) {
            const Surface plain = ScatteredBoard(unit, level, Density(1));
            for (const Density density : {Density(2), Density(3)})
                EXPECT_EQ(FirstDifference(ScatteredBoard(unit, level, density), Enlarged(plain, density)), "")
                    << unit << " " << density.PerUnit();
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

class DrawBoardDamage : public testing::Test {
protected:
    SmallGame game{4, 5, 8, 6};
    Surface board{1500, 1000}, background{1500, 1000};
    Screen screen{board};

    void Draw() { DrawBoard(board, background); }
    int64_t Handed() const {
        int64_t pixels = 0;
        for (const Rect& rect : screen.Last) pixels += int64_t(rect.width) * rect.height;
        return pixels;
    }
};

// 4 rows of 8 pieces go 30 pixels to the right: hardly more than the block and its way.
TEST_F(DrawBoardDamage, AGroupIsHandedOnAsItsOutline) {
    Draw();
    for (PieceRec& piece : Pieces)
        if (piece.Row < 4) piece.X = int16_t(piece.X + 30);
    Draw();
    EXPECT_LE(screen.Last.size(), 8u);
    EXPECT_LT(Handed(), (8 * 44 + 30 + 80) * (4 * 44 + 80));
}

// Two far corners are two rectangles, not the board between them.
TEST_F(DrawBoardDamage, ALongJumpIsTwoPlaces) {
    Draw();
    Pieces[9].X = 1300;
    Pieces[9].Y = 800;
    Draw();
    EXPECT_EQ(screen.Last.size(), 2u);
    EXPECT_LE(Handed(), 2 * 81 * 81);
}

}  // namespace
}  // namespace PuzzleModule
