// The look of the game's windows, from a skin file.
#pragma once
#include <string>

#include "platform/controls/form.h"

// The skin file is a style sheet. Without it, or with a broken one, windows keep the
// desktop's plain look.
class Skin {
public:
    void LoadSkinFile(const std::string& Path);
    void ApplySkin(Form& window);

private:
    bool loaded_ = false;
};
