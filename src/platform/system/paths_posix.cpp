// Paths where there is one root and names are bytes.
#include "platform/system/paths.h"

const char PathSeparator = '/';

bool IsSeparator(char c) { return c == '/'; }

size_t RootLength(std::string_view path) { return path.starts_with('/') ? 1 : 0; }

// The machine is taken to be this one.
std::string FileOfAddress(std::string_view /*machine*/, std::string path) { return path; }

bool SamePath(std::string_view a, std::string_view b) { return a == b; }
