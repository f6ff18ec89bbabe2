// The player's homes: %APPDATA% is both.
#include <shlobj.h>
#include <windows.h>

#include "platform/system/paths.h"
#include "platform/system/user_settings.h"
#include "platform/system/wide.h"

// Where the variable is missing or no whole path, the folder that Windows itself has for it.
std::string ConfigurationHome() {
    std::wstring chosen(GetEnvironmentVariableW(L"APPDATA", nullptr, 0), L'\0');
    chosen.resize(GetEnvironmentVariableW(L"APPDATA", chosen.data(), DWORD(chosen.size())));
    if (const std::string home = Narrow(chosen); RootLength(home) > 1) return NormalPath(home);
    wchar_t ordinary[MAX_PATH]{};
    SHGetFolderPathW(nullptr, CSIDL_APPDATA, nullptr, SHGFP_TYPE_CURRENT, ordinary);
    return Narrow(ordinary);
}

std::string DataHome() { return ConfigurationHome(); }
