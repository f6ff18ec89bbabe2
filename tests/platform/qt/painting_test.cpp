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

// The game's own colour, unless the desktop has the ground and it cannot be read there.
TEST_F(Painting, TextsStayLegibleOnTheDesktopsColour) {
    Transcript transcript;
    const QPalette before = QApplication::palette();
    const auto keepsColour = [&](const char* ground, Color chosen) {
        QApplication::setPalette(QPalette(QColor(ground)));
        Form window("window", "", ScaleMode::Pixels, FormBorder::None);
        Label label("label");
        window.AddChild(label);
        window.Place(0, 0, 1500, 900), label.Place(0, 0, 100, 60);
        label.SetLook({{30, true, false}, chosen, ButtonFaceColor, true, Alignment::Left, false, false});
        label.SetCaption("HH");
        window.Show();
        DoEvents();
        const QImage image = Shown(On(label));
        int count = 0;
        for (int i = 0; i < 100 * 60; ++i) count += image.pixel(i % 100, i / 100) == ToQColor(chosen).rgb();
        return count > 40;
    };
    // Contrasts of 3.03, 2.96, 2.9, 3.1 to 1; of 2.9, 3.1, 2.8, 3.03.
    for (const Color chosen : {0x949494, 0x969696, 0xFFA000, 0xFF9800}) DO(keepsColour("#ffffff", chosen));
    for (const Color chosen : {0x006500, 0x006A00, 0x0000B4, 0x0000BA}) DO(keepsColour("#000000", chosen));
    QApplication::setPalette(before);
}
