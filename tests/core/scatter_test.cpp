#include "core/scatter.h"

#include <set>

#include "platform/random.h"
#include "tests/core/small_game.h"

namespace PuzzleModule {
namespace {

class Scatter : public testing::Test {
protected:
    SmallGame game{4, 5, 8, 6};
    void SetUp() override { SeedRandom(20240229); }
    void TearDown() override { SeedFromClock(); }

    ScatterView View(double left, double top, double width) {
        return {left, top, width, game.surfaces.picMaster.Width(), game.surfaces.picMaster.Height()};
    }
    void Run(const ScatterView& view) { ScatterPieces(view, game.surfaces.picTmp); }
};

// The snap takes 15 to 25 pixels off a lattice point, so a point is known to that much.
TEST_F(Scatter, LeavesTheCornerClearAndStandsOnThePitchOfDrops) {
    for (const int unit : AllUnits)
        for (const int16_t gap : {int16_t{1}, int16_t{3}}) {
            game.Cut(unit, 5, 7, 5);
            ScatterGap = gap;
            const ScatterView view = View(-261, -190, 1003);
            Run(view);
            std::set<std::pair<int, int>> places;
            for (const PieceRec& p : Pieces) {
                EXPECT_EQ(p.X % 11, 0);
                EXPECT_EQ(p.Y % 11, 0);
                const double x = p.X + view.BoardLeft, y = p.Y + view.BoardTop;
                EXPECT_FALSE(x + 25 - CellSize < view.MasterWidth && y + 25 - CellSize < view.MasterHeight);
                EXPECT_LE(x + 15 + CellSize, view.WindowWidth);
                EXPECT_TRUE(places.insert({p.X, p.Y}).second) << "two pieces on one place";
            }
        }
}

TEST_F(Scatter, EveryOtherElementComesToEveryPlace) {
    game.Cut(4, 1, 2, 2);
    std::set<std::vector<int>> orders;
    for (int run = 0; run < 200; ++run) {
        Run(View(0, 0, 2000));
        ASSERT_LT(Pieces[0].X, std::min({Pieces[1].X, Pieces[2].X, Pieces[3].X}));
        orders.insert({Pieces[1].X < Pieces[2].X, Pieces[2].X < Pieces[3].X, Pieces[1].X < Pieces[3].X});
    }
    EXPECT_EQ(orders.size(), 6u);
}

TEST_F(Scatter, TurnsByTheChosenLevelAndNeverTheLastElement) {
    struct Case {
        int16_t chosen;
        bool turns;
    };
    for (const Case& c : {Case{0, false}, Case{1, false}, Case{3, true}, Case{4, true}, Case{5, true}}) {
        game.Cut(4, 5, 8, 6);
        ChosenLevel = c.chosen;
        int turned = 0;
        for (int run = 0; run < 5; ++run) Run(View(0, 0, 900));
        for (const PieceRec& p : Pieces) turned += p.Rotation != 0;
        EXPECT_EQ(turned > 0, c.turns) << c.chosen;
        EXPECT_EQ(Pieces.back().Rotation, 0);
    }
}

TEST_F(Scatter, EndsInWindowsNarrowerThanACell) {
    for (const double width : {0.0, 1.0, 43.0, 60.0}) {
        Run(View(0, 0, width));
        std::set<int> rows;
        for (const PieceRec& p : Pieces) rows.insert(p.Y);
        EXPECT_EQ(rows.size(), Pieces.size()) << "one piece a row";
    }
}

}  // namespace
}  // namespace PuzzleModule
