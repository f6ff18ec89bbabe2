// The rules of listing, finding and reading, over what the system answers (files_posix.cpp, files_windows.cpp).
#include "platform/system/files.h"

#include <unistd.h>

#include <algorithm>

#include "platform/system/folder_reader.h"

namespace {

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
        const bool readable = entries_.Open(folder);
        given_ = readable ? 0 : Ended;
        return readable;
    }
    std::optional<std::string> Next() {
        if (given_ == Ended) return std::nullopt;
        if (given_ < 2) return ++given_ == 1 ? "." : "..";
        while (entries_.Next())
            if (!entries_.IsHidden()) return entries_.Name();
        given_ = Ended;
        return "";
    }

    uint64_t number = 0;

private:
    static constexpr int Ended = -1;
    FolderReader entries_;
    int given_ = Ended;
};

Listing& TheListing() {
    static Listing listing;
    return listing;
}

}  // namespace

std::optional<std::string> FirstEntry(const std::string& folder) {
    if (!TheListing().Open(folder)) return std::nullopt;
    return TheListing().Next();
}

std::optional<std::string> NextEntry() { return TheListing().Next(); }

uint64_t ListingNumber() { return TheListing().number; }

std::vector<std::string> SubFolders(const std::string& folder) {
    std::vector<std::pair<std::string, std::string>> found;  // lowered, as it is
    FolderReader entries;
    entries.Open(folder);
    while (entries.Next())
        if (!entries.IsHidden() && entries.IsFolder()) found.emplace_back(Lowered(entries.Name()), entries.Name());
    std::ranges::sort(found);
    std::vector<std::string> names;
    for (auto& [lowered, name] : found) names.push_back(std::move(name));
    return names;
}

bool CanBeListed(const std::string& path) { return FolderReader().Open(path); }

std::optional<std::string> FindIgnoringCase(const std::string& folder, std::string_view name) {
    // Of several spellings the first in byte order, so that the choice is always the same.
    std::optional<std::string> best;
    FolderReader entries;
    entries.Open(folder);
    while (entries.Next()) {
        const std::string entry = entries.Name();
        if (!EqualInAscii(entry, name) || (best && *best == name)) continue;
        if (!best || entry == name || entry < *best) best = entry;
    }
    if (best) best = WithSeparator(folder) + *best;
    return best;
}

std::optional<std::string> ReadFile(const std::string& path, size_t limit) {
    const std::optional<int64_t> length = FileLen(path);
    if (!length || uint64_t(*length) > limit) return std::nullopt;
    const int file = OpenRegular(path);
    if (file < 0) return std::nullopt;
    // The file may grow or shrink meanwhile: what counts is what is really read.
    std::string bytes;
    char part[65536];
    auto count = read(file, part, sizeof part);
    for (; count > 0 && bytes.size() <= limit; count = read(file, part, sizeof part)) bytes.append(part, size_t(count));
    close(file);
    if (count < 0 || bytes.size() > limit) return std::nullopt;
    return bytes;
}
