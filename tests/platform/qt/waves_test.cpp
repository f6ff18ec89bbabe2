// Wave files as the device takes them.
#include <gtest/gtest.h>
#include "platform/qt/sound/wave_reader.h"

#include <random>
#include <string>

namespace {

std::string Little(int64_t value, int bytes) {
    std::string text;
    for (int i = 0; i < bytes; ++i) text += char(value >> 8 * i & 255);
    return text;
}

std::string Chunk(const std::string& name, const std::string& body) {
    return name + Little(int64_t(body.size()), 4) + body + std::string(body.size() % 2, '\0');
}

std::string Format(int kind, int channels, int rate, int bits) {
    return Chunk("fmt ", Little(kind, 2) + Little(channels, 2) + Little(rate, 4) + Little(0, 6) + Little(bits, 2));
}

std::string File(const std::string& chunks, const std::string& form = "WAVE") {
    return "RIFF" + Little(int64_t(chunks.size() + 4), 4) + form + chunks;
}

std::span<const std::byte> Bytes(const std::string& file) { return std::as_bytes(std::span(file.data(), file.size())); }

}  // namespace

// Every sample from the two that lie round its moment, reckoned one by one; a frame that is cut off does not count.
TEST(Waves, SamplesAreMixedAndMovedToTheDevicesRateByStraightLines) {
    std::minstd_rand random(3);
    for (int round = 0; round < 300; ++round) {
        const int channels = 1 + int(random() % 8), width = 1 + int(random() % 2);
        const int rates[] = {1000, 8000, 11025, 22050, 44100, 384000};
        const int from = rates[random() % 6], to = rates[1 + random() % 5];
        std::string data(random() % 150, '\0');
        for (char& byte : data) byte = char(random());
        std::string format = Format(1, channels, from, width * 8) + (round % 3 ? "" : Chunk("LIST", "odd"));
        if (round % 5 == 0) format = Chunk("fmt ", format.substr(8, 16) + "\1\1");
        const std::string chunk = round % 7 ? Chunk("data", data) : "data" + Little(5000, 4) + data;
        const std::string file = File(round % 7 && round % 2 ? chunk + format : format + chunk);

        std::vector<double> frames;
        for (size_t at = 0; at + size_t(channels * width) <= data.size(); at += size_t(channels * width)) {
            double sum = 0;
            for (int c = 0; c < channels; ++c) {
                const size_t place = at + size_t(c * width);
                sum += width == 1 ? (uint8_t(data[place]) - 128) * 256
                                  : int16_t(uint16_t(uint8_t(data[place]) | uint8_t(data[place + 1]) << 8));
            }
            frames.push_back(sum / channels);
        }
        std::vector<double> expected(frames.size() * size_t(to) / size_t(from));
        for (size_t i = 0; i < expected.size(); ++i) {
            const int64_t moment = int64_t(i) * from;
            const double next = frames[std::min(size_t(moment / to) + 1, frames.size() - 1)];
            const double last = frames[std::min(size_t(moment / to), frames.size() - 1)];
            expected[i] = last + (next - last) * double(moment % to) / to;
        }
        const std::vector<int16_t> read = ReadWave(Bytes(file), to);
        ASSERT_EQ(read.size(), expected.size()) << round;
        for (size_t i = 0; i < read.size(); ++i) ASSERT_NEAR(read[i], expected[i], 0.51) << round << ": " << i;
    }
}

TEST(Waves, WhatIsNoSoundOrOfAnotherKindPlaysNothing) {
    const std::string good = Format(1, 1, 8000, 8), data = Chunk("data", "abcdefghijklmnopqrstuvwx");
    for (const std::string& file :
         {std::string(), File(good), File(data), File(good + data, "AVI "), "X" + File(good + data),
          File(Chunk("fmt ", "too short") + data), File(Format(2, 1, 8000, 8) + data), File(good + "data"),
          File(Format(1, 0, 8000, 8) + data), File(Format(1, 9, 8000, 8) + data), File(Format(1, 1, 999, 8) + data),
          File(Format(1, 1, 384001, 8) + data), File(Format(1, 1, 8000, 24) + data)})
        EXPECT_TRUE(ReadWave(Bytes(file), 8000).empty()) << file;
    EXPECT_TRUE(ReadWave(Bytes(File(good + data)), 0).empty());
    EXPECT_EQ(ReadWave(Bytes(File(good + data)), 8000).size(), 24u);
}
