// Makes the four sound effects of the game: make_waves FOLDER writes click.wav, giro.wav,
// complete.wav and rotate.wav there.
//
// All of them are wood: a knock is a handful of damped tones whose frequencies are no
// harmonics of each other. The files differ in their chunks on purpose, so that a reader
// that takes only the shortest header is found out at once:
//
//   file      bytes  format         data   chunks
//   click      1304  22050 Hz  8    1258   fmt of 18 bytes, data
//   giro      12012  44100 Hz 16   11968   fmt, data
//   complete  12120  11025 Hz  8   11966   fmt, LIST, data
//   rotate     1076  22050 Hz  8     899   fmt, data of odd length with its padding byte, LIST
#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <fstream>
#include <string>
#include <vector>

namespace {

constexpr double Pi = 3.14159265358979323846;
using Samples = std::vector<double>;  // -1 to 1

struct Tone {
    double hertz;
    double level;
    double decay;  // seconds until it has fallen to 1/e
};

// Our own generator, so that every machine draws the same noise.
class Noise {
public:
    double Next() {
        state_ = state_ * 6364136223846793005u + 1442695040888963407u;
        return double(state_ >> 40) / double(1 << 23) - 1.0;
    }

private:
    uint64_t state_ = 20;
};

void AddKnock(Samples& out, double rate, double start, double level, const std::vector<Tone>& tones) {
    for (size_t i = size_t(start * rate); i < out.size(); ++i) {
        const double t = double(i) / rate - start;
        for (const Tone& tone : tones)
            out[i] += level * tone.level * std::cos(2 * Pi * tone.hertz * t) * std::exp(-t / tone.decay);
    }
}

void ScaleTo(Samples& out, double peak) {
    double most = 0;
    for (double v : out) most = std::max(most, std::abs(v));
    for (double& v : out) v *= peak / most;
}

// So that the end of a wave makes no tick of its own.
void FadeOut(Samples& out, size_t length) {
    for (size_t i = 0; i < length; ++i) out[out.size() - 1 - i] *= double(i) / double(length);
}

// Two ticks: a piece between finger and table. The second is weaker, at half the length.
Samples Click() {
    Samples out(1258, 0.0);
    const std::vector<Tone> wood = {{1430, 1.0, 0.0030}, {2710, 0.6, 0.0020}, {4380, 0.35, 0.0011}, {620, 0.3, 0.0050}};
    AddKnock(out, 22050, 0.0, 1.0, wood);
    AddKnock(out, 22050, 0.0285, 0.42, wood);
    ScaleTo(out, 1.0);
    FadeOut(out, 60);
    return out;
}

// A turn: almost nothing, then one short soft knock 55 ms in.
Samples Giro() {
    Samples out(5984, 0.0);
    Noise noise;
    double rustle = 0;
    for (size_t i = 0; i < out.size(); ++i) {
        const double t = double(i) / 44100;
        rustle += 0.12 * (noise.Next() - rustle);  // the card sliding on the cloth
        out[i] = 0.05 * rustle * std::exp(-std::pow((t - 0.045) / 0.022, 2));
    }
    AddKnock(out, 44100, 0.0535, 1.0,
             {{980, 1.0, 0.0065}, {1870, 0.45, 0.0040}, {3320, 0.2, 0.0020}, {410, 0.4, 0.0090}});
    ScaleTo(out, 0.7);
    FadeOut(out, 400);
    return out;
}

// The game is won: a rolled major chord on wooden bars. The level is held even, window by
// window, so that it stays a steady signal to its end.
Samples Complete() {
    constexpr double Rate = 11025;
    Samples out(11966, 0.0);
    const double notes[] = {1046.5, 1318.5, 1568.0, 2093.0, 1568.0, 1318.5};
    for (int i = -4; i < 24; ++i) {
        const double hertz = notes[(i + 24) % 6];
        AddKnock(out, Rate, std::max(0.0, i * 0.0475), 1.0,
                 {{hertz, 1.0, 0.22}, {hertz * 2.01, 0.3, 0.12}, {hertz / 2, 0.25, 0.3}});
    }
    for (size_t i = 0; i < 20; ++i) out[i] *= double(i) / 20;  // no tick at the start
    constexpr int Reach = 220;  // 20 ms to either side
    Samples level(out.size());
    for (int i = 0; i < int(out.size()); ++i) {
        for (int j = std::max(0, i - Reach); j < std::min(int(out.size()), i + Reach); ++j)
            level[size_t(i)] = std::max(level[size_t(i)], std::abs(out[size_t(j)]));
    }
    for (size_t i = 0; i < out.size(); ++i) out[i] *= 0.3 / level[i];
    FadeOut(out, 120);
    return out;
}

// A piece at home: one dry tick, gone within 5 ms, and a faint tail.
Samples Rotate() {
    Samples out(899, 0.0);
    AddKnock(out, 22050, 0.0, 1.0,
             {{1760, 1.0, 0.0012}, {3190, 0.6, 0.0009}, {5230, 0.3, 0.0006}, {880, 0.012, 0.0200}});
    ScaleTo(out, 1.0);
    FadeOut(out, 80);
    return out;
}

void Put16(std::string& out, unsigned v) {
    out += char(v & 255);
    out += char(v >> 8 & 255);
}

void Put32(std::string& out, unsigned v) {
    Put16(out, v & 65535);
    Put16(out, v >> 16);
}

std::string Chunk(const std::string& id, const std::string& body) {
    std::string out = id;
    Put32(out, unsigned(body.size()));
    out += body;
    if (body.size() % 2) out += '\0';
    return out;
}

// Title and licence, filled with blanks up to `length` bytes with the chunk's own head.
std::string InfoChunk(const std::string& title, size_t length) {
    std::string licence = "Fento-Lira Master, MIT";
    std::string info = "INFO" + Chunk("INAM", title + std::string(title.size() % 2 ? 1 : 2, '\0'));
    licence.resize(length - 8 - info.size() - 8 - 1, ' ');
    return Chunk("LIST", info + Chunk("ICOP", licence + '\0'));
}

std::string Format(unsigned rate, unsigned bits, bool withExtension) {
    std::string body;
    Put16(body, 1);  // PCM
    Put16(body, 1);  // one channel
    Put32(body, rate);
    Put32(body, rate * bits / 8);
    Put16(body, bits / 8);
    Put16(body, bits);
    if (withExtension) Put16(body, 0);
    return Chunk("fmt ", body);
}

std::string Data(const Samples& samples, unsigned bits) {
    std::string body;
    for (double v : samples) {
        if (bits == 8)
            body += char(uint8_t(std::clamp(std::floor(128 + 127.5 * v), 0.0, 255.0)));
        else
            Put16(body, unsigned(int(std::floor(32767 * v + 0.5))) & 65535);
    }
    return Chunk("data", body);
}

bool Write(const std::string& path, const std::string& chunks, size_t expectedSize) {
    const std::string file = Chunk("RIFF", "WAVE" + chunks);
    if (file.size() != expectedSize) {
        std::fprintf(stderr, "%s: %zu bytes instead of %zu\n", path.c_str(), file.size(), expectedSize);
        return false;
    }
    return bool(std::ofstream(path, std::ios::binary).write(file.data(), std::streamsize(file.size())).flush());
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 2) return std::fprintf(stderr, "make_waves FOLDER\n"), 2;
    const std::string folder = std::string(argv[1]) + "/";
    const bool good =
        Write(folder + "click.wav", Format(22050, 8, true) + Data(Click(), 8), 1304) &&
        Write(folder + "giro.wav", Format(44100, 16, false) + Data(Giro(), 16), 12012) &&
        Write(folder + "complete.wav", Format(11025, 8, false) + InfoChunk("Jogo completo", 110) + Data(Complete(), 8),
              12120) &&
        Write(folder + "rotate.wav", Format(22050, 8, false) + Data(Rotate(), 8) + InfoChunk("No lugar", 132), 1076);
    return good ? 0 : 1;
}
