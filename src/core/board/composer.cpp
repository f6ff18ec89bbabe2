#include "core/board/composer.h"

#include <algorithm>
#include <cassert>
#include <utility>

#include "core/game_surfaces.h"

namespace PuzzleModule {

namespace {

// Above this share of the board one whole composition is cheaper than many parts.
constexpr double LargeDamage = 0.6;

// True if both records make the same pixels, apart from the held piece's rim.
bool LookAlike(const PieceRec& a, const PieceRec& b) {
    return a.X == b.X && a.Y == b.Y && a.Rotation == b.Rotation && a.MaskIndex == b.MaskIndex && a.PieceId == b.PieceId;
}

Rect Shifted(const Rect& rect, int dx, int dy) { return {rect.x + dx, rect.y + dy, rect.width, rect.height}; }

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
    moved_.clear();
    restacked_ = false;
    way_ = std::nullopt;
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
    if (Pieces.AllWritten()) {
        for (size_t i = 0; i < Pieces.size() && !restacked_; ++i) CompareRecord(int(i));
    } else {
        for (const int i : Pieces.Written()) CompareRecord(i);
    }
    way_ = WayOfGroup();
    if (!restacked_)
        CollectMoved();
    else if (!CollectRestacked())
        return false;
    AddHeldPieces();
    CollectRedrawnSurfaces();
    return true;
}

void BoardComposer::CompareRecord(int element) {
    const PieceRec &now = std::as_const(Pieces)[size_t(element)], &was = pieces_[size_t(element)];
    if (now == was) return;
    restacked_ |= now.PieceId != was.PieceId;
    changed_.push_back(element);
    if (!LookAlike(now, was)) moved_.push_back(element);
}

// Of a compact group its outline will do.
void BoardComposer::CollectMoved() {
    if (way_ && group_.IsCompact()) {
        const PieceRec& first = std::as_const(Pieces)[size_t(moved_[0])];
        const Rect outline = Shifted(group_.Outline(), first.X, first.Y);
        AddPart(outline);
        AddPart(Shifted(outline, -way_->dx, -way_->dy));
        return;
    }
    for (const int element : moved_) {
        AddPiece(pieces_[size_t(element)]);
        AddPiece(std::as_const(Pieces)[size_t(element)]);
    }
}

// The same for a pile in another order. Pieces that keep their look and their order among each other make
// the same pixels; all others are damage. False if pieces came or went, or a number occurs twice.
bool BoardComposer::CollectRestacked() {
    const PieceList& now = Pieces;
    const size_t count = Pieces.size();
    oldPlaceOfId_.assign(count, -1);
    for (size_t i = 0; i < count; ++i) {
        const auto id = size_t(pieces_[i].PieceId);
        if (id >= count || oldPlaceOfId_[id] >= 0) return false;
        oldPlaceOfId_[id] = int(i);
    }
    oldPlaces_.resize(count);
    for (size_t i = 0; i < count; ++i) {
        const auto id = size_t(now[i].PieceId);
        if (id >= count) return false;
        const int old = std::exchange(oldPlaceOfId_[id], -1);
        if (old < 0) return false;
        oldPlaces_[i] = old;
        if (LookAlike(now[i], pieces_[size_t(old)])) continue;
        AddPiece(pieces_[size_t(old)]);
        AddPiece(now[i]);
    }
    for (const int place : restacking_.Moved(oldPlaces_)) AddPiece(now[size_t(place)]);
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
    for (const PieceRec& piece : std::as_const(Pieces))
        if (piece.PieceId >= 0 && piece.PieceId <= surfaces.UBound() &&
            surfaces[piece.PieceId].Revision() != surfaceRevisions_[size_t(piece.PieceId)])
            AddPiece(piece);
}

void BoardComposer::AddPiece(const PieceRec& piece) { AddPart(painter_.BoundsOf(piece)); }

void BoardComposer::AddPart(const Rect& rect) {
    const Rect part = Intersect(rect, bounds_);
    if (!part.Empty()) parts_.push_back(part);
}

void BoardComposer::PaintAll(Surface& dest, const Surface& background) {
    painter_.UseStrip(WorkingStrip(), TileSize);
    group_.Forget();
    RememberPieces();
    RememberSurfaces();
    if (bounds_.Empty()) return;
    painter_.Paint({dest.DrawAll(), dest.Stride(), dest.PixelDensity(), background, pieces_.data(), PickedPiece,
                    SurfacesOfPieces()},
                   bounds_);
}

void BoardComposer::PaintDamage(Surface& dest, const Surface& background) {
    Rect all;
    for (const Rect& part : parts_) all = Unite(all, part);
    const Region areas = merger_.Merge(parts_, all);
    double damaged = 0;
    for (const Rect& area : areas) damaged += double(area.width) * area.height;
    if (damaged > LargeDamage * bounds_.width * bounds_.height) return PaintAll(dest, background);
    if (restacked_)
        RememberPieces();
    else
        RememberChanged();
    if (SurfacesOfPieces().Touches() != touches_) RememberSurfaces();
    Pixel* pixels = nullptr;
    for (const Rect& area : areas) pixels = dest.Draw(area);
    const BoardPainter::Scene scene{pixels,         dest.Stride(), dest.PixelDensity(), background,
                                    pieces_.data(), PickedPiece,   SurfacesOfPieces()};
    const Region rest = way_ ? ShiftGroup(scene, areas, *way_) : areas;
    for (const Rect& area : rest) painter_.Paint(scene, area);
}

// The way of all pieces that moved, if nothing else changed, it is the same and there are enough of them to make
// a group. The group is looked at anew when it is another one than the last time.
std::optional<BoardComposer::Way> BoardComposer::WayOfGroup() {
    if (changed_.empty()) return std::nullopt;
    const bool alone = !restacked_ && PickedPiece == picked_ && SurfacesOfPieces().Touches() == touches_;
    const std::optional<Way> way = alone && moved_.size() >= CarriedGroup::FewestPieces ? CommonWay() : std::nullopt;
    if (!way) {
        group_.Forget();
        return std::nullopt;
    }
    if (!group_.Is(moved_)) group_.Take(moved_, pieces_, SurfacesOfPieces().UBound() + 1, painter_.Spans());
    return group_.Hidden().empty() ? std::nullopt : way;
}

std::optional<BoardComposer::Way> BoardComposer::CommonWay() const {
    const auto recordOf = [](int element) -> const PieceRec& { return std::as_const(Pieces)[size_t(element)]; };
    const PieceRec &first = recordOf(moved_[0]), &firstWas = pieces_[size_t(moved_[0])];
    const Way way{first.X - firstWas.X, first.Y - firstWas.Y};
    const bool common = std::ranges::all_of(moved_, [&](int element) {
        const PieceRec &now = recordOf(element), &was = pieces_[size_t(element)];
        return now.X - was.X == way.dx && now.Y - was.Y == way.dy && now.Rotation == was.Rotation &&
               now.MaskIndex == was.MaskIndex;
    });
    return common ? std::optional(way) : std::nullopt;
}

// Moves the pixels that the group hides to its new place. The result is what of `areas` must still be drawn: all that
// lies around, and where a piece of the pile's upper part lies over the group, or did so before.
Region BoardComposer::ShiftGroup(const BoardPainter::Scene& scene, const Region& areas, Way way) {
    const PieceRec& first = pieces_[size_t(moved_[0])];
    Region shifted, rest = areas, covered;
    for (const Rect& hidden : group_.Hidden()) {
        const Rect now = Shifted(hidden, first.X, first.Y);
        const Rect to = Intersect(Intersect(now, bounds_), Shifted(bounds_, way.dx, way.dy));
        if (to.Empty()) continue;
        shifted.push_back(to);
        rest = Subtract(rest, to);
        const auto addCovered = [&](Way since) {
            painter_.ForEachPiece(scene.pieces, Shifted(to, -since.dx, -since.dy), [&](int element) {
                if (element > group_.Lowest() || group_.Contains(element)) return;
                const Rect over = painter_.BoundsOf(scene.pieces[element]);
                covered.push_back(Intersect(Shifted(over, since.dx, since.dy), to));
            });
        };
        addCovered({0, 0});
        addCovered(way);
    }
    OnCanvas(scene.density, scene.pixels, scene.stride,
             [&](const auto& canvas) { canvas.Move(shifted, way.dx, way.dy); });
    const Region& merged = merger_.Merge(covered, bounds_);
    rest.insert(rest.end(), merged.begin(), merged.end());
    return rest;
}

void BoardComposer::RememberChanged() {
    for (const int i : changed_) {
        pieces_[size_t(i)] = std::as_const(Pieces)[size_t(i)];
        painter_.SetPlace(i, pieces_[size_t(i)]);
    }
    assert(Pieces == pieces_ && "a record was written through a reference from before the last composition");
    Pieces.ForgetWritten();
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
    painter_.SetPlaces(bounds_, pieces_);
    Pieces.ForgetWritten();
}

void BoardComposer::RememberSurfaces() {
    const PieceSurfaces& surfaces = SurfacesOfPieces();
    touches_ = surfaces.Touches();
    surfaceRevisions_.resize(size_t(surfaces.UBound()) + 1);
    for (int i = 0; i <= surfaces.UBound(); ++i) surfaceRevisions_[size_t(i)] = surfaces[i].Revision();
}

}  // namespace PuzzleModule
