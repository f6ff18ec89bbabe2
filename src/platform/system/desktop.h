// What the program asks of the desktop it runs on, apart from windows and pictures: the message loop, the
// clock, boxes and dialogs, the screen, sound. One object, installed before the first form; the free
// functions below speak to it in the game's vocabulary.
#pragma once
#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "platform/system/color.h"

class Timer;

// What a yield may deliver.
enum class Yield {
    Everything,       // events, timers, paints
    PaintsAndTimers,  // what the player does meanwhile is discarded, not kept
    KeepingInput,     // paints and timers; what the player does meanwhile waits for a later yield
};

// Styles of a message box add up: buttons and an icon.
enum MsgBoxStyle : int { OKOnly = 0, YesNo = 4, Critical = 16, Question = 32, Exclamation = 48 };
enum class MsgBoxResult { OK = 1, Cancel = 2, Yes = 6, No = 7 };

// Flags of a file dialog add up. A dialog without a box for opening read-only has no use for the other two.
enum FileDialogFlags : int { OFN_READONLY = 1, OFN_OVERWRITEPROMPT = 2, OFN_HIDEREADONLY = 4 };

struct FileDialogRequest {
    bool save = false;
    std::string title;  // empty: the desktop's own
    struct Filter {
        std::string text, pattern;  // "Fento-Lira (*.pzl)", "*.pzl"
    };
    std::vector<Filter> filters;
    int filterIndex = 0;  // in and out: the one in use, from 1; where it names none, the first
    int flags = 0;        // FileDialogFlags
    std::string folder;   // where the dialog opens
};

// A mounted volume that the player knows, or a place: a folder on one that he comes back to.
struct Volume {
    enum class Kind { Drive, Computer, Home, Pictures, GamePictures };

    std::string root;   // path
    std::string label;  // what a list shows
    Kind kind = Kind::Drive;

    bool IsPlace() const { return kind == Kind::Pictures || kind == Kind::GamePictures; }
};

class Desktop {
public:
    virtual ~Desktop() = default;

    // The message loop. Run delivers events, timers and paints until the program ends.
    virtual void Run() = 0;
    virtual void DoEvents(Yield yield) = 0;
    virtual void TimerChanged(Timer& timer, bool dying) = 0;
    virtual double SteadySeconds() = 0;           // of a clock that never jumps
    virtual void SleepUntil(double seconds) = 0;  // of the same clock; delivers nothing, burns nothing
    virtual void PaintNow() = 0;                  // brings all that was drawn so far to the screen; waits for nothing
    [[noreturn]] virtual void End() = 0;          // ends the process at once

    // Boxes and dialogs, all modal.
    virtual MsgBoxResult MsgBox(const std::string& text, int style, const std::string& title) = 0;
    virtual std::optional<std::string> FileDialog(FileDialogRequest& request) = 0;  // a full path, or cancelled
    // `custom`: the sixteen custom colours, in and out, also on cancel.
    virtual std::optional<Color> ColorDialog(Color initial, bool fullOpen, std::span<Color, 16> custom) = 0;
    virtual void OpenPage(const std::string& address) = 0;

    // The primary screen, in twips and twips per logical pixel.
    virtual double ScreenWidth() = 0;
    virtual double ScreenHeight() = 0;
    virtual double ScreenTwipsPerPixelX() { return TwipsPerPixelOfScreen; }
    virtual double ScreenTwipsPerPixelY() { return TwipsPerPixelOfScreen; }
    virtual Color SystemColor(Color code) = 0;  // a negative colour as 0x00BBGGRR

    // Starts a wave held in memory, cutting off the one before. Never waits, never fails aloud.
    virtual void PlayWave(std::span<const std::byte> wave) = 0;

    virtual std::vector<Volume> Volumes() = 0;
    virtual std::string ProgramPath() = 0;  // full path of the program's file

protected:
    static constexpr double TwipsPerPixelOfScreen = 15;
};

// The desktop in use.
Desktop& TheDesktop();
bool HasDesktop();
void InstallDesktop(Desktop* desktop);

// The game's vocabulary.
void DoEvents(Yield yield = Yield::Everything);
MsgBoxResult MsgBox(const std::string& text, int style = OKOnly, const std::string& title = "Fento-Lira Master");
double SteadySeconds();
double SecondsSinceMidnight();
[[noreturn]] void End();
Color ResolveColor(Color color);  // a desktop colour as 0x00BBGGRR; others unchanged

// The folder of the program's file, and its name without extension ("fento-lira-master").
std::string AppPath();
std::string AppEXEName();
inline constexpr int AppMajor = 1, AppMinor = 0, AppRevision = 0;
