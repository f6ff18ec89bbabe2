// Plays on the desktop without a screen, and saves when told to.
//
// usage: saver FOLDER      each line of its input, a number and a key, asks for a game of that many seconds, saved by
// the menu, and for that value of the setting; "-" sets none. It answers with the number if the game goes on.
#include <sys/syscall.h>
#include <unistd.h>

#include <iostream>

#include "platform/system/files.h"
#include "shell/settings.h"
#include "tests/support/game_fixture.h"

using namespace PuzzleModule;

// The program's own calls come by here. A disk may take a part of what it is given; then there are more moments, too.
extern "C" ssize_t write(int file, const void* bytes, size_t count) {
    return syscall(SYS_write, file, bytes, count > 512 ? count / 2 : count);
}

int main(int, char** arguments) {
    const std::string folder = arguments[1];
    GameFixture play;
    play.desktop.pictures[folder + ".bmp"] = {{390, 260}, [](Size size) { return PatternSurface(size); }};
    if (!WriteFileAtomically(folder + ".bmp", "the desktop makes its pixels") || !play.Start(folder + ".bmp", 3))
        return 1;
    AppFolder = folder + "/";
    std::string key;
    while (std::cin >> ElapsedSeconds >> key) {
        for (PieceRec& piece : Pieces) piece.X = piece.Y = int16_t(ElapsedSeconds);
        play.desktop.fileAnswers.assign(1, folder + "/jogo.pzl");
        play.Menu("mnuSaveGame");
        if (key != "-") WriteIni({key.c_str(), "", ""}, std::to_string(ElapsedSeconds));
        if (GameRunning && play.main.Timer1.Enabled() && play.desktop.boxes.empty())
            std::cout << ElapsedSeconds << std::endl;
    }
}
