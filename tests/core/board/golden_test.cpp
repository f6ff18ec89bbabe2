// About ten boards, compared pixel for pixel with pictures in tests/golden. A failure leaves the
// board it made in the build folder. FENTO_ACCEPT_GOLDEN=1 takes new pictures over; look at
// them before they are committed.
#include <cstdlib>
#include <functional>

#include "core/board/draw_board.h"
#include "platform/drawing/bmp.h"
#include "platform/system/files.h"
#include "tests/core/small_game.h"

namespace PuzzleModule {
namespace {

// Bands of colour with a fine grid: every pixel can be told from its neighbours, and a person sees
// whether a piece stands upright.
void PaintPattern(Surface& master) {
    Pixel* out = master.DrawAll();
    for (int y = 0; y < master.Height(); ++y)
        for (int x = 0; x < master.Width(); ++x) {
            const int red = 255 * x / master.Width(), green = 255 * y / master.Height();
            *out++ = ToPixel(Rgb(red, green, (x + 2 * y) % 16 < 2 ? 255 : 96 + (x ^ y) % 64));
        }
}

void PutAt(size_t element, int x, int y, int turns = 0) {
    Pieces[element].X = int16_t(x);
    Pieces[element].Y = int16_t(y);
    for (int i = 0; i < turns; ++i) RotatePiece(int16_t(element), Surfaces->picTmp);
}

struct Golden {
    const char* name;
    int unit, level, cols, rows, width, height;
    std::function<void()> arrange;  // all pieces lie at home before
};

void Apart() {
    for (PieceRec& piece : Pieces) {
        piece.X = int16_t(piece.X + 9 * piece.Col);
        piece.Y = int16_t(piece.Y + 7 * piece.Row);
    }
}

void ApartAndTurned() {
    Apart();
    for (size_t i = 0; i < Pieces.size(); ++i) PutAt(i, Pieces[i].X + 8, Pieces[i].Y + 8, int(i) % 4);
}

const Golden Boards[] = {
    {"tile160", 8, 3, 2, 2, 230, 210, Apart},
    {"tile120", 6, 3, 3, 2, 240, 160, Apart},
    {"tile100", 5, 4, 3, 3, 210, 200, Apart},
    {"tile80", 4, 4, 4, 3, 230, 170, Apart},
    {"tile60", 3, 5, 5, 4, 220, 170, Apart},
    {"level0", 6, 0, 3, 2, 240, 160, Apart},
    {"held_over_pile", 4, 5, 3, 3, 180, 150,
     [] {
         for (size_t i = 0; i < Pieces.size(); ++i) PutAt(i, 10 + int(i) * 9, 20 + int(i) * 5);
         std::swap(Pieces[0], Pieces[4]);
         PutAt(0, 50, 30);
         PickedPiece = 0;
     }},
    {"turned100", 5, 4, 3, 3, 240, 220, ApartAndTurned},
    {"turned60", 3, 5, 4, 4, 200, 190, ApartAndTurned},
    {"over_the_edges", 4, 5, 3, 3, 150, 120,
     [] {
         constexpr int At[9][3] = {{-40, -35, 0}, {110, -60, 1}, {-62, 80, 2}, {100, 90, 3}, {149, 20, 0},
                                   {30, 20, 0},   {-79, 30, 0},  {60, 119, 0}, {-200, 40, 0}};
         for (size_t i = 0; i < Pieces.size(); ++i) PutAt(i, At[i][0], At[i][1], At[i][2]);
         PickedPiece = 3;
     }},
};

class GoldenBoard : public testing::TestWithParam<Golden> {};
INSTANTIATE_TEST_SUITE_P(All, GoldenBoard, testing::ValuesIn(Boards),
                         [](const auto& tested) { return tested.param.name; });

TEST_P(GoldenBoard, LooksAsItAlwaysDid) {
    const Golden& golden = GetParam();
    SmallGame game(golden.unit, golden.level, golden.cols, golden.rows);
    PaintPattern(game.surfaces.picMaster);
    game.Recut();
    golden.arrange();
    Surface board(golden.width, golden.height);
    DrawBoard(board, Surface(golden.width, golden.height, ToPixel(Rgb(70, 110, 150))));

    const std::string path = std::string(FENTO_SOURCE_DIR "/tests/golden/") + golden.name + ".bmp";
    if (std::getenv("FENTO_ACCEPT_GOLDEN")) {
        ASSERT_TRUE(WriteFileAtomically(path, EncodeBmp(board)));
    }
    const std::string bytes = ReadFile(path).value_or("");
    const auto expected = DecodeBmp(std::as_bytes(std::span(bytes)));
    ASSERT_TRUE(expected) << "no picture at " << path;
    const std::string actual = std::string(FENTO_BUILD_DIR "/") + golden.name + "_actual.bmp";
    const std::string difference = FirstDifference(board, *expected);
    EXPECT_TRUE(difference.empty() || WriteFileAtomically(actual, EncodeBmp(board)));
    EXPECT_EQ(difference, "") << "first wrong pixel, is and should be; see " << actual;
}

}  // namespace
}  // namespace PuzzleModule
