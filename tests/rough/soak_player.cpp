// What the player without sense does, and what must hold after each thing.
#include "tests/rough/soak_player.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>

#include "browser/frm_thumbs.h"
#include "core/board.h"
#include "core/mask_strip.h"
#include "play/rules.h"
#include "shell/form1.h"
#include "shell/frm_about.h"
#include "tests/reference/literal_board.h"

using namespace PuzzleModule;

namespace {

constexpr size_t Remembered = 60;
constexpr int DeepestYield = 3;
constexpr Pixel Yellow = 0xFFFFFF00u;
constexpr int16_t Levels[] = {0, 1, 3, 4, 5};

Size AnyScreen(uint32_t seed) {
    constexpr Size Screens[] = {{640, 480}, {800, 600}, {1024, 600}, {480, 700}};
    return Screens[seed % std::size(Screens)];
}

void Require(const Soak& soak, bool held, const char* what) {
    if (!held) Broken(soak, what);
}

}  // namespace

void Broken(const Soak& soak, const std::string& what) {
    std::fprintf(stderr, "BROKEN at step %d: %s\nwhat was done, oldest first:\n", soak.steps, what.c_str());
    for (const std::string& entry : soak.last) std::fprintf(stderr, "  %s\n", entry.c_str());
    std::abort();
}

Soak::Environment::Environment(const TempFolder& folder) {
    setenv("XDG_CONFIG_HOME", (folder / "settings").c_str(), 1);
    ResetState();
}

Soak::Soak(uint32_t seed, bool verbose)
    : random_(seed), verbose_(verbose), environment_(folder_), desktop_(AnyScreen(seed)) {
    desktop_.programPath = folder_ / "fento-lira-master";
    desktop_.volumes = {{"/", "/"}, {folder_.Path(), "jogo"}};
    MakePictures();
    desktop_.onYield = [this] {
        if (nested_ >= DeepestYield || !Chance(20)) return;
        ++nested_;
        if (Form* modal = desktop_.TopModal())
            ActOnDialog(*modal);
        else
            Act();
        --nested_;
    };
    desktop_.onModal = [this](Form& form) { ActOnDialog(form); };
    desktop_.modalEvents = [this] { return Any(12); };
    desktop_.beforeAnswer = [this] {
        Note("an answer is awaited");
        Require(*this, PickedPiece == -1, "a piece is held while a question is open");
        desktop_.Advance(Any(3));
        CheckState(false);
    };
    main_.Load();
    main_.Show();
    desktop_.RunPending();
}

void Soak::MakePictures() {
    const Size sizes[] = {{320, 240}, {240, 320}, {1200, 300}, {640, 480}, {30, 20}, {50, 900}, {400, 399}, {1, 1}};
    folders_ = {folder_ / "Imagens", folder_ / "Outra", folder_ / "Vazia", folder_ / "fehlt"};
    int variant = 0;
    for (const char* under : {"Imagens/", "Outra/"})
        for (const Size size : sizes) {
            ++variant;
            const std::string name = under + std::to_string(variant) + (variant % 2 ? ".jpg" : ".BMP");
            desktop_.pictures[folder_.Write(name, "made by the desktop")] = {
                size, [variant](Size asked) { return PatternSurface(asked, variant); }};
        }
    folder_.Write("Imagens/no picture.gif", "not at all");
    folder_.MakeFolder("Imagens/folder.jpg");
    folder_.MakeFolder("Vazia");
    saves_ = {folder_.Write("Save/broken.pzl", "12\r\nx\r\n"), folder_ / "Save/missing.pzl", folder_ / "Save"};
}

void Soak::Note(const std::string& what) {
    last.push_back(std::string(size_t(2 * nested_), ' ') + what);
    if (last.size() > Remembered) last.pop_front();
    if (verbose_) std::fprintf(stderr, "%d %s\n", steps, last.back().c_str());
}

const std::vector<Soak::Action>& Soak::Actions() {
    static const std::vector<Action> actions = {
        {14, "press", &Soak::Press},      {14, "move", &Soak::Move},     {10, "release", &Soak::Release},
        {8, "turn", &Soak::Turn},         {12, "carry", &Soak::Carry},   {1, "far out", &Soak::PressFarOut},
        {1, "solve", &Soak::SolveNearly}, {4, "scroll", &Soak::Scroll},  {2, "wheel", &Soak::Wheel},
        {2, "resize", &Soak::Resize},     {4, "wait", &Soak::Wait},      {1, "panel", &Soak::Panel},
        {3, "new game", &Soak::NewGame},  {6, "menu", &Soak::Menu},      {2, "save", &Soak::SaveGame},
        {3, "load", &Soak::LoadGame},     {1, "give up", &Soak::GiveUp},
    };
    return actions;
}

void Soak::Step() {
    ++steps;
    try {
        if (Any(400) == 0)
            Exit();
        else
            Act();
        desktop_.RunPending();
    } catch (const HeadlessDesktop::ProgramEnded&) {
        ended_ = true;
        return;
    }
    CheckState(true);
    desktop_.log.clear();
    desktop_.boxes.clear();
    desktop_.fileRequests.clear();
    desktop_.sounds.clear();
    desktop_.skinned.clear();
    desktop_.pages.clear();
}

void Soak::Act() {
    static const int all = [] {
        int sum = 0;
        for (const Action& action : Actions()) sum += action.weight;
        return sum;
    }();
    int at = Any(all);
    for (const Action& action : Actions()) {
        at -= action.weight;
        if (at >= 0) continue;
        Note(action.name);
        (this->*action.run)();
        return;
    }
}

// --- Mouse ---------------------------------------------------------------------------------

// On some piece, more often than not.
GameFixture::Spot Soak::AnySpot() {
    if (!Pieces.empty() && Chance(75)) {
        const PieceRec& piece = Pieces[size_t(Any(int(Pieces.size())))];
        const int side = std::max<int>(TileSize, 1);
        return {float(piece.X + Any(side)), float(piece.Y + Any(side))};
    }
    return {float(Any(main_.picScreen.Image.Width() + 200) - 100),
            float(Any(main_.picScreen.Image.Height() + 200) - 100)};
}

void Soak::Press() {
    const GameFixture::Spot at = AnySpot();
    main_.picScreen.DeliverMouseDown(Chance(80) ? 1 : Chance(50) ? 2 : 4, 0, at.x, at.y);
}

void Soak::Move() {
    for (int n = 1 + Any(3); n > 0; --n) {
        const GameFixture::Spot at = AnySpot();
        main_.picScreen.DeliverMouseMove(1, 0, at.x, at.y);
    }
}

void Soak::Release() {
    const GameFixture::Spot at = AnySpot();
    main_.picScreen.DeliverMouseUp(Chance(80) ? 1 : 2, 0, at.x, at.y);
    if (Chance(20)) main_.picScreen.DeliverDblClick();
}

void Soak::Turn() {
    main_.picScreen.DeliverMouseDown(2, 0, main_.LastX, main_.LastY);
    main_.picScreen.DeliverMouseUp(2, 0, main_.LastX, main_.LastY);
}

// A piece to its place beside another one, or right over it.
void Soak::Carry() {
    if (Pieces.empty()) return;
    const PieceRec piece = Pieces[size_t(Any(int(Pieces.size())))], other = Pieces[size_t(Any(int(Pieces.size())))];
    const float half = float(TileSize / 2);
    const float dx = float(other.X - piece.X + (piece.Col - other.Col) * CellSize);
    const float dy = float(other.Y - piece.Y + (piece.Row - other.Row) * CellSize);
    main_.picScreen.DeliverMouseDown(1, 0, float(piece.X) + half, float(piece.Y) + half);
    for (int n = (4 - piece.Rotation) % 4; n > 0 && Chance(90); --n) Turn();
    main_.picScreen.DeliverMouseMove(1, 0, float(piece.X) + half + dx / 2, float(piece.Y) + half);
    main_.picScreen.DeliverMouseMove(1, 0, float(piece.X) + half + dx, float(piece.Y) + half + dy);
    if (Chance(90)) main_.picScreen.DeliverMouseUp(1, 0, float(piece.X) + half + dx, float(piece.Y) + half + dy);
}

// Where 16 bits end and beyond.
void Soak::PressFarOut() {
    constexpr float Far[] = {-32769, -32768, -32767.5f, 32767, 32767.5f, 32768, 1e9f, -1e9f, 0.5f};
    const float x = Far[Any(int(std::size(Far)))], y = Far[Any(int(std::size(Far)))];
    if (Chance(50)) main_.picScreen.DeliverMouseDown(1, 0, x, y);
    main_.picScreen.DeliverMouseMove(1, 0, x, y);
    if (Chance(70)) main_.picScreen.DeliverMouseUp(1, 0, x, y);
}

// Leads to a win now and then, which random hands would never reach.
void Soak::SolveNearly() {
    if (!GameRunning || main_.Busy() || PickedPiece >= 0) return;
    if (PlayToTheEnd(main_)) ++wins;
}

// --- Window --------------------------------------------------------------------------------

void Soak::Scroll() {
    ScrollBar& bar = Chance(50) ? main_.HScroll1 : main_.VScroll1;
    bar.DeliverValue(bar.Min() + (bar.Max() - bar.Min()) * Any(101) / 100, Chance(30));
}

void Soak::Wheel() { main_.picScreen.DeliverWheel(Any(5) - 2, Any(5) - 2); }

void Soak::Resize() {
    if (Chance(30)) return main_.DeliverState(Chance(50) ? WindowState::Normal : WindowState::Maximized);
    main_.DeliverResize({100 + Any(1200), 60 + Any(900)});
}

void Soak::Wait() { desktop_.Advance(Any(40) / 10.0); }

void Soak::Panel() {
    main_.picStatus.DeliverMouseDown(1, 0, 3, 3);
    main_.picStatus.DeliverMouseUp(1, 0, 3, 3);
}

void Soak::ClickMenu(const std::string& name) {
    for (MenuItem& top : main_.Menus.Items())
        for (MenuItem& item : top.Items()) {
            const auto choose = [&](MenuItem& chosen) {
                Note(name);
                if (Chance(80)) top.DeliverClick();
                chosen.DeliverClick();
            };
            if (item.Name() == name) return choose(item);
            for (MenuItem& below : item.Items())
                if (below.Name() == name) return choose(below);
        }
    Broken(*this, "no menu item " + name);
}

void Soak::Menu() {
    constexpr const char* Items[] = {"mnuShuffle",    "mnuHints",     "mnuSounds", "mnuStatus",
                                     "mnuBackground", "mnuHowToPlay", "mnuAbout"};
    const std::string name = Items[Any(int(std::size(Items)))];
    desktop_.boxAnswers.assign(1, Chance(50) ? MsgBoxResult::Yes : MsgBoxResult::No);
    desktop_.colorAnswers.clear();
    if (Chance(60)) {
        const Color color = Chance(10) ? -1 : Color(random_() & 0xFFFFFF);
        desktop_.colorAnswers.push_back([color](Color, std::span<Color, 16> custom) {
            custom[3] = color;
            return color < 0 ? std::nullopt : std::optional<Color>(color);
        });
    }
    framed_ = framed_ || name == "mnuHints";
    ClickMenu(name);
}

// --- Games ---------------------------------------------------------------------------------

void Soak::NewGame() {
    stale_ = true;
    const uint64_t before = main_.Surfaces.picPat.Generation();
    ClickMenu("mnuNewGame(" + std::to_string(Levels[Any(int(std::size(Levels)))]) + ")");
    games += main_.Surfaces.picPat.Generation() != before;
}

void Soak::SaveGame() {
    stale_ = true;
    desktop_.fileAnswers.clear();
    if (Chance(80)) {
        const std::string path = folder_ / ("Save/jogo " + std::to_string(Any(4)) + (Chance(50) ? ".pzl" : ""));
        desktop_.fileAnswers.push_back(Chance(10) ? folder_ / "no folder/x.pzl" : path);
        saves_.push_back(path.ends_with(".pzl") ? path : path + ".pzl");
        if (saves_.size() > 20) saves_.erase(saves_.begin() + 3);
    }
    ClickMenu("mnuSaveGame");
}

void Soak::LoadGame() {
    stale_ = true;
    desktop_.fileAnswers.clear();
    if (Chance(90)) desktop_.fileAnswers.push_back(saves_[size_t(Any(int(saves_.size())))]);
    const uint64_t before = main_.Surfaces.picPat.Generation();
    ClickMenu("mnuLoadGame");
    loads += main_.Surfaces.picPat.Generation() != before;
}

void Soak::GiveUp() {
    if (Chance(60)) desktop_.onFrame = [this] { CheckState(false); };
    ClickMenu("MnDesistir");
    desktop_.onFrame = nullptr;
}

void Soak::Exit() {
    Note("exit");
    if (Chance(50))
        main_.DeliverClose();
    else
        ClickMenu("mnuExit");
}

// --- Dialogs -------------------------------------------------------------------------------

void Soak::ActOnDialog(Form& form) {
    if (!form.IsShown()) return;
    Note("in " + form.Name());
    Require(*this, PickedPiece == -1, "a piece is held while a dialog is open");
    if (Chance(10)) desktop_.Advance(Any(3));
    if (Chance(5)) return form.DeliverClose();
    if (auto* thumbs = dynamic_cast<frmThumbs*>(&form)) return ActOnThumbs(*thumbs);
    if (auto* about = dynamic_cast<FrmAbout*>(&form)) {
        if (Chance(50)) about->Label11.DeliverClick();
        if (Chance(50)) about->Command1.DeliverClick();
    } else if (auto* help = dynamic_cast<Form1*>(&form)) {
        help->Picture1.DeliverMouseDown(1, 0, 5, 5);
    }
    if (Chance(20)) main_.DeliverResize({300 + Any(700), 200 + Any(500)});
}

void Soak::ActOnThumbs(frmThumbs& dialog) {
    ThumbsCtl& thumbs = dialog.ThumbsCtl1;
    CellSheet& sheet = thumbs.picInterior;
    float x = float(Any(510)), y = float(Any(600));
    if (sheet.UpperBound() > 0 && Chance(70)) {
        const Rect figure = CellSheet::FigurePixels(sheet.At(1 + Any(sheet.UpperBound())));
        x = float(figure.x + figure.width / 2), y = float(figure.y + figure.height / 2);
    }
    switch (Any(10)) {
        case 0:
            return dialog.Command1.DeliverClick();
        case 1:
            return Chance(30) ? dialog.cmdVoltar.DeliverClick() : void();
        case 2:
            return (void)dialog.Dir1.SetPath(folders_[size_t(Any(int(folders_.size())))]);
        case 3:
            return dialog.Dir1.DeliverOpen(size_t(Any(int(dialog.Dir1.Entries().size()) + 1)));
        case 4:
            return dialog.Drive1.DeliverChoice(size_t(Any(3)));
        case 5:
            return thumbs.scrThumbs.DeliverValue(Any(40000) - 2000, Chance(50));
        case 6:
            return sheet.DeliverWheel(0, Any(7) - 3);
        case 7:
            return dialog.DeliverActivate();
        default:
            sheet.DeliverMouseDown(1, 0, x, y);
            if (Chance(80)) sheet.DeliverMouseUp(1, 0, x, y);
            if (Chance(40) && dialog.IsShown()) sheet.DeliverDblClick(x, y);
    }
}

// --- What must hold ------------------------------------------------------------------------

void Soak::CheckState(bool outermost) {
    const int n = int(Pieces.size());
    Require(*this, PickedPiece == -1 || (PickedPiece == 0 && n > 0 && GameRunning),
            "a piece is held that is not on top");
    Require(*this, !GameRunning || n >= 4, "a game runs without pieces");
    std::vector<bool> seen(size_t(n), false);
    for (const PieceRec& piece : Pieces) {
        Require(*this, piece.PieceId >= 0 && piece.PieceId < n && !seen[size_t(piece.PieceId)],
                "PieceIds are no permutation");
        seen[size_t(piece.PieceId)] = true;
        Require(*this, piece.Rotation >= 0 && piece.Rotation < 4 && piece.MaskIndex >= 0 && piece.MaskIndex < 19,
                "an outline that does not exist");
    }
    Require(*this, ElapsedSeconds >= 0, "time runs backwards");
    if (!outermost) return;

    Require(*this, !main_.Busy() && !ThumbsOpen && !desktop_.TopModal(), "something is still under way");
    Require(*this, main_.Timer1.Enabled() == GameRunning, "the clock does not follow the game");
    Require(*this, main_.Pointer() == MousePointer::Default, "the pointer stays an hourglass");
    Require(*this, main_.picScreen.Enabled(), "the board is dead");
    Require(*this,
            main_.picScreen.Image.Width() == main_.Surfaces.picBG.Width() &&
                main_.picScreen.Image.Height() == main_.Surfaces.picBG.Height(),
            "board and background differ in size");
    if (n == 0) return;
    Require(*this, int(GridCols) * GridRows == n, "the grid is not that of the pieces");
    for (const PieceRec& piece : Pieces)
        Require(*this, piece.Row * GridCols + piece.Col == piece.PieceId, "a piece has another one's cell");
    Require(*this, main_.Surfaces.picPat.UBound() == n - 1, "pieces and their surfaces differ in number");
    Require(*this,
            main_.Surfaces.picMasks[1].Width() == 19 * TileSize && main_.Surfaces.picMasks[1].Height() == TileSize,
            "the strip is of another size than the tiles");
    Require(*this,
            main_.Surfaces.picMaster.Width() == GridCols * CellSize &&
                main_.Surfaces.picMaster.Height() == GridRows * CellSize,
            "the picture does not fill the grid");
}

void Soak::CheckBoard() {
    if (stale_) {
        // Saving sorts the pieces and failing clears the board; both show at the next composition.
        if (PickedPiece >= 0) return;
        const Pixel ground = main_.Surfaces.picBG.Background();
        desktop_.colorAnswers.assign(1, [ground](Color, std::span<Color, 16>) {
            return std::optional<Color>(Rgb(ground >> 16 & 255, ground >> 8 & 255, ground & 255));
        });
        main_.mnuBackground_Click();
        stale_ = framed_ = false;
    }
    const Surface& board = main_.picScreen.Image;
    Surface expected(board.Width(), board.Height());
    reference::DrawBoard(expected, main_.Surfaces.picBG);
    bool equal = true;
    for (int y = 0; y < board.Height(); ++y)
        for (int x = 0; x < board.Width(); ++x) {
            const Pixel pixel = board.At(x, y);
            if (pixel == expected.At(x, y)) continue;
            equal = false;
            if (!framed_ || pixel != Yellow)
                Broken(*this,
                       "the board is another than the model's at " + std::to_string(x) + ", " + std::to_string(y));
        }
    framed_ = framed_ && !equal;
    ++boards;
}
