// The life of a window: loaded, shown, hidden, unloaded, and its handlers on the stack.
#include "platform/controls/form.h"

#include <cassert>

#include "platform/controls/window_system.h"
#include "platform/system/desktop.h"
#include "platform/system/numbers.h"

Form::Form(std::string name, std::string caption, ScaleMode inner, FormBorder border)
    : Control(std::move(name), inner), caption_(std::move(caption)), border_(border) {
    Menus.SetForm(this);
}

Form::~Form() {
    assert(depth_ == 0);
    Hide();
}

void Form::Load() {
    if (loaded_ || unloaded_) return;
    loaded_ = true;
    CreatePeers();
    if (HasWindows()) CreateMenuPeers(Menus.Items());
    RaiseFromProgram(*this, OnLoad);
}

void Form::CreateMenuPeers(std::deque<MenuItem>& items) {
    for (MenuItem& item : items) {
        item.AttachPeer(TheWindows().CreateMenuPeer(*this, item));
        CreateMenuPeers(item.Items());
    }
}

// RunModal returns on the stack it was called on, so whatever ran inside it has returned too. With no
// routine left below this call either, nobody can be standing in a peer, and the window can go.
void Form::Show(Modality modality) {
    Load();
    if (unloaded_) return;
    const bool appears = !shown_;
    shown_ = true;
    if (modality == Modality::Modeless) {
        TheWindows().ShowForm(*this);
        // Whoever shows the window yields for himself: what the player did before is his to deliver.
        if (appears && state_ == WindowState::Maximized) TheWindows().AwaitState(*this, state_, Yield::KeepingInput);
        return;
    }
    [[maybe_unused]] const int before = depth_;
    TheWindows().RunModal(*this);
    assert(depth_ == before);
    if (unloaded_ && depth_ == 0) DropPeers();
}

void Form::Hide() {
    if (!shown_) return;
    shown_ = false;
    if (HasWindows()) TheWindows().HideForm(*this);
}

void Form::Unload() {
    if (!loaded_ || unloaded_) return;
    unloaded_ = true;
    RaiseFromProgram(*this, OnUnload);
    Hide();
}

void Form::CenterOnScreen() {
    centred_ = true;
    const FrameMargins frame = TheWindows().FrameOf(*this);
    const auto first = [](double screen, double size, int before, int behind) {
        return screen / 2 - (size + (before + behind) * TwipsPerPixel) / 2 + before * TwipsPerPixel;
    };
    Move(first(TheDesktop().ScreenWidth(), Width(), frame.left, frame.right),
         first(TheDesktop().ScreenHeight(), Height(), frame.top, frame.bottom));
}

double Form::ScaleWidth() const { return InnerScale() == ScaleMode::Twips ? Width() : Width() / TwipsPerPixel; }
double Form::ScaleHeight() const { return InnerScale() == ScaleMode::Twips ? Height() : Height() / TwipsPerPixel; }
Rect Form::PixelRect() const { return ToPixelRect(Left(), Top(), Width(), Height(), TwipsPerPixel); }

void Form::SetState(WindowState state) {
    if (state == state_) return;
    state_ = state;
    Tell(Aspect::State);
    if (shown_) TheWindows().AwaitState(*this, state, Yield::PaintsAndTimers);
}

void Form::SetBackColor(Color color) {
    if (color == backColor_) return;
    backColor_ = color;
    Tell(Aspect::Look);
}

void Form::SetBackdrop(std::shared_ptr<const Surface> picture) {
    backdrop_ = std::move(picture);
    Tell(Aspect::Content);
}

void Form::SetRegion(std::optional<Region> region) {
    region_ = std::move(region);
    Tell(Aspect::Outline);
}

void Form::DragAsWindow() { TheWindows().DragForm(*this); }

void Form::DeliverMouseDown(int16_t button, int16_t shift, float x, float y) {
    if (MouseDown) Raise(*this, [=, this] { MouseDown(button, shift, x, y); });
}

void Form::DeliverKeyDown(Key key) {
    if (KeyDown) Raise(*this, [=, this] { KeyDown(key); });
}

// Activation reaches a disabled window too: it is no act of the player's.
void Form::DeliverActivate() {
    if (shown_ && !unloaded_) RaiseFromProgram(*this, OnActivate);
}

void Form::DeliverResize(Size clientPixels) {
    const double width = double(clientPixels.width) * TwipsPerPixel,
                 height = double(clientPixels.height) * TwipsPerPixel;
    const bool changed = width != Width() || height != Height();
    if (unloaded_ || !PlaceQuietly(Left(), Top(), width, height)) return;
    if (sized_ && !changed) return;
    sized_ = true;
    RaiseFromProgram(*this, OnResize);
}

void Form::DeliverFrame() {
    if (centred_) CenterOnScreen();
}

void Form::DeliverState(WindowState state) { state_ = state; }

void Form::DeliverClose() {
    if (shown_ && Enabled()) Unload();
}

bool Form::WouldTake(const std::string& path) {
    return AcceptsInput(*this) && FileDropped && TakesFile && TakesFile(path);
}

void Form::DeliverFile(const std::string& path) {
    if (WouldTake(path)) Raise(*this, [this, &path] { FileDropped(path); });
}
