// The main window on the desktop without a screen, with a game on its board, for tests and measurements.
#pragma once
#include <memory>
#include <string>

#include "core/game_state.h"
#include "platform/headless/desktop.h"
#include "play/frm_main.h"
#include "tests/support/picture_files.h"
#include "tests/support/temp_folder.h"
#include "tests/support/window_dump.h"

class GameFixture {
public:
    explicit GameFixture(Size screen = {1920, 1080}) : GameFixture(std::make_unique<HeadlessDesktop>(screen)) {}
    explicit GameFixture(std::unique_ptr<HeadlessDesktop> desktop);

    TempFolder folder;  // the program's own folder, and the home of its settings

private:
    std::unique_ptr<HeadlessDesktop> desktop_;

public:
    HeadlessDesktop& desktop = *desktop_;
    frmMain main;

    // A picture of that natural size which the desktop can decode; its file exists. Its full path.
    std::string AddPicture(const std::string& name, Size natural, int variant = 0);

    // Starts a game at `level` from a picture, as the menu and its dialog do. False if none was built.
    bool Start(const std::string& picture, int16_t level);
    // A game of exactly that grid. The screen must be large enough for it (about 100 cells at 1920 x 1080).
    void StartGrid(int cols, int rows, int16_t level = 3);

    // A piece by its cell, wherever its record stands.
    PieceRec& Piece(int row, int col) const;
    void Put(int row, int col, int x, int y) const;  // its tile's corner
    void Turn(int row, int col, int rotation);       // until it stands so
    // All pieces upright in their places relative to x, y.
    void Solve(int x, int y);
    // The last piece is put in its place with the mouse. False if that does not end the game.
    bool Win();

    // The board's pixel in the middle of a piece's body.
    struct Spot {
        float x, y;
    };
    Spot Middle(int row, int col) const;

    // The mouse on the board.
    void Press(Spot at, int16_t button = 1) { main.picScreen.DeliverMouseDown(button, 0, at.x, at.y); }
    void Move(Spot to, int16_t buttons = 1) { main.picScreen.DeliverMouseMove(buttons, 0, to.x, to.y); }
    void Release(Spot at, int16_t button = 1) { main.picScreen.DeliverMouseUp(button, 0, at.x, at.y); }
    void Wheel(double x, double y) { main.picScreen.DeliverWheel({x, y}); }
    void Click(Spot at, int16_t button) { Press(at, button), Release(at, button); }
    // Chooses an item as the player does: its top menu opens first. By its name, "mnuNewGame(3)".
    void Menu(const std::string& name);
    // Presses the item's shortcut: no menu opens.
    void Key(const std::string& name) { Find(main.Menus, name)->DeliverClick(); }
    static MenuItem* Find(MenuItem& menu, const std::string& name);

    // The names of the waves started since the last call, "CLICK ROTATE ".
    std::string Sounds();

    // The whole state by name: records and their surfaces, sizes, clock, paths, every control and menu item.
    State Snapshot();
    // Whether the board shows the pieces, as the literal model composes them.
    bool ShowsThePieces() const;
};
