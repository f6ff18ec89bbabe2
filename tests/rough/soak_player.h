// A player without sense or patience, on the desktop without a screen: does anything that mouse and menu
// allow, at any moment the program lets events in, within its own yields too.
#pragma once
#include <deque>
#include <random>
#include <vector>

#include "tests/support/game_fixture.h"

// A desktop whose boxes and dialogs are answered at random and whose yields let a player act.
class SoakDesktop : public HeadlessDesktop {
public:
    using HeadlessDesktop::HeadlessDesktop;

    std::function<void()> onYield;       // in a yield that delivers input
    std::function<void(Form&)> onModal;  // one event for a modal form
    std::function<int()> modalEvents;    // how many events a modal form gets before it is closed
    std::function<void()> beforeAnswer;  // a box or a file dialog is open
    Form* TopModal() const { return modals_.empty() ? nullptr : modals_.back().form; }

    void DoEvents(Yield yield) override;
    void RunModal(Form& form) override;
    MsgBoxResult MsgBox(const std::string& text, int style, const std::string& title) override;
    std::optional<std::string> FileDialog(FileDialogRequest& request) override;

private:
    void PostTurn(Form& form, int number, int left);
    struct Modal {
        int number;
        Form* form;
    };
    std::vector<Modal> modals_;  // open now, the one in front last
    int lastModal_ = 0;
    int depth_ = 0;                               // yields on the stack
    std::vector<std::function<void()>> waiting_;  // turns that fell into a yield
};

// One run of the program: a window, a folder with pictures of all kinds, games.
class Soak {
public:
    Soak(uint32_t seed, bool verbose);
    void Step();                           // one thing the player does, with all it leads to
    bool Ended() const { return ended_; }  // by the player: nothing more can be done
    void CheckBoard();                     // against the literal model

    void ComeToRest();  // lets go of everything and checks all
    void Note(const std::string& what);
    void CheckState(bool outermost);
    void Require(bool held, const char* what) const;
    GameFixture& Play() { return play_; }
    SoakDesktop& TheSoakDesktop() { return desktop_; }
    std::string AnyPicture() const { return folders_[0] + "/1.jpg"; }

    int steps = 0, games = 0, boards = 0;  // done, played to their ends, and compared
    std::function<void()> act;             // instead of what comes to the player's mind in yields, dialogs and boxes

private:
    void MakePictures();
    void Act();
    void ActOnDialog(Form& form);
    void ActOnThumbs(class frmThumbs& dialog);

    int Any(int below) { return int(random_() % uint32_t(below)); }
    bool Chance(int inHundred) { return Any(100) < inHundred; }
    template <typename List>
    auto& AnyOf(List& list) {
        return list[size_t(Any(int(std::size(list))))];
    }
    GameFixture::Spot AnySpot();
    void ClickMenu(const std::string& name);
    void Move(), Turn(), Carry(), PressFarOut(), Menu(), SaveGame(), LoadGame();

    std::mt19937 random_;
    bool verbose_;
    GameFixture play_;
    SoakDesktop& desktop_;
    frmMain& main_;
    PictureBox& board_;
    std::vector<std::string> saves_, folders_;
    bool ended_ = false, stale_ = false, framed_ = false;
    int nested_ = 0;
    std::deque<std::string> last_;  // what was done last, newest behind
};

// Lets every event come at every moment. The status of the program.
int Cross();
