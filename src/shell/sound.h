// The four sound effects.
#pragma once
#include <cstddef>
#include <span>

#include "platform/controls/menu.h"

// Plays `wave` if the switch is checked at this moment. A new wave cuts off the last.
void PlayWave(const MenuItem& mnuSounds, std::span<const std::byte> wave);

// Loads the resources into WaveClick, WaveGiro, WaveComplete, WaveRotate, in this order.
void LoadWaves();
