// The menu's own handlers: enabling at the opening of a menu, the switches, the colour of the board, the
// small windows, the exit.
#include "core/frm_main.h"
#include "core/game_state.h"
#include "platform/system/desktop.h"
#include "shell/common_dialogs.h"
#include "shell/form1.h"
#include "shell/frm_about.h"
#include "shell/settings.h"

using namespace PuzzleModule;

// Items are greyed only here, at the moment their menu opens; a shortcut follows what the last opening left.
void frmMain::mnuGame_Click() {
    ReleaseHold();
    mnuSaveGame->SetEnabled(GameRunning);
    mnuShuffle->SetEnabled(Surfaces.picPat.UBound() > 0);
}

void frmMain::mnuOptions_Click() {
    ReleaseHold();
    mnuHints->SetEnabled(GameRunning);
    MnDesistir->SetEnabled(GameRunning);
}

void frmMain::mnuExit_Click() { Unload(); }

void frmMain::mnuSounds_Click() {
    mnuSounds->SetChecked(!mnuSounds->Checked());
    WriteIni(SoundSetting, TextOf(mnuSounds->Checked()));
}

// At any time: without a game the panel shows whatever it holds.
void frmMain::mnuStatus_Click() {
    mnuStatus->SetChecked(!mnuStatus->Checked());
    picStatus.SetVisible(mnuStatus->Checked());
    WriteIni(MiniatureSetting, TextOf(mnuStatus->Checked()));
}

void frmMain::mnuBackground_Click() {
    if (task_ == Task::Building || !ReleaseHold()) return;
    const Color color = ModCmnDlg::ShowColor(*this, picScreen.BackColor(), true);
    if (color == -1) return;
    Surfaces.picBG.SetBackground(ToPixel(ResolveColor(color)));
    picScreen.SetBackColor(color);
    ComposeBoard();
    WriteIni(ColorSetting, std::to_string(color));
}

void frmMain::mnuHowToPlay_Click() {
    if (!ReleaseHold()) return;
    Form1 sheet(Skin1);
    sheet.Show(Modality::Modal);
}

void frmMain::mnuAbout_Click() {
    if (!ReleaseHold()) return;
    FrmAbout about;
    about.Show(Modality::Modal);
}
