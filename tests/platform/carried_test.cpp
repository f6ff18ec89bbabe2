// What the program carries, what a control stores, and the random numbers.
#include <gtest/gtest.h>

#include <set>

#include "platform/bmp.h"
#include "platform/files.h"
#include "platform/property_bag.h"
#include "platform/random.h"
#include "platform/resources.h"

namespace {

std::string Text(std::span<const std::byte> bytes) {
    return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}

TEST(LoadResData, GivesTheVeryBytesOfEveryCarriedFile) {
    struct Case {
        const char *name, *type, *file;
    };
    const Case cases[] = {
        {"CLICK", "WAVE", "waves/click.wav"},
        {"GIRO", "WAVE", "waves/giro.wav"},
        {"COMPLETE", "WAVE", "waves/complete.wav"},
        {"ROTATE", "WAVE", "waves/rotate.wav"},
        {"SPLASH", "PICTURE", "splash.bmp"},
        {"ICON16", "PICTURE", "fento-lira-master-16.png"},
        {"ICON32", "PICTURE", "fento-lira-master-32.png"},
        {"ICON48", "PICTURE", "fento-lira-master-48.png"},
    };
    for (const Case& c : cases) {
        const std::string bytes = Text(LoadResData(c.name, c.type));
        EXPECT_FALSE(bytes.empty()) << c.name;
        EXPECT_EQ(bytes, ReadFile(FENTO_SOURCE_DIR "/assets/" + std::string(c.file))) << c.name;
    }
    EXPECT_TRUE(LoadResData("CLICK", "PICTURE").empty());
    EXPECT_TRUE(LoadResData("", "").empty());
    EXPECT_TRUE(DecodeBmp(LoadResData("SPLASH", "PICTURE")));
}

TEST(PropertyBag, DefaultsNeedNoPlaceAndForeignTypesFail) {
    PropertyBag bag;
    bag.WriteProperty("Columns", 3, 1);
    bag.WriteProperty("ImageToolTip", true, true);
    EXPECT_TRUE(bag.Holds("Columns"));
    EXPECT_FALSE(bag.Holds("ImageToolTip"));
    EXPECT_EQ(bag.ReadProperty("Columns", 1), PropertyBag::Value(3));
    EXPECT_EQ(bag.ReadProperty("ImageToolTip", true), PropertyBag::Value(true));
    EXPECT_EQ(bag.ReadProperty("Columns", std::string()), std::nullopt);
    bag.WriteProperty("Columns", 1, 1);
    EXPECT_FALSE(bag.Holds("Columns"));
}

class Random : public testing::Test {
protected:
    ~Random() override { SeedFromClock(); }
};

TEST_F(Random, SeededNumbersRepeatWhateverTheClockSays) {
    std::vector<double> first;
    for (int round = 0; round < 2; ++round) {
        SeedRandom(42);
        for (size_t i = 0; i < 20; ++i) {
            Randomize(double(round) * 1000 + double(i));
            const double number = Rnd();
            if (round == 0) first.push_back(number);
            EXPECT_EQ(number, first[i]) << i;
        }
    }
}

TEST_F(Random, OneClockTickGivesDifferentNumbersAllInRangeAndEvenlySpread) {
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
