// Paths as text. Inside the program a name is what the file system holds, byte for byte; on Windows it is UTF-8.
#pragma once
#include <string>
#include <string_view>

// The separator of paths on this system, "/" or "\".
extern const char PathSeparator;

// True of every character that separates: on Windows "/" too.
bool IsSeparator(char c);

// Length of the root that `path` begins with: "/", "C:\" ("C:" where no separator follows) or "\\server\share\";
// 0 if it begins at none.
size_t RootLength(std::string_view path);

// True if both are spelt alike for this system's file systems. Neither is looked up.
bool SamePath(std::string_view a, std::string_view b);

// `folder` with exactly one closing separator.
std::string WithSeparator(std::string folder);

// What follows the last separator ("/" or "\") of `path`.
std::string FileTitle(std::string_view path);

// The folder part of `path` without its closing separator (the root keeps it).
std::string FolderOf(std::string_view path);

// The file of the address "file://machine/path"; `path` begins with '/'.
std::string FileOfAddress(std::string_view machine, std::string path);

// `path` without ".", "..", doubled and closing separators (a root keeps its own); one that
// does not begin at a root is taken from the process's current folder.
std::string NormalPath(const std::string& path);
