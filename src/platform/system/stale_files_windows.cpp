// A file that is being written is open, and what is open can't be removed here.
#include <windows.h>

#include "platform/system/stale_files.h"
#include "platform/system/wide.h"

void RemoveIfStale(const std::string& path) {
    const std::wstring name = Wide(path);
    WIN32_FILE_ATTRIBUTE_DATA facts{};
    FILETIME time{};
    if (!GetFileAttributesExW(name.c_str(), GetFileExInfoStandard, &facts)) return;
    if (facts.dwFileAttributes & (FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_REPARSE_POINT)) return;
    GetSystemTimeAsFileTime(&time);
    const auto ticks = [](const FILETIME& at) { return uint64_t(at.dwHighDateTime) << 32 | at.dwLowDateTime; };
    constexpr uint64_t TicksPerSecond = 10'000'000;
    if (ticks(facts.ftLastWriteTime) + std::chrono::seconds(LongestWrite).count() * TicksPerSecond < ticks(time))
        DeleteFileW(name.c_str());
}
