// Boards of every size, compared pixel for pixel with pictures in tests/golden. Look at new ones before they are
// committed.
#include "tests/support/golden.h"
#include "core/board/draw_board.h"
#include "platform/drawing/bmp.h"
#include "tests/core/small_game.h"

namespace PuzzleModule {
namespace {

struct Golden {
    const char* name;
    int unit, level, cols, rows, width, height;
    int apartX, apartY;  // from one piece to the next
};

constexpr Golden Boards[] = {{"tile160", 8, 3, 2, 2, 230, 210, 9, 7},
                             {"tile120", 6, 3, 3, 2, 240, 160, 9, 7},
                             {"tile100", 5, 4, 3, 3, 210, 200, 9, 7},
                             {"tile80", 4, 4, 4, 3, 230, 170, 9, 7},
                             {"tile60", 3, 5, 5, 4, 220, 170, 9, 7},
                             {"level0", 6, 0, 3, 2, 240, 160, 9, 7},
                             {"held_over_pile", 4, 5, 3, 3, 130, 120, -30, -30}};

void LooksAsItAlwaysDid(const Golden& golden) {
    SmallGame game(golden.unit, golden.level, golden.cols, golden.rows);
    // Bands of colour with a fine grid: every pixel can be told from its neighbours, and a person sees
    // whether a piece stands upright.
    Surface& master = game.surfaces.picMaster;
    const int width = master.Width(), height = master.Height();
    std::generate_n(master.DrawAll(), width * height, [&, i = 0]() mutable {
        const int x = i % width, y = i++ / width;
        return ToPixel(Rgb(255 * x / width, 255 * y / height, (x + 2 * y) % 16 < 2 ? 255 : 96 + (x ^ y) % 64));
    });
    game.Recut();
    for (PieceRec& piece : Pieces) {
        piece.X = int16_t(piece.X + golden.apartX * piece.Col);
        piece.Y = int16_t(piece.Y + golden.apartY * piece.Row);
    }
    if (golden.apartX < 0) {
        std::swap(Pieces[0], Pieces[4]);
        PickedPiece = 0;
    }
    Surface board(golden.width, golden.height);
    DrawBoard(board, Surface(golden.width, golden.height, ToPixel(Rgb(70, 110, 150))));
    ExpectGolden(golden.name + std::string(".bmp"), EncodeBmp(board));
}

TEST(GoldenBoards, LookAsTheyAlwaysDid) {
    for (const Golden& golden : Boards) LooksAsItAlwaysDid(golden);
}

}  // namespace
}  // namespace PuzzleModule
