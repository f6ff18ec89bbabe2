// The wait ring: nine frames drawn into one strip, and a timer that walks through them.
//
// One frame is 16 x 16 pixels with eight dots on magenta, which gives way to BackColor:
//
//           N
//        NW   NE         A dot is a disc 4 across: of one pixel a unit, a square without its corners.
//       W       E        Frames 0 to 7 turn clockwise, frame 8 is grey all round.
//        SW   SE
//           S
#include "shell/uc_firefox_wait.h"

#include <array>
#include <string_view>

#include "platform/controls/window_system.h"
#include "platform/drawing/raster.h"
#include "platform/system/desktop.h"
#include "platform/system/numbers.h"

namespace {

constexpr Color Magenta = Rgb(255, 0, 255);
constexpr int32_t DefaultSpeed = 100;
constexpr int DotCount = 8;

struct Dot {
    int x, y;  // top-left corner of the square within the frame
};
constexpr std::array<Dot, DotCount> Dots{{
    {6, 0},    // N
    {10, 2},   // NE
    {12, 6},   // E
    {10, 10},  // SE
    {6, 12},   // S
    {2, 10},   // SW
    {0, 6},    // W
    {2, 2},    // NW
}};

// Shades A to I, darkest first.
constexpr std::array<Color, 9> Shades{
    Rgb(65, 76, 88),    Rgb(78, 89, 101),   Rgb(91, 102, 114),  Rgb(103, 114, 126), Rgb(116, 127, 139),
    Rgb(129, 140, 152), Rgb(142, 153, 165), Rgb(154, 165, 177), Rgb(178, 178, 178),
};

// The shade of each dot from N clockwise, frame by frame. The head of frames 4 to 6 is B, like
// the dot behind it, on purpose.
constexpr std::array<std::string_view, ucFirefoxWait::FrameCount> FrameShades{
    "AHGFEDCB", "BAHGFEDC", "CBAHGFED", "DCBAHGFE", "EDCBBHGF", "FEDCBBHG", "GFEDCBBH", "HGFEDCBA", "IIIIIIII",
};

void DrawDot(Surface& strip, int x, int y, Color shade) {
    const Rect units{x, y, 4, 4}, square = strip.PixelDensity().Pixels(units);
    Pixel* const pixels = strip.Draw(units);
    for (int row = 0; row < square.height; ++row)
        for (int column = 0; column < square.width; ++column) {
            // From the middle of the square, in halves of a pixel.
            const int across = 2 * column + 1 - square.width, down = 2 * row + 1 - square.height;
            if (across * across + down * down <= square.width * square.width)
                pixels[(square.y + row) * strip.Stride() + square.x + column] = ToPixel(shade);
        }
}

// White on `mask` where `picture` has exactly `color`, black elsewhere.
void DrawMask(Surface& mask, const Surface& picture, Color color) {
    Pixel* out = mask.DrawAll();
    for (int y = 0; y < picture.PixelBounds().height; ++y)
        for (int x = 0; x < picture.PixelBounds().width; ++x)
            *out++ = picture.At(x, y) == ToPixel(color) ? WhitePixel : BlackPixel;
}

}  // namespace

ucFirefoxWait::ucFirefoxWait(std::string name)
    : Control(std::move(name)),
      picSource(BuildStrip()),
      picOriginal(BuildStrip()),
      picColor(FrameSide, FrameSide, ToPixel(ResolveColor(ButtonFaceColor))) {
    AddChild(picDestination);
    picDestination.Place(0, 0, FrameSide, FrameSide);
    tmrPlay.Tick = [this] { DrawNextFrame(); };
    UserControl_Resize();
    UserControl_Initialize();
    UserControl_InitProperties();
}

ucFirefoxWait::~ucFirefoxWait() { UserControl_Terminate(); }

// Any pixel of picColor would do.
void ucFirefoxWait::UserControl_Initialize() {
    defaultBackColor_ = Point(picColor, 17 / TwipsPerPixel, 17 / TwipsPerPixel);
    DrawIdleFrame();
}

void ucFirefoxWait::UserControl_Terminate() { tmrPlay.SetEnabled(false); }

Surface ucFirefoxWait::BuildStrip(Density density) {
    Surface strip(FrameSide * FrameCount, FrameSide, ToPixel(Magenta));
    strip.SetDensity(density);
    for (int frame = 0; frame < FrameCount; ++frame) {
        for (size_t dot = 0; dot < DotCount; ++dot) {
            const size_t shade = size_t(FrameShades[size_t(frame)][dot] - 'A');
            DrawDot(strip, frame * FrameSide + Dots[dot].x, Dots[dot].y, Shades[shade]);
        }
    }
    return strip;
}

void ucFirefoxWait::SetAnimationSpeed(int32_t l_Milliseconds) {
    animationSpeed_ = l_Milliseconds;
    Announce("AnimationSpeed");
    tmrPlay.SetInterval(animationSpeed_);
}

void ucFirefoxWait::SetBackColor(Color l_BackColor) {
    backColor_ = Resolved(l_BackColor);
    Announce("BackColor");
    ApplyBackColor();
    DrawIdleFrame();
}

void ucFirefoxWait::SetIsPlaying(bool bPlaying) {
    isPlaying_ = bPlaying;
    Announce("IsPlaying");
}

void ucFirefoxWait::PlayWait() {
    if (isPlaying_) return;
    SetIsPlaying(true);
    tmrPlay.SetInterval(animationSpeed_);
    tmrPlay.SetEnabled(isPlaying_);
}

void ucFirefoxWait::StopWait() {
    if (!isPlaying_) return;
    SetIsPlaying(false);
    tmrPlay.SetEnabled(isPlaying_);
    FrameIndex = 0;
    DrawIdleFrame();
}

void ucFirefoxWait::UserControl_InitProperties() {
    animationSpeed_ = DefaultSpeed;
    isPlaying_ = false;
    backColor_ = defaultBackColor_;
}

// A property that can't be read keeps its value. A stored IsPlaying of true sets the field only: the ring stands
// still, and PlayWait takes it for one that turns.
void ucFirefoxWait::UserControl_ReadProperties(const PropertyBag& PropBag) {
    if (const auto speed = PropBag.ReadProperty("AnimationSpeed", DefaultSpeed))
        animationSpeed_ = std::get<int32_t>(*speed);
    if (const auto color = PropBag.ReadProperty("BackColor", defaultBackColor_))
        backColor_ = Resolved(std::get<int32_t>(*color));
    if (const auto playing = PropBag.ReadProperty("IsPlaying", false)) isPlaying_ = std::get<bool>(*playing);
}

void ucFirefoxWait::UserControl_WriteProperties(PropertyBag& PropBag) const {
    PropBag.WriteProperty("AnimationSpeed", animationSpeed_, DefaultSpeed);
    PropBag.WriteProperty("BackColor", backColor_, defaultBackColor_);
    PropBag.WriteProperty("IsPlaying", isPlaying_, false);
}

// Always one frame large, whatever the container asks for: 240 twips a side, or 16 pixels.
void ucFirefoxWait::UserControl_Resize() {
    SetWidth(FrameSide * ContainerUnitsPerPixel());
    SetHeight(FrameSide * ContainerUnitsPerPixel());
}

void ucFirefoxWait::UserControl_Show() {
    TakeDensity();
    ApplyBackColor();
    DrawIdleFrame();
}

// Everything is drawn at the pixels of the screen on which the ring comes up.
void ucFirefoxWait::TakeDensity() {
    const Density density = DensityOf(*this);
    picOriginal = BuildStrip(density);
    picSource.SetDensity(density);
    picDestination.Image.SetDensity(density);
}

void ucFirefoxWait::Announce(const char* property) {
    if (PropertyChanged) PropertyChanged(property);
}

void ucFirefoxWait::ApplyBackColor() {
    picSource.Cls();
    BitBlt(picSource, 0, 0, picOriginal.Width(), picOriginal.Height(), picOriginal, 0, 0, RasterOp::SrcCopy);
    ReplaceColor(picSource, Magenta, backColor_);
}

void ucFirefoxWait::DrawNextFrame() {
    FrameIndex = FrameIndex == IdleFrame - 1 ? 0 : FrameIndex + 1;
    DrawFrame(FrameIndex);
}

void ucFirefoxWait::DrawIdleFrame() { DrawFrame(IdleFrame); }

void ucFirefoxWait::DrawFrame(int frame) {
    Surface& image = picDestination.Image;
    image.Cls();
    BitBlt(image, 0, 0, image.Width(), image.Height(), picSource, frame * FrameSide, 0, RasterOp::SrcCopy);
    image.Refresh();
}

void ucFirefoxWait::ReplaceColor(Surface& picture, Color ColorFrom, Color ColorTo) {
    const int width = picture.Width(), height = picture.Height();
    std::optional<Surface> mask = CreateMemorySurface(picture, width, height, true);
    std::optional<Surface> color = CreateMemorySurface(picture, width, height, false);
    if (!mask || !color) return;
    DrawMask(*mask, picture, ColorFrom);
    // ColorTo where the mask is white, black elsewhere.
    FillRect(*color, color->Bounds(), ColorTo);
    BitBlt(*color, 0, 0, width, height, *mask, 0, 0, RasterOp::SrcAnd);
    // The mask turned round: black where ColorFrom was.
    BitBlt(*mask, 0, 0, width, height, Surface(width, height, WhitePixel), 0, 0, RasterOp::SrcInvert);
    // Those pixels become black, then ColorTo goes in.
    BitBlt(picture, 0, 0, width, height, *mask, 0, 0, RasterOp::SrcAnd);
    BitBlt(picture, 0, 0, width, height, *color, 0, 0, RasterOp::SrcPaint);
    picture.Refresh();
}

std::optional<Surface> ucFirefoxWait::CreateMemorySurface(const Surface& Picture, int Width, int Height,
                                                          bool Monochrome) {
    if (Width <= 0 || Height <= 0) return std::nullopt;
    Surface surface(Width, Height, Monochrome ? BlackPixel : Picture.Background());
    surface.SetDensity(Picture.PixelDensity());
    return surface;
}
