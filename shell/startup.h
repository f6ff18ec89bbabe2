// The program from its start to its end.
#pragma once

// Shows the splash, loads the main window behind it, and runs until the program ends. Needs an
// installed desktop. The main window's Form_Unload ends the process.
void RunProgram();
