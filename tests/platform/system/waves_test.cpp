// The four waves as files and as sounds: formats, lengths, chunks, and how loud they are when.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <map>
#include <string>
#include <vector>

#include "platform/system/files.h"

namespace {

struct Wave {
    std::map<std::string, std::string> chunks;
    std::vector<double> samples;  // -1 to 1
    size_t file = 0;              // bytes
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
    const std::string& data = wave.chunks["data"];
    if (wave.bits == 8) {
        for (const char c : data) wave.samples.push_back((uint8_t(c) - 128) / 128.0);
    } else {
        for (size_t i = 0; i + 1 < data.size(); i += 2) wave.samples.push_back(int16_t(Number(data, i, 2)) / 32768.0);
    }
    return wave;
}

// The loudest moment between two times in milliseconds.
double Peak(const Wave& wave, double from, double to) {
    double peak = 0;
    for (size_t i = size_t(from * wave.rate / 1000); i < std::min(wave.samples.size(), size_t(to * wave.rate / 1000));
         ++i)
        peak = std::max(peak, std::abs(wave.samples[i]));
    return peak;
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
        ASSERT_FALSE(wave.samples.empty());
        EXPECT_LT(std::abs(wave.samples.back()), 0.02) << "ends with a tick";
    }
}

TEST(Waves, AreLoudAndQuietWhereTheyShouldBe) {
    struct Case {
        const char* name;
        double from, to, least, most;  // milliseconds, and the loudest moment between
    };
    for (const Case& c :
         {// a tick at the start and a weaker one at half its length
          Case{"click.wav", 0, 2, 0.95, 1}, Case{"click.wav", 15, 27, 0, 0.1}, Case{"click.wav", 27, 31, 0.25, 0.7},
          Case{"click.wav", 45, 57, 0, 0.1},
          // one burst at 55 milliseconds
          Case{"giro.wav", 0, 45, 0, 0.05}, Case{"giro.wav", 50, 62, 0.65, 0.75}, Case{"giro.wav", 95, 136, 0, 0.05},
          // one tick with a faint tail
          Case{"rotate.wav", 0, 1, 0.95, 1}, Case{"rotate.wav", 5, 41, 0, 0.06},
          Case{"rotate.wav", 8, 25, 0.0001, 0.06}}) {
        const double peak = Peak(Read(c.name), c.from, c.to);
        EXPECT_TRUE(peak >= c.least && peak <= c.most) << c.name << " at " << c.from << ": " << peak;
    }
    const Wave complete = Read("complete.wav");  // holds its level throughout
    for (double from = 10; from < 1060; from += 25) EXPECT_NEAR(Peak(complete, from, from + 25), 0.3, 0.06) << from;
}

}  // namespace
