// What a player can do, with the main window in front and in dialogs.
#include "browser/frm_thumbs.h"
#include "play/rules.h"
#include "shell/form1.h"
#include "shell/frm_about.h"
#include "tests/rough/soak_player.h"

using namespace PuzzleModule;

namespace {

using Events = std::vector<Soak::Event>;

Events EventsOnMain() {
    Events events{{14, "press", [](Soak& s) { s.play.Press(s.AnySpot(), s.Chance(80)   ? 1
                                                                        : s.Chance(50) ? 2
                                                                                       : 4); }},
                  {14, "move", [](Soak& s) { s.play.Move(s.AnySpot()), s.play.Move(s.AnySpot()); }},
                  {10, "release", [](Soak& s) { s.play.Release(s.AnySpot(), s.Chance(80) ? 1 : 2); }},
                  {2, "double click", [](Soak& s) { s.main.picScreen.DeliverDblClick(); }},
                  {8, "turn",
                   [](Soak& s) {
                       s.play.Click({float(s.main.LastX), float(s.main.LastY)}, 2);
                   }},
                  // Leads to a win now and then, which random hands would never reach.
                  {1, "solve", [](Soak& s) { GameRunning && !s.main.Busy() && PickedPiece < 0 && s.play.Win(); }},
                  {4, "scroll",
                   [](Soak& s) {
                       ScrollBar& bar = s.Chance(50) ? s.main.HScroll1 : s.main.VScroll1;
                       bar.DeliverValue(bar.Min() + (bar.Max() - bar.Min()) * s.Any(101) / 100, s.Chance(30));
                   }},
                  {2, "wheel", [](Soak& s) { s.play.Wheel((s.Any(9) - 4) / 2.0, (s.Any(9) - 4) / 2.0); }},
                  {1, "panel", [](Soak& s) { s.main.picStatus.DeliverMouseDown(1, 0, 3, 3); }},
                  {1, "dropped game", [](Soak& s) { s.main.DeliverFile(s.AnyOf(s.saves)); }},
                  {0.2, "close box", [](Soak& s) { s.main.DeliverClose(); }}};
    const std::pair<const char*, double> commands[] = {
        {"mnuNewGame(0)", 0.6}, {"mnuNewGame(1)", 0.6}, {"mnuNewGame(3)", 0.6}, {"mnuNewGame(5)", 1.2},
        {"mnuShuffle", 1},      {"mnuHints", 1},        {"mnuSaveGame", 2},     {"mnuLoadGame", 3},
        {"MnDesistir", 1},      {"mnuSounds", 1},       {"mnuStatus", 1},       {"mnuBackground", 1},
        {"mnuHowToPlay", 1},    {"mnuAbout", 1},        {"mnuExit", 0.2}};
    for (const auto& [name, weight] : commands)
        for (const bool byKey : {false, true})
            events.push_back({byKey ? weight / 5 : weight, std::string(name) + (byKey ? " by its key" : ""),
                              [name, byKey](Soak& s) { s.Command(name, byKey); }});
    return events;
}

template <typename Dialog>
std::function<void(Soak&)> On(void (*act)(Dialog&, Soak&)) {
    return [act](Soak& s) {
        if (s.desktop.modals.empty()) return;
        if (auto* dialog = dynamic_cast<Dialog*>(s.desktop.modals.back()); dialog && dialog->IsShown()) act(*dialog, s);
    };
}

// Boxes have no window: nothing but these three reaches the program while one is open.
const Events Always{{2, "tick", [](Soak& s) { s.desktop.Advance(s.Any(40) / 10.0); }},
                    {1, "resize",
                     [](Soak& s) {
                         s.main.DeliverResize({100 + s.Any(1200), 60 + s.Any(900)});
                     }},
                    {1, "state", [](Soak& s) { s.main.DeliverState(WindowState(s.Any(3))); }}};

Events With(Events events, const Events& more) {
    events.insert(events.end(), more.begin(), more.end());
    return events;
}

}  // namespace

const std::vector<Soak::Event> Soak::OnMain = With(EventsOnMain(), Always);

const std::vector<Soak::Event> Soak::InDialogs =
    With({{1, "its close box", On<Form>([](Form& d, Soak&) { d.DeliverClose(); })},
          {2, "OK", On<frmThumbs>([](frmThumbs& d, Soak&) { d.Command1.DeliverClick(); })},
          {0.6, "back", On<frmThumbs>([](frmThumbs& d, Soak&) { d.cmdVoltar.DeliverClick(); })},
          {2, "another folder", On<frmThumbs>([](frmThumbs& d, Soak& s) { (void)d.Dir1.SetPath(s.AnyOf(s.folders)); })},
          {2, "a folder of the list", On<frmThumbs>([](frmThumbs& d, Soak& s) {
               d.Dir1.DeliverOpen(size_t(s.Any(int(d.Dir1.Entries().size()) + 1)));
           })},
          {2, "another volume", On<frmThumbs>([](frmThumbs& d, Soak& s) { d.Drive1.DeliverChoice(size_t(s.Any(3))); })},
          {2, "bar", On<frmThumbs>([](frmThumbs& d, Soak& s) {
               d.ThumbsCtl1.scrThumbs.DeliverValue(s.Any(40000) - 2000, s.Chance(50));
           })},
          {2, "wheel", On<frmThumbs>([](frmThumbs& d, Soak& s) {
               d.ThumbsCtl1.picInterior.DeliverWheel({0, (s.Any(7) - 3) / 2.0});
           })},
          {1, "activation", On<frmThumbs>([](frmThumbs& d, Soak&) { d.DeliverActivate(); })},
          {4, "thumbnail", On<frmThumbs>([](frmThumbs& d, Soak& s) {
               if (const int n = d.ThumbsCtl1.ListCount()) d.ThumbsCtl1.imgFigura_Click(int16_t(1 + s.Any(n)));
           })},
          {2, "double click", On<frmThumbs>([](frmThumbs& d, Soak& s) {
               if (const int n = d.ThumbsCtl1.ListCount()) d.ThumbsCtl1.imgFigura_DblClick(int16_t(1 + s.Any(n)));
           })},
          {1, "dropped picture", On<frmThumbs>([](frmThumbs& d, Soak& s) { d.DeliverFile(s.folders[0] + "/1.jpg"); })},
          {1, "link", On<FrmAbout>([](FrmAbout& d, Soak&) { d.Label11.DeliverClick(); })},
          {1, "About's OK", On<FrmAbout>([](FrmAbout& d, Soak&) { d.Command1.DeliverClick(); })},
          {1, "help's picture", On<Form1>([](Form1& d, Soak&) { d.Picture1.DeliverMouseDown(1, 0, 5, 5); })}},
         Always);
