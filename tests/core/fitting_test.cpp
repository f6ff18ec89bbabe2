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
    const auto miniature = [](Size picture, double width, double height) {
        const MiniatureFit fit = FitMiniature(picture, width, height).value_or(MiniatureFit{});
        return std::array<Digits, 4>{{{fit.Left}, {fit.Top}, {fit.Width}, {fit.Height}}};
    };
    for (int i = 0; i < 800; ++i) {
        const int cell = 11 * std::array{3, 4, 5, 6, 8}[size_t(i) % 5];
        const Size picture{length(), length()}, screen{length(), length()}, grid{length() / 64 + 1, length() / 64 + 1};
        const Size one{picture.width - 1, picture.height - 1};  // may be empty
        transcript.Write(testing::PrintToString(
            std::tuple(picture, cell, screen, Numbers(FitNewGame(picture, cell, screen.width, screen.height)),
                       Numbers(FitRestoredGame(picture.width, picture.height, cell)), grid,
                       Numbers(FitRestoredGame(picture.width, picture.height, cell, grid.width, grid.height)),
                       miniature(one, grid.width - 1, grid.height + 99))));
    }
}

}  // namespace
}  // namespace PuzzleModule
