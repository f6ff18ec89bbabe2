// The main window: its controls, its opening, its layout and its end.
#include "play/frm_main.h"

#include <cmath>

#include "core/board/draw_board.h"
#include "core/game_state.h"
#include "platform/system/desktop.h"
#include "platform/system/files.h"
#include "platform/system/numbers.h"
#include "shell/app_folder.h"
#include "shell/common_dialogs.h"
#include "shell/settings.h"
#include "shell/sound.h"

using namespace PuzzleModule;

namespace {

constexpr int PanelGap = 30;      // of the panel to the window's lower right corner
constexpr double BarWidth = 17;   // of the scroll bars
constexpr double ArrowStep = 16;  // pixels that an arrow of a bar scrolls: about a quarter of a cell
constexpr Color PanelColor = 12615680;

// The narrower the screen, the larger the board is in proportion.
double BoardFactor(int screenWidth) {
    if (screenWidth >= 1280) return 1.25;
    if (screenWidth >= 1024) return 1.5;
    return 2.0;
}

}  // namespace

frmMain::frmMain() : Form("frmMain", "Fento-Lira Master", ScaleMode::Pixels, FormBorder::Sizable) {
    PuzzleModule::Surfaces = &Surfaces;
    PlaceControls();
    DressControls();
    BuildMenu();
    BindHandlers();
    BindMenu();
    Menus.SetForm(this);
    SetState(WindowState::Maximized);
}

frmMain::~frmMain() { PuzzleModule::Surfaces = nullptr; }

void frmMain::PlaceControls() {
    // Where the window goes when it is no longer maximised: well inside the screen, its title within reach.
    const double width = TheDesktop().ScreenWidth(), height = TheDesktop().ScreenHeight();
    Place(width / 8, height / 8, width * 3 / 4, height * 3 / 4);
    // Back to front.
    AddChild(picScreen);
    AddChild(picStatus);
    AddChild(VScroll1);
    AddChild(HScroll1);
    picStatus.AddChild(Picture1);
    picStatus.AddChild(lblElapsed);
    Picture1.AddChild(imgMaster);

    picStatus.Place(0, 0, 161, 138);
    Picture1.Place(0, 0, MiniaturePanel.width, MiniaturePanel.height);
    imgMaster.Place(26, 20, 108, 69);
    lblElapsed.Place(3, 120, 155, 15);
    VScroll1.SetWidth(BarWidth);
    HScroll1.SetHeight(BarWidth);
    VScroll1.SetSmallChange(ArrowStep);
    HScroll1.SetSmallChange(ArrowStep);
}

void frmMain::DressControls() {
    picStatus.SetVisible(false);
    picStatus.SetBackColor(PanelColor);
    picStatus.SetPointer(MousePointer::Arrow);
    Picture1.SetBackColor(0);
    imgMaster.SetBorder(Border::Thin);
    lblElapsed.SetLook({.font = {.points = 8.25, .bold = true},
                        .foreColor = 0xFFFFFF,
                        .transparent = true,
                        .alignment = Alignment::Center,
                        .wordWrap = false});

    picScreen.SetAccessibleName("Tabuleiro");
    HScroll1.SetAccessibleName("Rolagem horizontal do tabuleiro");
    VScroll1.SetAccessibleName("Rolagem vertical do tabuleiro");
    imgMaster.SetAccessibleName("Miniatura da imagem");
    lblElapsed.SetAccessibleName("Nível e tempo de jogo");
}

void frmMain::Form_Load() {
    ModCmnDlg::FileDialogRec.hwndOwner = this;

    Desktop& desktop = TheDesktop();
    Store(ScreenWidthPx, desktop.ScreenWidth() / desktop.ScreenTwipsPerPixelX());
    Store(ScreenHeightPx, desktop.ScreenHeight() / desktop.ScreenTwipsPerPixelY());

    // The board has whole pixels, as every window has.
    const double factor = BoardFactor(ScreenWidthPx);
    picScreen.SetWidth(CInt(ScreenWidthPx * factor));
    picScreen.SetHeight(CInt(ScreenHeightPx * factor));
    Surfaces.picBG.Resize(int(picScreen.Width()), int(picScreen.Height()));
    picScreen.Move(-CInt((picScreen.Width() - ScreenWidthPx) / 2), -CInt((picScreen.Height() - ScreenHeightPx) / 2));

    LoadWaves();
    AppFolder = WithSeparator(ChooseAppFolder());
    GameRunning = false;

    Skin1.LoadSkinFile(AppFolder + "Puzzle.skn");
    Skin1.ApplySkin(*this);

    mnuSounds->SetChecked(ReadSwitch(SoundSetting));
    mnuStatus->SetChecked(ReadSwitch(MiniatureSetting));
    picScreen.SetBackColor(ReadColor(ColorSetting));
    Surfaces.picMaster.SetBackground(BlackPixel);
    Surfaces.picBG.SetBackground(ToPixel(ResolveColor(picScreen.BackColor())));
}

// Every step is tried, whatever became of the last: a bar refuses what is out of its range.
// The board is not touched, only how far the view can scroll.
void frmMain::Form_Resize() {
    const double sw = ScaleWidth(), sh = ScaleHeight();
    picStatus.Move(sw - picStatus.Width() - PanelGap, sh - picStatus.Height() - PanelGap);

    VScroll1.Move(sw - VScroll1.Width(), 0);
    VScroll1.SetHeight(sh);
    VScroll1.SetMax(picScreen.Height() - sh);
    VScroll1.SetValue(std::abs(picScreen.Top()));
    VScroll1.SetLargeChange(VScroll1.Max() / 1.5);

    // In front, over the full width: it covers the lower end of the other bar.
    HScroll1.SetTop(sh - HScroll1.Height());
    HScroll1.ZOrder();
    HScroll1.SetLeft(0);
    HScroll1.SetWidth(sw);
    HScroll1.SetMax(picScreen.Width() - sw);
    HScroll1.SetValue(std::abs(picScreen.Left()));
    HScroll1.SetLargeChange(HScroll1.Max() / 1.5);
}

// Ends the program at once; a running game is neither saved nor mentioned.
void frmMain::Form_Unload() { End(); }

// The centre of the board comes to the centre of the screen, not of the window. A bar skips a
// Value that it cannot take, in a window larger than the screen.
void frmMain::Centralize() {
    picScreen.Move(-CInt((picScreen.Width() - ScreenWidthPx) / 2), -CInt((picScreen.Height() - ScreenHeightPx) / 2));
    VScroll1.SetValue(std::abs(picScreen.Top()));
    HScroll1.SetValue(std::abs(picScreen.Left()));
}

void frmMain::ComposeBoard() { DrawBoard(picScreen.Image, Surfaces.picBG); }

namespace {

// A mouse handler of the window as the event of a control.
MouseHandler Bound(frmMain* main, void (frmMain::*handler)(int16_t, int16_t, float, float)) {
    return [main, handler](int16_t Button, int16_t Shift, float X, float Y) { (main->*handler)(Button, Shift, X, Y); };
}

}  // namespace

void frmMain::BindHandlers() {
    OnLoad = [this] { Form_Load(); };
    OnResize = [this] { Form_Resize(); };
    OnUnload = [this] { Form_Unload(); };
    TakesFile = [this](const std::string& Path) { return TakesGame(Path); };
    FileDropped = [this](const std::string& Path) { Form_DropFile(Path); };
    KeyDown = [this](Key key) { Form_KeyDown(key); };

    picScreen.MouseDown = Bound(this, &frmMain::picScreen_MouseDown);
    picScreen.MouseMove = Bound(this, &frmMain::picScreen_MouseMove);
    picScreen.MouseUp = Bound(this, &frmMain::picScreen_MouseUp);
    // Over the bars the wheel scrolls as far, over the lower one sideways.
    picScreen.Wheel = VScroll1.Wheel = [this](const WheelTurn& turn) { picScreen_Wheel(turn); };
    HScroll1.Wheel = [this](const WheelTurn& turn) { picScreen_Wheel({turn.x + turn.y, 0, turn.unit}); };
    HScroll1.Change = [this] { HScroll1_Change(); };
    HScroll1.Scroll = [this] { HScroll1_Scroll(); };
    VScroll1.Change = [this] { VScroll1_Change(); };
    VScroll1.Scroll = [this] { VScroll1_Scroll(); };
    picStatus.MouseDown = Bound(this, &frmMain::picStatus_MouseDown);
    Picture1.MouseDown = Bound(this, &frmMain::Picture1_MouseDown);
    imgMaster.MouseDown = Bound(this, &frmMain::imgMaster_MouseDown);
    Timer1.Tick = [this] { Timer1_Timer(); };
}
