// Cells under the pointer, against a look at every cell; clicks and double clicks.
#include <gmock/gmock.h>

#include <cmath>
#include <random>

#include "platform/controls/cell_sheet.h"

namespace {

using testing::ElementsAre;

// Every cell, front to back, by the rule in so many words.
CellSheet::Hit SlowHit(const CellSheet& sheet, double x, double y) {
    const auto edge = [](double twips) { return std::floor(twips / 15 + 0.5); };
    for (const CellSheet::Part part : {CellSheet::Part::Figure, CellSheet::Part::Frame})
        for (int i = 1; i <= sheet.UpperBound(); ++i) {
            const auto holds = [&](const auto& p) {
                return p.visible && x >= edge(p.left) && x < edge(p.left + p.width) && y >= edge(p.top) &&
                       y < edge(p.top + p.height);
            };
            const auto& [frame, figure] = sheet.At(i);
            const bool isFigure = part == CellSheet::Part::Figure;
            if (isFigure && holds(figure)) return {i, part, x - edge(figure.left), y - edge(figure.top)};
            if (!isFigure && holds(frame)) return {i, part, x - edge(frame.left), y - edge(frame.top)};
        }
    return {};
}

TEST(CellSheet, FindsTheSamePartAsALookAtEveryCell) {
    const unsigned seed = std::random_device{}();
    SCOPED_TRACE("seed " + std::to_string(seed));
    std::mt19937 random(seed);
    const auto upTo = [&random](int n) { return int(random() % unsigned(n)); };
    for (int round = 0; round < 30; ++round) {
        CellSheet sheet("sheet");
        for (int step = 0; step < 200; ++step) {
            const int k =
                step % 3 || sheet.UpperBound() == 0 ? (sheet.Load(), sheet.UpperBound()) : 1 + upTo(sheet.UpperBound());
            CellSheet::Cell& cell = sheet.Change(k);
            cell.frame.left = upTo(6000) - 500;
            cell.frame.top = upTo(9000) - 500;
            cell.frame.height = upTo(8) ? upTo(2500) : upTo(200000);
            cell.frame.visible = upTo(4) != 0;
            cell.figure.left = cell.frame.left + upTo(3000) - 1500;
            cell.figure.top = upTo(8) ? cell.frame.top + 90 : upTo(9000);
            cell.figure.visible = upTo(4) != 0;
            const double x = upTo(460) - 30 + upTo(4) / 4.0, y = upTo(700) - 50;
            const CellSheet::Hit fast = sheet.HitCell(x, y), slow = SlowHit(sheet, x, y);
            ASSERT_EQ(std::tuple(fast.index, fast.part, fast.x, fast.y),
                      std::tuple(slow.index, slow.part, slow.x, slow.y));
        }
        sheet.UnloadAll();
        EXPECT_EQ(sheet.HitCell(100, 100).part, CellSheet::Part::None);
        EXPECT_EQ(sheet.UpperBound(), 0);
    }
}

class Clicks : public testing::Test {
protected:
    // Two cells side by side; figures 10 pixels inside their frames.
    Clicks() {
        for (int k = 1; k <= 2; ++k) {
            CellSheet::Cell& cell = sheet.Load();
            cell.frame = {.left = (k - 1) * 1500.0, .width = 1500, .height = 1500, .visible = true, .toolTip = ""};
            cell.figure.left = cell.frame.left + 150;
            cell.figure.top = 150;
            cell.figure.width = cell.figure.height = 1200;
            cell.figure.visible = true;
        }
        sheet.FigureClick = [this](int k) { Note("figure", k); };
        sheet.FrameClick = [this](int k) { Note("frame", k); };
        sheet.FigureDblClick = [this](int k) { Note("double", k); };
    }
    void Note(const std::string& what, int k) { events.push_back(what + " " + std::to_string(k)); }
    void Click(float x, float y, float toX, float toY) {
        sheet.DeliverMouseDown(1, 0, x, y);
        sheet.DeliverMouseUp(1, 0, toX, toY);
    }
    CellSheet sheet{"sheet"};
    std::vector<std::string> events;
};

TEST_F(Clicks, NeedPressAndReleaseOnOnePart) {
    Click(50, 50, 60, 60);
    Click(5, 5, 95, 95);
    Click(50, 50, 5, 5);
    Click(50, 50, 150, 50);
    Click(50, 50, 500, 50);
    Click(500, 50, 50, 50);
    sheet.DeliverMouseUp(1, 0, 50, 50);
    EXPECT_THAT(events, ElementsAre("figure 1", "frame 1"));
}

TEST_F(Clicks, ADoubleClickFollowsOneClickAndOnlyOnAFigure) {
    for (const float at : {50.0f, 5.0f}) {
        Click(at, at, at, at);
        sheet.DeliverDblClick(at, at);
        sheet.DeliverMouseUp(1, 0, at, at);
    }
    EXPECT_THAT(events, ElementsAre("figure 1", "double 1", "frame 1"));
}

}  // namespace
