// The player's homes by the variables of the desktop.
#include <pwd.h>
#include <unistd.h>

#include <cstdlib>

#include "platform/system/paths.h"
#include "platform/system/user_settings.h"

namespace {

std::string Variable(const char* name) {
    const char* value = std::getenv(name);
    return value ? value : "";
}

std::string WithoutSeparator(std::string folder) {
    while (folder.size() > 1 && folder.back() == PathSeparator) folder.pop_back();
    return folder;
}

std::string HomeFolder() {
    const std::string home = Variable("HOME");
    if (home.starts_with('/')) return home;
    const passwd* entry = getpwuid(getuid());
    return entry && entry->pw_dir ? entry->pw_dir : "/";
}

// A relative path in the variable is invalid and counts as missing.
std::string HomeOf(const char* variable, std::string_view ordinary) {
    const std::string chosen = Variable(variable);
    if (chosen.starts_with('/')) return WithoutSeparator(chosen);
    return WithSeparator(HomeFolder()) + std::string(ordinary);
}

}  // namespace

std::string ConfigurationHome() { return HomeOf("XDG_CONFIG_HOME", ".config"); }

std::string DataHome() { return HomeOf("XDG_DATA_HOME", ".local/share"); }
