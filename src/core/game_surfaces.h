// The surfaces of a game that no player sees. The main window owns them; the routines of
// the game reach them through PuzzleModule::Surfaces.
#pragma once
#include <cstdint>
#include <deque>
#include <memory>

#include "platform/drawing/picture.h"
#include "platform/drawing/surface.h"

// The surfaces of the pieces: element i belongs to the piece with PieceId i. Element 0
// always exists. Each is declared 160 by 160, the largest tile, and stores the tile only.
class PieceSurfaces {
public:
    PieceSurfaces();
    int UBound() const { return int(elements_.size()) - 1; }
    Surface& operator[](int index) {
        ++touches_;
        return elements_[size_t(index)];
    }
    const Surface& operator[](int index) const { return elements_[size_t(index)]; }

    void Load();                       // adds the next element, made like element 0
    void UnloadFromOne();              // removes all but element 0
    void SetDensity(Density density);  // of element 0 and all that are added from now on; removes the others

    // Another number whenever the set of surfaces was made anew; no two sets ever share one.
    uint64_t Generation() const { return generation_; }

    // How often an element was handed out for writing: as long as it stands still, so do
    // all pixels.
    uint64_t Touches() const { return touches_; }

    static constexpr int Side = 160;

private:
    std::deque<Surface> elements_;
    uint64_t generation_ = 0;
    uint64_t touches_ = 0;
};

struct GameSurfaces {
    Surface picBG;  // clean background of every composition, as large as the board, shown nowhere
    std::shared_ptr<const Picture> PicTemp;  // the picture as loaded
    Surface PicBranco{20, 22};               // all white: stretched, the frame on picMaster
    Surface picMaster;                       // the picture on black, whole cells; black background
    PieceSurfaces picPat;
    Surface picMasks[2];  // master strip 1520 x 80, working strip 19 TileSize x TileSize
    Surface picTmp{PieceSurfaces::Side, PieceSurfaces::Side};  // scratch of RotatePiece

    GameSurfaces();  // builds the master strip

    // Pixels a unit of all surfaces that carry the picture. Clears them, and removes the pieces'.
    void SetDensity(Density density);
};

namespace PuzzleModule {
extern GameSurfaces* Surfaces;  // of the main window that lives; set by it
}
