// Files and folders by the standard library's calls that report instead of throwing.
#include "platform/system/files.h"

#include <algorithm>
#include <filesystem>
#include <fstream>

#ifndef _WIN32
#include <unistd.h>
#endif

namespace fs = std::filesystem;

#ifdef _WIN32
const char PathSeparator = '\\';
#else
const char PathSeparator = '/';
#endif

namespace {

#ifdef _WIN32
constexpr std::string_view Separators = "/\\";
#else
constexpr std::string_view Separators = "/";
#endif

bool IsSeparator(char c) { return Separators.find(c) != std::string_view::npos; }

#ifdef _WIN32
fs::path ToPath(std::string_view name) { return fs::path(std::u8string(name.begin(), name.end())); }
std::string FromPath(const fs::path& path) {
    const std::u8string name = path.u8string();
    return {name.begin(), name.end()};
}
#else
fs::path ToPath(std::string_view name) { return fs::path(name); }
std::string FromPath(const fs::path& path) { return path.string(); }
#endif

fs::file_status StatusOf(const std::string& path) {
    std::error_code failure;
    return fs::status(ToPath(path), failure);
}

bool IsHidden(std::string_view name) { return name.starts_with('.'); }

// Capital letters made small: ASCII, and the accented ones of Western languages,
// which in UTF-8 are 0xC3 followed by 0x80 to 0x9E, 32 below their small twins.
std::string Lowered(std::string_view text) {
    std::string low(text);
    for (size_t i = 0; i < low.size(); ++i) {
        const auto byte = static_cast<unsigned char>(low[i]);
        const bool afterC3 = i > 0 && static_cast<unsigned char>(text[i - 1]) == 0xC3;
        if ((byte >= 'A' && byte <= 'Z') || (afterC3 && byte >= 0x80 && byte <= 0x9E && byte != 0x97))
            low[i] = char(byte + 32);
    }
    return low;
}

bool EqualInAscii(std::string_view a, std::string_view b) {
    const auto low = [](char c) { return c >= 'A' && c <= 'Z' ? char(c + 32) : c; };
    return std::ranges::equal(a, b, {}, low, low);
}

// The program's one listing. "." and ".." are given first, then what the system lists.
class Listing {
public:
    bool Open(const std::string& folder) {
        ++number;
        std::error_code failure;
        entries_ = fs::directory_iterator(ToPath(folder), failure);
        given_ = failure ? Ended : 0;
        return !failure;
    }
    std::optional<std::string> Next() {
        if (given_ == Ended) return std::nullopt;
        if (given_ < 2) return ++given_ == 1 ? "." : "..";
        while (entries_ != fs::directory_iterator()) {
            std::string name = FromPath(entries_->path().filename());
            std::error_code failure;
            entries_.increment(failure);
            if (failure) entries_ = {};
            if (!IsHidden(name)) return name;
        }
        given_ = Ended;
        return "";
    }

    uint64_t number = 0;

private:
    static constexpr int Ended = -1;
    fs::directory_iterator entries_;
    int given_ = Ended;
};

Listing& TheListing() {
    static Listing listing;
    return listing;
}

// Calls `visit` with every entry of `folder`, hidden ones included.
template <typename Visit>
void ForEachEntry(const std::string& folder, Visit visit) {
    std::error_code failure;
    fs::directory_iterator entries(ToPath(folder), failure);
    for (; !failure && entries != fs::directory_iterator(); entries.increment(failure))
        visit(FromPath(entries->path().filename()));
}

}  // namespace

std::string WithSeparator(std::string folder) {
    while (!folder.empty() && IsSeparator(folder.back())) folder.pop_back();
    return folder + PathSeparator;
}

std::string FileTitle(std::string_view path) {
    const size_t at = path.find_last_of("/\\");
    return std::string(at == std::string_view::npos ? path : path.substr(at + 1));
}

std::string FolderOf(std::string_view path) {
    size_t length = path.find_last_of(Separators);
    if (length == std::string_view::npos) return "";
    while (length > 0 && IsSeparator(path[length - 1])) --length;
    // The root keeps its separator, that of a drive too.
    if (length == 0 || path[length - 1] == ':') ++length;
    return std::string(path.substr(0, length));
}

std::optional<std::string> FirstEntry(const std::string& folder) {
    if (!TheListing().Open(folder)) return std::nullopt;
    return TheListing().Next();
}

std::optional<std::string> NextEntry() { return TheListing().Next(); }

uint64_t ListingNumber() { return TheListing().number; }

std::vector<std::string> SubFolders(const std::string& folder) {
    std::vector<std::pair<std::string, std::string>> found;  // lowered, as it is
    ForEachEntry(folder, [&](const std::string& name) {
        if (!IsHidden(name) && FolderExists(WithSeparator(folder) + name)) found.emplace_back(Lowered(name), name);
    });
    std::ranges::sort(found);
    std::vector<std::string> names;
    for (auto& [lowered, name] : found) names.push_back(std::move(name));
    return names;
}

bool FolderExists(const std::string& path) { return fs::is_directory(StatusOf(path)); }

bool FileExists(const std::string& path) {
    const fs::file_status status = StatusOf(path);
    return fs::exists(status) && !fs::is_directory(status);
}

bool IsRegularFile(const std::string& path) { return fs::is_regular_file(StatusOf(path)); }

std::optional<int64_t> FileLen(const std::string& path) {
    const fs::file_status status = StatusOf(path);
    if (!fs::exists(status)) return std::nullopt;
    // A folder, a FIFO or a device has no length of its own.
    if (!fs::is_regular_file(status)) return 0;
    std::error_code failure;
    const uintmax_t length = fs::file_size(ToPath(path), failure);
    return failure ? std::nullopt : std::optional(int64_t(length));
}

bool MkDir(const std::string& path) {
    std::error_code failure;
    return fs::create_directory(ToPath(path), failure) && !failure;
}

bool IsWritableFolder(const std::string& path) {
#ifdef _WIN32
    return FolderExists(path);
#else
    return FolderExists(path) && access(path.c_str(), W_OK | X_OK) == 0;
#endif
}

std::optional<std::string> FindIgnoringCase(const std::string& folder, std::string_view name) {
    // Of several spellings the first in byte order, so that the choice is always the same.
    std::optional<std::string> best;
    ForEachEntry(folder, [&](const std::string& entry) {
        if (!EqualInAscii(entry, name) || (best && *best == name)) return;
        if (!best || entry == name || entry < *best) best = entry;
    });
    if (best) best = WithSeparator(folder) + *best;
    return best;
}

std::optional<std::string> ReadFile(const std::string& path, size_t limit) {
    const std::optional<int64_t> length = FileLen(path);
    if (!IsRegularFile(path) || !length || uint64_t(*length) > limit) return std::nullopt;
    std::ifstream in(ToPath(path), std::ios::binary);
    if (!in) return std::nullopt;
    // The file may grow or shrink meanwhile: what counts is what is really read.
    std::string bytes;
    char part[65536];
    while (in.read(part, sizeof part) || in.gcount() > 0) {
        bytes.append(part, size_t(in.gcount()));
        if (bytes.size() > limit) return std::nullopt;
    }
    return in.bad() ? std::nullopt : std::optional(std::move(bytes));
}

std::string CurrentFolder() {
    std::error_code failure;
    const fs::path folder = fs::current_path(failure);
    return failure ? std::string(1, PathSeparator) : FromPath(folder);
}
