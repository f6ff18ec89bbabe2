// Plays whole games at random and checks what must always hold; and lets every event come at every moment.
//
// usage: soak GAMES [SEED]      won or given up; the same seed makes the same moves
//        soak cross
#include <cstdio>
#include <cstdlib>

#include "tests/rough/player.h"

#ifdef __GLIBC__
#include <malloc.h>

extern "C" size_t __sanitizer_get_current_allocated_bytes() __attribute__((weak));
#endif

using namespace PuzzleModule;

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
            for (bool ran = false, goesOn = true; goesOn && games < wanted; ran = GameRunning) {
                goesOn = player.Step();
                games += ran && !GameRunning;
            }
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

// The event of that number at the so-manieth time that the moment comes. How often it came, and how many events there
// were to choose from.
std::pair<int, size_t> CrossOne(const Moment& moment, int time, size_t number) {
    Player player{uint32_t(time)};
    int times = 0;
    size_t count = 0;
    const auto rest = [](OpenDesktop::At) {};
    const auto act = [&](OpenDesktop::At at) {
        player.CheckState(at);
        if (++times != time) return;
        const std::vector<Player::Event> events = player.Events(at);
        if (count = events.size(); number >= count) return;
        player.notes.push_back(std::string(moment.name) + ", " + std::to_string(time));
        player.Do(events[number]);
    };
    player.desktop.occasion = rest;
    try {
        if (moment.game) player.play.StartGrid(4, 3);
        moment.prepare(player.play);
        player.desktop.occasion = act;
        player.desktop.onFrame = [&] {
            moment.command == std::string("MnDesistir") ? act(OpenDesktop::At::Yield) : void();
        };
        *moment.command ? player.play.Menu(moment.command) : act(OpenDesktop::At::Yield);
        player.desktop.occasion = rest, player.desktop.onFrame = nullptr;
        player.desktop.RunPending();
        player.ComeToRest();
    } catch (const HeadlessDesktop::ProgramEnded&) {
    }
    return {times, count};
}

int Cross() {
    int pairs = 0;
    for (const Moment& moment : Moments)
        for (int time = 1, came = 1; time <= 40 && came >= time; time *= 2)
            for (size_t number = 0, count = 1; number < count; ++number) {
                std::tie(came, count) = CrossOne(moment, time, number);
                pairs += number < count;
            }
    std::printf("%d pairs of a moment and an event: nothing dies, nothing is glued, the board is the model's\n", pairs);
    return pairs > 300 ? 0 : 1;
}

}  // namespace

int main(int argc, char** argv) {
    if (argc == 2 && std::string(argv[1]) == "cross") return Cross();
    return Games(argc > 1 ? std::atoi(argv[1]) : 3,
                 argc > 2 ? uint32_t(std::strtoul(argv[2], nullptr, 10)) : std::random_device{}());
}
