// Plays whole games at random and checks what must always hold; and lets every event come at every moment.
//
// usage: soak GAMES [SEED]      won or given up; the same seed makes the same moves
//        soak cross
#include <cstdio>
#include <cstdlib>

#include "tests/rough/soak_player.h"

#ifdef __GLIBC__
#include <malloc.h>

extern "C" size_t __sanitizer_get_current_allocated_bytes() __attribute__((weak));
#endif

namespace {

// 0 where that is not told.
size_t BytesInUse() {
#ifdef __GLIBC__
    return __sanitizer_get_current_allocated_bytes ? __sanitizer_get_current_allocated_bytes() : mallinfo2().uordblks;
#else
    return 0;
#endif
}

int Games(int wanted, uint32_t seed) {
    std::printf("seed %u\n", seed);
    std::fflush(stdout);
    int steps = 0, games = 0, boards = 0;
    size_t least = 0, bytes = 0;
    while (games < wanted) {
        {
            Player player(seed++);
            for (bool ran = false; player.Step() && games < wanted; ran = GameRunning) games += ran && !GameRunning;
            steps += player.steps, boards += player.boards;
        }
        bytes = BytesInUse();
        if (least == 0) least = bytes;
    }
    std::printf("%d games, %d steps, %d boards compared; %zu KiB in use after the first run, %zu at the end\n", games,
                steps, boards, least >> 10, bytes >> 10);
    return bytes <= least + (1 << 20) ? 0 : 1;
}

// Events come after `prepare`, or in what `command` then opens or does.
struct Moment {
    const char *name, *command;
    bool game;
    void (*prepare)(GameFixture&) = [](GameFixture&) {};
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

// The event of that number at the so-manieth time that the moment comes. How many events there were to choose from;
// none where it does not come that often.
size_t CrossOne(const Moment& moment, int time, size_t number) {
    Player player{uint32_t(time)};
    size_t count = 0;
    const auto rest = [](At) {};
    int times = 0;
    const auto act = [&](At at) {
        player.CheckHand(at);
        if (++times != time) return;
        const auto events = player.Events(at);
        player.notes.push_back(std::string(moment.name) + ", " + std::to_string(time));
        if (number < (count = events.size())) player.Do(events[number]);
    };
    player.desktop.occasion = rest;
    try {
        if (moment.game) player.play.StartGrid(4, 3);
        moment.prepare(player.play);
        player.desktop.occasion = act;
        if (moment.command == std::string("MnDesistir")) player.desktop.onFrame = [&] { act(At::Yield); };
        *moment.command ? player.play.Menu(moment.command) : act(At::Yield);
        player.desktop.occasion = rest, player.desktop.onFrame = nullptr;
        player.desktop.RunPending();
        player.ComeToRest();
    } catch (const HeadlessDesktop::ProgramEnded&) {
    }
    return count;
}

int Cross() {
    size_t pairs = 0;
    for (const Moment& moment : Moments)
        for (size_t time = 1, count = 1; time <= 40 && count > 0; time *= 2, pairs += count)
            for (size_t number = 0; number == 0 || number < count; ++number)
                count = CrossOne(moment, int(time), number);
    std::printf("%zu pairs of a moment and an event: nothing dies, nothing is glued, the board is the model's\n",
                pairs);
    return pairs > 300 ? 0 : 1;
}

}  // namespace

int main(int argc, char** argv) {
    if (argc == 2 && std::string(argv[1]) == "cross") return Cross();
    return Games(argc > 1 ? std::atoi(argv[1]) : 3,
                 argc > 2 ? uint32_t(std::strtoul(argv[2], nullptr, 10)) : std::random_device{}());
}
