// The player's choices in config.ini, and conversions between setting texts and values.
#pragma once
#include <array>
#include <optional>
#include <string>
#include <string_view>

#include "platform/system/color.h"

// One key of a settings table: the table is the one place that lists keys and defaults.
struct SettingKey {
    const char* key;
    const char* defaultText;
    const char* meaning;
};
inline constexpr const char* SettingsSection = "SETUP";
inline constexpr SettingKey SoundSetting{"Som", "True", "sound effects on (True or False)"};
inline constexpr SettingKey MiniatureSetting{"Navegador", "True", "miniature shown (True or False)"};
inline constexpr SettingKey ColorSetting{"Color", "15203838", "colour of the board, 0x00BBGGRR in decimal"};

namespace ModINI {

// One key of config.ini in AppFolder: at most 254 characters of its value, or `Default` if
// file, section, key or value is missing.
std::string ReadIni(const std::string& Section, const std::string& Key, const std::string& Default);

}  // namespace ModINI

// Writes one key of config.ini, section "SETUP". A failure is not reported: the setting then
// holds for this run.
void WriteIni(const SettingKey& key, const std::string& value);

// The stored value, or the default's where it is missing or does not convert.
bool ReadSwitch(const SettingKey& key);
Color ReadColor(const SettingKey& key);

// True/False, Verdadeiro/Falso (without regard to case), or a number, 0 being false.
std::optional<bool> ToBoolean(std::string_view text);
// A number with or without sign and fraction, blanks round it, rounded as CInt rounds. Nothing if it is none or
// does not fit 32 bits.
std::optional<int32_t> ToInteger(std::string_view text);
std::string TextOf(bool value);  // "True" or "False"
