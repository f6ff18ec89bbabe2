// What the player without sense does, and what must hold after each thing.
#include "tests/rough/soak_player.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>

#include "browser/frm_thumbs.h"
#include "core/board/draw_board.h"
#include "core/mask_strip.h"
#include "play/rules.h"
#include "shell/form1.h"
#include "shell/frm_about.h"
#include "tests/reference/literal_board.h"

using namespace PuzzleModule;

namespace {

// Three screens, each at densities 1 to 3.
std::unique_ptr<SoakDesktop> AnyDesktop(uint32_t seed) {
    constexpr Size Screens[] = {{640, 480}, {1024, 600}, {480, 700}};
    auto desktop = std::make_unique<SoakDesktop>(Screens[seed % std::size(Screens)]);
    desktop->scale = int(1 + seed / std::size(Screens) % 3);
    return desktop;
}

bool SamePlace(const PieceRec& a, const PieceRec& b) { return a.X == b.X && a.Y == b.Y && a.PieceId == b.PieceId; }

}  // namespace

// Says what is wrong and what was done before, and ends the program.
void Soak::Require(bool held, const char* what) const {
    if (held) return;
    std::fprintf(stderr, "BROKEN at step %d: %s\nwhat was done, oldest first:\n", steps, what);
    for (const std::string& entry : last_) std::fprintf(stderr, "  %s\n", entry.c_str());
    std::abort();
}

Soak::Soak(uint32_t seed, bool verbose)
    : random_(seed),
      verbose_(verbose),
      play_(AnyDesktop(seed)),
      desktop_(static_cast<SoakDesktop&>(play_.desktop)),
      main_(play_.main),
      board_(main_.picScreen) {
    desktop_.volumes = {{"/", "/"}, {play_.folder.Path(), "jogo"}};
    MakePictures();
    desktop_.onYield = [this] {
        if (act) return act();
        if (nested_ >= 3 || !Chance(20)) return;
        ++nested_;
        if (Form* modal = desktop_.TopModal())
            ActOnDialog(*modal);
        else
            Act();
        --nested_;
    };
    desktop_.onModal = [this](Form& form) { act ? act() : ActOnDialog(form); };
    desktop_.modalEvents = [this] { return act ? 1 : Any(12); };
    desktop_.beforeAnswer = [this] {
        Note("an answer is awaited");
        Require(PickedPiece == -1, "a piece is held while a question is open");
        if (act) return act();
        desktop_.Advance(Any(3));
        CheckState(false);
    };
}

void Soak::MakePictures() {
    const Size sizes[] = {{320, 240}, {240, 320}, {1200, 300}, {640, 480}, {30, 20}, {50, 900}, {400, 399}, {1, 1}};
    int variant = 0;
    for (const char* under : {"Imagens/", "Outra/"})
        for (const Size size : sizes) {
            ++variant;
            play_.AddPicture(under + std::to_string(variant) + (variant % 2 ? ".jpg" : ".BMP"), size, variant);
        }
    const TempFolder& folder = play_.folder;
    folder.Write("Imagens/no picture.gif", "not at all");
    folder.MakeFolder("Imagens/folder.jpg");
    folders_ = {folder / "Imagens", folder / "Outra", folder.MakeFolder("Vazia"), folder / "fehlt"};
    saves_ = {folder.Write("Save/broken.pzl", "12\r\nx\r\n"), folder / "Save/missing.pzl", folder / "Save"};
}

void Soak::Note(const std::string& what) {
    last_.push_back(std::string(size_t(2 * nested_), ' ') + what);
    if (last_.size() > 60) last_.pop_front();
    if (verbose_) std::fprintf(stderr, "%d %s\n", steps, last_.back().c_str());
}

void Soak::Step() {
    ++steps;
    const bool ran = GameRunning;
    try {
        if (Any(400) == 0) {
            Note("exit");
            if (Chance(50)) main_.DeliverClose();
            ClickMenu("mnuExit");
        }
        Act();
        desktop_.RunPending();
    } catch (const HeadlessDesktop::ProgramEnded&) {
        ended_ = true;
        return;
    }
    games += ran && !GameRunning;
    CheckState(true);
    desktop_.log.clear();
    desktop_.boxes.clear();
    desktop_.fileRequests.clear();
    desktop_.sounds.clear();
    desktop_.skinned.clear();
    desktop_.pages.clear();
}

void Soak::Act() {
    struct Action {
        int weight;
        const char* name;
        std::function<void(Soak&)> run;
    };
    static const Action actions[] = {
        {14, "press",
         [](Soak& s) {
             const GameFixture::Spot at = s.AnySpot();
             s.play_.Press(at, s.Chance(80) ? 1 : s.Chance(50) ? 2 : 4);
         }},
        {14, "move", &Soak::Move},
        {10, "release",
         [](Soak& s) {
             s.play_.Release(s.AnySpot(), s.Chance(80) ? 1 : 2);
             if (s.Chance(20)) s.board_.DeliverDblClick();
         }},
        {8, "turn", &Soak::Turn},
        {12, "carry", &Soak::Carry},
        {1, "far out", &Soak::PressFarOut},
        // Leads to a win now and then, which random hands would never reach.
        {1, "solve",
         [](Soak& s) {
             if (GameRunning && !s.main_.Busy() && PickedPiece < 0) s.play_.Win();
         }},
        {4, "scroll",
         [](Soak& s) {
             ScrollBar& bar = s.Chance(50) ? s.main_.HScroll1 : s.main_.VScroll1;
             bar.DeliverValue(bar.Min() + (bar.Max() - bar.Min()) * s.Any(101) / 100, s.Chance(30));
         }},
        {2, "wheel", [](Soak& s) { s.play_.Wheel((s.Any(9) - 4) / 2.0, (s.Any(9) - 4) / 2.0); }},
        {1, "resize",
         [](Soak& s) {
             s.main_.DeliverResize({100 + s.Any(1200), 60 + s.Any(900)});
         }},
        {1, "state", [](Soak& s) { s.main_.DeliverState(s.Any(2) ? WindowState::Normal : WindowState::Maximized); }},
        {4, "wait", [](Soak& s) { s.desktop_.Advance(s.Any(40) / 10.0); }},
        {1, "panel", [](Soak& s) { s.main_.picStatus.DeliverMouseDown(1, 0, 3, 3); }},
        {3, "new game",
         [](Soak& s) {
             s.stale_ = true;
             s.ClickMenu("mnuNewGame(" + std::string(1, "01345"[s.Any(5)]) + ")");
         }},
        {6, "menu", &Soak::Menu},
        {2, "save", &Soak::SaveGame},
        {3, "load", &Soak::LoadGame},
        {1, "give up",
         [](Soak& s) {
             if (s.Chance(60)) s.desktop_.onFrame = [&s] { s.CheckState(false); };
             s.ClickMenu("MnDesistir");
             s.desktop_.onFrame = nullptr;
         }},
    };
    int all = 0;
    for (const Action& action : actions) all += action.weight;
    int at = Any(all);
    const Action* action = actions;
    while ((at -= action->weight) >= 0) ++action;
    Note(action->name);
    action->run(*this);
}

// --- Mouse ---------------------------------------------------------------------------------

// On some piece, more often than not.
GameFixture::Spot Soak::AnySpot() {
    if (!Pieces.empty() && Chance(75)) {
        const PieceRec& piece = AnyOf(Pieces);
        return {float(piece.X + Any(TileSize)), float(piece.Y + Any(TileSize))};
    }
    return {float(Any(board_.Image.Width() + 200) - 100), float(Any(board_.Image.Height() + 200) - 100)};
}

void Soak::Move() {
    for (int n = 1 + Any(3); n > 0; --n) play_.Move(AnySpot());
}

void Soak::Turn() { play_.Click({float(main_.LastX), float(main_.LastY)}, 2); }

// A piece to its place beside another one, or right over it.
void Soak::Carry() {
    if (Pieces.empty()) return;
    const PieceRec piece = AnyOf(Pieces), other = AnyOf(Pieces);
    const GameFixture::Spot from = play_.Middle(piece.Row, piece.Col);
    const GameFixture::Spot to{from.x + float(other.X - piece.X + (piece.Col - other.Col) * CellSize),
                               from.y + float(other.Y - piece.Y + (piece.Row - other.Row) * CellSize)};
    play_.Press(from);
    for (int n = (4 - piece.Rotation) % 4; n > 0 && Chance(90); --n) Turn();
    play_.Move({(from.x + to.x) / 2, from.y});
    play_.Move(to);
    if (Chance(90)) play_.Release(to);
}

// Where 16 bits end and beyond.
void Soak::PressFarOut() {
    constexpr float Far[] = {-32769, -32768, -32767.5f, 32767, 32767.5f, 32768, 1e9f, -1e30f, 0.5f};
    const GameFixture::Spot at{AnyOf(Far), AnyOf(Far)};
    if (Chance(50)) play_.Press(at);
    play_.Move(at);
    if (Chance(70)) play_.Release(at);
}

// --- Commands ------------------------------------------------------------------------------

void Soak::ClickMenu(const std::string& name) {
    Note(name);
    if (Chance(80))
        play_.Menu(name);
    else
        play_.Key(name);
}

void Soak::Menu() {
    constexpr const char* Items[] = {"mnuShuffle",    "mnuHints",     "mnuSounds", "mnuStatus",
                                     "mnuBackground", "mnuHowToPlay", "mnuAbout"};
    const std::string name = AnyOf(Items);
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

void Soak::SaveGame() {
    stale_ = true;
    desktop_.fileAnswers.clear();
    if (Chance(80)) {
        const std::string path = play_.folder / ("Save/jogo " + std::to_string(Any(4)));
        desktop_.fileAnswers.push_back(Chance(10) ? play_.folder / "no folder/x.pzl" : path);
        saves_.push_back(path + ".pzl");
        if (saves_.size() > 20) saves_.erase(saves_.begin() + 3);
    }
    ClickMenu("mnuSaveGame");
}

void Soak::LoadGame() {
    stale_ = true;
    desktop_.fileAnswers.clear();
    if (Chance(90)) desktop_.fileAnswers.push_back(AnyOf(saves_));
    ClickMenu("mnuLoadGame");
}

// --- Dialogs -------------------------------------------------------------------------------

void Soak::ActOnDialog(Form& form) {
    if (!form.IsShown()) return;
    Note("in " + form.Name());
    Require(PickedPiece == -1, "a piece is held while a dialog is open");
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
            return (void)dialog.Dir1.SetPath(AnyOf(folders_));
        case 3:
            return dialog.Dir1.DeliverOpen(size_t(Any(int(dialog.Dir1.Entries().size()) + 1)));
        case 4:
            return dialog.Drive1.DeliverChoice(size_t(Any(3)));
        case 5:
            return thumbs.scrThumbs.DeliverValue(Any(40000) - 2000, Chance(50));
        case 6:
            return sheet.DeliverWheel({0, (Any(7) - 3) / 2.0});
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
    Require(PickedPiece == -1 || (PickedPiece == 0 && n > 0 && GameRunning), "a piece is held that is not on top");
    Require(!GameRunning || n >= 4, "a game runs without pieces");
    std::vector<bool> seen(size_t(n), false);
    for (const PieceRec& piece : Pieces) {
        const bool known = piece.PieceId >= 0 && piece.PieceId < n && !seen[size_t(piece.PieceId)];
        Require(known, "PieceIds are no permutation");
        seen[size_t(piece.PieceId)] = true;
        const bool outlined = piece.MaskIndex >= 0 && piece.MaskIndex < TileCount;
        Require(outlined && piece.Rotation >= 0 && piece.Rotation < 4, "an outline that does not exist");
    }
    Require(ElapsedSeconds >= 0, "time runs backwards");
    if (!outermost) return;

    const auto& surfaces = main_.Surfaces;
    Require(!main_.Busy() && !ThumbsOpen && !desktop_.TopModal(), "something is still under way");
    Require(GameRunning || !main_.Timer1.Enabled(), "the clock runs without a game");  // a failed start stops it, too
    Require(main_.Pointer() == MousePointer::Default, "the pointer stays an hourglass");
    Require(board_.Enabled(), "the board is dead");
    Require(board_.Image.Bounds() == surfaces.picBG.Bounds(), "board and background differ in size");
    if (n == 0) return;
    Require(int(GridCols) * GridRows == n, "the grid is not that of the pieces");
    for (const PieceRec& piece : Pieces)
        Require(piece.Row * GridCols + piece.Col == piece.PieceId, "a piece has another one's cell");
    Require(surfaces.picPat.UBound() == n - 1, "pieces and their surfaces differ in number");
    Require(surfaces.picMasks[1].Bounds() == Rect{0, 0, TileCount * TileSize, TileSize}, "the strip is not the tiles'");
    Require(surfaces.picMaster.Bounds() == Rect{0, 0, GridCols * CellSize, GridRows * CellSize},
            "the picture does not fill the grid");
}

// With no button down, no piece follows the pointer.
void Soak::ComeToRest() {
    for (const int16_t button : {int16_t(2), int16_t(4), int16_t(1)}) play_.Release({50, 50}, button);
    const std::vector<PieceRec> before(Pieces.begin(), Pieces.end());
    for (const GameFixture::Spot at : {GameFixture::Spot{90, 70}, {30, 40}}) play_.Move(at, 0);
    Require(PickedPiece == -1 && std::equal(before.begin(), before.end(), Pieces.begin(), SamePlace),
            "a piece is glued to the pointer");
    CheckState(true);
    stale_ = framed_ = true;
    CheckBoard();
}

void Soak::CheckBoard() {
    if (stale_) {
        // Saving sorts the pieces and failing clears the board; both show at the next composition.
        if (PickedPiece >= 0) return;
        const Color ground = ToColor(main_.Surfaces.picBG.Background());
        desktop_.colorAnswers.assign(1, [ground](Color, std::span<Color, 16>) { return std::optional(ground); });
        main_.mnuBackground_Click();
        stale_ = framed_ = false;
    }
    const Surface& shown = board_.Image;
    Surface expected(shown.Width(), shown.Height());
    expected.SetDensity(shown.PixelDensity());
    reference::DrawBoard(expected, main_.Surfaces.picBG);
    bool equal = true;
    const Rect all = expected.PixelBounds();
    for (int y = 0; y < all.height; ++y)
        for (int x = 0; x < all.width; ++x) {
            const Pixel is = shown.At(x, y);
            if (is == expected.At(x, y)) continue;
            equal = false;
            constexpr Pixel Frame = 0xFFFFFF00u;  // round a move shown
            Require(framed_ && is == Frame, "the board is another than the model's");
        }
    framed_ = framed_ && !equal;
    ++boards;
}
