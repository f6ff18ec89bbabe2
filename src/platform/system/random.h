// Random numbers of the game.
#pragma once
#include <cstdint>

// From 0 up to but not including 1.
double Rnd();

// Mixes `clock` (seconds since midnight) and the steady clock into the running
// state, never resetting it: two calls within one tick still give different numbers.
void Randomize(double clock);

// For tests: the state starts afresh from `seed`, and Randomize leaves it alone
// until SeedFromClock.
void SeedRandom(uint64_t seed);
void SeedFromClock();
