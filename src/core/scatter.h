// Laying the pieces out on an irregular lattice, and turning some of them.
#pragma once
#include "platform/drawing/surface.h"

namespace PuzzleModule {

// What of the window the scatter looks at.
struct ScatterView {
    double BoardLeft, BoardTop;  // picScreen.Left, picScreen.Top
    double WindowWidth;          // ScaleWidth of the main window, as far as the board goes
    int MasterWidth, MasterHeight;
};

// Writes X and Y of every record, and turns pieces where ChosenLevel is above 1. Draws nothing.
void ScatterPieces(const ScatterView& Board, Surface& Scratch);

}  // namespace PuzzleModule
