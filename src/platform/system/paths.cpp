// Paths taken apart and put together, by what the system says of separators and roots.
#include "platform/system/paths.h"

#include <algorithm>

#include "platform/system/files.h"

std::string WithSeparator(std::string folder) {
    while (!folder.empty() && IsSeparator(folder.back())) folder.pop_back();
    return folder + PathSeparator;
}

std::string FileTitle(std::string_view path) {
    const size_t at = path.find_last_of("/\\");
    return std::string(at == std::string_view::npos ? path : path.substr(at + 1));
}

std::string FolderOf(std::string_view path) {
    size_t length = path.size();
    while (length > 0 && !IsSeparator(path[length - 1])) --length;
    if (length == 0) return "";
    while (length > 0 && IsSeparator(path[length - 1])) --length;
    return std::string(path.substr(0, std::max(length, RootLength(path))));
}

std::string NormalPath(const std::string& path) {
    std::string whole = path;
    if (RootLength(whole) == 0) whole = WithSeparator(CurrentFolder()) + path;
    const size_t rootLength = RootLength(whole);
    std::string normal = whole.substr(0, rootLength);
    std::ranges::replace_if(normal, IsSeparator, PathSeparator);
    if (normal.empty() || normal.back() != PathSeparator) normal += PathSeparator;
    const size_t root = normal.size();
    for (size_t begin = rootLength; begin < whole.size();) {
        size_t end = begin;
        while (end < whole.size() && !IsSeparator(whole[end])) ++end;
        const std::string_view name = std::string_view(whole).substr(begin, end - begin);
        begin = end + 1;
        if (name.empty() || name == ".") continue;
        if (name == "..") {
            const size_t cut = normal.rfind(PathSeparator);
            normal.resize(std::max(cut, root));
            continue;
        }
        if (normal.size() > root) normal += PathSeparator;
        normal += name;
    }
    return normal;
}
