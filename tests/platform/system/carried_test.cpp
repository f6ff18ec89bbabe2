// What the program carries, and the random numbers.
#include <gtest/gtest.h>

#include <set>

#include "platform/system/files.h"
#include "platform/system/random.h"
#include "platform/system/resources.h"

namespace {

TEST(LoadResData, GivesTheVeryBytesOfEveryCarriedFile) {
    const char* cases[][3] = {{"CLICK", "WAVE", "waves/click.wav"},
                              {"GIRO", "WAVE", "waves/giro.wav"},
                              {"COMPLETE", "WAVE", "waves/complete.wav"},
                              {"ROTATE", "WAVE", "waves/rotate.wav"},
                              {"SPLASH", "PICTURE", "splash.bmp"},
                              {"ICON16", "PICTURE", "fento-lira-master-16.png"},
                              {"ICON96", "PICTURE", "fento-lira-master-96.png"}};
    for (const auto& [name, type, file] : cases) {
        const auto carried = LoadResData(name, type);
        const std::string bytes(reinterpret_cast<const char*>(carried.data()), carried.size());
        EXPECT_EQ(bytes, ReadFile(FENTO_SOURCE_DIR "/assets/" + std::string(file)).value()) << name;
    }
    EXPECT_TRUE(LoadResData("CLICK", "PICTURE").empty());
}

TEST(Random, OneClockTickGivesDifferentNumbersAllInRangeAndEvenlySpread) {
    SeedFromClock();
    std::set<double> seen;
    int below[10] = {};
    for (int i = 0; i < 20000; ++i) {
        Randomize(12345.0);
        const double number = Rnd();
        ASSERT_GE(number, 0);
        ASSERT_LT(number, 1);
        seen.insert(number);
        ++below[int(number * 10)];
    }
    EXPECT_EQ(seen.size(), 20000u);
    // 2000 in each tenth, give or take eight standard deviations.
    for (const int count : below) EXPECT_NEAR(count, 2000, 8 * 42.5);
}

}  // namespace
