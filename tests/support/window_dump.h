// A window as text: one entry a control or menu item, by its name, with all that a player can see of it or do with it.
#pragma once
#include <map>
#include <string>

#include "platform/controls/form.h"

using State = std::map<std::string, std::string>;

// Adds the control and everything in it, a form's menus as well.
void Describe(Control& control, State& state);

// Of two states what is another in `now`, line by line.
std::string Changes(const State& before, const State& now);

// Size and pixels of a picture: its colour where it has only one, else a number that tells it from others.
std::string PixelsOf(const Surface& surface);
