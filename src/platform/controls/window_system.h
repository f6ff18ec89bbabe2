// What controls and forms ask of the desktop: peers, windows on the screen, dragging, dress.
#pragma once
#include <memory>
#include <string>

#include "platform/controls/form.h"
#include "platform/controls/peer.h"
#include "platform/system/desktop.h"

class PictureBox;

// What the desktop puts round a client area, its title bar among it, in pixels.
struct FrameMargins {
    int left = 0, top = 0, right = 0, bottom = 0;
};

class WindowSystem {
public:
    virtual ~WindowSystem() = default;

    // Peers. Called for a form and then for each of its visible-kind controls.
    virtual std::unique_ptr<Peer> CreatePeer(Control& control) = 0;
    virtual std::unique_ptr<Peer> CreateMenuPeer(Form& form, MenuItem& item) = 0;

    // Windows. The form counts as shown (IsShown) before ShowForm or RunModal is called and no
    // longer when HideForm is. RunModal shows the window itself (there is no ShowForm before
    // it) and returns when the form is no longer shown. ShowForm of a form that is shown brings
    // it to the front. HideForm may come for a form whose derived part is gone already, or one
    // that the desktop does not know.
    virtual void ShowForm(Form& form) = 0;
    virtual void RunModal(Form& form) = 0;
    virtual void HideForm(Form& form) = 0;
    // The pixels that a text of one line takes up.
    virtual Size TextSize(const Font& font, const std::string& text) = 0;
    // How many pixels of its screen a logical pixel of the form has along one side; may be broken (1.25).
    virtual double ScaleOf(Form& form) = 0;
    // The frame of the form's window; before it is shown, what it will have as far as the desktop can tell.
    // Form::DeliverFrame follows once it is known.
    virtual FrameMargins FrameOf(const Form& form) = 0;
    // Returns once the desktop has granted the state and the form has its size by DeliverResize, or
    // after a bounded wait. `meanwhile` says what the wait delivers.
    virtual void AwaitState(Form& form, WindowState state, Yield meanwhile) = 0;
    // Called within the handler of a press. The box or window follows the pointer from where that
    // press was until the button is up, and the call returns then; Wayland moves windows itself, and
    // the call returns at once.
    virtual void DragBox(PictureBox& box) = 0;
    virtual void DragForm(Form& form) = 0;

    // Dresses windows: the text of a style, and one window at a time. False if it is no style.
    virtual bool LoadSkin(const std::string& text) = 0;
    virtual void ApplySkin(Form& form) = 0;
};

// The one in use; there is none before a backend was installed.
WindowSystem& TheWindows();
bool HasWindows();

// Of the screen on which the control's form stands; one pixel a unit without a form.
Density DensityOf(Control& control);
void InstallWindows(WindowSystem* windows);
