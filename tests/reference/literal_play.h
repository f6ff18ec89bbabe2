// What mouse and wheel do to the pieces and the view, written down rule by rule: every search over all pieces, every
// group found anew. The program must agree after any event.
#pragma once
#include <cmath>
#include <set>
#include <string>
#include <vector>

#include "core/game_state.h"
#include "core/game_surfaces.h"
#include "core/mask_strip.h"

class LiteralPlay {
public:
    std::vector<PieceRec> pieces;  // the uppermost first
    int held = -1;
    bool running = true, panning = false, turns = true;
    double left = 0, top = 0, lowestLeft = 0, lowestTop = 0;  // of the board, and how far up and left it goes
    std::string sounds;

    void Press(int button, float x, float y) {
        x_ = x, y_ = y;
        if (!running) return Pan();
        if (button != 1) return Turn();
        bool bare = true;
        for (size_t i = 0; InRange(x) && InRange(y) && i < pieces.size(); ++i) {
            const PieceRec& p = pieces[i];
            if (x < p.X || double(x) > p.X + Tile() || y < p.Y || double(y) > p.Y + Tile()) continue;
            const Surface& strip = PuzzleModule::Surfaces->picMasks[1];
            const int column = Round(x) - p.X + p.MaskIndex * Tile(), row = Round(y) - p.Y;
            if (!strip.Bounds().Contains(column, row) || strip.At(column, row) != BlackPixel) return Take(i);
            bare = false;
        }
        if (bare) Pan();
    }

    void Move(float x, float y) {
        x_ = x, y_ = y;
        if (panning) {
            if (const double to = Round(double(y) - panY_ + top); InRange(to) && to <= 0 && to > lowestTop) top = to;
            if (const double to = Round(double(x) - panX_ + left); InRange(to) && to <= 0 && to > lowestLeft) left = to;
        } else if (held >= 0 && (x != lastX_ || y != lastY_)) {
            Keep(pieces[0].X, double(x) - grabX_), Keep(pieces[0].Y, double(y) - grabY_);
            for (size_t i = 1; i < pieces.size(); ++i)
                if (pieces[i].InGroup)
                    Keep(pieces[i].X, pieces[0].X + pieces[i].GroupDX),
                        Keep(pieces[i].Y, pieces[0].Y + pieces[i].GroupDY);
            Keep(lastX_, x), Keep(lastY_, y);
        }
    }

    void Release(int button, float x, float y) {
        panning = false;
        if (button != 1 || held < 0) return;
        for (PieceRec& p : pieces)
            Keep(p.X, 11.0 * Round(p.X / 11.0)), Keep(p.Y, 11.0 * Round(p.Y / 11.0)), p.InGroup = 0;
        Keep(pieces[0].X, 11 * Round((double(x) - grabX_) / 11)),
            Keep(pieces[0].Y, 11 * Round((double(y) - grabY_) / 11));
        held = -1;
        sounds += "CLICK ";
        const PieceRec* corner = &pieces[0];
        for (const PieceRec& p : pieces)
            if (p.PieceId == 0 && p.Rotation == 0) corner = &p;
        if (Home(pieces[0], *corner)) sounds += "ROTATE ";
        for (const PieceRec& p : pieces)
            if (!Home(p, *corner)) return;
        running = false;
        sounds += "COMPLETE ";
    }

    // A bar is moved, as far as it goes; what is held stays under the pointer.
    void Scroll(double newLeft, double newTop) {
        const double oldLeft = left, oldTop = top;
        left = std::clamp(newLeft, std::min(lowestLeft, 0.0), 0.0);
        top = std::clamp(newTop, std::min(lowestTop, 0.0), 0.0);
        if (!panning && (left != oldLeft || top != oldTop)) Move(x_ + float(oldLeft - left), y_ + float(oldTop - top));
    }
    // What a command does that opens something or replaces the pieces. False if that was the last piece.
    bool LetGo() {
        panning = false;
        if (held < 0) return true;
        Release(1, x_, y_);
        return running;
    }

private:
    static int Tile() { return PuzzleModule::TileSize; }
    static int Cell() { return PuzzleModule::CellSize; }
    static double Round(double value) { return std::nearbyint(value); }  // a half to the even neighbour
    static bool InRange(double value) { return Round(value) >= -32768 && Round(value) <= 32767; }
    static void Keep(int16_t& field, double value) {
        if (InRange(value)) field = int16_t(Round(value));
    }
    void Pan() { panning = true, Keep(panX_, x_), Keep(panY_, y_); }

    void Take(size_t i) {
        Keep(grabX_, double(x_) - pieces[i].X), Keep(grabY_, double(y_) - pieces[i].Y);
        std::rotate(pieces.begin(), pieces.begin() + int(i), pieces.begin() + int(i) + 1);
        held = 0;
        Keep(lastX_, x_), Keep(lastY_, y_);
        sounds += "CLICK ";
        std::set<size_t> group{0};
        for (size_t before = 0; group.size() > before;) {
            before = group.size();
            for (const size_t a : std::set(group))
                for (size_t b = 0; b < pieces.size(); ++b)
                    if (Joined(pieces[a], pieces[b])) group.insert(b);
        }
        for (const size_t b : group) {
            pieces[b].InGroup = b > 0 ? -1 : 0;
            Keep(pieces[b].GroupDX, pieces[b].X - pieces[0].X), Keep(pieces[b].GroupDY, pieces[b].Y - pieces[0].Y);
        }
    }
    static bool Joined(const PieceRec& a, const PieceRec& b) {
        const int dx = b.Col - a.Col, dy = b.Row - a.Row;
        return std::abs(dx) + std::abs(dy) == 1 && a.Rotation == 0 && b.Rotation == 0 && b.X - a.X == dx * Cell() &&
               b.Y - a.Y == dy * Cell();
    }
    void Turn() {
        if (held < 0 || !turns) return;
        for (const PieceRec& p : pieces)
            if (p.InGroup) return;
        Quarter(pieces[0]);
        sounds += "GIRO ";
    }
    static void Quarter(PieceRec& p) {
        constexpr int Next[] = {1, 0, 3, 4, 5, 2, 7, 8, 9, 6, 11, 12, 13, 10, 15, 16, 17, 14, 18};
        p.Rotation = int16_t((p.Rotation + 1) % 4);
        p.MaskIndex = int16_t(Next[p.MaskIndex]);
    }
    static bool Home(const PieceRec& p, const PieceRec& corner) {
        return p.Rotation == 0 && p.X == corner.X + p.Col * Cell() && p.Y == corner.Y + p.Row * Cell();
    }

    float x_ = 0, y_ = 0;  // the pointer
    int16_t lastX_ = 0, lastY_ = 0, grabX_ = 0, grabY_ = 0, panX_ = 0, panY_ = 0;
};
