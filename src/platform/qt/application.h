// The desktop on Qt as a program uses it.
#pragma once
#include <functional>

// Sets the desktop up and installs it, runs `program` on it and returns the process's exit code; mostly the
// program ends the process itself (End). `name` is the program's own as it was started.
int RunOnDesktop(char* name, const std::function<void()>& program);
