// The scatter in windows of any size.
#include "core/scatter.h"

#include "platform/system/random.h"
#include "tests/core/small_game.h"
#include "tests/support/transcript.h"

namespace PuzzleModule {
namespace {

// Where the pieces come to lie, and which are turned, for one number after the other.
TEST(Scatter, LaysThePiecesOutAsItAlwaysDid) {
    Transcript transcript;
    std::minstd_rand random(7);
    const auto below = [&](int bound) { return int(random() % uint32_t(bound)); };
    SmallGame game;
    for (int run = 0; run < 120; ++run) {
        const Size cells{2 + below(8), 2 + below(6)};
        game.Cut(AllUnits[run % 5], 5, cells.width, cells.height);
        ScatterGap = int16_t(1 + below(3));
        GameLevel = int16_t(run % 6);
        ChosenLevel = int16_t(below(6));
        // Windows narrower than a cell, and boards whose places 16 bits do not hold.
        const ScatterView view{-below(run % 9 == 0 ? 33000 : 500) - 0.5, -below(run % 7 == 0 ? 33000 : 500) / 2.0,
                               double(below(run % 5 == 0 ? 60 : 2000)), GridCols * CellSize, GridRows * CellSize};
        SeedRandom(unsigned(run));
        ScatterPieces(view, game.surfaces.picTmp);
        std::ostringstream places;
        for (const PieceRec& piece : Pieces) places << piece.X << ',' << piece.Y << ' ' << piece.Rotation << "; ";
        transcript.Write(places.str());
    }
    SeedFromClock();
}

}  // namespace
}  // namespace PuzzleModule
