// The picture dialog, opened by the main window's menu command.
#include <gtest/gtest.h>

#include <algorithm>

#include "browser/frm_thumbs.h"
#include "play/frm_main.h"
#include "tests/support/temp_folder.h"
#include "tests/support/yielding_desktop.h"

using namespace PuzzleModule;

namespace {

class FrmThumbsTest : public testing::Test {
protected:
    FrmThumbsTest() {
        desktop.programPath = home / "fento-lira-master";
        home.Write("Puzzle.skn", "*{}");
        main.emplace();
        main->Load();
    }
    void AddPictures(const std::string& under, int count) {
        for (int i = 1; i <= count; ++i)
            home.Write(under + "/" + std::to_string(i) + ".bmp", PatternBmp({400, 300}, i));
    }
    // The dialog once it stands, with its scan done; `use` runs there. It is closed afterwards.
    void Open(std::function<void(frmThumbs&)> use) {
        desktop.whenStanding = [use](Form& form) {
            auto& dialog = dynamic_cast<frmThumbs&>(form);
            use(dialog);
            dialog.Unload();
        };
        main->mnuNewGame_Click(3);
        EXPECT_EQ(desktop.modalTrouble, "");
    }
    frmThumbs& Dialog() { return *dynamic_cast<frmThumbs*>(desktop.shown.back()); }
    bool Stands() const { return !desktop.shown.empty() && desktop.shown.back()->Name() == "frmThumbs"; }

    TempFolder home;
    YieldingDesktop desktop;
    std::optional<frmMain> main;
};

}  // namespace

TEST_F(FrmThumbsTest, OpensOnTheFolderOfPicturesHoweverItsNameIsWritten) {
    for (const char* name : {"Imagens", "imagens", "IMAGENS", "Bilder"}) {
        AddPictures(name, 4);
        Open([&](frmThumbs& dialog) {
            const int expected = name == std::string("Bilder") ? 0 : 4;
            EXPECT_EQ(dialog.ThumbsCtl1.ListCount(), expected) << name;
            EXPECT_TRUE(ThumbsOpen && !dialog.Label1.Visible() && !dialog.ucFirefoxWait1.IsPlaying());
            dialog.Form_Activate();  // once more, on the folder where it stands
            EXPECT_EQ(dialog.ThumbsCtl1.ListCount(), expected) << name;
        });
        EXPECT_FALSE(ThumbsOpen);
        std::filesystem::remove_all(home / name);
    }
    EXPECT_EQ(std::ranges::count(desktop.skinned, "frmThumbs"), 8);  // at each activation
}

TEST_F(FrmThumbsTest, OkWantsASelectionInTheFolderShown) {
    AddPictures("Imagens", 2);
    AddPictures("Outra", 2);
    Open([&](frmThumbs& dialog) {
        dialog.Command1.DeliverClick();
        dialog.ThumbsCtl1.imgFigura_Click(1);
        EXPECT_TRUE(dialog.Dir1.SetPath(home / "Outra"));
        dialog.Command1.DeliverClick();
        EXPECT_TRUE(dialog.IsShown());
    });
    EXPECT_EQ(desktop.boxes.size(), 2u);
    for (const auto& box : desktop.boxes) {
        EXPECT_EQ(box.text, "Primeiro selecione uma imagemna lista");
        EXPECT_EQ(box.style, OKOnly);
        EXPECT_EQ(box.title, "Fento-Lira Master");
    }
    EXPECT_FALSE(GameRunning);
}

TEST_F(FrmThumbsTest, TheListOfDrivesFollowsTheFoldersAndARefusedOneCostsNoFolder) {
    AddPictures("Imagens", 1);
    home.MakeFolder("Imagens/praia");
    desktop.volumes = {{"/", "root"}, {home.Path(), "home"}, {home / "gone", "no disc"}};
    Open([&](frmThumbs& dialog) {
        DriveListBox& drives = dialog.Drive1;
        ASSERT_EQ(drives.Volumes().size(), 4u);
        EXPECT_EQ(drives.Volumes()[3].label, "Imagens do jogo");
        EXPECT_EQ(drives.Current(), 3);
        const auto choose = [&](size_t entry, int shown, const std::string& folder) {
            drives.DeliverChoice(entry);
            EXPECT_EQ(drives.Current(), shown) << entry;
            EXPECT_EQ(dialog.Dir1.Path(), folder) << entry;
        };
        EXPECT_TRUE(dialog.Dir1.SetPath(home / "Imagens/praia"));
        EXPECT_EQ(drives.Current(), 1);
        EXPECT_EQ(dialog.Dir1.Entries()[0].path, home.Path());
        choose(2, 1, home / "Imagens/praia");
        choose(1, 1, home / "Imagens/praia");
        choose(0, 0, "/");
        EXPECT_TRUE(dialog.Dir1.SetPath(home / "Imagens/praia"));
        EXPECT_EQ(drives.Current(), 1);
        choose(3, 3, home / "Imagens");
        EXPECT_EQ(dialog.ThumbsCtl1.ListCount(), 1);
        choose(1, 1, home.Path());
    });
}

// Whatever the player does, in whichever yield of the opening scan: the dialog ends, the scan
// stops without another picture, and only a chosen picture becomes a game.
TEST_F(FrmThumbsTest, AnyYieldOfAScanCanEndTheDialog) {
    AddPictures("Imagens", 4);
    AddPictures("Outra", 1);
    enum Act { Cancel, CloseBox, Ok, DoubleClick, Drop };
    for (const Act act : {Cancel, CloseBox, Ok, DoubleClick, Drop}) {
        int acted = 1, games = 0;
        for (int turn = 1; acted; ++turn) {
            ASSERT_LT(turn, 60);
            acted = 0;
            GameRunning = false;
            bool chosen = false;
            int decodesThen = 0;
            const int start = desktop.yields;
            desktop.onYield = [&](int yield) {
                if (yield - start != turn || !Stands()) return;
                acted = turn;
                ThumbsCtl& thumbs = Dialog().ThumbsCtl1;
                chosen = act == Drop || (act >= Ok && thumbs.picInterior.UpperBound() >= 1);
                const int decodes = desktop.decodes;
                if (chosen && act != Drop) thumbs.imgFigura_Click(1);
                if (act == Cancel)
                    Dialog().cmdVoltar.DeliverClick();
                else if (act == CloseBox || !chosen)
                    Dialog().DeliverClose();
                else if (act == Ok)
                    Dialog().Command1.DeliverClick();
                else if (act == DoubleClick)
                    thumbs.imgFigura_DblClick(1);
                else
                    Dialog().DeliverFile(home / "Outra/1.bmp");
                decodesThen = desktop.decodes;
                EXPECT_EQ(decodesThen - decodes, chosen ? 1 : 0);  // the game's own
            };
            desktop.whenStanding = [](Form& form) { form.Unload(); };
            main->mnuNewGame_Click(3);
            desktop.onYield = nullptr;
            EXPECT_EQ(desktop.modalTrouble, "");
            EXPECT_FALSE(ThumbsOpen);
            if (!acted) break;
            EXPECT_EQ(desktop.decodes, decodesThen) << "act " << act << " in yield " << turn;
            EXPECT_EQ(GameRunning, chosen) << "act " << act << " in yield " << turn;
            games += chosen;
        }
        EXPECT_EQ(games > 0, act >= Ok);
        EXPECT_TRUE(desktop.boxes.empty());
    }
}

TEST_F(FrmThumbsTest, FolderChangedWhileTheListIsEmptiedIsListedOnce) {
    AddPictures("Imagens", 12);
    AddPictures("Outra", 2);
    AddPictures("Terceira", 3);
    Open([&](frmThumbs& dialog) {
        ASSERT_TRUE(dialog.ThumbsCtl1.scrThumbs.SetValue(1500));  // Clear brings it back, and yields
        bool changed = false;
        desktop.onYield = [&](int) {
            if (changed || dialog.ThumbsCtl1.ListCount() > 0) return;
            changed = true;
            EXPECT_TRUE(dialog.Dir1.SetPath(home / "Terceira"));
        };
        EXPECT_TRUE(dialog.Dir1.SetPath(home / "Outra"));
        desktop.onYield = nullptr;
        EXPECT_TRUE(changed);
        EXPECT_EQ(dialog.ThumbsCtl1.ListCount(), 3);
    });
}
