// The scatter, number by number as it is drawn.
#include "core/scatter.h"

#include <cmath>
#include <set>

#include "platform/system/random.h"
#include "tests/core/small_game.h"

namespace PuzzleModule {
namespace {

// Onto the pitch of drops; a place that 16 bits do not hold leaves the one before.
void Snap(int16_t& coordinate, double place) {
    const double whole = std::nearbyint(place);
    coordinate = int16_t(11 * std::nearbyint(((std::abs(whole) < 32768 ? whole : coordinate) - 20) / 11));
}

void ScatterLiterally(const ScatterView& view, Surface& scratch) {
    const auto step = [] { return CellSize + ScatterGap * TileUnit + 1 + std::floor(2 * Rnd()); };
    std::set<int> used;
    double x = 0, y = 0;
    for (int i = 0; i <= UpperBound(); ++i) {
        int element = 0;
        while (!used.insert(element).second) element = 1 + int(Rnd() * UpperBound());
        do {
            if (x == 0) x = y = 2 * TileUnit;
            x += step();
            if (x + CellSize > view.WindowWidth) y += step(), x = TileUnit;
        } while (x - CellSize < view.MasterWidth && y - CellSize < view.MasterHeight);
        Snap(Pieces[size_t(element)].X, x - view.BoardLeft);
        Snap(Pieces[size_t(element)].Y, y - view.BoardTop);
    }
    const double share = GameLevel == 0 ? 0.2 : GameLevel == 1 ? 0.5 : 0.7;
    for (int turns = int(Rnd() * UpperBound() * share); turns >= 0; --turns) {
        const int element = int(Rnd() * UpperBound());
        if (ChosenLevel > 1) RotatePiece(int16_t(element), scratch);
    }
}

TEST(Scatter, DrawsItsNumbersInTheirOrder) {
    std::minstd_rand random(7);
    const auto below = [&](int bound) { return int(random() % uint32_t(bound)); };
    SmallGame game;
    for (int run = 0; run < 120; ++run) {
        game.Cut(AllUnits[below(5)], 5, 2 + below(8), 2 + below(6));
        ScatterGap = int16_t(1 + below(3));
        GameLevel = int16_t(below(6));
        ChosenLevel = int16_t(below(6));
        // Windows narrower than a cell, and boards whose places 16 bits do not hold.
        const ScatterView view{-below(run % 9 == 0 ? 33000 : 500) - 0.5, -below(run % 7 == 0 ? 33000 : 500) / 2.0,
                               double(below(run % 5 == 0 ? 60 : 2000)), GridCols * CellSize, GridRows * CellSize};
        const std::vector<PieceRec> before = Pieces;
        SeedRandom(unsigned(run));
        ScatterPieces(view, game.surfaces.picTmp);
        const std::vector<PieceRec> mine = std::exchange(Pieces, before);
        SeedRandom(unsigned(run));
        ScatterLiterally(view, game.surfaces.picTmp);
        ASSERT_EQ(mine, Pieces) << run << ": " << view.BoardLeft << ", " << view.BoardTop;
    }
    SeedFromClock();
}

}  // namespace
}  // namespace PuzzleModule
