#include "paint/png.h"

#include <fstream>

namespace paint {

namespace {

std::string Big32(uint32_t v) { return {char(v >> 24), char(v >> 16 & 255), char(v >> 8 & 255), char(v & 255)}; }

std::string Chunk(const std::string& body) {  // `body` with its four letters in front
    uint32_t crc = 0xffffffffu;
    for (char c : body) {
        crc ^= uint8_t(c);
        for (int i = 0; i < 8; ++i) crc = crc >> 1 ^ (crc & 1 ? 0xedb88320u : 0);
    }
    return Big32(uint32_t(body.size() - 4)) + body + Big32(~crc);
}

}  // namespace

std::string Little(uint32_t value, int bytes) {
    std::string out;
    for (int i = 0; i < bytes; ++i) out += char(value >> 8 * i & 255);
    return out;
}

std::string Png(int width, int height, const std::string& rows) {
    uint32_t a = 1, b = 0;
    for (char c : rows) a = (a + uint8_t(c)) % 65521, b = (b + a) % 65521;
    const std::string stream = std::string("\x78\x01\x01", 3) + Little(uint32_t(rows.size()), 2) +
                               Little(~uint32_t(rows.size()), 2) + rows + Big32(b << 16 | a);
    const std::string head =
        "IHDR" + Big32(uint32_t(width)) + Big32(uint32_t(height)) + std::string("\x08\x06\0\0\0", 5);
    return "\x89PNG\r\n\x1a\n" + Chunk(head) + Chunk("IDAT" + stream) + Chunk("IEND");
}

bool WriteBytes(const std::string& path, const std::string& bytes) {
    return bool(std::ofstream(path, std::ios::binary).write(bytes.data(), std::streamsize(bytes.size())).flush());
}

}  // namespace paint
