// RIFF chunks, samples, and the change of rate.
#include "platform/qt/sound/wave_reader.h"

#include <algorithm>
#include <cstring>
#include <string_view>

#include "platform/system/numbers.h"

namespace {

uint32_t Number(std::span<const std::byte> bytes, size_t at, size_t width) {
    uint32_t value = 0;
    for (size_t i = 0; i < width; ++i) value |= uint32_t(bytes[at + i]) << 8 * i;
    return value;
}

bool Says(std::span<const std::byte> bytes, size_t at, std::string_view word) {
    return bytes.size() >= at + word.size() && std::memcmp(bytes.data() + at, word.data(), word.size()) == 0;
}

struct Sound {
    uint32_t channels = 0, rate = 0, bits = 0;
    std::span<const std::byte> data;
};

// Walks the chunks; each begins at an even place.
bool FindChunks(std::span<const std::byte> file, Sound& sound) {
    if (!Says(file, 0, "RIFF") || !Says(file, 8, "WAVE")) return false;
    for (size_t at = 12; at + 8 <= file.size();) {
        const size_t length = std::min<size_t>(Number(file, at + 4, 4), file.size() - at - 8);
        const std::span<const std::byte> body = file.subspan(at + 8, length);
        if (Says(file, at, "fmt ") && length >= 16) {
            if (Number(body, 0, 2) != 1) return false;
            sound.channels = Number(body, 2, 2);
            sound.rate = Number(body, 4, 4);
            sound.bits = Number(body, 14, 2);
        } else if (Says(file, at, "data")) {
            sound.data = body;
        }
        at += 8 + length + length % 2;
    }
    const bool known = sound.bits == 8 || sound.bits == 16;
    return known && sound.channels >= 1 && sound.channels <= 8 && sound.rate >= 1000 && sound.rate <= 384000;
}

// Eight bits are unsigned with silence at 128, sixteen are signed.
std::vector<double> Mixed(const Sound& sound) {
    const size_t width = sound.bits / 8, frame = width * sound.channels;
    std::vector<double> samples(sound.data.size() / frame);
    for (size_t i = 0; i < samples.size(); ++i) {
        double sum = 0;
        for (size_t c = 0; c < sound.channels; ++c) {
            const uint32_t raw = Number(sound.data, i * frame + c * width, width);
            sum += width == 1 ? (double(raw) - 128) * 256 : double(int16_t(uint16_t(raw)));
        }
        samples[i] = sum / sound.channels;
    }
    return samples;
}

}  // namespace

std::vector<int16_t> ReadWave(std::span<const std::byte> file, int rate) {
    Sound sound;
    if (rate <= 0 || !FindChunks(file, sound)) return {};
    const std::vector<double> samples = Mixed(sound);
    if (samples.empty()) return {};
    std::vector<int16_t> result(size_t(double(samples.size()) * rate / sound.rate));
    for (size_t i = 0; i < result.size(); ++i) {
        const double at = double(i) * sound.rate / rate;
        const size_t left = std::min(size_t(at), samples.size() - 1), right = std::min(left + 1, samples.size() - 1);
        const double part = at - double(left);
        // Between two neighbours in range: never out of it.
        result[i] = CInt16(samples[left] * (1 - part) + samples[right] * part).value_or(0);
    }
    return result;
}
