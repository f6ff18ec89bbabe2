// The list of thumbnails without a folder: whatever the player does with it, every property, and all that a window
// shows of it.
#include "browser/thumbs_ctl.h"

#include <set>

#include "core/game_state.h"
#include "platform/headless/desktop.h"
#include "platform/system/files.h"
#include "platform/system/numbers.h"
#include "tests/support/picture_files.h"
#include "tests/support/temp_folder.h"
#include "tests/support/transcript.h"

namespace {

class Thumbs : public testing::Test {
protected:
    using Spot = std::pair<float, float>;

    Thumbs() {
        PuzzleModule::ResetState();
        PuzzleModule::TileSize = 80;
        form.AddChild(thumbs);
        form.Show();
        transcript.log = &desktop.log;
        transcript.state = [this] {
            State now;
            Describe(form, now);
            return now[""] = thumbs.ItemIndex() + " of " + std::to_string(thumbs.ListCount()), now;
        };
        DO(thumbs.Place(0, 0, 7650, 3420), thumbs.Clear());
    }
    // A file of 3000 bytes; without a size it is no picture.
    void Add(Size natural) {
        const std::string path = folder.Write(std::to_string(++added) + ".bmp", std::string(3000, 'x'));
        if (natural != Size{}) desktop.pictures[path] = {natural, [](Size size) { return PatternSurface(size); }};
        thumbs.AddItem(path);
    }
    void Press(Spot at) { sheet.DeliverMouseDown(1, 0, at.first, at.second); }
    void Release(Spot at) { sheet.DeliverMouseUp(1, 0, at.first, at.second); }
    void Click(Spot at) { Press(at), Release(at); }
    void Double(Spot at) { sheet.DeliverDblClick(at.first, at.second), Release(at); }
    // An event of the list is told with whole numbers and the file's name.
    auto Told(const std::string& what) {
        return [tell = transcript.Told(what)](auto&... told) { tell(Short(told)...); };
    }
    static std::string Short(const std::string& path) { return FileTitle(path); }
    static int Short(double value) { return CInt32(value).value_or(-1); }
    // The stored properties.
    std::string Written() {
        PropertyBag written;
        thumbs.UserControl_WriteProperties(written);
        std::ostringstream out;
        for (const auto& [name, value] : values)
            std::visit([&](const auto& now) { out << name << ' ' << now << ' '; }, *written.ReadProperty(name, value));
        return out.str();
    }

    TempFolder folder;
    HeadlessDesktop desktop;
    Form form{"form", "", ScaleMode::Twips, FormBorder::FixedDialog};
    Label label{"Label1"};
    ThumbsCtl thumbs{"ThumbsCtl1", label};
    CellSheet& sheet = thumbs.picInterior;
    ScrollBar& bar = thumbs.scrThumbs;
    int added = 0;
    const std::map<std::string, PropertyBag::Value> values{{"BackColor", 0x112233}, {"ForeColor", 0x445566},
                                                           {"Path", "/pictures"},   {"Columns", 3},
                                                           {"ColumnType", 1},       {"ImageToolTip", false}};
    Transcript transcript;
};

}  // namespace

TEST_F(Thumbs, FollowTheHand) {
    thumbs.ImageClick = Told("click "), thumbs.ImageDblClick = Told("double ");
    const auto size = [&] {
        return transcript.Draw<Size>({{800, 600}, {600, 800}, {1050, 1000}, {512, 512}, {120, 40}, {2000, 1}, {}});
    };
    const auto spot = [&] {
        return transcript.Draw<Spot>(
            {{1, 1}, {3, 15}, {60, 60}, {118, 70}, {60, 135}, {180, 60}, {187, 190}, {60, 700}});
    };
    const auto turn = [&] { return transcript.Draw<double>({-4.5, -1, -0.3, 0, 0.6, 1, 3}); };
    const auto value = [&] { return transcript.Draw<int>({0, 40, bar.Max() / 2, bar.Max()}); };
    const auto width = [&] { return transcript.Draw<int>({2100, 3900, 4000, 7650, 9000}); };
    Steps steps = Steps() | STEP(Add(size())) | STEP(Add(size())) | STEP(Add(size())) | STEP(Click(spot())) |
                  STEP(Click(spot())) | STEP(Double(spot())) | STEP(bar.DeliverWheel({0, turn()})) |
                  STEP(sheet.DeliverWheel({0, turn()})) |
                  STEP(sheet.DeliverWheel({0, turn(), WheelTurn::Unit::Pixels})) |
                  STEP(bar.DeliverValue(value(), true)) | STEP(bar.DeliverValue(value(), false));
    transcript.Walk(60, steps);
    steps = std::move(steps) | STEP(thumbs.Place(0, 0, width(), 3000)) | STEP(thumbs.Clear());
    transcript.Walk(140, steps);
}

TEST_F(Thumbs, LookAsTheyDid) {
    PropertyBag bag, wrong;
    for (const auto& [name, value] : values) {
        bag.WriteProperty(name, value, {});
        wrong.WriteProperty(name, value.index() == 2 ? PropertyBag::Value(1) : "no number", {});
    }
    thumbs.PropertyChanged = [this](const std::string& property) { transcript.Hear(property + " is to be stored"); };
    DO(thumbs.UserControl_ReadProperties(bag), Written());
    for (int i = 0; i < 5; ++i) Add({100 + 100 * i, 300});
    thumbs.ImageMouseDown = Told("down "), thumbs.ImageMouseMove = Told("move "), thumbs.ImageMouseUp = Told("up ");
    DO(sheet.DeliverMouseMove(0, 2, 180, 53), sheet.DeliverMouseDown(1, 3, 180, 53),
       sheet.DeliverMouseUp(1, 4, 181, 55));
    DO(thumbs.imgFigura_Click(2), thumbs.lblFigura_Click(9), thumbs.lblFigura_Click(3), thumbs.imgFigura_DblClick(9));
    DO(thumbs.SetBackColor(7), thumbs.SetForeColor(8), thumbs.SetColumnType(0), thumbs.SetColumns(2));
    DO(thumbs.SetPath("/p"), thumbs.SetImageToolTip(true), Written());
    DO(thumbs.SetImageToolTip(false), std::pair(thumbs.BackColor(), thumbs.ForeColor()));
    desktop.scale = 1.5;
    for (int k = 6; k <= 90; ++k) Add({8, 6});
    DO(thumbs.SetImageToolTip(true));
    DO(thumbs.UserControl_ReadProperties(wrong), thumbs.Clear());
    ScrollBar other("other", Orientation::Horizontal);
    form.AddChild(other);
    for (int32_t length : {-5, 31999, 32000, 32767, 32768}) {
        DO(cPicScroll().SetUpScrollBars(length % 2 ? &other : nullptr, bar, length, 9, length - 1, length + 1, 8, 7));
        DO(ThumbsCtl::SetBarRange(other, length, int16_t(length % 7), 40), length);
    }
    for (const char* name :
         {"foto.JpG", "a.BMP", "b.GIF", ".jpg", "foto.jpeg", "foto.png", "jpg", "bmp.txt", "d.jpg/x"})
        folder.Write("scan/" + std::string(name), "");
    std::string scanned = folder / "scan";
    PuzzleModule::ThumbsOpen = true;
    thumbs.ScanPath(scanned), thumbs.ScanPath(scanned);  // adds, and has its separator already
    std::multiset<std::string> items;
    for (int16_t k = 1; k <= thumbs.ListCount(); ++k) items.insert(FileTitle(*thumbs.ItemData(k)));
    DO(thumbs.Clear(), std::pair(items, scanned == folder / "scan/"));
}
