// Takes the reader's whole road: parse, check, format, parse again. What was accepted once must come
// back the same. Start it on tests/data/*.pzl.
#include <cstdlib>

#include "core/game_state.h"
#include "core/saved_game.h"

using namespace PuzzleModule;

namespace {

constexpr Size Screen{1920, 1080};

bool NoFile(const std::string&) { return false; }
bool AnyFile(const std::string&) { return true; }

void Require(bool held) {
    if (!held) std::abort();
}

void CheckAccepted(const SavedGame& game, bool (*fileExists)(const std::string&)) {
    const auto fit = FitOfPieces(game, Screen);
    const auto cells = [](const Fit& of) { return int64_t(of.GridCols) * of.GridRows; };
    if (fit) Require(cells(*fit) == int64_t(game.Pieces.size()) && !fit->TooSmall(game.Sizes.CellSize));
    const auto text = FormatSavedGame(game);
    if (!text) return Require(game.PicturePath.find_first_of("\r\n") != std::string::npos);
    const auto again = ParseSavedGame(*text, fileExists);
    Require(again && again->ElapsedSeconds == game.ElapsedSeconds && again->Sizes == game.Sizes);
    Require(FormatSavedGame(*again) == text || again->PicturePath != game.PicturePath);
    const auto fitAgain = FitOfPieces(*again, Screen);
    Require(fitAgain.has_value() == fit.has_value() && (!fit || fitAgain->PictureRect() == fit->PictureRect()));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    for (const auto fileExists : {&NoFile, &AnyFile})
        if (const auto game = ParseSavedGame(bytes, fileExists)) CheckAccepted(*game, fileExists);
    return 0;
}
