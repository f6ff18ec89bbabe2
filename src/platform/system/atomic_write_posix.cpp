// A file replaced so that at every instant its old bytes or its new ones are there,
// whole: a new file beside it, flushed to the disk, then renamed over it.
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <filesystem>

#include "platform/system/files.h"
#include "platform/system/stale_files.h"
#include "platform/system/temporary_name.h"

namespace {

std::string FolderToOpen(const std::string& path) {
    const std::string folder = FolderOf(path);
    return folder.empty() ? "." : folder;
}

// Where the bytes really belong: the end of a chain of symbolic links, whether there is
// a file yet or not. Nothing if the chain does not end.
std::optional<std::string> FollowLinks(std::string path) {
    for (int hops = 0; hops < 40; ++hops) {
        std::error_code failure;
        const std::string link = std::filesystem::read_symlink(path, failure).string();
        if (failure) return path;
        path = link.starts_with('/') ? link : WithSeparator(FolderToOpen(path)) + link;
    }
    return std::nullopt;
}

// What becomes of the file that is there already.
struct Former {
    bool exists = false;
    struct stat status {};
};

// Nothing if the target must not be replaced: it is no regular file, or is protected.
std::optional<Former> Examine(const std::string& target) {
    Former former;
    if (lstat(target.c_str(), &former.status) != 0) {
        if (errno != ENOENT) return std::nullopt;
        return former;
    }
    former.exists = true;
    if (!S_ISREG(former.status.st_mode) || access(target.c_str(), W_OK) != 0) return std::nullopt;
    return former;
}

bool WriteAll(int file, std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t written = write(file, bytes.data(), bytes.size());
        if (written == 0 || (written < 0 && errno != EINTR)) return false;
        if (written > 0) bytes.remove_prefix(size_t(written));
    }
    return true;
}

// Owner and group as far as we may, permissions always.
bool TakeOver(int file, const Former& former) {
    if (!former.exists) return true;
    if (fchown(file, former.status.st_uid, former.status.st_gid) != 0 && errno != EPERM) return false;
    return fchmod(file, former.status.st_mode & 07777) == 0;
}

bool Fill(int file, const Former& former, std::string_view bytes) {
    const bool whole = TakeOver(file, former) && WriteAll(file, bytes) && fsync(file) == 0;
    return close(file) == 0 && whole;
}

// Makes the new name last. The new file is in its place by now, so a file system that
// cannot do this is no failure.
void FlushFolder(const std::string& folder) {
    const int handle = open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (handle < 0) return;
    fsync(handle);
    close(handle);
}

}  // namespace

bool WriteFileAtomically(const std::string& path, std::string_view bytes) {
    const std::optional<std::string> target = FollowLinks(path);
    if (!target) return false;
    const std::optional<Former> former = Examine(*target);
    if (!former) return false;

    const std::string folder = FolderToOpen(*target);
    SweepStaleFiles(folder);
    const std::string fresh = WithSeparator(folder) + TemporaryName();
    // Nobody but us reads the new file before it has the permissions of the old one.
    const int file = open(fresh.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, former->exists ? 0600 : 0666);
    if (file < 0) return false;
    (void)flock(file, LOCK_EX | LOCK_NB);  // a file system without locks goes by the file's age alone
    if (!Fill(file, *former, bytes) || rename(fresh.c_str(), target->c_str()) != 0) {
        unlink(fresh.c_str());
        return false;
    }
    FlushFolder(folder);
    return true;
}
