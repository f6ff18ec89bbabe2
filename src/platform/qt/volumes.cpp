// The volumes and places that a player knows, and the program's own file.
#include <QCoreApplication>
#include <QDir>
#include <QStandardPaths>

#include "platform/qt/desktop.h"
#include "platform/qt/widgets/peer.h"
#include "platform/system/files.h"
#include "platform/system/machine.h"

namespace {

std::string NativeName(const QString& path) { return FromText(QDir::toNativeSeparators(path)); }

// The player's folder of pictures, wherever his desktop has it. One without such a folder names the home.
void AddPictures(std::vector<Volume>& volumes, const std::string& home) {
    const std::string folder = NativeName(QStandardPaths::writableLocation(QStandardPaths::PicturesLocation));
    if (FolderExists(folder) && WithSeparator(folder) != WithSeparator(home))
        volumes.push_back({folder, "Minhas imagens", Volume::Kind::Pictures});
}

}  // namespace

std::vector<Volume> QtDesktop::Volumes() {
    const std::string home = NativeName(QDir::homePath());
    std::vector<Volume> volumes = MachineVolumes(home);
    AddPictures(volumes, home);
    return volumes;
}

std::string QtDesktop::ProgramPath() {
    const std::string path = ProgramFile();
    return path.empty() ? NativeName(QCoreApplication::applicationFilePath()) : path;
}
