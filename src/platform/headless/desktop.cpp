// Queue, clock, windows and boxes of the desktop without a screen.
#include "platform/headless/desktop.h"

#include <algorithm>
#include <cstdio>
#include <utility>

#include "platform/controls/picture_box.h"
#include "platform/system/numbers.h"
#include "platform/system/random.h"
#include "platform/system/timer.h"

namespace {

constexpr uint64_t TestSeed = 20260612;
constexpr double ClockStep = 1e-6;       // the clock moves on by this at each reading
constexpr double ClockTolerance = 1e-9;  // sums of intervals differ by less

class SilentPeer : public Peer {
public:
    void Mirror(Aspect) override {}
};

std::string WithSeconds(const char* what, double seconds) {
    char text[48];
    std::snprintf(text, sizeof text, "%s %.3g", what, seconds);
    return text;
}

}  // namespace

HeadlessDesktop::HeadlessDesktop(Size screen) : screen_(screen) {
    previous_ = InstallBackend(this);
    SeedRandom(TestSeed);
}

HeadlessDesktop::~HeadlessDesktop() { InstallBackend(previous_); }

// --- Events and the clock ------------------------------------------------------------------

void HeadlessDesktop::PostInput(std::function<void()> event) { events_.push_back({true, nullptr, std::move(event)}); }
void HeadlessDesktop::Post(std::function<void()> event) { events_.push_back({false, nullptr, std::move(event)}); }

bool HeadlessDesktop::RunNextEvent() {
    if (events_.empty()) return false;
    const Event event = std::move(events_.front());
    events_.pop_front();
    event.run();
    return true;
}

// Ticks the timer that is due first, if any is due by `until`. Its next tick is counted from
// this one, so what fell due meanwhile comes as one. A timer does not tick within its own tick.
bool HeadlessDesktop::RunNextTimer(double until) {
    Ticking* next = nullptr;
    for (Ticking& entry : timers_)
        if ((!next || entry.due < next->due) && std::ranges::find(inTick_, entry.timer) == inTick_.end()) next = &entry;
    if (!next || next->due > until + ClockTolerance) return false;
    now_ = std::max(now_, next->due);
    next->due = now_ + next->timer->Interval() / 1000.0;
    struct InTick {
        std::vector<Timer*>& list;
        Timer* timer;
        ~InTick() { std::erase(list, timer); }
    };
    const InTick running{inTick_, next->timer};
    inTick_.push_back(next->timer);
    running.timer->DeliverTick();
    return true;
}

void HeadlessDesktop::Advance(double seconds) {
    const double until = now_ + seconds;
    while (RunNextTimer(until)) {
    }
    now_ = std::max(now_, until);
}

// Every tick moves the next one beyond the present, so this ends however long a handler takes.
void HeadlessDesktop::RunDueTimers() {
    const double until = now_;
    while (RunNextTimer(until)) {
    }
}

void HeadlessDesktop::RunPending() {
    while (RunNextEvent()) {
    }
    RunDueTimers();
}

void HeadlessDesktop::Run() {
    log.push_back("run");
    while (!events_.empty()) RunPending();
}

void HeadlessDesktop::DoEvents(Yield yield) {
    if (yield == Yield::Everything) {
        log.push_back("events");
        RunPending();
        return;
    }
    log.push_back("paints");
    PassOver(yield);
}

// A yield that delivers nothing of the player's.
void HeadlessDesktop::PassOver(Yield yield) {
    if (yield == Yield::PaintsAndTimers) std::erase_if(events_, [](const Event& event) { return event.input; });
    RunDueTimers();
}

void HeadlessDesktop::TimerChanged(Timer& timer, bool dying) {
    std::erase_if(timers_, [&timer](const Ticking& entry) { return entry.timer == &timer; });
    if (dying) std::erase(inTick_, &timer);
    if (!dying && timer.Enabled() && timer.Interval() > 0)
        timers_.push_back({&timer, now_ + timer.Interval() / 1000.0});
}

double HeadlessDesktop::SteadySeconds() { return now_ += ClockStep; }

void HeadlessDesktop::SleepUntil(double seconds) {
    if (seconds <= now_) return;
    log.push_back(WithSeconds("sleep", seconds - now_));
    now_ = seconds;
}

void HeadlessDesktop::PaintNow() {
    ++frames;
    if (onFrame) onFrame();
}

void HeadlessDesktop::End() {
    log.push_back("end");
    throw ProgramEnded{};
}

// --- Windows -------------------------------------------------------------------------------

std::unique_ptr<Peer> HeadlessDesktop::CreatePeer(Control&) { return std::make_unique<SilentPeer>(); }
std::unique_ptr<Peer> HeadlessDesktop::CreateMenuPeer(Form&, MenuItem&) { return std::make_unique<SilentPeer>(); }

// Activation is no input, and comes before what the player does with the window: it goes in
// front of everything but earlier activations.
void HeadlessDesktop::PostActivation(Form& form) {
    const auto behind =
        std::find_if(events_.begin(), events_.end(), [](const Event& event) { return !event.activates; });
    events_.insert(behind, {false, &form, [&form] { form.DeliverActivate(); }});
}

void HeadlessDesktop::BringForward(Form& form) {
    const bool active = !shown.empty() && shown.back() == &form;
    std::erase(shown, &form);
    shown.push_back(&form);
    if (!active) PostActivation(form);
}

void HeadlessDesktop::ShowForm(Form& form) {
    log.push_back("show " + form.Name());
    BringForward(form);
}

void HeadlessDesktop::RunModal(Form& form) {
    log.push_back("modal " + form.Name());
    BringForward(form);
    while (form.IsShown()) {
        if (RunNextEvent()) {
            RunDueTimers();
            continue;
        }
        modalTrouble = form.Name() + ": no event is left that could close it";
        form.Unload();
        form.Hide();
    }
}

void HeadlessDesktop::HideForm(Form& form) {
    std::erase_if(events_, [&form](const Event& event) { return event.activates == &form; });
    const auto place = std::find(shown.begin(), shown.end(), &form);
    if (place == shown.end()) return;
    log.push_back("hide " + form.Name());
    const bool wasActive = std::next(place) == shown.end();
    shown.erase(place);
    if (wasActive && !shown.empty()) PostActivation(*shown.back());
}

Size HeadlessDesktop::TextSize(const Font& font, const std::string& text) {
    return {int(double(text.size()) * font.points * 0.7), int(font.points * 1.6)};
}

FrameMargins HeadlessDesktop::FrameOf(const Form& form) {
    return form.BorderStyle() == FormBorder::None ? FrameMargins{} : frame;
}

void HeadlessDesktop::AwaitState(Form& form, WindowState state, Yield meanwhile) {
    PassOver(meanwhile);
    if (state == WindowState::Maximized && form.BorderStyle() == FormBorder::Sizable)
        form.DeliverResize({screen_.width - frameAndMenu.width, screen_.height - frameAndMenu.height});
}

void HeadlessDesktop::DragBox(PictureBox& box) { log.push_back("drag " + box.Name()); }
void HeadlessDesktop::DragForm(Form& form) { log.push_back("drag " + form.Name()); }

// --- Boxes, dialogs and the rest -----------------------------------------------------------

void HeadlessDesktop::OpenModal(const std::string& entry) {
    log.push_back(entry);
    const std::function<void()> meanwhile = std::exchange(whileModal, nullptr);
    if (meanwhile) meanwhile();
}

MsgBoxResult HeadlessDesktop::MsgBox(const std::string& text, int style, const std::string& title) {
    boxes.push_back({text, style, title});
    OpenModal("box " + text);
    if (boxAnswers.empty()) return (style & 15) == YesNo ? MsgBoxResult::No : MsgBoxResult::OK;
    const MsgBoxResult answer = boxAnswers.front();
    boxAnswers.pop_front();
    return answer;
}

std::optional<std::string> HeadlessDesktop::FileDialog(FileDialogRequest& request) {
    fileRequests.push_back(request);
    if (filterAnswer > 0) request.filterIndex = filterAnswer;
    OpenModal(request.save ? "file save" : "file open");
    if (fileAnswers.empty()) return std::nullopt;
    std::optional<std::string> answer = std::move(fileAnswers.front());
    fileAnswers.pop_front();
    return answer;
}

std::optional<Color> HeadlessDesktop::ColorDialog(Color initial, bool, std::span<Color, 16> custom) {
    OpenModal("color");
    if (colorAnswers.empty()) return std::nullopt;
    const auto answer = std::move(colorAnswers.front());
    colorAnswers.pop_front();
    return answer(initial, custom);
}

void HeadlessDesktop::OpenPage(const std::string& address) { pages.push_back(address); }

double HeadlessDesktop::ScreenWidth() { return screen_.width * TwipsPerPixelOfScreen; }
double HeadlessDesktop::ScreenHeight() { return screen_.height * TwipsPerPixelOfScreen; }

Color HeadlessDesktop::SystemColor(Color code) {
    if (code == WindowColor) return Rgb(255, 255, 255);
    if (code == ButtonFaceColor) return Rgb(240, 240, 240);
    return 0;
}

void HeadlessDesktop::PlayWave(std::span<const std::byte> wave) { sounds.push_back(wave); }

bool HeadlessDesktop::LoadSkin(const std::string& text) {
    skinText = text;
    return !skinFails;
}

void HeadlessDesktop::ApplySkin(Form& form) { skinned.push_back(form.Name()); }
