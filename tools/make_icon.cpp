// Makes the program's icon: make_icon FOLDER writes fento-lira-master-16.png, -32.png, -48.png, for dense
// screens -64.png and -96.png, and fento-lira-master.ico with the first three.
//
// One piece of a picture of the sun over the sea. Each size has whole-pixel measures of its
// own: a large icon made smaller would blur. fento-lira-master.svg shows the same piece.
#include <array>
#include <cstdio>
#include <string>

#include "paint/paint.h"
#include "paint/png.h"

using namespace paint;

namespace {

// Measures of one size, in pixels.
struct Plan {
    int size;
    Vec from, to;      // the piece's body
    double corner;     // its rounding
    Vec top, right;    // centres of the knobs
    double knob;       // their radius
    Vec left, bottom;  // centres of the sockets
    double socket;     // their radius
    double neck;       // half the width of every neck
    double rim;        // width of the dark outline
    double horizon;    // where the sea begins
    Vec sun;
    double sunRadius;
};

// clang-format off
constexpr size_t PlansInIco = 3;
constexpr std::array<Plan, 5> Plans = {{
    {16, {1,  5}, {12, 16}, 1.0, { 6.5, 3.5}, {13.0, 10.5}, 2.5, {1.2, 10.5}, { 6.5, 15.8}, 1.5, 1.5, 1.0, 12, { 8.5,  8.5}, 1.5},
    {32, {2,  9}, {24, 31}, 2.0, {13.0, 5.5}, {27.5, 20.0}, 4.5, {5.0, 20.0}, {13.0, 28.0}, 3.2, 3.0, 2.0, 21, {17.0, 16.0}, 3.2},
    {48, {3, 14}, {36, 47}, 3.0, {19.5, 8.0}, {41.5, 30.5}, 6.5, {7.5, 30.5}, {19.5, 42.5}, 4.8, 3.6, 2.0, 32, {25.5, 24.5}, 5.0},
    {64, {4, 18}, {48, 62}, 4.0, {26.0, 11.0}, {55.0, 40.0}, 9.0, {10.0, 40.0}, {26.0, 56.0}, 6.4, 5.4, 3.0, 42, {34.0, 32.0}, 6.6},
    {96, {6, 27}, {72, 93}, 6.0, {39.0, 16.5}, {82.5, 60.0}, 13.5, {15.0, 60.0}, {39.0, 84.0}, 9.6, 7.8, 4.0, 63, {51.0, 48.0}, 9.9},
}};
// clang-format on

double Piece(const Plan& k, Vec p) {
    double d = Box(p, k.from, k.to, k.corner);
    d = std::min({d, Circle(p, k.top, k.knob), Segment(p, k.top, {k.top.x, k.from.y + 2}, k.neck)});
    d = std::min({d, Circle(p, k.right, k.knob), Segment(p, k.right, {k.to.x - 2, k.right.y}, k.neck)});
    const double gap =
        std::min({Circle(p, k.left, k.socket), Segment(p, k.left, {k.from.x - 1, k.left.y}, k.neck * 0.8),
                  Circle(p, k.bottom, k.socket), Segment(p, k.bottom, {k.bottom.x, k.to.y + 1}, k.neck * 0.8)});
    return std::max(d, -gap);
}

Rgb Scene(const Plan& k, Vec p) {
    const double t = p.y / k.size;
    Rgb c = p.y < k.horizon ? Ramp({Hex(0xe4572e), Hex(0xf08a24), Hex(0xf9bf4d)}, t / (k.horizon / k.size))
                            : Ramp({Hex(0x5468c4), Hex(0x35438f)}, (p.y - k.horizon) / (k.size - k.horizon));
    c = Mix(c, Hex(0xfff6d8), Clamp01(0.5 - Circle(p, k.sun, k.sunRadius)));
    if (k.size > 16 && p.y > k.horizon && std::abs(p.x - k.sun.x) < k.sunRadius && int(p.y - k.horizon) % 3 == 1)
        c = Mix(c, Hex(0xfbd58e), 0.7);
    return c;
}

// Rows for a PNG file, 64 points to the pixel.
std::string Pixels(const Plan& k) {
    std::string out;
    auto byte = [&out](double v) { out += char(uint8_t(Clamp01(v) * 255 + 0.5)); };
    for (int y = 0; y < k.size; ++y) {
        out += '\0';  // the row is not filtered
        for (int x = 0; x < k.size; ++x) {
            Rgb sum;
            double cover = 0;
            for (int i = 0; i < 64; ++i) {
                const Vec p{x + (i % 8 + 0.5) / 8, y + (i / 8 + 0.5) / 8};
                const double d = Piece(k, p);
                if (d > 0) continue;
                cover += 1;
                sum = sum + (d > -k.rim ? Hex(0x2a2350) : Scene(k, p));
            }
            const Rgb c = cover > 0 ? sum * (1 / cover) : Rgb{};
            byte(c.r), byte(c.g), byte(c.b), byte(cover / 64);
        }
    }
    return out;
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 2) return std::fprintf(stderr, "make_icon FOLDER\n"), 2;
    const std::string base = std::string(argv[1]) + "/fento-lira-master";
    std::string directory = Little(0, 2) + Little(1, 2) + Little(PlansInIco, 2), images;
    bool good = true;
    for (size_t i = 0; i < Plans.size(); ++i) {
        const Plan& plan = Plans[i];
        const std::string png = Png(plan.size, plan.size, Pixels(plan));
        good = good && WriteBytes(base + "-" + std::to_string(plan.size) + ".png", png);
        if (i >= PlansInIco) continue;
        directory += Little(uint32_t(plan.size), 1) + Little(uint32_t(plan.size), 1) + Little(0, 2) + Little(1, 2) +
                     Little(32, 2);
        directory += Little(uint32_t(png.size()), 4) + Little(uint32_t(6 + 16 * PlansInIco + images.size()), 4);
        images += png;
    }
    return good && WriteBytes(base + ".ico", directory + images) ? 0 : 1;
}
