// A box with an image of its own: keeps the image as large as the box, hands on mouse events.
#include "platform/controls/picture_box.h"

#include "platform/controls/window_system.h"
#include "platform/system/desktop.h"

PictureBox::PictureBox(std::string name, ScaleMode inner) : Control(std::move(name), inner) {
    Image.SetBackground(ToPixel(ResolveColor(backColor_)));
    Image.SetListener(this);
}

void PictureBox::SetBackColor(Color color) {
    backColor_ = color;
    Image.SetBackground(ToPixel(ResolveColor(color)));
    Tell(Aspect::Look);
}

void PictureBox::SetBorder(Border border) {
    if (border == border_) return;
    border_ = border;
    Tell(Aspect::Look);
}

void PictureBox::FitImage() {
    const Rect fit = ToPixelRect(0, 0, Width(), Height(), ContainerUnitsPerPixel());
    if (fit.width == Image.Width() && fit.height == Image.Height()) return;
    Image.Resize(fit.width, fit.height);
    if (GetPeer()) GetPeer()->Repaint({Image.Bounds()});
}

void PictureBox::SurfaceRefreshed(const Region& damage) {
    if (GetPeer()) GetPeer()->Repaint(damage);
}

void PictureBox::DeliverMouseDown(int16_t button, int16_t shift, float x, float y) {
    if (!AcceptsInput(*this)) return;
    held_ = int16_t(held_ | button);
    if (MouseDown) Raise(*this, [=, this] { MouseDown(button, shift, x, y); });
}

void PictureBox::DeliverMouseMove(int16_t button, int16_t shift, float x, float y) {
    if (MouseMove) Raise(*this, [=, this] { MouseMove(button, shift, x, y); });
}

// A release that finds the box hidden still ends what its press began.
void PictureBox::DeliverMouseUp(int16_t button, int16_t shift, float x, float y) {
    const bool taken = (held_ & button) != 0;
    held_ = int16_t(held_ & ~button);
    if (!MouseUp) return;
    const Handler release = [=, this] { MouseUp(button, shift, x, y); };
    if (taken && Enabled())
        RaiseFromProgram(*this, release);
    else
        Raise(*this, release);
}

void PictureBox::DeliverClick() { Raise(*this, Click); }
void PictureBox::DeliverDblClick() { Raise(*this, DblClick); }

// The drag ends with the release, so none comes to the box afterwards.
void PictureBox::DragAsWindow() {
    TheWindows().DragBox(*this);
    held_ = 0;
}
