#include <windows.h>

#include "platform/system/folder_lock.h"

// One for all folders: settings are written seldom.
FolderLock::FolderLock(const std::string&) : handle_(CreateMutexW(nullptr, FALSE, L"fento-lira-master-settings")) {
    if (handle_) WaitForSingleObject(handle_, DWORD(LongestWait.count()));
}

FolderLock::~FolderLock() {
    if (!handle_) return;
    ReleaseMutex(handle_);
    CloseHandle(handle_);
}
