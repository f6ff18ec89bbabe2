// The numbers of a scroll bar, and what it raises.
#include <gmock/gmock.h>

#include "platform/controls/scroll_bar.h"
#include "platform/headless/desktop.h"

namespace {

// Every bar starts from Min 0, Max 100, Value 40 and steps of 5 and 20.
struct Bars : testing::Test {
    Bars() {
        bar.SetMax(100);
        bar.SetValue(40);
        bar.SetSmallChange(5);
        bar.SetLargeChange(20);
        bar.Change = [this] { ++changes; };
        bar.Scroll = [this] { ++scrolls; };
    }
    void TestBody() override {}
    ScrollBar bar{"bar", Orientation::Vertical};
    int changes = 0, scrolls = 0;
};

struct Case {
    const char* what;
    std::function<bool(ScrollBar&)> act;
    bool done;
    std::array<int, 6> left;  // Min, Max, Value, SmallChange, LargeChange, and how often Change was raised
};
const Case Cases[] = {
    {"ValueRoundedToEven", [](auto& b) { return b.SetValue(42.5); }, true, {0, 100, 42, 5, 20, 1}},
    {"ValueRoundedIntoRange", [](auto& b) { return b.SetValue(100.5); }, true, {0, 100, 100, 5, 20, 1}},
    {"ValueAboveMax", [](auto& b) { return b.SetValue(101); }, false, {0, 100, 40, 5, 20, 0}},
    {"ValueNoNumber", [](auto& b) { return b.SetValue(std::nan("")); }, false, {0, 100, 40, 5, 20, 0}},
    {"MaxTakesValueAlong", [](auto& b) { return b.SetMax(30); }, true, {0, 30, 30, 5, 20, 1}},
    {"MaxBelowMin", [](auto& b) { return b.SetMax(-1390); }, true, {0, -1390, 0, 5, 20, 1}},
    {"ValueBetweenSwappedEnds",
     [](auto& b) { return b.SetMax(-1390) && b.SetValue(-700); },
     true,
     {0, -1390, -700, 5, 20, 2}},
    {"ValueBeyondSwappedEnds",
     [](auto& b) { return b.SetMax(-1390) && b.SetValue(1); },
     false,
     {0, -1390, 0, 5, 20, 1}},
    {"MaxAt16Bits", [](auto& b) { return b.SetMax(32767.4); }, true, {0, 32767, 40, 5, 20, 0}},
    {"MaxBeyond16Bits", [](auto& b) { return b.SetMax(32768); }, false, {0, 100, 40, 5, 20, 0}},
    {"MinTakesValueAlong", [](auto& b) { return b.SetMin(60); }, true, {60, 100, 60, 5, 20, 1}},
    {"SmallChangeZero", [](auto& b) { return b.SetSmallChange(0.5); }, false, {0, 100, 40, 5, 20, 0}},
    {"LargeChange", [](auto& b) { return b.SetLargeChange(1.5); }, true, {0, 100, 40, 5, 2, 0}},
    {"LargeChangeBeyond16Bits", [](auto& b) { return b.SetLargeChange(40000); }, false, {0, 100, 40, 5, 20, 0}},
};

TEST(BarSetters, TakeOrRefuseWhole) {
    for (const Case& c : Cases) {
        Bars bars;
        const ScrollBar& bar = bars.bar;
        EXPECT_EQ(c.act(bars.bar), c.done) << c.what;
        EXPECT_EQ(
            (std::array<int, 6>{bar.Min(), bar.Max(), bar.Value(), bar.SmallChange(), bar.LargeChange(), bars.changes}),
            c.left)
            << c.what;
    }
}

TEST_F(Bars, DraggingScrollsAndTheEndOfItChanges) {
    bar.DeliverValue(50, true);
    bar.DeliverValue(50, true);
    bar.DeliverValue(60, true);
    EXPECT_EQ(scrolls, 2);
    EXPECT_EQ(changes, 0);
    bar.DeliverValue(60, false);
    bar.DeliverValue(60, false);
    EXPECT_EQ(changes, 1) << "no drag, no other value";
    bar.DeliverValue(5000, false);
    EXPECT_EQ(bar.Value(), 100);
    bar.SetMax(-50);
    bar.DeliverValue(-90, false);
    EXPECT_EQ(bar.Value(), -50);
    // A disabled bar keeps the player out and the program in.
    bar.SetEnabled(false);
    bar.DeliverValue(-10, false);
    EXPECT_EQ(bar.Value(), -50);
    EXPECT_TRUE(bar.SetValue(-10));
}

TEST_F(Bars, AChangeHandlerThatSetsValueForEverComesBack) {
    bar.Change = [this] {
        ++changes;
        bar.SetValue(bar.Value() == 0 ? 1 : 0);
    };
    bar.SetValue(10);
    EXPECT_GT(changes, 1);
    EXPECT_LT(changes, 1000);
    changes = 0;
    bar.Change = [this] { ++changes; };
    bar.SetValue(77);
    EXPECT_EQ(changes, 1) << "and the bar works as before";
}

}  // namespace
