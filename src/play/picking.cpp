// The press that takes a piece, turns it or starts a pan, and the moves that follow.
//
// The pile is walked from the top. A piece is brought to the top by moving its record to element 0;
// what is joined to it comes along by flags and offsets that live until the release.
#include <utility>

#include "core/game_state.h"
#include "core/mask_strip.h"
#include "core/pieces.h"
#include "platform/system/numbers.h"
#include "play/frm_main.h"
#include "play/joining.h"
#include "shell/sound.h"

using namespace PuzzleModule;

namespace {

// Inclusive on purpose: the square is TileSize + 1 wide.
bool InSquare(const PieceRec& piece, float X, float Y) {
    return X >= piece.X && X <= float(piece.X + TileSize) && Y >= piece.Y && Y <= float(piece.Y + TileSize);
}

struct Press {
    int taken = -1;    // element under the pointer
    bool bare = true;  // no piece's square lies there
};

Press FindPiece(float X, float Y) {
    Press press;
    const std::optional<int16_t> column = CInt16(X), row = CInt16(Y);
    if (!column || !row) return press;
    const PieceList& pieces = Pieces;
    for (int i = 0; i <= UpperBound(); ++i) {
        if (!InSquare(pieces[size_t(i)], X, Y)) continue;
        if (HitTest(int16_t(i), *column, *row)) {
            press.taken = i;
            return press;
        }
        press.bare = false;  // an empty corner: the piece below it may still be taken, but no pan starts
    }
    return press;
}

void BringToTop(int index) {
    const PieceRec taken = Pieces[size_t(index)];
    for (int k = index - 1; k >= 0; --k) Pieces[size_t(k) + 1] = Pieces[size_t(k)];
    Pieces[0] = taken;
}

}  // namespace

void frmMain::picScreen_MouseDown(int16_t Button, int16_t /*Shift*/, float X, float Y) {
    if (Busy()) return;  // pieces and strip may belong to two games
    pointerX_ = X;
    pointerY_ = Y;
    if (!GameRunning) {
        StartPan(X, Y);
        return;
    }
    if (Button != 1) {
        RotateHeldPiece();
        return;
    }
    const Press press = FindPiece(X, Y);
    if (press.taken >= 0)
        TakePiece(press.taken, X, Y);
    else if (press.bare)
        StartPan(X, Y);
}

void frmMain::StartPan(float X, float Y) {
    Store(PanX, X);
    Store(PanY, Y);
    Panning = true;
}

void frmMain::TakePiece(int index, float X, float Y) {
    Store(GrabX, double(X) - Pieces[size_t(index)].X);
    Store(GrabY, double(Y) - Pieces[size_t(index)].Y);
    BringToTop(index);
    PickedPiece = 0;
    Store(LastX, X);
    Store(LastY, Y);
    if (Pieces[size_t(PickedPiece)].Rotation == 0) CollectGroup(PickedPiece);
    carried_.clear();
    for (int i = 1; i <= UpperBound(); ++i)
        if (std::as_const(Pieces)[size_t(i)].InGroup) carried_.push_back(i);
    ComposeBoard();
    PlayWave(*mnuSounds, WaveClick);
}

// A press of any other button while a piece is held turns it, if it is alone and the level allows it.
void frmMain::RotateHeldPiece() {
    if (PickedPiece < 0 || ChosenLevel <= 1) return;
    for (const PieceRec& piece : std::as_const(Pieces))
        if (piece.InGroup) return;
    RotatePiece(PickedPiece, Surfaces.picTmp);
    ComposeBoard();
    PlayWave(*mnuSounds, WaveGiro);
}

void frmMain::picScreen_MouseMove(int16_t /*Button*/, int16_t /*Shift*/, float X, float Y) {
    pointerX_ = X;
    pointerY_ = Y;
    if (Panning) {
        PanTo(X, Y);
        return;
    }
    if (!GameRunning || PickedPiece < 0) return;
    if (X == LastX && Y == LastY) return;

    // Nothing limits where a piece may go but the width of its fields.
    PieceRec& held = Pieces[size_t(PickedPiece)];
    Store(held.X, double(X) - GrabX);
    Store(held.Y, double(Y) - GrabY);
    for (const int i : carried_) {
        PieceRec& piece = Pieces[size_t(i)];
        Store(piece.X, piece.GroupDX + held.X);
        Store(piece.Y, piece.GroupDY + held.Y);
    }
    Store(LastX, X);
    Store(LastY, Y);
    ComposeBoard();
}
