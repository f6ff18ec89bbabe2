// The main window: it owns every surface of the game and the menu, and carries the
// handlers of play, one topic a file:
//
//   frm_main.cpp       controls, Form_Load, Form_Resize, Form_Unload, Centralize
//   menu.cpp           the menu's tree, its own handlers and switches
//   start_game.cpp     a new game from a picture; restart
//   restore_game.cpp   saving and restoring
//   dropped_game.cpp   a saved game dropped on the window
//   picking.cpp        press and move on the board
//   dropping.cpp       release, home sound, completion
//   view.cpp           scroll bars, pan, panel
//   clock.cpp          Timer1
//   help_commands.cpp  a move shown, giving up
#pragma once
#include "core/fitting.h"
#include "core/game_state.h"
#include "core/game_surfaces.h"
#include "core/saved_game.h"
#include "platform/controls/form.h"
#include "platform/controls/picture_box.h"
#include "platform/controls/scroll_bar.h"
#include "platform/controls/simple_controls.h"
#include "platform/system/timer.h"
#include "shell/skin.h"

class frmMain : public Form {
public:
    frmMain();
    ~frmMain() override;

    // Surfaces that no player sees (picBG, PicTemp, picMaster, picPat, picMasks, picTmp).
    GameSurfaces Surfaces;

    // Controls.
    PictureBox picScreen{"picScreen"};
    ScrollBar HScroll1{"HScroll1", Orientation::Horizontal};
    ScrollBar VScroll1{"VScroll1", Orientation::Vertical};
    PictureBox picStatus{"picStatus"};
    PictureBox Picture1{"Picture1"};
    Image imgMaster{"imgMaster"};
    Label lblElapsed{"lblElapsed"};
    Timer Timer1{"Timer1", 1000};
    Skin Skin1;

    // Menu items by their names; the tree itself is Menus.
    MenuItem *mnuGame, *mnuNew, *mnuNewGame[6], *mnuShuffle, *mnuSaveGame, *mnuLoadGame, *mnuExit;
    MenuItem *mnuOptions, *mnuHints, *MnDesistir, *mnuSounds, *mnuStatus, *mnuBackground;
    MenuItem *mnuHelp, *mnuHowToPlay, *mnuAbout;

    // Life of the window.
    void Form_Load();
    void Form_Resize();
    void Form_Unload();
    bool TakesGame(const std::string& Path) const;
    void Form_DropFile(const std::string& Path);
    void Centralize();
    void Form_KeyDown(Key key);

    // A game. StartGame builds one from the picture in `Filename` at the chosen level while the
    // picture dialog is hidden by `hideDialog`; true if a game is on the board afterwards.
    // A start that fails leaves records, sizes, strip, level, seconds and grid as they were.
    bool StartGame(const std::string& Filename, const Handler& hideDialog);
    void RestoreGame(const std::string& Path);
    // True while a game is being built or restored, or giving up walks: commands that replace, rebuild
    // or reorder the pieces do nothing then.
    bool Busy() const { return task_ != Task::None; }

    // Board.
    void picScreen_MouseDown(int16_t Button, int16_t Shift, float X, float Y);
    void picScreen_MouseMove(int16_t Button, int16_t Shift, float X, float Y);
    void picScreen_MouseUp(int16_t Button, int16_t Shift, float X, float Y);
    void picScreen_Wheel(const WheelTurn& turn);
    void HScroll1_Change();
    void HScroll1_Scroll();
    void VScroll1_Change();
    void VScroll1_Scroll();
    void picStatus_MouseDown(int16_t Button, int16_t Shift, float X, float Y);
    void Picture1_MouseDown(int16_t Button, int16_t Shift, float X, float Y);
    void imgMaster_MouseDown(int16_t Button, int16_t Shift, float X, float Y);
    void Timer1_Timer();

    // Menu.
    void mnuGame_Click();
    void mnuOptions_Click();
    void mnuNewGame_Click(int16_t Index);
    void mnuShuffle_Click();
    void mnuSaveGame_Click();
    void mnuLoadGame_Click();
    void mnuExit_Click();
    void mnuHints_Click();
    void MnDesistir_Click();
    void mnuSounds_Click();
    void mnuStatus_Click();
    void mnuBackground_Click();
    void mnuHowToPlay_Click();
    void mnuAbout_Click();

    // A held piece is let go in full where the pointer last was, before a command that opens a
    // dialog, a question or a menu. False if that completed the game: the command is abandoned.
    bool ReleaseHold();

    // Form-level variables of the mouse handlers, in picScreen's pixels.
    int16_t LastX = 0, LastY = 0;
    int16_t GrabX = 0, GrabY = 0;
    int16_t PanX = 0, PanY = 0;
    bool Panning = false;

private:
    // What keeps other commands out, for as long as the guard lives.
    enum class Task { None, Building, GivingUp };
    class Working {
    public:
        Working(frmMain& main, Task task) : main_(main) { main_.task_ = task; }
        ~Working() { main_.task_ = Task::None; }
        Working(const Working&) = delete;
        Working& operator=(const Working&) = delete;

    private:
        frmMain& main_;
    };

    // A game that can be put on the board: nothing of it is stored yet.
    struct NewGame {
        PuzzleModule::Fit fit;
        Density density;  // of the screen on which the window stands
        std::shared_ptr<const Picture> picture;
    };
    std::optional<NewGame> PlanGame(const std::string& path, const std::optional<PuzzleModule::Fit>& fit);
    std::optional<NewGame> PlanNewGame(const std::string& path);
    static std::optional<Size> ScreenSize();

    static constexpr Size MiniaturePanel{159, 118};  // Picture1

    void BuildMenu();
    void PlaceControls();
    void DressControls();
    void BindHandlers();
    void BindMenu();
    void ComposeBoard();

    void ClearBoard();
    void TakeOver(const NewGame& game, bool framed);
    void ScatterAndCompose();
    void LayOutSavedPieces(const PuzzleModule::SavedGame& game);
    void ShowMiniature();
    void RunGame();

    void RotateHeldPiece();
    void StartPan(float X, float Y);
    void PanTo(float X, float Y);
    void FollowView(double left, double top);
    void TakePiece(int index, float X, float Y);
    void CheckDroppedPiece(int held);
    void WinGame();
    void SetUpright(int index);
    void ShowFrame();
    void ShowSeconds();

    Task task_ = Task::None;
    PuzzleModule::LevelSizes boardSizes_;  // of the game on the board
    float pointerX_ = 0, pointerY_ = 0;    // where the mouse is on the board
    double restX_ = 0, restY_ = 0;         // parts of pixels that the wheel has not scrolled yet
    std::vector<int> carried_;             // elements that move with the held piece, of the last press
};
