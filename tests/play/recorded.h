// Play by mouse, menu and dialogs through the real handlers: each step with what the desktop was asked for, the waves
// and every state that is another afterwards is compared with the golden text named after the test.
#pragma once
#include "browser/frm_thumbs.h"
#include "platform/system/files.h"
#include "tests/support/game_fixture.h"
#include "tests/support/transcript.h"

// Tells when the program yields and when a dialog stands with its activation done.
class OccasionsDesktop : public HeadlessDesktop {
public:
    using HeadlessDesktop::HeadlessDesktop;

    std::function<void(const std::string&)> occasion;
    int yieldsLeft = 0;

    void DoEvents(Yield yield) override {
        HeadlessDesktop::DoEvents(yield);
        if (--yieldsLeft == 0) occasion("a yield");
    }
    void RunModal(Form& form) override {
        form.OnActivate = [this, &form, activate = form.OnActivate, stands = false]() mutable {
            if (activate) activate();
            if (form.IsShown() && !std::exchange(stands, true)) Post([this] { occasion("it stands"); });
        };
        HeadlessDesktop::RunModal(form);
    }
};

class Recorded : public testing::Test {
protected:
    using Spot = GameFixture::Spot;

    Recorded() {
        desktop.volumes = {{"/", "/"}, {play.folder.Path(), "jogo"}, {play.folder / "empty drive", "vazio"}};
        desktop.occasion = [this](const std::string& which) { Occasion(which); };
        desktop.onFrame = [this] { Occasion("a frame"); };
        OfferModal();
        transcript.state = [this] { return Seen(); };
        DO(play.main.Show());
    }

    // What is done at the next occasion: a box or dialog opens or stands, the program yields so many times, a frame of
    // giving up is painted.
    void Then(std::function<void()> act, int yields = 0) {
        if (yields) desktop.yieldsLeft = yields;
        meanwhile.push_back(std::move(act));
    }
    // The desktop asks once for each box and dialog.
    void OfferModal() {
        desktop.whileModal = [this] { OfferModal(), desktop.occasion("it is open"); };
    }
    void Occasion(const std::string& which) {
        transcript.Step("-- " + which, [] {});
        if (which == "a frame" && !main.Busy()) return;  // of the board that is won
        for (auto& act : std::exchange(meanwhile, {})) which == "a frame" ? desktop.PostInput(act) : act();
    }
    State Seen() {
        State now = play.Snapshot();
        for (Form* form : desktop.shown)
            if (dynamic_cast<frmThumbs*>(form)) Describe(*form, now);
        std::string& asked = now["asked"] = play.Sounds();
        for (const std::string& entry : std::exchange(desktop.log, {})) asked += entry + "; ";
        for (const std::string& form : std::exchange(desktop.skinned, {})) asked += "skin " + form + "; ";
        for (const auto& box : std::exchange(desktop.boxes, {})) asked += std::to_string(box.style) + " " + box.title;
        for (const auto& request : std::exchange(desktop.fileRequests, {}))
            asked += request.folder + " " + std::to_string(request.filterIndex);
        for (auto& entry : now) entry.second = Short(entry.second);
        return now;
    }
    // Without the folder, which is called otherwise at every run.
    std::string Short(std::string text) const {
        for (size_t at; (at = text.find(play.folder.Path())) != std::string::npos;)
            text.replace(at, play.folder.Path().size(), "~");
        return text;
    }
    std::string Read(const std::string& name) const { return Short(play.folder.Read(name)); }

    // A game of that grid, all upright and apart.
    void Deal(int cols, int rows, int16_t level) {
        play.StartGrid(cols, rows, level);
        for (PieceRec& piece : PuzzleModule::Pieces) {
            play.Turn(piece.Row, piece.Col, 0);
            play.Put(piece.Row, piece.Col, 11 + piece.Col * 132, 11 + piece.Row * 132);
        }
    }
    void Grab(int row, int col) { play.Press(pointer = play.Middle(row, col)); }
    void Move(Spot to) { play.Move(pointer = to); }
    void Release() { play.Release(pointer); }
    // With the hand on the bare board.
    void Pan(Spot from, Spot to) { play.Press(from), Move(to), Release(); }
    void Scroll(int x, int y) { main.HScroll1.DeliverValue(x, false), main.VScroll1.DeliverValue(y, false); }
    void Panel() { main.Picture1.DeliverMouseDown(1, 0, 1, 1), main.imgMaster.DeliverMouseDown(1, 0, 1, 1); }
    void Answer(const std::string& file) { desktop.fileAnswers.push_back(play.folder / file); }
    void Drop(const std::string& file) { desktop.shown.back()->DeliverFile(play.folder / file); }
    // Are found at a new start.
    void Settings(const std::string& line) {
        play.folder.Write("config.ini", "[SETUP]\n" + line + "\n"), play.folder.Write("Puzzle.skn", "*{}");
        main.Form_Load();
    }
    void AddPicture(const std::string& name, Size natural, double seconds = 0) {
        const auto make = [this, seconds](Size size) { return desktop.Advance(seconds), PatternSurface(size); };
        desktop.pictures[play.folder.Write(name, std::string(3000, 'x'))] = {natural, make};
    }
    frmThumbs& Dialog() { return dynamic_cast<frmThumbs&>(*desktop.shown.back()); }
    void Open(const std::string& name) { Dialog().Dir1.SetPath(play.folder / name); }
    void Click(float x, float y) {
        CellSheet& sheet = Dialog().ThumbsCtl1.picInterior;
        sheet.DeliverMouseDown(1, 0, x, y), sheet.DeliverMouseUp(1, 0, x, y);
    }
    void Twice() { Dialog().ThumbsCtl1.picInterior.DeliverDblClick(60, 60); }
    void Ok() { Dialog().Command1.DeliverClick(); }

    GameFixture play{std::make_unique<OccasionsDesktop>(Size{480, 360})};
    OccasionsDesktop& desktop = static_cast<OccasionsDesktop&>(play.desktop);
    frmMain& main = play.main;
    Spot pointer{0, 0};
    std::vector<std::function<void()>> meanwhile;
    Transcript transcript;
};

#define THEN(...) Then(STEP(__VA_ARGS__))
