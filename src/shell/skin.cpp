// The skin is one style sheet for the whole run; the desktop knows what to make of it.
#include "shell/skin.h"

#include "platform/controls/window_system.h"
#include "platform/system/files.h"

void Skin::LoadSkinFile(const std::string& Path) {
    const std::optional<std::string> text = ReadFile(Path);
    loaded_ = text && TheWindows().LoadSkin(*text);
}

void Skin::ApplySkin(Form& window) {
    if (loaded_) TheWindows().ApplySkin(window);
}
