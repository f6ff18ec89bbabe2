// Places in twips and pixels, the image of a picture box, mouse events, menus.
#include <gmock/gmock.h>

#include "platform/controls/picture_box.h"
#include "platform/controls/simple_controls.h"
#include "platform/headless/desktop.h"

namespace {

using testing::ElementsAre;

class Controls : public testing::Test {
protected:
    // A box whose events are written down as "down 1", "up 1", "click", "dbl".
    void Listen(PictureBox& box) {
        const auto mouse = [this](std::string what) {
            return [this, what](int16_t button, int16_t, float, float) {
                events.push_back(what + " " + std::to_string(button));
            };
        };
        box.MouseDown = mouse("down");
        box.MouseMove = mouse("move");
        box.MouseUp = mouse("up");
        box.Click = [this] { events.push_back("click"); };
        box.DblClick = [this] { events.push_back("dbl"); };
    }

    HeadlessDesktop desktop;
    Form form{"frmTest", "Test", ScaleMode::Pixels, FormBorder::Sizable};
    std::vector<std::string> events;
};

TEST_F(Controls, NeighboursInTwipsTouchInPixels) {
    PictureBox sheet("sheet", ScaleMode::Twips);
    PictureBox a("a"), b("b");
    sheet.AddChild(a);
    sheet.AddChild(b);
    for (int left = -40; left < 40; ++left)
        for (int width = 0; width < 50; ++width) {
            a.Place(left, left, width, width);
            b.Place(left + width, left + width, 100, 100);
            ASSERT_EQ(a.PixelRect().Right(), b.PixelRect().x) << left << " + " << width;
            ASSERT_EQ(a.PixelRect().Bottom(), b.PixelRect().y) << left << " + " << width;
        }
    a.Place(-8, 7, 7390, 3400);
    EXPECT_EQ(a.PixelRect(), (Rect{-1, 0, 493, 227}));
}

TEST_F(Controls, OnlyANewSizeInPixelsClearsTheImage) {
    PictureBox sheet("sheet", ScaleMode::Twips);
    PictureBox box("box");
    sheet.AddChild(box);
    box.Place(0, 0, 1500, 750);
    EXPECT_EQ(box.Image.Bounds(), (Rect{0, 0, 100, 50}));
    *box.Image.Draw({0, 0, 1, 1}) = BlackPixel;
    for (double left = 0; left < 40; ++left) box.Move(left, -left);
    box.SetWidth(1503);
    EXPECT_FALSE(box.Image.IsUniform());
    box.SetWidth(1515);
    EXPECT_TRUE(box.Image.IsUniform());
    EXPECT_EQ(box.Image.Width(), 101);
}

TEST_F(Controls, ChildrenLeaveTheirContainerWhenEitherDies) {
    PictureBox survivor("survivor");
    {
        PictureBox container("container");
        container.AddChild(survivor);
        {
            Label label("label");
            container.AddChild(label);
            survivor.ZOrder();
            EXPECT_THAT(container.Children(), ElementsAre(&label, &survivor));
        }
        EXPECT_THAT(container.Children(), ElementsAre(&survivor));
    }
    EXPECT_EQ(survivor.Parent(), nullptr);
    EXPECT_EQ(survivor.OwnerForm(), nullptr);
}

TEST_F(Controls, WhatIsDisabledOrHiddenAnywhereAboveHearsNothing) {
    PictureBox panel("panel"), box("box");
    form.AddChild(panel);
    panel.AddChild(box);
    Listen(box);
    form.Show();
    const auto heard = [&] {
        events.clear();
        box.DeliverMouseDown(1, 0, 0, 0);
        box.DeliverMouseMove(0, 0, 0, 0);
        box.DeliverClick();
        box.DeliverDblClick();
        return events.size();
    };
    for (Control* control : std::vector<Control*>{&box, &panel, &form}) {
        EXPECT_EQ(heard(), 4u);
        control->SetEnabled(false);
        EXPECT_EQ(heard(), 0u) << control->Name() << " disabled";
        control->SetEnabled(true);
        control->SetVisible(false);
        EXPECT_EQ(heard(), 0u) << control->Name() << " hidden";
        control->SetVisible(true);
    }
    form.Hide();
    EXPECT_EQ(heard(), 0u);
}

TEST_F(Controls, TheReleaseOfATakenPressReachesAHiddenBoxOnce) {
    PictureBox box("box");
    form.AddChild(box);
    Listen(box);
    form.Show();
    box.DeliverMouseDown(1, 0, 5, 5);
    box.DeliverMouseDown(2, 0, 5, 5);
    form.Hide();
    box.DeliverMouseMove(3, 0, 6, 6);
    box.DeliverMouseUp(1, 0, 6, 6);
    box.DeliverMouseUp(1, 0, 6, 6);
    box.DeliverMouseUp(4, 0, 6, 6);
    EXPECT_THAT(events, ElementsAre("down 1", "down 2", "up 1"));
    box.SetEnabled(false);
    box.DeliverMouseUp(2, 0, 6, 6);
    EXPECT_EQ(events.size(), 3u) << "a disabled box hears not even that";
}

}  // namespace
