// The windows of the shell as a player meets them, whole; the wait ring, the shapes of windows, what goes into the
// desktop's dialogs and what comes back.
#include "core/game_state.h"
#include "platform/drawing/bmp.h"
#include "platform/drawing/raster.h"
#include "platform/headless/desktop.h"
#include "platform/system/user_settings.h"
#include "shell/common_dialogs.h"
#include "shell/form1.h"
#include "shell/frm_about.h"
#include "shell/frm_splash.h"
#include "shell/shaped_windows.h"
#include "shell/uc_firefox_wait.h"
#include "tests/support/scoped_variable.h"
#include "tests/support/temp_folder.h"
#include "tests/support/transcript.h"

using namespace ModCmnDlg;

namespace {

struct ShellWindows : testing::Test {
    ShellWindows() {
        PuzzleModule::AppFolder = folder.WithSlash();
        FileDialogRec = {};
        transcript.changing = {folder.Path(), "FOLDER"};
        transcript.log = &desktop.log;
        transcript.state = [this] {
            State all{{"pages", testing::PrintToString(desktop.pages)}};
            for (Control* window : windows) Describe(*window, all);
            return all;
        };
    }
    ~ShellWindows() override { PuzzleModule::ResetState(); }

    TempFolder folder;
    ScopedVariable configuration{SettingsVariable, folder / "config"};
    HeadlessDesktop desktop;
    Transcript transcript;
    Form main{"frmMain", "", ScaleMode::Pixels, FormBorder::Sizable};
    std::vector<Control*> windows{&main};
};

}  // namespace

TEST_F(ShellWindows, TheSplashLeadsTheMainWindowInAndIsGone) {
    const auto press = [](FrmSplash& splash, int16_t button) { splash.DeliverMouseDown(button, 0, 300, 100); };
    for (const double slow : {0.0, 2.0}) {
        Form first("frmMain", "", ScaleMode::Pixels, FormBorder::Sizable);
        FrmSplash splash(first);
        windows = {&first, &splash};
        first.SetState(slow ? WindowState::Maximized : WindowState::Normal);
        first.OnLoad = [&] {
            desktop.Advance(slow);
            for (const auto button : {int16_t(2), int16_t(1)})
                desktop.PostInput([&, button] { DO(press(splash, button)); });
        };
        desktop.Post([&] { DO(press(splash, 1)); });
        DO(splash.Load());
        const double start = desktop.SteadySeconds();
        DO(splash.Show(), desktop.RunPending(), int(100 * (desktop.SteadySeconds() - start)));
        if (slow) continue;
        // The shape, eight pixels a letter.
        for (int y = 2; y < 224; y += 8) {
            std::string line;
            for (int x = 4; x < 614; x += 8)
                line +=
                    std::ranges::any_of(*splash.Shape(), [=](const Rect& r) { return r.Contains(x, y); }) ? '#' : ' ';
            transcript.Write(line);
        }
        DO(splash.Shape()->size());
    }
}

TEST_F(ShellWindows, AboutAndHelpShowTheirTextsAndCloseByButtonFrameOrEscape) {
    FrmAbout about, again;
    Skin skin;
    skin.LoadSkinFile(folder.Write("Puzzle.skn", "QWidget {}"));
    Form1 help(skin), plain(skin);
    const auto show = [](Form& form) { form.Show(Modality::Modal); };
    const auto post = [&](auto act) { desktop.Post(act); };
    windows = {&about};
    DO(about.Load());
    DO(desktop.frame.top = 61, about.DeliverFrame());
    post([&] { DO(about.DeliverKeyDown(Key::PageUp), about.Label11.DeliverClick(), about.Label6.DeliverClick()); });
    post([&] { DO(about.Command1.DeliverClick()); });
    DO(show(about));
    windows = {};
    post([&] { DO(again.DeliverKeyDown(Key::Escape)); });
    DO(show(again));
    windows = {&help};
    post([&] { DO(help.DeliverKeyDown(Key::PageDown)); });
    post([&] { DO(help.DeliverKeyDown(Key::Escape)); });
    DO(show(help));
    DO(testing::PrintToString(desktop.skinned) + desktop.skinText + desktop.modalTrouble);
    // Without a skin, or with a broken one, a window stays plain.
    desktop.skinFails = true;
    DO(skin.LoadSkinFile(folder / "Puzzle.skn"), plain.Load(), desktop.skinned.size());
    DO(desktop.skinFails = false, skin.LoadSkinFile(folder / "missing"), skin.ApplySkin(plain), desktop.skinned.size());
}

TEST_F(ShellWindows, TheRingTurnsThroughItsFrames) {
    constexpr char Digits[] = "0123456789abcdef";
    ucFirefoxWait ring{"ring"}, stored{"stored"};
    ring.PropertyChanged = [&](const std::string& name) { transcript.Hear(name); };
    transcript.state = [&] {
        State all;
        Describe(ring, all);
        for (const ucFirefoxWait* any : {&ring, &stored})
            all[any == &ring ? "ring has" : "stored has"] = testing::PrintToString(
                std::tuple(any->AnimationSpeed(), any->BackColor(), any->IsPlaying(), any->FrameIndex));
        return all;
    };
    // The red of every pixel in two digits; dots for what lies behind.
    const auto draw = [&] {
        const Surface& image = ring.picDestination.Image;
        for (int y = 0; y < image.PixelBounds().height; ++y) {
            std::string line = "        ";
            for (int x = 0; x < image.PixelBounds().width; ++x) {
                const auto red = size_t(ToColor(image.At(x, y)) & 255);
                line += image.At(x, y) == image.At(0, 0) ? ".." : std::string{Digits[red / 16], Digits[red % 16]};
            }
            transcript.Write(line);
        }
    };
    const auto tick = [&] { DO(desktop.Advance(ring.AnimationSpeed() / 1000.0)); };
    DO(ring.StopWait());
    DO(ring.UserControl_Show(), ring.SetBackColor(0xFFFFFF));
    draw();
    DO(ring.PlayWait());
    for (int frame = 1; frame <= 8; ++frame) tick(), draw();
    tick();
    DO(ring.PlayWait());
    DO(ring.SetBackColor(0x102030));
    DO(ring.SetAnimationSpeed(50));
    tick();
    DO(ring.StopWait());
    tick();
    DO(ring.StopWait());
    DO(ring.PlayWait());
    tick();
    DO(ring.SetBackColor(WindowColor));
    DO(ring.SetWidth(99), ring.SetHeight(3));
    PropertyBag bag, wrong;
    DO(ring.UserControl_WriteProperties(bag), stored.UserControl_ReadProperties(bag));
    DO(stored.PlayWait(), desktop.Advance(1));
    for (const char* name : {"AnimationSpeed", "BackColor", "IsPlaying"})
        wrong.WriteProperty(name, std::string("x"), 0);
    DO(stored.UserControl_ReadProperties(wrong));
    DO(stored.UserControl_ReadProperties({}));
    PictureBox sheet("sheet", ScaleMode::Twips);
    DO(main.AddChild(sheet), sheet.AddChild(ring));
    for (const double scale : {2.0, 3.0}) {
        DO(desktop.scale = scale, ring.UserControl_Show());
        if (scale < 3) draw();
    }
}

TEST(RegionFromPicture, CoversExactlyWhatIsNotOfTheColour) {
    constexpr Color Yellow = Rgb(255, 255, 0);
    const unsigned seed = std::random_device{}();
    SCOPED_TRACE("seed " + std::to_string(seed));
    std::mt19937 random(seed);
    for (int round = 0; round < 300; ++round) {
        Surface picture(1 + int(random() % 12), 1 + int(random() % 12), ToPixel(Yellow));
        const auto density = random() % 5;
        for (int i = 0; i < picture.Width() * picture.Height(); ++i)
            if (random() % 4 < density)
                SetPixel(picture, i % picture.Width(), i / picture.Width(),
                         random() % 2 ? Yellow + 65536 : Yellow - 256);
        const auto region = PicDeclerations::RegionFromPicture(&picture, Yellow);
        ASSERT_TRUE(region);
        for (int y = 0; y < picture.Height(); ++y)
            for (int x = -1; x <= picture.Width(); ++x)
                ASSERT_EQ(std::ranges::count_if(*region, [=](const Rect& r) { return r.Contains(x, y); }),
                          Point(picture, x, y) != Yellow && picture.Bounds().Contains(x, y));
        EXPECT_EQ(PicDeclerations::RegionFromPicture(&picture, Yellow - 0x1000000)->size(), 1u);
    }
    EXPECT_EQ(PicDeclerations::RegionFromPicture(nullptr, Yellow), std::nullopt);
}

TEST_F(ShellWindows, DialogsAskWhatTheRecordSaysAndFillIt) {
    transcript.state = [&] {
        const FileDialogRecord& r = FileDialogRec;
        State all{{"record", testing::PrintToString(std::tuple(r.Filter, r.FileTitle, r.FilterIndex, r.FileName,
                                                               r.InitDir, r.DialogTitle, r.Flags))}};
        if (!desktop.fileRequests.empty()) {
            const FileDialogRequest& asked = desktop.fileRequests.back();
            all["asked"] = testing::PrintToString(
                std::tuple(asked.save, asked.title, asked.filterIndex, asked.flags, asked.folder));
            for (const auto& [text, pattern] : asked.filters) all["asked"] += " " + text + " = " + pattern;
        }
        all["colours"] = GetSetting(AppEXEName(), "cDialog", "RegColors", "none");
        return all;
    };
    DO(PrepareSavedGameDialog(), folder.Has("Save"));
    DO(PrepareSavedGameDialog(), ShowOpen());
    desktop.filterAnswer = 1;
    FileDialogRec = {&main, "Fento-Lira (*.pzl)|*.pzl|Tudo|*", "", 2, "", "/jogos", "Qual?", 5};
    desktop.fileAnswers = {"/jogos/a.pzl", "  /b \0c"};
    DO(ShowSave());
    DO(ShowOpen());
    // 254 characters, whatever the bytes: "ação" has four, a byte that is no part of one is one.
    for (const std::string begin : {"/ação", "/\xE7\xE3xy", "/abcd"})
        for (const size_t more : {250u, 249u}) {
            FileDialogRec.FileName = "none";
            desktop.fileAnswers = {begin + std::string(more, 'x')};
            ShowOpen();
            EXPECT_EQ(FileDialogRec.FileName == "none", more == 250);
        }
    for (const char* path : {"/g/jogo.txt", "/g/a.b.c", "/g/jogo", "/g.d/jogo", "/g/jogo.pzl", "/g/jogo.", "/g.d/a.b",
                             "/g/São.João", "/g/.pzl"})
        transcript.Write(path + (" -> " + WithSavedGameExtension(path)));
    std::string none, some = "abc";
    DO(ChangeExtension("a.b.c", none), ChangeExtension("a.b", some) + some + TrimNull(std::string("x\0y", 3)));

    // On cancel too. What is missing or no number is white; what the player leaves alone goes back as it was, also
    // where it holds more than the 24 bits that are shown.
    for (const char* const stored :
         {"Key", "1,2", "1.5,x,, 3 ", "0,-2147483643,16777471", "5,6,7,8,9,10,11,12,13,14,15,16,17,18,19,20,1,1"}) {
        DO(SaveSetting(AppEXEName(), "cDialog", "RegColors", stored));
        for (const Color last : {77, 78}) {
            desktop.colorAnswers.push_back([&](Color initial, std::span<Color, 16> custom) -> std::optional<Color> {
                transcript.Hear(std::to_string(initial) +
                                testing::PrintToString(std::vector<Color>(custom.begin(), custom.end())));
                custom[15] = last;
                return last == 77 ? std::nullopt : std::optional(0x102030);
            });
            DO(ShowColor(main, last == 77 ? 0x70000FF : WindowColor, true));
        }
    }
}
