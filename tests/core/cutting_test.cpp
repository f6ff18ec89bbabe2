// Pieces pixel by pixel: cut, turned and hit. How the strip's outlines look is seen in the golden boards.
#include "tests/core/small_game.h"

namespace PuzzleModule {
namespace {

// Each game after another on the same surfaces; some pieces make more than a whole turn.
TEST(Pieces, ShowThePictureInTheirOutlineWhicheverWayTheyAreTurned) {
    const uint32_t seed = std::random_device{}();
    SCOPED_TRACE("seed " + std::to_string(seed));
    std::minstd_rand random(seed);
    SmallGame game;
    for (int run = 0; run < 24; ++run) {
        const int k = 1 + run % Density::Most, cols = 2 + int(random() % 4), rows = 2 + int(random() % 3);
        game.surfaces.SetDensity(Density(k));
        game.Cut(AllUnits[random() % 5], random() % 4 == 0 ? 0 : 5, cols, rows);
        const Surface& master = game.surfaces.picMaster;
        ASSERT_EQ(UpperBound(), cols * rows - 1);
        ASSERT_EQ(game.surfaces.picPat.UBound(), UpperBound());
        for (int i = 0; i <= UpperBound(); ++i) {
            const int turns = int(random() % 6), row = i / cols, col = i % cols;
            const int tile = TileForCell(row, col, rows - 1, cols - 1, GameLevel);
            for (int turn = 0; turn < turns; ++turn) RotatePiece(int16_t(i), game.surfaces.picTmp);
            PieceRec piece = std::as_const(Pieces)[size_t(i)], cut;
            cut.Rotation = int16_t(turns % 4), cut.PieceId = int16_t(i), cut.Row = int16_t(row), cut.Col = int16_t(col);
            cut.MaskIndex = piece.MaskIndex, cut.X = piece.X, cut.Y = piece.Y;
            EXPECT_EQ(piece, cut);
            const Surface& surface = std::as_const(game.surfaces.picPat)[i];
            const int side = TileSize * k;
            for (int y = 0; y < side; ++y)
                for (int x = 0; x < side; ++x) {
                    Size from{x, y};  // before the turns
                    for (int turn = 0; turn < turns; ++turn) from = {from.height, side - 1 - from.width};
                    const bool inside = game.White(tile, from.width / k, from.height / k);
                    ASSERT_EQ(game.White(piece.MaskIndex, x / k, y / k), inside) << tile << " at " << x << ", " << y;
                    // The surplus unit at the far edges repeats them, at the far corner its first pixel.
                    const int atX = col * CellSize - Margin() + from.width / k, lastX = master.Width() - 1;
                    const int atY = row * CellSize - Margin() + from.height / k, lastY = master.Height() - 1;
                    const Size in = atX > lastX && atY > lastY ? Size{} : Size{from.width % k, from.height % k};
                    const Pixel shown =
                        inside ? master.At(std::min(atX, lastX) * k + in.width, std::min(atY, lastY) * k + in.height)
                               : WhitePixel;
                    ASSERT_EQ(surface.At(x, y), shown)
                        << tile << " at " << x << ", " << y << " of " << TileSize << " after " << turns << " turns";
                }
        }
    }
}

// One column and row beyond the tile read on in the strip; beyond the strip a point lies on the piece.
TEST(Pieces, AreHitWhereTheStripIsWhite) {
    SmallGame game(3, 5, 2, 2);
    const Surface& strip = game.surfaces.picMasks[1];
    for (int16_t tile = 0; tile < TileCount; ++tile)
        for (int i = 0; i < (TileSize + 1) * (TileSize + 1); ++i) {
            const int x = i % (TileSize + 1), y = i / (TileSize + 1), at = tile * TileSize + x;
            const bool hit = !strip.Bounds().Contains(at, y) || strip.At(at, y) == WhitePixel;
            Pieces[0].X = 100, Pieces[0].Y = -30, Pieces[0].MaskIndex = tile;
            ASSERT_EQ(HitTest(0, int16_t(100 + x), int16_t(y - 30)), hit) << tile << " at " << x << ", " << y;
        }
    EXPECT_FALSE(HitTest(-1, 0, 0) || HitTest(4, 0, 0));
    EXPECT_TRUE(TurnedTile(-1) == -1 && TurnedTile(TileCount) == TileCount);
}

}  // namespace
}  // namespace PuzzleModule
