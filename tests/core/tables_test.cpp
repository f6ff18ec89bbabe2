// The level table, and the code page with the UTF-8 that it is made of.
#include <filesystem>

#include "core/code_page.h"
#include "core/game_state.h"
#include "tests/support/transcript.h"

namespace PuzzleModule {
namespace {

// The squares belong to their unit; the compiler sees to that.
TEST(Levels, HaveTheirSizesOnEitherSideOf800Pixels) {
    std::string told;
    for (int16_t level = -1; level < 7; ++level)
        for (const int16_t width : {int16_t{800}, int16_t{801}})
            if (const auto sizes = SizesOfLevel(level, width); sizes || !LevelName(level).empty())
                told += LevelName(level) + " " + std::to_string(10 * sizes->TileUnit + sizes->ScatterGap) + " ";
    EXPECT_EQ(told,
              "Kids A 61 Kids A 82 Kids B 61 Kids B 82 Fácil 51 Fácil 63 Medio 41 Medio 53 Dificil 31 Dificil 43 ");
}

std::string Utf8(char32_t character) {
    const std::u8string text = std::filesystem::path(std::u32string(1, character)).u8string();
    return {text.begin(), text.end()};
}

TEST(CodePage, IsLatin1WithTheMarksOfWindowsBothWays) {
    Transcript transcript;
    for (int byte = 0; byte < 256; ++byte) {
        const std::string bytes(1, char(byte)), text = FromWindows1252(bytes);
        transcript.Write(std::to_string(byte) + " is " + text);
        EXPECT_EQ(ToWindows1252(text), bytes);
    }
}

// Every character is valid, none but the page's has a place there, and nothing else is valid: all texts are counted
// of two bytes and two more at the ends of their range.
TEST(CodePage, TakesTheCharactersOfUtf8AndNothingElse) {
    int inPage = 0, valid = 0;
    for (char32_t character = 0; character < 0x110000; ++character) {
        if (character == 0xD800) character = 0xE000;  // halves of pairs are no characters
        const std::string text = Utf8(character);
        ASSERT_TRUE(IsValidUtf8(text)) << text;
        ASSERT_EQ(FirstCharacters(text + "ab", 2), text + "a");
        inPage += ToWindows1252(text).has_value();
    }
    for (uint32_t bytes = 0; bytes < 1u << 20; ++bytes)
        valid += IsValidUtf8(std::string{char(bytes), char(bytes >> 8), "\x7F\x80\xBF\xC0"[bytes >> 16 & 3],
                                         "\x7F\x80\xBF\xC0"[bytes >> 18]});
    // Two characters of one byte or one of two; behind one byte, two bytes of 30 beginnings or three of 14 and of two
    // that take one end only; three of 960 beginnings, and four of 256.
    EXPECT_EQ(valid, 128 * 128 + 1920 + 128 * (30 * 2 + 14 * 4 + 2 * 2) + 960 * 2 + 256 * 4);
    EXPECT_TRUE(inPage == 256 && !ToWindows1252("a\xE7"));
}

}  // namespace
}  // namespace PuzzleModule
