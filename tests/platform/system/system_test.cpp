// Settings files, numbers, chance, time, and what the program carries.
#include <cfenv>
#include <numeric>
#include <set>
#include <thread>

#include "platform/headless/desktop.h"
#include "platform/system/files.h"
#include "platform/system/machine.h"
#include "platform/system/numbers.h"
#include "platform/system/profile_file.h"
#include "platform/system/random.h"
#include "platform/system/resources.h"
#include "platform/system/timer.h"
#include "platform/system/user_settings.h"
#include "tests/support/temp_folder.h"
#include "tests/support/transcript.h"
#include "tests/support/variables.h"

TEST(ProfileFile, WritesWhereAReaderWouldLook) {
    Transcript transcript;
    const TempFolder folder;
    std::mt19937 random;
    const auto any = [&random](const std::vector<std::string>& from) { return from[random() % from.size()]; };
    for (int round = 0; round < 300; ++round) {
        std::string text =
            any({"\n[A]\n", "[a ]\r\n", "[ b ]\n", "", "\xEF\xBB\xBF[A]\n", "[A]\nY\t=1", "; mine\r\n\r\n"});
        for (auto pieces = random() % 14; pieces > 0; --pieces)
            text += random() % 2 ? std::string(1, "[]ABXy=\"'; \t\n\r"[random() % 15])
                                 : any({"\n[A]\n", "\r\n[ b ]\r\n", "\nx = 1\n", "Y='2\"\n", "Y=\"2 \"\n"});
        const std::string section = any({"a", "A", "b", "x"}), key = any({"a", "x", "X", "Y"});
        const std::string value = any({"", " a ", "v", "\"q\"", "'", "a=b;c", "[x]", "\t"});
        const std::string changed = WithKey(text, section, key, value).value();
        transcript.Write(testing::PrintToString(std::tuple(text, section, key, value, changed)));
        DO(ReadKey(text, section, key)), DO(ReadKey(changed, section, key));
        DO(ReadKey(changed, "A", any({"x", "y", "B"})));
    }
    DO(WithKey("", "S", "k", "two\nlines") || WithKey("", "S\r", "k", "v") || WithKey("", "\n", "k", "v"));
    const ProfileFile file(folder / "config.ini");
    for (const char* value : {"v", "two\nlines"})
        DO(file.Read("S", "k")), DO(file.Write("S", "k", value)), DO(folder.Read("config.ini"));
    for (const std::string& none : {folder.MakeFolder("inner"), folder / "missing/config.ini"})
        DO(ProfileFile(none).Write("S", "k", "v"));
    SetVariable(SettingsVariable, folder / "config/");
    DO(GetSetting("program", "cDialog", "RegColors", "Key") + (folder.Has("config") ? " made" : ""));
    DO(SaveSetting("program", "cDialog", "RegColors", "1,2") && SaveSetting("other", "cDialog", "RegColors", "3"));
    DO(GetSetting("program", "cDialog", "RegColors", "Key") + folder.Read("config/fento-lira-master/settings.ini"));
    // Two programs that write at the same time lose nothing of each other's.
    const auto write = [&](const std::string& keys) {
        for (const char key : keys) EXPECT_TRUE(file.Write("S", std::string(1, key), "v"));
    };
    std::thread other(write, "abc");
    write("def"), other.join();
    for (const char key : std::string("abcdef")) EXPECT_TRUE(file.Read("S", std::string(1, key)));
}

TEST(CInt, GoesToTheNearestAndAtATieToTheEvenAndKeepsWhatDoesNotFit) {
    Transcript transcript;
    int16_t field = 77;
    EXPECT_FALSE(Store(field, NAN));
    for (const double size :
         {0.0, std::nextafter(0.5, 0), 0.5, 1.5, 2.5, 2.75, 32767.0, 32767.49, 32767.5, 32768.0, 32768.5, 2147483647.0,
          2147483647.5, 2147483648.0, 2147483648.5, 4503599627370495.5, 1e300})
        for (const double value : {size, -size})
            for (const int mode : {FE_UPWARD, FE_TONEAREST}) {
                std::fesetround(mode);
                const auto made = std::tuple(Store(field, value), Digits{CInt(value)}, CInt32(value));
                std::fesetround(FE_TONEAREST);
                transcript.Write(testing::PrintToString(std::tuple(Digits{value}, made, field)));
            }
}

TEST(Random, OneClockTickGivesDifferentNumbersAllInRangeAndEvenlySpread) {
    const auto first = [](uint64_t seed) { return SeedRandom(seed), Randomize(1), Rnd(); };
    EXPECT_TRUE(first(5) == first(5) && first(5) != first(6)) << "a test's numbers are its own at every run";
    SeedFromClock();
    std::set<double> seen;
    for (int i = 0; i < 20000; ++i) Randomize(12345.0), seen.insert(Rnd());
    EXPECT_TRUE(seen.size() == 20000 && *seen.begin() >= 0 && *seen.rbegin() < 1);
    EXPECT_NEAR(std::accumulate(seen.begin(), seen.end(), 0.0) / 20000, 0.5, 0.0165);  // eight standard deviations
}

TEST(Desktop, TimersTickByItsClockAndWordsReachIt) {
    Transcript transcript;
    for (const Color color : {WindowColor, ButtonFaceColor, Color(7)}) DO(ResolveColor(color));  // there is none yet
    HeadlessDesktop desktop;
    transcript.log = &desktop.log;
    {
        Timer timer("timer", 100);
        timer.Tick = transcript.Told("tick");
        transcript.Walk(80, Steps() | STEP(timer.SetInterval(transcript.Draw<int>({-1, 0, 100, 250}))) |
                                STEP(timer.SetEnabled(transcript.Draw<bool>({true, true, false}))) |
                                STEP(desktop.Advance(transcript.Draw<double>({0.05, 0.1, 0.26})), timer.Interval()));
        DO(timer.SetInterval(100), timer.SetEnabled(true));
    }
    DO(desktop.Advance(1));
    for (const Color color : {WindowColor, ButtonFaceColor, Color(7), Color(-1)}) DO(ResolveColor(color));
    DO(MsgBox("text"), std::pair(desktop.boxes[0].title, desktop.boxes[0].style));
    DO(MsgBox("text", YesNo, "title"), desktop.boxes[1].title);
    for (const char* path : {"/opt/games/fento-lira-master", "/a/b.c.exe", "/.x", "/x"})
        DO(desktop.programPath = path, std::pair(AppPath(), AppEXEName()));
    EXPECT_THROW(End(), HeadlessDesktop::ProgramEnded);
    const std::time_t now = std::time(nullptr);
    const std::tm local = *std::localtime(&now);
    const double late = SecondsSinceMidnight() - (local.tm_hour * 3600 + local.tm_min * 60 + local.tm_sec);
    EXPECT_TRUE((late >= 0 && late < 10) || late < -86000) << late;
    const auto start = std::chrono::steady_clock::now();
    SleepSeconds(0.02);
    EXPECT_GE(std::chrono::steady_clock::now() - start, std::chrono::milliseconds(20));
}

TEST(Carried, FilesAreThoseOfTheAssets) {
    Transcript transcript;
    for (const char* name : {"CLICK", "GIRO", "COMPLETE", "ROTATE", "SPLASH", "SPLASH2", "ICON16", "ICON96"})
        for (const char* type : {"WAVE", "PICTURE"}) {
            const auto carried = LoadResData(name, type);
            const std::string_view bytes(reinterpret_cast<const char*>(carried.data()), carried.size());
            transcript.Write(name + testing::PrintToString(std::tuple(bytes.size(), bytes.substr(0, 48),
                                                                      bytes.substr(bytes.size() / 2, 48))));
        }
}
