// The folder in which the program keeps what belongs to the player: config.ini, "Save", the
// pictures of "Imagens" and the skin.
#pragma once
#include <string>

// The folder for this run, with its closing separator.
//
// A portable copy and a build tree work in the program's own folder. An installed program (inside
// /usr, in a folder that the player can't write to, or with its data in <prefix>/share) works in a
// folder of its own in the player's data home. That folder gets copies of the shipped pictures and
// skin. A copy that the player left alone follows an upgrade; one that he changed is never
// touched, and one that he deleted never comes back. Failures are silent: whatever can't be made
// is missing.
std::string ChooseAppFolder();
