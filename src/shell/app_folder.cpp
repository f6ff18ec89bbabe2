// Where the player's files lie, and keeping an installed program's copies of the shipped files.
//
// A small list in the player's folder remembers which shipped version each copy was made from, as
// lines "<hash> <size> <name>". It tells three things apart: a file that is new (not in the list),
// one that the player deleted (in the list, not in the folder), and one that he changed (its bytes
// aren't those of the list).
#include "shell/app_folder.h"

#include <algorithm>
#include <charconv>
#include <map>
#include <string_view>
#include <vector>

#include "platform/system/desktop.h"
#include "platform/system/files.h"
#include "platform/system/user_settings.h"

namespace {

constexpr std::string_view ProgramName = "fento-lira-master", SkinName = "Puzzle.skn", PicturesName = "Imagens";
constexpr std::string_view ListName = ".shipped";

// What one version of a file is known by.
struct Version {
    uint64_t hash = 0;
    uint64_t size = 0;
    bool operator==(const Version&) const = default;
};
using CopyList = std::map<std::string, Version>;  // by the name below the folder

// FNV-1a: the versions of one file are to be told apart, nothing is to be kept safe.
Version VersionOf(std::string_view bytes) {
    uint64_t hash = 0xCBF29CE484222325u;
    for (const char c : bytes) hash = (hash ^ uint8_t(c)) * 0x100000001B3u;
    return {hash, bytes.size()};
}

std::string Join(const std::string& folder, std::string_view name) { return WithSeparator(folder).append(name); }

// A line that can't be read is left out: the file it spoke of counts as new.
CopyList ReadList(const std::string& path) {
    CopyList list;
    const std::string text = ReadFile(path).value_or("");
    for (size_t start = 0; start < text.size();) {
        const size_t end = std::min(text.find('\n', start), text.size());
        const char* at = text.data() + start;
        const char* const last = text.data() + end;
        start = end + 1;
        Version version;
        const auto hash = std::from_chars(at, last, version.hash, 16);
        if (hash.ec != std::errc() || hash.ptr == last) continue;
        const auto size = std::from_chars(hash.ptr + 1, last, version.size);
        if (size.ec != std::errc() || last - size.ptr < 2) continue;
        list[std::string(size.ptr + 1, last)] = version;
    }
    return list;
}

void WriteList(const std::string& path, const CopyList& list) {
    std::string text;
    for (const auto& [name, version] : list) {
        char hash[16];
        text.append(hash, std::to_chars(hash, hash + sizeof hash, version.hash, 16).ptr);
        text += ' ' + std::to_string(version.size) + ' ' + name + '\n';
    }
    // Without the list the next start finds the copies equal to what is shipped and lists them anew.
    (void)WriteFileAtomically(path, text);
}

// The names below `shipped` that are to be copied.
std::vector<std::string> ShippedNames(const std::string& shipped) {
    std::vector<std::string> names{std::string(SkinName)};
    const std::string pictures = Join(shipped, PicturesName);
    for (std::optional<std::string> entry = FirstEntry(pictures); entry && !entry->empty(); entry = NextEntry()) {
        if (IsRegularFile(Join(pictures, *entry)) && entry->find('\n') == std::string::npos)
            names.push_back(Join(std::string(PicturesName), *entry));
    }
    return names;
}

// A picture that is no longer shipped, or bears another name now, leaves the list, and the folder too unless the player
// has changed it. Names that a damaged list may hold are looked at no further than the folder of pictures.
void DropWithdrawn(const std::string& shipped, const std::string& folder, CopyList& list) {
    if (!FolderExists(Join(shipped, PicturesName))) return;  // the shipped files are not in reach
    std::erase_if(list, [&](const CopyList::value_type& entry) {
        const auto& [name, version] = entry;
        if (FolderOf(name) != PicturesName || FileExists(Join(shipped, name))) return false;
        const std::string copyPath = Join(folder, name);
        const std::optional<std::string> copy = ReadFile(copyPath);
        // Where it can't be removed, nothing follows but a picture too many.
        if (copy && VersionOf(*copy) == version) RemoveFile(copyPath);
        return true;
    });
}

// Brings one copy up to date. `list` holds the version that the copy was made from.
void UpdateCopy(const std::string& shippedPath, const std::string& copyPath, const std::string& name, CopyList& list) {
    const std::optional<std::string> shipped = ReadFile(shippedPath);
    if (!shipped) return;
    const Version now = VersionOf(*shipped);
    const auto listed = list.find(name);
    if (listed != list.end() && listed->second == now) return;

    if (const std::optional<std::string> copy = ReadFile(copyPath)) {
        const Version there = VersionOf(*copy);
        if (there == now) {
            list[name] = now;
            return;
        }
        if (listed == list.end() || there != listed->second) return;  // the player's own
    } else if (listed != list.end() || FileExists(copyPath)) {
        return;  // deleted by the player, or something of his stands in its place
    }
    if (MkDirs(FolderOf(copyPath)) && WriteFileAtomically(copyPath, *shipped)) list[name] = now;
}

void UpdateCopies(const std::string& shipped, const std::string& folder) {
    const std::string listPath = Join(folder, ListName);
    const CopyList before = ReadList(listPath);
    CopyList list = before;
    DropWithdrawn(shipped, folder, list);
    for (const std::string& name : ShippedNames(shipped))
        UpdateCopy(Join(shipped, name), Join(folder, name), name, list);
    if (list != before) WriteList(listPath, list);
}

}  // namespace

std::string ChooseAppFolder() {
    const std::string share = Join(Join(FolderOf(AppPath()), "share"), ProgramName);
    const std::string place = FileTitle(AppPath());
    const bool installed = (place == "bin" || place == "games") && FolderExists(share);
    if (!installed) return WithSeparator(AppPath());

    const std::string folder = Join(DataHome(), ProgramName);
    // One that can only be read will do if it was set up before.
    if (!MkDirs(folder) || (!IsWritableFolder(folder) && !FileExists(Join(folder, ListName))))
        return WithSeparator(share);
    UpdateCopies(share, folder);
    return WithSeparator(folder);
}
