// Settings, texts, sounds, and where the player's files are kept: what goes in and what comes out, as tables.
#include "core/game_state.h"
#include "platform/headless/desktop.h"
#include "shell/app_folder.h"
#include "shell/settings.h"
#include "shell/sound.h"
#include "shell/text_helpers.h"
#include "shell/version.h"
#include "tests/support/scoped_variable.h"
#include "tests/support/temp_folder.h"
#include "tests/support/transcript.h"

namespace {

struct Services : testing::Test {
    ~Services() override { PuzzleModule::ResetState(); }
    TempFolder folder;
    HeadlessDesktop desktop;
    Transcript transcript;
};

}  // namespace

TEST_F(Services, SettingsTakeTheirDefaultForWhatIsNoValueAndComeBackAsWritten) {
    PuzzleModule::AppFolder = folder.WithSlash();
    const auto shown = [] {
        std::ostringstream out;
        for (const SettingKey* key : {&SoundSetting, &MiniatureSetting}) out << key->key << ReadSwitch(*key) << ' ';
        out << ColorSetting.key << ' ' << ReadColor(ColorSetting);
        return out.str();
    };
    DO(shown());
    const char* const values =
        "False|FALSO|0| false |-0|0.0|Verdadeiro|True|fals|falsos|-1|2|0.5||no|0 0|--0|.5|-0.4| 255 "
        "|+255|254.5001|1.5|2.5|"
        "-.6|16777216|-2147483643|12x|&HFF|+-5|+|inf|2147483647.5|-2147483648.5|99999999999|\t7\t|\"8 \"";
    for (const std::string& value : vb5::Split(values, "|")) {
        folder.Write("config.ini", "[SETUP]\nSom=" + value + "\nNavegador=" + value + "\nColor=" + value + "\n");
        transcript.Write(value + ": " + shown());
    }
    for (const std::string& value : {std::string(254, '0'), "1" + std::string(254, '0'), std::string("1\0002", 3)})
        for (const SettingKey* key : {&SoundSetting, &ColorSetting}) {
            WriteIni(*key, value);
            DO(std::pair(ModINI::ReadIni(SettingsSection, key->key, "none").size(), shown()));
        }
    folder.Write("config.ini", "");
    for (const bool on : {false, true}) {
        DO(WriteIni(SoundSetting, TextOf(on)), WriteIni(ColorSetting, "255"), WriteIni(MiniatureSetting, TextOf(!on)));
        DO(shown() + "\n" + folder.Read("config.ini"));
    }
    PuzzleModule::AppFolder = folder / "missing/";
    DO(WriteIni(SoundSetting, "False"), shown());  // nowhere to write: silent
}

TEST_F(Services, TextsAreSearchedFromTheirStartAndFieldsClosed) {
    const std::string nul(1, '\0');
    const auto replaced = [&](const std::string& text, const std::string& find, const std::string& with) {
        transcript.Write(text + " " + find + " " + with + " -> " +
                         testing::PrintToString(vb5::Replace(text, find, with)));
    };
    replaced("a|b|", "|", nul);
    for (const char* text : {"", "abc", "aab", "aXbX", "aaaaab"})
        for (const char* find : {"", "b", "ab", "B", "X"})
            for (const char* with : {"", "b", "bba", "abba", "bbaa", "YYY"}) replaced(text, find, with);
    for (const char* text : {"", ",", "a,b", ",a", "a,,b", "a,b,", ",,a", "a--b", "a,/#(!a53x,b", "xa!yb", "xa", "aaa"})
        for (const char* delimiter : {",", "--", "!", "aa", ""}) {
            std::string line = std::string(text) + ' ' + delimiter + " ->";
            for (const int index : {-1, 0, 1, 2, 3, 9, 32767}) {
                std::string changed = text;
                line += ' ' + vb5::FieldAt(changed, delimiter, int16_t(index));
                line += index == 1 ? " in " + changed : "|";
            }
            transcript.Write(line + " last at " + std::to_string(vb5::InStrRev(text, delimiter)) + ", split " +
                             testing::PrintToString(vb5::Split(text, delimiter)));
        }
    const std::string wide(40000, 'a');
    for (const char* find : {"a", "é", "b"}) DO(vb5::InStrRev("éa" + wide + "b", find));
}

TEST_F(Services, SoundsAreThoseOfTheProgramAndOnlyWhenSwitchedOn) {
    using namespace PuzzleModule;
    MenuItem sounds("mnuSounds", "");
    LoadWaves();
    for (const auto& wave : {WaveClick, WaveGiro, WaveComplete, WaveRotate})
        for (const bool on : {false, true}) DO(sounds.SetChecked(on), PlayWave(sounds, wave), desktop.sounds.size());
    for (const auto& wave : desktop.sounds) DO(wave.size());
    DO(VersionText());
}

TEST_F(Services, TheProgramsFolderAndItsCopiesFollowAnUpgradeAndLeaveThePlayersFiles) {
    const ScopedVariable dataHome(DataVariable, folder / "home/data");
    transcript.changing = {folder.Path(), "FOLDER"};
    transcript.state = [&] {
        State all;
        for (const auto& entry : std::filesystem::recursive_directory_iterator(folder.Path()))
            if (entry.is_regular_file()) {
                const std::string name = entry.path().lexically_relative(folder.Path());
                all[name] = testing::PrintToString(folder.Read(name));
            }
        return all;
    };
    const std::string shipped = "prefix/share/fento-lira-master/", own = "home/data/fento-lira-master/";
    const auto name = [&] {
        return transcript.Draw<const char*>(
            {"Puzzle.skn", "Puzzle.skn", "Imagens/boat", "Imagens/boat", "Imagens/boat", "Imagens/\n"});
    };
    const auto place = [&](const char* bin) {
        desktop.programPath = folder.Write(std::string(bin) + "/fento-lira-master", "program");
    };
    // What is not installed stays where it is.
    folder.Write(shipped + "Puzzle.skn", "skin");
    for (const char* bin : {"stick/game", "elsewhere/bin", "prefix/lib", "prefix/bin", "prefix/games"})
        DO(place(bin), ChooseAppFolder());
    int version = 0;
    const auto ship = [&] { folder.Write(shipped + name(), "shipped " + std::to_string(++version)); };
    const auto change = [&] { folder.Write(own + name(), "mine"); };
    const auto remove = [&](const std::string& where) { std::filesystem::remove(folder / (where + name())); };
    transcript.Walk(200, Steps() | STEP(ship()) | STEP(ship()) | STEP(ship()) | STEP(change()) | STEP(remove(own)) |
                             STEP(remove(shipped)) | STEP(ChooseAppFolder()) | STEP(ChooseAppFolder()) |
                             STEP(ChooseAppFolder()) | STEP(ChooseAppFolder()) | STEP(ChooseAppFolder()));
    // A lost or damaged list costs no file.
    for (const char* list :
         {"", "zz\n1\n1 x\n\n12 3\nffffffffffffffffffff 1 Puzzle.skn\n0 0 ../../x\n1 2 Imagens/gone"})
        DO(folder.Write(own + ".shipped", list), ChooseAppFolder());
    DO(folder.Write(own + "Imagens/gone", ""), folder.Write(own + ".shipped", "cbf29ce484222325 0 Imagens/gone\n"));
    DO(ChooseAppFolder());
    DO(std::filesystem::remove_all(folder / (shipped + "Imagens")),
       ChooseAppFolder());  // out of reach is not withdrawn
    DO(std::filesystem::remove_all(folder / "home"), folder.Write("home", "no folder"), ChooseAppFolder());
}
