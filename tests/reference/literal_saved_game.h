// What a saved game says, read word by word.
#pragma once
#include <cmath>
#include <cstdlib>
#include <optional>
#include <sstream>
#include <string>
#include <vector>

namespace literal {

struct Saved {
    std::string path;  // the bytes of line 2
    // Seconds, level, width, height, TileSize, CellSize, TileUnit, ScatterGap and upper bound; then of each piece
    // X, Y, Col, Row, Rotation, PieceId and MaskIndex, unless one is missing or bad.
    std::vector<int> numbers;
};

// The numbers of `text` up to the first word that is none, or that so many bits do not hold.
inline std::vector<int> NumbersOf(const std::string& text, int bits) {
    std::istringstream words(text);
    std::vector<int> numbers;
    for (std::string word; words >> word;) {
        const size_t sign = word.starts_with('-') ? 1 : 0;
        const double value = std::strtod(word.c_str(), nullptr), end = std::ldexp(1, bits - 1);
        if (word.size() == sign || word.find_first_not_of("0123456789", sign) != std::string::npos) break;
        if (value < -end || value >= end) break;
        numbers.push_back(int(value));
    }
    return numbers;
}

inline std::optional<Saved> Read(const std::string& bytes) {
    const size_t first = bytes.find('\n'), second = first < bytes.size() ? bytes.find('\n', first + 1) : first;
    if (second >= bytes.size()) return std::nullopt;
    Saved saved{bytes.substr(first + 1, second - first - 1), NumbersOf(bytes.substr(0, first) + " 0", 32)};
    if (saved.path.ends_with('\r')) saved.path.pop_back();
    const std::vector<int> rest = NumbersOf(bytes.substr(second), 16);
    if (saved.numbers.size() != 2 || saved.path.find('\0') != std::string::npos || rest.size() < 8) return std::nullopt;
    saved.numbers.pop_back();
    const size_t count = size_t(std::max(rest[7] + 1, 0)), end = 8 + count * 7;
    const bool whole = count < 32768 && rest.size() >= end;
    saved.numbers.insert(saved.numbers.end(), rest.begin(), rest.begin() + long(whole ? end : 8));
    return saved;
}

// The file that is written of it, if there is one.
inline std::optional<std::string> Text(const Saved& saved) {
    if (saved.path.find('\r') != std::string::npos) return std::nullopt;
    std::string text;
    for (size_t i = 0; i < saved.numbers.size(); ++i) {
        const int number = i == 8 ? int((saved.numbers.size() - 9) / 7) - 1 : saved.numbers[i];
        text += (number < 0 ? "" : " ") + std::to_string(number) + (i < 9 || i % 7 == 1 ? " \r\n" : " ");
        if (i == 0) text += saved.path + "\r\n";
    }
    return text;
}

}  // namespace literal
