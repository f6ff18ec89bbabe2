// Composes the board, drawing only what has changed since it was drawn last.
//
// The composer remembers what it drew: the records, the held piece, the background and the state
// of every surface it read. It compares the records that may have been written, collects the bounds of
// all pieces that look, lie or are stacked differently, and draws the few rectangles that hold them afresh.
// Where a group is carried, the pixels that only show the group are shifted instead. The pixels are always
// those of a whole composition.
#pragma once
#include <cstdint>
#include <optional>
#include <vector>

#include "core/board/carried_group.h"
#include "core/board/damage.h"
#include "core/board/painter.h"
#include "core/board/restacking.h"
#include "core/game_state.h"

namespace PuzzleModule {

class BoardComposer {
public:
    // Makes `dest` show `background` and all pieces, and refreshes it. What somebody else drew on
    // `dest` in the meantime is wiped.
    void Compose(Surface& dest, const Surface& background);

private:
    struct Way {
        int dx, dy;
    };
    bool KnowsGround(const Surface& dest, const Surface& background) const;
    bool CollectDamage();
    void CompareRecord(int element);
    void CollectMoved();
    bool CollectRestacked();
    void AddHeldPieces();
    void CollectRedrawnSurfaces();
    void AddPiece(const PieceRec& piece);
    void AddPart(const Rect& rect);
    void PaintAll(Surface& dest, const Surface& background);
    void PaintDamage(Surface& dest, const Surface& background);
    std::optional<Way> WayOfGroup();
    std::optional<Way> CommonWay() const;
    Region ShiftGroup(const BoardPainter::Scene& scene, const Region& areas, Way way);
    void RememberGround(const Surface& dest, const Surface& background);
    void RememberPieces();
    void RememberChanged();
    void RememberSurfaces();

    BoardPainter painter_;
    DamageMerger merger_;
    Restacking restacking_;
    CarriedGroup group_;  // that moved the last time

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
    std::vector<int> moved_;    // those of them that look or lie differently
    bool restacked_ = false;
    std::optional<Way> way_;  // of the group, if nothing else moved
    std::vector<int> oldPlaceOfId_, oldPlaces_;
};

}  // namespace PuzzleModule
