#include "tests/support/mouse_script.h"

#include <fstream>
#include <functional>
#include <sstream>

#include "browser/frm_thumbs.h"
#include "platform/system/files.h"
#include "tests/support/game_fixture.h"
#include "tests/support/yielding_desktop.h"

using namespace PuzzleModule;

namespace {

class Player {
public:
    // A line of the script, and what comes of it.
    void Run(const std::string& line) {
        if (line.empty() || line[0] == '#') return void(text_ += line + "\n");
        std::istringstream words(line);
        std::string verb;
        words >> verb;
        rest_.clear();
        std::getline(words >> std::ws, rest_);
        std::istringstream numbers(rest_);
        given_.clear();
        for (double number; numbers >> number;) given_.push_back(number);
        given_.resize(given_.size() + 4);  // 0 where the line says nothing
        if (verb == "screen" || !game_) Begin(verb == "screen" ? Size{N(0), N(1)} : Size{480, 360});
        text_ += "> " + line + "\n";
        try {
            Acts().at(verb)();
        } catch (const HeadlessDesktop::ProgramEnded&) {
        }
        Note();
    }
    // The transcript, the temporary folder called "~".
    std::string Text() {
        for (size_t at; (at = text_.find(game_->folder.Path())) != std::string::npos;)
            text_.replace(at, game_->folder.Path().size(), "~");
        return text_;
    }

private:
    int N(size_t which) const { return int(given_[which]); }
    // Where the command says, or else where the pointer is.
    GameFixture::Spot At() {
        if (!rest_.empty()) pointer_ = {float(given_[0]), float(given_[1])};
        return pointer_;
    }

    void Begin(Size screen) {
        game_.reset();
        auto desktop = std::make_unique<YieldingDesktop>(screen);
        desktop_ = desktop.get();
        game_ = std::make_unique<GameFixture>(std::move(desktop));
        const TempFolder& folder = game_->folder;
        desktop_->volumes = {{"/", "/"}, {folder.Path(), "jogo"}, {folder / "empty drive", "vazio"}};
        before_.clear();
        desktop_->onFrame = [this] { Occasion("a frame"); };
        desktop_->whenStanding = [this](Form&) { Occasion("it stands"); };
        desktop_->onYield = [this](int) {
            if (--yieldsLeft_ == 0) Occasion("a yield");
        };
        OfferModal();
    }
    // The desktop asks once for each box and dialog.
    void OfferModal() {
        desktop_->whileModal = [this] { OfferModal(), Occasion("it is open"); };
    }
    // What has become of everything, and then what was to be done at such an occasion.
    void Occasion(const std::string& which) {
        Note();
        text_ += "-- " + which + "\n";
        if (which == "a frame" && !game_->main.Busy()) return;  // of the board that is won
        for (const std::string& command : std::exchange(meanwhile_, {}))
            which == "a frame" ? desktop_->PostInput([this, command] { Run(command); }) : Run(command);
    }
    // What the desktop was asked for, waves, every state that is another than at the last note.
    void Note() {
        std::vector<std::string> log = std::exchange(desktop_->log, {});
        for (const std::string& form : std::exchange(desktop_->skinned, {})) log.push_back("skin " + form);
        for (size_t i = 0, first = 0; i < log.size(); ++i)
            if (i + 1 == log.size() || log[i + 1] != log[i])
                text_ += log[i] + " " + std::to_string(i + 1 - std::exchange(first, i + 1)) + "\n";
        for (const auto& box : std::exchange(desktop_->boxes, {}))
            text_ += "box " + std::to_string(box.style) + " " + box.title + "\n";
        for (const auto& request : std::exchange(desktop_->fileRequests, {}))
            text_ += "in " + request.folder + " " + std::to_string(request.filterIndex) + "\n";
        if (const std::string sounds = game_->Sounds(); !sounds.empty()) text_ += sounds + "\n";
        State now = game_->Snapshot();
        for (Form* form : desktop_->shown)
            if (dynamic_cast<frmThumbs*>(form)) Describe(*form, now);
        text_ += Changes(before_, now);
        before_ = std::move(now);
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
        YieldingDesktop& desktop = *desktop_;
        const auto dialog = [&]() -> frmThumbs& { return dynamic_cast<frmThumbs&>(*desktop.shown.back()); };
        const auto sheet = [=]() -> CellSheet& { return dialog().ThumbsCtl1.picInterior; };
        const float x = float(given_[0]), y = float(given_[1]);
        return {
            {"screen", [] {}},
            {"then", [&] { meanwhile_.push_back(rest_); }},
            {"yield", [&] { yieldsLeft_ = N(0), meanwhile_.push_back(rest_.substr(2)); }},
            {"game", [&] { NewGame(); }},
            {"put", [&] { g.Put(N(0), N(1), N(2), int(given_[3])); }},
            {"turn", [&] { g.Turn(N(0), N(1), N(2)); }},
            {"solved", [&] { g.Solve(N(0), N(1)); }},
            {"elapsed", [&] { ElapsedSeconds = N(0); }},
            {"scale", [&] { desktop.scale = given_[0]; }},
            {"grab", [&] { g.Press(pointer_ = g.Middle(N(0), N(1))); }},
            {"press", [&] { g.Press(At(), int16_t(N(2) ? N(2) : 1)); }},
            {"move", [&] { g.Move(At()); }},
            {"release", [&] { g.Release(At()); }},
            {"right", [&] { g.Click(pointer_, 2); }},
            {"wheel", [&] { g.Wheel(given_[0], given_[1]); }},
            {"barwheel",
             [&] {
                 g.main.HScroll1.DeliverWheel({x, 0}), g.main.VScroll1.DeliverWheel({0, y});
             }},
            {"scroll", [&] { g.main.HScroll1.DeliverValue(N(0), false), g.main.VScroll1.DeliverValue(N(1), false); }},
            {"panel",
             [&] { g.main.Picture1.DeliverMouseDown(1, 0, 1, 1), g.main.imgMaster.DeliverMouseDown(1, 0, 1, 1); }},
            {"menu", [&] { g.Menu(rest_); }},
            {"key", [&] { g.Key(rest_); }},
            {"keys",
             [&] {
                 for (size_t i = 0; i + 4 < given_.size(); ++i) g.main.DeliverKeyDown(::Key(N(i))), Note();
             }},
            {"seconds", [&] { desktop.Advance(given_[0]); }},
            {"resize",
             [&] {
                 g.main.DeliverResize({N(0), N(1)});
             }},
            {"answer", [&] { desktop.boxAnswers.push_back(MsgBoxResult::Yes); }},
            {"color", [&] { desktop.colorAnswers.push_back([n = N(0)](Color, std::span<Color, 16>) { return n; }); }},
            {"file", [&] { desktop.fileAnswers.push_back(g.folder / rest_); }},
            {"drop", [&] { desktop.shown.back()->DeliverFile(g.folder / rest_); }},
            {"show", [&] { text_ += g.folder.Read(rest_); }},
            {"settings",
             [&] {
                 g.folder.Write("config.ini", "[SETUP]\n" + rest_ + "\n"), g.folder.Write("Puzzle.skn", "*{}");
                 g.main.Form_Load();
             }},
            {"picture",
             [&] {
                 const std::string path = g.folder.Write(rest_.substr(rest_.rfind(' ') + 1), std::string(3000, 'x'));
                 desktop.Add(path, {N(0), N(1)}, given_[2]);
             }},
            {"open", [&] { dialog().Dir1.SetPath(g.folder / rest_); }},
            {"drive", [&] { dialog().Drive1.DeliverChoice(size_t(N(0))); }},
            {"click", [&] { sheet().DeliverMouseDown(1, 0, x, y), sheet().DeliverMouseUp(1, 0, x, y); }},
            {"twice", [&] { sheet().DeliverDblClick(x, y); }},
            {"wheelthumbs",
             [&] {
                 sheet().DeliverWheel({0, given_[0]});
             }},
            {"ok", [&] { dialog().Command1.DeliverClick(); }},
            {"cancel", [&] { dialog().cmdVoltar.DeliverClick(); }},
            {"activate", [&] { dialog().DeliverActivate(); }},
        };
    }

    std::string text_;           // the transcript
    std::string rest_;           // of the line, behind its verb
    std::vector<double> given_;  // the numbers in it
    YieldingDesktop* desktop_ = nullptr;
    std::unique_ptr<GameFixture> game_;
    GameFixture::Spot pointer_{0, 0};
    std::vector<std::string> meanwhile_;  // commands for the next occasion
    int yieldsLeft_ = 0;
    State before_;
};

}  // namespace

std::string PlayScript(const std::string& path) {
    std::ifstream file(path);
    Player player;
    for (std::string line; std::getline(file, line);) player.Run(line);
    return player.Text();
}
