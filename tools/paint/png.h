// PNG files, and bytes in them.
#pragma once
#include <cstdint>
#include <string>

namespace paint {

// A PNG file. `rows` from the top: a zero byte, then eight bits of red, green, blue and opacity a pixel; not more than
// 64 KB. They are stored without compression: a few kilobytes, and no library.
std::string Png(int width, int height, const std::string& rows);

std::string Little(uint32_t value, int bytes);  // the lowest byte first

bool WriteBytes(const std::string& path, const std::string& bytes);

}  // namespace paint
