// Sound effects come from the program's own resources and are played from memory.
#include "shell/sound.h"

#include "core/game_state.h"
#include "platform/system/desktop.h"
#include "platform/system/resources.h"

void PlayWave(const MenuItem& mnuSounds, std::span<const std::byte> wave) {
    if (mnuSounds.Checked()) TheDesktop().PlayWave(wave);
}

void LoadWaves() {
    PuzzleModule::WaveClick = LoadResData("CLICK", "WAVE");
    PuzzleModule::WaveGiro = LoadResData("GIRO", "WAVE");
    PuzzleModule::WaveComplete = LoadResData("COMPLETE", "WAVE");
    PuzzleModule::WaveRotate = LoadResData("ROTATE", "WAVE");
}
