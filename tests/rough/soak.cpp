// Plays at random for a while and checks what must always hold.
//
// usage: soak [SECONDS [SEED [say]]]
// The same seed makes the same moves; only the layout of a new game goes by the time of day as well. "say"
// prints everything that is done.
#include <chrono>
#include <cstdio>
#include <cstdlib>

#include "tests/rough/soak_player.h"

int main(int argc, char** argv) {
    const double seconds = argc > 1 ? std::atof(argv[1]) : 3;
    uint32_t seed = argc > 2 ? uint32_t(std::strtoul(argv[2], nullptr, 10)) : std::random_device{}();
    std::printf("seed %u\n", seed);
    std::fflush(stdout);

    const auto end = std::chrono::steady_clock::now() + std::chrono::duration<double>(seconds);
    int steps = 0, boards = 0;
    while (std::chrono::steady_clock::now() < end) {
        Soak soak(seed++, argc > 3);
        while (!soak.Ended() && std::chrono::steady_clock::now() < end) {
            soak.Step();
            if (!soak.Ended() && soak.steps % 20 == 0) soak.CheckBoard();
        }
        steps += soak.steps, boards += soak.boards;
    }
    std::printf("%d steps, %d boards compared: all as it must be\n", steps, boards);
    return boards > 0 ? 0 : 1;
}
