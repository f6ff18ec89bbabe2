// What a saved game says, read word by word, and whether it is a game.
#pragma once
#include <cstdlib>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include "tests/reference/literal_fitting.h"

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

// The picture in the grid of the pieces, if that is a grid to which its size can lead and they fill it.
inline std::optional<PuzzleModule::Fit> FitOf(const Saved& saved) {
    const std::vector<int>& n = saved.numbers;
    const int width = n[2], height = n[3], cell = n[5], unit = n[6];
    const bool known = std::set{3, 4, 5, 6, 8}.contains(unit) && n[4] == 20 * unit && cell == 11 * unit;
    if (!known || n[7] < 1 || n[7] > 3 || n[0] < 0 || width < 1 || height < 1) return std::nullopt;
    Size last;
    std::set<int> ids;
    for (size_t i = 9; i < n.size(); i += 7) last = {std::max(last.width, n[i + 2]), std::max(last.height, n[i + 3])};
    for (size_t i = 9; i < n.size(); i += 7) {
        if (n[i + 2] < 0 || n[i + 3] < 0 || n[i + 4] < 0 || n[i + 4] > 3) return std::nullopt;
        if (n[i + 5] != n[i + 3] * (last.width + 1) + n[i + 2] || !ids.insert(n[i + 5]).second) return std::nullopt;
    }
    // A picture has grown until it fills its cells, or lost a last cell that it reached into by three pixels.
    const auto leads = [cell](int length, int to) {
        return to > 0 && (to == length / cell || length == (to + 1) * cell ||
                          (to == length / cell + 1 && length % cell >= cell - 3));
    };
    if (int(ids.size()) != (last.width + 1) * (last.height + 1)) return std::nullopt;
    if (!leads(width, last.width) || !leads(height, last.height)) return std::nullopt;
    return FitRestored({width, height}, cell, {last.width + 1, last.height + 1});
}

}  // namespace literal
