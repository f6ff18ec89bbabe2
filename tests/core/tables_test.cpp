// The level table, and the code page with the UTF-8 that it is made of.
#include <gtest/gtest.h>

#include "core/code_page.h"
#include "core/game_state.h"

namespace PuzzleModule {
namespace {

TEST(Levels, HaveTheirSizesOnEitherSideOf800Pixels) {
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

// Six bits a byte from the end, and in the first byte as many ones as there are bytes.
std::string Utf8(uint32_t character) {
    if (character < 0x80) return {char(character)};
    std::string tail;
    for (uint32_t mark = 0xC0, room = 0x20;; mark = mark >> 1 | 0x80, room >>= 1) {
        tail.insert(0, 1, char(0x80 | (character & 0x3F)));
        character >>= 6;
        if (character < room) return char(mark | character) + tail;
    }
}

TEST(CodePage, IsLatin1WithTheMarksOfWindowsBothWays) {
    const std::string marks =
        "€\u0081‚ƒ„…†‡ˆ‰Š‹Œ\u008DŽ\u008F"
        "\u0090‘’“”•–—˜™š›œ\u009DžŸ";
    std::string bytes, text;
    for (int byte = 0; byte < 256; ++byte) {
        bytes += char(byte);
        if (byte == 0x80) text += marks;
        if (byte < 0x80 || byte >= 0xA0) text += Utf8(uint32_t(byte));
    }
    EXPECT_EQ(FromWindows1252(bytes), text);
    EXPECT_EQ(ToWindows1252(text), bytes);
    EXPECT_FALSE(ToWindows1252(text + "\xE7"));
}

// Every character is valid, none but the page's has a place there, and no other bytes are valid: all texts of three
// bytes are counted, and those of four whose last two are about the ends of their range.
TEST(CodePage, TakesTheCharactersOfUtf8AndNothingElse) {
    int inPage = 0, valid = 0, validOfFour = 0;
    for (uint32_t character = 0; character < 0x110000; ++character) {
        const bool surrogate = character >= 0xD800 && character < 0xE000;
        const std::string text = Utf8(character);
        ASSERT_EQ(IsValidUtf8(text), !surrogate) << character;
        inPage += ToWindows1252(text).has_value();
        ASSERT_EQ(FirstCharacters(text + "ab", 2), surrogate ? text.substr(0, 2) : text + "a");
    }
    std::string text(3, '\0');
    for (uint32_t bytes = 0; bytes < 1u << 24; ++bytes) {
        for (int i = 0; i < 3; ++i) text[size_t(i)] = char(bytes >> 8 * i);
        valid += IsValidUtf8(text);
    }
    for (uint32_t bytes = 0xF000; bytes < 1u << 16; ++bytes)
        for (const char* tail :
             {"\x7F\x80", "\x80\x7F", "\x80\x80", "\x80\xBF", "\xBF\x80", "\xBF\xBF", "\xC0\x80", "\xBF\xC0"})
            validOfFour += IsValidUtf8(std::string{char(bytes >> 8), char(bytes), tail[0], tail[1]});
    EXPECT_EQ(inPage, 256);
    EXPECT_EQ(valid, 128 * 128 * 128 + 2 * 128 * 1920 + 0x10000 - 0x800 - 0x800);
    EXPECT_EQ(validOfFour, 4 * (0x110000 - 0x10000) / (64 * 64));
    EXPECT_EQ(FirstCharacters("\xE7"
                              "a\xC3\xA7",
                              2),
              "\xE7"
              "a");
    EXPECT_EQ(FirstCharacters("\xC3\xA7", 0), "");
}

}  // namespace
}  // namespace PuzzleModule
