// What goes into the desktop's dialogs and what comes back.
#include "shell/common_dialogs.h"

#include <gtest/gtest.h>

#include "core/game_state.h"
#include "platform/headless/desktop.h"
#include "platform/system/user_settings.h"
#include "tests/support/scoped_variable.h"
#include "tests/support/temp_folder.h"

using namespace ModCmnDlg;

namespace {

struct Dialogs : testing::Test {
    Dialogs() {
        PuzzleModule::AppFolder = folder.WithSlash();
        FileDialogRec = {};
    }
    ~Dialogs() override { PuzzleModule::ResetState(); }

    TempFolder folder;
    ScopedVariable configuration{"XDG_CONFIG_HOME", folder / "config"};
    HeadlessDesktop desktop;
    Form owner{"frmMain", "", ScaleMode::Pixels, FormBorder::Sizable};
};

// 254 characters, whatever the bytes: "ação" has four, a byte that is no part of one is one.
TEST_F(Dialogs, APathThatLeavesNoRoomForItsEndIsACancel) {
    const std::string rest(249, 'x');
    for (const std::string& longest : {"/ação" + rest, "/\xE7\xE3xy" + rest, "/abcd" + rest}) {
        for (const std::string& answer : {longest + "y", longest}) {
            FileDialogRec.FileName.clear();
            desktop.fileAnswers.push_back(answer);
            ShowOpen();
            EXPECT_EQ(FileDialogRec.FileName, answer == longest ? longest : "");
        }
    }
}

TEST_F(Dialogs, WholeRecordReachesTheDialogAndComesBack) {
    FileDialogRec.Filter = "Fento-Lira (*.pzl)|*.pzl|Tudo|*";
    FileDialogRec.FilterIndex = 2;
    FileDialogRec.InitDir = "/jogos";
    FileDialogRec.DialogTitle = "Qual?";
    FileDialogRec.Flags = OFN_READONLY | OFN_HIDEREADONLY;
    desktop.filterAnswer = 1;
    desktop.fileAnswers = {"/jogos/a.pzl"};
    ShowSave();
    const FileDialogRequest& asked = desktop.fileRequests.at(0);
    EXPECT_TRUE(asked.save && asked.filterIndex == 2 && asked.flags == 5);
    EXPECT_EQ(asked.folder + asked.title, "/jogosQual?");
    ASSERT_EQ(asked.filters.size(), 2u);
    EXPECT_EQ(asked.filters[0].pattern + asked.filters[1].text + asked.filters[1].pattern, "*.pzlTudo*");
    EXPECT_EQ(FileDialogRec.FileName + FileDialogRec.FileTitle, "/jogos/a.pzla.pzl");
    EXPECT_EQ(FileDialogRec.FilterIndex, 1);
    ShowOpen();  // cancelled
    EXPECT_EQ(FileDialogRec.FileName, "/jogos/a.pzl");
}

TEST(SavedGameExtension, OnlyTheFilesOwnNameDecides) {
    const struct {
        const char *path, *expected;
    } cases[] = {{"/g/jogo.txt", "/g/jogo.pzl"}, {"/g/a.b.c", "/g/a.b.pzl"},     {"/g/jogo", "/g/jogo.pzl"},
                 {"/g.d/jogo", "/g.d/jogo.pzl"}, {"/g/jogo.pzl", "/g/jogo.pzl"}, {"/g/jogo.", "/g/jogo.pzl"},
                 {"/g.d/a.b", "/g.d/a.pzl"},     {"/g/São.João", "/g/São.pzl"}};
    for (const auto& c : cases) EXPECT_EQ(WithSavedGameExtension(c.path), c.expected);
}

TEST_F(Dialogs, CustomColoursLiveOnFromOneUseToTheNextOnCancelToo) {
    desktop.colorAnswers.push_back([](Color initial, std::span<Color, 16> custom) -> std::optional<Color> {
        EXPECT_EQ(initial, 77);
        custom[0] = 1;
        custom[15] = 255;
        return std::nullopt;
    });
    EXPECT_EQ(ShowColor(owner, 77, true), -1);
    EXPECT_EQ(GetSetting(AppEXEName(), "cDialog", "RegColors", "Key"),
              "1,16777215,16777215,16777215,16777215,16777215,16777215,16777215,16777215,16777215,16777215,16777215,"
              "16777215,16777215,16777215,255");

    CustomColors.fill(0);  // as in another run
    desktop.colorAnswers.push_back([](Color, std::span<Color, 16> custom) -> std::optional<Color> {
        EXPECT_EQ(custom[0], 1);
        EXPECT_EQ(custom[15], 255);
        return 0x102030;
    });
    EXPECT_EQ(ShowColor(owner, 0, true), 0x102030);
}

// Black, white, and two that hold more than the 24 bits of a colour that is shown.
TEST_F(Dialogs, ColoursThatThePlayerLeavesAloneGoBackAsTheyWere) {
    ASSERT_TRUE(SaveSetting(AppEXEName(), "cDialog", "RegColors", "0,-2147483643,16777471,-2147483643"));
    desktop.colorAnswers.push_back([](Color initial, std::span<Color, 16> custom) -> std::optional<Color> {
        EXPECT_EQ((std::array{initial, custom[0], custom[1], custom[2]}), (std::array{0xFF, 0, 0xFFFFFF, 0xFF}));
        custom[3] = 77;
        return std::nullopt;
    });
    ShowColor(owner, 0x70000FF, true);
    EXPECT_TRUE(GetSetting(AppEXEName(), "cDialog", "RegColors", "").starts_with("0,-2147483643,16777471,77,16777215"));
}

TEST_F(Dialogs, FieldsThatAreMissingOrNoColoursAreWhite) {
    constexpr Color White = 0xFFFFFF;
    const struct {
        const char* stored;
        std::array<Color, 4> first;  // the rest is white
    } cases[] = {{"Key", {White, White, White, White}},
                 {"1,2", {1, 2, White, White}},
                 {"1.5,x,-2147483643,16777216", {2, White, WindowColor, 16777216}},
                 {"1,, 3 ,4", {1, White, 3, 4}},
                 {"5,6,7,8,16777215,16777215,16777215,16777215,16777215,16777215,16777215,16777215,16777215,16777215,"
                  "16777215,16777215,9,9",
                  {5, 6, 7, 8}}};
    for (const auto& c : cases) {
        ASSERT_TRUE(SaveSetting(AppEXEName(), "cDialog", "RegColors", c.stored));
        ShowColor(owner, 0, false);
        for (size_t i = 0; i < 16; ++i) EXPECT_EQ(CustomColors[i], i < 4 ? c.first[i] : White) << c.stored << " " << i;
    }
}

}  // namespace
