// The one home of the game's data, and the level table.
#include "core/game_state.h"

namespace PuzzleModule {

int16_t ScreenWidthPx = 0;
int16_t ScreenHeightPx = 0;
int16_t GridCols = 0;
int16_t GridRows = 0;
int16_t TileSize = 0;
int16_t CellSize = 0;
int16_t TileUnit = 0;
int16_t ScatterGap = 0;
int16_t PictureWidth = 0;
int16_t PictureHeight = 0;
PieceList Pieces;
int16_t PickedPiece = -1;
int16_t GameLevel = 0;
int16_t ChosenLevel = 0;
int32_t ElapsedSeconds = 0;
bool GameRunning = false;
bool ThumbsOpen = false;
std::string AppFolder;
std::string PicturePath;
std::string BoardPicturePath;
std::span<const std::byte> WaveClick, WaveGiro, WaveComplete, WaveRotate;

namespace {

constexpr int WidestSmallScreen = 800;

struct Level {
    int16_t index;
    const char* name;  // in the status line
    LevelSizes small;  // screens up to 800 pixels wide
    LevelSizes large;  // wider ones
};

// Index 2 of the menu is a separator and no level.
constexpr std::array<Level, 5> Levels{{
    {0, "Kids A", {120, 66, 6, 1}, {160, 88, 8, 2}},
    {1, "Kids B", {120, 66, 6, 1}, {160, 88, 8, 2}},
    {3, "Fácil", {100, 55, 5, 1}, {120, 66, 6, 3}},
    {4, "Medio", {80, 44, 4, 1}, {100, 55, 5, 3}},
    {5, "Dificil", {60, 33, 3, 1}, {80, 44, 4, 3}},
}};

constexpr bool BelongTogether(const LevelSizes& sizes) {
    return sizes.TileSize == 20 * sizes.TileUnit && sizes.CellSize == 11 * sizes.TileUnit;
}
constexpr bool AllBelongTogether() {
    for (const Level& level : Levels)
        if (!BelongTogether(level.small) || !BelongTogether(level.large)) return false;
    return true;
}
static_assert(AllBelongTogether());

const Level* FindLevel(int16_t index) {
    for (const Level& level : Levels)
        if (level.index == index) return &level;
    return nullptr;
}

}  // namespace

std::optional<LevelSizes> SizesOfLevel(int16_t level, int16_t screenWidthPx) {
    const Level* found = FindLevel(level);
    if (!found) return std::nullopt;
    return screenWidthPx <= WidestSmallScreen ? found->small : found->large;
}

void SetSizes(const LevelSizes& sizes) {
    TileSize = sizes.TileSize;
    CellSize = sizes.CellSize;
    TileUnit = sizes.TileUnit;
    ScatterGap = sizes.ScatterGap;
}

LevelSizes CurrentSizes() { return {TileSize, CellSize, TileUnit, ScatterGap}; }

std::string LevelName(const int16_t& Level) {
    const auto* found = FindLevel(Level);
    return found ? found->name : "";
}

// Truncates on purpose: 22 at 100 and 13 at 60, the surplus pixel falls to the right and below.
int Margin() { return (TileSize - CellSize) / 2; }

void ResetState() {
    ScreenWidthPx = ScreenHeightPx = 0;
    GridCols = GridRows = 0;
    SetSizes({});
    PictureWidth = PictureHeight = 0;
    Pieces.clear();
    PickedPiece = -1;
    GameLevel = ChosenLevel = 0;
    ElapsedSeconds = 0;
    GameRunning = ThumbsOpen = false;
    AppFolder.clear();
    PicturePath.clear();
    BoardPicturePath.clear();
    WaveClick = WaveGiro = WaveComplete = WaveRotate = {};
}

}  // namespace PuzzleModule
