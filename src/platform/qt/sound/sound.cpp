// The audio device and its callback. The threads share the atomics below and nothing else.
#include "platform/qt/sound/sound.h"

#include <SDL.h>

#include <atomic>
#include <chrono>
#include <thread>

#include "platform/qt/sound/wave_reader.h"

#ifdef __linux__
#include <dlfcn.h>
#endif

namespace {

constexpr int Rate = 44100;
constexpr int BufferFrames = 512;  // 12 ms: a pick-up is heard at once

using Clock = std::chrono::steady_clock;
constexpr Clock::duration BetweenTries = std::chrono::seconds(2), LateForASound = std::chrono::seconds(1);

std::atomic<SDL_AudioDeviceID> device = 0;                // 0 until it is open
std::atomic<bool> opening = false;                        // on its own thread, which alone touches the device then
std::atomic<int> deviceRate = 0;                          // of the device opened last
std::atomic<const std::vector<int16_t>*> next = nullptr;  // to start at the next callback

// What plays now; the callback's alone.
struct Voice {
    const std::vector<int16_t>* samples = nullptr;
    size_t at = 0;
};
Voice voice;

void SDLCALL Fill(void*, Uint8* stream, int bytes) {
    if (const auto* wanted = next.exchange(nullptr, std::memory_order_acquire)) voice = {wanted, 0};
    auto* out = reinterpret_cast<int16_t*>(stream);
    const size_t count = size_t(bytes) / sizeof(int16_t);
    size_t i = 0;
    if (voice.samples)
        while (i < count && voice.at < voice.samples->size()) out[i++] = (*voice.samples)[voice.at++];
    while (i < count) out[i++] = 0;
}

#ifdef __linux__
void Ignore(const char*, int, const char*, int, const char*, ...) {}
#endif

// ALSA writes to the terminal when a machine has no sound card.
void SilenceAlsa() {
#ifdef __linux__
    using Listener = void (*)(const char*, int, const char*, int, const char*, ...);
    if (void* alsa = dlopen("libasound.so.2", RTLD_LAZY | RTLD_GLOBAL)) {
        const auto set = reinterpret_cast<int (*)(Listener)>(dlsym(alsa, "snd_lib_error_set_handler"));
        if (set) set(Ignore);
    }
#endif
}

void OpenDevice(Clock::time_point asked) {
    if (const SDL_AudioDeviceID dead = device.exchange(0)) {
        SDL_CloseAudioDevice(dead);
        SDL_QuitSubSystem(SDL_INIT_AUDIO);
    }
    SilenceAlsa();
    SDL_SetMainReady();
    SDL_LogSetAllPriority(SDL_LOG_PRIORITY_CRITICAL);
    SDL_SetHint(SDL_HINT_NO_SIGNAL_HANDLERS, "1");
    SDL_SetHint(SDL_HINT_AUDIO_DEVICE_APP_NAME, "Fento-Lira Master");
    if (SDL_InitSubSystem(SDL_INIT_AUDIO) != 0) return;
    SDL_AudioSpec wanted{}, granted{};
    wanted.freq = Rate;
    wanted.format = AUDIO_S16SYS;
    wanted.channels = 1;
    wanted.samples = BufferFrames;
    wanted.callback = Fill;
    // The rate may be the device's: SDL's own change of rate loses samples.
    const SDL_AudioDeviceID opened =
        SDL_OpenAudioDevice(nullptr, 0, &wanted, &granted, SDL_AUDIO_ALLOW_FREQUENCY_CHANGE);
    if (opened == 0) {
        SDL_QuitSubSystem(SDL_INIT_AUDIO);  // or its thread looks for a sound card ten times a second
        return;
    }
    // The sound that found the device dead is heard now, unless it took long or is at another rate.
    if (deviceRate.exchange(granted.freq) != granted.freq || Clock::now() - asked > LateForASound) next = nullptr;
    device = opened;
    SDL_PauseAudioDevice(opened, 0);
}

// A daemon that died has stopped the device. Asked of SDL without a wait.
bool Sounding() {
    const SDL_AudioDeviceID now = device;
    return opening || (now != 0 && SDL_GetAudioDeviceStatus(now) == SDL_AUDIO_PLAYING);
}

}  // namespace

void QtSound::Open() {
    const Clock::time_point now = Clock::now();
    if (opening || (tried_ && now - *tried_ < BetweenTries)) return;
    tried_ = now;
    opening = true;
    std::thread([now] {
        OpenDevice(now);
        opening = false;
    }).detach();
}

void QtSound::Play(std::span<const std::byte> wave) {
    if (wave.empty()) return;
    if (!Sounding()) Open();
    const int rate = deviceRate;
    if (rate == 0) return;
    const auto [found, isNew] = waves_.try_emplace({wave.data(), rate});
    if (isNew) found->second = ReadWave(wave, rate);
    if (!found->second.empty()) next.store(&found->second, std::memory_order_release);
}
