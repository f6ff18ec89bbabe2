// Storage that comes late, what counts as drawn, and who hears of it.
#include "platform/surface.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/raster.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

struct Ear : SurfaceListener {
    std::vector<Region> heard;
    void SurfaceRefreshed(const Region& damage) override { heard.push_back(damage); }
};

TEST(Surface, ClearSurfaceAsLargeAsAnyBoardKeepsNoPixels) {
    Surface board(200000, 200000, BlackPixel);
    board.SetBackground(ToPixel(Rgb(1, 2, 3)));
    FillRect(board, {10, 10, 100000, 100000}, Rgb(1, 2, 3));
    EXPECT_TRUE(board.IsUniform());
    EXPECT_EQ(Point(board, 199999, 199999), Rgb(1, 2, 3));
}

TEST(Surface, WhatIsNotStoredSwallowsDrawingAndReadsAsBackground) {
    Surface surface(160, 160);
    surface.SetStorage(60, 50);
    FillRect(surface, {40, 40, 100, 100}, 0);
    EXPECT_EQ(Point(surface, 59, 49), 0);
    for (const auto& [x, y] : {std::pair{60, 49}, {59, 50}, {139, 139}}) EXPECT_EQ(Point(surface, x, y), 0xFFFFFF);
    EXPECT_EQ(Point(surface, 160, 0), -1);
    EXPECT_EQ(Point(surface, 0, -1), -1);
    EXPECT_THAT(surface.Damage(), ElementsAre(Rect{0, 0, 160, 160}));
}

TEST(Surface, RefreshHandsOnWhatWasDrawnAndOnlyOnce) {
    Surface surface(100, 100);
    Ear ear;
    surface.SetListener(&ear);
    surface.Refresh();
    FillRect(surface, {10, 10, 20, 20}, 0);
    FillRect(surface, {12, 12, 5, 5}, Rgb(9, 9, 9));  // inside the first
    FillRect(surface, {90, 90, 50, 50}, 0);           // hangs over the corner
    surface.Refresh();
    surface.Refresh();
    ASSERT_EQ(ear.heard.size(), 2u);
    EXPECT_THAT(ear.heard[0], ElementsAre(Rect{0, 0, 100, 100}));
    EXPECT_THAT(ear.heard[1], ElementsAre(Rect{10, 10, 20, 20}, Rect{90, 90, 10, 10}));
    EXPECT_THAT(surface.Damage(), IsEmpty());
}

TEST(Surface, ManyRectanglesBecomeOneThatHoldsThemAll) {
    Surface surface(100, 100);
    surface.Refresh();
    for (int i = 0; i < 9; ++i) SetPixel(surface, 5 + i * 10, 50 - i, 0);
    EXPECT_THAT(surface.Damage(), ElementsAre(Rect{5, 42, 81, 9}));
}

TEST(Surface, RevisionTellsOfEveryKindOfDrawing) {
    Surface surface(20, 20);
    Surface other(20, 20);
    uint64_t last = surface.Revision();
    const auto grew = [&] { return surface.Revision() > std::exchange(last, surface.Revision()); };
    FillRect(surface, {0, 0, 5, 5}, 0);
    EXPECT_TRUE(grew());
    BitBlt(surface, 0, 0, 5, 5, other, 0, 0, RasterOp::SrcCopy);
    EXPECT_TRUE(grew());
    surface.Cls();
    EXPECT_TRUE(grew());
    surface.SetBackground(BlackPixel);
    EXPECT_TRUE(grew());
    surface.Resize(20, 20);
    EXPECT_TRUE(grew());
    surface = Surface(20, 20);
    EXPECT_TRUE(grew());
    BitBlt(surface, 20, 0, 5, 5, other, 0, 0, RasterOp::SrcCopy);
    EXPECT_FALSE(grew()) << "nothing of the block lies inside";
}

TEST(Surface, PixelsThatMoveInAreHeardByTheListenerThatWasThere) {
    Surface surface(10, 10);
    Ear ear;
    surface.SetListener(&ear);
    Surface drawn(4, 3);
    FillRect(drawn, {1, 1, 1, 1}, 0);
    surface = std::move(drawn);
    surface.Refresh();
    ASSERT_EQ(ear.heard.size(), 1u);
    EXPECT_THAT(ear.heard[0], ElementsAre(Rect{0, 0, 4, 3}));
    EXPECT_EQ(Point(surface, 1, 1), 0);
}

}  // namespace
