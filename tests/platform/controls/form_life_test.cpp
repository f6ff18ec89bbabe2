// The life of forms: shown, activated, hidden and unloaded, in any of their own routines; and what may
// run in a yield.
#include <gmock/gmock.h>

#include "platform/controls/picture_box.h"
#include "platform/controls/simple_controls.h"
#include "platform/headless/desktop.h"

namespace {

using testing::ElementsAre;

struct Dialog : Form {
    explicit Dialog(std::string name) : Form(std::move(name), "", ScaleMode::Twips, FormBorder::FixedDialog) {
        AddChild(ok);
    }
    CommandButton ok{"ok", "&OK"};
};

class FormLife : public testing::Test {
protected:
    Handler Note(std::string what) {
        return [this, what] { events.push_back(what); };
    }
    HeadlessDesktop desktop;
    std::vector<std::string> events;
};

TEST_F(FormLife, UnloadInsideAHandlerEndsTheModalFormAfterTheHandler) {
    Dialog dialog("dialog");
    dialog.OnUnload = Note("unload");
    dialog.ok.Click = [&] {
        dialog.Unload();
        dialog.Unload();
        EXPECT_FALSE(dialog.IsShown());
        EXPECT_GT(dialog.Depth(), 0);
        EXPECT_NE(dialog.ok.GetPeer(), nullptr) << "the handler still stands in it";
        dialog.ok.DeliverClick();
        DoEvents();
        events.push_back("end of handler");
    };
    desktop.PostInput([&] { dialog.ok.DeliverClick(); });
    dialog.Show(Modality::Modal);
    EXPECT_THAT(events, ElementsAre("unload", "end of handler"));
    EXPECT_EQ(dialog.ok.GetPeer(), nullptr);
    EXPECT_EQ(desktop.modalTrouble, "");
    dialog.Show(Modality::Modal);
    EXPECT_FALSE(dialog.IsShown());
}

TEST_F(FormLife, HidingInANestedYieldLetsTheOuterRoutineFinishFirst) {
    Dialog dialog("dialog");
    dialog.OnActivate = [&] {
        desktop.PostInput([&] { dialog.ok.DeliverClick(); });
        DoEvents();
        events.push_back("activate ends");
    };
    dialog.ok.Click = [&] {
        events.push_back("hidden");
        dialog.Hide();
    };
    dialog.Show(Modality::Modal);
    events.push_back("show returns");
    EXPECT_THAT(events, ElementsAre("hidden", "activate ends", "show returns"));
    dialog.OnActivate = [&] { dialog.Hide(); };
    dialog.Show(Modality::Modal);
    EXPECT_THAT(desktop.log, testing::Contains("modal dialog").Times(2));
    EXPECT_EQ(desktop.modalTrouble, "");
}

TEST_F(FormLife, AModalFormInsideAModalFormEndsFirstEvenIfTheOuterIsClosedMeanwhile) {
    Dialog outer("outer");
    outer.ok.Click = [&] {
        Dialog inner("inner");
        desktop.Post([&] { outer.Unload(); });
        desktop.Post([&] { events.push_back(inner.IsShown() ? "inner stays" : "inner gone"); });
        desktop.Post([&] { inner.DeliverClose(); });
        inner.Show(Modality::Modal);
        events.push_back("inner returned");
    };
    outer.OnUnload = Note("outer unloaded");
    desktop.PostInput([&] { outer.ok.DeliverClick(); });
    outer.Show(Modality::Modal);
    events.push_back("outer returned");
    EXPECT_THAT(events, ElementsAre("outer unloaded", "inner stays", "inner returned", "outer returned"));
    EXPECT_TRUE(desktop.shown.empty());
}

}  // namespace
