// A player without sense or patience, on the desktop without a screen: does anything that mouse and menu
// allow, at any moment the program lets events in, within its own yields too.
#pragma once
#include <deque>
#include <random>
#include <vector>

#include "tests/support/game_fixture.h"

// A desktop whose yields and modal windows let a player act.
class SoakDesktop : public HeadlessDesktop {
public:
    using HeadlessDesktop::HeadlessDesktop;
    void DoEvents(Yield yield) override;
    void RunModal(Form& form) override;

    std::function<void()> onYield;       // in a yield that delivers input
    std::function<void(Form&)> onModal;  // a modal form stands; what is still open afterwards is closed
    std::vector<Form*> modals;           // open now, the one in front last
};

// One run of the program: a window, a folder with pictures of all kinds, games.
class Soak {
public:
    struct Event {
        double weight;  // how often it is done, among the others of its list
        std::string name;
        std::function<void(Soak&)> run;
    };
    static const std::vector<Event> OnMain, InDialogs;

    explicit Soak(uint32_t seed);
    void Step();                           // one thing the player does, with all it leads to
    bool Ended() const { return ended_; }  // by the player: nothing more can be done
    void ComeToRest();                     // lets go of everything and checks all
    void CheckBoard();                     // against the literal model
    void CheckState(bool outermost);
    void Require(bool held, const char* what) const;
    void Note(const std::string& what);

    int Any(int below) { return int(random_() % uint32_t(below)); }
    bool Chance(int inHundred) { return Any(100) < inHundred; }
    template <typename List>
    auto& AnyOf(List& list) {
        return list[size_t(Any(int(std::size(list))))];
    }
    GameFixture::Spot AnySpot();
    void Command(const std::string& name, bool byKey);

    int steps = 0, games = 0, boards = 0;  // done, played to their ends, and compared
    std::function<void()> act;             // instead of what comes to the player's mind in yields, dialogs and boxes
    GameFixture play;
    SoakDesktop& desktop = static_cast<SoakDesktop&>(play.desktop);
    frmMain& main = play.main;
    std::vector<std::string> saves, folders;

private:
    void Do(const std::vector<Event>& events);
    void AwaitAnswers();

    std::mt19937 random_;
    bool ended_ = false, stale_ = false;
    int nested_ = 0;
    std::deque<std::string> last_;  // what was done last, newest behind
};

// Lets every event come at every moment. The status of the program.
int Cross();
