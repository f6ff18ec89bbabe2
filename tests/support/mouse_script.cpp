#include "tests/support/mouse_script.h"

#include <fstream>
#include <memory>
#include <sstream>

#include "tests/support/game_fixture.h"

using namespace PuzzleModule;

namespace {

class Player {
public:
    // What is wrong with this line, or nothing.
    std::string Run(const std::string& line) {
        words_ = std::istringstream(line);
        const std::string verb = Word();
        if (verb == "screen") return Open({Number(), Number()});
        if (!game_) Open({1920, 1080});
        if (verb == "expect") return Expect();
        return Act(verb) ? "" : "unknown command";
    }

private:
    std::string Word() {
        std::string word;
        words_ >> word;
        return word;
    }
    int Number() {
        int number = 0;
        words_ >> number;
        return number;
    }
    std::string Rest() {
        std::string rest;
        std::getline(words_ >> std::ws, rest);
        return rest;
    }
    GameFixture::Spot SpotOrPointer() {
        float x, y;
        if (words_ >> x >> y) pointer_ = {x, y};
        return pointer_;
    }
    std::string Open(Size screen) {
        game_.reset();
        game_ = std::make_unique<GameFixture>(screen);
        return "";
    }

    bool Act(const std::string& verb) { return Arrange(verb) || Handle(verb) || Command(verb); }

    bool Arrange(const std::string& verb) {
        if (verb == "game") {
            const int cols = Number(), rows = Number();
            game_->StartGrid(cols, rows, int16_t(Number()));
            for (int row = 0; row < rows; ++row)
                for (int col = 0; col < cols; ++col) {
                    game_->Turn(row, col, 0);
                    game_->Put(row, col, 11 + col * 220, 11 + row * 220);
                }
            game_->Sounds();
        } else if (verb == "put") {
            const int row = Number(), col = Number(), x = Number();
            game_->Put(row, col, x, Number());
        } else if (verb == "turn") {
            const int row = Number(), col = Number();
            game_->Turn(row, col, Number());
        } else if (verb == "solved") {
            const int x = Number();
            game_->Solve(x, Number());
        } else {
            return false;
        }
        return true;
    }

    bool Handle(const std::string& verb) {
        if (verb == "grab") {
            const int row = Number();
            pointer_ = game_->Middle(row, Number());
            game_->Press(pointer_);
        } else if (verb == "press") {
            pointer_ = {float(Number()), float(Number())};
            const int button = Number();
            game_->Press(pointer_, int16_t(button ? button : 1));
        } else if (verb == "move") {
            game_->Move(SpotOrPointer());
        } else if (verb == "release") {
            game_->Release(SpotOrPointer());
        } else if (verb == "right") {
            game_->Click(pointer_, 2);
        } else if (verb == "wheel") {
            const int sideways = Number();
            game_->main.picScreen.DeliverWheel(sideways, Number());
        } else {
            return false;
        }
        return true;
    }

    bool Command(const std::string& verb) {
        if (verb == "menu") {
            game_->Menu(Word());
        } else if (verb == "key") {
            game_->Key(Word());
        } else if (verb == "seconds") {
            game_->desktop.Advance(Number());
        } else if (verb == "resize") {
            const int width = Number();
            game_->main.DeliverResize({width, Number()});
        } else if (verb == "scroll") {
            game_->main.HScroll1.DeliverValue(Number(), false);
            game_->main.VScroll1.DeliverValue(Number(), false);
        } else if (verb == "answer") {
            game_->desktop.boxAnswers.push_back(Word() == "yes" ? MsgBoxResult::Yes : MsgBoxResult::No);
        } else {
            return false;
        }
        return true;
    }

    std::string Expect() {
        const std::string what = Word(), seen = Seen(what), wanted = Rest();
        return seen == wanted ? "" : what + " is \"" + seen + "\", expected \"" + wanted + "\"";
    }

    // What `what` is now, in the words in which a script expects it.
    std::string Seen(const std::string& what) {
        const frmMain& main = game_->main;
        const auto cell = [](const PieceRec& piece) { return Text(piece.Row) + " " + Text(piece.Col); };
        if (what == "piece") {
            // Names its cell, and is told back with it.
            const auto start = words_.tellg();
            const int row = Number();
            const PieceRec& piece = game_->Piece(row, Number());
            words_.seekg(start);
            return cell(piece) + " " + Text(piece.X) + " " + Text(piece.Y) + " " + Text(piece.Rotation);
        }
        if (what == "top") return cell(Pieces.at(0));
        if (what == "held") return PickedPiece < 0 ? "none" : cell(Pieces.at(size_t(PickedPiece)));
        if (what == "group") {
            int count = 0;
            for (size_t i = 1; i < Pieces.size(); ++i) count += Pieces[i].InGroup != 0;
            return Text(count);
        }
        if (what == "running") return YesNo(GameRunning);
        if (what == "panning") return YesNo(main.Panning);
        if (what == "sounds") return OrNone(game_->Sounds());
        if (what == "box") return game_->desktop.boxes.empty() ? "none" : game_->desktop.boxes.back().text;
        if (what == "clock") return main.lblElapsed.Caption();
        if (what == "view") return Text(int(main.picScreen.Left())) + " " + Text(int(main.picScreen.Top()));
        if (what == "shown") return "picStatus " + YesNo(main.picStatus.Visible());
        return "unknown";
    }

    static std::string Text(int number) { return std::to_string(number); }
    static std::string YesNo(bool value) { return value ? "yes" : "no"; }
    static std::string OrNone(const std::string& text) { return text.empty() ? "none" : text; }

    std::unique_ptr<GameFixture> game_;
    std::istringstream words_;
    GameFixture::Spot pointer_{0, 0};
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
