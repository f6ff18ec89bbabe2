// What programs that were killed in the middle of a write have left behind.
#pragma once
#include <chrono>
#include <string>

inline constexpr std::chrono::minutes LongestWrite{10};  // no write that is still under way is older

// Takes them out of `folder`, as far as that may be done. A file is surely such a one by its name, kind, age and owner,
// and if nobody is writing it; all others stay.
void SweepStaleFiles(const std::string& folder);

// Removes a file of a temporary name if the rest of that is true of it.
void RemoveIfStale(const std::string& path);
