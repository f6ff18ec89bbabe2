#include "core/game_state.h"

#include <gtest/gtest.h>

namespace PuzzleModule {
namespace {

TEST(Levels, SizesChangeBetween800And801PixelsOfWidth) {
    struct Case {
        int16_t level;
        LevelSizes upTo800, over800;
        const char* name;
    };
    for (const Case& c :
         {Case{0, {120, 66, 6, 1}, {160, 88, 8, 2}, "Kids A"}, Case{1, {120, 66, 6, 1}, {160, 88, 8, 2}, "Kids B"},
          Case{3, {100, 55, 5, 1}, {120, 66, 6, 3}, "Fácil"}, Case{4, {80, 44, 4, 1}, {100, 55, 5, 3}, "Medio"},
          Case{5, {60, 33, 3, 1}, {80, 44, 4, 3}, "Dificil"}}) {
        EXPECT_EQ(SizesOfLevel(c.level, 800), c.upTo800);
        EXPECT_EQ(SizesOfLevel(c.level, 801), c.over800);
        EXPECT_EQ(LevelName(c.level), c.name);
    }
    for (const int16_t level : {int16_t{-1}, int16_t{2}, int16_t{6}})
        EXPECT_TRUE(!SizesOfLevel(level, 1024) && LevelName(level) == std::string()) << level;
}

}  // namespace
}  // namespace PuzzleModule
