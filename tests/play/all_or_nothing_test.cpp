// Starts and loads that come to nothing: each changes what the player sees or has chosen, as told here, and
// nothing else of the whole state.
#include <gtest/gtest.h>

#include "browser/frm_thumbs.h"
#include "core/board/draw_board.h"
#include "platform/system/files.h"
#include "tests/support/game_fixture.h"

using namespace PuzzleModule;
using namespace std::string_literals;

namespace {

const std::string TooSmall = "A imagem selecionada é muito pequena!";

class AllOrNothing : public testing::TestWithParam<const char*> {
protected:
    AllOrNothing() {
        if (std::string("no game") == GetParam()) return;
        play.StartGrid(4, 3, 3);
        play.desktop.Advance(12);
        if (std::string("given up") == GetParam()) play.Menu("MnDesistir");
    }

    // Scrolled in a window that is not maximised, the pieces in view and the panel shown.
    void Prepare() {
        play.main.picStatus.SetVisible(false);
        play.main.picScreen.Image.Cls();
        play.main.Centralize();
        play.main.SetState(WindowState::Maximized);
        if (cleared.empty()) cleared = play.Snapshot();
        play.main.DeliverState(WindowState::Normal);
        play.main.HScroll1.DeliverValue(40, false);
        play.main.VScroll1.DeliverValue(30, false);
        play.main.picStatus.SetVisible(true);
        play.main.Timer1.SetEnabled(GameRunning);
        ChosenLevel = 3;
        PicturePath = "/before.jpg";
        DrawBoard(play.main.picScreen.Image, play.main.Surfaces.picBG);
        play.main.mnuGame->DeliverClick();
        play.desktop.boxes.clear();
        expected = play.Snapshot();
    }
    // These are as on a board wiped and centred, behind no panel.
    void Expect(std::initializer_list<const char*> names) {
        for (const char* name : names) expected[name] = cleared[name];
    }
    void ExpectClearedBoard() { Expect({"picScreen", "board as composed", "HScroll1", "VScroll1", "picStatus"}); }
    // What was expected, one message or none.
    void Check(const std::string& message, int style) {
        EXPECT_EQ(Changes(expected, play.Snapshot()), "");
        std::string said;
        for (const auto& box : play.desktop.boxes) said += box.text + std::to_string(box.style);
        EXPECT_EQ(said, message.empty() ? "" : message + std::to_string(style));
    }

    GameFixture play{{480, 360}};
    State expected, cleared;
};
INSTANTIATE_TEST_SUITE_P(Over, AllOrNothing, testing::Values("a running game", "given up", "no game"));

}  // namespace

TEST_P(AllOrNothing, AStartThatFails) {
    struct Case {
        std::string name, message;
        Size picture{};  // none that could be decoded
    };
    for (const Case& c : {Case{"small.bmp", TooSmall, {60, 60}}, Case{"narrow.bmp", TooSmall, {30, 400}},
                          Case{"huge.bmp", "", {40000, 300}}, Case{"broken.bmp", ""}, Case{"", ""}}) {
        SCOPED_TRACE(c.name);
        Prepare();
        std::string path = c.picture.width ? play.AddPicture(c.name, c.picture) : play.folder.Write("broken.bmp", "");
        play.desktop.Post([&] {
            EXPECT_EQ(CurrentSizes(), SizesOfLevel(1, 480));
            auto& dialog = dynamic_cast<frmThumbs&>(*play.desktop.shown.back());
            int16_t index = 1;
            c.name.empty() ? dialog.Unload() : dialog.StartGame(index, path);
        });
        play.Menu("mnuNewGame(1)");
        expected["chosen level"] = "1";
        if (!c.name.empty()) {
            ExpectClearedBoard();
            expected["clock runs"] = "0";
            expected["chosen picture"] = FileTitle(path);
        }
        Check(c.message, Critical);
    }
}

// In the order in which a load judges: the header as text, its picture, its numbers, the picture's pixels, the pieces.
TEST_P(AllOrNothing, ALoadThatFails) {
    const std::string picture = play.AddPicture("saved.bmp", {220, 130}, 1);
    const std::string good = " 77 \r\n" + picture +
                             "\r\n 5 \r\n 126 \r\n 84 \r\n 80 \r\n 44 \r\n 4 \r\n 3 \r\n 5 \r\n" +
                             "-11  22  0  0  2  0  4 \r\n 101  0  1  0  1  1  11 \r\n 102  0  2  0  2  2  8 \r\n"
                             " 103  0  0  1  3  3  4 \r\n 104  0  1  1  0  4  12 \r\n 105  0  2  1  0  5  4 \r\n";
    // A change is "what > instead"; the file ends there if there is nothing instead.
    using Changes = std::vector<std::string>;
    const auto with = [](std::string text, const std::string& change) {
        const size_t parted = change.find('>'), at = text.find(change.substr(0, parted));
        const std::string instead = change.substr(parted + 1);
        return instead.empty() ? text.substr(0, at) : text.replace(at, parted, instead);
    };
    const Changes headers{" 77>",          picture + ">",   " 44>",       " 77 > 77  7 ", " 77 > 2147483648 ",
                          " 84 > 84.5 ",   " 84 > 0x54 ",   " 84 > +84 ", " 84 > - ",     " 126 > 32768 ",
                          "saved>sa\0ed"s, " 84 > 8\0004 "s};
    const Changes numbers{" 80 > 100 ", " 44 > 55 ", " 3 \r\n 5 > 0 \r\n 5 ", " 77 >-77 ",
                          " 126 > 0 ",  " 84 >-84 ", " 126 > 32760 "};
    // The second change takes the last row away.
    const Changes pieces{"-11>",
                         " 5 \r\n-11> 2 \r\n-11",
                         " 5  4 >",
                         " 5 \r\n-11>-1 \r\n-11",
                         " 5 \r\n-11> 32767 \r\n-11",
                         "-11 >-32769 ",
                         " 5  4 > 5  q ",
                         " 1  0  4 > 1  4  4 ",
                         " 1  0  4 > 1 -1  4 ",
                         " 2  1  0  5 > 1  1  0  4 ",
                         " 103  0  0  1 > 103  0  0  0 ",
                         " 101  0  1 > 101  0 -1 "};
    const std::string gone = with(good, picture + ">" + picture + "x"), narrow = with(good, " 126 > 40 "),
                      broken = with(good, picture + ">" + play.folder.Write("broken.bmp", "nothing to decode"));
    enum Reach { Header, Board };
    struct Group {
        std::string base, message;
        Reach reach;
        Changes changes;
    };
    for (const Group& group : std::vector<Group>{
             {good, "", Header, headers},
             {gone, "O arquivo " + picture + "x não foi encontrado", Header, {" 77 > 78 ", " 44 > 55 "}},
             {gone, "O arquivo " + picture + "x não foi encontrado", Header, pieces},
             {broken, "", Board, {" 77 > 78 ", " 126 > 40 "}},
             {narrow, TooSmall, Board, {" 77 > 78 ", "-11>", " 1  0  4 > 1  4  4 "}},
             {good, "", Board, numbers},
             {good, "", Board, pieces},
             {good,
              "",
              Board,
              {" 80 \r\n 44 \r\n 4 > 140 \r\n 77 \r\n 7 ", " 5 \r\n-11> 6 \r\n 0  0  0  2  0  6  4 \r\n-11"}}})
        for (const std::string& change : group.changes) {
            SCOPED_TRACE(group.message + ": " + change);
            Prepare();
            play.desktop.fileAnswers.push_back(play.folder.Write("bad.pzl", with(group.base, change)));
            play.Menu("mnuLoadGame");
            Expect({"picStatus"});
            if (group.reach == Board) ExpectClearedBoard(), Expect({"frmMain"});
            Check(group.message, group.base == gone ? OKOnly : Critical);
        }
    Prepare();
    play.Menu("mnuLoadGame");  // cancelled
    Check("", 0);
    play.desktop.fileAnswers.push_back(play.folder / "no such file.pzl");
    play.Menu("mnuLoadGame");
    Expect({"picStatus"});
    Check("", 0);

    // What is no failure: a level without a name, pieces in any order, a picture that has grown until it fills its
    // cells.
    const std::string first = "-11  22  0  0  2  0  4 \r\n", moved = with(good, first + ">\n") + first;
    play.desktop.fileAnswers.push_back(play.folder.Write("good.pzl", with(moved, " 5 \r\n 126>-7 \r\n 132")));
    play.Menu("mnuLoadGame");
    play.desktop.Advance(1);
    EXPECT_EQ(play.main.lblElapsed.Caption(), " - 00:01:18");
    EXPECT_TRUE(Pieces.size() == 6 && Pieces[0].X == -11 && Pieces[0].Rotation == 2 && GameLevel == -7);
    EXPECT_TRUE(GridCols == 3 && PictureWidth == 132 && play.main.Surfaces.picMaster.Width() == 132);
}
