// The version that the build gave the program.
#include "shell/version.h"

#include "platform/system/desktop.h"

std::string VersionText() {
    return std::to_string(AppMajor) + "." + std::to_string(AppMinor) + "." + std::to_string(AppRevision);
}
