// Reading and writing config.ini, and what its values mean.
#include "shell/settings.h"

#include <algorithm>
#include <charconv>

#include "core/code_page.h"
#include "core/game_state.h"
#include "platform/system/numbers.h"
#include "platform/system/profile_file.h"

namespace {

constexpr size_t LongestValue = 254;  // characters

ProfileFile ConfigFile() { return ProfileFile(PuzzleModule::AppFolder + "config.ini"); }

std::string_view Trimmed(std::string_view text) {
    const size_t first = text.find_first_not_of(" \t");
    if (first == text.npos) return {};
    return text.substr(first, text.find_last_not_of(" \t") - first + 1);
}

// `text` is one of `lowerWords`, whatever the case of its ASCII letters.
bool IsOneOf(std::string_view text, std::initializer_list<std::string_view> lowerWords) {
    const auto same = [](char a, char lower) { return (a >= 'A' && a <= 'Z' ? char(a - 'A' + 'a') : a) == lower; };
    return std::any_of(lowerWords.begin(), lowerWords.end(), [&](std::string_view word) {
        return std::equal(text.begin(), text.end(), word.begin(), word.end(), same);
    });
}

// All of `text`, blanks round it aside, as a number with an optional sign.
std::optional<double> ToNumber(std::string_view text) {
    text = Trimmed(text);
    const size_t sign = text.starts_with('+') || text.starts_with('-') ? 1 : 0;
    // Words such as "inf" and a second sign are no numbers here.
    if (text.size() <= sign || !((text[sign] >= '0' && text[sign] <= '9') || text[sign] == '.')) return std::nullopt;
    if (text[0] == '+') text.remove_prefix(1);
    double number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc() || end != text.data() + text.size()) return std::nullopt;
    return number;
}

}  // namespace

std::string ModINI::ReadIni(const std::string& Section, const std::string& Key, const std::string& Default) {
    std::string value = ConfigFile().Read(Section, Key).value_or("");
    value.resize(std::min(FirstCharacters(value, LongestValue).size(), value.find('\0')));
    return value.empty() ? Default : value;
}

void WriteIni(const SettingKey& key, const std::string& value) {
    (void)ConfigFile().Write(SettingsSection, key.key, value);
}

bool ReadSwitch(const SettingKey& key) {
    const std::optional<bool> stored = ToBoolean(ModINI::ReadIni(SettingsSection, key.key, key.defaultText));
    return stored ? *stored : ToBoolean(key.defaultText).value_or(false);
}

Color ReadColor(const SettingKey& key) {
    const std::optional<Color> stored = ToInteger(ModINI::ReadIni(SettingsSection, key.key, key.defaultText));
    return stored ? *stored : ToInteger(key.defaultText).value_or(0);
}

std::optional<bool> ToBoolean(std::string_view text) {
    const std::string_view word = Trimmed(text);
    if (IsOneOf(word, {"true", "verdadeiro"})) return true;
    if (IsOneOf(word, {"false", "falso"})) return false;
    const std::optional<double> number = ToNumber(word);
    if (!number) return std::nullopt;
    return *number != 0;
}

std::optional<int32_t> ToInteger(std::string_view text) {
    const std::optional<double> number = ToNumber(text);
    return number ? CInt32(*number) : std::nullopt;
}

std::string TextOf(bool value) { return value ? "True" : "False"; }
