// The splash: a banner in the shape of a jigsaw piece, up while the program starts.
#include "shell/frm_splash.h"

#include "platform/controls/window_system.h"
#include "platform/drawing/bmp.h"
#include "platform/drawing/picture.h"
#include "platform/system/desktop.h"
#include "platform/system/resources.h"
#include "shell/shaped_windows.h"
#include "shell/version.h"

namespace {

constexpr Color BannerBlue = Rgb(70, 84, 157), SeeThrough = Rgb(255, 255, 0), White = Rgb(255, 255, 255);
constexpr double ClientWidth = 9195, ClientHeight = 3360;  // twips: 613 x 224 pixels
constexpr double SecondsAlone = 1.5, SecondsInFront = 0.5;
constexpr int16_t LeftButton = 1;

// A banner that the program carries; nothing if it is missing or damaged.
std::shared_ptr<Surface> Banner(const char* name) {
    std::optional<Surface> banner = DecodeBmp(LoadResData(name, "PICTURE"));
    return banner ? std::make_shared<Surface>(std::move(*banner)) : nullptr;
}

// The banner of twice as many pixels, as large as `plain`; that one where there is no other.
std::shared_ptr<const Surface> DenseBanner(std::shared_ptr<const Surface> plain) {
    const std::shared_ptr<const Surface> pixels = Banner("SPLASH2");
    if (!plain || !pixels) return plain;
    auto dense = std::make_shared<Surface>(plain->Width(), plain->Height());
    dense->SetDensity(Density(2));
    PaintPicture(*dense, dense->Bounds(), *pixels);
    return dense;
}

}  // namespace

FrmSplash::FrmSplash(Form& main) : Form("FrmSplash", "", ScaleMode::Twips, FormBorder::None), main_(main) {
    SetWidth(ClientWidth);
    SetHeight(ClientHeight);
    CenterOnScreen();
    SetBackColor(BannerBlue);
    SetBackdrop(Banner("SPLASH"));

    Label8.Place(7425, 1830, 930, 195);
    Label8.SetLook({.font = {.points = 8.25, .bold = true},
                    .foreColor = White,
                    .alignment = Alignment::Right,
                    .wordWrap = false,
                    .autoSize = true});
    Label8.SetCaption("Versão 1.5");
    AddChild(Label8);

    OnLoad = [this] { Form_Load(); };
    OnActivate = [this] { Form_Activate(); };
    MouseDown = [this](int16_t Button, int16_t Shift, float X, float Y) { Form_MouseDown(Button, Shift, X, Y); };
}

// Without a banner there is no region, and the window stays a plain blue rectangle.
void FrmSplash::Form_Load() {
    SetRegion(PicDeclerations::RegionFromPicture(Backdrop().get(), SeeThrough));
    if (DensityOf(*this) != Density()) SetBackdrop(DenseBanner(Backdrop()));
    Label8.SetCaption(VersionText());
}

// The start of the program. Each DoEvents may deliver a press on the splash or a further activation of
// it, which finds Activated set, and from the second one on whatever reaches the main window: its close
// box ends the program there and then. The two waits deliver nothing.
void FrmSplash::Form_Activate() {
    if (Activated) return;
    Activated = true;

    DoEvents();
    const double start = SteadySeconds();
    main_.Load();  // its time counts
    TheDesktop().SleepUntil(start + SecondsAlone);

    main_.Show();
    DoEvents();
    Show();  // in front of the main window again
    DoEvents();
    TheDesktop().SleepUntil(SteadySeconds() + SecondsInFront);
    Unload();
}

void FrmSplash::Form_MouseDown(int16_t Button, int16_t /*Shift*/, float /*X*/, float /*Y*/) {
    if (Button == LeftButton) DragAsWindow();
}
