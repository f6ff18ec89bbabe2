// Text between UTF-8 and the single-byte code page Windows-1252, and characters of UTF-8.
#pragma once
#include <optional>
#include <string>
#include <string_view>

// `utf8` in Windows-1252. Nothing if it is no valid UTF-8, or if one of its characters has no
// place in the code page. The five codes that the page leaves free stand for the control
// characters of the same numbers.
std::optional<std::string> ToWindows1252(std::string_view utf8);

// Every byte has a meaning in this direction.
std::string FromWindows1252(std::string_view bytes);

bool IsValidUtf8(std::string_view text);

// The first `count` characters of UTF-8 text, all of it if it has no more. A byte that is no part of a character
// counts as one.
std::string_view FirstCharacters(std::string_view text, size_t count);
