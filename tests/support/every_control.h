// A window with a control of every kind but the lists of folders, and what its program does with them.
#pragma once
#include <cmath>

#include "platform/controls/cell_sheet.h"
#include "platform/controls/picture_box.h"
#include "platform/controls/scroll_bar.h"
#include "platform/controls/simple_controls.h"
#include "platform/drawing/raster.h"
#include "tests/support/transcript.h"

struct EveryControl {
    EveryControl() {
        Add(form, box, -20, -10, 320, 150), Add(form, edged, 300, 5, 60, 40), Add(edged, inner, 5, 4, 20, 12);
        Add(form, image, 310, 50, 52, 34), Add(form, label, 300, 90, 80, 20), Add(form, link, 300, 110, 80, 20);
        Add(form, push, 300, 135, 80, 24), Add(form, frame, 10, 150, 100, 60), Add(frame, panel, 150, 150, 900, 300);
        Add(form, bar, 380, 0, 20, 300), Add(form, sheet, 120, 150, 170, 60);
        form.Place(1500, 1500, 6000, 4500);
        edged.SetBorder(Border::Single), image.SetBorder(Border::Thin), link.SetCaption("Elo");
        link.SetLook({{12, true, true}, 0, Rgb(255, 255, 0), false, Alignment::Center, false, false});
        link.SetTabIndex(0), bar.SetTabIndex(2), push.SetTabIndex(3), box.SetAccessibleName("Tabuleiro");
    }
    // All handlers tell what they hear.
    void Listen() {
        HEAR(form.OnLoad, form.OnActivate, form.OnResize, form.OnUnload, form.OnMenu, form.MouseDown, form.KeyDown);
        HEAR(box.MouseDown, box.MouseMove, box.MouseUp, box.Click, box.DblClick, box.Wheel, image.MouseDown);
        HEAR(edged.MouseDown, edged.MouseMove, edged.MouseUp, panel.MouseDown, panel.MouseMove, panel.MouseUp);
        HEAR(link.Click, push.Click, bar.Change, bar.Scroll, sheet.FigureClick, sheet.FrameClick, sheet.FigureDblClick);
        HEAR(sheet.FigureMouseDown, sheet.FigureMouseMove, sheet.FigureMouseUp, sheet.Wheel);
        HEAR(menu.Click, save.Click, line.Click, help.Click, deep.Click);
    }
    static void Add(Control& parent, Control& child, double x, double y, double width, double height) {
        parent.AddChild(child);
        child.Place(x, y, width, height);
    }

    // One of all, and what it may get.
    Control& Any() { return *transcript.Draw(controls); }
    bool Chance() { return transcript.Draw<bool>({false, true}); }
    bool Mostly() { return transcript.Draw<bool>({true, true, true, true, true, false}); }
    double Number() {
        return transcript.Draw<double>({-8, 0, 0, 7, 7.25, 22, 37, 150.5, 300, 303, 307.5, -0.1, INFINITY, NAN});
    }
    double Value() {
        return transcript.Draw<double>({-1390, -700, -1, 0, 0.5, 1, 1.5, 30, 42.5, 100.5, 32767.4, 4e4, NAN});
    }
    WindowState AnyState() {
        return transcript.Draw<WindowState>({WindowState::Normal, WindowState::Minimized, WindowState::Maximized});
    }
    Label::LabelLook Look() {
        const auto alignment = transcript.Draw<Alignment>({Alignment::Left, Alignment::Right, Alignment::Center});
        const bool one = Chance(), other = Chance();
        return {{one ? 8.25 : 12, other, !other}, 0, Rgb(1, 2, 3), one, alignment, other, false};
    }
    bool Put(Control& control) {
        const double left = Number(), width = Number();
        return control.Place(left, 22, width, 37);
    }
    // What a program does with the properties of its controls.
    Steps Properties() {
        return Steps() | STEP(Any().SetLeft(Number())) | STEP(Any().SetTop(Number())) | STEP(Any().SetWidth(Number())) |
               STEP(Any().SetHeight(Number())) | STEP(Put(Any())) | STEP(Any().Move(Number(), 5)) |
               STEP(Any().ZOrder()) | STEP(Any().SetVisible(Mostly())) | STEP(Any().SetEnabled(Mostly())) |
               STEP(Any().SetPointer(Chance() ? MousePointer::Hourglass : MousePointer::Hand)) |
               STEP(Any().SetAccessibleName(Chance() ? "a" : "b")) |
               STEP(SetPixel(box.Image, 1, 2, 0), box.Image.Refresh()) |
               STEP(edged.SetBackColor(Chance() ? Rgb(1, 2, 3) : WindowColor)) |
               STEP(edged.SetBorder(Chance() ? Border::Thin : Border::None)) |
               STEP(image.SetBorder(Chance() ? Border::Thin : Border::None)) | STEP(image.SetPicture(nullptr)) |
               STEP(link.SetLook(Look())) | STEP(label.SetCaption(Chance() ? "Isto" : "Aquilo")) |
               STEP(bar.SetMin(Value())) | STEP(bar.SetMax(Value())) | STEP(bar.SetMax(Value())) |
               STEP(bar.SetValue(Value())) | STEP(bar.SetValue(Value())) | STEP(bar.SetSmallChange(Value())) |
               STEP(bar.SetLargeChange(Value())) | STEP(sheet.SetBackColor(Chance() ? 1 : 2)) |
               STEP(form.SetBackColor(Chance() ? 1 : 2)) | STEP(form.SetBackdrop(nullptr)) | STEP(form.SetRegion({})) |
               STEP(help.SetEnabled(Mostly())) | STEP(save.SetChecked(Chance())) | STEP(menu.SetEnabled(Mostly()));
    }

    Transcript transcript;
    Form form{"form", "Teste", ScaleMode::Pixels, FormBorder::Sizable};
    PictureBox box{"box"}, edged{"edged"}, inner{"inner"}, panel{"panel"};
    Image image{"image"};
    Label label{"label"}, link{"link"};
    CommandButton push{"push", "&OK"};
    Frame frame{"frame", ScaleMode::Twips};
    ScrollBar bar{"bar", Orientation::Vertical};
    CellSheet sheet{"sheet"};
    std::vector<Control*> controls{&form,  &box,  &edged, &inner, &panel, &image,
                                   &label, &link, &push,  &frame, &bar,   &sheet};
    MenuItem& menu = form.Menus.Add("menu", "Jogo");
    MenuItem& save = menu.Add("save", "Salvar", {'S', 0, true});
    MenuItem& line = menu.Add("line", "-");
    MenuItem& help = menu.Add("help", "Ajuda", {0, 3, false});
    MenuItem& deep = menu.Add("more", "Mais").Add("deep", "Fundo", {'Z', 0, false});
};
