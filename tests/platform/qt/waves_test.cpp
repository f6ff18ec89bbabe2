// Wave files as the device takes them.
#include <gtest/gtest.h>

#include <string>

#include "platform/qt/sound/wave_reader.h"

namespace {

std::string Little(uint32_t value, int bytes) {
    std::string text;
    for (int i = 0; i < bytes; ++i) text += char(value >> 8 * i & 255);
    return text;
}

std::string Chunk(const std::string& name, const std::string& body) {
    return name + Little(uint32_t(body.size()), 4) + body + std::string(body.size() % 2, '\0');
}

std::string Format(int channels, int rate, int bits) {
    return Little(1, 2) + Little(uint32_t(channels), 2) + Little(uint32_t(rate), 4) + Little(0, 4) + Little(0, 2) +
           Little(uint32_t(bits), 2);
}

std::vector<int16_t> Read(const std::string& chunks, int rate) {
    const std::string file = "RIFF" + Little(uint32_t(chunks.size() + 4), 4) + "WAVE" + chunks;
    return ReadWave(std::as_bytes(std::span(file.data(), file.size())), rate);
}

}  // namespace

TEST(Waves, EightBitsAreSilentAtTheirMiddle) {
    EXPECT_EQ(Read(Chunk("fmt ", Format(1, 8000, 8)) + Chunk("data", "\x80\xFF\x7F"), 8000),
              (std::vector<int16_t>{0, 127 * 256, -256}));
}

TEST(Waves, AnotherRateIsReachedByStraightLines) {
    const std::string data = Little(0, 2) + Little(100, 2) + Little(300, 2);
    EXPECT_EQ(Read(Chunk("fmt ", Format(1, 11025, 16)) + Chunk("data", data), 22050),
              (std::vector<int16_t>{0, 50, 100, 200, 300, 300}));
    EXPECT_EQ(Read(Chunk("fmt ", Format(1, 44100, 16)) + Chunk("data", data + data), 22050),
              (std::vector<int16_t>{0, 300, 100}));
}

TEST(Waves, OtherChunksLongFormatsAndOddLengthsAreTaken) {
    const std::string sound = Chunk("fmt ", Format(1, 8000, 8) + Little(0, 2));
    EXPECT_EQ(Read(sound + Chunk("LIST", "odd") + Chunk("data", "\x80\x81\x82"), 8000),
              (std::vector<int16_t>{0, 256, 512}));
    // More data promised than there is.
    EXPECT_EQ(Read(sound + "data" + Little(5000, 4) + "\x81\x82", 8000), (std::vector<int16_t>{256, 512}));
}

TEST(Waves, WhatIsNoSoundPlaysNothing) {
    for (const std::string& chunks :
         {std::string(), Chunk("data", "\x80\x81"), Chunk("fmt ", "short") + Chunk("data", "\x80"),
          Chunk("fmt ", Format(0, 8000, 8)) + Chunk("data", "\x80"),
          Chunk("fmt ", Format(1, 8000, 24)) + Chunk("data", "abcdef"),
          Chunk("fmt ", Format(1, 0, 8)) + Chunk("data", "\x80"), Chunk("fmt ", Format(1, 8000, 8)) + "data"})
        EXPECT_TRUE(Read(chunks, 8000).empty()) << chunks;
    EXPECT_TRUE(ReadWave({}, 44100).empty());
}
