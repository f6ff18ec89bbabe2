// Settings files, numbers, chance, time, and what the program carries.
#include <cfenv>
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
#include "tests/support/scoped_variable.h"
#include "tests/support/temp_folder.h"
#include "tests/support/transcript.h"

namespace {

std::vector<std::string> Lines(std::string text) {
    std::vector<std::string> lines;
    for (size_t at; (at = text.find('\n')) != text.npos; text.erase(0, at + 1))
        lines.push_back(text.substr(0, at > 0 && text[at - 1] == '\r' ? at - 1 : at));
    lines.push_back(text);
    return lines;
}

std::string Plain(const std::string& text) {
    const size_t first = std::min(text.find_first_not_of(" \t"), text.size());
    return text.substr(first, text.find_last_not_of(" \t") + 1 - first);
}

std::string Low(std::string text) {
    for (char& c : text) c = c >= 'A' && c <= 'Z' ? char(c + 32) : c;
    return Plain(text);
}

// The first key of that name in the first section of that name.
std::optional<std::string> LiterallyRead(const std::string& text, const std::string& section, const std::string& key) {
    bool inside = false;
    for (std::string line : Lines(text.starts_with("\xEF\xBB\xBF") ? text.substr(3) : text)) {
        line = Plain(line);
        const size_t equal = std::min(line.find('='), line.size());
        if (line.starts_with('[') && inside) return {};
        if (line.starts_with('['))
            inside = Low(line.substr(1, line.find(']') - 1)) == Low(section);
        else if (inside && !line.starts_with(';') && equal < line.size() && Low(line.substr(0, equal)) == Low(key)) {
            const std::string value = Plain(line.substr(equal + 1));
            const bool quoted = value.size() > 1 && value[0] == value.back() && (value[0] == '"' || value[0] == '\'');
            return quoted ? value.substr(1, value.size() - 2) : value;
        }
    }
    return {};
}

}  // namespace

TEST(ProfileFile, ReadsAsTheLiteralReaderAndChangesOneKeyAlone) {
    const unsigned seed = std::random_device{}();
    std::mt19937 random(seed);
    const auto any = [&random](const std::vector<std::string>& from) { return from[random() % from.size()]; };
    const std::vector<std::string> sections{"A", "b", "Long Name"}, keys{"x", "Y", "Z key"};
    for (int round = 0; round < 4000; ++round) {
        std::string text = round % 9 ? "" : "\xEF\xBB\xBF";
        for (auto pieces = random() % 25; pieces > 0; --pieces)
            text += any({"[",         "]",          "A",       "b",
                         "B",         "Long Name",  "x",       "X",
                         "y",         "z KEY",      "=",       "\"",
                         "'",         ";",          " ",       "\t",
                         "\n",        "\r\n",       "\n[A]\n", "\r\n[ b ]\r\n",
                         "\nx = 1\n", "Y=\"2 \"\n", "\ry",     std::string(1, '\0')});
        const std::string section = any(sections), key = any(keys);
        const std::string value = any({"", " a ", "v", "\"q\"", "'", "a=b;c", "[x]", "\t"});
        const auto changed = WithKey(text, section, key, value);
        SCOPED_TRACE(testing::PrintToString(std::tuple(seed, text, section, key, value, changed)));
        for (const std::string& s : sections)
            for (const std::string& k : keys) {
                const auto before = LiterallyRead(text, s, k);
                ASSERT_EQ(ReadKey(text, s, k), before);
                ASSERT_EQ(LiterallyRead(*changed, s, k), s == section && k == key ? value : before);
            }
        // What stood before the changed line and behind it stands there still.
        const auto before = Lines(text), after = Lines(*changed);
        const auto same = std::ranges::mismatch(before, after).in1 - before.begin();
        const auto end = before.rend() - same;
        ASSERT_LE(end - std::mismatch(before.rbegin(), end, after.rbegin(), after.rend()).first, 1);
        ASSERT_FALSE(WithKey(text, section, key, "two\nlines") || WithKey(text, section + "\r", key, value) ||
                     WithKey(text, section, "\n", value));
    }
}

TEST(ProfileFile, WritesWhereAReaderWouldLook) {
    Transcript transcript;
    const TempFolder folder;
    for (const char* text :
         {"", "[S]\nColor=1\nk=True\nX=2\n", "[s]\r\n K\t= \"True\"\r\n", "[S]\nk=True", "[S]\nk=", "[S]\nColor=1",
          "[S]", "[S]\r\nColor=1\r\n\r\n \r\n[O]\r\nk=1\r\n", "; mine\r\n[O]\r\nk=1", "[S]\n[S]\nk=1\n",
          "\xEF\xBB\xBF[S]\r\nk=1\r\n", "[S]\n;k=True\n", "garbage\n[S]\nwhat?\n=\nk=1\n", "\n\n[S]\n\n\n", "[O]\n\n"})
        transcript.Write(testing::PrintToString(std::pair(std::string(text), WithKey(text, "S", "k", "False"))));
    const ProfileFile file(folder / "config.ini");
    DO(std::tuple{file.Read("S", "k"), file.Write("S", "k", "v"), folder.Read("config.ini")});
    DO(std::pair{file.Write("S", "k", "two\nlines"), file.Read("S", "k")});
    DO(ProfileFile(folder.MakeFolder("inner")).Write("S", "k", "v"));  // is not replaced
    DO(ProfileFile(folder / "missing/config.ini").Write("S", "k", "v"));
    const ScopedVariable config(SettingsVariable, folder / "config/");
    DO(GetSetting("program", "cDialog", "RegColors", "Key") + (folder.Has("config") ? " made" : ""));
    DO(SaveSetting("program", "cDialog", "RegColors", "1,2") && SaveSetting("other", "cDialog", "RegColors", "3"));
    DO(GetSetting("program", "cDialog", "RegColors", "Key") + folder.Read("config/fento-lira-master/settings.ini"));
    // Two programs that write at the same time lose nothing of each other's.
    const auto write = [&](const std::string& name) {
        for (int i = 0; i < 3; ++i) EXPECT_TRUE(file.Write("S", name + std::to_string(i), "v"));
    };
    std::thread other(write, "b");
    write("a"), other.join();
    for (int i = 0; i < 3; ++i)
        EXPECT_TRUE(file.Read("S", "a" + std::to_string(i)) && file.Read("S", "b" + std::to_string(i)));
}

TEST(CInt, GoesToTheNearestAndAtATieToTheEvenAndKeepsWhatDoesNotFit) {
    std::mt19937_64 random(std::random_device{}());
    std::vector<double> values{0, std::nextafter(0.5, 0), 4503599627370495.5, 1e300, INFINITY, NAN, 32767.49, 32768.51};
    for (int i = 0; i < 3000; ++i) values.push_back(double(random() % 5000000000) / double(1u << random() % 20));
    for (const double end : {32767.0, 32768.0, 2147483647.0, 2147483648.0})
        values.insert(values.end(), {end, end + 0.5});
    for (const double size : values)
        for (const double value : {size, -size}) {
            const double nearest = std::nearbyint(value);  // in the mode of every program: ties to the even
            for (const int mode : {FE_UPWARD, FE_DOWNWARD, FE_TOWARDZERO, FE_TONEAREST}) {
                std::fesetround(mode);
                ASSERT_TRUE(CInt(value) == nearest || (std::isnan(CInt(value)) && std::isnan(value))) << value;
            }
            int16_t field = 77;
            const bool fits = nearest >= -32768 && nearest <= 32767, fits32 = nearest >= -0x1p31 && nearest < 0x1p31;
            ASSERT_EQ(Store(field, value), fits) << value;
            ASSERT_EQ(field, fits ? nearest : 77);
            ASSERT_EQ(CInt32(value), fits32 ? std::optional(int32_t(nearest)) : std::nullopt) << value;
        }
}

TEST(Random, OneClockTickGivesDifferentNumbersAllInRangeAndEvenlySpread) {
    const auto first = [](uint64_t seed) { return SeedRandom(seed), Randomize(1), Rnd(); };
    EXPECT_TRUE(first(5) == first(5) && first(5) != first(6)) << "a test's numbers are its own at every run";
    SeedFromClock();
    std::set<int64_t> seen;
    int below[10] = {};
    for (int i = 0; i < 20000; ++i) {
        Randomize(12345.0);
        const double number = Rnd();
        ASSERT_TRUE(number >= 0 && number < 1 && seen.insert(int64_t(number * 0x1p53)).second);
        ++below[int(number * 10)];
    }
    for (const int count : below) EXPECT_NEAR(count, 2000, 8 * 42.5);  // eight standard deviations
}

TEST(Desktop, TimersTickByItsClockAndWordsReachIt) {
    Transcript transcript;
    for (const Color color : {WindowColor, ButtonFaceColor, Color(7)}) DO(ResolveColor(color));  // there is none yet
    HeadlessDesktop desktop;
    transcript.log = &desktop.log;
    {
        Timer timer("timer", 100);
        timer.Tick = transcript.Told("tick");
        const auto interval = [&] { timer.SetInterval(transcript.Draw<int>({-1, 0, 100, 250})); };
        const auto enable = [&] { timer.SetEnabled(transcript.Draw<bool>({true, true, false})); };
        const auto wait = [&] { desktop.Advance(transcript.Draw<double>({0.05, 0.1, 0.26})); };
        transcript.Walk(60,
                        Steps() | STEP(interval(), timer.Interval()) | STEP(enable()) | STEP(wait()) | STEP(wait()));
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

// Byte for byte; of waves the format, which stands at their beginning.
TEST(Carried, FilesAreThoseOfTheAssets) {
    Transcript transcript;
    for (const auto& [name, path] : std::map<std::string, std::string>{{"CLICK", "waves/click.wav"},
                                                                       {"GIRO", "waves/giro.wav"},
                                                                       {"COMPLETE", "waves/complete.wav"},
                                                                       {"ROTATE", "waves/rotate.wav"},
                                                                       {"SPLASH", "splash.bmp"},
                                                                       {"SPLASH2", "splash-dense.bmp"},
                                                                       {"ICON16", "fento-lira-master-16.png"},
                                                                       {"ICON96", "fento-lira-master-96.png"}}) {
        const auto carried = LoadResData(name, path.starts_with("waves") ? "WAVE" : "PICTURE");
        const std::string bytes(reinterpret_cast<const char*>(carried.data()), carried.size());
        EXPECT_EQ(bytes, ReadFile(FENTO_SOURCE_DIR "/assets/" + path)) << name;
        transcript.Write(name + " " + std::to_string(bytes.size()) + testing::PrintToString(bytes.substr(0, 48)));
    }
    DO(LoadResData("CLICK", "PICTURE").size());
}
