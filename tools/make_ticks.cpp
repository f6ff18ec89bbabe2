// Makes the ticks of checked menu items: make_ticks FOLDER writes tick.png, tick-selected.png and tick-disabled.png,
// one stroke in the colours that the skin's menus want. They are three times as large as they are shown, so that they
// stay sharp on dense displays.
#include <array>
#include <cstdio>
#include <utility>

#include "paint/paint.h"
#include "paint/png.h"

using namespace paint;

namespace {

constexpr int Size = 36;
constexpr double Radius = 2.7;  // half the width of the stroke

std::string Rows(Rgb colour) {
    const std::vector<Vec> stroke = {{5.5, 19}, {14, 27.5}, {30.5, 8.5}};
    std::string out;
    const auto byte = [&out](double v) { out += char(uint8_t(Clamp01(v) * 255 + 0.5)); };
    for (int y = 0; y < Size; ++y) {
        out += '\0';  // the row is not filtered
        for (int x = 0; x < Size; ++x) {
            byte(colour.r), byte(colour.g), byte(colour.b);
            byte(0.5 - Polyline({x + 0.5, y + 0.5}, stroke, Radius));
        }
    }
    return out;
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 2) return std::fprintf(stderr, "make_ticks FOLDER\n"), 2;
    const std::array<std::pair<const char*, unsigned>, 3> ticks = {
        {{"tick", 0x1d2340}, {"tick-selected", 0xffffff}, {"tick-disabled", 0x8188a5}}};
    bool good = true;
    for (const auto& [name, colour] : ticks)
        good = good && WriteBytes(std::string(argv[1]) + "/" + name + ".png", Png(Size, Size, Rows(Hex(colour))));
    return good ? 0 : 1;
}
