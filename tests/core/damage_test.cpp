#include "core/damage.h"

#include <gtest/gtest.h>

#include <random>

#include "core/restacking.h"

namespace PuzzleModule {
namespace {

TEST(DamageMerger, HoldsEveryPartInFewRectanglesWithinBounds) {
    const uint32_t seed = std::random_device{}();
    SCOPED_TRACE(seed);
    std::minstd_rand random(seed);
    const auto below = [&random](int bound) { return int(random() % uint32_t(bound)); };
    DamageMerger merger;
    for (int run = 1; run <= 300; ++run) {
        const Rect bounds{0, 0, 1 + below(3000), 1 + below(2000)};
        Region parts;
        for (int i = below(run); i >= 0; --i) {
            const Rect part = Intersect({below(3000) - 50, below(2000) - 50, 1 + below(81), 1 + below(81)}, bounds);
            if (!part.Empty()) parts.push_back(part);
        }
        const Region& merged = merger.Merge(parts, bounds);
        ASSERT_LE(merged.size(), DamageMerger::MaxRects);
        for (const Rect& part : parts) {
            // Every pixel of every edge lies in one rectangle or another.
            for (int x = part.x; x < part.Right(); ++x)
                for (const int y : {part.y, part.Bottom() - 1})
                    ASSERT_TRUE(std::ranges::any_of(merged, [&](const Rect& r) { return r.Contains(x, y); }));
        }
        for (const Rect& rect : merged) ASSERT_EQ(Intersect(rect, bounds), rect);
    }
}

TEST(Restacking, TakesOutAsFewAsPossible) {
    Restacking restacking;
    struct Case {
        std::vector<int> oldPlaces, moved;
    };
    for (const Case& c : {Case{{}, {}}, Case{{0, 1, 2}, {}}, Case{{3, 0, 1, 2, 4}, {0}}, Case{{1, 2, 3, 0}, {3}},
                          Case{{0, 4, 2, 3, 1, 5}, {1, 4}}})
        EXPECT_EQ(restacking.Moved(c.oldPlaces), c.moved);
}

}  // namespace
}  // namespace PuzzleModule
