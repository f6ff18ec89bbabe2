// Menu, mouse and view.
#include "tests/play/recorded.h"

using namespace PuzzleModule;

// Without a game the shortcuts do nothing at all; items are greyed when their menu opens, and only then.
TEST_F(Recorded, Commands) {
    DO(Settings("Som=False"));
    DO(Settings("Color=65280"));
    for (const char* item : {"mnuShuffle", "mnuSaveGame", "mnuHints", "MnDesistir"})
        transcript.Step(item, [&] { play.Key(item); });
    for (const char* item : {"mnuGame", "mnuOptions", "mnuStatus", "mnuStatus", "mnuSounds"})
        transcript.Step(item, [&] { play.Menu(item); });
    DO(Panel());
    DO(Deal(3, 2, 5), play.Menu("mnuOptions"));
    // A command that opens something lets a held piece go first, where the pointer last was.
    DO(Grab(0, 1), Move({170, 90}), play.Key("mnuHints"));
    DO(play.Release({300, 300}), play.Menu("mnuSounds"));
    DO(Grab(1, 1), Move({170, 140}));
    THEN(desktop.Advance(2));
    DO(play.Menu("mnuHowToPlay"));
    DO(play.Menu("mnuAbout"));
    desktop.colorAnswers.push_back([](Color, std::span<Color, 16>) { return 255; });
    THEN(desktop.Advance(2));
    DO(play.Menu("mnuBackground"));
    DO(play.Menu("mnuBackground"));
    THEN(desktop.Advance(1));
    DO(play.Menu("mnuShuffle"));
    Answer("a");
    THEN(desktop.Advance(2));
    DO(play.Menu("mnuSaveGame"), Read("a.pzl"));
    DO(play.Menu("MnDesistir"), play.Menu("mnuOptions"));
    DO(Grab(1, 1));
    Answer("a.pzl");
    THEN(desktop.Advance(3));
    DO(play.Menu("mnuLoadGame"), Read("config.ini"));
    Answer("again.PZL");
    DO(play.Menu("mnuSaveGame"), Read("again.pzl"));
    // A saved game is dropped on the window: known by its name.
    AddPicture("UP.PZL", {1, 1});
    DO(Grab(0, 0));
    for (const char* name : {"config.ini", "UP.PZL", "none.pzl", "again.pzl"})
        transcript.Step(name, [&] { Drop(name); });
    // A release that completes the game is all that becomes of a command.
    DO(play.Solve(110, 110), play.Put(1, 2, 300, 110), Grab(1, 2), Move({206, 173}));
    DO(play.Key("mnuNewGame(3)"));
    play.Put(1, 2, 300, 110);
    desktop.boxAnswers.push_back(MsgBoxResult::Yes);
    DO(play.Menu("mnuShuffle"));
    transcript.Step("exit", [&] { EXPECT_THROW(play.Menu("mnuExit"), HeadlessDesktop::ProgramEnded); });
}

// The uppermost misplaced piece and its place are framed until the next composition. Giving up lays the picture out at
// the visible corner, a pitch beyond it, and ends the game in silence. Meanwhile only commands that leave the pieces
// alone do anything.
TEST_F(Recorded, GivingUp) {
    DO(Deal(3, 2, 3), play.Solve(110, 110), play.Put(1, 2, 330, 275), play.Menu("mnuHints"));
    DO(Grab(1, 2));
    DO(play.Turn(0, 1, 3), Scroll(120, 80));
    Answer("a.pzl");
    for (const char* item :
         {"mnuNewGame(5)", "mnuShuffle", "mnuSaveGame", "mnuLoadGame", "MnDesistir", "mnuBackground"})
        Then([this, item] { transcript.Step(item, [&] { play.Key(item); }); });
    THEN(Drop("a.pzl"));
    THEN(play.Press({300, 300}));
    THEN(play.Menu("mnuHints"));
    THEN(play.Wheel(0, -1));
    DO(play.Menu("MnDesistir"));
    // With the top-left piece turned, the corner of the board stands for it; closing the window ends the program.
    DO(Deal(3, 2, 4), play.Turn(0, 0, 2), play.Menu("mnuHints"));
    THEN(play.Menu("mnuExit"));
    transcript.Step("exit", [&] { EXPECT_THROW(play.Menu("MnDesistir"), HeadlessDesktop::ProgramEnded); });
}

// Wheel, keys and hand move the board under the window, larger by four steps; bars and panel follow the window.
TEST_F(Recorded, View) {
    DO(main.DeliverResize({300, 260}), play.Wheel(0, -1));
    DO(Deal(3, 2, 5));
    DO(play.Wheel(0.3, -0.3));  // a touchpad turns by parts of a notch
    DO(play.Wheel(0.7, -0.7));
    DO(main.HScroll1.DeliverWheel({1, 0}), main.VScroll1.DeliverWheel({0, 1}));
    for (const int key : {1, 4, 8, 2, 3, 5, 6, 7, 0})
        transcript.Step(std::to_string(key), [&] { main.DeliverKeyDown(Key(key)); });
    DO(Scroll(659, 459));
    DO(Pan({100, 100}, {99, 99}));
    DO(Pan({100, 100}, {110, 109}));
    DO(Scroll(0, 0));
    DO(Pan({100, 100}, {101, 101}));
    // A piece in the hand stays under the pointer, unless the bars can't reach so far any more.
    DO(Grab(0, 0), Scroll(40, 50));
    DO(main.DeliverKeyDown(Key::Left));
    DO(play.Wheel(-1, 2));
    DO(play.Release(pointer));
    DO(main.DeliverResize({900, 700}));
    DO(main.DeliverResize({2300, 1300}));
    DO(play.Menu("mnuNewGame(3)"));
}

// The last piece, turned upright in the hand: three waves, and a box over the finished board and its time.
TEST_F(Recorded, Winning) {
    DO(Deal(2, 2, 4), ElapsedSeconds = 3599, play.Solve(66, 66), play.Put(1, 1, 300, 66), play.Turn(1, 1, 3));
    DO(Grab(1, 1), play.Click(pointer, 2), Move({153, 148}));
    THEN(desktop.Advance(1));
    THEN(play.Wheel(0, -1));
    DO(Release());
    // A board that can only be panned, and the same picture again.
    DO(Pan({140, 140}, {130, 130}), play.Menu("mnuGame"));
    desktop.boxAnswers.push_back(MsgBoxResult::Yes);
    DO(play.Menu("mnuShuffle"));
    DO(ElapsedSeconds = 2147483646, desktop.Advance(2));
}

// The narrower a screen, the larger is its board in proportion. A game starts on each, all its pieces lie on the board,
// and it is won.
TEST(Screens, GiveTheirBoardsAndGames) {
    Transcript transcript;
    for (const int width : {800, 1023, 1024, 1279, 1280, 1920, 3840})
        for (const Size photograph : {Size{6000, 4000}, {3000, 4000}}) {
            GameFixture play({width, width * 5 / 8});
            const Surface& board = play.main.picScreen.Image;
            ASSERT_TRUE(play.Start(play.AddPicture("photo.bmp", photograph), 3));
            transcript.Write(testing::PrintToString(std::tuple(width, board.Bounds(), Pieces.size())));
            for (const PieceRec& piece : std::as_const(Pieces)) {
                const GameFixture::Spot middle = play.Middle(piece.Row, piece.Col);
                EXPECT_TRUE(board.Bounds().Contains(int(middle.x), int(middle.y)));
            }
            EXPECT_TRUE(play.Win());
        }
}
