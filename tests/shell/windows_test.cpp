// The start of the program and its small windows.
#include <gmock/gmock.h>

#include "core/frm_main.h"
#include "core/game_state.h"
#include "platform/headless/desktop.h"
#include "shell/frm_about.h"
#include "shell/frm_splash.h"
#include "shell/startup.h"
#include "tests/support/temp_folder.h"

using testing::Contains;
using testing::ElementsAre;
using testing::Not;

namespace {

struct ShellWindows : testing::Test {
    ShellWindows() { desktop.programPath = folder.Write("fento-lira-master", "program"); }
    ~ShellWindows() override { PuzzleModule::ResetState(); }

    TempFolder folder;
    HeadlessDesktop desktop;
};

TEST_F(ShellWindows, TheSplashLeadsTheProgramInAndIsGone) {
    const double start = desktop.SteadySeconds();
    desktop.Post([this] { desktop.log.push_back("input"); });
    RunProgram();
    // The further activation by the second "show FrmSplash" starts nothing anew.
    desktop.log.resize(11);
    EXPECT_THAT(desktop.log, ElementsAre("show FrmSplash", "run", "events", "input", "sleep 1.5", "show frmMain",
                                         "events", "show FrmSplash", "events", "sleep 0.5", "hide FrmSplash"));
    EXPECT_NEAR(desktop.SteadySeconds() - start, 2.0, 0.001);
    EXPECT_EQ(PuzzleModule::AppFolder, folder.WithSlash());
}

TEST_F(ShellWindows, ASlowLoadIsNotWaitedForAndNothingIsDeliveredInTheWaits) {
    frmMain main;
    FrmSplash splash(main);
    main.OnLoad = [&] {
        main.Form_Load();
        desktop.Advance(2);
        desktop.PostInput([this] { desktop.log.push_back("press"); });
    };
    splash.Show();
    desktop.RunPending();
    EXPECT_THAT(desktop.log, ElementsAre("show FrmSplash", "events", "show frmMain", "events", "press",
                                         "show FrmSplash", "events", "sleep 0.5", "hide FrmSplash"));
    EXPECT_THAT(desktop.shown, ElementsAre(&main));
    EXPECT_THROW(main.DeliverClose(), HeadlessDesktop::ProgramEnded);
}

TEST_F(ShellWindows, TheAboutBoxOpensItsPagesAndStaysUntilOk) {
    frmMain main;
    main.Show();
    desktop.RunPending();
    desktop.Post([this] {
        auto& about = dynamic_cast<FrmAbout&>(*desktop.shown.back());
        about.Label11.DeliverClick();
        about.Label6.DeliverClick();
        EXPECT_TRUE(about.IsShown());
        about.Command1.DeliverClick();
    });
    main.mnuAbout->DeliverClick();
    EXPECT_EQ(desktop.modalTrouble, "");
    const std::string host = "https://www.fento-lira.example";
    EXPECT_THAT(desktop.pages, ElementsAre(host + "/html/faq.html", host + "/html/faleconosco.php?"));
    EXPECT_THAT(desktop.skinned, Not(Contains("FrmAbout")));
}

}  // namespace
