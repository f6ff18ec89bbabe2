// Readers of what the program did not write itself. Each is fed bytes of any kind and aborts where it breaks a promise.
#pragma once
#include <cstdlib>
#include <string>

void FuzzSavedGame(const std::string& bytes);
void FuzzSettings(const std::string& bytes);
void FuzzColours(const std::string& bytes);
void FuzzRoad(const std::string& bytes);
void FuzzPicture(const std::string& bytes);
void FuzzSkin(const std::string& bytes);

inline void Require(bool held) {
    if (!held) std::abort();
}
