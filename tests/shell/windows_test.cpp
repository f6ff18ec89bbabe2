// The start of the program and its small windows.
#include <gmock/gmock.h>

#include "core/frm_main.h"
#include "core/game_state.h"
#include "platform/headless/headless_desktop.h"
#include "shell/form1.h"
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

    // Runs `act` on the window of this kind that is open, once its loop runs.
    template <typename Window>
    void WhileOpen(std::function<void(Window&)> act) {
        desktop.Post([this, act] {
            auto* window = dynamic_cast<Window*>(desktop.shown.back());
            ASSERT_TRUE(window);
            act(*window);
        });
    }

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

TEST_F(ShellWindows, TheSplashIsAPieceThatTheLeftButtonDrags) {
    frmMain main;
    FrmSplash splash(main);
    splash.Load();
    ASSERT_TRUE(splash.Shape());
    EXPECT_GT(splash.Shape()->size(), 1u);
    EXPECT_EQ(splash.PixelRect(), (Rect{(1366 - 613) / 2 + 1, (768 - 224) / 2, 613, 224}));
    EXPECT_EQ(splash.Label8.Caption(), "1.0.0");

    splash.OnActivate = nullptr;
    splash.Show();
    splash.DeliverMouseDown(2, 0, 300, 100);
    EXPECT_THAT(desktop.log, Not(Contains("drag FrmSplash")));
    splash.DeliverMouseDown(1, 0, 300, 100);
    EXPECT_THAT(desktop.log, Contains("drag FrmSplash"));
}

TEST_F(ShellWindows, TheAboutBoxOpensItsPagesAndStaysUntilOk) {
    frmMain main;
    main.Show();
    desktop.RunPending();
    for (int opening = 0; opening < 2; ++opening) {
        WhileOpen<FrmAbout>([this](FrmAbout& about) {
            EXPECT_EQ(about.Label8.Caption(), "Versão 1.0.0");
            EXPECT_EQ(about.Left() + about.Width() / 2, desktop.ScreenWidth() / 2);
            EXPECT_EQ(about.Top() + about.Height() / 2, desktop.ScreenHeight() / 2);
            about.Label11.DeliverClick();
            about.Label6.DeliverClick();
            EXPECT_TRUE(about.IsShown());
            about.Command1.DeliverClick();
        });
        main.mnuAbout->DeliverClick();
        EXPECT_EQ(desktop.modalTrouble, "");
        EXPECT_THAT(desktop.log, Contains("modal FrmAbout"));
    }
    const std::string host = "https://www.fento-lira.example";
    EXPECT_THAT(desktop.pages, ElementsAre(host + "/html/faq.html", host + "/html/faleconosco.php?",
                                           host + "/html/faq.html", host + "/html/faleconosco.php?"));
    EXPECT_THAT(desktop.skinned, Not(Contains("FrmAbout")));
}

TEST_F(ShellWindows, TheHelpSheetIsSkinnedBeforeItsTextsAreSet) {
    folder.Write("Puzzle.skn", "QWidget {}");
    frmMain main;
    main.Show();
    desktop.RunPending();
    WhileOpen<Form1>([this](Form1& help) {
        EXPECT_THAT(desktop.skinned, ElementsAre("frmMain", "Form1"));
        EXPECT_EQ(help.Label2.Caption().find("para iniciar.\rVocê pode"),
                  std::string("Clique em Menu/Jogo/Novo Jogo/Nível, "
                              "selecione uma imagem e clique em OK ")
                      .size());
        EXPECT_TRUE(help.Label6.Caption().ends_with("aperte o botão direito"));
        for (const Control* label : help.Picture1.Children()) {
            EXPECT_EQ(Intersect(label->PixelRect(), {0, 0, 456, 273}), label->PixelRect()) << label->Name();
            EXPECT_NE(static_cast<const Label*>(label)->Caption(), "");
        }
        help.DeliverClose();
    });
    main.mnuHowToPlay->DeliverClick();
    EXPECT_EQ(desktop.modalTrouble, "");
    EXPECT_THAT(desktop.log, Contains("modal Form1"));

    Skin plain;
    EXPECT_EQ(Form1(plain).Label1.Caption(), "");  // nothing at design
}

}  // namespace
