// The desktop without a screen: its clock, timers, queue, answers and pictures.
#include <gmock/gmock.h>

#include "platform/headless/headless_desktop.h"
#include "platform/random.h"
#include "tests/support/picture_files.h"
#include "tests/support/temp_folder.h"

namespace {

using testing::ElementsAre;

class Headless : public testing::Test {
protected:
    HeadlessDesktop desktop;
    std::vector<std::string> events;
    int ticks = 0;
};

TEST_F(Headless, TimersTickInTheOrderTheyFallDue) {
    Timer second("second", 1000), third("third", 300);
    second.Tick = [&] { events.push_back("1000"); };
    third.Tick = [&] { events.push_back("300"); };
    desktop.Advance(5);
    EXPECT_TRUE(events.empty()) << "not enabled";
    second.SetEnabled(true);
    third.SetEnabled(true);
    desktop.Advance(1.0);
    EXPECT_THAT(events, ElementsAre("300", "300", "300", "1000"));
}

TEST_F(Headless, ManySmallStepsTickAsOftenAsOneLarge) {
    Timer timer("timer", 100);
    timer.Tick = [&] { ++ticks; };
    timer.SetEnabled(true);
    for (int i = 0; i < 1000; ++i) desktop.Advance(0.05);
    EXPECT_EQ(ticks, 500);
    desktop.Advance(50);
    EXPECT_EQ(ticks, 1000);
}

TEST_F(Headless, TicksMissedWhileTheProgramIsBusyComeAsOne) {
    Timer timer("timer", 1000);
    timer.Tick = [&] { ++ticks; };
    timer.SetEnabled(true);
    desktop.SleepUntil(desktop.SteadySeconds() + 4.5);
    EXPECT_EQ(ticks, 0);
    DoEvents(Yield::PaintsAndTimers);
    EXPECT_EQ(ticks, 1);
    DoEvents();
    EXPECT_EQ(ticks, 1);
    EXPECT_THAT(desktop.log, ElementsAre("sleep 4.5", "paints", "events"));
}

TEST_F(Headless, EnablingStartsAWholeIntervalAndDyingTimersStaySilent) {
    {
        Timer timer("timer", 1000);
        timer.Tick = [&] { ++ticks; };
        timer.SetEnabled(true);
        desktop.Advance(0.9);
        timer.SetEnabled(true);
        desktop.Advance(0.2);
        EXPECT_EQ(ticks, 1) << "enabling an enabled timer changes nothing";
        timer.SetEnabled(false);
        desktop.Advance(5);
        timer.SetEnabled(true);
        desktop.Advance(0.9);
        EXPECT_EQ(ticks, 1);
        timer.SetInterval(0);
        desktop.Advance(5);
        EXPECT_EQ(ticks, 1);
        timer.SetInterval(100);
    }
    desktop.Advance(5);
    EXPECT_EQ(ticks, 1);
}

TEST_F(Headless, ATickMayYieldPastItsIntervalWithoutComingAgainAndEndOtherTimers) {
    auto victim = std::make_unique<Timer>("victim", 25);
    Timer yielding("yielding", 10);
    victim->Tick = [&] { events.push_back("victim"); };
    yielding.Tick = [&] {
        events.push_back("begin");
        desktop.SleepUntil(SteadySeconds() + 1);
        DoEvents();
        victim.reset();
        events.push_back("end");
    };
    victim->SetEnabled(true);
    yielding.SetEnabled(true);
    desktop.Advance(0.5);
    EXPECT_THAT(events, ElementsAre("begin", "victim", "end", "begin", "end")) << "what it missed comes as one";
}

TEST_F(Headless, InputIsDiscardedByAYieldForPaintsAndTimersAndTheRestKept) {
    desktop.PostInput([&] { events.push_back("input"); });
    desktop.Post([&] { events.push_back("kept"); });
    DoEvents(Yield::PaintsAndTimers);
    EXPECT_TRUE(events.empty());
    DoEvents();
    EXPECT_THAT(events, ElementsAre("kept"));
}

TEST_F(Headless, EventsPostedByEventsRunInTheSameYieldAndNestedOnesOnce) {
    desktop.PostInput([&] {
        events.push_back("first");
        desktop.PostInput([&] { events.push_back("third"); });
        DoEvents();
        events.push_back("end of first");
    });
    desktop.PostInput([&] { events.push_back("second"); });
    DoEvents();
    EXPECT_THAT(events, ElementsAre("first", "second", "third", "end of first"));
}

TEST_F(Headless, TheClockMovesOnWhenReadAndNeverBack) {
    const double before = SteadySeconds();
    EXPECT_GT(SteadySeconds(), before);
    desktop.SleepUntil(before - 100);
    EXPECT_GT(SteadySeconds(), before);
    EXPECT_TRUE(desktop.log.empty());
}

TEST_F(Headless, BoxesAreAnsweredInOrderAndThenTheSafeWay) {
    desktop.boxAnswers = {MsgBoxResult::Yes};
    desktop.whileModal = [&] { events.push_back("meanwhile"); };
    EXPECT_EQ(MsgBox("a", YesNo + Question), MsgBoxResult::Yes);
    EXPECT_EQ(MsgBox("b", YesNo + Question), MsgBoxResult::No);
    EXPECT_EQ(MsgBox("c", Exclamation), MsgBoxResult::OK);
    EXPECT_THAT(events, ElementsAre("meanwhile"));
    ASSERT_EQ(desktop.boxes.size(), 3u);
    EXPECT_EQ(desktop.boxes[2].title, "Fento-Lira Master");
    desktop.fileAnswers = {std::nullopt, "/a.pzl"};
    EXPECT_EQ(desktop.FileDialog({}), std::nullopt);
    EXPECT_EQ(desktop.FileDialog({}), "/a.pzl");
    EXPECT_EQ(desktop.FileDialog({}), std::nullopt);
    std::array<Color, 16> custom{};
    desktop.colorAnswers.push_back([](Color initial, std::span<Color, 16> colors) {
        colors[15] = 7;
        return std::optional<Color>(initial + 1);
    });
    EXPECT_EQ(desktop.ColorDialog(41, true, custom), 42);
    EXPECT_EQ(custom[15], 7);
    EXPECT_EQ(desktop.ColorDialog(41, true, custom), std::nullopt);
}

TEST_F(Headless, MadePicturesAreReducedInProportionAndNeverBelowTheSizeAskedFor) {
    desktop.pictures["/big.jpg"] = {{6000, 4000}, [](Size size) { return PatternSurface(size); }};
    const std::pair<Size, Size> cases[] = {
        {{0, 0}, {6000, 4000}}, {{600, 100}, {600, 400}},   {{100, 401}, {602, 401}},
        {{1, 1}, {2, 1}},       {{7000, 10}, {6000, 4000}},
    };
    for (const auto& [atLeast, size] : cases) {
        const std::optional<Picture> picture = desktop.DecodePicture("/big.jpg", atLeast);
        ASSERT_TRUE(picture);
        EXPECT_EQ(picture->Natural, (Size{6000, 4000}));
        EXPECT_EQ((Size{picture->Image.Width(), picture->Image.Height()}), size);
    }
    EXPECT_EQ(desktop.decodes, 5);
}

TEST_F(Headless, BmpFilesAreReadAndOthersAreNot) {
    TempFolder temp;
    const std::string path = WritePicture(temp / "a.bmp", {13, 7});
    EXPECT_EQ(desktop.PictureSize(path), (Size{13, 7}));
    const std::optional<Picture> picture = desktop.DecodePicture(path, {0, 0});
    ASSERT_TRUE(picture);
    EXPECT_EQ(picture->Image.At(12, 6), PatternPixel(12, 6));
    EXPECT_FALSE(desktop.PictureSize(temp.Write("b.bmp", "no picture")));
    EXPECT_FALSE(desktop.DecodePicture(temp / "missing.bmp", {0, 0}));
}

TEST_F(Headless, EveryDesktopStartsTheSameRandomNumbersAndGivesBackTheOneBefore) {
    const double first = (HeadlessDesktop(), Rnd());
    const double again = (HeadlessDesktop(), Rnd());
    EXPECT_EQ(first, again);
    EXPECT_EQ(&TheDesktop(), &desktop);
}

TEST_F(Headless, TheProgramKnowsItsFolderAndName) {
    desktop.programPath = "/opt/games/fento-lira-master.exe";
    EXPECT_EQ(AppPath(), "/opt/games");
    EXPECT_EQ(AppEXEName(), "fento-lira-master");
    EXPECT_EQ(ResolveColor(WindowColor), 0xFFFFFF);
    EXPECT_EQ(ResolveColor(0x00123456), 0x00123456);
}

}  // namespace
