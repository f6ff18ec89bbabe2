// A file replaced so that at every instant its old bytes or its new ones are there,
// whole: a new file beside it, flushed to the disk, then renamed over it.
#include <windows.h>

#include <algorithm>

#include "platform/system/files.h"
#include "platform/system/stale_files.h"
#include "platform/system/temporary_name.h"
#include "platform/system/wide.h"

namespace {

// A scanner or an indexer may hold the old file for a moment, or the new one as soon as it is closed.
constexpr int Tries = 20;
constexpr DWORD BetweenTries = 25;  // milliseconds

bool WriteAll(HANDLE file, std::string_view bytes) {
    while (!bytes.empty()) {
        DWORD written = 0;
        const auto part = DWORD(std::min<size_t>(bytes.size(), 1u << 20));
        if (!WriteFile(file, bytes.data(), part, &written, nullptr) || written == 0) return false;
        bytes.remove_prefix(written);
    }
    return true;
}

bool MakeFile(const std::wstring& path, std::string_view bytes) {
    const HANDLE file =
        CreateFileW(path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE) return false;
    const bool whole = WriteAll(file, bytes) && FlushFileBuffers(file);
    return CloseHandle(file) && whole;
}

// A folder, a device, or a file that the player has protected.
bool MustNotBeReplaced(const std::wstring& path) {
    if (NamesDevice(path)) return true;
    const DWORD attributes = GetFileAttributesW(path.c_str());
    return attributes != INVALID_FILE_ATTRIBUTES &&
           (attributes & (FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_READONLY)) != 0;
}

// Fails where somebody keeps holding the old file; it is then as it was.
bool PutInPlace(const std::wstring& fresh, const std::wstring& target) {
    for (int i = 0; i < Tries; ++i) {
        if (i > 0) Sleep(BetweenTries);
        if (MoveFileExW(fresh.c_str(), target.c_str(), MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH)) return true;
        const DWORD reason = GetLastError();
        if (reason != ERROR_SHARING_VIOLATION && reason != ERROR_LOCK_VIOLATION && reason != ERROR_ACCESS_DENIED) break;
    }
    return false;
}

}  // namespace

bool WriteFileAtomically(const std::string& path, std::string_view bytes) {
    const std::wstring target = Wide(path);
    const std::string folder = FolderOf(path);
    if (FileTitle(path).empty() || MustNotBeReplaced(target)) return false;
    SweepStaleFiles(folder.empty() ? "." : folder);
    const std::wstring fresh = Wide((folder.empty() ? "" : WithSeparator(folder)) + TemporaryName());
    if (MakeFile(fresh, bytes) && PutInPlace(fresh, target)) return true;
    DeleteFileW(fresh.c_str());
    return false;
}
