// A player who wins any game with the mouse.
//
// He fixes the picture's top-left piece near the corner of the board, then always takes the uppermost piece
// that is out of place and of which he can see something, so that pieces below others come free in time.
#include <algorithm>
#include <optional>

#include "core/mask_strip.h"
#include "play/rules.h"
#include "tests/support/game_fixture.h"

using namespace PuzzleModule;

namespace {

struct Point2 {
    int x, y;
};

// The uppermost piece under a point of the board, or -1.
int PieceAt(Point2 at) {
    for (int i = 0; i <= UpperBound(); ++i) {
        const PieceRec& piece = Pieces[size_t(i)];
        const bool inSquare =
            at.x >= piece.X && at.x <= piece.X + TileSize && at.y >= piece.Y && at.y <= piece.Y + TileSize;
        if (inSquare && HitTest(int16_t(i), int16_t(at.x), int16_t(at.y))) return i;
    }
    return -1;
}

// A point of the board where the player sees that piece; near its middle if he can.
std::optional<Point2> VisiblePoint(const frmMain& main, int index) {
    const PieceRec& piece = Pieces[size_t(index)];
    const Rect board = main.picScreen.Image.Bounds();
    for (int ring = 0; ring <= TileSize / 2; ring += 3)
        for (int dy = -ring; dy <= ring; dy += 3)
            for (int dx = -ring; dx <= ring; dx += 3) {
                if (std::max(std::abs(dx), std::abs(dy)) < ring) continue;
                const Point2 at{piece.X + TileSize / 2 + dx, piece.Y + TileSize / 2 + dy};
                if (board.Contains(at.x, at.y) && PieceAt(at) == index) return at;
            }
    return std::nullopt;
}

// Takes a piece, turns it upright and lets it go with its tile's corner at `target`.
bool Carry(frmMain& main, int index, Point2 target) {
    const std::optional<Point2> from = VisiblePoint(main, index);
    if (!from) return false;
    const PieceRec before = Pieces[size_t(index)];
    PictureBox& board = main.picScreen;
    board.DeliverMouseDown(1, 0, float(from->x), float(from->y));
    if (PickedPiece != 0 || Pieces[0].PieceId != before.PieceId) return false;
    while (Pieces[0].Rotation != 0) {
        const int16_t rotation = Pieces[0].Rotation;
        board.DeliverMouseDown(2, 0, float(from->x), float(from->y));
        board.DeliverMouseUp(2, 0, float(from->x), float(from->y));
        if (Pieces[0].Rotation == rotation) return false;
    }
    const Point2 to{target.x + from->x - before.X, target.y + from->y - before.Y};
    board.DeliverMouseMove(1, 0, float(to.x - 4), float(to.y + 3));
    board.DeliverMouseMove(1, 0, float(to.x), float(to.y));
    board.DeliverMouseUp(1, 0, float(to.x), float(to.y));
    return true;
}

int TopLeft() {
    for (int i = 0; i <= UpperBound(); ++i)
        if (Pieces[size_t(i)].PieceId == 0) return i;
    return -1;
}

// One piece brought to its place. False if none that is out of place can be seen.
bool PlaceOne(frmMain& main) {
    const PieceRec reference = Pieces[size_t(TopLeft())];
    for (int i = 0; i <= UpperBound(); ++i) {
        if (IsHome(i, reference.X, reference.Y)) continue;
        const PieceRec& piece = Pieces[size_t(i)];
        if (Carry(main, i, {reference.X + piece.Col * CellSize, reference.Y + piece.Row * CellSize})) return true;
    }
    return false;
}

}  // namespace

bool PlayToTheEnd(frmMain& main) {
    if (!GameRunning || Pieces.empty()) return false;
    // Where pieces hide below the picture the player carries it away and goes on.
    const int pitch = SnapPitch();
    for (int attempt = 0; attempt < 4 && GameRunning; ++attempt) {
        const int away = attempt * 3 * TileSize / pitch * pitch;
        if (!Carry(main, TopLeft(), {away, away / 2 / pitch * pitch})) return false;
        for (int drags = 0; GameRunning && drags <= UpperBound() + 1; ++drags)
            if (!PlaceOne(main)) break;
    }
    return !GameRunning;
}
