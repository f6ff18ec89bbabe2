// The audio device and its callback. The two threads share three atomics and nothing else.
#include "platform/qt/sound/sound.h"

#include <SDL.h>

#include <atomic>
#include <thread>

#include "platform/qt/sound/wave_reader.h"

#ifdef __linux__
#include <dlfcn.h>
#endif

namespace {

constexpr int Rate = 44100;
constexpr int BufferFrames = 512;  // 12 ms: a pick-up is heard at once

std::atomic<int> deviceRate = 0;                          // 0 until the device is open
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

void OpenDevice() {
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
    const SDL_AudioDeviceID device =
        SDL_OpenAudioDevice(nullptr, 0, &wanted, &granted, SDL_AUDIO_ALLOW_FREQUENCY_CHANGE);
    if (device == 0) {
        SDL_QuitSubSystem(SDL_INIT_AUDIO);  // or its thread looks for a sound card ten times a second
        return;
    }
    SDL_PauseAudioDevice(device, 0);
    deviceRate.store(granted.freq, std::memory_order_release);
}

}  // namespace

void QtSound::Open() {
    static bool begun = false;
    if (begun) return;
    begun = true;
    std::thread(OpenDevice).detach();
}

void QtSound::Play(std::span<const std::byte> wave) {
    const int rate = deviceRate.load(std::memory_order_acquire);
    if (rate == 0 || wave.empty()) return;
    const auto found = waves_.find(wave.data());
    const auto& samples = found != waves_.end() ? found->second : waves_[wave.data()] = ReadWave(wave, rate);
    if (!samples.empty()) next.store(&samples, std::memory_order_release);
}
