// Composes the board, drawing only what has changed since it was drawn last.
//
// The composer remembers what it drew: the records, the held piece, the background and the state
// of every surface it read. It compares, collects the bounds of all pieces that look, lie or are
// stacked differently, and draws the few rectangles that hold them afresh. The pixels are
// always those of a whole composition.
#pragma once
#include <cstdint>
#include <vector>

#include "core/board_painter.h"
#include "core/damage.h"
#include "core/game_state.h"
#include "core/restacking.h"

namespace PuzzleModule {

class BoardComposer {
public:
    // Makes `dest` show `background` and all pieces, and refreshes it. What somebody else drew on
    // `dest` in the meantime is wiped.
    void Compose(Surface& dest, const Surface& background);

private:
    bool KnowsGround(const Surface& dest, const Surface& background) const;
    bool CollectDamage();
    bool CollectRestacked();
    void AddHeldPieces();
    void CollectRedrawnSurfaces();
    void AddPiece(const PieceRec& piece);
    void PaintAll(Surface& dest, const Surface& background);
    void PaintDamage(Surface& dest, const Surface& background);
    void RememberGround(const Surface& dest, const Surface& background);
    void RememberPieces();
    void RememberSurfaces();

    BoardPainter painter_;
    DamageMerger merger_;
    Restacking restacking_;

    // What was drawn last.
    uint64_t destRevision_ = 0;
    uint64_t backgroundRevision_ = 0;
    bool backgroundUniform_ = false;
    Pixel backgroundColor_ = 0;
    uint64_t stripRevision_ = 0;
    uint64_t generation_ = 0, touches_ = 0;
    std::vector<uint64_t> surfaceRevisions_;  // by PieceId
    int tileSize_ = -1;
    int picked_ = -1;
    std::vector<PieceRec> pieces_;

    // Of the composition under way.
    Rect bounds_;
    Region parts_;
    std::vector<int> changed_;  // elements whose record is another, in an unchanged pile
    bool restacked_ = false;
    std::vector<int> oldPlaceOfId_, oldPlaces_;
};

}  // namespace PuzzleModule
