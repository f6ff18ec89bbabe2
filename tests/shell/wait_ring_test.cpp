// The wait ring: its nine frames pixel by pixel, and when it turns.
#include "shell/uc_firefox_wait.h"

#include <gmock/gmock.h>

#include <cmath>

#include "platform/controls/form.h"
#include "platform/headless/desktop.h"

using testing::ElementsAre;

namespace {

// The ring as a rule instead of a table. Dots stand on a circle from N clockwise; the head of frame f is
// dot f, and shades grow lighter backwards from it, 13 a step (12 from C to D and from G to H).
Color RingPixel(int frame, int x, int y, Color behind) {
    constexpr int left[8] = {6, 10, 12, 10, 6, 2, 0, 2}, grey[8] = {65, 78, 91, 103, 116, 129, 142, 154};
    for (int dot = 0; dot < 8; ++dot) {
        const int dx = x - left[dot], dy = y - left[(dot + 6) % 8];
        const bool corner = (dx == 0 || dx == 3) && (dy == 0 || dy == 3);
        if (dx < 0 || dx > 3 || dy < 0 || dy > 3 || corner) continue;
        if (frame == 8) return Rgb(178, 178, 178);
        int age = (frame - dot + 8) % 8;
        if (age == 0 && frame >= 4 && frame <= 6) age = 1;
        return Rgb(grey[age], grey[age] + 11, grey[age] + 23);
    }
    return behind;
}

// The frame that the ring shows on `behind`, or -1.
int ShownFrame(const ucFirefoxWait& ring, Color behind) {
    for (int frame = 0; frame <= 8; ++frame) {
        bool same = ring.picDestination.Image.Width() == 16 && ring.picDestination.Image.Height() == 16;
        for (int i = 0; i < 256 && same; ++i)
            same = ToColor(ring.picDestination.Image.At(i % 16, i / 16)) == RingPixel(frame, i % 16, i / 16, behind);
        if (same) return frame;
    }
    return -1;
}

struct WaitRing : testing::Test {
    WaitRing() {
        ring.UserControl_InitProperties();
        ring.SetBackColor(White);
    }
    int Tick() {
        desktop.Advance(ring.AnimationSpeed() / 1000.0);
        return ShownFrame(ring, ring.BackColor());
    }
    static constexpr Color White = 0xFFFFFF;
    HeadlessDesktop desktop;
    ucFirefoxWait ring{"ucFirefoxWait1"};
};

TEST_F(WaitRing, TurnsThroughEightFramesFromTheSecondOneOn) {
    EXPECT_EQ(ShownFrame(ring, White), 8);
    ring.PlayWait();
    for (const int frame : {1, 2, 3, 4, 5, 6, 7, 0, 1}) EXPECT_EQ(Tick(), frame);
}

TEST_F(WaitRing, OneStopEndsTwoStartsAndTheNextRunBeginsAnew) {
    std::vector<std::string> changed;
    ring.PropertyChanged = [&changed](const std::string& property) { changed.push_back(property); };
    ring.PlayWait();
    ring.PlayWait();
    Tick();
    Tick();
    ring.StopWait();
    EXPECT_FALSE(ring.IsPlaying());
    EXPECT_EQ(ShownFrame(ring, White), 8);
    EXPECT_EQ(Tick(), 8);
    ring.PlayWait();
    EXPECT_EQ(Tick(), 1);
    EXPECT_THAT(changed, ElementsAre("IsPlaying", "IsPlaying", "IsPlaying"));
}

}  // namespace
