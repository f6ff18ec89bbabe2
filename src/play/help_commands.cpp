// A move shown, and giving up.
#include <cmath>

#include "core/game_state.h"
#include "core/pieces.h"
#include "platform/drawing/raster.h"
#include "platform/system/desktop.h"
#include "platform/system/numbers.h"
#include "play/frm_main.h"
#include "play/rules.h"

using namespace PuzzleModule;

namespace {

constexpr Color FrameColor = 65535;  // yellow
constexpr int CornerDistance = 10;   // of the solved picture to the visible corner, before the lattice

int16_t TileCorner(double visibleEdge) {
    const int tile = TileSize / TileUnit;
    return CInt16(OnLattice(CInt(std::abs(visibleEdge) + CornerDistance) - tile)).value_or(0);
}

int ElementOfTopLeft() {
    for (int i = 0; i <= UpperBound(); ++i)
        if (Pieces[size_t(i)].Col == 0 && Pieces[size_t(i)].Row == 0) return i;
    return -1;
}

}  // namespace

// Drawn over the composed board; the next composition wipes the frames. A held piece stays held.
void frmMain::mnuHints_Click() {
    const std::optional<ShownMove> move = MoveToShow();
    if (!move) return;
    for (const Rect& frame : {move->Place, move->Piece})
        Line(picScreen.Image, frame.x, frame.y, frame.width, frame.height, FrameColor);
    picScreen.Image.Refresh();
}

// The board solves itself before the player's eyes, two pieces a frame, from the top of the pile down.
//
// At each yield every event may arrive: other menus, scrolling, a resize, the end of the program. The board
// takes no mouse events, and the commands that replace, rebuild or reorder the pieces see Busy and do nothing.
void frmMain::MnDesistir_Click() {
    if (Busy() || Pieces.empty() || !ReleaseHold()) return;
    const Working walking(*this, Task::GivingUp);
    picScreen.SetEnabled(false);
    GameRunning = false;
    Timer1.SetEnabled(false);

    // The top-left piece goes first, so the very first frame shows where the picture will lie.
    int16_t refX = 0, refY = 0;
    if (const int topLeft = ElementOfTopLeft(); topLeft >= 0) {
        SetUpright(topLeft);
        PieceRec& corner = Pieces[size_t(topLeft)];
        refX = corner.X = TileCorner(picScreen.Left());
        refY = corner.Y = TileCorner(picScreen.Top());
    }
    for (int i = 0; i <= UpperBound(); ++i) {
        SetUpright(i);
        PieceRec& piece = Pieces[size_t(i)];
        Store(piece.X, piece.Col * CellSize + refX);
        Store(piece.Y, piece.Row * CellSize + refY);
        if (i % 2 == 1) ShowFrame();
    }
    ComposeBoard();
    picScreen.SetEnabled(true);
}

void frmMain::SetUpright(int index) {
    while (Pieces[size_t(index)].Rotation != 0) RotatePiece(int16_t(index), Surfaces.picTmp);
}

// Each frame is really painted, and nothing waits: the pace is the machine's.
void frmMain::ShowFrame() {
    ComposeBoard();
    TheDesktop().PaintNow();
    DoEvents(Yield::Everything);
}
