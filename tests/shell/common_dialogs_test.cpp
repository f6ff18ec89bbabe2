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
    FileDialogRec = {&owner, "Fento-Lira (*.pzl)|*.pzl|Tudo|*", "", 2, "", "/jogos", "Qual?", 5};
    desktop.filterAnswer = 1;
    desktop.fileAnswers = {"/jogos/a.pzl"};
    ShowSave();
    const FileDialogRequest& asked = desktop.fileRequests.at(0);
    EXPECT_TRUE(asked.save && asked.filterIndex == 2 && asked.flags == (OFN_READONLY | OFN_HIDEREADONLY));
    ASSERT_EQ(asked.filters.size(), 2u);
    EXPECT_EQ(asked.folder + asked.title + asked.filters[0].pattern + asked.filters[1].text, "/jogosQual?*.pzlTudo");
    EXPECT_EQ(FileDialogRec.FileName + FileDialogRec.FileTitle, "/jogos/a.pzla.pzl");
    EXPECT_EQ(FileDialogRec.FilterIndex, 1);
}

TEST(SavedGameExtension, OnlyTheFilesOwnNameDecides) {
    const struct {
        const char *path, *expected;
    } cases[] = {{"/g/jogo.txt", "/g/jogo.pzl"}, {"/g/a.b.c", "/g/a.b.pzl"},     {"/g/jogo", "/g/jogo.pzl"},
                 {"/g.d/jogo", "/g.d/jogo.pzl"}, {"/g/jogo.pzl", "/g/jogo.pzl"}, {"/g/jogo.", "/g/jogo.pzl"},
                 {"/g.d/a.b", "/g.d/a.pzl"},     {"/g/São.João", "/g/São.pzl"}};
    for (const auto& c : cases) EXPECT_EQ(WithSavedGameExtension(c.path), c.expected);
}

// On cancel too. What is missing or no number is white; what the player leaves alone goes back as it was, also where
// it holds more than the 24 bits that are shown.
TEST_F(Dialogs, CustomColoursLiveOnFromOneUseToTheNext) {
    const struct {
        std::string stored, first;  // the rest is white
    } cases[] = {
        {"Key", "16777215,16777215,16777215,"},
        {"1,2", "1,2,16777215,"},
        {"1.5,x,, 3 ", "2,16777215,16777215,3,"},
        {"0,-2147483643,16777471", "0,-2147483643,16777471,"},
        {"5,6,7,8,16777215,16777215,16777215,16777215,16777215,16777215,16777215,16777215,9,9,9,9,1,1", "5,6,7,8,"}};
    for (const auto& c : cases) {
        ASSERT_TRUE(SaveSetting(AppEXEName(), "cDialog", "RegColors", c.stored));
        for (const Color last : {77, 78}) {
            desktop.colorAnswers.push_back([&](Color initial, std::span<Color, 16> custom) -> std::optional<Color> {
                EXPECT_EQ(initial, 0xFF);
                EXPECT_EQ(custom[15], last == 77 ? CustomColors[15] : 77);
                EXPECT_TRUE(c.stored[0] != '0' || (custom[1] == 0xFFFFFF && custom[2] == 0xFF));
                custom[15] = last;
                return last == 77 ? std::nullopt : std::optional(0x102030);
            });
            EXPECT_EQ(ShowColor(owner, 0x70000FF, true), last == 77 ? -1 : 0x102030);
            const std::string now = GetSetting(AppEXEName(), "cDialog", "RegColors", "");
            EXPECT_TRUE(now.starts_with(c.first) && now.ends_with("," + std::to_string(last))) << now;
            EXPECT_EQ(std::ranges::count(now, ','), 15);
        }
    }
}

}  // namespace
