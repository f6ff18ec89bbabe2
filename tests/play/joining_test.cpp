// The group of a held piece against a literal walk, and at sizes that no walk by calls would stand.
#include "play/joining.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>

#include "platform/system/numbers.h"
#include "tests/reference/literal_joining.h"

using namespace PuzzleModule;

namespace {

void MakeGrid(int cols, int rows, const LevelSizes& sizes = *SizesOfLevel(5, 1920)) {
    ResetState();
    SetSizes(sizes);
    GridCols = int16_t(cols);
    GridRows = int16_t(rows);
    for (int id = 0; id < cols * rows; ++id) {
        PieceRec piece;
        piece.PieceId = int16_t(id);
        piece.Row = int16_t(id / cols);
        piece.Col = int16_t(id % cols);
        piece.X = int16_t(piece.Col * CellSize);
        piece.Y = int16_t(piece.Row * CellSize);
        Pieces.push_back(piece);
    }
    PickedPiece = 0;
}

int Marked() {
    return int(std::ranges::count_if(Pieces, [](const PieceRec& piece) { return piece.InGroup != 0; }));
}

}  // namespace

TEST(CollectGroup, LeavesTheMarksOfTheLiteralWalkOnRandomBoards) {
    const unsigned seed = std::random_device{}();
    SCOPED_TRACE("seed " + std::to_string(seed));
    std::mt19937 random(seed);
    const auto below = [&random](int n) { return int(random() % unsigned(n)); };
    int marked = 0;
    for (int board = 0; board < 400; ++board) {
        MakeGrid(2 + below(7), 2 + below(7));
        const int spoilt = below(4);  // in ten
        for (PieceRec& piece : Pieces) {
            if (below(10) >= spoilt) continue;
            if (below(3) == 0) piece.Rotation = int16_t(1 + below(3));
            if (below(3) == 0) piece.X = int16_t(piece.X + (below(2) ? 11 : -CellSize));
            if (below(3) == 0) piece.Y = int16_t(piece.Y + (below(2) ? CellSize : 1));
        }
        std::shuffle(Pieces.begin(), Pieces.end(), random);
        Pieces[0].Rotation = 0;
        const std::vector<PieceRec> before = Pieces;
        CollectGroup(PickedPiece);
        marked += Marked();
        const std::vector<PieceRec> mine = std::exchange(Pieces, before);
        literal::CollectGroup(PickedPiece);
        ASSERT_EQ(mine, Pieces) << "board " << board << ", " << GridCols << " by " << GridRows;
    }
    EXPECT_GT(marked, 1000);
}

TEST(CollectGroup, TakesTheLargestBoardInOneGoWithoutDepthOfCalls) {
    const LevelSizes narrow{20, 1, 1, 1};  // so that a long row fits 16 bits
    for (const auto& [cols, rows] : {std::pair{170, 170}, {30000, 1}, {1, 30000}}) {
        MakeGrid(cols, rows, narrow);
        CollectGroup(0);
        EXPECT_GE(Marked(), UpperBound()) << cols << " by " << rows;
    }
}
