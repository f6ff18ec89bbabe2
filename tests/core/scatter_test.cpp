#include "core/scatter.h"

#include <set>

#include "platform/system/random.h"
#include "tests/core/small_game.h"

namespace PuzzleModule {
namespace {

class Scatter : public testing::Test {
protected:
    SmallGame game{4, 5, 8, 6};
    Scatter() { SeedRandom(20240229); }
    ~Scatter() override { SeedFromClock(); }

    ScatterView Run(double left, double top, double width) {
        const Surface& master = game.surfaces.picMaster;
        const ScatterView view{left, top, width, master.Width(), master.Height()};
        ScatterPieces(view, game.surfaces.picTmp);
        return view;
    }
};

// The snap takes 15 to 25 pixels off a lattice point, so a point is known to that much.
TEST_F(Scatter, LeavesTheCornerClearAndStandsOnThePitchOfDrops) {
    for (const int unit : AllUnits)
        for (const int16_t gap : {int16_t{1}, int16_t{3}}) {
            game.Cut(unit, 5, 7, 5);
            ScatterGap = gap;
            const ScatterView view = Run(-261, -190, 1003);
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
        Run(0, 0, 2000);
        ASSERT_LT(Pieces[0].X, std::min({Pieces[1].X, Pieces[2].X, Pieces[3].X}));
        orders.insert({Pieces[1].X < Pieces[2].X, Pieces[2].X < Pieces[3].X, Pieces[1].X < Pieces[3].X});
    }
    EXPECT_EQ(orders.size(), 6u);
}

TEST_F(Scatter, TurnsByTheChosenLevelAndNeverTheLastElement) {
    for (const int16_t level : {int16_t{0}, int16_t{1}, int16_t{3}, int16_t{4}, int16_t{5}}) {
        game.Cut(4, 5, 8, 6);
        ChosenLevel = level;
        for (int run = 0; run < 5; ++run) Run(0, 0, 900);
        const bool turned = std::ranges::any_of(Pieces, [](const PieceRec& p) { return p.Rotation != 0; });
        EXPECT_EQ(turned, level >= 3) << level;
        EXPECT_EQ(Pieces.back().Rotation, 0);
    }
}

TEST_F(Scatter, EndsInWindowsNarrowerThanACell) {
    for (const double width : {0.0, 1.0, 43.0, 60.0}) {
        Run(0, 0, width);
        std::set<int> rows;
        for (const PieceRec& p : Pieces) rows.insert(p.Y);
        EXPECT_EQ(rows.size(), Pieces.size()) << "one piece a row";
    }
}

}  // namespace
}  // namespace PuzzleModule
