#include "tests/rough/player.h"

#include <cstdio>
#include <cstdlib>

using namespace PuzzleModule;

namespace {

std::unique_ptr<OpenDesktop> AnyDesktop(uint32_t seed) {
    constexpr Size Screens[] = {{640, 480}, {1024, 600}, {480, 700}};
    auto desktop = std::make_unique<OpenDesktop>(Screens[seed % std::size(Screens)]);
    desktop->occasion = [](OpenDesktop::At) {};
    desktop->scale = int(1 + seed / std::size(Screens) % 3);
    return desktop;
}

}  // namespace

Player::Player(uint32_t seed) : play(AnyDesktop(seed)), random_(seed) {
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

// Says what is wrong and what was done before, and ends the program.
void Player::Require(bool held, const char* what) const {
    if (held) return;
    std::fprintf(stderr, "BROKEN at step %d: %s\nwhat was done, oldest first:\n", steps, what);
    for (const std::string& entry : notes) std::fprintf(stderr, "  %s\n", entry.c_str());
    std::abort();
}

// --- What can be done ------------------------------------------------------------------------

// Boxes have no window: nothing but the first three reaches the program while one is open.
std::vector<Player::Event> Player::Events(At at) {
    std::vector<Event> events{{2, "tick", [this] { desktop.Advance(Any(40) / 10.0); }},
                              {1, "resize",
                               [this] {
                                   main.DeliverResize({100 + Any(1200), 60 + Any(900)});
                               }},
                              {1, "state", [this] { main.DeliverState(WindowState(Any(3))); }}};
    if (at == At::Box || desktop.shown.empty()) return events;
    Form& front = *desktop.shown.back();
    if (&front == &main && desktop.modals > 0) return events;  // one that is hidden, its routines still running
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

// What it takes, and those within.
void Player::AddControl(Control& control, std::vector<Event>& events) {
    if (!AcceptsInput(control)) return;
    const auto add = [&](double weight, const char* what, auto run) {
        events.push_back({weight, control.Name() + what, run});
    };
    if (auto* button = dynamic_cast<CommandButton*>(&control)) add(1, "", [button] { button->DeliverClick(); });
    if (auto* label = dynamic_cast<Label*>(&control); label && label->Click)
        add(1, "", [label] { label->DeliverClick(); });
    if (auto* image = dynamic_cast<Image*>(&control)) add(0.5, "", [image] { image->DeliverMouseDown(1, 0, 5, 5); });
    if (auto* list = dynamic_cast<DriveListBox*>(&control))
        add(2, "", [=, this] { list->DeliverChoice(size_t(Any(3))); });
    if (auto* list = dynamic_cast<DirListBox*>(&control)) {
        add(2, " opens one", [=, this] { list->DeliverOpen(size_t(Any(list->Entries().size() + 1))); });
        add(2, " elsewhere", [=, this] { (void)list->SetPath(AnyOf(folders_)); });
    }
    if (auto* bar = dynamic_cast<ScrollBar*>(&control))
        add(2, "", [=, this] {
            bar->DeliverValue(bar->Min() + Any(size_t(bar->Max() - bar->Min() + 200)) - 100, Chance(30));
        });
    if (auto* sheet = dynamic_cast<CellSheet*>(&control)) {
        add(2, " wheel", [=, this] { sheet->DeliverWheel({0, (Any(7) - 3) / 2.0}); });
        const size_t count = size_t(sheet->UpperBound());
        if (count) add(4, " click", [=, this] { sheet->FigureClick(1 + Any(count)); });
        if (count) add(2, " double click", [=, this] { sheet->FigureDblClick(1 + Any(count)); });
    }
    if (auto* box = dynamic_cast<PictureBox*>(&control)) AddBox(*box, events);
    for (Control* child : control.Children()) AddControl(*child, events);
}

void Player::AddBox(PictureBox& box, std::vector<Event>& events) {
    const double often = &box == &main.picScreen ? 1 : 0.1;
    const auto add = [&](double weight, const char* what, auto run) {
        events.push_back({often * weight, box.Name() + what, run});
    };
    constexpr auto Button = [](int chance) { return int16_t(chance < 10 ? 1 : chance < 12 ? 2 : 4); };
    const auto at = [this](auto deliver) {
        const auto [x, y] = AnySpot();
        deliver(x, y);
    };
    add(14, " press",
        [=, this, &box] { at([&](float x, float y) { box.DeliverMouseDown(Button(Any(13)), 0, x, y); }); });
    add(20, " move", [=, this, &box] { at([&](float x, float y) { box.DeliverMouseMove(1, 0, x, y); }); });
    add(10, " release",
        [=, this, &box] { at([&](float x, float y) { box.DeliverMouseUp(Button(Any(13)), 0, x, y); }); });
    add(8, " turn", [this, &box] {
        for (const auto deliver : {&PictureBox::DeliverMouseDown, &PictureBox::DeliverMouseUp})
            (box.*deliver)(2, 0, main.LastX, main.LastY);
    });
    add(2, " double click", [&box] { box.DeliverDblClick(); });
    add(2, " wheel", [this, &box] { box.DeliverWheel({(Any(9) - 4) / 2.0, (Any(9) - 4) / 2.0}); });
}

// By the menu, which opens first, and by its key.
void Player::AddCommands(MenuItem& menu, std::vector<Event>& events) {
    for (MenuItem& item : menu.Items()) {
        AddCommands(item, events);
        if (!item.Click || !item.Items().empty()) continue;
        const double weight = item.Name() == "mnuExit" ? 0.1 : 1;
        events.push_back({weight, item.Name(), [this, &item] { stale_ = true, play.Menu(item.Name()); }});
        if (item.Key() != Shortcut{})
            events.push_back(
                {weight / 2, item.Name() + " by key", [this, &item] { stale_ = true, item.DeliverClick(); }});
    }
}

// On some piece, more often than not.
GameFixture::Spot Player::AnySpot() {
    if (!Pieces.empty() && Chance(75)) {
        const PieceRec& piece = AnyOf(Pieces);
        return {float(piece.X + Any(size_t(TileSize))), float(piece.Y + Any(size_t(TileSize)))};
    }
    return {float(Any(1800) - 100), float(Any(1500) - 100)};
}

// To whatever may be asked.
void Player::ReadyAnswers() {
    desktop.boxAnswers.assign(1, Chance(50) ? MsgBoxResult::Yes : MsgBoxResult::No);
    desktop.fileAnswers.assign(1, Chance(10) ? std::nullopt : std::optional(AnyOf(games_)));
    const auto color = Chance(50) ? std::nullopt : std::optional(Color(random_() & 0xFFFFFF));
    desktop.colorAnswers.assign(1, [color](Color, std::span<Color, 16> custom) {
        custom[3] = color.value_or(0);
        return color;
    });
}

// --- How the player goes on ------------------------------------------------------------------

const Player::Event& Player::AnyOf(const std::vector<Event>& events) {
    std::vector<double> weights;
    for (const Event& event : events) weights.push_back(event.weight);
    return events[std::discrete_distribution<size_t>(weights.begin(), weights.end())(random_)];
}

void Player::Do(const Event& event) {
    notes.push_back(std::string(size_t(2 * nested_), ' ') + event.name);
    if (notes.size() > 60) notes.pop_front();
    ReadyAnswers();
    event.run();
}

void Player::Occasion(At at) {
    CheckState(at);
    if (nested_ >= 3 || (at == At::Yield && !Chance(20))) return;
    ++nested_;
    Form* const form = desktop.shown.empty() ? nullptr : desktop.shown.back();
    Do(AnyOf(Events(at)));
    for (int left = at == At::Window ? Any(11) : 0; left > 0 && form && form == desktop.shown.back(); --left)
        desktop.RunPending(), Do(AnyOf(Events(at)));
    --nested_;
}

bool Player::Step() {
    ++steps;
    try {
        Do(AnyOf(Events(At::Yield)));
        desktop.RunPending();
    } catch (const HeadlessDesktop::ProgramEnded&) {
        return false;
    }
    Require(!main.Busy() && desktop.shown.size() == 1, "something is still under way");
    Require(GameRunning || !main.Timer1.Enabled(), "the clock runs without a game");  // a failed start stops it, too
    Require(main.Pointer() == MousePointer::Default && main.picScreen.Enabled(), "the board is dead");
    if (steps % 20 == 0) CheckBoard();
    desktop.log.clear(), desktop.boxes.clear(), desktop.fileRequests.clear(), desktop.sounds.clear();
    desktop.skinned.clear(), desktop.pages.clear();
    return true;
}

// --- What must hold --------------------------------------------------------------------------

void Player::CheckState(At at) const {
    Require(PickedPiece == -1 || (PickedPiece == 0 && GameRunning), "a piece is held that is not on top");
    Require(PickedPiece == -1 || at == At::Yield, "a piece is held while a window or a question is open");
}

void Player::ComeToRest() {
    for (const int16_t button : {int16_t(2), int16_t(4), int16_t(1)}) play.Release({50, 50}, button);
    const std::vector<PieceRec> before(Pieces.begin(), Pieces.end());
    for (const GameFixture::Spot at : {GameFixture::Spot{90, 70}, {30, 40}}) play.Move(at, 0);
    Require(PickedPiece == -1 && std::ranges::equal(before, Pieces), "a piece is glued to the pointer");
    stale_ = true;
    CheckBoard();
}

// Saving sorts the pieces, failing clears the board, a move shown is framed: it is composed first, as for a colour.
void Player::CheckBoard() {
    if (PickedPiece >= 0) return;
    if (std::exchange(stale_, false)) {
        const Color ground = ToColor(main.Surfaces.picBG.Background());
        desktop.colorAnswers.assign(1, [ground](Color, std::span<Color, 16>) { return std::optional(ground); });
        nested_ += 3;  // it is not the player who does that
        main.mnuBackground_Click();
        nested_ -= 3;
    }
    Require(play.ShowsThePieces(), "the board is another than the model's");
    ++boards;
}
