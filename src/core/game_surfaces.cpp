// The surfaces behind the board, and the life of the piece surfaces.
#include "core/game_surfaces.h"

#include "core/mask_strip.h"

namespace {

// One count for all sets, so that a set made at the address of another is told from it.
uint64_t NextGeneration() {
    static uint64_t last = 0;
    return ++last;
}

}  // namespace

PieceSurfaces::PieceSurfaces() : generation_(NextGeneration()) { elements_.emplace_back(Side, Side); }

void PieceSurfaces::Load() {
    const Rect stored = elements_.front().StorageBounds();
    Surface& added = elements_.emplace_back(Side, Side);
    added.SetStorage(stored.width, stored.height);
    added.SetDensity(elements_.front().PixelDensity());
    generation_ = NextGeneration();
}

void PieceSurfaces::UnloadFromOne() {
    elements_.resize(1);
    generation_ = NextGeneration();
}

void PieceSurfaces::SetDensity(Density density) {
    UnloadFromOne();
    elements_.front().SetDensity(density);
}

void GameSurfaces::SetDensity(Density density) {
    for (Surface* surface : {&picBG, &picMaster, &picTmp}) surface->SetDensity(density);
    picPat.SetDensity(density);
}

GameSurfaces::GameSurfaces() {
    picMaster.SetBackground(BlackPixel);
    picMasks[0] = PuzzleModule::BuildMasterStrip();
    picMasks[1].SetBackground(BlackPixel);
}

namespace PuzzleModule {
GameSurfaces* Surfaces = nullptr;
}
