// What the program asks of the desktop it runs on. One object, installed before the
// first form; the free functions below speak to it in the game's vocabulary.
#pragma once
#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "platform/control.h"
#include "platform/folder_lists.h"
#include "platform/form.h"
#include "platform/picture.h"
#include "platform/timer.h"

class PictureBox;

// What a yield may deliver.
enum class Yield {
    Everything,       // events, timers, paints
    PaintsAndTimers,  // what the player does meanwhile is discarded, not kept
};

// Styles of a message box add up: buttons and an icon.
enum MsgBoxStyle : int { OKOnly = 0, YesNo = 4, Critical = 16, Question = 32, Exclamation = 48 };
enum class MsgBoxResult { OK = 1, Cancel = 2, Yes = 6, No = 7 };

struct FileDialogRequest {
    bool save = false;          // no question before an existing file is chosen
    std::string title;          // empty: the desktop's own
    std::string filterText;     // "Fento-Lira (*.pzl)"
    std::string filterPattern;  // "*.pzl"
    std::string folder;         // where the dialog opens
};

class Desktop {
public:
    virtual ~Desktop() = default;

    // Peers. Called for a form and then for each of its visible-kind controls.
    virtual std::unique_ptr<Peer> CreatePeer(Control& control) = 0;
    virtual std::unique_ptr<Peer> CreateMenuPeer(Form& form, MenuItem& item) = 0;

    // Windows. The form counts as shown (IsShown) before ShowForm or RunModal is called and no
    // longer when HideForm is. RunModal shows the window itself (there is no ShowForm before
    // it) and returns when the form is no longer shown. ShowForm of a form that is shown brings
    // it to the front. A form shown in the state Maximized gets its size by DeliverResize
    // before ShowForm returns, if the desktop can tell it. HideForm may come for a form
    // whose derived part is gone already, or one that the desktop does not know.
    virtual void ShowForm(Form& form) = 0;
    virtual void RunModal(Form& form) = 0;
    virtual void HideForm(Form& form) = 0;
    virtual void AwaitState(Form& form, WindowState state) = 0;
    virtual void DragBox(PictureBox& box) = 0;
    virtual void DragForm(Form& form) = 0;

    // The message loop. Run delivers events, timers and paints until the program ends.
    virtual void Run() = 0;
    virtual void DoEvents(Yield yield) = 0;
    virtual void TimerChanged(Timer& timer, bool dying) = 0;
    virtual double SteadySeconds() = 0;           // of a clock that never jumps
    virtual void SleepUntil(double seconds) = 0;  // of the same clock; delivers nothing, burns nothing
    virtual void AwaitFrame() = 0;                // everything drawn so far is really on the screen; at most
                                                  // once a refresh of the display
    [[noreturn]] virtual void End() = 0;          // ends the process at once

    // Boxes and dialogs, all modal.
    virtual MsgBoxResult MsgBox(const std::string& text, int style, const std::string& title) = 0;
    virtual std::optional<std::string> FileDialog(const FileDialogRequest& request) = 0;  // a full path, or cancelled
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

    // Dresses windows: the text of a style, and one window at a time. False if it is no style.
    virtual bool LoadSkin(const std::string& text) = 0;
    virtual void ApplySkin(Form& form) = 0;

    // Pictures; the caller has made sure that the file is a regular one.
    virtual std::optional<Size> PictureSize(const std::string& path) = 0;
    virtual std::optional<Picture> DecodePicture(const std::string& path, Size atLeast) = 0;
    // A yield in which the desktop may decode that picture between the events, as long as it is `wanted`;
    // DecodePicture then has it at once.
    virtual void DoEventsDecoding(const std::string& /*path*/, Size /*atLeast*/,
                                  const std::function<bool()>& /*wanted*/) {
        DoEvents(Yield::Everything);
    }

    virtual std::vector<DriveListBox::Volume> Volumes() = 0;
    virtual std::string ProgramPath() = 0;  // full path of the program's file

protected:
    static constexpr double TwipsPerPixelOfScreen = 15;
};

// The desktop in use. InstallDesktop returns the one before, for tests.
Desktop& TheDesktop();
bool HasDesktop();
Desktop* InstallDesktop(Desktop* desktop);

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
