// The release: all pieces settle on the lattice, the piece let go is tested for home and the whole
// picture for completion. Nothing is joined here; whether pieces are joined shows at the next press.
#include "core/game_state.h"
#include "platform/system/desktop.h"
#include "platform/system/numbers.h"
#include "play/frm_main.h"
#include "play/rules.h"
#include "shell/sound.h"

using namespace PuzzleModule;

void frmMain::picScreen_MouseUp(int16_t Button, int16_t /*Shift*/, float X, float Y) {
    Panning = false;
    if (!GameRunning || Button != 1 || PickedPiece < 0) return;

    const int held = PickedPiece;
    SettlePieces();
    // The piece let go takes its place from the pointer; one that its fields can't hold is skipped.
    PieceRec& dropped = Pieces[size_t(held)];
    Store(dropped.X, OnLattice(double(X) - GrabX));
    Store(dropped.Y, OnLattice(double(Y) - GrabY));
    PickedPiece = -1;
    ComposeBoard();
    PlayWave(*mnuSounds, WaveClick);
    CheckDroppedPiece(held);
}

// Places are reckoned from the picture's top-left piece if it stands upright, else from the drop.
void frmMain::CheckDroppedPiece(int held) {
    const int topLeft = UprightTopLeft();
    const PieceRec& reference = Pieces[size_t(topLeft < 0 ? held : topLeft)];
    if (IsHome(held, reference.X, reference.Y)) PlayWave(*mnuSounds, WaveRotate);
    if (IsComplete(reference.X, reference.Y)) WinGame();
}

// The board was composed by the release and already shows the whole picture. Clock and game are off
// while the box is open, so nothing can be taken meanwhile.
void frmMain::WinGame() {
    GameRunning = false;
    Timer1.SetEnabled(false);
    PlayWave(*mnuSounds, WaveComplete);
    TheDesktop().PaintNow();  // the last piece is seen in its place before the box covers it
    MsgBox("Jogo Completo", Exclamation, "Parabéns!!");
}

bool frmMain::ReleaseHold() {
    Panning = false;
    if (!GameRunning || PickedPiece < 0) return true;
    picScreen_MouseUp(1, 0, pointerX_, pointerY_);
    return GameRunning;
}
