// The status line: the level's name and the time played.
#include <algorithm>
#include <cstdio>

#include "core/game_state.h"
#include "platform/system/numbers.h"
#include "play/frm_main.h"

using namespace PuzzleModule;

namespace {

// Hours go on past a day and past two digits.
std::string TimeText(int32_t seconds) {
    const int s = std::max(0, int(seconds));
    char text[32];
    std::snprintf(text, sizeof text, "%02d:%02d:%02d", s / 3600, s / 60 % 60, s % 60);
    return text;
}

}  // namespace

// Touches the clock only, so it can't disturb a drag. The caption is written nowhere else: after a start
// or a load the line keeps its old text until the first tick.
void frmMain::Timer1_Timer() {
    Store(ElapsedSeconds, double(ElapsedSeconds) + 1);
    ShowSeconds();
}

void frmMain::ShowSeconds() {
    const std::string text = LevelName(GameLevel) + " - " + TimeText(ElapsedSeconds);
    lblElapsed.SetCaption(text);
    lblElapsed.SetAccessibleName("Nível e tempo de jogo: " + text);
}
