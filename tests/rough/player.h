// A player without sense or patience, on the desktop without a screen: does anything that the window in front takes, at
// any moment the program lets events in, within its own yields too.
#pragma once
#include <deque>
#include <random>
#include <vector>

#include "platform/controls/cell_sheet.h"
#include "platform/controls/folder_lists.h"
#include "platform/controls/scroll_bar.h"
#include "platform/controls/simple_controls.h"
#include "tests/support/game_fixture.h"

// A desktop whose yields, dialogs and boxes let a player act.
class OpenDesktop : public HeadlessDesktop {
public:
    enum class At { Yield, Window, Box };
    std::function<void(At)> occasion;
    int modals = 0;  // under way

    explicit OpenDesktop(Size screen) : HeadlessDesktop(screen) { OfferBox(); }
    void DoEvents(Yield yield) override {
        HeadlessDesktop::DoEvents(yield);
        if (yield == Yield::Everything) occasion(At::Yield);
    }
    // What is still open afterwards is closed.
    void RunModal(Form& form) override {
        form.OnActivate = [this, &form, activate = form.OnActivate, stands = false]() mutable {
            if (activate) activate();
            if (std::exchange(stands, true)) return;
            Post([this, &form] {
                if (shown.empty() || shown.back() != &form) return;
                occasion(At::Window);
                if (form.IsShown()) form.DeliverClose();
            });
        };
        ++modals;
        HeadlessDesktop::RunModal(form);
        --modals;
    }

private:
    // The desktop asks once for each.
    void OfferBox() {
        whileModal = [this] { OfferBox(), occasion(At::Box); };
    }
};

// One run of the program: a window, a folder with pictures of all kinds, games.
class Player {
public:
    using At = OpenDesktop::At;
    struct Event {
        double weight;  // how often it is done, among the others
        std::string name;
        std::function<void()> run;
    };

    // Three screens, each at densities 1 to 3.
    explicit Player(uint32_t seed);
    // What can be done now.
    std::vector<Event> Events(At at);
    void Do(const Event& event);
    // One thing the player does, with all it leads to. False if that ends the program.
    bool Step();
    // Lets go of everything: no piece follows the pointer, and all is as it must be.
    void ComeToRest();
    void CheckState(At at) const;
    void Require(bool held, const char* what) const;

    GameFixture play;
    OpenDesktop& desktop = static_cast<OpenDesktop&>(play.desktop);
    frmMain& main = play.main;
    int steps = 0, boards = 0;      // done, and compared
    std::deque<std::string> notes;  // of what was done last, newest behind

private:
    int Any(size_t below) { return int(random_() % below); }
    bool Chance(int inHundred) { return Any(100) < inHundred; }
    auto& AnyOf(auto& list) { return list[size_t(Any(std::size(list)))]; }
    const Event& AnyOf(const std::vector<Event>& events);
    GameFixture::Spot AnySpot();
    void Occasion(At at);
    void ReadyAnswers();
    void AddControl(Control& control, std::vector<Event>& events);
    void AddBox(PictureBox& box, std::vector<Event>& events);
    void AddCommands(MenuItem& menu, std::vector<Event>& events);
    void CheckBoard();

    std::mt19937 random_;
    int nested_ = 0;
    bool stale_ = false;  // the next composition tells whether the board is right
    std::vector<std::string> pictures_, folders_, games_;
};
