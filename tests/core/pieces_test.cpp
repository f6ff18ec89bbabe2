// Cutting and turning.
#include "tests/core/small_game.h"

namespace PuzzleModule {
namespace {

TEST(CutPieces, LeavesNothingOfALargerGame) {
    SmallGame game(4, 5, 6, 5);
    for (PieceRec& piece : Pieces) piece = {5, 6, 3, 9, 7, 7, 99, 8, 8, -1};
    game.Cut(8, 0, 2, 2);
    ASSERT_EQ(Pieces.size(), 4u);
    EXPECT_EQ(game.surfaces.picPat.UBound(), 3);
    for (int i = 0; i < 4; ++i) {
        EXPECT_EQ(Pieces[size_t(i)].PieceId, i);
        EXPECT_EQ(Pieces[size_t(i)].MaskIndex, 18);
        EXPECT_EQ(Pieces[size_t(i)].Rotation, 0);
        EXPECT_EQ(Pieces[size_t(i)].InGroup, 0);
        const Surface& surface = std::as_const(game.surfaces.picPat)[i];
        EXPECT_EQ(surface.Bounds(), (Rect{0, 0, 160, 160}));
    }
}

class Turning : public testing::TestWithParam<int> {};
INSTANTIATE_TEST_SUITE_P(AllSizes, Turning, testing::ValuesIn(AllUnits));

TEST_P(Turning, MovesEveryPixelAQuarterClockwise) {
    SmallGame game(GetParam(), 5, 3, 3);
    const PieceRec before = Pieces[5];
    const Surface& surface = std::as_const(game.surfaces.picPat)[5];
    Surface old(TileSize, TileSize);
    BitBlt(old, 0, 0, TileSize, TileSize, surface, 0, 0, RasterOp::SrcCopy);
    RotatePiece(5, game.surfaces.picTmp);
    for (int y = 0; y < TileSize; ++y)
        for (int x = 0; x < TileSize; ++x) ASSERT_EQ(surface.At(TileSize - 1 - y, x), old.At(x, y));
    PieceRec expected = before;
    expected.Rotation = 1;
    expected.MaskIndex = TurnedTile(before.MaskIndex);
    EXPECT_EQ(Pieces[5], expected);

    for (int i = 0; i < 3; ++i) RotatePiece(5, game.surfaces.picTmp);
    EXPECT_EQ(Pieces[5], before);
    for (int y = 0; y < TileSize; ++y)
        for (int x = 0; x < TileSize; ++x) ASSERT_EQ(surface.At(x, y), old.At(x, y));
}

}  // namespace
}  // namespace PuzzleModule
