// How the player without sense goes on, and what must hold after each thing.
#include "tests/rough/soak_player.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <set>

using namespace PuzzleModule;

void SoakDesktop::DoEvents(Yield yield) {
    HeadlessDesktop::DoEvents(yield);
    if (yield == Yield::Everything) onYield();
}

void SoakDesktop::RunModal(Form& form) {
    modals.push_back(&form);
    const Handler activate = form.OnActivate;
    form.OnActivate = [this, &form, activate, stands = false]() mutable {
        if (activate) activate();
        if (std::exchange(stands, true)) return;
        Post([this, &form] {
            if (modals.empty() || modals.back() != &form) return;  // gone by now, or blocked
            if (form.IsShown()) onModal(form);
            if (form.IsShown()) form.DeliverClose();
        });
    };
    HeadlessDesktop::RunModal(form);
    form.OnActivate = activate;
    modals.pop_back();
}

namespace {

// Three screens, each at densities 1 to 3.
std::unique_ptr<SoakDesktop> AnyDesktop(uint32_t seed) {
    constexpr Size Screens[] = {{640, 480}, {1024, 600}, {480, 700}};
    auto desktop = std::make_unique<SoakDesktop>(Screens[seed % std::size(Screens)]);
    desktop->scale = int(1 + seed / std::size(Screens) % 3);
    return desktop;
}

}  // namespace

// Says what is wrong and what was done before, and ends the program.
void Soak::Require(bool held, const char* what) const {
    if (held) return;
    std::fprintf(stderr, "BROKEN at step %d: %s\nwhat was done, oldest first:\n", steps, what);
    for (const std::string& entry : last_) std::fprintf(stderr, "  %s\n", entry.c_str());
    std::abort();
}

Soak::Soak(uint32_t seed) : play(AnyDesktop(seed)), random_(seed) {
    const TempFolder& folder = play.folder;
    desktop.volumes = {{"/", "/"}, {folder.Path(), "jogo"}};
    int variant = 0;
    for (const char* under : {"Imagens/", "Outra/"})
        for (const Size size :
             {Size{320, 240}, {240, 320}, {1200, 300}, {640, 480}, {30, 20}, {50, 900}, {400, 399}, {1, 1}}) {
            ++variant;
            play.AddPicture(under + std::to_string(variant) + (variant % 2 ? ".jpg" : ".BMP"), size, variant);
        }
    folder.Write("Imagens/no picture.gif", "not at all");
    folder.MakeFolder("Imagens/folder.jpg");
    folders = {folder / "Imagens", folder / "Outra", folder.MakeFolder("Vazia"), folder / "fehlt"};
    saves = {folder.Write("Save/broken.pzl", "12\r\nx\r\n"), folder / "Save/missing.pzl", folder / "Save"};

    desktop.onYield = [this] {
        if (act) return act();
        if (nested_ >= 3 || !Chance(20)) return;
        ++nested_;
        Do(desktop.modals.empty() ? OnMain : InDialogs);
        --nested_;
    };
    desktop.onModal = [this](Form& form) {
        Require(PickedPiece == -1, "a piece is held while a dialog is open");
        if (act) return act();
        for (int left = Any(12); left > 0 && form.IsShown(); --left) Do(InDialogs), desktop.RunPending();
    };
    AwaitAnswers();
}

void Soak::AwaitAnswers() {
    desktop.whileModal = [this] {
        AwaitAnswers();
        Require(PickedPiece == -1, "a piece is held while a question is open");
        if (act) return act();
        desktop.Advance(Any(3));
        CheckState(false);
    };
}

void Soak::Note(const std::string& what) {
    last_.push_back(std::string(size_t(2 * nested_), ' ') + what);
    if (last_.size() > 60) last_.pop_front();
}

void Soak::Do(const std::vector<Event>& events) {
    double at = 0;
    for (const Event& event : events) at += event.weight;
    at *= double(random_()) / (double(std::mt19937::max()) + 1);
    auto event = events.begin();
    while ((at -= event->weight) > 0) ++event;
    Note(event->name);
    event->run(*this);
}

void Soak::Step() {
    ++steps;
    const bool ran = GameRunning;
    try {
        Do(OnMain);
        desktop.RunPending();
    } catch (const HeadlessDesktop::ProgramEnded&) {
        ended_ = true;
        return;
    }
    games += ran && !GameRunning;
    CheckState(true);
    if (steps % 20 == 0) CheckBoard();
    desktop.log.clear(), desktop.boxes.clear(), desktop.fileRequests.clear(), desktop.sounds.clear();
    desktop.skinned.clear(), desktop.pages.clear();
}

// On some piece, more often than not.
GameFixture::Spot Soak::AnySpot() {
    if (!Pieces.empty() && Chance(75)) {
        const PieceRec& piece = AnyOf(Pieces);
        return {float(piece.X + Any(TileSize)), float(piece.Y + Any(TileSize))};
    }
    const Surface& board = main.picScreen.Image;
    return {float(Any(board.Width() + 200) - 100), float(Any(board.Height() + 200) - 100)};
}

// With answers at hand for whatever it asks.
void Soak::Command(const std::string& name, bool byKey) {
    stale_ = true;
    desktop.boxAnswers.assign(1, Chance(50) ? MsgBoxResult::Yes : MsgBoxResult::No);
    const Color color = Chance(50) ? -1 : Color(random_() & 0xFFFFFF);
    desktop.colorAnswers.assign(1, [color](Color, std::span<Color, 16> custom) {
        custom[3] = color;
        return color < 0 ? std::nullopt : std::optional<Color>(color);
    });
    desktop.fileAnswers.clear();
    if (name == "mnuSaveGame" && Chance(80)) {
        const std::string path = play.folder / ("Save/jogo " + std::to_string(Any(4)));
        desktop.fileAnswers.push_back(Chance(10) ? play.folder / "no folder/x.pzl" : path);
        saves.push_back(path + ".pzl");
        if (saves.size() > 20) saves.erase(saves.begin() + 3);
    }
    if (name == "mnuLoadGame" && Chance(90)) desktop.fileAnswers.push_back(AnyOf(saves));
    byKey ? play.Key(name) : play.Menu(name);
}

// --- What must hold ------------------------------------------------------------------------

void Soak::CheckState(bool outermost) {
    const int n = int(Pieces.size());
    Require(PickedPiece == -1 || (PickedPiece == 0 && GameRunning), "a piece is held that is not on top");
    Require(!GameRunning || n >= 4, "a game runs without pieces");
    std::set<int> ids;
    for (const PieceRec& piece : Pieces) ids.insert(piece.PieceId);
    Require(int(ids.size()) == n && (n == 0 || (*ids.begin() == 0 && *ids.rbegin() == n - 1)),
            "PieceIds are no permutation");
    if (!outermost) return;
    Require(!main.Busy() && !ThumbsOpen && desktop.modals.empty(), "something is still under way");
    Require(GameRunning || !main.Timer1.Enabled(), "the clock runs without a game");  // a failed start stops it, too
    Require(main.Pointer() == MousePointer::Default && main.picScreen.Enabled(), "the board is dead");
    Require(main.picScreen.Image.Bounds() == main.Surfaces.picBG.Bounds(), "board and background differ in size");
    Require(n == 0 || (GridCols * GridRows == n && main.Surfaces.picPat.UBound() == n - 1),
            "pieces, cells and surfaces differ in number");
}

// With no button down, no piece follows the pointer.
void Soak::ComeToRest() {
    for (const int16_t button : {int16_t(2), int16_t(4), int16_t(1)}) play.Release({50, 50}, button);
    const std::vector<PieceRec> before(Pieces.begin(), Pieces.end());
    for (const GameFixture::Spot at : {GameFixture::Spot{90, 70}, {30, 40}}) play.Move(at, 0);
    Require(PickedPiece == -1 && std::ranges::equal(before, Pieces), "a piece is glued to the pointer");
    CheckState(true);
    stale_ = true;
    CheckBoard();
}

void Soak::CheckBoard() {
    if (stale_) {
        // Saving sorts the pieces, failing clears the board, a move shown is framed: the next composition tells.
        if (PickedPiece >= 0) return;
        const Color ground = ToColor(main.Surfaces.picBG.Background());
        desktop.colorAnswers.assign(1, [ground](Color, std::span<Color, 16>) { return std::optional(ground); });
        main.mnuBackground_Click();
        stale_ = false;
    }
    Require(play.ShowsThePieces(), "the board is another than the model's");
    ++boards;
}
