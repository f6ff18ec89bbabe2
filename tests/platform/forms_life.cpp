// The life of forms: shown, activated, hidden and unloaded, in any of their own routines.
#include <gmock/gmock.h>

#include "platform/headless/headless_desktop.h"
#include "platform/picture_box.h"
#include "platform/simple_controls.h"

namespace {

using testing::ElementsAre;

struct Dialog : Form {
    explicit Dialog(std::string name) : Form(std::move(name), "", ScaleMode::Twip, FormBorder::FixedDialog) {
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

TEST_F(FormLife, PeersExistContainersFirstWhenLoadRuns) {
    struct Watching : HeadlessDesktop {
        std::unique_ptr<Peer> CreatePeer(Control& control) override {
            names.push_back(control.Name());
            return HeadlessDesktop::CreatePeer(control);
        }
        std::unique_ptr<Peer> CreateMenuPeer(Form& form, MenuItem& item) override {
            names.push_back(item.Name());
            return HeadlessDesktop::CreateMenuPeer(form, item);
        }
        std::vector<std::string> names;
    } watching;
    Form form("form", "", ScaleMode::Pixel, FormBorder::Sizable);
    PictureBox panel("panel"), inner("inner"), late("late");
    Label front("front");
    panel.AddChild(inner);
    form.AddChild(panel);
    form.AddChild(front);
    form.Menus.Add("file", "File").Add("exit", "Exit");
    form.OnLoad = [&] {
        EXPECT_NE(form.GetPeer(), nullptr);
        watching.names.push_back("load");
    };
    form.Load();
    form.Load();
    form.Show();
    inner.AddChild(late);
    EXPECT_THAT(watching.names, ElementsAre("form", "panel", "inner", "front", "file", "exit", "load", "late"));
    inner.RemoveChild(late);
    EXPECT_EQ(late.GetPeer(), nullptr);
}

TEST_F(FormLife, ActivationComesFromTheMessageLoopAndFirst) {
    Dialog a("a"), b("b");
    a.OnActivate = Note("a");
    b.OnActivate = Note("b");
    desktop.PostInput(Note("input"));
    a.Show();
    b.Show();
    EXPECT_TRUE(events.empty());
    DoEvents();
    EXPECT_THAT(events, ElementsAre("a", "b", "input"));
    b.Show();
    MsgBox("?");
    DoEvents();
    EXPECT_EQ(events.size(), 3u) << "active already; a box is no form";
    b.Hide();
    DoEvents();
    EXPECT_THAT(events, ElementsAre("a", "b", "input", "a"));
    b.Show();
    b.Hide();
    events.clear();
    DoEvents();
    EXPECT_THAT(events, ElementsAre("a")) << "the activation of a hidden form is gone";
}

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

TEST_F(FormLife, EventsBehindTheEndOfAModalFormAreLeftForTheLoopBelow) {
    Dialog dialog("dialog");
    desktop.PostInput([&] { dialog.DeliverClose(); });
    desktop.PostInput(Note("later"));
    dialog.Show(Modality::Modal);
    EXPECT_TRUE(events.empty());
    DoEvents();
    EXPECT_THAT(events, ElementsAre("later"));
}

TEST_F(FormLife, AModalFormThatNothingCanCloseIsEndedAndNamed) {
    Dialog dialog("dialog");
    dialog.OnUnload = Note("unload");
    dialog.Show(Modality::Modal);
    EXPECT_THAT(events, ElementsAre("unload"));
    EXPECT_THAT(desktop.modalTrouble, testing::HasSubstr("dialog"));
}

TEST_F(FormLife, AFormUnloadedWhileItLoadsIsNeverShown) {
    Dialog dialog("dialog");
    dialog.OnLoad = [&] { dialog.Unload(); };
    dialog.Show(Modality::Modal);
    EXPECT_TRUE(desktop.log.empty());
}

TEST_F(FormLife, TheEndOfTheProgramInAHandlerLeavesACleanStack) {
    Dialog dialog("dialog");
    dialog.OnUnload = [] { End(); };
    desktop.PostInput([&] { dialog.DeliverClose(); });
    EXPECT_THROW(dialog.Show(Modality::Modal), HeadlessDesktop::ProgramEnded);
    EXPECT_EQ(dialog.Depth(), 0);
}

TEST_F(FormLife, MaximisingGrantsTheScreenLessFrameAndMenuToSizableFormsOnly) {
    Form form("form", "", ScaleMode::Pixel, FormBorder::Sizable);
    form.SetState(WindowState::Maximized);
    form.OnResize = [&] { events.push_back(std::to_string(int(form.ScaleHeight()))); };
    form.Show();
    EXPECT_THAT(events, ElementsAre("718"));
    form.Show();
    EXPECT_EQ(events.size(), 1u) << "the same size again";
    form.DeliverState(WindowState::Normal);
    form.DeliverResize({600, 400});
    form.SetState(WindowState::Maximized);
    EXPECT_THAT(events, ElementsAre("718", "400", "718"));
    EXPECT_EQ(form.ScaleWidth(), 1366);
    Dialog dialog("dialog");
    dialog.Place(0, 0, 1500, 1500);
    dialog.Show();
    dialog.SetState(WindowState::Maximized);
    EXPECT_EQ(dialog.Width(), 1500);
}

}  // namespace
