// The per-user store: fento-lira-master/settings.ini in the player's configuration
// home (XDG_CONFIG_HOME or ~/.config; %APPDATA% on Windows), private-profile text.
#pragma once
#include <string>
#include <string_view>

// `application` is the program's file name without extension.
std::string GetSetting(std::string_view application, std::string_view section, std::string_view key,
                       std::string_view defaultValue);
// False if the store could not be written.
bool SaveSetting(std::string_view application, std::string_view section, std::string_view key, std::string_view value);

// The player's configuration home and data home, without a closing separator.
std::string ConfigurationHome();
std::string DataHome();
