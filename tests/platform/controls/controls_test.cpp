// Controls, forms and menus without a screen: what is done to them, and what they answer, raise, tell their peers and
// become.
#include <cmath>

#include "platform/controls/cell_sheet.h"
#include "platform/controls/folder_lists.h"
#include "platform/controls/picture_box.h"
#include "platform/controls/scroll_bar.h"
#include "platform/controls/simple_controls.h"
#include "platform/drawing/raster.h"
#include "platform/headless/desktop.h"
#include "tests/support/temp_folder.h"
#include "tests/support/transcript.h"

void PrintTo(const WheelTurn& turn, std::ostream* out) { *out << turn.x << ' ' << turn.y; }

namespace {

// Tells of what it is told.
struct TellingPeer : Peer {
    TellingPeer(Transcript& heard, std::string owner) : transcript(heard), name(std::move(owner)) {}
    ~TellingPeer() override { transcript.Hear(name + " loses its peer"); }
    void Mirror(Aspect aspect) override {
        constexpr const char* Names[] = {"Geometry", "Visible", "Enabled", "Order",   "Text",    "Look",
                                         "Content",  "Range",   "Value",   "Entries", "Outline", "State"};
        transcript.Hear(name + "'s " + Names[int(aspect)]);
    }
    void Repaint(const Region& damage) override { transcript.Hear(name + "'s " + testing::PrintToString(damage)); }
    Transcript& transcript;
    std::string name;
};

struct TellingDesktop : HeadlessDesktop {
    explicit TellingDesktop(Transcript& heard) : transcript(heard) {}
    std::unique_ptr<Peer> CreatePeer(Control& control) override {
        return std::make_unique<TellingPeer>(transcript, control.Name());
    }
    std::unique_ptr<Peer> CreateMenuPeer(Form&, MenuItem& item) override {
        return std::make_unique<TellingPeer>(transcript, item.Name());
    }
    Transcript& transcript;
};

class Controls : public testing::Test {
protected:
    Controls() {
        form.OnLoad = transcript.Told("load"), form.OnActivate = transcript.Told("activate"),
        form.OnResize = transcript.Told("resize");
        form.OnUnload = transcript.Told("unload"), form.OnMenu = transcript.Told("some menu");
        form.Place(0, 0, 300 * 15, 200 * 15);
        transcript.log = &desktop.log;
        transcript.state = [this] {
            State all;
            for (Control* control : controls) Describe(*control, all), All(*control, all);
            return all;
        };
    }
    // What lies between a control and the screen.
    static void All(Control& c, State& all) {
        Form* const form = c.OwnerForm();
        all[c.Name() + " stands"] = testing::PrintToString(
            std::tuple(c.PixelRect(), AcceptsInput(c), DensityOf(c).PerUnit(), form ? form->Name() : ""));
        if (form == &c)
            all[c.Name() + " is"] =
                testing::PrintToString(std::tuple(form->IsLoaded(), form->IsShown(), form->IsUnloaded(),
                                                  form->ScaleWidth(), form->ScaleHeight(), form->Depth()));
        for (Control* child : c.Children()) All(*child, all);
    }
    Control& Any() { return *transcript.Draw(controls); }
    bool Chance() { return transcript.Draw<bool>({false, true}); }
    bool Mostly() { return transcript.Draw<bool>({true, true, true, false}); }
    double Number() {
        return transcript.Draw<double>({-8, 0, 0, 7, 7.5, 22, 37, 300.5, 1500, 1503, 1515, -0.1, INFINITY, NAN});
    }
    int16_t Button() { return transcript.Draw<int16_t>({1, 2, 4}); }

    Transcript transcript;
    TellingDesktop desktop{transcript};
    Form form{"form", "Test", ScaleMode::Pixels, FormBorder::Sizable};
    PictureBox sheet{"sheet", ScaleMode::Twips}, box{"box"};
    Label label{"label"};
    Image image{"image"};
    CommandButton ok{"ok", "&OK"};
    ScrollBar bar{"bar", Orientation::Vertical};
    std::vector<Control*> controls{&form};
};

}  // namespace

TEST_F(Controls, StandWhereTheyWerePutAndPeersHearWhatChanged) {
    controls = {&form, &sheet, &box, &label};
    for (Control* c : {static_cast<Control*>(&sheet), static_cast<Control*>(&label)}) form.AddChild(*c);
    sheet.AddChild(box);
    Label::LabelLook sized, plain;
    sized.autoSize = true, sized.alignment = Alignment::Right;
    const auto place = [&](Control& c) {
        const double left = Number(), width = Number();
        return c.Place(left, 22, width, 37);
    };
    const auto look = [&] {
        sized.alignment = transcript.Draw<Alignment>({Alignment::Left, Alignment::Right});
        label.SetLook(Chance() ? sized : plain);
    };
    DO(DensityOf(sheet).PerUnit());
    transcript.Walk(
        260, Steps() | STEP(Any().SetLeft(Number())) | STEP(Any().SetTop(Number())) | STEP(Any().SetWidth(Number())) |
                 STEP(Any().SetHeight(Number())) | STEP(place(Any())) | STEP(box.Move(Number(), 5)) |
                 STEP(Any().ZOrder()) | STEP(SetPixel(box.Image, 1, 2, 0), box.Image.Refresh()) |
                 STEP(Any().SetVisible(Mostly())) | STEP(Any().SetEnabled(Mostly())) |
                 STEP((Chance() ? form : static_cast<Control&>(sheet)).AddChild(box)) |
                 STEP((Chance() ? sheet : box).AddChild(label)) | STEP(Any().RemoveChild(label)) | STEP(look()) |
                 STEP(label.SetCaption(Chance() ? "1.0.0" : "longer")) | STEP(form.Show()) | STEP(form.Hide()) |
                 STEP(Any().SetPointer(Chance() ? MousePointer::Hourglass : MousePointer::Hand)) |
                 STEP(sheet.SetBackColor(Chance() ? Rgb(1, 2, 3) : WindowColor)) |
                 STEP(sheet.SetBorder(Chance() ? Border::Thin : Border::None)) |
                 STEP(Any().SetAccessibleName(Chance() ? "a" : "b")) | STEP(void(desktop.scale = Chance() ? 1.25 : 1)));
    // Only another size in pixels clears the image.
    for (const double size : {300.0, 303.0, 315.0})
        DO(box.SetWidth(size), SetPixel(box.Image, 1, 1, 0)), DO(box.SetHeight(size), SetPixel(box.Image, 1, 1, 0));
    for (Control* dying : {new Control("container"), static_cast<Control*>(new Label("child"))}) {
        controls.push_back(dying);
        DO(form.AddChild(*dying), dying->AddChild(image), sheet.SetVisible(true));
        controls.pop_back();
        DO(delete dying, image.Parent() == nullptr && image.OwnerForm() == nullptr);
    }
    DO(form.Unload());
    DO(form.AddChild(image));
}

TEST_F(Controls, HearThePlayerWhereTheyAreShownAndEnabled) {
    controls = {&form, &box, &image, &bar};
    for (Control* c : std::vector<Control*>{&box, &ok, &label, &bar}) form.AddChild(*c);
    box.AddChild(image);
    const auto heard = [&] {
        box.DeliverMouseMove(3, 2, 3, 4), box.DeliverClick(), box.DeliverDblClick(), box.DeliverWheel({0, 2});
        image.DeliverMouseDown(2, 3, 7, 8), ok.DeliverClick(), label.DeliverClick(), bar.DeliverWheel({1, 2});
        form.DeliverMouseDown(4, 0, 9, 9), form.DeliverKeyDown(Key::PageUp);
    };
    DO(form.Show(), heard(), box.DeliverMouseDown(1, 0, 3, 4), box.DeliverMouseUp(1, 0, 3, 4));
    box.MouseDown = transcript.Told("down"), box.MouseMove = transcript.Told("move"),
    box.MouseUp = transcript.Told("up");
    box.DblClick = transcript.Told("double"), box.Wheel = transcript.Told("wheel"), bar.Wheel = transcript.Told("bar");
    // A handler may be bound anew while it runs.
    box.Click = [&] { box.Click = transcript.Told("later"), transcript.Hear("first"); };
    image.MouseDown = transcript.Told("image"), form.MouseDown = transcript.Told("form"),
    ok.Click = transcript.Told("button");
    label.Click = transcript.Told("label"), bar.Change = transcript.Told("change"),
    bar.Scroll = transcript.Told("scroll");
    form.KeyDown = [&](Key key) { transcript.Told("key")(int(key)); };
    const auto value = [&] {
        return transcript.Draw<double>({-1390, -700, -1, 0, 0.5, 1, 1.5, 30, 42.5, 100.5, 32767.4, 4e4, NAN});
    };
    const auto slide = [&] {
        const int to = transcript.Draw<int>({-90, 0, 20, 20, 70, 99999});
        bar.DeliverValue(to, Chance());
    };
    const Steps mouse = Steps() | STEP(heard()) | STEP(box.DeliverMouseDown(Button(), 4, 1, 2)) |
                        STEP(box.DeliverMouseUp(Button(), 1, 5, 6)) | STEP(Any().SetEnabled(Mostly())) |
                        STEP(Any().SetVisible(Mostly())) | STEP(form.Hide()) | STEP(form.Show()) |
                        STEP(box.DragAsWindow());
    transcript.Walk(120, mouse);
    controls = {&bar};
    for (Control* c : std::vector<Control*>{&form, &box}) c->SetEnabled(true), c->SetVisible(true);
    transcript.Walk(250, Steps() | STEP(bar.SetMin(value())) | STEP(bar.SetMax(value())) | STEP(bar.SetMax(value())) |
                             STEP(bar.SetValue(value())) | STEP(bar.SetValue(value())) |
                             STEP(bar.SetSmallChange(value())) | STEP(bar.SetLargeChange(value())) | STEP(slide()) |
                             STEP(slide()) | STEP(bar.SetEnabled(Mostly()), bar.SetVisible(true)) | STEP(form.Show()));
    // A handler that sets Value for ever comes back, and the bar works as before.
    int changes = 0;
    bar.Change = [&] { ++changes, bar.SetValue(bar.Value() == 0 ? 1 : 0); };
    for (int i = 0; i < 2; ++i) DO(bar.SetMin(0) && bar.SetMax(100) && bar.SetValue(10), changes);
}

TEST_F(Controls, FormsAndMenusKeepTheirOrder) {
    MenuItem& game = form.Menus.Add("game", "Jogo");
    form.Menus.SetForm(&form);
    MenuItem& item = game.Add("item", "Sair", {.key = 'S', .control = true});
    MenuItem& deep = game.Add("sub", "Novo").Add("deep", "Kids A");
    for (MenuItem* any : {&game, &item, &game.Add("line", "-"), &deep})
        any->Click = transcript.Told(any->Name() + " chosen");
    const auto choose = [&] {
        game.DeliverClick(), item.DeliverClick(), game.Items().back().DeliverClick(), deep.DeliverClick();
    };
    const auto marks = [&](MenuItem& any) {
        return testing::PrintToString(std::tuple(any.Enabled(), any.Checkable(), any.Checked()));
    };
    const auto size = [&] { return Size{transcript.Draw<int>({320, 321}), 240}; };
    const auto state = [&] {
        return transcript.Draw<WindowState>({WindowState::Normal, WindowState::Minimized, WindowState::Maximized});
    };
    desktop.frame = {10, 40, 20, 30};
    DO(choose());
    const Steps steps = Steps() | STEP(choose()) | STEP(item.SetEnabled(Mostly()), marks(item)) |
                        STEP(item.SetChecked(Chance()), marks(item)) | STEP(form.CenterOnScreen()) |
                        STEP(form.DeliverFrame()) | STEP(form.DeliverResize(size())) | STEP(form.SetState(state())) |
                        STEP(form.DeliverState(state())) | STEP(form.Show()) | STEP(form.Hide()) | STEP(DoEvents()) |
                        STEP(form.SetBackColor(Chance() ? 1 : 2)) | STEP(form.SetBackdrop(nullptr)) |
                        STEP(form.SetRegion({})) | STEP(form.DeliverFile("a.pzl"), form.DeliverFile("a.png")) |
                        STEP(form.SetEnabled(Mostly())) | STEP(form.DeliverActivate()) | STEP(form.DragAsWindow());
    DO(form.DeliverFrame());
    transcript.Walk(90, steps);
    form.FileDropped = [&](const std::string& path) { transcript.Hear("dropped " + path); };
    DO(form.DeliverFile("a.pzl"));
    form.TakesFile = [](const std::string& path) { return path.ends_with(".pzl"); };
    transcript.Walk(90, steps);
    for (const bool enabled : {false, true})
        DO(form.SetEnabled(enabled), form.Hide(), form.DeliverClose(), form.Show(), form.DeliverClose());
    transcript.Walk(30, steps);
    Form scaled("scaled", "", ScaleMode::Twips, FormBorder::None);
    controls = {&scaled};
    DO(scaled.Unload(), scaled.Place(15, 30, 1500, 750), scaled.DeliverFrame());
    DO(scaled.CenterOnScreen());

    // A modal form ends after every routine of its own, wherever it was closed.
    Form outer("outer", "", ScaleMode::Twips, FormBorder::FixedDialog),
        inner("inner", "", ScaleMode::Twips, FormBorder::FixedDialog);
    controls = {&outer, &inner};
    outer.AddChild(ok);
    const auto show = [](Form& dialog) { dialog.Show(Modality::Modal); };
    inner.OnActivate = [&] { DO(desktop.PostInput([&] { inner.Hide(); }), DoEvents()); };
    DO(show(inner));
    inner.OnActivate = [&] {
        DO(desktop.Post([&] { DO(outer.Unload()); }), desktop.Post([&] { DO(inner.DeliverClose()); }));
    };
    ok.Click = [&] { DO(show(inner)), DO(DoEvents(), outer.Unload(), ok.DeliverClick()); };
    DO(desktop.PostInput([&] { ok.DeliverClick(); }), show(outer));
    DO(show(outer), show(inner), desktop.modalTrouble);
}

TEST_F(Controls, ListsFollowTheFolders) {
    const TempFolder temp;
    for (const char* name : {"one/beta", "one/Alpha", "one/.hidden", "one-more"}) temp.MakeFolder(name);
    temp.Write("one/file.txt", "no folder");
    transcript.changing = {temp.Path(), "TEMP"};
    desktop.volumes = {{"/", "root"}, {temp.Path(), "temp"}, {temp / "one//", "one"}};
    DriveListBox drives("drives");
    DirListBox folders("folders");
    drives.Change = transcript.Told("drive"), folders.Change = transcript.Told("folder");
    form.AddChild(drives), form.AddChild(folders);
    transcript.state = [&] {
        State all{{"drives", std::to_string(drives.Current()) + ' ' + drives.Drive()}, {"folders", folders.Path()}};
        for (const auto& [path, name, depth, open] : folders.Entries())
            if (folders.Path() != "/")  // what stands in the root is the machine's own
                all["folders"] += (open ? " [" : " ") + std::to_string(depth) + ' ' + name + ": " + path;
        return all;
    };
    const auto path = [&] {
        const char* const below = transcript.Draw<const char*>(
            {"one", "one/beta", "one//beta/.././", "one-more", "one/..", "missing", "one/file.txt", "one-more/beta"});
        return temp / below;
    };
    const auto place = [&] { return transcript.Draw<size_t>({0, 1, 2, 3, 4, 9}); };
    const Steps steps = Steps() | STEP(folders.SetPath(path())) | STEP(folders.SetPath(path())) |
                        STEP(folders.DeliverOpen(place())) | STEP(drives.SetDrive(path())) |
                        STEP(drives.SetDrive(path())) | STEP(drives.DeliverChoice(place())) |
                        STEP(drives.Follow(path())) | STEP(drives.Follow(path())) | STEP(drives.SetDrive("/")) |
                        STEP(folders.SetEnabled(Mostly())) | STEP(drives.SetEnabled(Mostly()));
    DO(form.Show(), folders.SetPath("/") && folders.Entries()[0].label == "/" && folders.Entries()[1].depth == 1);
    DO(folders.SetPath(temp.Path()));
    transcript.Walk(60, steps);
    desktop.volumes.pop_back();
    DO(drives.AddPlace({temp / "one-more/", "Imagens", Volume::Kind::GamePictures}));
    transcript.Walk(60, steps);
}

TEST_F(Controls, CellsHearThePressesOnThem) {
    CellSheet cells("cells");
    controls = {&cells};
    // Two cells side by side; figures 10 pixels inside their frames.
    const auto fill = [&] {
        for (int k = 1; k <= 2; ++k) {
            auto& [frame, figure] = cells.Load();
            frame.left = (k - 1) * 1500.0, frame.width = frame.height = 1500;
            figure.left = frame.left + 150, figure.top = 150, figure.width = figure.height = 1200;
            frame.visible = figure.visible = true;
        }
    };
    const auto some = [&] { return transcript.Draw<float>({5, 50, 50, 50, 95, 150, 150, 500}); };
    const auto mouse = [&](auto deliver) {
        const auto button = transcript.Draw<int16_t>({1, 1, 2});
        (cells.*deliver)(button, 4, some(), 50);
    };
    const auto press = [&] { mouse(&CellSheet::DeliverMouseDown); };
    const auto move = [&] { mouse(&CellSheet::DeliverMouseMove); };
    const auto release = [&] { mouse(&CellSheet::DeliverMouseUp); };
    const Steps steps = Steps() | STEP(press()) | STEP(press(), release()) | STEP(release()) | STEP(release()) |
                        STEP(move()) | STEP(cells.DeliverDblClick(some(), 50)) | STEP(cells.SetEnabled(Mostly())) |
                        STEP(cells.DeliverWheel({1, 2}));
    DO(cells.Change(0).figure.toolTip = cells.Change(0).frame.toolTip = "of all");
    DO(fill());
    transcript.Walk(10, steps);
    cells.FigureClick = transcript.Told("figure"), cells.FrameClick = transcript.Told("frame");
    cells.FigureDblClick = transcript.Told("double"), cells.FigureMouseDown = transcript.Told("down");
    cells.FigureMouseMove = transcript.Told("move"), cells.FigureMouseUp = transcript.Told("up");
    cells.Wheel = transcript.Told("wheel");
    transcript.Walk(200, steps);
    cells.FigureMouseUp = [&](auto...) { cells.UnloadAll(), cells.SetBackColor(7); };
    DO(cells.SetEnabled(true), cells.DeliverMouseUp(3, 0, 0, 0), press(), cells.DeliverMouseUp(3, 0, 50, 50));
    DO(fill());
    transcript.Walk(30, steps);

    // Figures lie in front of frames, lower numbers in front of higher ones.
    std::mt19937 random;
    const auto upTo = [&random](int n) { return int(random() % unsigned(n)); };
    for (int step = 0; step < 600; ++step) {
        if (step % 100 == 0) cells.UnloadAll();
        const int k = step % 3 ? (cells.Load(), cells.UpperBound()) : upTo(cells.UpperBound() + 1);
        auto& [frame, figure] = cells.Change(k);
        frame.left = upTo(6000) - 500, frame.top = upTo(9000) - 500;
        frame.height = upTo(8) ? upTo(2500) : upTo(200000);
        figure.left = frame.left + upTo(3000) - 1500, figure.top = upTo(8) ? frame.top + 90 : upTo(9000);
        frame.visible = k && upTo(4), figure.visible = k && upTo(4);
        frame.toolTip = "1 " + std::to_string(k), figure.toolTip = "2 " + std::to_string(k);
        const double x = upTo(460) - 30 + upTo(4) / 4.0, y = upTo(700) - 50;
        const Rect area{int(x), int(y), upTo(300), upTo(400) - 50};
        const CellSheet::Hit hit = cells.HitCell(x, y);
        transcript.Write(testing::PrintToString(
            std::tuple(cells.CellsIn(area), hit.index, int(hit.part), hit.x, hit.y, cells.ToolTipAt(x, y))));
    }
}
