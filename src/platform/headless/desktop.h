// The desktop without a screen: scripted answers, a clock that tests move, logs of what
// the program asked for. Installs itself for its lifetime; constructing one seeds the random
// engine, so that a test is the same at every run.
#pragma once
#include <deque>
#include <map>
#include <stdexcept>

#include "platform/controls/backend.h"

class HeadlessDesktop : public Backend {
public:
    explicit HeadlessDesktop(Size screen = {1366, 768});
    ~HeadlessDesktop() override;

    // Thrown by End, so that a test can go on after the end of the program.
    struct ProgramEnded {};

    // --- What a test sets up -------------------------------------------------------------
    // Answers in the order of the questions. Out of answers: OK (No for a question), cancelled.
    std::deque<MsgBoxResult> boxAnswers;
    std::deque<std::optional<std::string>> fileAnswers;
    int filterAnswer = 0;  // the filter that the player leaves in use; 0: the one he found
    std::deque<std::function<std::optional<Color>(Color initial, std::span<Color, 16> custom)>> colorAnswers;
    // Runs when a box or a dialog opens, before it is answered (events that arrive meanwhile).
    std::function<void()> whileModal;
    // Runs at every PaintNow.
    std::function<void()> onFrame;
    // Volumes and the program's file.
    std::vector<Volume> volumes{{"/", "/"}};
    std::string programPath = "/opt/fento-lira-master/fento-lira-master";
    // What is left for the client area when a window is maximised, in pixels less than the screen.
    Size frameAndMenu{0, 50};
    // What surrounds the client area of a window that has a frame at all.
    FrameMargins frame{1, 21, 1, 1};
    // Pictures that exist without a file: decoded by calling the maker with the size asked for.
    struct FakePicture {
        Size natural;
        std::function<Surface(Size)> make;
    };
    std::map<std::string, FakePicture> pictures;
    // Pixels of the screen by the logical pixel.
    double scale = 1;
    // A call that fails from now on.
    bool skinFails = false;

    // --- Events --------------------------------------------------------------------------
    // Queued for the next DoEvents or modal loop, behind the activation of a form that
    // is shown meanwhile, so that events for a dialog can be posted before it opens. Input is discarded by a yield that
    // delivers paints and timers only; anything else is kept.
    void PostInput(std::function<void()> event);
    void Post(std::function<void()> event);
    // Lets `seconds` go by; timers that fall due tick, in order.
    void Advance(double seconds);
    // Runs all queued events and the timers that are due.
    void RunPending();

    // --- What a test reads ---------------------------------------------------------------
    struct Box {
        std::string text;
        int style;
        std::string title;
    };
    std::vector<Box> boxes;
    std::vector<FileDialogRequest> fileRequests;
    std::vector<std::string> pages;
    std::vector<std::span<const std::byte>> sounds;
    std::vector<std::string> skinned;  // names of the forms, in order
    std::string skinText;
    std::vector<std::string> log;  // "show frmMain", "modal frmThumbs", "hide ...", "events", "sleep 1.5", ...
    std::vector<Form*> shown;      // forms on the screen now, the active one last
    int frames = 0;
    int decodes = 0;
    std::string modalTrouble;  // why a modal loop had to be ended, empty if none

    // Desktop.
    std::unique_ptr<Peer> CreatePeer(Control& control) override;
    std::unique_ptr<Peer> CreateMenuPeer(Form& form, MenuItem& item) override;
    void ShowForm(Form& form) override;
    void RunModal(Form& form) override;  // ends (and says so in modalTrouble) when no event is left that could close it
    void HideForm(Form& form) override;
    Size TextSize(const Font& font, const std::string& text) override;
    FrameMargins FrameOf(const Form& form) override;
    void AwaitState(Form& form, WindowState state, Yield meanwhile) override;
    double ScaleOf(Form&) override { return scale; }
    void DragBox(PictureBox& box) override;
    void DragForm(Form& form) override;
    void Run() override;  // runs pending events until none is left
    void DoEvents(Yield yield) override;
    void TimerChanged(Timer& timer, bool dying) override;
    double SteadySeconds() override;
    void SleepUntil(double seconds) override;
    void PaintNow() override;
    [[noreturn]] void End() override;
    MsgBoxResult MsgBox(const std::string& text, int style, const std::string& title) override;
    std::optional<std::string> FileDialog(FileDialogRequest& request) override;
    std::optional<Color> ColorDialog(Color initial, bool fullOpen, std::span<Color, 16> custom) override;
    void OpenPage(const std::string& address) override;
    double ScreenWidth() override;
    double ScreenHeight() override;
    Color SystemColor(Color code) override;
    void PlayWave(std::span<const std::byte> wave) override;
    bool LoadSkin(const std::string& text) override;
    void ApplySkin(Form& form) override;
    std::optional<Size> PictureSize(const std::string& path) override;  // fake pictures, then 24- and 32-bit BMP files
    std::optional<Picture> DecodePicture(const std::string& path, Size atLeast) override;
    void DoEventsDecoding(const std::string&, Size, const std::function<bool()>&) override {
        DoEvents(Yield::Everything);
    }
    std::vector<Volume> Volumes() override { return volumes; }
    std::string ProgramPath() override { return programPath; }

private:
    void BringForward(Form& form);
    void PostActivation(Form& form);
    void PassOver(Yield yield);
    bool RunNextEvent();
    bool RunNextTimer(double until);
    void RunDueTimers();
    void OpenModal(const std::string& entry);
    struct Event {
        bool input = false;
        Form* activates = nullptr;  // goes with the form's window
        std::function<void()> run;
    };
    struct Ticking {
        Timer* timer;
        double due;
    };
    std::deque<Event> events_;
    std::vector<Ticking> timers_;
    std::vector<Timer*> inTick_;  // whose handlers are on the stack
    Backend* previous_ = nullptr;
    Size screen_;
    double now_ = 1000;
};
