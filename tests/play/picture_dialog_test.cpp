// The picture dialog while it scans: whatever the player does, in whichever yield.
#include <gtest/gtest.h>

#include "browser/frm_thumbs.h"
#include "platform/system/files.h"
#include "tests/support/game_fixture.h"
#include "tests/support/yielding_desktop.h"

using namespace PuzzleModule;

namespace {

enum Act { Cancel, CloseBox, Ok, DoubleClick, Drop, LastWay = Drop, Other, Empty };

class PictureDialog : public testing::TestWithParam<int> {
protected:
    PictureDialog() {
        for (const char* folder : {"Imagens/v", "nova/n"})
            for (char number = '1'; number <= (*folder == 'I' ? '8' : '2'); ++number)
                desktop.Add(play.folder.Write(std::string(folder) + number + ".bmp", "x"), {400, 300}, 0.1);
        play.folder.MakeFolder("vazia");
    }
    frmThumbs& Dialog() { return dynamic_cast<frmThumbs&>(*desktop.shown.back()); }
    bool Stands() const { return !desktop.shown.empty() && desktop.shown.back()->Name() == "frmThumbs"; }

    // Does it in the dialog. True if a picture is chosen by it.
    bool Do(int act) {
        frmThumbs& dialog = Dialog();
        ThumbsCtl& thumbs = dialog.ThumbsCtl1;
        const bool chosen = act == Drop || ((act == Ok || act == DoubleClick) && thumbs.picInterior.UpperBound() >= 1);
        if (act == Ok && chosen) thumbs.imgFigura_Click(1), dialog.Command1.DeliverClick();
        if (act == DoubleClick && chosen) thumbs.imgFigura_DblClick(1);
        if (act == Drop) dialog.DeliverFile(play.folder / "nova/n1.bmp");
        if (act == Cancel) dialog.cmdVoltar.DeliverClick();
        if (act == CloseBox || (act <= LastWay && act != Cancel && !chosen)) dialog.DeliverClose();
        EXPECT_TRUE(act <= LastWay || dialog.Dir1.SetPath(play.folder / (act == Other ? "nova" : "vazia")));
        return chosen;
    }

    YieldingDesktop* own = new YieldingDesktop({640, 480});
    GameFixture play{std::unique_ptr<HeadlessDesktop>(own)};
    YieldingDesktop& desktop = *own;
};
INSTANTIATE_TEST_SUITE_P(At, PictureDialog, testing::Range(0, int(Empty) + 1));

}  // namespace

// Ways out end the dialog and the scan, and only a chosen picture becomes a game; another folder is listed alone, and
// the label of a long scan does not come back.
TEST_P(PictureDialog, AnyYieldOfAScanTakesWhatThePlayerDoes) {
    const int act = GetParam();
    bool acted = true;
    for (int turn = 1; acted; ++turn) {
        ASSERT_LT(turn, 80);
        SCOPED_TRACE("yield " + std::to_string(turn));
        acted = GameRunning = false;
        bool chosen = false;
        int decodes = 0;
        std::string listed;
        const int start = desktop.yields;
        desktop.onYield = [&](int yield) {
            if (yield - start != turn || !Stands()) return;
            acted = true;
            chosen = Do(act);
            decodes = desktop.decodes;
        };
        desktop.whenStanding = [&](Form&) {
            ThumbsCtl& thumbs = Dialog().ThumbsCtl1;
            for (int16_t k = 1; k <= thumbs.ListCount(); ++k) listed += FileTitle(*thumbs.ItemData(k))[0];
            EXPECT_EQ(thumbs.picInterior.UpperBound(), thumbs.ListCount());
            EXPECT_FALSE(Dialog().Label1.Visible() || Dialog().ucFirefoxWait1.IsPlaying());
            Dialog().Unload();
        };
        play.Key("mnuNewGame(3)");
        EXPECT_EQ(desktop.modalTrouble, "");
        EXPECT_TRUE(!ThumbsOpen && desktop.boxes.empty() && GameRunning == chosen);
        EXPECT_TRUE(!acted || act > LastWay || desktop.decodes == decodes);
        // Before the dialog has gone to its folder, another one is not kept.
        const bool all = !acted || (act > LastWay && turn == 1);
        EXPECT_EQ(listed, all ? "vvvvvvvv" : act == Other ? "nn" : "");
    }
}
