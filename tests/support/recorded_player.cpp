// A player who wins any game with the mouse: he lays the picture's top-left piece near the corner of the board, then
// always takes the uppermost piece out of place of which he can see something, so that those below come free in time.
#include <optional>

#include "core/mask_strip.h"
#include "play/rules.h"
#include "tests/support/game_fixture.h"

using namespace PuzzleModule;

namespace {

// Whether element `index` is the uppermost at that point of the board.
bool IsSeen(int index, int x, int y) {
    for (int i = 0; i <= index; ++i) {
        const PieceRec& piece = std::as_const(Pieces)[size_t(i)];
        const bool inSquare = x >= piece.X && x <= piece.X + TileSize && y >= piece.Y && y <= piece.Y + TileSize;
        if (inSquare && HitTest(int16_t(i), int16_t(x), int16_t(y))) return i == index;
    }
    return false;
}

// Takes a piece where it is seen, turns it upright and lets it go with its tile's corner at x, y. False if it is not.
bool Carry(frmMain& main, int index, int x, int y) {
    const PieceRec piece = std::as_const(Pieces)[size_t(index)];
    PictureBox& board = main.picScreen;
    for (int dy = 0; dy <= TileSize; dy += 3)
        for (int dx = 0; dx <= TileSize; dx += 3) {
            if (!board.Image.Bounds().Contains(piece.X + dx, piece.Y + dy)) continue;
            if (!IsSeen(index, piece.X + dx, piece.Y + dy)) continue;
            board.DeliverMouseDown(1, 0, float(piece.X + dx), float(piece.Y + dy));
            for (int turn = piece.Rotation; turn % 4 != 0; ++turn) {
                board.DeliverMouseDown(2, 0, float(piece.X + dx), float(piece.Y + dy));
                board.DeliverMouseUp(2, 0, float(piece.X + dx), float(piece.Y + dy));
            }
            board.DeliverMouseMove(1, 0, float(x + dx - 4), float(y + dy + 3));
            board.DeliverMouseUp(1, 0, float(x + dx), float(y + dy));
            return Pieces[0].PieceId == piece.PieceId && Pieces[0].Rotation == 0;
        }
    return false;
}

int TopLeft() {
    return int(std::ranges::find(std::as_const(Pieces), 0, &PieceRec::PieceId) - std::as_const(Pieces).begin());
}

bool PlaceOne(frmMain& main) {
    const PieceRec corner = Pieces[size_t(TopLeft())];
    for (int i = 0; i <= UpperBound(); ++i) {
        const PieceRec& piece = std::as_const(Pieces)[size_t(i)];
        if (!IsHome(i, corner.X, corner.Y) &&
            Carry(main, i, corner.X + piece.Col * CellSize, corner.Y + piece.Row * CellSize))
            return true;
    }
    return false;
}

}  // namespace

bool PlayToTheEnd(frmMain& main) {
    // Where pieces hide below the picture he carries it away and goes on.
    for (int attempt = 0; attempt < 4 && GameRunning; ++attempt) {
        const int away = attempt * 3 * TileSize / SnapPitch() * SnapPitch();
        if (!Carry(main, TopLeft(), away, away / 2 / SnapPitch() * SnapPitch())) return false;
        for (int drags = 0; GameRunning && drags <= UpperBound() + 1 && PlaceOne(main); ++drags) {
        }
    }
    return !Pieces.empty() && !GameRunning;
}
