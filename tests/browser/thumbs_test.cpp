// The list of thumbnails without a folder: a literal model under random play, and all that a window shows of it.
#include <cmath>
#include <random>
#include <set>
#include <sstream>

#include "browser/thumbs_ctl.h"
#include "platform/controls/form.h"
#include "tests/reference/literal_thumbs.h"
#include "tests/support/golden.h"
#include "tests/support/temp_folder.h"
#include "tests/support/window_dump.h"
#include "tests/support/yielding_desktop.h"

namespace {

class Thumbs : public testing::Test {
protected:
    Thumbs() {
        PuzzleModule::TileSize = 80;
        form.AddChild(thumbs);
        form.Show();
        thumbs.ImageClick = [this](int16_t& k, std::string&) { events += "click " + std::to_string(k) + " "; };
        thumbs.ImageDblClick = [this](int16_t& k, std::string&) { events += "double " + std::to_string(k) + " "; };
    }
    void Resize(int width, int height) {
        thumbs.Place(0, 0, width, height);
        model.Resize(width, height);
    }
    void Clear() { thumbs.Clear(), model.Clear(); }
    void Add(Size natural, bool decodes = true) {
        const std::string path = folder.Write(std::to_string(++model.items) + ".bmp", std::string(3000, 'x'));
        --model.items;
        desktop.pictures.erase(path);
        if (decodes) desktop.Add(path, natural);
        thumbs.AddItem(path);
        model.Add(natural, decodes);
    }
    void Compare() {
        const CellSheet& sheet = thumbs.picInterior;
        EXPECT_EQ(
            std::tuple(sheet.Width(), sheet.Height(), sheet.Top(), thumbs.scrThumbs.Value(), thumbs.scrThumbs.Max()),
            std::tuple(model.sheetWidth, model.sheetHeight, model.top, model.value, model.max));
        EXPECT_EQ(std::tuple(thumbs.ItemIndex(), thumbs.ListCount(), events),
                  std::tuple(std::to_string(model.selected), model.items, model.events));
        EXPECT_EQ(sheet.UpperBound(), int(model.cells.size()));
        for (int k = 1; k <= sheet.UpperBound(); ++k) {
            const auto& [frame, figure] = sheet.At(k);
            const LiteralThumbs::Cell cell{figure.left,   figure.top,      figure.width,
                                           figure.height, frame.backColor, figure.toolTip};
            EXPECT_TRUE(cell == model.cells[size_t(k) - 1]) << "thumbnail " << k;
        }
    }
    void Step() {
        const auto any = [this](int below) { return int(random() % unsigned(below)); };
        ScrollBar& bar = thumbs.scrThumbs;
        CellSheet& sheet = thumbs.picInterior;
        const float x = float(any(520)), y = float(any(int(model.sheetHeight / 15) + 20));
        const int act = any(12), to = any(std::max(model.max, 0) + 1), width = 1 + any(900), chance = any(8);
        const double turn = any(90) / 10 - 4.5;
        if (act == 0) return chance ? void() : Clear();
        if (act == 1) return chance ? void() : Resize(2000 + any(9000), 1000 + any(4000));
        if (act <= 3) return Add({width, chance < 3 ? width : 1 + any(900)}, any(5) > 0);
        if (act == 4)
            return chance < 4 ? bar.DeliverWheel({0, turn}) : sheet.DeliverWheel({0, turn}), model.Wheel(turn * 1790);
        if (act == 5) return sheet.DeliverWheel({0, turn, WheelTurn::Unit::Pixels}), model.Wheel(turn * 15);
        if (act <= 7) return bar.DeliverValue(to, chance < 4), model.Drag(to, chance < 4);
        const int there = model.CellAt(x, y);
        if (act > 8) return sheet.DeliverMouseDown(1, 0, x, y), sheet.DeliverMouseUp(1, 0, x, y), model.Click(there);
        sheet.DeliverDblClick(x, y), sheet.DeliverMouseUp(1, 0, x, y), model.DblClick(there);
    }
    // What is another than at the last note.
    void Note(const std::string& what) {
        State now;
        Describe(form, now);
        text +=
            "> " + what + ", " + std::to_string(std::exchange(desktop.yields, 0)) + " yields\n" + Changes(before, now);
        before = std::move(now);
    }

    const unsigned seed = std::random_device{}();
    std::mt19937 random{seed};
    TempFolder folder;
    YieldingDesktop desktop;
    Form form{"form", "", ScaleMode::Twips, FormBorder::FixedDialog};
    Label label{"Label1"};
    ThumbsCtl thumbs{"ThumbsCtl1", label};
    LiteralThumbs model;
    std::string events, text;
    State before;
};

}  // namespace

TEST_F(Thumbs, GoAsTheLiteralModelDoes) {
    SCOPED_TRACE("seed " + std::to_string(seed));
    Resize(7650, 3420);
    Clear();
    Add({640, 480});
    for (int step = 0; step < 3000 && !HasFailure(); ++step) {
        SCOPED_TRACE("step " + std::to_string(step));
        Step();
        Compare();
    }
}

// Every property and picture, as text.
TEST_F(Thumbs, LookAsTheyDid) {
    Note("made");
    thumbs.PropertyChanged = [this](const std::string& property) { text += property + " is to be stored\n"; };
    const std::map<std::string, PropertyBag::Value> values{{"BackColor", 0x112233}, {"ForeColor", 0x445566},
                                                           {"Path", "/pictures"},   {"Columns", 3},
                                                           {"ColumnType", 1},       {"ImageToolTip", false}};
    PropertyBag bag, wrong;
    for (const auto& [name, value] : values) {
        bag.WriteProperty(name, value, {});
        wrong.WriteProperty(name, value.index() == 2 ? PropertyBag::Value(1) : "no number", {});
    }
    thumbs.UserControl_ReadProperties(bag);
    const auto write = [&](const char* what) {
        PropertyBag written;
        thumbs.UserControl_WriteProperties(written);
        std::ostringstream out;
        out << thumbs.BackColor() << ' ' << thumbs.ForeColor() << '\n';
        for (const auto& [name, value] : values)
            std::visit([&](const auto& now) { out << name << ' ' << now << '\n'; }, *written.ReadProperty(name, value));
        text += out.str();
        Note(what);
    };
    write("properties read");
    Resize(7650, 3420);
    Add({}, false);
    for (const Size size : {Size{800, 600}, {600, 800}, {1050, 1000}, {512, 512}, {120, 40}, {2000, 1}}) Add(size);
    Add({}, false);
    Note("pictures added");
    thumbs.scrThumbs.DeliverValue(100, true);
    Note("dragged");
    thumbs.scrThumbs.DeliverValue(90, false);
    const auto tell = [this](const std::string& what) {
        return [this, what](int16_t& k, int16_t& button, int16_t& shift, float& x, float& y, std::string& path) {
            events += what + " " + std::to_string(k) + " " + std::to_string(button) + " " + std::to_string(shift) +
                      " " + std::to_string(std::lround(x)) + " " + std::to_string(std::lround(y)) + " " + path + "\n";
            path = "changed";  // a copy
        };
    };
    thumbs.ImageMouseDown = tell("down"), thumbs.ImageMouseMove = tell("move"), thumbs.ImageMouseUp = tell("up");
    const float x = 1835 / 15.0f + 10, y = 200 / 15.0f + 40;
    thumbs.picInterior.DeliverMouseMove(0, 2, x, y);
    thumbs.picInterior.DeliverMouseDown(1, 3, x, y), thumbs.picInterior.DeliverMouseUp(1, 4, x, y);
    thumbs.picInterior.DeliverDblClick(x, y), thumbs.picInterior.DeliverMouseUp(1, 0, x + 1, y);
    thumbs.imgFigura_Click(2), thumbs.lblFigura_Click(9), thumbs.lblFigura_Click(3), thumbs.imgFigura_DblClick(9);
    Note("clicked");
    thumbs.SetBackColor(7), thumbs.SetForeColor(8), thumbs.SetColumnType(0), thumbs.SetColumns(2), thumbs.SetPath("/p");
    thumbs.SetImageToolTip(true);
    write("properties set");
    thumbs.SetImageToolTip(false);
    Note("without tips");
    thumbs.SetImageToolTip(true);
    desktop.scale = 1.5;
    for (int k = 9; k <= 90; ++k) Add({8, 6});
    Note("a dense screen");
    thumbs.UserControl_ReadProperties(wrong);
    thumbs.Clear();
    Note("emptied");
    ScrollBar other("other", Orientation::Horizontal);
    form.AddChild(other);
    for (const int32_t length : {-5, 31999, 32000, 32767, 32768}) {
        int32_t longest = length;
        ThumbsCtl::SetBarRange(other, longest, int16_t(length % 7), 40);
        Note("range " + std::to_string(longest));
        cPicScroll().SetUpScrollBars(length % 2 ? &other : nullptr, thumbs.scrThumbs, length, 9, length - 1, length + 1,
                                     8, 7);
        Note("set up " + std::to_string(length));
    }
    Clear();
    for (const char* name :
         {"foto.JpG", "a.BMP", "b.GIF", ".jpg", "foto.jpeg", "foto.png", "jpg", "bmp.txt", "d.jpg/x"})
        folder.Write("scan/" + std::string(name), "");
    std::string scanned = folder / "scan";
    PuzzleModule::ThumbsOpen = true;
    thumbs.ScanPath(scanned), thumbs.ScanPath(scanned);  // adds, and has its separator already
    std::multiset<std::string> items;
    for (int16_t k = 1; k <= thumbs.ListCount(); ++k) items.insert(*thumbs.ItemData(k));
    for (const std::string& item : items) text += item + "\n";
    text += scanned + "\n" + events;
    for (size_t at; (at = text.find(folder.Path())) != std::string::npos;) text.replace(at, folder.Path().size(), "~");
    ExpectGolden("thumbs.txt", text);
}
