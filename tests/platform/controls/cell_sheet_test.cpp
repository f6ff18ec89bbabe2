// Cells under the pointer, against a look at every cell; what is told of presses on them.
#include "platform/controls/cell_sheet.h"

#include <cmath>

#include "tests/support/transcript.h"

namespace {

// Every cell, front to back, by the rule in so many words.
CellSheet::Hit SlowHit(const CellSheet& sheet, double x, double y) {
    const auto edge = [](double twips) { return std::floor(twips / 15 + 0.5); };
    for (const CellSheet::Part part : {CellSheet::Part::Figure, CellSheet::Part::Frame})
        for (int i = 1; i <= sheet.UpperBound(); ++i) {
            const auto find = [&](const auto& p) {
                const bool holds = p.visible && x >= edge(p.left) && x < edge(p.left + p.width) && y >= edge(p.top) &&
                                   y < edge(p.top + p.height);
                return holds ? CellSheet::Hit{i, part, x - edge(p.left), y - edge(p.top)} : CellSheet::Hit{};
            };
            const auto& [frame, figure] = sheet.At(i);
            if (const auto hit = part == CellSheet::Part::Figure ? find(figure) : find(frame); hit.index) return hit;
        }
    return {};
}

auto Told(const CellSheet::Hit& hit) { return std::tuple(hit.index, int(hit.part), hit.x, hit.y); }

}  // namespace

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
            auto& [frame, figure] = sheet.Change(k);
            frame.left = upTo(6000) - 500, frame.top = upTo(9000) - 500;
            frame.height = upTo(8) ? upTo(2500) : upTo(200000);
            figure.left = frame.left + upTo(3000) - 1500, figure.top = upTo(8) ? frame.top + 90 : upTo(9000);
            frame.visible = upTo(4) != 0, figure.visible = upTo(4) != 0;
            frame.toolTip = "frame " + std::to_string(k), figure.toolTip = "figure " + std::to_string(k);
            const double x = upTo(460) - 30 + upTo(4) / 4.0, y = upTo(700) - 50;
            const CellSheet::Hit hit = sheet.HitCell(x, y);
            ASSERT_EQ(Told(hit), Told(SlowHit(sheet, x, y)));
            const char* const tips[] = {"", "frame ", "figure "};
            ASSERT_EQ(sheet.ToolTipAt(x, y), tips[int(hit.part)] + (hit.index ? std::to_string(hit.index) : ""));
            const Rect area{int(x), int(y), upTo(300), upTo(400) - 50};
            const std::vector<int> cells = sheet.CellsIn(area);
            ASSERT_TRUE(std::ranges::is_sorted(cells, std::less_equal()));
            for (int i = 1; i <= sheet.UpperBound(); ++i) {
                const auto& [itsFrame, itsFigure] = sheet.At(i);
                const Rect both = Unite(itsFrame.visible ? CellSheet::FramePixels(sheet.At(i)) : Rect(),
                                        itsFigure.visible ? CellSheet::FigurePixels(sheet.At(i)) : Rect());
                const bool listed = std::ranges::binary_search(cells, i), far = both.Bottom() + 127 < area.y;
                ASSERT_TRUE(listed ? !area.Empty() && !both.Empty() && (!far || both.height > 3000)
                                   : Intersect(both, area).Empty());
            }
        }
        sheet.Change(sheet.UpperBound());
        sheet.UnloadAll();
        ASSERT_EQ(Told(sheet.HitCell(100, 100)), Told({}));
    }
}

// Two cells side by side; figures 10 pixels inside their frames.
TEST(CellSheet, TellsOfPressesOnItsCells) {
    Transcript transcript;
    CellSheet sheet("sheet");
    transcript.state = [&] {
        State all;
        Describe(sheet, all);
        return all;
    };
    const auto fill = [&] {
        for (int k = 1; k <= 2; ++k) {
            auto& [frame, figure] = sheet.Load();
            frame.left = (k - 1) * 1500.0, frame.width = frame.height = 1500;
            figure.left = frame.left + 150, figure.top = 150, figure.width = figure.height = 1200;
            frame.visible = figure.visible = true;
        }
    };
    const auto some = [&] { return transcript.Draw<float>({5, 50, 50, 50, 95, 150, 150, 500}); };
    const auto button = [&] { return transcript.Draw<int16_t>({1, 1, 2}); };
    const auto mouse = [&](auto deliver) {
        const int16_t which = button();
        (sheet.*deliver)(which, 4, some(), 50);
    };
    const auto press = [&] { mouse(&CellSheet::DeliverMouseDown); };
    const auto move = [&] { mouse(&CellSheet::DeliverMouseMove); };
    const auto release = [&] { mouse(&CellSheet::DeliverMouseUp); };
    const Steps steps = Steps() | STEP(press()) | STEP(press(), release()) | STEP(release()) | STEP(release()) |
                        STEP(move()) | STEP(sheet.DeliverDblClick(some(), 50)) |
                        STEP(sheet.SetEnabled(transcript.Draw<bool>({true, true, false}))) |
                        STEP(sheet.DeliverWheel({1, 2}));
    DO(fill());
    transcript.Walk(10, steps);
    const auto heard = [&](const std::string& what) {
        return [&transcript, what](int k) { transcript.Hear(what + std::to_string(k)); };
    };
    const auto told = [&](const std::string& what) {
        return [&transcript, what](auto... numbers) {
            transcript.Hear(what + testing::PrintToString(std::tuple(numbers...)));
        };
    };
    sheet.FigureClick = heard("figure "), sheet.FrameClick = heard("frame "), sheet.FigureDblClick = heard("double ");
    sheet.FigureMouseDown = told("down"), sheet.FigureMouseMove = told("move"), sheet.FigureMouseUp = told("up");
    sheet.Wheel = [&](const WheelTurn& turn) { told("wheel")(turn.x, turn.y); };
    transcript.Walk(200, steps);
    sheet.FigureMouseUp = [&](auto...) { sheet.UnloadAll(), sheet.SetBackColor(7); };
    DO(sheet.SetEnabled(true), sheet.DeliverMouseUp(3, 0, 0, 0), press(), sheet.DeliverMouseUp(3, 0, 50, 50));
    DO(fill());
    transcript.Walk(30, steps);
}
