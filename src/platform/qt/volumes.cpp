// The volumes and places that a player knows, and the program's own file.
#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QStandardPaths>
#include <algorithm>

#include "platform/qt/desktop.h"
#include "platform/system/files.h"

#ifdef __linux__
#include <mntent.h>
#include <unistd.h>

#include <array>
#include <cstdio>
#include <memory>
#include <string_view>
#endif

namespace {

std::string HomeFolder() { return QFile::encodeName(QDir::homePath()).toStdString(); }

// The player's folder of pictures, wherever his desktop has it. One without such a folder names the home.
void AddPictures(std::vector<Volume>& volumes) {
    const QString place = QStandardPaths::writableLocation(QStandardPaths::PicturesLocation);
    const std::string folder = QFile::encodeName(QDir::toNativeSeparators(place)).toStdString();
    if (FolderExists(folder) && WithSeparator(folder) != WithSeparator(HomeFolder()))
        volumes.push_back({folder, "Minhas imagens", Volume::Kind::Pictures});
}

#ifdef __linux__

// Where desktops mount what the player plugs in.
bool IsRemovable(std::string_view place) {
    return place.starts_with("/media/") || place.starts_with("/run/media/") || place.starts_with("/mnt/");
}

// From the kernel's table; asking each volume itself would hang on a server that does not answer.
std::vector<std::string> MountPlaces() {
    std::vector<std::string> places;
    const std::unique_ptr<FILE, int (*)(FILE*)> table(setmntent("/proc/self/mounts", "r"), endmntent);
    if (!table) return places;
    mntent entry{};
    std::array<char, 4096> text;
    while (getmntent_r(table.get(), &entry, text.data(), int(text.size()))) places.emplace_back(entry.mnt_dir);
    return places;
}

std::vector<Volume> KnownVolumes() {
    std::vector<Volume> volumes{{"/", "Computador", Volume::Kind::Computer}};
    if (const std::string home = HomeFolder(); home != "/")
        volumes.push_back({home, "Pasta pessoal", Volume::Kind::Home});
    for (const std::string& place : MountPlaces())
        if (IsRemovable(place)) volumes.push_back({place, FileTitle(place)});
    return volumes;
}

#else

std::vector<Volume> KnownVolumes() {
    std::vector<Volume> volumes;
    for (const QFileInfo& drive : QDir::drives()) {
        const std::string root = QDir::toNativeSeparators(drive.absolutePath()).toStdString();
        volumes.push_back({root, root});
    }
    return volumes;
}

#endif

}  // namespace

std::vector<Volume> QtDesktop::Volumes() {
    std::vector<Volume> volumes = KnownVolumes();
    AddPictures(volumes);
    return volumes;
}

std::string QtDesktop::ProgramPath() {
#ifdef __linux__
    // Byte for byte, whatever the folder's name holds.
    std::array<char, 4096> path;
    const ssize_t length = readlink("/proc/self/exe", path.data(), path.size());
    if (length > 0 && size_t(length) < path.size()) return {path.data(), size_t(length)};
#endif
    return QFile::encodeName(QDir::toNativeSeparators(QCoreApplication::applicationFilePath())).toStdString();
}
