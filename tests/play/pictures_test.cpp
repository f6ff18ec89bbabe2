// The dialog of pictures, and starts and loads that come to nothing.
#include <fstream>

#include "core/board/draw_board.h"
#include "tests/play/recorded.h"

using namespace PuzzleModule;

// Without a folder of pictures, then with one that is scanned as the dialog opens.
TEST_F(Recorded, Pictures) {
    DO(Settings("Som=False"));
    AddPicture("Outra/b.GIF", {300, 900});
    THEN(Dialog().DeliverActivate());
    DO(play.Menu("mnuNewGame(3)"));
    AddPicture("imagens/a.jpg", {800, 600}, 0.5);
    AddPicture("Outra/inside/c.BMP", {512, 512});
    AddPicture("small.png", {30, 20});
    Then(STEP(desktop.Advance(0.1)), 2);
    DO(play.Menu("mnuNewGame(5)"));
    THEN(Ok());
    THEN(Click(400, 400));
    THEN(Click(10, 60));
    THEN(Ok());
    DO(play.Menu("mnuNewGame(0)"), play.Menu("mnuGame"));
    // Another folder, a place in the list of drives, one that is refused; what was chosen is forgotten.
    THEN(Click(60, 60));
    Then(STEP(Open("Outra/inside"), Ok()), 5);
    THEN(Dialog().Drive1.DeliverChoice(3));
    THEN(Dialog().Drive1.DeliverChoice(2));
    THEN(Open("Outra"));
    THEN(Dialog().Drive1.DeliverChoice(1));
    THEN(Open("nowhere"));
    THEN(Twice());
    DO(play.Menu("mnuNewGame(4)"), desktop.Advance(2));
    // A file dropped on the dialog, of which only the content counts; too small, and no picture at all.
    THEN(Drop("small.png"));
    DO(play.Menu("mnuNewGame(1)"));
    THEN(Drop("config.ini"));
    THEN(Click(60, 60), Dialog().cmdVoltar.DeliverClick());
    DO(play.Menu("mnuNewGame(1)"), play.Menu("mnuGame"));
    // A screen of more pixels than units: thumbnails and game take them all.
    desktop.scale = 1.5;
    THEN(Twice());
    DO(play.Menu("mnuNewGame(5)"));
    Answer("a.pzl"), Answer("a.pzl");
    DO(play.Menu("mnuSaveGame"));
    desktop.scale = 3;
    DO(play.Menu("mnuLoadGame"));
}

// Ways out end the dialog and the scan, and only a chosen picture becomes a game, whose sizes stay; others give way as
// the dialog closes. Another folder is listed alone, and the label of a long scan does not come back.
TEST_F(Recorded, AnyYieldOfAScan) {
    for (const char* name : {"Imagens/v1.bmp", "Imagens/v2.bmp", "Imagens/v3.bmp", "nova/n.bmp"})
        AddPicture(name, {400, 300}, 0.2);
    transcript.state = [this] {
        State now;
        for (const auto& [name, text] : Seen())  // but not the files' names, which come in any order
            if (name.starts_with("picInterior") || name == "Label1" || name == "running")
                now[name] = text.substr(0, text.find('"'));
        now["cell"] = std::to_string(CellSize);
        return now;
    };
    for (const auto& act : Steps() | STEP(Dialog().cmdVoltar.DeliverClick()) | STEP(Dialog().DeliverClose()) |
                               STEP(Click(60, 60), Ok()) | STEP(Twice()) | STEP(Drop("nova/n.bmp")) |
                               STEP(Open("nova"), desktop.decodes) | STEP(Twice(), play.Key("mnuNewGame(5)")))
        for (int yield = 2; yield < 11; ++yield) {
            Then(act, yield);
            DO(play.Key(yield % 2 ? "mnuNewGame(3)" : "mnuNewGame(4)"),
               std::tuple(desktop.decodes, desktop.modalTrouble));
            meanwhile.clear(), GameRunning = 0;
        }
}

class Failures : public Recorded {
protected:
    // Scrolled in a window that is not maximised, the pieces in view and the panel shown.
    void Prepare() {
        main.DeliverState(WindowState::Normal);
        Scroll(40, 30);
        main.picStatus.SetVisible(true);
        main.Timer1.SetEnabled(GameRunning);
        ChosenLevel = 3;
        PicturePath = "/before.jpg";
        DrawBoard(main.picScreen.Image, main.Surfaces.picBG);
        main.mnuGame->DeliverClick();
    }
    // A picture of that size is chosen in the dialog, "broken" one that can't be decoded, or none.
    void Start(const std::string& what) {
        const size_t by = what.find('x');
        if (by != std::string::npos) AddPicture(what, {std::stoi(what), std::stoi(what.substr(by + 1))});
        desktop.Post([&] {
            std::string path = play.folder / what;
            int16_t index = 1;
            what == "none" ? Dialog().Unload() : Dialog().StartGame(index, path);
        });
        play.Menu("mnuNewGame(1)");
    }
    // A good game with changes "what>instead"; nothing instead: the file ends there. "_" stands for a blank, "~" for a
    // line's end, "^" for the byte 0, P for the path of the picture, B for that of one that can't be decoded.
    void Load(const std::string& what) {
        std::string game =
            "_77_~P~_5_~_126_~_84_~_80_~_44_~_4_~_3_~_5_~-11__22__0__0__2__0__4_~_101__0__1__0__1__1__11_~"
            "_102__0__2__0__2__2__8_~_103__0__0__1__3__3__4_~_104__0__1__1__0__4__12_~_105__0__2__1__0__5__4_~";
        std::istringstream changes(what);
        for (std::string change; std::getline(changes, change, ';');) {
            const size_t parted = change.find('>'), at = game.find(change.substr(0, parted));
            ASSERT_NE(at, std::string::npos) << change;
            parted + 1 == change.size() ? game.erase(at) : game.replace(at, parted, change.substr(parted + 1));
        }
        const std::map<char, std::string> meant{{'_', " "},
                                                {'~', "\r\n"},
                                                {'^', std::string(1, '\0')},
                                                {'P', play.folder / "saved.bmp"},
                                                {'B', play.folder / "broken"}};
        std::string bytes;
        for (const char c : game) bytes += meant.contains(c) ? meant.at(c) : std::string(1, c);
        play.folder.Write("game.pzl", bytes);
        Answer("game.pzl");
        play.Menu("mnuLoadGame");
    }
};

// Starts and loads that come to nothing, as tests/data/failures.txt lists them, without a game, over one that runs and
// over one that was given up: each with what is another than after the one before.
TEST_F(Failures, ComeToNothing) {
    desktop.occasion = [](const std::string&) {};
    AddPicture("saved.bmp", {220, 130});
    play.folder.Write("broken", "nothing to decode");
    std::string kind, what;
    for (const char* over : {"no game", "a running game", "a game given up"}) {
        transcript.Step(over, [&] { *over == 'n' ? void() : GameRunning ? play.Menu("MnDesistir") : Deal(4, 3, 3); });
        for (std::ifstream table(FENTO_SOURCE_DIR "/tests/data/failures.txt"); table >> kind >> what;)
            transcript.Step(kind + " " + what, [&] {
                Prepare();
                if (kind == "missing") Answer(what);
                kind == "start" ? Start(what) : kind == "load" ? Load(what) : play.Menu("mnuLoadGame");
            });
    }
    // What is no failure: a level without a name, pieces in any order, a picture that fills its cells.
    Load(
        "_5_~_126>-7_~_132;-11__22__0__0__2__0__4_~>~;12_~_105__0__2__1__0__5__4_~>12_~_105__0__2__1__0__5__4_~-11__22_"
        "_0__0__2__0__4_~");
    DO(desktop.Advance(1));
}
