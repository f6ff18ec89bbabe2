// Laws of the mask strip and of the pieces cut by it, at all five sizes. What tile a cell gets, and which way it turns,
// is seen in the golden boards.
#include "tests/core/small_game.h"

namespace PuzzleModule {
namespace {

// Runs of white along single rows and columns of tiles, as drawn by hand.
TEST(MasterStrip, TabsAndSocketsHaveTheirProfile) {
    const Surface strip = BuildMasterStrip();
    struct Run {
        int tile, y, first, last;  // the only white run of the row
    };
    for (const Run& run : {Run{1, 0, 36, 43}, Run{1, 3, 34, 45}, Run{1, 4, 32, 47}, Run{1, 13, 30, 49},
                           Run{1, 14, 32, 47}, Run{1, 17, 34, 45}, Run{1, 39, 36, 43}, Run{1, 79, 36, 43},
                           Run{0, 39, 0, 79}, Run{0, 36, 0, 79}, Run{18, 18, 18, 61}, Run{3, 79, 36, 43}}) {
        for (int x = 0; x < 80; ++x)
            ASSERT_EQ(strip.At(run.tile * 80 + x, run.y) == WhitePixel, x >= run.first && x <= run.last)
                << "tile " << run.tile << " at " << x << ", " << run.y;
    }
}

class Strip : public testing::TestWithParam<int> {
protected:
    SmallGame game{GetParam(), 5, 2, 2};
};
INSTANTIATE_TEST_SUITE_P(AllSizes, Strip, testing::ValuesIn(AllUnits));

TEST_P(Strip, EachTileIsTheOneBeforeItTurnedClockwise) {
    for (int16_t tile = 0; tile < TileCount; ++tile)
        for (int y = 0; y < TileSize; ++y)
            for (int x = 0; x < TileSize; ++x)
                ASSERT_EQ(game.White(tile, x, y), game.White(TurnedTile(tile), TileSize - 1 - y, x))
                    << tile << " at " << x << ", " << y;
}

// Every pixel of a solved picture lies in one shape; at 100 and 60, where the margin truncates, in
// one or two.
TEST_P(Strip, ShapesOfASolvedGridCoverThePicture) {
    constexpr int cols = 5, rows = 4;
    const bool exact = GetParam() % 2 == 0;
    std::vector<int> cover(size_t(cols * CellSize * rows * CellSize));
    for (int row = 0; row < rows; ++row)
        for (int col = 0; col < cols; ++col) {
            const int tile = TileForCell(row, col, rows - 1, cols - 1, 5);
            for (int y = 0; y < TileSize; ++y)
                for (int x = 0; x < TileSize; ++x) {
                    const int px = col * CellSize - Margin() + x, py = row * CellSize - Margin() + y;
                    const bool inside = px >= 0 && py >= 0 && px < cols * CellSize && py < rows * CellSize;
                    if (inside) cover[size_t(py * cols * CellSize + px)] += game.White(tile, x, y);
                    // Outer sides are flat: no more than the surplus pixel hangs over.
                    const int surplus = exact ? 0 : 1;
                    const bool outside =
                        px < 0 || py < 0 || px >= cols * CellSize + surplus || py >= rows * CellSize + surplus;
                    ASSERT_FALSE(outside && game.White(tile, x, y)) << tile << " at " << x << ", " << y;
                }
        }
    EXPECT_THAT(cover, testing::Each(testing::AllOf(testing::Ge(1), testing::Le(exact ? 1 : 4))));
    EXPECT_EQ(exact, !testing::Value(cover, testing::Contains(testing::Gt(1))));
}

TEST_P(Strip, ASolvedBoardShowsThePicturePixelForPixel) {
    game.Cut(GetParam(), 5, 5, 4, 7);
    // Some pieces make a whole turn before they are at home again.
    for (int16_t i = 0; i <= UpperBound(); i += 3)
        for (int turn = 0; turn < 4; ++turn) RotatePiece(i, game.surfaces.picTmp);
    for (const PieceRec& piece : Pieces) {
        const Surface& surface = std::as_const(game.surfaces.picPat)[piece.PieceId];
        for (int y = 0; y < TileSize; ++y)
            for (int x = 0; x < TileSize; ++x) {
                const int px = piece.X + x, py = piece.Y + y;
                const Surface& master = game.surfaces.picMaster;
                // The surplus pixel at the far edges repeats them.
                const int atX = std::min(px, master.Width() - 1), atY = std::min(py, master.Height() - 1);
                ASSERT_EQ(surface.At(x, y), game.White(piece.MaskIndex, x, y) ? master.At(atX, atY) : WhitePixel);
            }
    }
}

TEST(CutPieces, LeavesNothingOfALargerGame) {
    SmallGame game(4, 5, 6, 5);
    for (PieceRec& piece : Pieces) piece = {5, 6, 3, 9, 7, 7, 99, 8, 8, -1};
    game.Cut(8, 0, 2, 2);
    ASSERT_EQ(Pieces.size(), 4u);
    EXPECT_EQ(game.surfaces.picPat.UBound(), 3);
    for (int i = 0; i < 4; ++i) {
        const PieceRec& piece = Pieces[size_t(i)];
        EXPECT_THAT((std::array{piece.PieceId, piece.MaskIndex, piece.Rotation, piece.InGroup}),
                    testing::ElementsAre(i, 18, 0, 0));
        EXPECT_EQ(std::as_const(game.surfaces.picPat)[i].Bounds(), (Rect{0, 0, 160, 160}));
    }
}

// A socket's column at the tile's edge, the square's corner, and the column and row beyond the tile: there the
// next tile of the strip counts (10, behind 9, has a tab), and beyond the strip all is white.
TEST(HitTest, FollowsTheShapeAndReadsOnBeyondTheTile) {
    SmallGame game(4, 5, 4, 4);
    PieceRec& piece = Pieces[0];
    piece.X = 100, piece.Y = -30;
    struct Case {
        int16_t tile, x, y;
        bool hit;
    };
    for (const Case& c :
         {Case{18, 18, 18, true}, Case{18, 17, 18, false}, Case{18, 61, 61, true}, Case{18, 62, 61, false},
          Case{1, 0, 40, false}, Case{0, 0, 40, true}, Case{1, 80, 40, false}, Case{17, 80, 40, false},
          Case{9, 80, 40, true}, Case{18, 80, 40, true}, Case{18, 0, 80, true}, Case{0, 80, 80, true}}) {
        piece.MaskIndex = c.tile;
        EXPECT_EQ(HitTest(0, int16_t(piece.X + c.x), int16_t(piece.Y + c.y)), c.hit)
            << c.tile << " at " << c.x << ", " << c.y;
    }
}

}  // namespace
}  // namespace PuzzleModule
