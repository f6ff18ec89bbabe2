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

}  // namespace

int main(int argc, char** argv) {
    if (argc == 2 && std::string(argv[1]) == "cross") return Cross();
    const int wanted = argc > 1 ? std::atoi(argv[1]) : 3;
    uint32_t seed = argc > 2 ? uint32_t(std::strtoul(argv[2], nullptr, 10)) : std::random_device{}();
    std::printf("seed %u\n", seed);
    std::fflush(stdout);

    int steps = 0, games = 0, boards = 0;
    size_t least = 0, bytes = 0;
    while (games < wanted) {
        {
            Soak soak(seed++);
            while (!soak.Ended() && games + soak.games < wanted) soak.Step();
            steps += soak.steps, games += soak.games, boards += soak.boards;
        }
        bytes = BytesInUse();
        if (least == 0) least = bytes;
    }
    std::printf("%d games, %d steps, %d boards compared; %zu KiB in use after the first run, %zu at the end\n", games,
                steps, boards, least >> 10, bytes >> 10);
    return bytes <= least + (1 << 20) ? 0 : 1;
}
