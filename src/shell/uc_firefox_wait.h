// A small ring of eight dots that turns while the program is busy and stands grey while it is not.
#pragma once
#include <functional>
#include <optional>
#include <string>

#include "platform/controls/control.h"
#include "platform/controls/picture_box.h"
#include "platform/controls/property_bag.h"
#include "platform/system/timer.h"

class ucFirefoxWait : public Control {
public:
    explicit ucFirefoxWait(std::string name);
    ~ucFirefoxWait() override;

    int32_t AnimationSpeed() const { return animationSpeed_; }  // milliseconds between frames
    void SetAnimationSpeed(int32_t l_Milliseconds);
    Color BackColor() const { return backColor_; }
    void SetBackColor(Color l_BackColor);  // a negative one becomes the desktop's button face
    bool IsPlaying() const { return isPlaying_; }
    void SetIsPlaying(bool bPlaying);  // the field only: neither starts nor stops anything
    void PlayWait();
    void StopWait();

    // The container's calls. Until UserControl_Show the strip stands on magenta, so a form calls
    // that before the player can see the ring.
    void UserControl_InitProperties();
    void UserControl_ReadProperties(const PropertyBag& PropBag);
    void UserControl_WriteProperties(PropertyBag& PropBag) const;
    void UserControl_Resize();
    void UserControl_Show();
    std::function<void(const std::string& property)> PropertyChanged;

    PictureBox picDestination{"picDestination"};  // 16 x 16 pixels, what the player sees
    Timer tmrPlay{"tmrPlay", 100};
    Surface picSource, picOriginal;  // the strip, with and without the colour behind the dots
    Surface picColor;                // serves to read the desktop's button face as a plain colour

    int32_t FrameIndex = 0;  // last frame shown, 0 to 7

    static constexpr int FrameSide = 16, FrameCount = 9, IdleFrame = 8;
    static Surface BuildStrip(Density density = {});  // 144 x 16 on magenta

protected:
    void Resized() override { UserControl_Resize(); }
    void Adopted() override { UserControl_Resize(); }

private:
    void UserControl_Initialize();
    void UserControl_Terminate();
    void TakeDensity();
    void ApplyBackColor();
    // A surface to work on beside `Picture`: a mask, all black, or one that begins like the picture's
    // background. Nothing if there is no picture to work on.
    static std::optional<Surface> CreateMemorySurface(const Surface& Picture, int Width, int Height, bool Monochrome);
    void DrawNextFrame();
    void DrawIdleFrame();
    void DrawFrame(int frame);
    void Announce(const char* property);
    Color Resolved(Color color) const { return color < 0 ? defaultBackColor_ : color; }
    // Every pixel of exactly `ColorFrom` becomes `ColorTo`.
    static void ReplaceColor(Surface& picture, Color ColorFrom, Color ColorTo);

    Color defaultBackColor_ = 0;
    Color backColor_ = 0;
    bool isPlaying_ = false;
    int32_t animationSpeed_ = 0;
};
