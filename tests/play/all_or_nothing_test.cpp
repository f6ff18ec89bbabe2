// Starts and loads that come to nothing, as tests/data/failures.txt lists them: what the player sees and has chosen
// becomes as the golden text tells, and nothing else of the whole state.
#include <fstream>
#include <set>

#include "browser/frm_thumbs.h"
#include "core/board/draw_board.h"
#include "platform/system/files.h"
#include "tests/support/game_fixture.h"
#include "tests/support/golden.h"

using namespace PuzzleModule;

namespace {

class AllOrNothing : public testing::TestWithParam<const char*> {
protected:
    AllOrNothing() {
        if (std::string("no_game") == GetParam()) return;
        play.StartGrid(4, 3, 3);
        play.desktop.Advance(12);
        if (std::string("given_up") == GetParam()) play.Menu("MnDesistir");
    }

    // Scrolled in a window that is not maximised, the pieces in view and the panel shown.
    void Prepare() {
        play.main.DeliverState(WindowState::Normal);
        play.main.HScroll1.DeliverValue(40, false), play.main.VScroll1.DeliverValue(30, false);
        play.main.picStatus.SetVisible(true);
        play.main.Timer1.SetEnabled(GameRunning);
        ChosenLevel = 3;
        PicturePath = "/before.jpg";
        DrawBoard(play.main.picScreen.Image, play.main.Surfaces.picBG);
        play.main.mnuGame->DeliverClick();
        play.desktop.boxes.clear();
    }
    // A picture of that size is chosen in the dialog, "broken" one that can't be decoded, or none.
    void Start(const std::string& what) {
        const size_t by = what.find('x');
        std::string path = by == std::string::npos
                               ? play.folder.Write("broken.bmp", "")
                               : play.AddPicture("new.bmp", {std::stoi(what), std::stoi(what.substr(by + 1))});
        play.desktop.Post([&] {
            EXPECT_EQ(CurrentSizes(), SizesOfLevel(1, 480));
            auto& dialog = dynamic_cast<frmThumbs&>(*play.desktop.shown.back());
            int16_t index = 1;
            what == "none" ? dialog.Unload() : dialog.StartGame(index, path);
        });
        play.Menu("mnuNewGame(1)");
    }
    // A good game with changes "what>instead"; nothing instead: the file ends there. "_" stands for a blank, "~" for a
    // line's end, "^" for the byte 0, P for the path of the picture, B for that of one that can't be decoded.
    void Load(std::string what) {
        std::string game =
            "_77_~P~_5_~_126_~_84_~_80_~_44_~_4_~_3_~_5_~-11__22__0__0__2__0__4_~_101__0__1__0__1__1__11_~"
            "_102__0__2__0__2__2__8_~_103__0__0__1__3__3__4_~_104__0__1__1__0__4__12_~_105__0__2__1__0__5__4_~";
        for (std::istringstream changes(what); std::getline(changes, what, ';');) {
            const size_t parted = what.find('>'), at = game.find(what.substr(0, parted));
            ASSERT_NE(at, std::string::npos) << what;
            parted + 1 == what.size() ? game.erase(at) : game.replace(at, parted, what.substr(parted + 1));
        }
        std::string bytes;
        for (const char c : game)
            bytes += c == '_'   ? " "
                     : c == '~' ? "\r\n"
                     : c == '^' ? std::string(1, '\0')
                     : c == 'P' ? play.folder / "saved.bmp"
                     : c == 'B' ? play.folder / "broken.bmp"
                                : std::string(1, c);
        play.desktop.fileAnswers.push_back(play.folder.Write("game.pzl", bytes));
        play.Menu("mnuLoadGame");
    }

    GameFixture play{{480, 360}};
};
INSTANTIATE_TEST_SUITE_P(Over, AllOrNothing, testing::Values("running_game", "given_up", "no_game"));

}  // namespace

TEST_P(AllOrNothing, WhateverFails) {
    const std::set<std::string> seen{"picScreen", "board as composed", "HScroll1",     "VScroll1",      "picStatus",
                                     "frmMain",   "clock runs",        "chosen level", "chosen picture"};
    play.AddPicture("saved.bmp", {220, 130}, 1);
    play.folder.Write("broken.bmp", "nothing to decode");
    std::string text, last, kind, what;
    for (std::ifstream table(FENTO_SOURCE_DIR "/tests/data/failures.txt"); table >> kind >> what;) {
        SCOPED_TRACE(kind + " " + what);
        Prepare();
        const State before = play.Snapshot();
        if (kind == "start") Start(what);
        if (kind == "load") Load(what);
        if (kind == "missing") play.desktop.fileAnswers.push_back(play.folder / what);
        if (kind == "cancel" || kind == "missing") play.Menu("mnuLoadGame");
        State now = play.Snapshot();
        std::string effect = Changes(before, now);
        for (const auto& box : play.desktop.boxes) effect += "box " + std::to_string(box.style) + " " + box.text + "\n";
        text += "> " + kind + " " + what + (effect == last ? ": as the last\n" : "\n" + effect);
        last = effect;
        for (const auto& [name, value] : before) EXPECT_TRUE(seen.contains(name) || now[name] == value) << name;
    }
    // What is no failure: a level without a name, pieces in any order, a picture that fills its cells.
    Load(
        "_5_~_126>-7_~_132;-11__22__0__0__2__0__4_~>~;12_~_105__0__2__1__0__5__4_~>12_~_105__0__2__1__0__5__4_~-11__22_"
        "_0__0__2__0__4_~");
    play.desktop.Advance(1);
    State now = play.Snapshot();
    for (const char* name : {"piece 0 0", "numbers", "picMaster", "lblElapsed"}) text += now[name] + "\n";
    for (size_t at; (at = text.find(play.folder.Path())) != std::string::npos;)
        text.replace(at, play.folder.Path().size(), "~");
    ExpectGolden("failures_" + std::string(GetParam()) + ".txt", text);
}
