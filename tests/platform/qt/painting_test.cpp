// What the widgets paint, at every density of the screen.
#include "platform/drawing/bmp.h"
#include "platform/drawing/raster.h"
#include "platform/qt/widgets/place_icons.h"
#include "tests/platform/qt/fixture.h"

namespace {

struct Painting : QtFixture {
    // Shows the form on the screen that has so many pixels a unit.
    void ShowAt(double ratio, Form& form) {
        form.Load();
        for (const QScreen* screen : QGuiApplication::screens())
            if (screen->devicePixelRatio() == ratio) Window(form).move(screen->geometry().topLeft());
        form.Show();
        DoEvents();
        ASSERT_EQ(desktop.ScaleOf(form), ratio);
    }
    static QImage Shown(QWidget& widget) { return widget.grab().toImage().convertToFormat(QImage::Format_RGB32); }
};

std::string Bmp(const QImage& image) {
    Surface surface(image.width(), image.height());
    Pixel* out = surface.DrawAll();
    for (int i = 0; i < image.width() * image.height(); ++i)
        out[i] = image.pixel(i % image.width(), i / image.width()) | OpaqueBits;
    return EncodeBmp(surface);
}

// The greatest difference of a colour.
int Apart(const QImage& a, const QImage& b) {
    int most = a.size() == b.size() ? 0 : 256;
    for (int i = 0; i < a.sizeInBytes() && most < 256; ++i)
        if (i % 4 < 3) most = std::max(most, std::abs(a.constBits()[i] - b.constBits()[i]));
    return most;
}

struct Paints : QObject {
    QRegion region;
    int count = 0;
    bool eventFilter(QObject*, QEvent* event) override {
        if (event->type() == QEvent::Paint) region = static_cast<QPaintEvent&>(*event).region(), ++count;
        return false;
    }
};

}  // namespace

// Copied where the screen has as many pixels as the image or a multiple, else stretched; in part as in whole.
TEST_F(Painting, TheBoardIsTheLiteralCopyOrStretchOfItsImage) {
    for (const double ratio : {1.0, 1.5, 2.0, 3.0})
        for (const int density : {1, 2, 3}) {
            SCOPED_TRACE(std::to_string(ratio) + " " + std::to_string(density));
            const bool copied = std::fmod(ratio, density) == 0;
            const int across = 60 * density, most = copied ? 0 : 4, grown = copied ? 0 : 2;
            Form form("form", "", ScaleMode::Pixels, FormBorder::None);
            PictureBox box("box");
            form.AddChild(box);
            form.Place(0, 0, 1200, 1500), box.Place(4, 6, 60, 90);
            box.Image.SetDensity(Density(density));
            Pixel* pixels = box.Image.DrawAll();
            for (int i = 0; i < across * 90 * density; ++i) pixels[i] = PatternPixel(i % across / 3, i / across / 3);
            ShowAt(ratio, form);
            const QImage view(reinterpret_cast<uchar*>(pixels), across, 90 * density, QImage::Format_RGB32);
            QImage literal(QSize(60, 90) * ratio, QImage::Format_RGB32), parts = literal;
            literal.setDevicePixelRatio(ratio), parts.setDevicePixelRatio(ratio);
            {
                QPainter painter(&literal);
                painter.setRenderHint(QPainter::SmoothPixmapTransform, !copied);
                painter.drawImage(QRect(0, 0, 60, 90), view);
            }
            EXPECT_LE(Apart(Shown(On(box)), literal), most);
            for (int y = 0; y < 90; y += 15)
                for (int x = 0; x < 60; x += 20) On(box).render(&parts, {x, y}, QRect(x, y, 20, 15));
            EXPECT_LE(Apart(parts, literal), most);
            Paints paints;
            On(box).installEventFilter(&paints);
            box.Image.Refresh();
            for (int x = 0; x < 31; ++x, desktop.PaintNow()) SetPixel(box.Image, x, 20, 0), box.Image.Refresh();
            EXPECT_EQ(paints.count, 31);  // every frame, and nothing waits for the next
            EXPECT_EQ(paints.region, QRegion(30 - grown, 20 - grown, 1 + 2 * grown, 1 + 2 * grown));
            box.SetBackColor(Rgb(1, 2, 3));
            EXPECT_EQ(Shown(On(box)).pixel(5, 5), qRgb(1, 2, 3));
        }
}

// Edges, frames, pictures, thumbnails in the screen's own pixels, a backdrop with a piece cut out.
TEST_F(Painting, ControlsWithoutTextLookAsEver) {
    for (const double ratio : {1.0, 1.5, 2.0}) {
        PictureBox edged("edged"), inner("inner");
        Image image("image"), plain("plain");
        Frame frame("frame", ScaleMode::Twips);
        CellSheet sheet("sheet");
        Form window("window", "", ScaleMode::Pixels, FormBorder::None);
        edged.SetBorder(Border::Single), image.SetBorder(Border::Thin), inner.SetBackColor(Rgb(200, 0, 0));
        image.SetPicture(std::make_shared<Picture>(Picture{{13, 9}, PatternSurface({13, 9})}));
        plain.SetPicture(std::make_shared<Picture>(Picture{{3, 3}, Surface(3, 3, 0xFF00C0C0)}));
        for (Control* child : std::initializer_list<Control*>{&edged, &image, &plain, &frame, &sheet})
            window.AddChild(*child);
        edged.AddChild(inner);
        edged.Place(2, 2, 20, 14), inner.Place(3, 3, 6, 5), image.Place(25, 2, 20, 14), plain.Place(48, 2, 8, 8);
        frame.Place(2, 19, 20, 14), sheet.Place(25, 19, 50, 38), window.Place(0, 0, 80 * 15, 60 * 15);
        const Size size{int(std::floor(16 * ratio + 0.5)), int(std::floor(10 * ratio + 0.5))};
        for (const double at : {60, 180, 300, 330}) {
            auto& [cell, figure] = sheet.Load();
            cell = {at, at, 300, 240, Rgb(int(at) % 256, 255, 0), at != 300, ""};
            figure.left = at + 30, figure.top = at + 45, figure.width = 240, figure.height = 150;
            figure.visible = at != 300;
            figure.image = at == 60 ? PatternSurface(size) : Surface(size.width, size.height, 0xFF800080);
        }
        window.SetBackColor(Rgb(0, 0, 120));
        auto backdrop = std::make_shared<Surface>(80, 60);
        if (ratio == 2) backdrop->SetDensity(Density(2));
        FillRect(*backdrop, backdrop->Bounds(), Rgb(0xE0, 0xDC, 0xD8));
        window.SetBackdrop(backdrop);
        window.SetRegion(Region{{0, 0, 80, 40}, {0, 40, 70, 20}});
        ShowAt(ratio, window);
        sheet.Change(2).frame.left += 15;
        ExpectGolden("widgets" + std::to_string(int(ratio * 10)) + ".bmp", Bmp(Shown(Window(window))));
    }
    QImage icons(132, 100, QImage::Format_RGB32);
    icons.fill(Qt::white);
    QPainter painter(&icons);
    for (const auto& [x, side] : {std::pair{0, 16}, {24, 20}, {52, 24}, {84, 48}}) {
        painter.drawPixmap(x, 0, PlaceIcon(Volume::Kind::Home, *QApplication::style()).pixmap(side));
        painter.drawPixmap(x, 50, PlaceIcon(Volume::Kind::Pictures, *QApplication::style()).pixmap(side));
    }
    painter.end();
    ExpectGolden("place_icons.bmp", Bmp(icons));
}

// The colour of a text: the game's own, unless the desktop has the ground and it cannot be read there.
TEST_F(Painting, TextsOnTheDesktopsColoursStayLegibleWhateverTheseAre) {
    enum { Chosen, Link, Text };
    struct {
        const char* ground;
        Color chosen;
        const char* link;
        int expected;
        bool clicks = true, owns = false, backdrop = false, skinned = false;
    } const cases[] = {{"#f0f0f0", Rgb(0, 0, 200), "#0000ff", Chosen},
                       {"#101010", Rgb(0, 0, 200), "#8080ff", Link},
                       {"#101010", Rgb(0, 0, 200), "#8080ff", Text, false},
                       {"#101010", Rgb(0, 0, 200), "#0000ff", Text},
                       {"#101010", Rgb(0, 0, 200), "#8080ff", Chosen, true, true},
                       {"#101010", Rgb(0, 0, 200), "#8080ff", Chosen, true, false, true},
                       {"#101010", Rgb(0, 0, 200), "#8080ff", Text, true, false, false, true},
                       // Contrasts of 3.03, 2.96, 2.9, 3.1, 2.9, 3.1, 2.8, 3.03 to 1.
                       {"#ffffff", 0x949494, "#0000ff", Chosen},
                       {"#ffffff", 0x969696, "#0000ff", Link},
                       {"#000000", 0x006500, "#8080ff", Link},
                       {"#000000", 0x006A00, "#8080ff", Chosen},
                       {"#000000", 0x0000B4, "#8080ff", Link},
                       {"#000000", 0x0000BA, "#8080ff", Chosen},
                       {"#ffffff", 0xFFA000, "#0000ff", Link},
                       {"#ffffff", 0xFF9800, "#0000ff", Chosen}};
    const QPalette before = QApplication::palette();
    for (const auto& each : cases) {
        QPalette palette = before;
        const QColor text = QColor(each.ground).lightness() < 128 ? Qt::yellow : Qt::darkRed;
        palette.setColor(QPalette::Window, QColor(each.ground)), palette.setColor(QPalette::WindowText, text);
        palette.setColor(QPalette::Link, QColor(each.link));
        QApplication::setPalette(palette);
        Form window("window", "", ScaleMode::Pixels, FormBorder::None);
        PictureBox box("box");
        Label label("label");
        SkinLabel dressed("label");
        Label& shown = each.skinned ? dressed : label;
        Control& parent = each.backdrop ? static_cast<Control&>(window) : box;
        window.AddChild(box), parent.AddChild(shown);
        window.Place(0, 0, 1500, 900), box.Place(0, 0, 100, 60), shown.Place(0, 0, 100, 60);
        shown.SetLook({{30, true, false}, each.chosen, ButtonFaceColor, true, Alignment::Left, false, false});
        shown.SetCaption("HH");
        if (each.clicks) shown.Click = [] {};
        if (each.owns) box.SetBackColor(Rgb(250, 250, 250));
        if (each.backdrop) window.SetBackdrop(std::make_shared<Surface>(9, 9));
        window.Show();
        DoEvents();
        const QImage image = Shown(On(shown));
        const QRgb colours[] = {ToQColor(each.chosen).rgb(), QColor(each.link).rgb(), text.rgb()};
        int counts[3] = {};
        for (int i = 0; i < image.width() * image.height(); ++i)
            for (int c = 0; c < 3; ++c) counts[c] += image.pixel(i % image.width(), i / image.width()) == colours[c];
        EXPECT_GT(counts[each.expected], 40) << &each - cases;
    }
    QApplication::setPalette(before);
}
