// What the program carries, and the random numbers.
#include <gtest/gtest.h>

#include <set>
#include <tuple>

#include "platform/files.h"
#include "platform/random.h"
#include "platform/resources.h"

namespace {

std::string Text(std::span<const std::byte> bytes) {
    return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}

TEST(LoadResData, GivesTheVeryBytesOfEveryCarriedFile) {
    const std::tuple<const char*, const char*, std::string> cases[] = {
        {"CLICK", "WAVE", "waves/click.wav"},
        {"GIRO", "WAVE", "waves/giro.wav"},
        {"COMPLETE", "WAVE", "waves/complete.wav"},
        {"ROTATE", "WAVE", "waves/rotate.wav"},
        {"SPLASH", "PICTURE", "splash.bmp"},
        {"ICON16", "PICTURE", "fento-lira-master-16.png"},
        {"ICON32", "PICTURE", "fento-lira-master-32.png"},
        {"ICON48", "PICTURE", "fento-lira-master-48.png"}};
    for (const auto& [name, type, file] : cases) {
        const std::string bytes = Text(LoadResData(name, type));
        EXPECT_FALSE(bytes.empty()) << name;
        EXPECT_EQ(bytes, ReadFile(FENTO_SOURCE_DIR "/assets/" + file)) << name;
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
