// One voice on SDL2's audio device: a new wave cuts off the last.
#pragma once
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <span>
#include <vector>

class QtSound {
public:
    // Opens the device on a thread of its own: a sound daemon that hangs would hold the start up.
    // Until it is open, and without a device, nothing is heard. No more than one try in two seconds.
    void Open();

    // Starts a wave file in memory, which must live as long as the program. Never waits. Where there is no device or
    // its daemon has died, it is looked for anew.
    void Play(std::span<const std::byte> wave);

private:
    // By the address of the file and the device's rate: its samples as the device takes them. Never dropped, since the
    // device may be reading them.
    std::map<std::pair<const std::byte*, int>, std::vector<int16_t>> waves_;
    std::optional<std::chrono::steady_clock::time_point> tried_;  // to open the device, the last time
};
