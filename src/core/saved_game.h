// Saved games: text in Windows-1252, lines ended by CR LF. Ten header lines, then one line
// per piece in the order of PieceId. Parsing and formatting are pure.
#pragma once
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/fitting.h"
#include "core/game_state.h"

namespace PuzzleModule {

struct SavedPiece {
    int16_t X, Y, Col, Row, Rotation, PieceId, MaskIndex;
};

struct SavedGame {
    int32_t ElapsedSeconds = 0;
    std::string PicturePath;  // as the bytes of the file name on this system
    int16_t GameLevel = 0;
    int16_t PictureWidth = 0, PictureHeight = 0;
    LevelSizes Sizes;
    std::vector<SavedPiece> Pieces;
};

// The game on the board as it would be saved, its pieces sorted by row and column. Nothing if
// there are none.
std::optional<SavedGame> GameToSave();

// Sorts Pieces in place by Row x 100 + Col, exchanging records whole. False if there are none.
bool SortPieces();

// Every byte of the file. Nothing if the path cannot be written (a line break in it).
std::optional<std::string> FormatSavedGame(const SavedGame& game);

// Reads the header and the piece lines; LF is accepted as well as CR LF. Nothing if the header ends early,
// holds something that is no number, or a number out of its range; a game without pieces if only their lines
// do. `fileExists` chooses between the two readings of the path: from Windows-1252, or as the bytes it is.
std::optional<SavedGame> ParseSavedGame(std::string_view bytes, bool (*fileExists)(const std::string& path));

// What the header alone says: the picture in the grid reckoned from its saved size, which may be too small for
// a game. Nothing if its numbers belong to no game: sizes of none of the five sets, a picture size that is not
// positive or makes a grid beyond 16 bits.
std::optional<Fit> FitOfHeader(const SavedGame& game);

// The picture in the grid of the pieces. Nothing if header and pieces don't make one game: a grid of at least two
// by two to which the saved size can lead, every cell with its one piece, Rotation 0 to 3; and no more pieces than
// any usual screen, or the one of size `screen`, can make of a picture.
std::optional<Fit> FitOfPieces(const SavedGame& game, Size screen);

}  // namespace PuzzleModule
