#include "core/board_composer.h"

#include <cstring>
#include <utility>

#include "core/game_surfaces.h"

namespace PuzzleModule {

namespace {

// Above this share of the board one whole composition is cheaper than many parts.
constexpr double LargeDamage = 0.6;

// Records compared at once in the search for a difference.
constexpr size_t CompareBlock = 128;

// True if both records make the same pixels, apart from the held piece's rim.
bool LookAlike(const PieceRec& a, const PieceRec& b) {
    return a.X == b.X && a.Y == b.Y && a.Rotation == b.Rotation && a.MaskIndex == b.MaskIndex && a.PieceId == b.PieceId;
}

// The first element from `from` on in which the two arrays of `count` differ, or `count`. Nearly all of
// a board stands still, so whole blocks are compared as bytes.
size_t NextDifference(const PieceRec* a, const PieceRec* b, size_t from, size_t count) {
    for (; from < count; from += CompareBlock) {
        const size_t length = std::min(CompareBlock, count - from);
        if (std::memcmp(a + from, b + from, length * sizeof(PieceRec)) == 0) continue;
        while (a[from] == b[from]) ++from;
        return from;
    }
    return count;
}

const PieceSurfaces& SurfacesOfPieces() {
    static const PieceSurfaces none;
    return Surfaces ? Surfaces->picPat : none;
}

const Surface& WorkingStrip() {
    static const Surface none;
    return Surfaces ? Surfaces->picMasks[1] : none;
}

}  // namespace

void BoardComposer::Compose(Surface& dest, const Surface& background) {
    bounds_ = dest.StorageBounds();
    parts_.clear();
    changed_.clear();
    restacked_ = false;
    if (KnowsGround(dest, background) && CollectDamage())
        PaintDamage(dest, background);
    else
        PaintAll(dest, background);
    RememberGround(dest, background);
    dest.Refresh();
}

// True if the pixels outside changed pieces are still good. Revisions are unique among all surfaces:
// an equal one means the same surface with the same pixels.
bool BoardComposer::KnowsGround(const Surface& dest, const Surface& background) const {
    const bool sameBackground = background.IsUniform()
                                    ? backgroundUniform_ && background.Background() == backgroundColor_
                                    : !backgroundUniform_ && background.Revision() == backgroundRevision_;
    return dest.Revision() == destRevision_ && sameBackground && WorkingStrip().Revision() == stripRevision_ &&
           SurfacesOfPieces().Generation() == generation_ && TileSize == tileSize_ && Pieces.size() == pieces_.size();
}

// Fills parts_ with everything that may look different. False if that cannot be told.
bool BoardComposer::CollectDamage() {
    const size_t count = Pieces.size();
    const PieceRec *now = Pieces.data(), *was = pieces_.data();
    for (size_t i = NextDifference(now, was, 0, count); i < count; i = NextDifference(now, was, i + 1, count)) {
        restacked_ = now[i].PieceId != was[i].PieceId;
        if (restacked_) break;
        changed_.push_back(int(i));
        if (LookAlike(now[i], was[i])) continue;
        AddPiece(was[i]);
        AddPiece(now[i]);
    }
    if (restacked_ && !CollectRestacked()) return false;
    AddHeldPieces();
    CollectRedrawnSurfaces();
    return true;
}

// The same for a pile in another order. Pieces that keep their look and their order among each other make
// the same pixels; all others are damage. False if pieces came or went, or a number occurs twice.
bool BoardComposer::CollectRestacked() {
    parts_.clear();
    const size_t count = Pieces.size();
    oldPlaceOfId_.assign(count, -1);
    for (size_t i = 0; i < count; ++i) {
        const auto id = size_t(pieces_[i].PieceId);
        if (id >= count || oldPlaceOfId_[id] >= 0) return false;
        oldPlaceOfId_[id] = int(i);
    }
    oldPlaces_.resize(count);
    for (size_t i = 0; i < count; ++i) {
        const auto id = size_t(Pieces[i].PieceId);
        if (id >= count) return false;
        const int old = std::exchange(oldPlaceOfId_[id], -1);
        if (old < 0) return false;
        oldPlaces_[i] = old;
        if (LookAlike(Pieces[i], pieces_[size_t(old)])) continue;
        AddPiece(pieces_[size_t(old)]);
        AddPiece(Pieces[i]);
    }
    for (const int place : restacking_.Moved(oldPlaces_)) AddPiece(Pieces[size_t(place)]);
    return true;
}

// The held piece has a rim of its own over what lies below it, so both its coming and its going show.
void BoardComposer::AddHeldPieces() {
    const auto elementOf = [](int picked, const std::vector<PieceRec>& pieces) {
        return picked >= 0 && size_t(picked) < pieces.size() ? &pieces[size_t(picked)] : nullptr;
    };
    const PieceRec *now = elementOf(PickedPiece, Pieces), *was = elementOf(picked_, pieces_);
    const bool same = now && was ? (restacked_ ? now->PieceId == was->PieceId : PickedPiece == picked_) : now == was;
    if (same) return;
    if (now) AddPiece(*now);
    if (was) AddPiece(*was);
}

// A surface that was drawn on without a trace in its record.
void BoardComposer::CollectRedrawnSurfaces() {
    const PieceSurfaces& surfaces = SurfacesOfPieces();
    if (surfaces.Touches() == touches_) return;
    for (const PieceRec& piece : Pieces)
        if (piece.PieceId >= 0 && piece.PieceId <= surfaces.UBound() &&
            surfaces[piece.PieceId].Revision() != surfaceRevisions_[size_t(piece.PieceId)])
            AddPiece(piece);
}

void BoardComposer::AddPiece(const PieceRec& piece) {
    const Rect square = Intersect(painter_.BoundsOf(piece), bounds_);
    if (!square.Empty()) parts_.push_back(square);
}

void BoardComposer::PaintAll(Surface& dest, const Surface& background) {
    painter_.UseStrip(WorkingStrip(), TileSize);
    RememberPieces();
    RememberSurfaces();
    if (bounds_.Empty()) return;
    painter_.Paint({dest.DrawAll(), dest.Stride(), background, Pieces.data(), PickedPiece, SurfacesOfPieces()},
                   bounds_);
}

void BoardComposer::PaintDamage(Surface& dest, const Surface& background) {
    const Region& areas = merger_.Merge(parts_, bounds_);
    double pixels = 0;
    for (const Rect& area : areas) pixels += double(area.width) * area.height;
    if (pixels > LargeDamage * bounds_.width * bounds_.height) return PaintAll(dest, background);
    if (restacked_) {
        RememberPieces();
    } else {
        for (const int i : changed_) {
            pieces_[size_t(i)] = Pieces[size_t(i)];
            painter_.SetPlace(i, Pieces[size_t(i)]);
        }
    }
    if (SurfacesOfPieces().Touches() != touches_) RememberSurfaces();
    for (const Rect& area : areas)
        painter_.Paint({dest.Draw(area), dest.Stride(), background, Pieces.data(), PickedPiece, SurfacesOfPieces()},
                       area);
}

void BoardComposer::RememberGround(const Surface& dest, const Surface& background) {
    destRevision_ = dest.Revision();
    backgroundUniform_ = background.IsUniform();
    backgroundColor_ = background.Background();
    backgroundRevision_ = background.Revision();
    stripRevision_ = WorkingStrip().Revision();
    generation_ = SurfacesOfPieces().Generation();
    tileSize_ = TileSize;
    picked_ = PickedPiece;
}

void BoardComposer::RememberPieces() {
    pieces_ = Pieces;
    painter_.SetPlaces(pieces_);
}

void BoardComposer::RememberSurfaces() {
    const PieceSurfaces& surfaces = SurfacesOfPieces();
    touches_ = surfaces.Touches();
    surfaceRevisions_.resize(size_t(surfaces.UBound()) + 1);
    for (int i = 0; i <= surfaces.UBound(); ++i) surfaceRevisions_[size_t(i)] = surfaces[i].Revision();
}

}  // namespace PuzzleModule
