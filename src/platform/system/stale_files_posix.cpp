// A program that writes holds a lock on its new file.
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <ctime>

#include "platform/system/stale_files.h"

void RemoveIfStale(const std::string& path) {
    const int file = open(path.c_str(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC);
    if (file < 0) return;
    struct stat facts {};
    const bool ours =
        fstat(file, &facts) == 0 && S_ISREG(facts.st_mode) && facts.st_uid == geteuid() && facts.st_nlink == 1;
    const bool old = facts.st_mtime < std::time(nullptr) - std::chrono::seconds(LongestWrite).count();
    if (ours && old && flock(file, LOCK_EX | LOCK_NB) == 0) unlink(path.c_str());
    close(file);
}
