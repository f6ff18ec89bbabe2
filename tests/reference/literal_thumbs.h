// Where each thumbnail stands and what the player did to it, written down rule by rule. Twips, pictures in pixels.
#pragma once
#include <algorithm>
#include <cmath>
#include <string>
#include <vector>

#include "core/game_state.h"
#include "platform/drawing/geometry.h"
#include "platform/system/numbers.h"

class LiteralThumbs {
public:
    struct Cell {
        double left, top, width, height;  // of the figure
        Color frame;
        std::string text;
        bool operator==(const Cell&) const = default;
    };
    std::vector<Cell> cells;
    int items = 0, selected = 0, highlighted = 0;
    double sheetWidth = 0, sheetHeight = 0, top = 10;
    int value = 0, max = 32767;
    std::string events;

    void Resize(int width, int height) {
        frameWidth_ = width - 240 - 20, frameHeight_ = height - 20;
        sheetWidth = frameWidth_ - PuzzleModule::TileSize, sheetHeight = frameHeight_ - PuzzleModule::TileSize;
        top = 10;
        Build();
    }
    void Clear() {
        cells.clear(), files_.clear(), items = selected = highlighted = 0;
        sheetWidth = frameWidth_, sheetHeight = frameHeight_;
        SetMax(200);
    }
    // A file of 3000 bytes; one that is no picture shows the last that was one.
    void Add(Size natural, bool decodes) {
        ++items;
        files_.push_back(decodes ? natural : Size{});
        Build();
    }
    void SetMax(double to) {
        if (to > 32767) return;
        max = int(to);
        ScrollTo(std::clamp(value, std::min(max, 0), std::max(max, 0)));
    }
    void ScrollTo(int to) {
        if (to != value) top = -double(to);
        value = to;
    }
    void Drag(int to, bool goesOn) {
        ScrollTo(to);
        if (dragged_ && !goesOn) top = -double(to);
        dragged_ = goesOn;
    }
    void Wheel(double turn) {
        if (max > 0) ScrollTo(int(std::nearbyint(std::clamp(value - turn, 0.0, double(max)))));
    }
    // The first of the cells there: figures lie in front of frames. 0 if there is none, negative for a frame.
    int CellAt(double x, double y) const {
        const auto in = [x, y](double left, double upper, double width, double height) {
            const auto pixel = [](double twips) { return std::floor(twips / 15 + 0.5); };
            return x >= pixel(left) && y >= pixel(upper) && x < pixel(left + width) && y < pixel(upper + height);
        };
        for (size_t k = 0; k < cells.size(); ++k)
            if (in(cells[k].left, cells[k].top, cells[k].width, cells[k].height)) return int(k) + 1;
        for (size_t k = 0; k < cells.size(); ++k)
            if (in(FrameLeft(int(k)), FrameTop(int(k)), 1725, 1680)) return -int(k) - 1;
        return 0;
    }
    void Click(int k) {
        if (k == 0) return;
        selected = std::abs(k);
        if (highlighted > 0) cells[size_t(highlighted) - 1].frame = 0xC0C0C0;
        highlighted = selected;
        cells[size_t(highlighted) - 1].frame = 0;
        events += "click " + std::to_string(selected) + " ";
    }
    void DblClick(int k) {
        if (k <= 0) return;
        selected = k;
        events += "double " + std::to_string(k) + " ";
    }

private:
    int FrameLeft(int k) const { return columns_[size_t(k)].first * 1835; }
    int FrameTop(int k) const { return columns_[size_t(k)].second * 1790 + 200; }
    void Build() {
        const int columns = int(sheetWidth / 1835);
        if (items == 0 || columns < 1) return;
        columns_.resize(cells.size());
        while (int(cells.size()) < items) {
            const int k = int(cells.size());
            columns_.emplace_back(k % columns, k / columns);
            if (files_[size_t(k)] != Size{}) last_ = files_[size_t(k)];
            const auto units = [](int pixels) { return std::nearbyint(pixels * 2540 / 96.0); };
            const double across = units(last_.width), down = units(last_.height);
            const bool wide = down / (across / 1635) <= 1500;
            const double width = wide ? 1635 : std::nearbyint(across / (down / 1500));
            const double height = wide ? std::nearbyint(down / (across / 1635)) : 1500;
            const auto shown = [&](int pixels) { return std::to_string(int(units(pixels) / 26.4586148648649)); };
            cells.push_back(
                {FrameLeft(k) + (1725 - width) / 2, FrameTop(k) + (1680 - height) / 2, width, height, 0xC0C0C0,
                 std::to_string(k + 1) + ".bmp (2k) - " + shown(last_.width) + " x " + shown(last_.height)});
        }
        sheetHeight = (items / columns + (items % columns > 0)) * 1810 + 200;
        SetMax(sheetHeight - frameHeight_);
    }
    bool dragged_ = false;
    double frameWidth_ = 0, frameHeight_ = 0;
    std::vector<Size> files_;
    Size last_;
    std::vector<std::pair<int, int>> columns_;  // of each cell, and its row
};
