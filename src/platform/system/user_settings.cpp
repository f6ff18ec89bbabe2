// The per-user store: one private-profile file for the program, its sections named
// after application and section.
#include "platform/system/user_settings.h"

#include <cstdlib>
#include <filesystem>

#include "platform/system/files.h"
#include "platform/system/profile_file.h"

#ifndef _WIN32
#include <pwd.h>
#include <unistd.h>
#endif

namespace {

constexpr std::string_view StoreFolder = "fento-lira-master";
constexpr std::string_view StoreFile = "settings.ini";

std::string Variable(const char* name) {
    const char* value = std::getenv(name);
    return value ? value : "";
}

std::string WithoutSeparator(std::string folder) {
    while (folder.size() > 1 && folder.back() == PathSeparator) folder.pop_back();
    return folder;
}

#ifdef _WIN32

std::string HomeOf(const char* /*variable*/, std::string_view /*ordinary*/) {
    return WithoutSeparator(Variable("APPDATA"));
}

#else

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

#endif

std::string StorePath(bool makeFolder) {
    const std::string folder = WithSeparator(ConfigurationHome()) + std::string(StoreFolder);
    std::error_code ignored;  // the write that follows fails by itself
    if (makeFolder) std::filesystem::create_directories(folder, ignored);
    return WithSeparator(folder) + std::string(StoreFile);
}

std::string SectionOf(std::string_view application, std::string_view section) {
    return std::string(application) + '/' + std::string(section);
}

}  // namespace

std::string ConfigurationHome() { return HomeOf("XDG_CONFIG_HOME", ".config"); }

std::string DataHome() { return HomeOf("XDG_DATA_HOME", ".local/share"); }

std::string GetSetting(std::string_view application, std::string_view section, std::string_view key,
                       std::string_view defaultValue) {
    return ProfileFile(StorePath(false)).Read(SectionOf(application, section), key).value_or(std::string(defaultValue));
}

bool SaveSetting(std::string_view application, std::string_view section, std::string_view key, std::string_view value) {
    return ProfileFile(StorePath(true)).Write(SectionOf(application, section), key, value);
}
