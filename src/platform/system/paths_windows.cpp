// Paths where drives have letters, other machines two separators, and case does not count.
#include <windows.h>

#include <algorithm>

#include "platform/system/paths.h"
#include "platform/system/wide.h"

const char PathSeparator = '\\';

namespace {

constexpr std::string_view Separators = "/\\";

bool IsLetter(char c) { return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z'); }

// Where the name that begins at `begin` has ended, with the separator behind it.
size_t BehindName(std::string_view path, size_t begin) {
    const size_t end = path.find_first_of(Separators, begin);
    return end == std::string_view::npos ? path.size() : end + 1;
}

}  // namespace

bool IsSeparator(char c) { return Separators.find(c) != std::string_view::npos; }

size_t RootLength(std::string_view path) {
    if (path.size() >= 2 && IsLetter(path[0]) && path[1] == ':') return path.size() > 2 && IsSeparator(path[2]) ? 3 : 2;
    if (path.empty() || !IsSeparator(path[0])) return 0;
    if (path.size() < 3 || !IsSeparator(path[1])) return 1;
    return BehindName(path, BehindName(path, 2));  // server and share
}

// "/C:/fotos/x.jpg" is a file here, "/fotos/x.jpg" one that the machine shares.
std::string FileOfAddress(std::string_view machine, std::string path) {
    std::ranges::replace(path, '/', PathSeparator);
    if (!machine.empty() && machine != "localhost") return "\\\\" + std::string(machine) + path;
    return RootLength(path.substr(1)) > 1 ? path.substr(1) : path;
}

bool SamePath(std::string_view a, std::string_view b) {
    const std::wstring wideA = Wide(a), wideB = Wide(b);
    return CompareStringOrdinal(wideA.data(), int(wideA.size()), wideB.data(), int(wideB.size()), TRUE) == CSTR_EQUAL;
}

std::wstring Wide(std::string_view text) {
    const int bytes = int(text.size());
    std::wstring wide(size_t(MultiByteToWideChar(CP_UTF8, 0, text.data(), bytes, nullptr, 0)), L'\0');
    MultiByteToWideChar(CP_UTF8, 0, text.data(), bytes, wide.data(), int(wide.size()));
    return wide;
}

std::string Narrow(std::wstring_view wide) {
    const int units = int(wide.size());
    std::string text(size_t(WideCharToMultiByte(CP_UTF8, 0, wide.data(), units, nullptr, 0, nullptr, nullptr)), '\0');
    WideCharToMultiByte(CP_UTF8, 0, wide.data(), units, text.data(), int(text.size()), nullptr, nullptr);
    return text;
}

bool NamesDevice(const std::wstring& path) {
    std::wstring whole(GetFullPathNameW(path.c_str(), 0, nullptr, nullptr), L'\0');
    whole.resize(GetFullPathNameW(path.c_str(), DWORD(whole.size()), whole.data(), nullptr));
    return whole.starts_with(L"\\\\.\\") || whole.starts_with(L"\\\\?\\");
}
