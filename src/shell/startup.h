// The program from its start to its end.
#pragma once
#include <string>

// Shows the splash, loads the main window behind it, and runs until the program ends. Needs an
// installed desktop. The main window's Form_Unload ends the process.
void RunProgram();

// The program's version as the windows show it: three numbers, "1.0.0".
std::string VersionText();
