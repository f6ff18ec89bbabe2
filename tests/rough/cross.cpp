// Events that cross: whatever the player can do, at every moment the program lets events in, and with a piece in the
// hand; each pair once.
#include <cstdio>

#include "tests/rough/soak_player.h"

using namespace PuzzleModule;

namespace {

// The event comes after `prepare`, or in what `command` then opens or does.
struct Moment {
    const char *name, *command;
    bool game;
    std::function<void(GameFixture&)> prepare = [](GameFixture&) {};
};
const Moment Moments[] = {{"no game", "", false},
                          {"at rest", "", true},
                          {"a piece in the hand", "", true,
                           [](GameFixture& play) {
                               play.Press(play.Middle(1, 1)), play.Move({250, 200});
                           }},
                          {"the board in the hand", "", true,
                           [](GameFixture& play) {
                               play.Solve(300, 200), play.Press({5, 5}), play.Move({30, 40});
                           }},
                          {"a move is shown", "", true, [](GameFixture& play) { play.Menu("mnuHints"); }},
                          {"giving up", "MnDesistir", true},
                          {"a scan, game behind", "mnuNewGame(1)", true},
                          {"a scan, no game", "mnuNewGame(5)", false},
                          {"a question", "mnuShuffle", true},
                          {"a file dialog", "mnuLoadGame", true},
                          {"a saving dialog", "mnuSaveGame", true},
                          {"About", "mnuAbout", true},
                          {"help", "mnuHowToPlay", false}};

// At the so-manieth time that the moment comes. False once it does not come that often.
bool CrossOne(const Moment& moment, const Soak::Event& event, int time) {
    Soak soak{uint32_t(time)};
    soak.Note(event.name + " at: " + moment.name + ", " + std::to_string(time));
    int times = 0;
    const auto act = [&] {
        if (++times == time) event.run(soak), soak.CheckState(false);
    };
    const auto rest = [] {};
    soak.act = rest;
    try {
        if (moment.game) soak.play.StartGrid(4, 3);
        moment.prepare(soak.play);
        soak.act = act;
        if (moment.command == std::string("MnDesistir")) soak.desktop.onFrame = act;
        *moment.command ? soak.play.Menu(moment.command) : act();
        soak.act = rest;
        soak.desktop.onFrame = nullptr;
        soak.desktop.RunPending();
        soak.ComeToRest();
    } catch (const HeadlessDesktop::ProgramEnded&) {
    }
    return times >= time;
}

}  // namespace

int Cross() {
    int pairs = 0;
    for (const Moment& moment : Moments) {
        // A desktop lets nothing through to a window that a dialog blocks.
        const bool open = !*moment.command || moment.command == std::string("MnDesistir");
        for (const auto& event : open ? Soak::OnMain : Soak::InDialogs)
            for (int time = 1; time <= 40 && CrossOne(moment, event, time); time = open ? 2 * time : time + 1) ++pairs;
    }
    std::printf("%d pairs of a moment and an event: nothing dies, nothing is glued, the board is the model's\n", pairs);
    return pairs > 300 ? 0 : 1;
}
