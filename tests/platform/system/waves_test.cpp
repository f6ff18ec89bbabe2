// The four waves as files: formats, lengths, chunks.
#include <gtest/gtest.h>

#include <map>
#include <string>

#include "platform/system/files.h"

namespace {

struct Wave {
    std::map<std::string, std::string> chunks;
    size_t file = 0;  // bytes
    int rate = 0, bits = 0, channels = 0, format = 0;
};

unsigned Number(const std::string& bytes, size_t at, int length) {
    unsigned value = 0;
    for (int i = length - 1; i >= 0; --i) value = value << 8 | uint8_t(bytes.at(at + size_t(i)));
    return value;
}

// Walks the chunks strictly: each begins where the one before ends, padding included, and the
// last ends with the file.
Wave Read(const std::string& name) {
    Wave wave;
    const std::string file = ReadFile(FENTO_SOURCE_DIR "/assets/waves/" + name).value_or("");
    wave.file = file.size();
    if (file.size() < 12 || file.substr(0, 4) != "RIFF" || file.substr(8, 4) != "WAVE") return wave;
    EXPECT_EQ(Number(file, 4, 4) + 8, file.size()) << name;
    size_t at = 12;
    while (at + 8 <= file.size()) {
        const size_t length = Number(file, at + 4, 4);
        wave.chunks[file.substr(at, 4)] = file.substr(at + 8, length);
        at += 8 + length + length % 2;
    }
    EXPECT_EQ(at, file.size()) << name;
    const std::string& format = wave.chunks["fmt "];
    if (format.size() < 16) return wave;
    wave.format = int(Number(format, 0, 2));
    wave.channels = int(Number(format, 2, 2));
    wave.rate = int(Number(format, 4, 4));
    wave.bits = int(Number(format, 14, 2));
    return wave;
}

TEST(Waves, HaveTheirFormatsAndSizes) {
    struct Case {
        const char* name;
        size_t file;
        int rate, bits;
        size_t data, formatChunk, chunks;
    };
    const Case cases[] = {
        {"click.wav", 1304, 22050, 8, 1258, 18, 2},
        {"giro.wav", 12012, 44100, 16, 11968, 16, 2},
        {"complete.wav", 12120, 11025, 8, 11966, 16, 3},
        {"rotate.wav", 1076, 22050, 8, 899, 16, 3},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        Wave wave = Read(c.name);
        EXPECT_TRUE(wave.format == 1 && wave.channels == 1 && wave.rate == c.rate && wave.bits == c.bits);
        EXPECT_EQ(wave.file, c.file);
        EXPECT_EQ(wave.chunks["data"].size(), c.data);
        EXPECT_EQ(wave.chunks["fmt "].size(), c.formatChunk);
        EXPECT_EQ(wave.chunks.size(), c.chunks);
    }
}

}  // namespace
