// The program has one board, and one memory of what stands on it.
#include "core/board/draw_board.h"

#include "core/board/composer.h"

namespace PuzzleModule {

void DrawBoard(Surface& dest, const Surface& background) {
    static BoardComposer composer;
    composer.Compose(dest, background);
}

}  // namespace PuzzleModule
