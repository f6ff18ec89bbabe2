// Pieces pixel by pixel: cut and turned. How the strip's outlines look is seen in the golden boards.
#include "tests/core/small_game.h"

namespace PuzzleModule {
namespace {

// Each game after another on the same surfaces; some pieces make more than a whole turn.
TEST(Pieces, ShowThePictureInTheirOutlineWhicheverWayTheyAreTurned) {
    std::minstd_rand random(7);
    SmallGame game;
    for (int run = 0; run < 24; ++run) {
        const int k = 1 + run % Density::Most, cols = 2 + int(random() % 4), rows = 2 + int(random() % 3);
        game.surfaces.SetDensity(Density(k));
        game.Cut(AllUnits[random() % 5], random() % 4 == 0 ? 0 : 5, cols, rows);
        const Surface& master = game.surfaces.picMaster;
        const int side = TileSize * k, lastX = master.Width() - 1, lastY = master.Height() - 1;
        ASSERT_TRUE(UpperBound() == cols * rows - 1 && game.surfaces.picPat.UBound() == UpperBound());
        for (int i = 0; i <= UpperBound(); ++i) {
            const int turns = int(random() % 6), row = i / cols, col = i % cols;
            const int tile = TileForCell(row, col, rows - 1, cols - 1, GameLevel);
            for (int turn = 0; turn < turns; ++turn) RotatePiece(int16_t(i), game.surfaces.picTmp);
            const PieceRec& piece = std::as_const(Pieces)[size_t(i)];
            ASSERT_TRUE(piece.PieceId == i && piece.Row == row && piece.Col == col && piece.Rotation == turns % 4);
            for (int pixel = 0; pixel < side * side; ++pixel) {
                const int x = pixel % side, y = pixel / side;
                Size from{x, y};  // before the turns
                for (int turn = 0; turn < turns; ++turn) from = {from.height, side - 1 - from.width};
                // The surplus unit at the far edges repeats them, at the far corner its first pixel.
                const int atX = col * CellSize - Margin() + from.width / k;
                const int atY = row * CellSize - Margin() + from.height / k;
                const Size in = atX > lastX && atY > lastY ? Size{} : Size{from.width % k, from.height % k};
                Pixel shown = WhitePixel;
                if (game.White(tile, from.width / k, from.height / k))
                    shown = master.At(std::min(atX, lastX) * k + in.width, std::min(atY, lastY) * k + in.height);
                ASSERT_EQ(std::as_const(game.surfaces.picPat)[i].At(x, y), shown)
                    << tile << " at " << x << ", " << y << " of " << side << " after " << turns << " turns";
                ASSERT_EQ(shown != WhitePixel, game.White(piece.MaskIndex, x / k, y / k)) << tile;
            }
        }
    }
}

}  // namespace
}  // namespace PuzzleModule
