// The folder in which the program keeps what belongs to the player: config.ini, "Save", the
// pictures of "Imagens" and the skin.
#pragma once
#include <string>

// The folder for this run, with its closing separator.
//
// An installed program (in a folder "bin" or "games", its data in ../share/fento-lira-master) works in a
// folder of its own in the player's data home. That folder gets copies of the shipped pictures and skin. A
// copy that the player left alone follows an upgrade, also out of the folder again; one that he changed is
// never touched, and one that he deleted never comes back. Where no such folder can be made, pictures and
// skin are read where they were installed.
//
// Every other program works in its own folder, whether that can be written to or not. Failures are silent:
// whatever can't be made or written is missing.
std::string ChooseAppFolder();
