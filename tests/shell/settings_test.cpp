// config.ini as players and editors leave it.
#include "shell/settings.h"

#include <gtest/gtest.h>

#include <map>

#include "core/game_state.h"
#include "platform/headless/desktop.h"
#include "shell/skin.h"
#include "shell/sound.h"
#include "tests/support/temp_folder.h"

namespace {

struct Settings : testing::Test {
    Settings() { PuzzleModule::AppFolder = folder.WithSlash(); }
    ~Settings() override { PuzzleModule::ResetState(); }
    TempFolder folder;
    HeadlessDesktop desktop;
};

TEST_F(Settings, MissingEmptyOrOddValuesGiveTheDefault) {
    EXPECT_TRUE(ReadSwitch(SoundSetting));
    EXPECT_EQ(ReadColor(ColorSetting), 0xE7FDFE);
    const std::map<bool, std::vector<const char*>> switches = {
        {false, {"False", "FALSO", "0", " false ", "-0", "0.0"}},
        {true, {"Verdadeiro", "-1", "2", "0.5", "", "no", "0 0", "--0"}}};
    for (const auto& [sound, values] : switches)
        for (const char* value : values) {
            folder.Write("config.ini", std::string("[SETUP]\nSom=") + value + "\n");
            EXPECT_EQ(ReadSwitch(SoundSetting), sound) << value;
        }
    const std::map<Color, std::vector<const char*>> colors = {
        {0, {"0", ".5", "-0.4"}},
        {255, {" 255 ", "+255", "254.5001"}},
        {2, {"1.5", "2.5"}},
        {-1, {"-1", "-.6"}},
        {16777216, {"16777216"}},  // what is shown of it is the screen's matter
        {WindowColor, {"-2147483643"}},
        {0xE7FDFE, {"", "12x", "&HFF", "+-5", "inf", "2147483647.5", "99999999999"}},
    };
    for (const auto& [color, values] : colors)
        for (const char* value : values) {
            folder.Write("config.ini", std::string("[SETUP]\nColor=") + value + "\n");
            EXPECT_EQ(ReadColor(ColorSetting), color) << value;
        }
}

TEST_F(Settings, WhatIsWrittenIsReadAndTheFirstChangeMakesTheFile) {
    WriteIni(SoundSetting, TextOf(false));
    WriteIni(ColorSetting, "255");
    EXPECT_EQ(folder.Read("config.ini"), "[SETUP]\nSom=False\nColor=255\n");
    PuzzleModule::AppFolder = folder / "missing/";
    WriteIni(SoundSetting, "False");  // nowhere to write: silent
    EXPECT_TRUE(ReadSwitch(SoundSetting));
}

TEST_F(Settings, AMissingOrBrokenSkinLeavesWindowsPlain) {
    Form window("frmSome", "", ScaleMode::Twips, FormBorder::Sizable);
    Skin skin;
    skin.LoadSkinFile(folder / "Puzzle.skn");
    skin.ApplySkin(window);
    desktop.skinFails = true;
    skin.LoadSkinFile(folder.Write("Puzzle.skn", "QWidget {"));
    skin.ApplySkin(window);
    EXPECT_TRUE(desktop.skinned.empty());

    desktop.skinFails = false;
    skin.LoadSkinFile(folder.Write("Puzzle.skn", "QWidget {}"));
    skin.ApplySkin(window);
    EXPECT_EQ(desktop.skinText, "QWidget {}");
    EXPECT_EQ(desktop.skinned, std::vector<std::string>{"frmSome"});
}

}  // namespace
