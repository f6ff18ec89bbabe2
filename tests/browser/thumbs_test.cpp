// The list of thumbnails without a folder: a literal model under random play, and all that a window shows of it.
#include <cmath>
#include <filesystem>
#include <random>
#include <set>
#include <sstream>

#include "browser/thumbs_ctl.h"
#include "core/game_state.h"
#include "platform/controls/form.h"
#include "tests/support/golden.h"
#include "tests/support/temp_folder.h"
#include "tests/support/window_dump.h"
#include "tests/support/yielding_desktop.h"

namespace {

// Where each thumbnail stands and what the player did to it, written down rule by rule. Twips, pictures in pixels.
class LiteralThumbs {
public:
    struct Cell {
        double left, top, width, height;  // of the figure
        Color frame;
        std::string text;
    };
    std::vector<Cell> cells;
    int items = 0, selected = 0, highlighted = 0;
    double sheetWidth = 0, sheetHeight = 0, top = 10;
    int value = 0, max = 32767;
    std::string events;

    void Resize(int width, int height) {
        frameWidth_ = width - 240 - 20, frameHeight_ = height - 20;
        sheetWidth = frameWidth_ - PuzzleModule::TileSize, sheetHeight = frameHeight_ - PuzzleModule::TileSize;
        top = 10;
        Build();
    }
    void Clear() {
        cells.clear(), files_.clear(), items = selected = highlighted = 0;
        sheetWidth = frameWidth_, sheetHeight = frameHeight_;
        SetMax(200);
    }
    // A file of 3000 bytes; one that is no picture shows the last that was one.
    void Add(Size natural, bool decodes) {
        ++items;
        files_.push_back(decodes ? natural : Size{});
        Build();
    }
    void SetMax(double to) {
        if (to > 32767) return;
        max = int(to);
        ScrollTo(std::clamp(value, std::min(max, 0), std::max(max, 0)));
    }
    void ScrollTo(int to) {
        if (to != value) top = -double(to);
        value = to;
    }
    void Drag(int to, bool goesOn) {
        ScrollTo(to);
        if (dragged_ && !goesOn) top = -double(to);
        dragged_ = goesOn;
    }
    void Wheel(double turn) {
        if (max > 0) ScrollTo(int(std::nearbyint(std::clamp(value - turn, 0.0, double(max)))));
    }
    // The first of the cells there: figures lie in front of frames. 0 if there is none, negative for a frame.
    int CellAt(double x, double y) const {
        const auto in = [x, y](double left, double upper, double width, double height) {
            const auto pixel = [](double twips) { return std::floor(twips / 15 + 0.5); };
            return x >= pixel(left) && y >= pixel(upper) && x < pixel(left + width) && y < pixel(upper + height);
        };
        for (size_t k = 0; k < cells.size(); ++k)
            if (in(cells[k].left, cells[k].top, cells[k].width, cells[k].height)) return int(k) + 1;
        for (size_t k = 0; k < cells.size(); ++k)
            if (in(FrameLeft(int(k)), FrameTop(int(k)), 1725, 1680)) return -int(k) - 1;
        return 0;
    }
    void Click(int k) {
        if (k == 0) return;
        selected = std::abs(k);
        if (highlighted > 0) cells[size_t(highlighted) - 1].frame = 0xC0C0C0;
        highlighted = selected;
        cells[size_t(highlighted) - 1].frame = 0;
        events += "click " + std::to_string(selected) + " ";
    }
    void DblClick(int k) {
        if (k <= 0) return;
        selected = k;
        events += "double " + std::to_string(k) + " ";
    }

private:
    int FrameLeft(int k) const { return columns_[size_t(k)].first * 1835; }
    int FrameTop(int k) const { return columns_[size_t(k)].second * 1790 + 200; }
    void Build() {
        const int columns = int(sheetWidth / 1835);
        if (items == 0 || columns < 1) return;
        columns_.resize(cells.size());
        while (int(cells.size()) < items) {
            const int k = int(cells.size());
            columns_.emplace_back(k % columns, k / columns);
            if (files_[size_t(k)] != Size{}) last_ = files_[size_t(k)];
            const auto units = [](int pixels) { return std::nearbyint(pixels * 2540 / 96.0); };
            const double scale = std::min(1635 / units(last_.width), 1500 / units(last_.height));
            const double width = std::nearbyint(units(last_.width) * scale),
                         height = std::nearbyint(units(last_.height) * scale);
            const auto shown = [&](int pixels) { return std::to_string(int(units(pixels) / 26.4586148648649)); };
            cells.push_back(
                {FrameLeft(k) + (1725 - width) / 2, FrameTop(k) + (1680 - height) / 2, width, height, 0xC0C0C0,
                 std::to_string(k + 1) + ".bmp (2k) - " + shown(last_.width) + " x " + shown(last_.height)});
        }
        sheetHeight = (items / columns + (items % columns > 0)) * 1810 + 200;
        SetMax(sheetHeight - frameHeight_);
    }
    bool dragged_ = false;
    double frameWidth_ = 0, frameHeight_ = 0;
    std::vector<Size> files_;
    Size last_;
    std::vector<std::pair<int, int>> columns_;  // of each cell, and its row
};

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
        std::ostringstream is, should;
        is << sheet.Width() << ' ' << sheet.Height() << ' ' << sheet.Top() << ' ' << thumbs.scrThumbs.Value() << ' '
           << thumbs.scrThumbs.Max() << ' ' << thumbs.ItemIndex() << ' ' << thumbs.ListCount() << ' ' << events;
        should << model.sheetWidth << ' ' << model.sheetHeight << ' ' << model.top << ' ' << model.value << ' '
               << model.max << ' ' << model.selected << ' ' << model.items << ' ' << model.events;
        for (int k = 1; k <= sheet.UpperBound(); ++k) {
            const auto& [frame, figure] = sheet.At(k);
            is << '\n'
               << figure.left << ' ' << figure.top << ' ' << figure.width << ' ' << figure.height << ' '
               << frame.backColor << ' ' << figure.toolTip;
        }
        for (const auto& [left, top, width, height, color, tip] : model.cells)
            should << '\n' << left << ' ' << top << ' ' << width << ' ' << height << ' ' << color << ' ' << tip;
        EXPECT_EQ(is.str(), should.str());
    }
    void Step() {
        const auto any = [this](int below) { return int(random() % unsigned(below)); };
        ScrollBar& bar = thumbs.scrThumbs;
        CellSheet& sheet = thumbs.picInterior;
        const float x = float(any(520)), y = float(any(int(model.sheetHeight / 15) + 20));
        switch (any(12)) {
            case 0:
                return any(8) ? void() : Clear();
            case 1:
                return any(8) ? void() : Resize(2000 + any(9000), 1000 + any(4000));
            case 2:
            case 3: {
                const bool square = any(3) == 0;
                const int width = 1 + any(900);
                return Add({width, square ? width : 1 + any(900)}, any(5) > 0);
            }
            case 4: {
                const double turn = (any(9) - 4) / 2.0;
                any(2) ? bar.DeliverWheel({0, turn}) : sheet.DeliverWheel({0, turn});
                return model.Wheel(turn * 1790);
            }
            case 5: {
                const int pixels = any(90) - 45;
                sheet.DeliverWheel({0, double(pixels), WheelTurn::Unit::Pixels});
                return model.Wheel(pixels * 15);
            }
            case 6:
            case 7: {
                const int to = any(std::max(model.max, 0) + 1);
                const bool goesOn = any(2);
                bar.DeliverValue(to, goesOn);
                return model.Drag(to, goesOn);
            }
            case 8:
                sheet.DeliverDblClick(x, y), sheet.DeliverMouseUp(1, 0, x, y);
                return model.DblClick(model.CellAt(x, y));
            default:
                sheet.DeliverMouseDown(1, 0, x, y), sheet.DeliverMouseUp(1, 0, x, y);
                return model.Click(model.CellAt(x, y));
        }
    }
    // What is another than at the last note.
    void Note(const std::string& what) {
        State now;
        Describe(form, now);
        text += "> " + what + "\n" + Changes(before, now);
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
    thumbs.imgFigura_Click(2), thumbs.lblFigura_Click(9), thumbs.lblFigura_Click(3), thumbs.imgFigura_DblClick(9);
    Note("clicked");
    thumbs.SetBackColor(7), thumbs.SetForeColor(8), thumbs.SetColumnType(0), thumbs.SetColumns(2), thumbs.SetPath("/p");
    thumbs.SetImageToolTip(true);
    write("properties set");
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
    text += events;
    for (size_t at; (at = text.find(folder.Path())) != std::string::npos;) text.replace(at, folder.Path().size(), "~");
    ExpectGolden("thumbs.txt", text);
}

TEST_F(Thumbs, AreOfFilesWhoseNamesEndLikePictures) {
    for (const char* name : {"foto.JpG", "a.bmp", "b.GIF", ".jpg", "foto.jpeg", "foto.png", "jpg", "bmp.txt"})
        folder.Write(name, "");
    folder.MakeFolder("dir.jpg");
    PuzzleModule::ThumbsOpen = true;
    std::string path = folder.Path();
    thumbs.ScanPath(path);
    thumbs.ScanPath(path);  // adds, and has its separator already
    EXPECT_EQ(path, folder.WithSlash());
    std::multiset<std::string> items;
    for (int16_t k = 1; k <= thumbs.ListCount(); ++k) items.insert(thumbs.ItemData(k)->substr(path.size()));
    EXPECT_EQ(items, (std::multiset<std::string>{"a.bmp", "a.bmp", "b.GIF", "b.GIF", "dir.jpg", "dir.jpg", "foto.JpG",
                                                 "foto.JpG"}));
}

// In twips of the thumbnail; the name is a copy, and outlives its place in the list.
TEST_F(Thumbs, TellOfTheMouseOverThem) {
    Resize(7650, 3420);
    Add({40, 30}), Add({40, 30});
    const auto tell = [this](const char* what) {
        return [this, what](int16_t& k, int16_t& button, int16_t& shift, float& x, float& y, std::string& path) {
            std::ostringstream out;
            out << what << ' ' << k << ' ' << button << ' ' << shift << ' ' << x << ' ' << y << ' ';
            if (*what == 'u' && events.ends_with("double 2 ")) thumbs.Clear();
            events += out.str() + path.substr(path.size() - 5) + " ";
            path = "changed";
        };
    };
    thumbs.ImageMouseDown = tell("down"), thumbs.ImageMouseMove = tell("move"), thumbs.ImageMouseUp = tell("up");
    CellSheet& sheet = thumbs.picInterior;
    const float x = 1835 / 15.0f + 10, y = 200 / 15.0f + 40;
    sheet.DeliverMouseMove(0, 2, x, y);
    sheet.DeliverMouseDown(1, 3, x, y), sheet.DeliverMouseUp(1, 4, x, y);
    sheet.DeliverDblClick(x, y), sheet.DeliverMouseUp(1, 0, x + 1, y);
    EXPECT_EQ(events,
              "move 2 0 2 110 380 2.bmp down 2 1 3 110 380 2.bmp up 2 1 4 110 380 2.bmp click 2 double 2 "
              "up 2 1 0 125 380 2.bmp ");
    EXPECT_EQ(thumbs.ListCount(), 0);
}
