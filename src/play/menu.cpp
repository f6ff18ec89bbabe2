// The menu: its tree, and its own handlers: enabling at the opening of a menu, the switches, the colour of
// the board, the small windows, the exit.
#include "core/game_state.h"
#include "platform/system/desktop.h"
#include "play/frm_main.h"
#include "shell/common_dialogs.h"
#include "shell/form1.h"
#include "shell/frm_about.h"
#include "shell/settings.h"

using namespace PuzzleModule;

void frmMain::BuildMenu() {
    mnuGame = &Menus.Add("mnuGame", "Jogo");
    mnuNew = &mnuGame->Add("mnuNew", "Novo Jogo");
    constexpr const char* levelCaptions[6] = {"Kids A", "Kids B", "-", "Fácil", "Intermediário", "Difícil"};
    for (int level = 0; level < 6; ++level)
        mnuNewGame[level] = &mnuNew->Add("mnuNewGame(" + std::to_string(level) + ")", levelCaptions[level]);
    mnuShuffle = &mnuGame->Add("mnuShuffle", "Reniciar este jogo", {.function = 3});
    mnuGame->Add("mnu5", "-");
    mnuSaveGame = &mnuGame->Add("mnuSaveGame", "Salvar este jogo   ", {.key = 'S', .control = true});
    mnuLoadGame = &mnuGame->Add("mnuLoadGame", "Abrir um jogo salvo", {.key = 'O', .control = true});
    mnuGame->Add("mnu0", "-");
    mnuExit = &mnuGame->Add("mnuExit", "Sair");

    mnuOptions = &Menus.Add("mnuOptions", "Opções");
    mnuHints = &mnuOptions->Add("mnuHints", "Mostrar uma jogada", {.key = 'M', .control = true});
    MnDesistir = &mnuOptions->Add("MnDesistir", "Desistir");
    mnuOptions->Add("mnu2", "-");
    mnuSounds = &mnuOptions->Add("mnuSounds", "Usar efeitos de som");
    mnuStatus = &mnuOptions->Add("mnuStatus", "Exibir miniatura");
    mnuBackground = &mnuOptions->Add("mnuBackground", "Cor de Fundo");
    mnuSounds->SetChecked(true);
    mnuStatus->SetChecked(true);

    mnuHelp = &Menus.Add("mnuHelp", "Ajuda");
    mnuHowToPlay = &mnuHelp->Add("mnuHowToPlay", "Tópicos da Ajuda", {.function = 1});
    mnuHelp->Add("mnu4", "-");
    mnuAbout = &mnuHelp->Add("mnuAbout", "Sobre");
}

void frmMain::BindMenu() {
    OnMenu = [this] { ReleaseHold(); };
    mnuGame->Click = [this] { mnuGame_Click(); };
    mnuOptions->Click = [this] { mnuOptions_Click(); };
    for (const int level : {0, 1, 3, 4, 5})
        mnuNewGame[level]->Click = [this, level] { mnuNewGame_Click(int16_t(level)); };
    mnuShuffle->Click = [this] { mnuShuffle_Click(); };
    mnuSaveGame->Click = [this] { mnuSaveGame_Click(); };
    mnuLoadGame->Click = [this] { mnuLoadGame_Click(); };
    mnuExit->Click = [this] { mnuExit_Click(); };
    mnuHints->Click = [this] { mnuHints_Click(); };
    MnDesistir->Click = [this] { MnDesistir_Click(); };
    mnuSounds->Click = [this] { mnuSounds_Click(); };
    mnuStatus->Click = [this] { mnuStatus_Click(); };
    mnuBackground->Click = [this] { mnuBackground_Click(); };
    mnuHowToPlay->Click = [this] { mnuHowToPlay_Click(); };
    mnuAbout->Click = [this] { mnuAbout_Click(); };
}

// Items are greyed only here, at the moment their menu opens; a shortcut follows what the last opening left.
void frmMain::mnuGame_Click() {
    mnuSaveGame->SetEnabled(GameRunning);
    mnuShuffle->SetEnabled(Surfaces.picPat.UBound() > 0);
}

void frmMain::mnuOptions_Click() {
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
