// A window of the program.
//
// Forms are ordinary objects of C++: whoever shows a form modally owns it on the
// stack of the command that opened it, and Show returns only after every routine of
// the form has left the stack. Left, Top, Width, Height are the client area's, in
// twips on the primary screen, wherever that lies among the monitors.
#pragma once
#include <optional>

#include "platform/controls/control.h"
#include "platform/controls/menu.h"
#include "platform/drawing/surface.h"

enum class FormBorder { Sizable, FixedDialog, FixedToolWindow, None };
enum class WindowState : int16_t { Normal = 0, Minimized = 1, Maximized = 2 };
enum class Modality { Modeless, Modal };

// The keys of which a form hears, unless the control with the focus has a use for them.
enum class Key { Escape, Left, Right, Up, Down, PageUp, PageDown, Home, End };

class Form : public Control {
public:
    Form(std::string name, std::string caption, ScaleMode inner, FormBorder border);
    ~Form() override;

    const std::string& Caption() const { return caption_; }
    FormBorder BorderStyle() const { return border_; }

    // Creates the peers (once) and runs OnLoad, in this order, so that the window exists in
    // Form_Load. Called by Show if need be.
    void Load();
    bool IsLoaded() const { return loaded_; }

    // Modeless: shows the window, or brings it to the front, and returns. One that appears in the state
    // Maximized has its size then, as SetState promises; what the player does meanwhile is kept for later.
    // Modal: blocks the program's other windows and returns once the form is hidden or
    // unloaded and all its handlers have returned. A hidden form may be shown again, an
    // unloaded one may not: the call does nothing then.
    void Show(Modality modality = Modality::Modeless);
    void Hide();
    bool IsShown() const { return shown_; }

    // Runs OnUnload, hides the window. A second call does nothing. Safe within the form's own
    // handlers: the peers go when Show of a modal form returns, or with the object.
    void Unload();
    bool IsUnloaded() const { return unloaded_; }

    // Centred on the screen together with its frame (twips, in floating point).
    void CenterOnScreen();

    // The client area in the form's own scale.
    double ScaleWidth() const;
    double ScaleHeight() const;
    Rect PixelRect() const override;

    WindowState State() const { return state_; }
    // Returns after the desktop has granted the new state and its size has come in,
    // or after a bounded wait; what the player does meanwhile is discarded. A form that is
    // not shown takes the state when it is.
    void SetState(WindowState state);

    Color BackColor() const { return backColor_; }
    void SetBackColor(Color color);

    // A picture that fills the client area's top-left corner, and the window's shape:
    // rectangles in pixels. Nothing: a plain rectangle.
    void SetBackdrop(std::shared_ptr<const Surface> picture);
    const std::shared_ptr<const Surface>& Backdrop() const { return backdrop_; }
    void SetRegion(std::optional<Region> region);
    const std::optional<Region>& Shape() const { return region_; }

    // Lets the player drag the window as if by a title bar, from where the press was until the button
    // goes up. Called from within a MouseDown handler.
    void DragAsWindow();
    MouseHandler MouseDown;  // on the form itself, in its own scale's pixels
    void DeliverMouseDown(int16_t button, int16_t shift, float x, float y);

    std::function<void(Key key)> KeyDown;
    void DeliverKeyDown(Key key);

    // The menu bar; empty where the form has none.
    MenuItem Menus;

    // Events.
    Handler OnLoad;      // Form_Load
    Handler OnActivate;  // Form_Activate: became the active one among the program's own forms
    Handler OnResize;    // Form_Resize
    Handler OnUnload;    // Form_Unload
    Handler OnMenu;      // a menu opens, any of them: runs before the menu's own Click

    // A file dropped on the window by its path; which ones, the form says. Without both, none.
    std::function<bool(const std::string& Path)> TakesFile;
    std::function<void(const std::string& Path)> FileDropped;

    // The way in for a backend.
    void DeliverActivate();
    void DeliverResize(Size clientPixels);  // the size the desktop granted; OnResize if new, and the first time
    void DeliverFrame();                    // the window has its frame: one that was centred is so anew
    void DeliverState(WindowState state);   // the player changed it
    void DeliverClose();                    // the close box: Unload
    bool WouldTake(const std::string& path);
    void DeliverFile(const std::string& path);  // does nothing if the form would not take it

    // How many of this form's routines are on the stack now.
    int Depth() const { return depth_; }

    // Keeps count of a routine for as long as it lives.
    class Running {
    public:
        explicit Running(Form* form) : form_(form) {
            if (form_) ++form_->depth_;
        }
        ~Running() {
            if (form_) --form_->depth_;
        }
        Running(const Running&) = delete;
        Running& operator=(const Running&) = delete;

    private:
        Form* form_;
    };

private:
    void CreateMenuPeers(std::deque<MenuItem>& items);
    std::string caption_;
    FormBorder border_;
    WindowState state_ = WindowState::Normal;
    Color backColor_ = ButtonFaceColor;
    std::shared_ptr<const Surface> backdrop_;
    std::optional<Region> region_;
    bool loaded_ = false, shown_ = false, unloaded_ = false, sized_ = false, centred_ = false;
    int depth_ = 0;
};
