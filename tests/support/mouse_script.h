// Plays a recorded script of mouse and menu through the real handlers. One command a line, "#" begins a
// remark. Points are the board's pixels; "row col" names a piece by its cell.
//
//   screen 1920 1080            first of all, if another than this is wanted
//   game 3 2 3                  columns, rows, level; all pieces upright and far apart
//   put 0 1 176 88              a piece's tile corner;  turn 0 1 2: turns it until it stands so
//   solved 110 110              all pieces at home relative to that corner
//   grab 0 1                    presses the middle of a piece;  press 120 88 [button]
//   move 200 90                 release [200 90]    right       at the pointer where none is given
//   menu mnuHints               opens its menu first;  key mnuHints: the shortcut
//   wheel 0 -1                  seconds 3    resize 900 700    answer yes    scroll 10 20
//   elapsed 3599                sets the clock
//   expect piece 0 1 209 88 0   expect top 0 1      expect held 0 1 | none    expect running yes
//   expect group 2              (pieces that go with the held one)            expect panning no
//   expect above 1 2 0 1        (the first piece lies above the other)
//   expect sounds CLICK GIRO    (since the last look; none)   expect box Jogo Completo (the last; none)
//   expect clock Fácil - 00:00:03                   expect view -160 -90      expect shown picStatus no
//   expect framed 440 330       a move shown frames the piece or place whose tile has its corner there; unframed
//   expect greyed mnuSaveGame mnuHints | none       expect front HScroll1     (the foremost control)
//   expect board, panel         left, top, width, height;   places: of the horizontal bar, of the vertical one
//   expect ranges 600 580 400, 160    Max of both bars, LargeChange and Value of the horizontal one
#pragma once
#include <string>
#include <vector>

// What went otherwise than expected, each with its line; empty if all went well.
std::vector<std::string> PlayScript(const std::string& path);
