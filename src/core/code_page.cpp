// Windows-1252 equals the first 256 characters of Unicode except for 0x80 to 0x9F.
#include "core/code_page.h"

#include <algorithm>
#include <array>
#include <cstdint>

namespace {

// Characters of 0x80 to 0x9F.
constexpr std::array<char32_t, 32> Upper{
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,  // 80 to 87
    0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0x008D, 0x017D, 0x008F,  // 88 to 8F
    0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,  // 90 to 97
    0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178,  // 98 to 9F
};
constexpr uint8_t UpperStart = 0x80, UpperEnd = 0xA0;

std::optional<char> ByteOf(char32_t character) {
    if (character < UpperStart || (character >= UpperEnd && character <= 0xFF)) return char(character);
    const auto found = std::ranges::find(Upper, character);
    if (found == Upper.end()) return std::nullopt;
    return char(UpperStart + (found - Upper.begin()));
}

// Takes the first character off `rest`. Nothing if it is malformed: too long a form, a surrogate,
// beyond U+10FFFF, or cut short.
std::optional<char32_t> TakeCharacter(std::string_view& rest) {
    const auto first = uint8_t(rest.front());
    const size_t length = first < 0x80   ? 1
                          : first < 0xC2 ? 0
                          : first < 0xE0 ? 2
                          : first < 0xF0 ? 3
                          : first < 0xF5 ? 4
                                         : 0;
    if (length == 0 || rest.size() < length) return std::nullopt;
    constexpr std::array<uint8_t, 5> firstBits{0, 0x7F, 0x1F, 0x0F, 0x07};
    char32_t character = first & firstBits[length];
    for (size_t i = 1; i < length; ++i) {
        const auto next = uint8_t(rest[i]);
        if ((next & 0xC0) != 0x80) return std::nullopt;
        character = character << 6 | (next & 0x3Fu);
    }
    constexpr std::array<char32_t, 5> least{0, 0, 0x80, 0x800, 0x10000};
    const bool surrogate = character >= 0xD800 && character < 0xE000;
    if (character < least[length] || character > 0x10FFFF || surrogate) return std::nullopt;
    rest.remove_prefix(length);
    return character;
}

void AppendUtf8(std::string& text, char32_t character) {
    if (character < 0x80) {
        text += char(character);
    } else if (character < 0x800) {
        text += char(0xC0 | character >> 6);
        text += char(0x80 | (character & 0x3F));
    } else {
        text += char(0xE0 | character >> 12);
        text += char(0x80 | (character >> 6 & 0x3F));
        text += char(0x80 | (character & 0x3F));
    }
}

}  // namespace

std::optional<std::string> ToWindows1252(std::string_view utf8) {
    std::string bytes;
    while (!utf8.empty()) {
        const auto character = TakeCharacter(utf8);
        const auto byte = character ? ByteOf(*character) : std::nullopt;
        if (!byte) return std::nullopt;
        bytes += *byte;
    }
    return bytes;
}

std::string FromWindows1252(std::string_view bytes) {
    std::string text;
    for (const char c : bytes) {
        const auto byte = uint8_t(c);
        AppendUtf8(text, byte >= UpperStart && byte < UpperEnd ? Upper[byte - UpperStart] : byte);
    }
    return text;
}

bool IsValidUtf8(std::string_view text) {
    while (!text.empty())
        if (!TakeCharacter(text)) return false;
    return true;
}

std::string_view FirstCharacters(std::string_view text, size_t count) {
    std::string_view rest = text;
    for (; count > 0 && !rest.empty(); --count)
        if (!TakeCharacter(rest)) rest.remove_prefix(1);
    return text.substr(0, text.size() - rest.size());
}
