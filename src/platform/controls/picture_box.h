// A box that keeps its own image; also the plain container of other controls.
#pragma once
#include "platform/controls/control.h"
#include "platform/drawing/surface.h"

class PictureBox : public Control, private SurfaceListener {
public:
    explicit PictureBox(std::string name, ScaleMode inner = ScaleMode::Pixels);

    // The persistent image, as large as the box in pixels: its width and height, rounded,
    // wherever the box lies. A new size in pixels clears it; a new place never does.
    // Refresh of the image brings what was drawn to the screen.
    Surface Image;

    // BackColor clears the image to the colour. A desktop colour is resolved.
    Color BackColor() const { return backColor_; }
    void SetBackColor(Color color);

    Border BorderStyle() const { return border_; }
    void SetBorder(Border border);

    // Several controls bear one name in an array; -1 outside an array.
    MouseHandler MouseDown, MouseMove, MouseUp;
    Handler Click, DblClick;
    WheelHandler Wheel;

    // The way in for a backend, in the order the desktop saw things. A double click
    // is press, release, press, double click, release: the second press is delivered
    // as a press too, before DblClick. While a button is down the box gets every move
    // and every further press and release, inside or outside. `button` of a move is
    // the sum of the buttons down. Nothing arrives while the box is disabled. In a hidden
    // box, or a form no longer shown, only the release of a press taken before arrives.
    void DeliverMouseDown(int16_t button, int16_t shift, float x, float y);
    void DeliverMouseMove(int16_t button, int16_t shift, float x, float y);
    void DeliverMouseUp(int16_t button, int16_t shift, float x, float y);
    void DeliverClick();
    void DeliverDblClick();
    void DeliverWheel(const WheelTurn& turn) {
        if (Wheel) Raise(*this, [this, &turn] { Wheel(turn); });
    }

    // Lets the player drag the box about its container as if by a title bar until the
    // button goes up; returns then. Called from within a MouseDown handler.
    void DragAsWindow();

protected:
    void Resized() override { FitImage(); }
    void Adopted() override { FitImage(); }

private:
    void FitImage();
    void SurfaceRefreshed(const Region& damage) override;
    Color backColor_ = ButtonFaceColor;
    Border border_ = Border::None;
    int16_t held_ = 0;  // buttons whose press was taken and whose release is still to come
};
