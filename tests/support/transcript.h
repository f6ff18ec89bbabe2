// What a test does and what comes of it, step by step: what a call answers, what is heard meanwhile, what is another
// afterwards. The whole is compared with the golden text named after the test.
#pragma once
#include <functional>
#include <random>
#include <sstream>
#include <type_traits>
#include <utility>
#include <vector>

#include "tests/support/golden.h"
#include "tests/support/window_dump.h"

inline void PrintTo(const Size& s, std::ostream* out) { *out << s.width << 'x' << s.height; }
inline void PrintTo(const Rect& r, std::ostream* out) {
    *out << r.x << ',' << r.y << ' ' << r.width << 'x' << r.height;
}
inline void PrintTo(const WheelTurn& turn, std::ostream* out) {
    *out << turn.x << ' ' << turn.y << (turn.unit == WheelTurn::Unit::Pixels ? " pixels" : "");
}
// A number that is no whole one. How many of its digits the test library tells by itself depends on its age.
struct Digits {
    double number;
};
inline void PrintTo(const Digits& digits, std::ostream* out) {
    const std::streamsize before = out->precision(12);
    *out << digits.number;
    out->precision(before);
}
inline void PrintTo(Control* control, std::ostream* out) { *out << control->Name(); }
template <typename Enum>
requires std::is_enum_v<Enum>
void PrintTo(const Enum& value, std::ostream* out) { *out << int(value); }

// What a walk may come to.
using Steps = std::vector<std::function<void()>>;
inline Steps operator|(Steps steps, std::function<void()> another) {
    steps.push_back(std::move(another));
    return steps;
}

class Transcript {
public:
    ~Transcript() {
#ifdef _WIN32
        if (!changing.first.empty()) return;  // files are called otherwise there
#endif
        const auto& test = *testing::UnitTest::GetInstance()->current_test_info();
        ExpectGolden(std::string(test.test_suite_name()) + "." + test.name() + ".txt", text_);
    }

    // What there is to see; a step tells of what it has changed.
    std::function<State()> state = [] { return State(); };
    // The desktop's, if what stands there is to be heard, and goes.
    std::vector<std::string>* log = nullptr;
    // What differs at every run, and what stands for it.
    std::pair<std::string, std::string> changing;

    void Hear(const std::string& what) { heard_ += "; " + what; }
    // A handler of any kind of event that lets its values be heard.
    auto Told(const std::string& what) {
        return [this, what](const auto&... values) { Hear(what + testing::PrintToString(std::tuple(values...))); };
    }
    // Lets handlers tell, each by its name among `names`, "box.Click, box.DblClick".
    template <typename... Handlers>
    void Hears(const char* names, Handlers&... handlers) {
        std::istringstream all(names);
        const auto next = [&all](std::string name = {}) { return std::getline(all >> std::ws, name, ','), name; };
        ((handlers = Told(next())), ...);
    }
    void Write(std::string line) {
        const auto& [path, name] = changing;
        const std::string what = WithSlashes(path);
        line = WithSlashes(line);
        for (size_t at = 0; !what.empty() && (at = line.find(what, at)) != line.npos;)
            line.replace(at, what.size(), name);
        text_ += line + "\n";
    }
    template <typename Act>
    void Step(const std::string& words, Act act) {
        Listen();
        const std::string before = std::exchange(heard_, "");  // of a step in whose midst this one comes
        std::string answer;
        if constexpr (std::is_void_v<decltype(act())>)
            act();
        else
            answer = " -> " + testing::PrintToString(act());
        Listen();
        Write(words + std::exchange(drawn_, "") + answer + std::exchange(heard_, before));
        State now = state();
        std::istringstream changes(Changes(shown_, now));
        for (std::string line; std::getline(changes, line);) Write("    " + line);
        shown_ = std::move(now);
    }

    void Walk(int length, const Steps& steps) {
        while (length-- > 0) steps[dice_() % steps.size()]();
    }
    // One of `from`, the same at every run; the step tells which. At most one draw a call: arguments have no order.
    template <typename T>
    T Draw(const std::vector<T>& from) {
        const size_t number = dice_() % from.size();
        drawn_ += ' ' + testing::PrintToString(from[number]);
        return from[number];
    }

private:
    void Listen() {
        if (!log) return;
        for (const std::string& entry : std::exchange(*log, {})) Hear(entry);
    }
    std::string text_, heard_, drawn_;
    State shown_;
    std::mt19937 dice_;
};

// A step of `transcript`, told in its own words, now or whenever a walk comes to it.
#define DO(...) transcript.Step(#__VA_ARGS__, [&]() -> decltype(auto) { return __VA_ARGS__; })
#define STEP(...) [&] { DO(__VA_ARGS__); }
#define HEAR(...) transcript.Hears(#__VA_ARGS__, __VA_ARGS__)
