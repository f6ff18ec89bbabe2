// The shell's windows as a player meets them, whole, and its services: what goes in and what comes out.
#include "core/game_state.h"
#include "platform/drawing/raster.h"
#include "platform/headless/desktop.h"
#include "platform/system/user_settings.h"
#include "shell/app_folder.h"
#include "shell/common_dialogs.h"
#include "shell/form1.h"
#include "shell/frm_about.h"
#include "shell/frm_splash.h"
#include "shell/settings.h"
#include "shell/shaped_windows.h"
#include "shell/text_helpers.h"
#include "shell/uc_firefox_wait.h"
#include "shell/version.h"
#include "tests/support/temp_folder.h"
#include "tests/support/transcript.h"
#include "tests/support/variables.h"

using namespace ModCmnDlg;

namespace {

struct Shell : testing::Test {
    Shell() {
        PuzzleModule::AppFolder = folder.WithSlash();
        FileDialogRec = {};
        SetVariable(SettingsVariable, folder / "config"), SetVariable(DataVariable, folder / "home/data");
        transcript.log = &desktop.log;
        transcript.state = [this] {
            State all{{"pages", testing::PrintToString(desktop.pages)}};
            for (Control* window : windows) Describe(*window, all);
            return all;
        };
    }
    ~Shell() override { PuzzleModule::ResetState(); }

    TempFolder folder;
    HeadlessDesktop desktop;
    Transcript transcript;
    Form main{"frmMain", "", ScaleMode::Pixels, FormBorder::Sizable};
    std::vector<Control*> windows{&main};
};

}  // namespace

TEST_F(Shell, TheSplashLeadsTheMainWindowInAndIsGone) {
    for (const double slow : {0.0, 2.0}) {
        Form first("frmMain", "", ScaleMode::Pixels, FormBorder::Sizable);
        FrmSplash splash(first);
        windows = {&first, &splash};
        first.SetState(slow ? WindowState::Maximized : WindowState::Normal);
        desktop.scale = 1 + slow / 2;
        first.OnLoad = [&] {
            desktop.Advance(slow);
            desktop.PostInput([&] { DO(splash.DeliverMouseDown(2, 0, 300, 100)); });
            desktop.PostInput([&] { DO(splash.DeliverMouseDown(1, 0, 300, 100)); });
        };
        desktop.Post([&] { DO(splash.DeliverMouseDown(1, 0, 300, 100)); });
        DO(splash.Load(), splash.Shape()->size());
        const double start = desktop.SteadySeconds();
        DO(splash.Show(), desktop.RunPending(), int(100 * (desktop.SteadySeconds() - start)));
    }
    // A window of the shape of a picture: all that is not of one colour.
    windows.clear();
    using PicDeclerations::RegionFromPicture;
    Surface picture(7, 5, ToPixel(0xFFFF));
    for (int i = 0; i < 40; ++i)
        DO(SetPixel(picture, i * 5 % 7, i * 3 % 5, i % 4 ? i % 3 : 0xFFFF), RegionFromPicture(&picture, 0xFFFF));
    DO(std::tuple(RegionFromPicture(&picture, 1), RegionFromPicture(&picture, -1), RegionFromPicture(nullptr, 0)));
}

TEST_F(Shell, AboutAndHelpShowTheirTextsAndCloseByButtonOrEscape) {
    FrmAbout about;
    Skin skin;
    skin.LoadSkinFile(folder.Write("Puzzle.skn", "QWidget {}"));
    Form1 help(skin), plain(skin);
    const auto show = [this](Form& form) { windows = {&form}, form.Show(Modality::Modal); };
    DO(desktop.frame.top = 61, about.Load(), desktop.frame.top = 21, about.DeliverFrame());
    desktop.Post([&] { DO(about.DeliverKeyDown(Key::PageUp), about.Label11.DeliverClick()); });
    desktop.Post([&] { DO(about.Label6.DeliverClick(), about.Command1.DeliverClick()); });
    DO(show(about));
    desktop.Post([&] { DO(about.DeliverKeyDown(Key::Escape)); });
    DO(show(about));
    desktop.Post([&] { DO(help.DeliverKeyDown(Key::PageDown)); });
    desktop.Post([&] { DO(help.DeliverKeyDown(Key::Escape)); });
    DO(show(help));
    DO(testing::PrintToString(desktop.skinned) + desktop.skinText + desktop.modalTrouble);
    // Without a skin, or with a broken one, a window stays plain.
    desktop.skinFails = true;
    DO(skin.LoadSkinFile(folder / "Puzzle.skn"), plain.Load(), desktop.skinned.size());
    DO(desktop.skinFails = false, skin.LoadSkinFile(folder / "missing"), skin.ApplySkin(plain), desktop.skinned.size());
}

TEST_F(Shell, TheRingTurnsThroughItsFrames) {
    ucFirefoxWait ring{"ring"}, stored{"stored"};
    ring.PropertyChanged = [&](const std::string& name) { transcript.Hear(name); };
    transcript.state = [&] {
        State all;
        Describe(ring, all);
        for (const ucFirefoxWait* any : {&ring, &stored})
            all[any->Name() + " has"] = testing::PrintToString(
                std::tuple(any->AnimationSpeed(), any->BackColor(), any->IsPlaying(), any->FrameIndex));
        Describe(ring.picDestination, all);
        return all;
    };
    const auto tick = [&] { desktop.Advance(ring.AnimationSpeed() / 1000.0); };
    DO(ring.StopWait());
    DO(ring.UserControl_Show(), ring.SetBackColor(0xFFFFFF));
    DO(ring.PlayWait());
    for (int frame = 1; frame <= 9; ++frame) DO(tick());
    DO(ring.PlayWait(), ring.SetBackColor(0x102030));
    DO(ring.SetAnimationSpeed(50), tick());
    for (int i = 0; i < 2; ++i) DO(ring.StopWait(), tick());
    DO(ring.PlayWait(), tick());
    DO(ring.SetBackColor(WindowColor), ring.SetWidth(99), ring.SetHeight(3));
    PropertyBag bag, wrong;
    DO(ring.UserControl_WriteProperties(bag), stored.UserControl_ReadProperties(bag));
    DO(stored.PlayWait(), desktop.Advance(1));
    for (const char* name : {"AnimationSpeed", "BackColor", "IsPlaying"})
        wrong.WriteProperty(name, std::string("x"), 0);
    DO(stored.UserControl_ReadProperties(wrong));
    DO(stored.UserControl_ReadProperties({}));
    PictureBox sheet("sheet", ScaleMode::Twips);
    for (const double scale : {2.0, 3.0})
        DO(desktop.scale = scale, main.AddChild(sheet), sheet.AddChild(ring), ring.UserControl_Show());
}

TEST_F(Shell, DialogsAskWhatTheRecordSaysAndFillIt) {
    transcript.changing = {folder.Path(), "FOLDER"};
    transcript.state = [&] {
        const auto& [owner, filter, title, index, name, place, caption, flags] = FileDialogRec;
        State all{{"record", testing::PrintToString(std::tuple(filter, title, index, name, place, caption, flags))}};
        for (const auto& asked : desktop.fileRequests) {
            all["asked"] = testing::PrintToString(
                std::tuple(asked.save, asked.title, asked.filterIndex, asked.flags, asked.folder));
            for (const auto& [text, pattern] : asked.filters) all["asked"] += " " + text + " = " + pattern;
        }
        all["colours"] = GetSetting(AppEXEName(), "cDialog", "RegColors", "none");
        return all;
    };
    for (int i = 0; i < 2; ++i) DO(PrepareSavedGameDialog(), ShowOpen(), folder.Has("Save"));
    desktop.filterAnswer = 1;
    FileDialogRec = {&main, "Fento-Lira (*.pzl)|*.pzl|Tudo|*", "", 2, "", "/jogos", "Qual?", 5};
    desktop.fileAnswers = {"/jogos/a.pzl", std::string("  /b \0c", 7)};
    DO(ShowSave());
    DO(ShowOpen());
    // 254 characters, whatever the bytes: "ação" has four, a byte that is no part of one is one.
    for (const std::string begin : {"/ação", "/\xE7\xE3xy", "/abcd"})
        for (const size_t more : {250u, 249u}) {
            desktop.fileAnswers = {begin + std::string(more, 'x')};
            DO(FileDialogRec.FileName = "none", ShowOpen());
        }
    for (const char* path : {"/g/a.b.c", "/g.d/jogo", "/g/jogo.pzl", "/g/jogo.", "/g/São.João", "/g/.pzl"})
        DO(path + (" -> " + WithSavedGameExtension(path)));
    std::string none, some = "abc";
    DO(ChangeExtension("a.b.c", none), ChangeExtension("a.b", some) + some + TrimNull(std::string("x\0y", 3)));

    // On cancel too. What is missing or no number is white; what the player leaves alone goes back as it was, also
    // where it holds more than the 24 bits that are shown.
    for (const char* const stored :
         {"Key", "1,2", "1.5,x,, 3 ", "0,-2147483643,16777471", "5,6,7,8,9,10,11,12,13,14,15,16,17,18,19,20,1,1"}) {
        DO(SaveSetting(AppEXEName(), "cDialog", "RegColors", stored));
        for (const Color last : {77, 78}) {
            desktop.colorAnswers.push_back([&](Color initial, std::span<Color, 16> custom) -> std::optional<Color> {
                transcript.Told("shown")(initial, std::vector<Color>(custom.begin(), custom.end()));
                custom[15] = last;
                return last == 77 ? std::nullopt : std::optional(0x102030);
            });
            DO(ShowColor(main, last == 77 ? 0x70000FF : WindowColor, true));
        }
    }
}

TEST_F(Shell, SettingsTakeTheirDefaultForWhatIsNoValueAndComeBackAsWritten) {
    const auto shown = [] {
        return std::tuple(ReadSwitch(SoundSetting), ReadSwitch(MiniatureSetting), ReadColor(ColorSetting));
    };
    DO(shown());
    const auto stored = [&](const std::string& value) {
        folder.Write("config.ini", "[SETUP]\nSom=" + value + "\nNavegador=" + value + "\nColor=" + value + "\n");
        return shown();
    };
    const std::string values =
        "False|FALSO|0| false |-0|0.0|Verdadeiro|True|fals|falsos|-1|2||no|0 0|--0|.5|-0.4| 255 |+255|254.5001|1.5|2.5|"
        "-.6|16777216|-2147483643|12x|&HFF|+-5|+|inf|2147483647.5|-2147483648.5|99999999999|\t7\t|\"8 \"";
    for (const std::string& value : vb5::Split(values, "|"))
        transcript.Write(value + testing::PrintToString(stored(value)));
    for (const std::string& value : {std::string(254, '0'), "1" + std::string(254, '0'), std::string("1\0002", 3)})
        DO(std::pair(stored(value), ModINI::ReadIni(SettingsSection, "Color", "none").size()));
    folder.Write("config.ini", "");
    for (const bool on : {false, true}) {
        DO(WriteIni(SoundSetting, TextOf(on)), WriteIni(ColorSetting, "255"), WriteIni(MiniatureSetting, TextOf(!on)));
        DO(std::pair(shown(), folder.Read("config.ini")));
    }
    PuzzleModule::AppFolder = folder / "missing/";
    DO(WriteIni(SoundSetting, "False"), shown());  // nowhere to write: silent
    DO(VersionText());
}

TEST_F(Shell, TextsAreSearchedFromTheirStartAndFieldsClosed) {
    using namespace vb5;
    for (const std::string text :
         {"", ",", "a,b", ",a", "a,,b", "a,b,", ",,a", "a--b", "xa!yb", "aaa", "aXbX", "aaaaab"})
        for (const std::string find : {",", "--", "!", "aa", "", "X", "ab"}) {
            std::string line = text + ' ' + find + " -> " + Replace(text, find, "bba") + ' ' + Replace(text, find, ""),
                        changed;
            for (const int index : {-1, 0, 1, 2, 3, 9, 32767})
                changed = text, line += ' ' + FieldAt(changed, find, int16_t(index)) + '|';
            transcript.Write(line + changed + " last at " + std::to_string(InStrRev(text, find)) + ", split " +
                             testing::PrintToString(Split(text, find)));
        }
    for (const char* find : {"a", "é", "b"}) DO(InStrRev("éa" + std::string(40000, 'a') + "b", find));
}

TEST_F(Shell, TheProgramsFolderFollowsUpgradesAndLeavesThePlayersFiles) {
    transcript.changing = {folder.Path(), "FOLDER"};
    transcript.state = [&] {
        State all;
        for (const auto& entry : std::filesystem::recursive_directory_iterator(folder.Path())) {
            const std::string name = entry.path().lexically_relative(folder.Path()).generic_string();
            if (entry.is_regular_file()) all[name] = folder.Read(name);
        }
        return all;
    };
    const std::string shipped = "prefix/share/fento-lira-master/", own = "home/data/fento-lira-master/";
    // Only what is installed goes elsewhere.
    folder.Write(shipped + "Puzzle.skn", "skin");
    for (const std::string bin : {"stick/game", "elsewhere/bin", "prefix/lib", "prefix/bin", "prefix/games"})
        DO(desktop.programPath = folder.Write(bin + "/fento-lira-master", "program"), ChooseAppFolder());
    int version = 0;
    const auto name = [&] {
        return transcript.Draw<const char*>({"Puzzle.skn", "Imagens/boat", "Imagens/boat", "Imagens/\n"});
    };
    const auto ship = [&] { folder.Write(shipped + name(), "shipped " + std::to_string(++version)); };
    const auto change = [&] { folder.Write(own + name(), "mine"); };
    const auto remove = [&](const std::string& where) { std::filesystem::remove(folder / (where + name())); };
    const std::function<void()> choose = STEP(ChooseAppFolder());
    transcript.Walk(200, Steps() | STEP(ship()) | STEP(ship()) | STEP(ship()) | STEP(change()) | STEP(remove(own)) |
                             STEP(remove(shipped)) | choose | choose | choose | choose);
    for (const char* mine : {"Imagens/mine", "Imagens/boat"})
        DO(folder.Write(shipped + mine, "shipped"), ChooseAppFolder());
    DO(folder.Write(own + "Imagens/mine", "changed"), std::filesystem::remove_all(folder / (shipped + "Imagens/mine")),
       std::filesystem::remove_all(folder / (shipped + "Imagens/boat")), ChooseAppFolder());
    // A lost or damaged list costs no file.
    for (const char* list :
         {"", "zz\n1\n1 x\n\n12 3\nffffffffffffffffffff 1 Puzzle.skn\n0 0 ../../x\n1 2 Imagens/gone"})
        DO(folder.Write(own + ".shipped", list), ChooseAppFolder());
    DO(folder.Write(own + "Imagens/gone", ""), folder.Write(own + ".shipped", "cbf29ce484222325 0 Imagens/gone\n"));
    choose();
    DO(std::filesystem::remove_all(folder / (shipped + "Imagens")),
       ChooseAppFolder());  // out of reach is not withdrawn
    DO(std::filesystem::remove_all(folder / "home"), folder.Write("home", "no folder"), ChooseAppFolder());
}
