// A lock on the folder itself leaves no file behind, also when its holder is killed.
#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <cerrno>
#include <thread>

#include "platform/system/folder_lock.h"

FolderLock::FolderLock(const std::string& folder)
    : handle_(open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_NONBLOCK | O_CLOEXEC)) {
    if (handle_ < 0) return;
    const auto end = std::chrono::steady_clock::now() + LongestWait;
    while (flock(handle_, LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK && std::chrono::steady_clock::now() < end)
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
}

// The lock ends with the last handle on it.
FolderLock::~FolderLock() {
    if (handle_ >= 0) close(handle_);
}
