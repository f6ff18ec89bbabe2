// A player without sense or patience, on the desktop without a screen: does anything that the window in front takes, at
// any moment the program lets events in, within its own yields too.
#pragma once
#include <cstdio>
#include <cstdlib>
#include <deque>
#include <random>

#include "platform/controls/cell_sheet.h"
#include "platform/controls/folder_lists.h"
#include "platform/controls/scroll_bar.h"
#include "platform/controls/simple_controls.h"
#include "tests/support/game_fixture.h"

using namespace PuzzleModule;

// When events come: at a yield, when a window stands, when a box or a file dialog is open.
enum class At { Yield, Window, Box };

// Three screens, each at densities 1 to 3. Its yields, dialogs and boxes let a player act.
class OpenDesktop : public HeadlessDesktop {
public:
    std::function<void(At)> occasion = [](At) {};

    explicit OpenDesktop(uint32_t seed)
        : HeadlessDesktop(std::vector<Size>{{640, 480}, {1024, 600}, {480, 700}}[seed % 3]) {
        scale = 1 + seed / 3 % 3;
        OfferBox();
    }
    void DoEvents(Yield yield) override {
        HeadlessDesktop::DoEvents(yield);
        if (yield == Yield::Everything) occasion(At::Yield);
    }
    // What is still open afterwards is closed.
    void RunModal(Form& form) override {
        form.OnActivate = [this, &form, activate = form.OnActivate, stands = false]() mutable {
            if (activate) activate();
            if (!std::exchange(stands, true))
                Post([this, &form] {
                    if (shown.back() == &form) occasion(At::Window);
                    if (shown.back() == &form) form.DeliverClose();
                });
        };
        HeadlessDesktop::RunModal(form);
    }
    // The desktop asks once for each.
    void OfferBox() {
        whileModal = [this] { OfferBox(), occasion(At::Box); };
    }
};

// One run of the program: a window, a folder with pictures of all kinds, games.
class Player {
public:
    struct Event {
        double weight;  // how often it is done, among the others
        std::string name;
        std::function<void()> run;
    };
    GameFixture play;
    OpenDesktop& desktop = static_cast<OpenDesktop&>(play.desktop);
    frmMain& main = play.main;
    int steps = 0, boards = 0;      // done, and compared
    std::deque<std::string> notes;  // of what was done last, newest behind

    explicit Player(uint32_t seed) : play(std::make_unique<OpenDesktop>(seed)), random_(seed) {
        const TempFolder& folder = play.folder;
        desktop.volumes = {{"/", "/"}, {folder.Path(), "jogo"}};
        for (const Size size : {Size{320, 240}, {240, 320}, {1200, 300}, {640, 480}, {30, 20}, {50, 900}, {1, 1}})
            for (const char* under : {"Imagens/", "Outra/"}) {
                const int variant = int(pictures_.size());
                const std::string name = under + std::to_string(variant) + (variant % 3 ? ".jpg" : ".BMP");
                pictures_.push_back(play.AddPicture(name, size, variant));
            }
        folder.Write("Imagens/no picture.gif", "not at all");
        folder.MakeFolder("Imagens/folder.jpg");
        folders_ = {folder / "Imagens", folder / "Outra", folder.MakeFolder("Vazia"), folder / "fehlt"};
        games_ = {folder.Write("Save/broken.pzl", "12\r\nx\r\n"), folder / "Save", folder / "fehlt/x.pzl"};
        for (const char* name : {"1.pzl", "2.pzl", "3.pzl", "4.pzl"}) games_.push_back(folder / "Save/" + name);
        desktop.occasion = [this](At at) { Occasion(at); };
    }

    // What can be done now. Boxes have no window: nothing but the first three reaches the program while one is open.
    std::vector<Event> Events(At at) {
        std::vector<Event> events{{2, "tick", [this] { desktop.Advance(Any(40) / 10.0); }},
                                  {1, "resize",
                                   [this] {
                                       main.DeliverResize({100 + Any(1200), 60 + Any(900)});
                                   }},
                                  {1, "state", [this] { main.DeliverState(WindowState(Any(3))); }}};
        Form& front = *desktop.shown.back();
        if (at == At::Box) return events;
        events.push_back({&front == &main ? 0.1 : 1, "close box", [&front] { front.DeliverClose(); }});
        events.push_back({1, "key", [this, &front] { front.DeliverKeyDown(Key(Any(9))); }});
        events.push_back({1, "activation", [&front] { front.DeliverActivate(); }});
        events.push_back({1, "dropped game", [this, &front] { stale_ = true, front.DeliverFile(AnyOf(games_)); }});
        events.push_back({1, "dropped picture", [this, &front] { front.DeliverFile(AnyOf(pictures_)); }});
        AddControl(front, events);
        AddCommands(front.Menus, events);
        // Leads to a win now and then, which random hands would never reach.
        if (&front == &main && GameRunning && !main.Busy() && PickedPiece < 0)
            events.push_back({1, "solve", [this] { play.Win(); }});
        return events;
    }

    // With answers to whatever may be asked.
    void Do(const Event& event) {
        notes.push_back(std::string(size_t(2 * nested_), ' ') + event.name);
        if (notes.size() > 60) notes.pop_front();
        desktop.boxAnswers.assign(1, Chance(50) ? MsgBoxResult::Yes : MsgBoxResult::No);
        desktop.fileAnswers.assign(1, Chance(10) ? std::nullopt : std::optional(AnyOf(games_)));
        AnswerColor(Chance(50) ? std::nullopt : std::optional(Color(random_() & 0xFFFFFF)));
        event.run();
    }

    // One thing the player does, with all it leads to. False if that ends the program.
    bool Step() {
        ++steps;
        try {
            DoAny(At::Yield);
        } catch (const HeadlessDesktop::ProgramEnded&) {
            return false;
        }
        Require(!main.Busy() && desktop.shown.size() == 1, "something is still under way");
        Require(GameRunning || !main.Timer1.Enabled(), "the clock runs without a game");
        Require(main.Pointer() == MousePointer::Default && main.picScreen.Enabled(), "the board is dead");
        if (steps % 20 == 0) CheckBoard();
        desktop.log.clear(), desktop.boxes.clear(), desktop.fileRequests.clear(), desktop.sounds.clear();
        desktop.skinned.clear(), desktop.pages.clear();
        return true;
    }

    void CheckHand(At at) const {
        Require(PickedPiece == -1 || (PickedPiece == 0 && GameRunning), "a piece is held that is not on top");
        Require(PickedPiece == -1 || at == At::Yield, "a piece is held while a window or a question is open");
        const bool atPlay = GameRunning && !main.Busy() && desktop.shown.back() == &main;
        Require(!atPlay || std::as_const(main.Surfaces).picPat[0].StorageBounds().width == TileSize,
                "the sizes are those of another game");
    }

    // With no button down, no piece follows the pointer.
    void ComeToRest() {
        for (const int16_t button : {int16_t(2), int16_t(4), int16_t(1)}) play.Release({50, 50}, button);
        const std::vector<PieceRec> before = Pieces;
        play.Move({90, 70}, 0), play.Move({30, 40}, 0);
        Require(PickedPiece == -1 && before == std::as_const(Pieces), "a piece is glued to the pointer");
        stale_ = true;
        CheckBoard();
    }

private:
    int Any(size_t below) { return int(random_() % below); }
    bool Chance(int inHundred) { return Any(100) < inHundred; }
    const std::string& AnyOf(const std::vector<std::string>& list) { return list[size_t(Any(list.size()))]; }
    int16_t AnyButton() { return Chance(80) ? 1 : Chance(80) ? 2 : 4; }
    // On some piece, more often than not.
    GameFixture::Spot AnySpot() {
        if (Pieces.empty() || Chance(25)) return {float(Any(1800) - 100), float(Any(1500) - 100)};
        const PieceRec& piece = std::as_const(Pieces)[size_t(Any(std::as_const(Pieces).size()))];
        return {float(piece.X + Any(size_t(TileSize))), float(piece.Y + Any(size_t(TileSize)))};
    }
    void AnswerColor(std::optional<Color> color) {
        desktop.colorAnswers.assign(1, [color](Color, std::span<Color, 16> custom) {
            custom[3] = color.value_or(0);
            return color;
        });
    }

    void Occasion(At at) {
        CheckHand(at);
        if (nested_ >= 3 || (at == At::Yield && !Chance(20))) return;
        ++nested_;
        const Form* const form = desktop.shown.back();
        for (int left = at == At::Window ? Any(12) : 1; left > 0 && form == desktop.shown.back(); --left) DoAny(at);
        --nested_;
    }
    void DoAny(At at) {
        const std::vector<Event> events = Events(at);
        std::vector<double> weights;
        for (const Event& event : events) weights.push_back(event.weight);
        Do(events[std::discrete_distribution<size_t>(weights.begin(), weights.end())(random_)]);
        if (at != At::Box) desktop.RunPending();
    }

    // What a control and those within take.
    void AddControl(Control& control, std::vector<Event>& events) {
        if (!AcceptsInput(control)) return;
        const auto add = [&](double weight, const char* what, std::function<void()> run) {
            events.push_back({weight, control.Name() + what, run});
        };
        if (auto* button = dynamic_cast<CommandButton*>(&control)) add(1, "", [=] { button->DeliverClick(); });
        if (auto* label = dynamic_cast<Label*>(&control)) add(0.2, "", [=] { label->DeliverClick(); });
        if (auto* image = dynamic_cast<Image*>(&control)) add(0.5, "", [=] { image->DeliverMouseDown(1, 0, 5, 5); });
        if (auto* bar = dynamic_cast<ScrollBar*>(&control))
            add(2, "", [=, this] { bar->DeliverValue(bar->Min() + Any(size_t(bar->Max() + 1)), Chance(30)); });
        if (auto* list = dynamic_cast<DriveListBox*>(&control))
            add(2, "", [=, this] { list->DeliverChoice(size_t(Any(3))); });
        if (auto* list = dynamic_cast<DirListBox*>(&control)) {
            add(2, " opens", [=, this] { list->DeliverOpen(size_t(Any(list->Entries().size() + 1))); });
            add(2, " elsewhere", [=, this] { list->SetPath(AnyOf(folders_)); });
        }
        if (auto* sheet = dynamic_cast<CellSheet*>(&control)) {
            add(2, " wheel", [=, this] { sheet->DeliverWheel({0, (Any(7) - 3) / 2.0}); });
            if (const size_t count = size_t(sheet->UpperBound())) {
                add(4, " click", [=, this] { sheet->FigureClick(1 + Any(count)); });
                add(2, " double click", [=, this] { sheet->FigureDblClick(1 + Any(count)); });
            }
        }
        if (&control == &main.picScreen) {
            add(14, " press", [this] { play.Press(AnySpot(), AnyButton()); });
            add(20, " move", [this] { play.Move(AnySpot()); });
            add(10, " release", [this] { play.Release(AnySpot(), AnyButton()); });
            add(8, " turn", [this] { play.Click({float(main.LastX), float(main.LastY)}, 2); });
            add(2, " double click", [this] { main.picScreen.DeliverDblClick(); });
            add(2, " wheel", [this] { play.Wheel((Any(9) - 4) / 2.0, (Any(9) - 4) / 2.0); });
        } else if (auto* box = dynamic_cast<PictureBox*>(&control))
            add(1, "", [=] { box->DeliverMouseDown(1, 0, 5, 5), box->DeliverMouseUp(1, 0, 5, 5); });
        for (Control* child : control.Children()) AddControl(*child, events);
    }
    // By the menu, which opens first, and by its key.
    void AddCommands(MenuItem& menu, std::vector<Event>& events) {
        for (MenuItem& item : menu.Items()) {
            AddCommands(item, events);
            if (!item.Click || !item.Items().empty()) continue;
            const double weight = item.Name() == "mnuExit" ? 0.1 : 1;
            events.push_back({weight, item.Name(), [&] { stale_ = true, play.Menu(item.Name()); }});
            if (item.Key() != Shortcut{})
                events.push_back({weight / 2, item.Name() + " by key", [&] { stale_ = true, item.DeliverClick(); }});
        }
    }

    // Says what is wrong and what was done before, and ends the program.
    void Require(bool held, const char* what) const {
        if (held) return;
        std::fprintf(stderr, "BROKEN at step %d: %s\nwhat was done, oldest first:\n", steps, what);
        for (const std::string& entry : notes) std::fprintf(stderr, "  %s\n", entry.c_str());
        std::abort();
    }
    // Against the literal model. Saving sorts the pieces, failing clears the board, a move shown is framed: after a
    // command it is composed first, as for another colour.
    void CheckBoard() {
        if (PickedPiece >= 0) return;
        if (std::exchange(stale_, false)) {
            AnswerColor(ToColor(main.Surfaces.picBG.Background()));
            nested_ += 3;  // it is not the player who does that
            main.mnuBackground_Click();
            nested_ -= 3;
        }
        Require(play.ShowsThePieces(), "the board is another than the model's");
        ++boards;
    }

    std::mt19937 random_;
    int nested_ = 0;
    bool stale_ = true;  // nothing is composed before the first game
    std::vector<std::string> pictures_, folders_, games_;
};
