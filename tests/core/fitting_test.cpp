#include "core/fitting.h"

#include <gtest/gtest.h>

namespace PuzzleModule {
namespace {

TEST(FitNewGame, FollowsTheWorkedExamples) {
    struct Case {
        Size natural;
        int cellSize, screenWidth, screenHeight;
        Size master, grid, picture;
        bool tooSmall;
    };
    for (const Case& c : {
             Case{{800, 600}, 66, 1024, 768, {528, 396}, {8, 6}, {524, 394}, false},
             Case{{200, 300}, 88, 1280, 1024, {264, 352}, {3, 4}, {238, 348}, false},
             // A side of whole cells gets one more.
             Case{{132, 132}, 66, 1024, 768, {198, 198}, {3, 3}, {196, 196}, false},
             Case{{60, 60}, 66, 1024, 768, {66, 66}, {1, 1}, {64, 64}, true},
             // The growth of 1% rounds back to the same number, 45 + 1 is within 3% only at 46.35, and an
             // odd margin takes a pixel.
             Case{{45, 45}, 44, 1024, 768, {88, 88}, {2, 2}, {42, 42}, false},
             Case{{1000, 30}, 44, 1024, 768, {1012, 44}, {23, 1}, {1008, 28}, true},
         }) {
        const auto fit = FitNewGame(c.natural, c.cellSize, c.screenWidth, c.screenHeight);
        ASSERT_TRUE(fit);
        SCOPED_TRACE(testing::PrintToString(std::pair{c.natural.width, c.natural.height}));
        EXPECT_EQ((Size{fit->MasterWidth, fit->MasterHeight}), c.master);
        EXPECT_EQ((Size{fit->GridCols, fit->GridRows}), c.grid);
        EXPECT_EQ((Size{fit->PictureWidth, fit->PictureHeight}), c.picture);
        EXPECT_EQ(fit->TooSmall(c.cellSize), c.tooSmall);
    }
}

// Everything that may come, within its laws: the grid holds the picture, margins are even, and the
// reduction ends even where rounding keeps a tiny side from shrinking.
TEST(FitNewGame, EndsWithinItsLawsForEverySize) {
    for (const int cell : {33, 44, 55, 66, 88})
        for (const Size screen : {Size{1, 1}, Size{640, 480}, Size{1920, 1080}, Size{7680, 4320}})
            for (const int width : {1, 9, 10, 45, 333, 4000, 32767})
                for (const int height : {1, 10, 44, 1001, 32767}) {
                    const auto fit = FitNewGame({width, height}, cell, screen.width, screen.height);
                    if (!fit) continue;
                    EXPECT_EQ(fit->MasterWidth, fit->GridCols * cell);
                    EXPECT_EQ(fit->MasterHeight, fit->GridRows * cell);
                    const int left = fit->MasterWidth - fit->FrameWidth, top = fit->MasterHeight - fit->FrameHeight;
                    EXPECT_TRUE(left >= 0 && left % 2 == 0 && top >= 0 && top % 2 == 0) << left << ", " << top;
                    EXPECT_EQ(fit->PictureWidth, fit->FrameWidth - 2);
                }
}

TEST(FitNewGame, FailsWhereANumberDoesNotFit) {
    EXPECT_FALSE(FitNewGame({32768, 100}, 44, 1024, 768));
    EXPECT_FALSE(FitNewGame({100, 40000}, 44, 1024, 768));
    EXPECT_FALSE(FitNewGame({100, 100}, 44, 32768, 768));
    EXPECT_FALSE(FitNewGame({100, 100}, 33, 32767, 32767));  // 985,000 cells
    EXPECT_TRUE(FitNewGame({32767, 32767}, 44, 1024, 768));
}

TEST(FitRestoredGame, HasItsOwnFactorsAndNoFrame) {
    struct Case {
        Size saved, master, picture;
    };
    for (const Case& c : {
             Case{{524, 394}, {528, 396}, {524, 394}},  // 525 has an odd margin again
             Case{{238, 348}, {264, 352}, {244, 348}},  // 3% of 238 allow 245, and the odd margin takes one
             Case{{45, 45}, {88, 88}, {88, 88}},        // 2% of 45 is a pixel: it grows until it fills the grid
         }) {
        const int cell = c.master.width == 528 ? 66 : c.master.width == 264 ? 88 : 44;
        const auto fit = FitRestoredGame(c.saved.width, c.saved.height, cell);
        ASSERT_TRUE(fit);
        EXPECT_EQ((Size{fit->MasterWidth, fit->MasterHeight}), c.master);
        EXPECT_EQ((Size{fit->PictureWidth, fit->PictureHeight}), c.picture);
        EXPECT_EQ(fit->FrameRect(), fit->PictureRect());
    }
    EXPECT_FALSE(FitRestoredGame(32767, 100, 88));
}

TEST(FitMiniature, KeepsProportionsWithinThePanel) {
    struct Case {
        Size picture;
        double left, top, width, height;
    };
    for (const Case& c : {
             Case{{800, 600}, 0, 12.5, 100, 75},  // 8 to 6: width fills
             Case{{300, 900}, 33.5, 1, 33, 98},   // 3 to 9: height fills, then gives up two
             Case{{100, 140}, 0, 1, 100, 98},     // 1 to 1 after rounding: width fills, height is cut
         }) {
        const auto fit = FitMiniature(c.picture, 100, 100);
        ASSERT_TRUE(fit);
        EXPECT_NEAR(fit->Left, c.left, 0.5);
        EXPECT_NEAR(fit->Top, c.top, 1e-9);
        EXPECT_NEAR(fit->Width, c.width, 0.5);
        EXPECT_NEAR(fit->Height, c.height, 1e-9);
    }
    EXPECT_FALSE(FitMiniature({0, 10}, 100, 100) || FitMiniature({40000, 10}, 100, 100) ||
                 FitMiniature({10, 10}, 0, 100));
}

}  // namespace
}  // namespace PuzzleModule
