// Fitting against its literal arithmetic, and the examples that were worked out by hand.
#include "core/fitting.h"

#include <gtest/gtest.h>

#include <random>

#include "tests/reference/literal_fitting.h"

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
    const Fit wide{528, 44, 12, 1, 526, 44, 524, 42}, high{44, 528, 1, 12, 44, 526, 42, 524};
    EXPECT_EQ(wide.FrameRect(), (Rect{1, 0, 526, 44}));
    EXPECT_EQ(wide.PictureRect(), (Rect{2, 1, 524, 42}));
    EXPECT_TRUE(wide.TooSmall(44) && high.TooSmall(44) && !wide.TooSmall(22) && !high.TooSmall(22));
}

// The sides of a miniature keep their proportions, one fills the panel, and there is a pixel left above and below.
void ExpectMiniature(Size picture, Size panel) {
    const auto fit = FitMiniature(picture, panel.width, panel.height);
    ASSERT_EQ(fit.has_value(), std::max(picture.width, picture.height) < 32768);
    if (!fit) return;
    const bool high =
        literal::Short(double(picture.height) / panel.height) > literal::Short(double(picture.width) / panel.width);
    const double width = high ? double(panel.height) * picture.width / picture.height : panel.width;
    const double height = high ? panel.height : double(panel.width) * picture.height / picture.width;
    EXPECT_NEAR(fit->Width, width, 1e-6);
    EXPECT_NEAR(fit->Height, height < panel.height ? height : panel.height - 2, 1e-6);
    EXPECT_NEAR(2 * fit->Left + fit->Width, panel.width, 1e-6);
    EXPECT_NEAR(2 * fit->Top + fit->Height, panel.height, 1e-6);
}

TEST(Fitting, IsTheLiteralArithmeticForAnyPictureCellAndScreen) {
    const unsigned seed = std::random_device{}();
    SCOPED_TRACE("seed " + std::to_string(seed));
    std::minstd_rand random(seed);
    const auto length = [&] { return 1 + int(random() % (uint32_t(64) << random() % 11)); };
    int taken = 0;
    for (int i = 0; i < 40000; ++i) {
        const int cell = 11 * std::array{3, 4, 5, 6, 8}[random() % 5];
        const Size picture{length(), length()}, screen{length(), length()}, grid{length() / 64 + 1, length() / 64 + 1};
        const auto fit = FitNewGame(picture, cell, screen.width, screen.height);
        ASSERT_EQ(Numbers(fit), Numbers(literal::FitNew(picture, cell, screen)))
            << testing::PrintToString(std::array{picture.width, picture.height, cell, screen.width, screen.height});
        taken += fit.has_value();
        ASSERT_EQ(Numbers(FitRestoredGame(picture.width, picture.height, cell)),
                  Numbers(literal::FitRestored(picture, cell, literal::GridAround(picture, cell))))
            << picture.width << " by " << picture.height << " of " << cell;
        ASSERT_EQ(Numbers(FitRestoredGame(picture.width, picture.height, cell, grid.width, grid.height)),
                  Numbers(literal::FitRestored(picture, cell, grid)))
            << picture.width << " by " << picture.height << " of " << cell << ", " << grid.width;
        ExpectMiniature(picture, {20 + int(random() % 400), 20 + int(random() % 400)});
    }
    EXPECT_TRUE(taken > 10000 && taken < 39900) << taken;
    EXPECT_FALSE(FitNewGame({9, 9}, 0, 99, 99) || FitMiniature({0, 10}, 100, 100) || FitMiniature({10, 0}, 100, 100) ||
                 FitMiniature({10, 10}, 0, 100) || FitMiniature({10, 10}, 100, 0));
}

}  // namespace
}  // namespace PuzzleModule
