// config.ini as players and editors leave it.
#include "shell/settings.h"

#include <gtest/gtest.h>

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
    const struct {
        const char* value;
        bool sound;
    } switches[] = {{"False", false}, {"FALSO", false},     {"0", false},  {" false ", false}, {"-0", false},
                    {"0.0", false},   {"Verdadeiro", true}, {"-1", true},  {"2", true},        {"0.5", true},
                    {"", true},       {"no", true},         {"0 0", true}, {"--0", true}};
    for (const auto& c : switches) {
        folder.Write("config.ini", std::string("[SETUP]\nSom=") + c.value + "\n");
        EXPECT_EQ(ReadSwitch(SoundSetting), c.sound) << c.value;
    }
    const struct {
        const char* value;
        Color color;
    } colors[] = {
        {"0", 0},           {" 255 ", 255},    {"+7", 7},         {"16777215", 0xFFFFFF},    {"16777216", 0xE7FDFE},
        {"-1", 0xE7FDFE},   {"1.5", 0xE7FDFE}, {"12x", 0xE7FDFE}, {"99999999999", 0xE7FDFE}, {"", 0xE7FDFE},
        {"&HFF", 0xE7FDFE}, {"+-5", 0xE7FDFE}};
    for (const auto& c : colors) {
        folder.Write("config.ini", std::string("[SETUP]\nColor=") + c.value + "\n");
        EXPECT_EQ(ReadColor(ColorSetting), c.color) << c.value;
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
