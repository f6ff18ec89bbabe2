// A saved game dropped on the window, as from a file manager.
#include "platform/system/desktop.h"
#include "platform/system/files.h"
#include "play/frm_main.h"

using namespace PuzzleModule;

// Known by its name alone; what the file holds is looked at when it is opened.
bool frmMain::TakesGame(const std::string& Path) const {
    std::string ending = Path.size() < 4 ? "" : Path.substr(Path.size() - 4);
    for (char& c : ending)
        if (c >= 'A' && c <= 'Z') c = char(c - 'A' + 'a');
    return ending == ".pzl" && !Busy() && IsRegularFile(Path);
}

// As if it had been chosen in the dialog of "Abrir um jogo salvo".
void frmMain::Form_DropFile(const std::string& Path) {
    if (Busy() || !ReleaseHold()) return;
    RestoreGame(Path);
    SetPointer(MousePointer::Default);
    Timer1.SetEnabled(GameRunning);
}
