// The whole road of a saved game: chosen in the menu, read, loaded, composed, saved again, and that one loaded.
#include <unistd.h>

#include "core/board/draw_board.h"
#include "tests/fuzz/readers.h"
#include "tests/reference/literal_board.h"
#include "tests/support/game_fixture.h"

using namespace PuzzleModule;

namespace {

struct Desk : GameFixture {
    Desk() : GameFixture({800, 600}) { MkDir(folder / "Save"); }
    std::string picture = AddPicture("p.jpg", {260, 180}), file = folder / "a.pzl", saved = folder / "b.pzl";

    bool Load(const std::string& path) {
        GameRunning = false;
        desktop.fileAnswers.assign(1, path);
        main.mnuLoadGame_Click();
        return GameRunning;
    }
    State WithoutOrder() {
        (void)SortPieces();
        DrawBoard(main.picScreen.Image, main.Surfaces.picBG);
        State state = Snapshot();
        for (const char* name : {"PictureWidth", "PictureHeight", "picMaster"}) state.erase(name);
        for (auto& [name, text] : state)
            if (name.starts_with("piece")) text.resize(text.rfind(' '));
        return state;
    }
};

}  // namespace

// "@" in the second line stands for a picture that exists.
void FuzzRoad(const std::string& bytes) {
    static Desk desk;
    std::string text = bytes;
    const size_t line = text.find('\n') + 1;
    if (text.substr(line, 1) == "@") text.replace(line, 1, desk.picture);
    desk.folder.Write("a.pzl", text);
    desk.desktop.log.clear(), desk.desktop.boxes.clear(), desk.desktop.fileRequests.clear();
    if (!desk.Load(desk.file)) return;
    const Surface& shown = desk.main.picScreen.Image;
    Surface model(shown.Width(), shown.Height());
    reference::DrawBoard(model, desk.main.Surfaces.picBG);
    Require(GameFixture::HashOf(model) == desk.ShownBoard());
    const auto first = desk.WithoutOrder();
    desk.desktop.fileAnswers.assign(1, desk.saved);
    desk.main.mnuSaveGame_Click();
    Require(desk.Load(desk.saved) && desk.WithoutOrder() == first);
}
