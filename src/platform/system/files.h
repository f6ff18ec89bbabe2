// Files and folders by their bytes. Names are whatever bytes the file system
// holds; nothing here assumes UTF-8 (on Windows names are UTF-8, and one that is malformed is that of no file).
// No call blocks on a FIFO or a device.
#pragma once
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/system/paths.h"

// A listing of one folder, in the file system's own order, folders included, hidden
// and system entries left out, "." and ".." first. The program has one cursor: a
// new listing ends the one before, and a listing that was overtaken has failed.
//
// FirstEntry starts a listing of `folder`; empty text if it has no entry. Nothing if
// the folder cannot be read: the cursor then is as if it had run past its end.
[[nodiscard]] std::optional<std::string> FirstEntry(const std::string& folder);
// The next name, or empty text once at the end. Nothing if asked again after the end.
[[nodiscard]] std::optional<std::string> NextEntry();
// Which listing is current; changes with every FirstEntry.
uint64_t ListingNumber();

// Sub-folders of `folder`, sorted by name without regard to case, hidden ones left out.
std::vector<std::string> SubFolders(const std::string& folder);

bool FolderExists(const std::string& path);
bool FileExists(const std::string& path);  // anything but a folder
bool IsRegularFile(const std::string& path);
std::optional<int64_t> FileLen(const std::string& path);
bool MkDir(const std::string& path);        // false if it could not be made
bool MkDirs(const std::string& path);       // with those above it; true if it is there afterwards
void RemoveFile(const std::string& path);   // or an empty folder; a failure is silent
bool CanBeListed(const std::string& path);  // a folder, and its entries may be read
bool IsWritableFolder(const std::string& path);

// The entry of `folder` named `name` without regard to the case of ASCII letters,
// as a full path; the exact spelling wins. Nothing if there is none.
std::optional<std::string> FindIgnoringCase(const std::string& folder, std::string_view name);

// A regular file opened for reading as a descriptor of the C library, which the caller closes; -1 if it can't be had
// or is none: what else bears the name is not waited for.
[[nodiscard]] int OpenRegular(const std::string& path);

// All bytes of a regular file of at most `limit` bytes.
[[nodiscard]] std::optional<std::string> ReadFile(const std::string& path, size_t limit = 64u << 20);

// Writes a new file beside `path`, flushes it to the disk and renames it over
// `path`: at every instant the old bytes or the new ones are there, whole. False,
// with nothing left behind and the old file untouched, if any step fails. Takes away
// what a killed program has left in the folder.
[[nodiscard]] bool WriteFileAtomically(const std::string& path, std::string_view bytes);

std::string CurrentFolder();
