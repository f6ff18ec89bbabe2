// The running state is a standard engine plus a word of clock bits that is XORed
// onto every number: uniform numbers stay uniform, and no clock can bring a state back.
#include "platform/system/random.h"

#include <bit>
#include <chrono>
#include <random>

namespace {

struct State {
    std::mt19937_64 engine{std::random_device{}()};
    uint64_t clockBits = 0;
    bool fixed = false;  // a test has chosen the numbers
};

State& TheState() {
    static State state;
    return state;
}

// Spreads every bit of `value` over all bits of the result.
uint64_t Spread(uint64_t value) {
    value = (value ^ value >> 32) * 0x9E3779B97F4A7C15u;
    value = (value ^ value >> 29) * 0xBF58476D1CE4E5B9u;
    return value ^ value >> 31;
}

}  // namespace

double Rnd() {
    State& state = TheState();
    const uint64_t bits = state.engine() ^ state.clockBits;
    return double(bits >> 11) * 0x1.0p-53;
}

void Randomize(double clock) {
    State& state = TheState();
    if (state.fixed) return;
    const auto ticks = uint64_t(std::chrono::steady_clock::now().time_since_epoch().count());
    state.clockBits = Spread(Spread(state.clockBits ^ std::bit_cast<uint64_t>(clock)) ^ ticks);
    // One number is thrown away, so that two calls within one tick differ as well.
    state.engine.discard(1);
}

void SeedRandom(uint64_t seed) {
    State& state = TheState();
    state.engine.seed(seed);
    state.clockBits = 0;
    state.fixed = true;
}

void SeedFromClock() { TheState() = State{}; }
