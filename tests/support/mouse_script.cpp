#include "tests/support/mouse_script.h"

#include <fstream>
#include <memory>
#include <sstream>

#include "tests/support/game_fixture.h"

using namespace PuzzleModule;

namespace {

std::string Text(int number) { return std::to_string(number); }
std::string Text(const Rect& r) { return Text(r.x) + " " + Text(r.y) + " " + Text(r.width) + " " + Text(r.height); }
std::string CellOf(const PieceRec& piece) { return Text(piece.Row) + " " + Text(piece.Col); }
std::string YesNo(bool value) { return value ? "yes" : "no"; }
std::string OrNone(const std::string& text) { return text.empty() ? "none" : text; }

class Player {
public:
    // What is wrong with this line, or nothing.
    std::string Run(const std::string& line) {
        std::istringstream words(line);
        std::string verb;
        words >> verb;
        const bool expects = verb == "expect";
        if (expects) words >> verb;
        rest_.clear();
        std::getline(words >> std::ws, rest_);
        std::istringstream numbers(rest_);
        given_.clear();
        for (double number; numbers >> number;) given_.push_back(number);
        if (verb == "screen" || !game_) {
            game_.reset();
            game_ = std::make_unique<GameFixture>(verb == "screen" ? Size{N(0), N(1)} : Size{1920, 1080});
        }
        if (expects) {
            const std::string seen = looks_.contains(verb) ? looks_.at(verb)() : "unknown";
            return seen == rest_ ? "" : verb + " is \"" + seen + "\", expected \"" + rest_ + "\"";
        }
        if (!acts_.contains(verb)) return "unknown command";
        acts_.at(verb)();
        return "";
    }

private:
    int N(size_t which) const { return which < given_.size() ? int(given_[which]) : 0; }
    GameFixture::Spot SpotOrPointer() {
        if (given_.size() >= 2) pointer_ = {float(given_[0]), float(given_[1])};
        return pointer_;
    }
    frmMain& Main() { return game_->main; }

    void NewGame() {
        game_->StartGrid(N(0), N(1), int16_t(N(2)));
        for (int row = 0; row < GridRows; ++row)
            for (int col = 0; col < GridCols; ++col) {
                game_->Turn(row, col, 0);
                game_->Put(row, col, 11 + col * 220, 11 + row * 220);
            }
        game_->Sounds();
    }
    std::string GroupSize() {
        int count = 0;
        for (size_t i = 1; i < Pieces.size(); ++i) count += Pieces[i].InGroup != 0;
        return Text(count);
    }
    // A yellow square one pixel wide along the sides of a cell whose piece has its tile's corner there.
    bool Framed(int x, int y) {
        const auto yellow = [&](int dx, int dy) {
            return Main().picScreen.Image.At(x + Margin() + dx, y + Margin() + dy) == 0xFFFFFF00u;
        };
        return yellow(0, 0) && yellow(CellSize, CellSize) && yellow(CellSize, 0) && yellow(0, CellSize / 2) &&
               !yellow(CellSize + 1, 0) && !yellow(1, 1);
    }
    std::string Greyed() {
        std::string names;
        for (const char* name : {"mnuSaveGame", "mnuShuffle", "mnuHints", "MnDesistir"})
            if (!game_->Item(name).Enabled()) names += (names.empty() ? "" : " ") + std::string(name);
        return names;
    }
    // Names the piece's cell, and tells it back.
    std::string PieceSeen() {
        const PieceRec& piece = game_->Piece(N(0), N(1));
        return CellOf(piece) + " " + Text(piece.X) + " " + Text(piece.Y) + " " + Text(piece.Rotation);
    }

    std::string rest_;           // of the line, behind its verb
    std::vector<double> given_;  // the numbers at its beginning
    std::unique_ptr<GameFixture> game_;
    GameFixture::Spot pointer_{0, 0};

    const std::map<std::string, std::function<void()>> acts_ = {
        {"screen", [] {}},
        {"game", [this] { NewGame(); }},
        {"put", [this] { game_->Put(N(0), N(1), N(2), N(3)); }},
        {"turn", [this] { game_->Turn(N(0), N(1), N(2)); }},
        {"solved", [this] { game_->Solve(N(0), N(1)); }},
        {"grab", [this] { game_->Press(pointer_ = game_->Middle(N(0), N(1))); }},
        {"press", [this] { game_->Press(SpotOrPointer(), int16_t(N(2) ? N(2) : 1)); }},
        {"move", [this] { game_->Move(SpotOrPointer()); }},
        {"release", [this] { game_->Release(SpotOrPointer()); }},
        {"right", [this] { game_->Click(pointer_, 2); }},
        {"wheel", [this] { game_->Wheel(given_.at(0), given_.at(1)); }},
        {"menu", [this] { game_->Menu(rest_); }},
        {"key", [this] { game_->Key(rest_); }},
        {"elapsed", [this] { ElapsedSeconds = N(0); }},
        {"seconds", [this] { game_->desktop.Advance(N(0)); }},
        {"resize",
         [this] {
             Main().DeliverResize({N(0), N(1)});
         }},
        {"scroll", [this] { Main().HScroll1.DeliverValue(N(0), false), Main().VScroll1.DeliverValue(N(1), false); }},
        {"answer",
         [this] { game_->desktop.boxAnswers.push_back(rest_ == "yes" ? MsgBoxResult::Yes : MsgBoxResult::No); }},
    };
    // What is now, in the words in which a script expects it.
    const std::map<std::string, std::function<std::string()>> looks_ = {
        {"piece", [this] { return PieceSeen(); }},
        {"top", [] { return CellOf(Pieces.at(0)); }},
        {"held", [] { return PickedPiece < 0 ? "none" : CellOf(Pieces.at(size_t(PickedPiece))); }},
        {"group", [this] { return GroupSize(); }},
        {"above", [this] { return game_->ElementOf(N(0), N(1)) < game_->ElementOf(N(2), N(3)) ? rest_ : "not"; }},
        {"framed", [this] { return Framed(N(0), N(1)) ? rest_ : "not"; }},
        {"unframed", [this] { return Framed(N(0), N(1)) ? "framed" : rest_; }},
        {"running", [] { return YesNo(GameRunning); }},
        {"panning", [this] { return YesNo(Main().Panning); }},
        {"sounds", [this] { return OrNone(game_->Sounds()); }},
        {"box", [this] { return game_->desktop.boxes.empty() ? "none" : game_->desktop.boxes.back().text; }},
        {"clock", [this] { return Main().lblElapsed.Caption(); }},
        {"view", [this] { return Text(int(Main().picScreen.Left())) + " " + Text(int(Main().picScreen.Top())); }},
        {"board", [this] { return Text(Main().picScreen.PixelRect()); }},
        {"places", [this] { return Text(Main().HScroll1.PixelRect()) + ", " + Text(Main().VScroll1.PixelRect()); }},
        {"panel", [this] { return Text(Main().picStatus.PixelRect()); }},
        {"front", [this] { return Main().Children().back()->Name(); }},
        {"ranges",
         [this] {
             const ScrollBar &h = Main().HScroll1, &v = Main().VScroll1;
             return Text(h.Max()) + " " + Text(v.Max()) + " " + Text(h.LargeChange()) + ", " + Text(h.Value());
         }},
        {"greyed", [this] { return OrNone(Greyed()); }},
        {"shown", [this] { return "picStatus " + YesNo(Main().picStatus.Visible()); }},
    };
};

}  // namespace

std::vector<std::string> PlayScript(const std::string& path) {
    std::vector<std::string> failures;
    std::ifstream file(path);
    if (!file) return {"cannot read " + path};
    Player player;
    std::string line;
    for (int number = 1; std::getline(file, line); ++number) {
        if (line.find_first_not_of(" \t") == std::string::npos || line[0] == '#') continue;
        const std::string wrong = player.Run(line);
        if (!wrong.empty()) failures.push_back("line " + std::to_string(number) + ": " + wrong);
    }
    return failures;
}
