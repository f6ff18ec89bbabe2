#include "tests/support/mouse_script.h"

#include <fstream>
#include <functional>
#include <sstream>

#include "tests/support/game_fixture.h"

using namespace PuzzleModule;

namespace {

class Player {
public:
    std::string Run(const std::string& line) {
        std::istringstream words(line);
        std::string verb;
        words >> verb;
        std::getline(words >> std::ws, rest_);
        std::istringstream numbers(rest_);
        given_.assign(4, 0);
        for (double& number : given_) numbers >> number;
        if (verb == "screen" || !game_) {
            game_.reset();
            game_ = std::make_unique<GameFixture>(verb == "screen" ? Size{N(0), N(1)} : Size{480, 360});
            before_.clear();
        }
        game_->desktop.log.clear();
        game_->desktop.boxes.clear();
        const std::map<std::string, std::function<void()>> acts = Acts();
        std::string text = "> " + line + "\n";
        try {
            acts.at(verb)();
        } catch (const HeadlessDesktop::ProgramEnded&) {
        }
        for (const std::string& entry : game_->desktop.log) text += entry + "\n";
        for (const auto& box : game_->desktop.boxes)
            text += "box " + std::to_string(box.style) + " " + box.title + "\n";
        const std::string sounds = game_->Sounds();
        if (!sounds.empty()) text += sounds + "\n";
        State now = game_->Snapshot();
        text += Changes(before_, now);
        before_ = std::move(now);
        for (size_t at; (at = text.find(game_->folder.Path())) != std::string::npos;)
            text.replace(at, game_->folder.Path().size(), "~");
        return text;
    }

private:
    int N(size_t which) const { return int(given_[which]); }
    // Where the command says, or else where the pointer is.
    GameFixture::Spot At() {
        if (!rest_.empty()) pointer_ = {float(given_[0]), float(given_[1])};
        return pointer_;
    }
    void NewGame() {
        game_->StartGrid(N(0), N(1), int16_t(N(2)));
        for (PieceRec& piece : Pieces) {
            game_->Turn(piece.Row, piece.Col, 0);
            game_->Put(piece.Row, piece.Col, 11 + piece.Col * 132, 11 + piece.Row * 132);
        }
    }
    std::map<std::string, std::function<void()>> Acts() {
        GameFixture& g = *game_;
        HeadlessDesktop& desktop = g.desktop;
        return {
            {"screen", [] {}},
            {"game", [&] { NewGame(); }},
            {"put", [&] { g.Put(N(0), N(1), N(2), int(given_[3])); }},
            {"turn", [&] { g.Turn(N(0), N(1), N(2)); }},
            {"solved", [&] { g.Solve(N(0), N(1)); }},
            {"elapsed", [&] { ElapsedSeconds = N(0); }},
            {"grab", [&] { g.Press(pointer_ = g.Middle(N(0), N(1))); }},
            {"press", [&] { g.Press(At(), int16_t(N(2) ? N(2) : 1)); }},
            {"move", [&] { g.Move(At()); }},
            {"release", [&] { g.Release(At()); }},
            {"right", [&] { g.Click(pointer_, 2); }},
            {"wheel", [&] { g.Wheel(given_[0], given_[1]); }},
            {"scroll", [&] { g.main.HScroll1.DeliverValue(N(0), false), g.main.VScroll1.DeliverValue(N(1), false); }},
            {"menu", [&] { g.Menu(rest_); }},
            {"key", [&] { g.Key(rest_); }},
            {"keys", [&] { g.main.DeliverKeyDown(::Key(N(0))); }},
            {"seconds", [&] { desktop.Advance(N(0)); }},
            {"resize",
             [&] {
                 g.main.DeliverResize({N(0), N(1)});
             }},
            {"answer", [&] { desktop.boxAnswers.push_back(MsgBoxResult::Yes); }},
            {"color", [&] { desktop.colorAnswers.push_back([n = N(0)](Color, std::span<Color, 16>) { return n; }); }},
            {"file", [&] { desktop.fileAnswers.push_back(g.folder / rest_); }},
            {"drop", [&] { g.main.DeliverFile(g.folder / rest_); }},
            {"show", [&] { desktop.log.push_back(g.folder.Read(rest_)); }},
        };
    }

    std::string rest_;           // of the line, behind its verb
    std::vector<double> given_;  // the numbers in it
    std::unique_ptr<GameFixture> game_;
    GameFixture::Spot pointer_{0, 0};
    State before_;
};

}  // namespace

std::string PlayScript(const std::string& path) {
    std::ifstream file(path);
    std::string text, line;
    for (Player player; std::getline(file, line);)
        text += line.empty() || line[0] == '#' ? line + "\n" : player.Run(line);
    return text;
}
