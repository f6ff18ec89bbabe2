// Four small routines on strings, with edges of their own. Comparisons are binary,
// positions count from 1, and characters of UTF-8 count.
#pragma once
#include <cstdint>
#include <string>
#include <vector>

namespace vb5 {

// Replaces the first `Find`, starting over from the beginning after each replacement, so that what
// was put in is searched too. Returns `Expression` unchanged where that would never end: an empty
// Find, Find inside ReplaceWith, or a text that grows by more than a megabyte.
std::string Replace(const std::string& Expression, const std::string& Find, const std::string& ReplaceWith);

// The Index-th field (from 1) between delimiters. Puts the delimiter before and behind `Text` if it is
// not there yet. Empty beyond the last field.
std::string FieldAt(std::string& Text, const std::string& Delimiter, int16_t Index);

// All fields, up to one equal to the marker "/#(!a53x". A leading delimiter makes no field, a trailing
// one does. No fields for an empty text or an empty delimiter.
std::vector<std::string> Split(const std::string& Expression, const std::string& Delimiter);

// Position of the last `Find` in `Text`, overlaps included; 0 if there is none.
int16_t InStrRev(const std::string& Text, const std::string& Find);

}  // namespace vb5
