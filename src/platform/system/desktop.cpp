// The desktop in use, and the game's vocabulary on top of it.
#include "platform/system/desktop.h"

#include <cassert>
#include <chrono>
#include <cstdlib>
#include <ctime>

#include "platform/system/files.h"

namespace {

Desktop* current = nullptr;

}  // namespace

Desktop& TheDesktop() {
    assert(current);
    return *current;
}

bool HasDesktop() { return current != nullptr; }

void InstallDesktop(Desktop* desktop) { current = desktop; }

void DoEvents(Yield yield) { TheDesktop().DoEvents(yield); }

MsgBoxResult MsgBox(const std::string& text, int style, const std::string& title) {
    return TheDesktop().MsgBox(text, style, title);
}

double SteadySeconds() { return TheDesktop().SteadySeconds(); }

double SecondsSinceMidnight() {
    using namespace std::chrono;
    const auto now = system_clock::now();
    const std::time_t second = system_clock::to_time_t(floor<seconds>(now));
    const std::tm local = *std::localtime(&second);
    const double fraction = duration<double>(now - floor<seconds>(now)).count();
    return local.tm_hour * 3600.0 + local.tm_min * 60.0 + local.tm_sec + fraction;
}

void End() {
    TheDesktop().End();
    std::abort();  // not reached; the compiler cannot see that through a virtual call
}

// Controls may be made before a desktop is there; its colours are then the plain ones.
Color ResolveColor(Color color) {
    if (color >= 0) return color;
    if (HasDesktop()) return TheDesktop().SystemColor(color);
    return color == WindowColor ? Rgb(255, 255, 255) : Rgb(240, 240, 240);
}

std::string AppPath() { return FolderOf(TheDesktop().ProgramPath()); }

std::string AppEXEName() {
    const std::string file = FileTitle(TheDesktop().ProgramPath());
    const size_t dot = file.rfind('.');
    return dot == std::string::npos || dot == 0 ? file : file.substr(0, dot);
}
