// Plays a script of mouse and menu through the real handlers and writes down all that changes. One command a line, "#"
// begins a remark. Points are the board's pixels; "row col" names a piece by its cell.
//
//   screen 480 360     anew, on another screen than this      game 3 2 3       columns, rows, level: all upright, apart
//   put 0 1 176 88     a piece's tile corner                  turn 0 1 2       turns it until it stands so
//   solved 110 110     all at home relative to that corner    elapsed 3599     sets the clock
//   grab 0 1           presses the middle of a piece          press 12 8 [2]   with that button
//   move 200 90        release [200 90]                       right            a click where the pointer is
//   menu mnuHints      opens its menu first                   key mnuHints     the shortcut; keys 3 1: of enum Key
//   wheel 0 -1         scroll 10 20     resize 900 700        seconds 3        lets time go by
//   answer             Yes to the next question               color 255        to the next dialog of colours
//   file a.pzl         to the next dialog of files            show a.pzl       writes down what is in it
//   drop a.pzl         on the foremost window                 settings Som=0   are found at a new start
//   barwheel 1 1       over both bars                         panel            presses it
//   scale 1.5          pixels a unit of the screen            picture 40 30 0.5 a.jpg   takes so long to decode
// In the dialog of pictures: open (a folder), drive 1, click 6 6, twice 6 6, ok, cancel, activate.
// What may happen meanwhile: "then" before a command keeps it for the next occasion (a box or dialog opens, a frame of
// giving up is painted), "yield 3" for the third yield of the program.
#pragma once
#include <string>

// The script with what came of each command: what the desktop was asked for, waves, every state that is another.
std::string PlayScript(const std::string& path);
