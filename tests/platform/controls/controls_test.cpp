// Controls, forms and menus without a screen: what is done to them, and what they answer, raise, tell their peers and
// become.
#include "platform/controls/folder_lists.h"
#include "platform/headless/desktop.h"
#include "tests/support/every_control.h"
#include "tests/support/temp_folder.h"

namespace {

// Tells of what it is told.
struct TellingPeer : Peer {
    TellingPeer(Transcript& heard, std::string owner) : transcript(heard), name(std::move(owner)) {}
    ~TellingPeer() override { transcript.Hear(name + " loses its peer"); }
    void Mirror(Aspect aspect) override { transcript.Hear(name + " mirrors " + std::to_string(int(aspect))); }
    void Repaint(const Region& damage) override { transcript.Hear(name + "'s " + testing::PrintToString(damage)); }
    Transcript& transcript;
    std::string name;
};

struct Stage : testing::Test, HeadlessDesktop {
    std::unique_ptr<Peer> CreatePeer(Control& control) override {
        return std::make_unique<TellingPeer>(*told, control.Name());
    }
    std::unique_ptr<Peer> CreateMenuPeer(Form&, MenuItem& item) override {
        return std::make_unique<TellingPeer>(*told, item.Name());
    }
    Transcript* told = nullptr;
    HeadlessDesktop& desktop = *this;
};

struct Controls : Stage, EveryControl {
    Controls() {
        told = &transcript;
        transcript.log = &log;
        transcript.state = [this] {
            State all;
            for (Form* each : forms) {
                Describe(*each, all);
                all[each->Name() + " is"] = testing::PrintToString(
                    std::tuple(each->IsLoaded(), each->IsShown(), each->IsUnloaded(), Digits{each->ScaleWidth()},
                               Digits{each->ScaleHeight()}, each->Depth()));
            }
            // What lies between a control and the screen.
            for (Control* c : controls)
                all[c->Name() + " stands"] =
                    testing::PrintToString(std::tuple(c->PixelRect(), AcceptsInput(*c), DensityOf(*c).PerUnit()));
            return all;
        };
    }
    using EveryControl::frame;
    using HeadlessDesktop::DoEvents;
    static void DoEvents() { ::DoEvents(); }

    int16_t Button() { return transcript.Draw<int16_t>({1, 1, 1, 2}); }
    float Spot() { return transcript.Draw<float>({5, 20, 20, 20, 45, 45, 50, 150}); }
    Key SomeKey() { return transcript.Draw<Key>({Key::Escape, Key::PageUp}); }
    // A sheet's mouse at its cells.
    void Mouse(void (CellSheet::*deliver)(int16_t, int16_t, float, float)) {
        const int16_t button = Button();
        (sheet.*deliver)(button, 4, Spot(), 20);
    }
    void ClickOn(float x) { sheet.DeliverMouseDown(1, 0, x, 20), sheet.DeliverMouseUp(1, 0, x, 20); }
    void Slide() {
        const int to = transcript.Draw<int>({-90, 0, 20, 20, 40, 99999});
        bar.DeliverValue(to, Chance());
    }
    // What the player and the desktop do.
    Steps Events() {
        return Steps() | STEP(box.DeliverMouseDown(Button(), 4, 1, 2)) | STEP(box.DeliverMouseUp(Button(), 1, 5, 6)) |
               STEP(box.DeliverMouseMove(3, 2, 3, 4)) | STEP(box.DeliverClick()) | STEP(box.DeliverDblClick()) |
               STEP(box.DeliverWheel({0, 2})) | STEP(box.DragAsWindow()) | STEP(image.DeliverMouseDown(2, 3, 7, 8)) |
               STEP(link.DeliverClick()) | STEP(push.DeliverClick()) | STEP(bar.DeliverWheel({1, 2})) | STEP(Slide()) |
               STEP(Slide()) | STEP(Mouse(&CellSheet::DeliverMouseDown)) | STEP(Mouse(&CellSheet::DeliverMouseUp)) |
               STEP(ClickOn(Spot())) | STEP(ClickOn(Spot())) | STEP(Mouse(&CellSheet::DeliverMouseMove)) |
               STEP(sheet.DeliverDblClick(Spot(), 20)) |
               STEP(sheet.DeliverDblClick(20, 20), sheet.DeliverMouseUp(1, 0, 20, 20)) |
               STEP(sheet.DeliverWheel({1, 2, WheelTurn::Unit::Pixels})) | STEP(form.DeliverMouseDown(4, 0, 9, 9)) |
               STEP(form.DeliverKeyDown(SomeKey())) | STEP(form.DeliverActivate()) | STEP(form.DragAsWindow()) |
               STEP(form.DeliverFrame()) | STEP(form.DeliverResize({transcript.Draw<int>({320, 321}), 240})) |
               STEP(form.DeliverState(AnyState())) | STEP(form.SetState(AnyState())) | STEP(form.CenterOnScreen()) |
               STEP(form.Show()) | STEP(form.Show()) | STEP(form.Hide()) | STEP(DoEvents()) |
               STEP(form.DeliverFile("a.pzl"), form.DeliverFile("a.png")) | STEP(menu.DeliverClick()) |
               STEP(save.DeliverClick(), line.DeliverClick()) | STEP(deep.DeliverClick());
    }

    std::vector<Form*> forms{&form};
};

}  // namespace

TEST_F(Controls, AnswerTellAndBecome) {
    for (const double left : {150.0, 600.0}) {
        auto& [cell, figure] = sheet.Load();
        cell.left = left, cell.width = cell.height = 450, cell.visible = figure.visible = true;
        figure.left = left + 90, figure.top = 150, figure.width = figure.height = 240;
    }
    desktop.frame = {10, 40, 20, 30};
    Steps steps = Properties();
    for (const auto& event : Events()) steps.push_back(event), steps.push_back(event);
    // Controls that change their container or the screen, and labels as large as their text.
    const auto fit = [this](Label::LabelLook look) { look.autoSize = true, link.SetLook(look); };
    steps = steps | STEP((Chance() ? edged : panel).AddChild(inner)) | STEP(Any().RemoveChild(inner)) |
            STEP((Chance() ? form : static_cast<Control&>(frame)).AddChild(link)) | STEP(fit(Look())) |
            STEP(void(scale = Chance() ? 1.25 : 1)) | STEP(sheet.Change(0).frame.toolTip = "of all");
    transcript.Walk(200, steps);
    Listen();
    HEAR(form.FileDropped, bar.Wheel);
    transcript.Walk(100, steps);
    form.TakesFile = [](const std::string& path) { return path.ends_with(".pzl"); };
    for (int round = 0; round < 40; ++round) {
        for (Control* each : controls) each->SetEnabled(true), each->SetVisible(true);
        DO(form.Show());
        transcript.Walk(50, steps);
    }
    for (Control* each : controls) each->SetEnabled(true), each->SetVisible(true);
    // A handler may be bound anew while it runs, empty its sheet, or set its bar's value for ever.
    box.Click = [&] { box.Click = transcript.Told("later"), transcript.Hear("first"); };
    DO(form.Show(), box.DeliverClick(), box.DeliverClick());
    for (const float to : {50.f, 20.f})
        DO(sheet.DeliverMouseUp(7, 0, 0, 0), sheet.DeliverMouseDown(1, 0, 20, 20), sheet.DeliverMouseUp(1, 0, to, 20));
    sheet.FigureMouseUp = [&](auto...) { sheet.UnloadAll(), sheet.SetBackColor(7); };
    DO(sheet.DeliverMouseUp(7, 0, 0, 0), ClickOn(20));
    int changes = 0;
    bar.Change = [&] { ++changes, bar.SetValue(bar.Value() == 0 ? 1 : 0); };
    for (int i = 0; i < 2; ++i) DO(bar.SetMin(0) && bar.SetMax(100) && bar.SetValue(10), changes);
    for (const bool enabled : {false, true})
        DO(form.SetEnabled(enabled), form.Hide(), form.DeliverClose(), form.Show(), form.DeliverClose());
    transcript.Walk(200, steps);
}

// A modal form ends after every routine of its own, wherever it was closed. Containers leave their children behind.
TEST_F(Controls, EndAfterTheirRoutines) {
    Form outer("outer", "", ScaleMode::Twips, FormBorder::FixedDialog),
        inside("inside", "", ScaleMode::Twips, FormBorder::None);
    forms = {&outer, &inside}, controls = {&outer, &inside, &push, &image};
    outer.AddChild(push);
    const auto show = [](Form& dialog) { dialog.Show(Modality::Modal); };
    inside.OnActivate = [&] { DO(PostInput([&] { inside.Hide(); }), DoEvents()); };
    DO(inside.Unload(), inside.Place(15, 30, 1500, 750), inside.DeliverFrame());
    DO(inside.CenterOnScreen(), show(inside));
    inside.OnActivate = [&] { DO(Post([&] { DO(outer.Unload()); }), Post([&] { DO(inside.DeliverClose()); })); };
    push.Click = [&] { DO(show(inside)), DO(DoEvents(), outer.Unload(), push.DeliverClick()); };
    DO(PostInput([&] { push.DeliverClick(); }), show(outer));
    DO(show(outer), show(inside), modalTrouble);

    forms = {&form};
    DO(form.Show());
    for (Control* dying : {new Control("container"), static_cast<Control*>(new Label("child"))}) {
        DO(form.AddChild(*dying), dying->AddChild(image), box.SetVisible(true));
        DO(delete dying, image.Parent() == nullptr && image.OwnerForm() == nullptr);
    }
    DO(form.Unload());
    DO(form.AddChild(image));
}

TEST_F(Controls, ListsFollowTheFolders) {
    const TempFolder temp;
    for (const char* name : {"one/beta", "one/Alpha", "one/.hidden", "one-more"}) temp.MakeFolder(name);
    temp.Write("one/file.txt", "no folder");
    transcript.changing = {temp.Path(), "TEMP"};
    volumes = {{temp.Path(), "temp"}, {"/", "root"}, {temp / "one//", "one"}};
    DriveListBox drives("drives");
    DirListBox folders("folders");
    HEAR(drives.Change, folders.Change);
    form.AddChild(drives), form.AddChild(folders);
    transcript.state = [&] {
        State all{{"drives", std::to_string(drives.Current()) + ' ' + drives.Drive()}, {"folders", folders.Path()}};
        for (const auto& [path, name, depth, open] : folders.Entries())
            if (folders.Path() != "/")  // what stands in the root is the machine's own
                all["folders"] += (open ? " [" : " ") + std::to_string(depth) + ' ' + name + ": " + path;
        return all;
    };
    const auto path = [&] {
        return temp / transcript.Draw<const char*>({"one", "one/beta", "one//beta/.././", "one-more", "one/..",
                                                    "missing", "one/file.txt", "one-more/beta"});
    };
    const auto place = [&] { return transcript.Draw<size_t>({0, 1, 2, 3, 4, 9}); };
    const Steps steps = Steps() | STEP(folders.SetPath(path())) | STEP(folders.DeliverOpen(place())) |
                        STEP(drives.SetDrive(path())) | STEP(drives.DeliverChoice(place())) |
                        STEP(drives.Follow(path())) | STEP(drives.SetDrive("/")) | STEP(folders.SetEnabled(Mostly())) |
                        STEP(drives.SetEnabled(Mostly()));
    DO(form.Show(), folders.SetPath("/") && folders.Entries()[0].label == "/" && folders.Entries()[1].depth == 1);
    DO(folders.SetPath(temp.Path()));
    transcript.Walk(90, steps);
    volumes.pop_back();
    DO(drives.AddPlace({temp / "one-more/", "Imagens", Volume::Kind::GamePictures}));
    transcript.Walk(90, steps);
}

// Figures lie in front of frames, lower numbers in front of higher ones.
TEST_F(Controls, CellsAreFoundUnderAnyPlace) {
    std::mt19937 random;
    const auto upTo = [&random](int n) { return int(random() % unsigned(n)); };
    for (int step = 0; step < 600; ++step) {
        if (step % 100 == 0) sheet.UnloadAll();
        const int k = step % 3 ? (sheet.Load(), sheet.UpperBound()) : upTo(sheet.UpperBound() + 1);
        auto& [cell, figure] = sheet.Change(k);
        cell.left = upTo(6000) - 500, cell.top = upTo(9000) - 500;
        cell.height = upTo(8) ? upTo(2500) : upTo(200000);
        figure.left = cell.left + upTo(3000) - 1500, figure.top = upTo(8) ? cell.top + 90 : upTo(9000);
        cell.visible = k && upTo(4), figure.visible = k && upTo(4);
        cell.toolTip = "1 " + std::to_string(k), figure.toolTip = "2 " + std::to_string(k);
        const double x = upTo(460) - 30 + upTo(4) / 4.0, y = upTo(700) - 50;
        const Rect area{int(x), int(y), upTo(300), upTo(400) - 50};
        const CellSheet::Hit hit = sheet.HitCell(x, y);
        transcript.Write(testing::PrintToString(
            std::tuple(sheet.CellsIn(area), hit.index, int(hit.part), hit.x, hit.y, sheet.ToolTipAt(x, y))));
    }
}
