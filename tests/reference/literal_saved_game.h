// What a saved game says, read word by word, and whether it is a game.
#pragma once
#include <array>
#include <cstdlib>
#include <set>
#include <string>
#include <vector>

#include "tests/reference/literal_fitting.h"

namespace literal {

struct Saved {
    std::string path;           // the bytes of line 2
    std::array<int, 9> header;  // seconds, level, width, height, TileSize, CellSize, TileUnit, ScatterGap, upper bound
    std::vector<int> pieces;    // X, Y, Col, Row, Rotation, PieceId, MaskIndex of each; none if one is bad
};

inline std::vector<std::string> Words(const std::string& text) {
    std::vector<std::string> words{""};
    for (const char c : text)
        if (c != ' ' && c != '\t' && c != '\r' && c != '\n')
            words.back() += c;
        else if (!words.back().empty())
            words.emplace_back();
    if (words.back().empty()) words.pop_back();
    return words;
}

// Digits behind a minus sign or none; nothing too if so many bits do not hold it.
inline std::optional<int> Number(const std::string& word, int bits) {
    const size_t sign = word.starts_with('-') ? 1 : 0;
    if (word.size() == sign || word.find_first_not_of("0123456789", sign) != std::string::npos) return std::nullopt;
    const long long value = std::strtoll(word.c_str(), nullptr, 10), end = 1LL << (bits - 1);
    return value >= -end && value < end ? std::optional(int(value)) : std::nullopt;
}

inline std::optional<Saved> Read(const std::string& bytes) {
    const size_t first = bytes.find('\n'), second = first < bytes.size() ? bytes.find('\n', first + 1) : first;
    if (second >= bytes.size()) return std::nullopt;
    Saved saved{bytes.substr(first + 1, second - first - 1), {}, {}};
    if (saved.path.ends_with('\r')) saved.path.pop_back();
    const auto line = Words(bytes.substr(0, first)), words = Words(bytes.substr(second));
    const auto seconds = line.size() == 1 ? Number(line[0], 32) : std::nullopt;
    if (!seconds || saved.path.find('\0') != std::string::npos || words.size() < 8) return std::nullopt;
    saved.header[0] = *seconds;
    for (size_t i = 0; i < 8; ++i)
        if (const auto number = Number(words[i], 16))
            saved.header[i + 1] = *number;
        else
            return std::nullopt;
    const size_t count = size_t(std::max(7 * (saved.header[8] + 1), 0));
    if (saved.header[8] == 32767 || words.size() < 8 + count) return saved;
    for (size_t i = 0; i < count; ++i)
        if (const auto number = Number(words[8 + i], 16))
            saved.pieces.push_back(*number);
        else
            return saved.pieces.clear(), saved;
    return saved;
}

// The file that is written of it.
inline std::string Text(const Saved& saved) {
    if (saved.path.find('\r') != std::string::npos) return "no file";
    const auto number = [](int value) { return (value < 0 ? "" : " ") + std::to_string(value) + " "; };
    std::string text = number(saved.header[0]) + "\r\n" + saved.path + "\r\n";
    for (size_t i = 1; i < 8; ++i) text += number(saved.header[i]) + "\r\n";
    text += number(int(saved.pieces.size()) / 7 - 1) + "\r\n";
    for (size_t i = 0; i < saved.pieces.size(); ++i) text += number(saved.pieces[i]) + (i % 7 == 6 ? "\r\n" : "");
    return text;
}

// The picture in the grid of the pieces, if that is a grid to which its size can lead and they fill it.
inline std::optional<PuzzleModule::Fit> FitOf(const Saved& saved) {
    const auto& [seconds, level, width, height, tile, cell, unit, gap, bound] = saved.header;
    const bool known = std::set{3, 4, 5, 6, 8}.contains(unit) && tile == 20 * unit && cell == 11 * unit;
    if (!known || gap < 1 || gap > 3 || seconds < 0 || width < 1 || height < 1) return std::nullopt;
    Size grid;
    for (size_t i = 0; i < saved.pieces.size(); i += 7) {
        grid.width = std::max(grid.width, saved.pieces[i + 2] + 1);
        grid.height = std::max(grid.height, saved.pieces[i + 3] + 1);
    }
    std::set<int> ids;
    for (size_t i = 0; i < saved.pieces.size(); i += 7) {
        const int col = saved.pieces[i + 2], row = saved.pieces[i + 3], id = saved.pieces[i + 5];
        if (col < 0 || row < 0 || id != row * grid.width + col || !ids.insert(id).second) return std::nullopt;
        if (saved.pieces[i + 4] < 0 || saved.pieces[i + 4] > 3) return std::nullopt;
    }
    if (grid.width < 2 || grid.height < 2 || int(ids.size()) != grid.width * grid.height) return std::nullopt;
    // A picture has grown until it fills its cells, or lost a last cell that it reached into by three pixels.
    const auto leads = [cell = cell](int count, int length) {
        const int reckoned = length / cell + 1;
        return count == reckoned || length == count * cell || (count == reckoned + 1 && length >= reckoned * cell - 3);
    };
    if (!leads(grid.width, width) || !leads(grid.height, height)) return std::nullopt;
    if (!FitRestored({width, height}, cell, GridAround({width, height}, cell))) return std::nullopt;
    return FitRestored({width, height}, cell, grid);
}

}  // namespace literal
