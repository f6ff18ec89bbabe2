// Events that cross: every command, shortcut, close box, tick and press at every moment the program lets events in, and
// with a piece in the hand; each pair once.
#include <cstdio>

#include "browser/frm_thumbs.h"
#include "tests/rough/soak_player.h"

using namespace PuzzleModule;

namespace {

using Way = std::function<void(Soak&)>;

// On the main window; a desktop lets none of them through to a window that a dialog blocks.
std::vector<std::pair<std::string, Way>> Events() {
    std::vector<std::pair<std::string, Way>> events{
        {"close box", [](Soak& s) { s.Play().main.DeliverClose(); }},
        {"press",
         [](Soak& s) {
             s.Play().Press({200, 150});
         }},
        {"press of another button",
         [](Soak& s) {
             s.Play().Press({200, 150}, 2);
         }},
        {"release",
         [](Soak& s) {
             s.Play().Release({200, 150});
         }},
        {"far move",
         [](Soak& s) {
             s.Play().Move({-9000, 32767});
         }},
        {"double click", [](Soak& s) { s.Play().main.picScreen.DeliverDblClick(); }},
        {"wheel", [](Soak& s) { s.Play().Wheel(1, -2); }},
        {"dropped game", [](Soak& s) { s.Play().main.DeliverFile(s.Play().folder / "Save/broken.pzl"); }}};
    for (const char* name :
         {"mnuNewGame(0)", "mnuNewGame(5)", "mnuShuffle", "mnuHints", "mnuSaveGame", "mnuLoadGame", "MnDesistir",
          "mnuSounds", "mnuStatus", "mnuBackground", "mnuHowToPlay", "mnuAbout", "mnuExit"}) {
        events.push_back({name, [name](Soak& s) { s.Play().Menu(name); }});
        events.push_back({name + std::string(" by its key"), [name](Soak& s) { s.Play().Key(name); }});
    }
    return events;
}

// Wherever the program is.
const std::pair<std::string, Way> Always[] = {
    {"tick", [](Soak& s) { s.TheSoakDesktop().Advance(2); }},
    {"resize",
     [](Soak& s) {
         s.Play().main.DeliverResize({300, 200});
     }},
    {"minimise", [](Soak& s) { s.Play().main.DeliverState(WindowState::Minimized); }}};

template <typename Dialog>
Way On(void (*act)(Dialog&, Soak&)) {
    return [act](Soak& s) {
        if (auto* dialog = dynamic_cast<Dialog*>(s.TheSoakDesktop().TopModal())) act(*dialog, s);
    };
}
// In a dialog.
const std::pair<std::string, Way> InDialogs[] = {
    {"its close box", On<Form>([](Form& d, Soak&) { d.DeliverClose(); })},
    {"OK", On<frmThumbs>([](frmThumbs& d, Soak&) { d.Command1.DeliverClick(); })},
    {"back", On<frmThumbs>([](frmThumbs& d, Soak&) { d.cmdVoltar.DeliverClick(); })},
    {"another folder", On<frmThumbs>([](frmThumbs& d, Soak& s) { (void)d.Dir1.SetPath(s.Play().folder / "Outra"); })},
    {"double click", On<frmThumbs>([](frmThumbs& d, Soak&) { d.ThumbsCtl1.picInterior.DeliverDblClick(500, 500); })},
    {"dropped picture", On<frmThumbs>([](frmThumbs& d, Soak& s) { d.DeliverFile(s.AnyPicture()); })},
    {"bar", On<frmThumbs>([](frmThumbs& d, Soak&) { d.ThumbsCtl1.scrThumbs.DeliverValue(900, false); })}};

// How the program gets there; `act` comes at the moment.
struct Moment {
    std::string name;
    std::function<void(Soak&, const std::function<void()>& act)> reach;
    bool blocked;  // by a dialog or a box
};
const Way Start = [](Soak& s) { s.Play().StartGrid(4, 3); };
const Moment Moments[] = {
    {"no game", [](Soak&, auto& act) { act(); }, false},
    {"at rest", [](Soak& s, auto& act) { Start(s), act(); }, false},
    {"a piece in the hand",
     [](Soak& s, auto& act) {
         Start(s), s.Play().Press(s.Play().Middle(1, 1)), s.Play().Move({250, 200}), act();
     },
     false},
    {"the board in the hand",
     [](Soak& s, auto& act) {
         Start(s), s.Play().Solve(300, 200), s.Play().Press({5, 5}), s.Play().Move({30, 40}), act();
     },
     false},
    {"a move is shown", [](Soak& s, auto& act) { Start(s), s.Play().Menu("mnuHints"), act(); }, false},
    {"giving up", [](Soak& s, auto& act) { Start(s), s.TheSoakDesktop().onFrame = act, s.Play().Menu("MnDesistir"); },
     false},
    {"a scan, game behind", [](Soak& s, auto& act) { Start(s), s.act = act, s.Play().Menu("mnuNewGame(1)"); }, true},
    {"a scan, no game", [](Soak& s, auto& act) { s.act = act, s.Play().Menu("mnuNewGame(5)"); }, true},
    {"a question", [](Soak& s, auto& act) { Start(s), s.act = act, s.Play().Menu("mnuShuffle"); }, true},
    {"a file dialog", [](Soak& s, auto& act) { Start(s), s.act = act, s.Play().Menu("mnuLoadGame"); }, true},
    {"a saving dialog", [](Soak& s, auto& act) { Start(s), s.act = act, s.Play().Menu("mnuSaveGame"); }, true},
    {"About", [](Soak& s, auto& act) { Start(s), s.act = act, s.Play().Menu("mnuAbout"); }, true},
    {"help", [](Soak& s, auto& act) { s.act = act, s.Play().Menu("mnuHowToPlay"); }, true}};

// At the so-manieth time that the moment comes. False once it does not come that often.
bool CrossOne(const Moment& moment, const std::pair<std::string, Way>& event, int time) {
    Soak soak(0, false);
    soak.Note(event.first + " at: " + moment.name + ", " + std::to_string(time));
    int times = 0;
    soak.act = [] {};
    try {
        moment.reach(soak, [&] {
            if (++times == time) event.second(soak), soak.CheckState(false);
        });
        soak.TheSoakDesktop().onFrame = nullptr;
        soak.act = [] {};
        soak.TheSoakDesktop().RunPending();
        soak.ComeToRest();
    } catch (const HeadlessDesktop::ProgramEnded&) {
    }
    return times >= time;
}

}  // namespace

int Cross() {
    int pairs = 0;
    for (const Moment& moment : Moments) {
        auto events = moment.blocked ? std::vector(std::begin(InDialogs), std::end(InDialogs)) : Events();
        events.insert(events.end(), std::begin(Always), std::end(Always));
        for (const auto& event : events)
            for (int time = 1; time <= 40 && CrossOne(moment, event, time); ++time) ++pairs;
    }
    std::printf("%d pairs of a moment and an event: nothing dies, nothing is glued, the board is the model's\n", pairs);
    return pairs > 300 ? 0 : 1;
}
