// An environment variable that has a value for one test and its old one afterwards.
#pragma once
#include <cstdlib>
#include <optional>
#include <string>

// Which variables tell where the player's settings and files are.
#ifdef _WIN32
inline constexpr const char *SettingsVariable = "APPDATA", *DataVariable = "APPDATA";
#else
inline constexpr const char *SettingsVariable = "XDG_CONFIG_HOME", *DataVariable = "XDG_DATA_HOME";
#endif

// Without a value the variable is gone.
inline void SetVariable(const char* name, const char* value) {
#ifdef _WIN32
    _putenv_s(name, value ? value : "");
#else
    value ? setenv(name, value, 1) : unsetenv(name);
#endif
}

class ScopedVariable {
public:
    ScopedVariable(const char* name, const std::string& value) : name_(name) {
        if (const char* old = std::getenv(name)) old_ = old;
        SetVariable(name, value.c_str());
    }
    ~ScopedVariable() { SetVariable(name_, old_ ? old_->c_str() : nullptr); }
    ScopedVariable(const ScopedVariable&) = delete;
    ScopedVariable& operator=(const ScopedVariable&) = delete;

private:
    const char* name_;
    std::optional<std::string> old_;
};
