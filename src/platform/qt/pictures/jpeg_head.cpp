#include "platform/qt/pictures/jpeg_head.h"

#include <algorithm>

namespace {

constexpr int MostSteps =
    10'000;  // segments and fill bytes; a photograph has some ten, one with much about it hundreds

uint8_t Byte(const QByteArray& bytes, qsizetype at) { return uint8_t(bytes[at]); }
int Big16(const QByteArray& bytes, qsizetype at) { return Byte(bytes, at) << 8 | Byte(bytes, at + 1); }

struct Frame {
    int colours = 0;
    bool progressive = false;
    int64_t bytes = 0;  // of its coefficients
};

// A frame's header: each colour has so many blocks across and down in a unit.
Frame FrameOf(int marker, const QByteArray& body) {
    Frame frame;
    frame.colours = Byte(body, 5);
    frame.progressive = marker == 0xC2 || marker == 0xC6 || marker == 0xCA || marker == 0xCE;
    if (body.size() < 6 + 3 * frame.colours) return {};
    const auto across = [&body](int colour) { return Byte(body, 7 + 3 * colour) >> 4; };
    const auto down = [&body](int colour) { return Byte(body, 7 + 3 * colour) & 15; };
    int mostAcross = 1, mostDown = 1;
    for (int i = 0; i < frame.colours; ++i) {
        mostAcross = std::max(mostAcross, across(i));
        mostDown = std::max(mostDown, down(i));
    }
    const int64_t units = (Big16(body, 3) / (8 * mostAcross) + 1) * int64_t(Big16(body, 1) / (8 * mostDown) + 1);
    for (int i = 0; i < frame.colours; ++i) frame.bytes += units * across(i) * down(i) * 128;
    return frame;
}

}  // namespace

std::optional<JpegHead> ReadJpegHead(QIODevice& file) {
    Frame frame;
    int64_t at = 2;
    for (int step = 0; step < MostSteps && file.seek(at); ++step) {
        const QByteArray head = file.read(4);
        if (head.size() < 4) return std::nullopt;
        const int marker = Byte(head, 1);
        if (Byte(head, 0) != 0xFF || marker == 0xFF) {  // fill, or what decoders pass over
            ++at;
            continue;
        }
        if (marker <= 0x01 || (marker >= 0xD0 && marker <= 0xD7)) {  // stands alone
            at += 2;
            continue;
        }
        const QByteArray body = file.read(std::max(0, Big16(head, 2) - 2));
        const bool frames = marker >= 0xC0 && marker <= 0xCF && marker != 0xC4 && marker != 0xC8 && marker != 0xCC;
        if (frames && body.size() >= 6) frame = FrameOf(marker, body);
        if (marker == 0xDA) {
            const bool several = frame.progressive || (!body.isEmpty() && Byte(body, 0) < frame.colours);
            return JpegHead{several ? frame.bytes : 0, at};
        }
        at += 2 + Big16(head, 2);
    }
    return std::nullopt;
}
