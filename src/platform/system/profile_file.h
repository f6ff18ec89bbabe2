// Settings in private-profile text: "[Section]" lines and "key=value" lines.
//
// Section and key names compare without regard to case. Lines that this program
// does not know, comments and the order of keys survive a write. LF, CR LF and a
// byte-order mark are read; a new line is written with the file's own line end
// (LF in a new file).
#pragma once
#include <optional>
#include <string>
#include <string_view>

// On text in memory, whatever bytes it holds. The value of a key, blanks and one pair of enclosing quotes removed;
// nothing if section or key is missing.
std::optional<std::string> ReadKey(std::string_view content, std::string_view section, std::string_view key);
// The text with one key replaced or added. Nothing if a name or the value has a line break.
std::optional<std::string> WithKey(std::string_view content, std::string_view section, std::string_view key,
                                   std::string_view value);

class ProfileFile {
public:
    explicit ProfileFile(std::string path) : path_(std::move(path)) {}

    // The value of a key; nothing if file, section or key is missing.
    std::optional<std::string> Read(std::string_view section, std::string_view key) const;

    // Replaces or adds one key, atomically; what another run of the program writes under other keys at the same time
    // stays. False if the file could not be written.
    bool Write(std::string_view section, std::string_view key, std::string_view value) const;

private:
    std::string path_;
};
