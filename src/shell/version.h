// The program's version as its windows show it.
#pragma once
#include <string>

// Three numbers, "1.0.0".
std::string VersionText();
