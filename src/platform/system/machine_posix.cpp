// Volumes below one root, and the program's file where the kernel has it.
#include "platform/system/machine.h"

#ifdef __GLIBC__
#include <malloc.h>
#endif
#include <chrono>
#include <thread>

#ifdef __linux__
#include <mntent.h>
#include <unistd.h>

#include <array>
#include <cstdio>
#include <memory>
#include <string_view>

#include "platform/system/paths.h"
#endif

namespace {

#ifdef __linux__

// Where desktops mount what the player plugs in.
bool IsRemovable(std::string_view place) {
    return place.starts_with("/media/") || place.starts_with("/run/media/") || place.starts_with("/mnt/");
}

// From the kernel's table; asking each volume itself would hang on a server that does not answer.
void AddPluggedIn(std::vector<Volume>& volumes) {
    const std::unique_ptr<FILE, int (*)(FILE*)> table(setmntent("/proc/self/mounts", "r"), endmntent);
    if (!table) return;
    mntent entry{};
    std::array<char, 4096> text;
    while (getmntent_r(table.get(), &entry, text.data(), int(text.size())))
        if (const std::string place = entry.mnt_dir; IsRemovable(place)) volumes.push_back({place, FileTitle(place)});
}

#else

void AddPluggedIn(std::vector<Volume>&) {}

#endif

}  // namespace

std::string ProgramFile() {
#ifdef __linux__
    std::array<char, 4096> path;
    const ssize_t length = readlink("/proc/self/exe", path.data(), path.size());
    if (length > 0 && size_t(length) < path.size()) return {path.data(), size_t(length)};
#endif
    return "";
}

std::vector<Volume> MachineVolumes(const std::string& home) {
    std::vector<Volume> volumes{{"/", "Computador", Volume::Kind::Computer}};
    if (home != "/") volumes.push_back({home, "Pasta pessoal", Volume::Kind::Home});
    AddPluggedIn(volumes);
    return volumes;
}

void SleepSeconds(double seconds) { std::this_thread::sleep_for(std::chrono::duration<double>(seconds)); }

void GiveMemoryBack() {
#ifdef __GLIBC__
    malloc_trim(0);
#endif
}
