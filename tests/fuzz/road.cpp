// The whole road of a saved game: chosen in the menu, read, loaded, composed, saved again, and that one loaded.
#include "core/saved_game.h"
#include "tests/fuzz/readers.h"
#include "tests/support/game_fixture.h"

using namespace PuzzleModule;

namespace {

struct Desk : GameFixture {
    Desk() : GameFixture({320, 240}) {}
    std::string picture = AddPicture("p.jpg", {130, 90});

    bool Load(const char* name) {
        GameRunning = false;
        desktop.fileAnswers.assign(1, folder / name);
        main.mnuLoadGame_Click();
        return GameRunning;
    }
};

// What counts of the game on the board; the fitting may have changed the size at which the picture is painted.
std::string TheGame() {
    std::optional<SavedGame> game = GameToSave();
    if (game) game->PictureWidth = game->PictureHeight = 1;
    return game ? FormatSavedGame(*game).value_or("") : "";
}

}  // namespace

// "@" in the second line stands for a picture that exists.
void FuzzRoad(const std::string& bytes) {
    static Desk desk;
    std::string text = bytes;
    const size_t line = text.find('\n') + 1;
    if (text.substr(line, 1) == "@") text.replace(line, 1, desk.picture);
    desk.folder.Write("a.pzl", text);
    desk.desktop.log.clear(), desk.desktop.boxes.clear(), desk.desktop.fileRequests.clear();
    if (!desk.Load("a.pzl")) return;
    const std::string loaded = TheGame();
    desk.desktop.fileAnswers.assign(1, desk.folder / "b.pzl");
    desk.main.mnuSaveGame_Click();
    Require(desk.Load("b.pzl") && !loaded.empty() && TheGame() == loaded);
}
