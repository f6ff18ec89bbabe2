// The window system in use.
#include "platform/controls/window_system.h"

#include <cassert>

namespace {

WindowSystem* current = nullptr;

}  // namespace

WindowSystem& TheWindows() {
    assert(current);
    return *current;
}

bool HasWindows() { return current != nullptr; }

Density DensityOf(Control& control) {
    Form* const form = control.OwnerForm();
    return form && current ? Density::ForScale(current->ScaleOf(*form)) : Density();
}

void InstallWindows(WindowSystem* windows) { current = windows; }
