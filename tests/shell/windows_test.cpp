// The start of the program and its small windows.
#include <gmock/gmock.h>

#include "platform/headless/desktop.h"
#include "shell/frm_about.h"
#include "shell/frm_splash.h"

using testing::ElementsAre;

namespace {

struct ShellWindows : testing::Test {
    HeadlessDesktop desktop;
    Form main{"frmMain", "", ScaleMode::Pixels, FormBorder::Sizable};
};

TEST_F(ShellWindows, TheSplashLeadsTheMainWindowInAndIsGone) {
    const double start = desktop.SteadySeconds();
    FrmSplash splash(main);
    main.OnLoad = [this] { desktop.log.push_back("load"); };
    desktop.Post([this] { desktop.log.push_back("input"); });
    splash.Show();
    desktop.RunPending();
    // The further activation by the second "show FrmSplash" starts nothing anew.
    EXPECT_THAT(desktop.log, ElementsAre("show FrmSplash", "events", "input", "load", "sleep 1.5", "show frmMain",
                                         "events", "show FrmSplash", "events", "sleep 0.5", "hide FrmSplash"));
    EXPECT_NEAR(desktop.SteadySeconds() - start, 2.0, 0.001);
    const Label& version = splash.Label8;  // sized to its text, its right edge where it was designed
    EXPECT_EQ(version.Width(), 15 * desktop.TextSize(version.Look().font, "1.0.0").width);
    EXPECT_EQ(version.Left() + version.Width(), 7425 + 930);
}

TEST_F(ShellWindows, ASlowLoadIsNotWaitedForAndAPressInTheWaitDragsTheSplashAfterIt) {
    FrmSplash splash(main);
    main.SetState(WindowState::Maximized);
    main.OnLoad = [&] {
        desktop.Advance(2);
        desktop.PostInput([&] { splash.DeliverMouseDown(2, 0, 300, 100); });
        desktop.PostInput([&] { splash.DeliverMouseDown(1, 0, 300, 100); });
    };
    splash.Show();
    desktop.RunPending();
    EXPECT_THAT(desktop.log, ElementsAre("show FrmSplash", "events", "show frmMain", "events", "drag FrmSplash",
                                         "show FrmSplash", "events", "sleep 0.5", "hide FrmSplash"));
    EXPECT_THAT(desktop.shown, ElementsAre(&main));
    EXPECT_EQ(main.ScaleHeight(), 768 - desktop.frameAndMenu.height);
}

TEST_F(ShellWindows, TheAboutBoxOpensItsPagesAndStaysUntilOk) {
    FrmAbout about;
    about.Load();
    EXPECT_EQ(about.PixelRect().y, (768 - (1 + 21 + 196)) / 2 + 21) << "centred with its title bar";
    desktop.frame.top = 61;
    about.DeliverFrame();
    EXPECT_EQ(about.PixelRect().y, (768 - (1 + 61 + 196)) / 2 + 61);
    desktop.Post([this, &about] {
        about.Label11.DeliverClick();
        about.Label6.DeliverClick();
        EXPECT_TRUE(about.IsShown());
        about.Command1.DeliverClick();
    });
    about.Show(Modality::Modal);
    EXPECT_EQ(desktop.modalTrouble, "");
    const std::string host = "https://www.fento-lira.example";
    EXPECT_THAT(desktop.pages, ElementsAre(host + "/html/faq.html", host + "/html/faleconosco.php?"));
    EXPECT_TRUE(desktop.skinned.empty());
}

}  // namespace
