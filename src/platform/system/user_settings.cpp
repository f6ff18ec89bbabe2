// The per-user store: one private-profile file for the program, its sections named
// after application and section.
#include "platform/system/user_settings.h"

#include "platform/system/files.h"
#include "platform/system/profile_file.h"

namespace {

constexpr std::string_view StoreFolder = "fento-lira-master";
constexpr std::string_view StoreFile = "settings.ini";

std::string StorePath(bool makeFolder) {
    const std::string folder = WithSeparator(ConfigurationHome()) + std::string(StoreFolder);
    if (makeFolder) MkDirs(folder);  // the write that follows fails by itself
    return WithSeparator(folder) + std::string(StoreFile);
}

std::string SectionOf(std::string_view application, std::string_view section) {
    return std::string(application) + '/' + std::string(section);
}

}  // namespace

std::string GetSetting(std::string_view application, std::string_view section, std::string_view key,
                       std::string_view defaultValue) {
    return ProfileFile(StorePath(false)).Read(SectionOf(application, section), key).value_or(std::string(defaultValue));
}

bool SaveSetting(std::string_view application, std::string_view section, std::string_view key, std::string_view value) {
    return ProfileFile(StorePath(true)).Write(SectionOf(application, section), key, value);
}
