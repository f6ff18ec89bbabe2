// One voice on SDL2's audio device: a new wave cuts off the last.
#pragma once
#include <cstddef>
#include <cstdint>
#include <map>
#include <span>
#include <vector>

class QtSound {
public:
    // Opens the device on a thread of its own: a sound daemon that hangs would hold the start up.
    // Until it is open, and without a device, Play does nothing.
    void Open();

    // Starts a wave file in memory, which must live as long as the program. Never waits.
    void Play(std::span<const std::byte> wave);

private:
    // By the address of the file: its samples as the device takes them. Never dropped, since the
    // device may be reading them.
    std::map<const std::byte*, std::vector<int16_t>> waves_;
};
