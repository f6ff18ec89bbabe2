// Fitting: examples that were worked out by hand, and what it makes of any size.
#include "core/fitting.h"

#include <random>

#include "tests/support/transcript.h"

namespace PuzzleModule {
namespace {

std::vector<int> Numbers(const std::optional<Fit>& fit) {
    if (!fit) return {};
    return {fit->MasterWidth, fit->MasterHeight, fit->GridCols,     fit->GridRows,
            fit->FrameWidth,  fit->FrameHeight,  fit->PictureWidth, fit->PictureHeight};
}

TEST(Fitting, FollowsTheWorkedExamples) {
    using List = std::vector<int>;
    EXPECT_EQ(Numbers(FitNewGame({800, 600}, 66, 1024, 768)), (List{528, 396, 8, 6, 526, 396, 524, 394}));
    EXPECT_EQ(Numbers(FitNewGame({200, 300}, 88, 1280, 1024)), (List{264, 352, 3, 4, 240, 350, 238, 348}));
    // The growth of 1% rounds back to the same number, 45 + 1 is within 3% only at 46.35, and an odd margin takes a
    // pixel.
    EXPECT_EQ(Numbers(FitNewGame({45, 45}, 44, 1024, 768)), (List{88, 88, 2, 2, 44, 44, 42, 42}));
    EXPECT_EQ(Numbers(FitRestoredGame(524, 394, 66)), (List{528, 396, 8, 6, 524, 394, 524, 394}));
    EXPECT_EQ(Numbers(FitRestoredGame(238, 348, 88)), (List{264, 352, 3, 4, 244, 348, 244, 348}));
    const Fit fit{528, 44, 12, 1, 526, 44, 524, 42};
    EXPECT_TRUE(fit.FrameRect() == (Rect{1, 0, 526, 44}) && fit.PictureRect() == (Rect{2, 1, 524, 42}));
    EXPECT_TRUE(fit.TooSmall(44) && fit.TooSmall(23) && !fit.TooSmall(22) && (Fit{44, 528}.TooSmall(23)));
}

TEST(Fitting, IsAsItAlwaysWasForAnyPictureCellAndScreen) {
    Transcript transcript;
    std::minstd_rand random(7);
    const auto length = [&] { return 1 + int(random() % (uint32_t(64) << random() % 11)); };
    for (int i = 0; i < 800; ++i) {
        const int cell = 11 * std::array{3, 4, 5, 6, 8}[size_t(i) % 5];
        const Size picture{length(), length()}, screen{length(), length()}, grid{length() / 64 + 1, length() / 64 + 1};
        transcript.Write(testing::PrintToString(
            std::tuple(picture, cell, screen, Numbers(FitNewGame(picture, cell, screen.width, screen.height)),
                       Numbers(FitRestoredGame(picture.width, picture.height, cell)), grid,
                       Numbers(FitRestoredGame(picture.width, picture.height, cell, grid.width, grid.height)))));
    }
}

// The width fills, the height, or the width after rounding, and the height is cut. In tenths of a pixel.
TEST(FitMiniature, KeepsProportionsWithinThePanel) {
    const auto tenths = [](Size picture, double width = 100, double height = 100) {
        const MiniatureFit f = FitMiniature(picture, width, height).value_or(MiniatureFit{});
        return std::array{int(10 * f.Left), int(10 * f.Top), int(10 * f.Width), int(10 * f.Height)};
    };
    EXPECT_EQ(tenths({800, 600}), (std::array{0, 125, 1000, 750}));
    EXPECT_EQ(tenths({300, 900}, 200, 100), (std::array{833, 10, 333, 980}));
    EXPECT_EQ(tenths({100, 140}), (std::array{0, 10, 1000, 980}));
    for (const auto& wrong : {tenths({0, 10}), tenths({10, 0}), tenths({40000, 10}), tenths({10, 40000}),
                              tenths({9, 9}, 0), tenths({9, 9}, 9, 0)})
        EXPECT_EQ(wrong, (std::array{0, 0, 0, 0}));
}

}  // namespace
}  // namespace PuzzleModule
