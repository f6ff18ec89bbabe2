// Variables of the environment.
#pragma once
#include <cstdlib>
#include <string>

// Which variables tell where the player's settings and files are.
#ifdef _WIN32
inline constexpr const char *SettingsVariable = "APPDATA", *DataVariable = "APPDATA";
#else
inline constexpr const char *SettingsVariable = "XDG_CONFIG_HOME", *DataVariable = "XDG_DATA_HOME";
#endif

inline void SetVariable(const char* name, const std::string& value) {
#ifdef _WIN32
    _putenv_s(name, value.c_str());
#else
    setenv(name, value.c_str(), 1);
#endif
}
