// Names for files that are there for a moment only.
#pragma once
#include <string>
#include <string_view>

// A name that nobody can have put there beforehand. Hidden where a dot hides, and not built on the name of another
// file, which may be as long as a name can be.
std::string TemporaryName();

// True of every name that TemporaryName can give, and of hardly any other.
bool IsTemporaryName(std::string_view name);
