// Saved games, settings and custom colours as texts in memory.
#include <iterator>

#include "core/saved_game.h"
#include "platform/system/profile_file.h"
#include "shell/common_dialogs.h"
#include "tests/fuzz/readers.h"

using namespace PuzzleModule;

namespace {

bool NoFile(const std::string&) { return false; }
bool AnyFile(const std::string&) { return true; }

std::string Taken(std::string& text) {
    const size_t at = text.rfind('\n');
    const std::string behind = at == text.npos ? "" : text.substr(at + 1);
    text.resize(at == text.npos ? 0 : at);
    return behind;
}

// Every byte of `before` is still there, in order, but for at most one stretch within one line.
bool OnlyOneLineChanged(const std::string& before, const std::string& after) {
    const auto differ = std::mismatch(before.begin(), before.end(), after.begin(), after.end()).first;
    const size_t head = size_t(differ - before.begin());
    size_t tail = 0;
    while (tail < before.size() - head && tail < after.size() - head &&
           before.end()[-1 - int(tail)] == after.end()[-1 - int(tail)])
        ++tail;
    return before.substr(head, before.size() - head - tail).find('\n') == before.npos;
}

}  // namespace

// What was accepted once comes back the same.
void FuzzSavedGame(const std::string& bytes) {
    for (const auto fileExists : {&NoFile, &AnyFile}) {
        const auto game = ParseSavedGame(bytes, fileExists);
        if (!game) continue;
        const auto fit = FitOfPieces(*game, {1920, 1080});
        if (fit)
            Require(size_t(fit->GridCols) * size_t(fit->GridRows) == game->Pieces.size() &&
                    !fit->TooSmall(game->Sizes.CellSize));
        const auto text = FormatSavedGame(*game);
        if (!text) return Require(game->PicturePath.find_first_of("\r\n") != std::string::npos);
        const auto again = ParseSavedGame(*text, fileExists);
        Require(again && again->ElapsedSeconds == game->ElapsedSeconds && again->Sizes == game->Sizes);
        Require(FormatSavedGame(*again) == text || again->PicturePath != game->PicturePath);
        const auto fitAgain = FitOfPieces(*again, {1920, 1080});
        Require(fitAgain.has_value() == fit.has_value() && (!fit || fitAgain->PictureRect() == fit->PictureRect()));
    }
}

// The last line of the input is the new value of a key. What was written is read back, every other key reads as before,
// of the lines there were none but the key's is touched, and writing the same once more changes nothing. Of the other
// keys one is asked in each run.
void FuzzSettings(const std::string& bytes) {
    constexpr std::pair<const char*, const char*> Known[] = {
        {"SETUP", "Som"}, {"SETUP", "Color"}, {"SETUP", "Navegador"}, {"a", "b"}};
    std::string before = bytes;
    const std::string value = Taken(before);
    if (before.ends_with('\r')) before += '\n';  // half a line end at the file's end would become a whole one
    const auto& [section, key] = Known[bytes.size() % std::size(Known)];
    const auto after = WithKey(before, section, key, value);
    if (!after) return Require(value.find('\r') != std::string::npos);
    Require(OnlyOneLineChanged(before, *after));
    Require(ReadKey(*after, section, key) == value && WithKey(*after, section, key, value) == after);
    const auto& [s, k] = Known[bytes.size() / 4 % std::size(Known)];
    Require(k == key || ReadKey(*after, s, k) == ReadKey(before, s, k));
}

// Sixteen colours come of any text, and the same ones come of what is written for them.
void FuzzColours(const std::string& bytes) {
    const auto colours = ModCmnDlg::ColorsOf(bytes);
    Require(ModCmnDlg::ColorsOf(ModCmnDlg::TextOf(colours)) == colours);
}
