// A folder held for a moment against other runs of the program, so that what is read, changed and written back there
// loses nothing that another one has written meanwhile.
#pragma once
#include <chrono>
#include <string>

class FolderLock {
public:
    // Waits for its turn, but not for long: a program that stands still with the lock, or a file system without locks,
    // must not hold this one up. The work then goes on without.
    explicit FolderLock(const std::string& folder);
    ~FolderLock();
    FolderLock(const FolderLock&) = delete;
    FolderLock& operator=(const FolderLock&) = delete;

private:
    static constexpr std::chrono::milliseconds LongestWait{500};
#ifdef _WIN32
    void* handle_ = nullptr;
#else
    int handle_ = -1;
#endif
};
