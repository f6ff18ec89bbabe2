// Wave files as the device takes them.
#include "platform/qt/sound/wave_reader.h"
#include "tests/support/picture_files.h"
#include "tests/support/transcript.h"

// Each letter is a chunk: whole, odd, cut off, or of another kind.
TEST(Waves, AreMixedAndMovedToTheDevicesRateOrRefused) {
    Transcript transcript;
    std::minstd_rand random(3);
    const auto chunk = [](const std::string& name, const std::string& body) {
        return name + Little(int64_t(body.size())) + body + std::string(body.size() % 2, '\0');
    };
    const auto read = [&](const std::string& order, const std::string& format, int to) {
        std::string data(random() % 16, '\0'), file;
        for (char& byte : data) byte = char(random());
        std::map<char, std::string> chunks{{'R', "RIFF" + Little(99) + "WAVE"}, {'A', "RIFF" + Little(99) + "AVI "},
                                           {'X', "XIFF" + Little(99) + "WAVE"}, {'f', chunk("fmt ", format)},
                                           {'l', chunk("LIST", "odd")},         {'F', chunk("fmt ", format + "\1\1")},
                                           {'d', chunk("data", data)},          {'D', "data" + Little(5000) + data},
                                           {'s', chunk("fmt ", "too short")}};
        for (const char letter : order) file += chunks[letter];
        return ReadWave(std::as_bytes(std::span(file.data(), file.size())), to);
    };
    const std::vector<std::string> orders{"Rfd", "Rdf", "RFld", "Rfd", "RfD", "Rf", "Rd", "Rsd", "Afd", "Xfd", ""};
    for (int round = 0; round < 500; ++round) {
        const std::string order = transcript.Draw(orders);
        const int kind = transcript.Draw(std::vector{1, 1, 1, 1, 1, 1, 2});
        const int channels = transcript.Draw(std::vector{1, 1, 1, 2, 2, 3, 8, 0, 9});
        const int rate = transcript.Draw(std::vector{1000, 8000, 8000, 11025, 384000, 999, 384001});
        const int bits = transcript.Draw(std::vector{8, 8, 16, 16, 24});
        const int quarters = transcript.Draw(std::vector{1, 3, 4, 5, 9, 14, 0});
        const std::string format =
            Little(kind, 2) + Little(channels, 2) + Little(rate) + Little(0, 6) + Little(bits, 2);
        DO(read(order, format, rate / 4 * quarters));
    }
}
