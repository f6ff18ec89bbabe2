// Drives with letters, and the program's file as the loader knows it.
#include "platform/system/machine.h"

#include <windows.h>

#include <timeapi.h>

#include <cmath>

#include "platform/system/wide.h"

namespace {

// The name that the player gave to a disk. A disc or a server would have to be waited for and has none here.
std::string NameOf(const std::wstring& root) {
    const UINT kind = GetDriveTypeW(root.c_str());
    wchar_t name[MAX_PATH + 1]{};
    if (kind == DRIVE_FIXED || kind == DRIVE_REMOVABLE)
        GetVolumeInformationW(root.c_str(), name, MAX_PATH + 1, nullptr, nullptr, nullptr, nullptr, 0);
    return Narrow(name);
}

}  // namespace

std::string ProgramFile() {
    std::wstring path(32768, L'\0');  // longer than any
    path.resize(GetModuleFileNameW(nullptr, path.data(), DWORD(path.size())));
    return Narrow(path);
}

std::vector<Volume> MachineVolumes(const std::string& /*home*/) {
    std::vector<Volume> volumes;
    DWORD drives = GetLogicalDrives();
    for (char letter = 'A'; drives != 0; ++letter, drives >>= 1) {
        if ((drives & 1) == 0) continue;
        const std::string drive = std::string(1, letter) + ":", name = NameOf(Wide(drive + "\\"));
        volumes.push_back({drive + "\\", name.empty() ? drive : drive + " [" + name + "]"});
    }
    return volumes;
}

// Else every wait ends with the system's next tick, which is up to 16 ms away.
void SleepSeconds(double seconds) {
    timeBeginPeriod(1);
    Sleep(DWORD(std::ceil(seconds * 1000)));
    timeEndPeriod(1);
}

void GiveMemoryBack() { HeapCompact(GetProcessHeap(), 0); }
