// Files and folders by the standard library's calls that report instead of throwing.
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>

#include "platform/system/files.h"
#include "platform/system/folder_reader.h"

namespace fs = std::filesystem;

namespace {

fs::file_status StatusOf(const std::string& path) {
    std::error_code failure;
    return fs::status(path, failure);
}

}  // namespace

struct FolderReader::State {
    fs::directory_iterator next;
    fs::directory_entry at;
};

FolderReader::FolderReader() : state_(std::make_unique<State>()) {}
FolderReader::~FolderReader() = default;

bool FolderReader::Open(const std::string& folder) {
    std::error_code failure;
    state_->next = fs::directory_iterator(folder, failure);
    return !failure;
}

bool FolderReader::Next() {
    if (state_->next == fs::directory_iterator()) return false;
    state_->at = *state_->next;
    std::error_code failure;
    state_->next.increment(failure);
    if (failure) state_->next = {};
    return true;
}

std::string FolderReader::Name() const { return state_->at.path().filename().string(); }
bool FolderReader::IsHidden() const { return Name().starts_with('.'); }

bool FolderReader::IsFolder() const {
    std::error_code failure;
    return state_->at.is_directory(failure);
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
    const uintmax_t length = fs::file_size(path, failure);
    return failure ? std::nullopt : std::optional(int64_t(length));
}

bool MkDir(const std::string& path) {
    std::error_code failure;
    return fs::create_directory(path, failure) && !failure;
}

bool MkDirs(const std::string& path) {
    std::error_code ignored;  // what counts is whether the folder is there
    fs::create_directories(path, ignored);
    return FolderExists(path);
}

void RemoveFile(const std::string& path) {
    std::error_code ignored;
    fs::remove(path, ignored);
}

bool IsWritableFolder(const std::string& path) { return FolderExists(path) && access(path.c_str(), W_OK | X_OK) == 0; }

int OpenRegular(const std::string& path) {
    const int file = open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    struct stat facts {};
    if (file < 0 || (fstat(file, &facts) == 0 && S_ISREG(facts.st_mode))) return file;
    close(file);
    return -1;
}

std::string CurrentFolder() {
    std::error_code failure;
    const fs::path folder = fs::current_path(failure);
    return failure ? std::string(1, PathSeparator) : folder.string();
}
