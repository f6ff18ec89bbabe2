// Files and folders by the wide calls of Windows.
#include <fcntl.h>
#include <io.h>
#include <windows.h>

#include "platform/system/files.h"
#include "platform/system/folder_reader.h"
#include "platform/system/temporary_name.h"
#include "platform/system/wide.h"

namespace {

// Nothing where there is neither a file nor a folder.
std::optional<WIN32_FILE_ATTRIBUTE_DATA> FactsOf(const std::string& path) {
    const std::wstring name = Wide(path);
    WIN32_FILE_ATTRIBUTE_DATA facts{};
    if (NamesDevice(name) || !GetFileAttributesExW(name.c_str(), GetFileExInfoStandard, &facts)) return std::nullopt;
    return facts;
}

bool IsFolder(DWORD attributes) { return (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0; }

}  // namespace

struct FolderReader::State {
    ~State() { Close(); }
    void Close() {
        if (search != INVALID_HANDLE_VALUE) FindClose(search);
        search = INVALID_HANDLE_VALUE;
    }

    HANDLE search = INVALID_HANDLE_VALUE;
    bool begun = false;  // `found` was handed out
    WIN32_FIND_DATAW found{};
};

FolderReader::FolderReader() : state_(std::make_unique<State>()) {}
FolderReader::~FolderReader() = default;

bool FolderReader::Open(const std::string& folder) {
    state_->Close();
    state_->begun = false;
    if (folder.empty() || NamesDevice(Wide(folder))) return false;
    const std::wstring everything = Wide(WithSeparator(folder)) + L'*';
    state_->search = FindFirstFileExW(everything.c_str(), FindExInfoBasic, &state_->found, FindExSearchNameMatch,
                                      nullptr, FIND_FIRST_EX_LARGE_FETCH);
    // The root of an empty medium has not even "." and "..".
    return state_->search != INVALID_HANDLE_VALUE || (GetLastError() == ERROR_FILE_NOT_FOUND && FolderExists(folder));
}

bool FolderReader::Next() {
    while (state_->search != INVALID_HANDLE_VALUE) {
        if (state_->begun && !FindNextFileW(state_->search, &state_->found)) state_->Close();
        state_->begun = true;
        const std::wstring_view name = state_->found.cFileName;
        if (state_->search != INVALID_HANDLE_VALUE && name != L"." && name != L"..") return true;
    }
    return false;
}

std::string FolderReader::Name() const { return Narrow(state_->found.cFileName); }
bool FolderReader::IsFolder() const { return ::IsFolder(state_->found.dwFileAttributes); }

// What other systems hide by a dot stays hidden on a stick that goes to and fro.
bool FolderReader::IsHidden() const {
    constexpr DWORD NotShown = FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM;
    return (state_->found.dwFileAttributes & NotShown) != 0 || state_->found.cFileName[0] == L'.';
}

bool FolderExists(const std::string& path) {
    const auto facts = FactsOf(path);
    return facts && IsFolder(facts->dwFileAttributes);
}

bool FileExists(const std::string& path) {
    const auto facts = FactsOf(path);
    return facts && !IsFolder(facts->dwFileAttributes);
}

bool IsRegularFile(const std::string& path) { return FileExists(path); }

std::optional<int64_t> FileLen(const std::string& path) {
    const auto facts = FactsOf(path);
    if (!facts) return std::nullopt;
    return IsFolder(facts->dwFileAttributes) ? 0 : int64_t(facts->nFileSizeHigh) << 32 | facts->nFileSizeLow;
}

bool MkDir(const std::string& path) { return CreateDirectoryW(Wide(path).c_str(), nullptr) != 0; }

bool MkDirs(const std::string& path) {
    if (FolderExists(path)) return true;
    const std::string above = FolderOf(path);
    return !above.empty() && above.size() < path.size() && MkDirs(above) && (MkDir(path) || FolderExists(path));
}

void RemoveFile(const std::string& path) { DeleteFileW(Wide(path).c_str()); }

// Rights are many and inherited; only trying tells. The file goes when it is closed.
bool IsWritableFolder(const std::string& path) {
    const std::wstring probe = Wide(WithSeparator(path) + TemporaryName());
    const HANDLE file = CreateFileW(probe.c_str(), GENERIC_WRITE | DELETE, 0, nullptr, CREATE_NEW,
                                    FILE_ATTRIBUTE_HIDDEN | FILE_FLAG_DELETE_ON_CLOSE, nullptr);
    return file != INVALID_HANDLE_VALUE && CloseHandle(file);
}

// While it is open, others may rename and delete it as they please.
int OpenRegular(const std::string& path) {
    const std::wstring name = Wide(path);
    if (NamesDevice(name)) return -1;
    constexpr DWORD Everybody = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
    const HANDLE file = CreateFileW(name.c_str(), GENERIC_READ, Everybody, nullptr, OPEN_EXISTING,
                                    SECURITY_SQOS_PRESENT | SECURITY_ANONYMOUS, nullptr);
    if (file == INVALID_HANDLE_VALUE) return -1;
    const int opened =
        GetFileType(file) == FILE_TYPE_DISK ? _open_osfhandle(intptr_t(file), _O_RDONLY | _O_BINARY) : -1;
    if (opened < 0) CloseHandle(file);
    return opened;
}

std::string CurrentFolder() {
    std::wstring folder(GetCurrentDirectoryW(0, nullptr), L'\0');
    folder.resize(GetCurrentDirectoryW(DWORD(folder.size()), folder.data()));
    return Narrow(folder);
}
