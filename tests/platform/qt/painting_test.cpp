// What the widgets paint, at every density of the screen.
#include <gtest/gtest.h>

#include <QApplication>
#include <QPaintEvent>
#include <QPainter>
#include <QScreen>
#include <QStyle>
#include <cmath>

#include "platform/controls/cell_sheet.h"
#include "platform/controls/picture_box.h"
#include "platform/controls/simple_controls.h"
#include "platform/drawing/bmp.h"
#include "platform/drawing/raster.h"
#include "platform/qt/widgets/form_window.h"
#include "platform/qt/widgets/peer.h"
#include "platform/qt/widgets/place_icons.h"
#include "tests/platform/qt/fixture.h"
#include "tests/support/golden.h"
#include "tests/support/picture_files.h"

namespace {

class Painting : public testing::Test {
protected:
    // Shows the form on the screen that has so many pixels a unit.
    void ShowAt(double ratio, Form& window) {
        window.Load();
        for (const QScreen* screen : QGuiApplication::screens())
            if (screen->devicePixelRatio() == ratio) FormWindow::Of(window)->move(screen->geometry().topLeft());
        window.Show();
        DoEvents();
        ASSERT_EQ(fixture.desktop.ScaleOf(window), ratio);
    }
    static QWidget& On(const Control& control) { return *PeerOf(control)->Content(); }
    static QImage Shown(QWidget& widget) { return widget.grab().toImage().convertToFormat(QImage::Format_RGB32); }

    QtFixture fixture;
    Form form{"form", "", ScaleMode::Pixels, FormBorder::None};
};

std::string Bmp(const QImage& image) {
    Surface surface(image.width(), image.height());
    Pixel* out = surface.DrawAll();
    for (int i = 0; i < image.width() * image.height(); ++i)
        out[i] = image.pixel(i % image.width(), i / image.width()) | OpaqueBits;
    return EncodeBmp(surface);
}

// The greatest difference of a colour; 256 for sizes that differ.
int Apart(const QImage& a, const QImage& b) {
    int most = a.size() == b.size() ? 0 : 256;
    for (int y = 0; y < a.height() && most < 256; ++y)
        for (int x = 0; x < a.width(); ++x)
            for (const int shift : {0, 8, 16})
                most = std::max(most, std::abs(int(a.pixel(x, y) >> shift & 255) - int(b.pixel(x, y) >> shift & 255)));
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

using DensityCase = std::tuple<double, int>;  // pixels of the screen, and of the image, a unit
class Densities : public Painting, public testing::WithParamInterface<DensityCase> {};
INSTANTIATE_TEST_SUITE_P(All, Densities,
                         testing::Combine(testing::Values(1.0, 1.5, 2.0, 3.0), testing::Values(1, 2, 3)));

}  // namespace

// Copied where the screen has as many pixels or a multiple, else stretched; in part as in whole.
TEST_P(Densities, TheBoardIsTheLiteralCopyOrStretchOfItsImage) {
    const auto [ratio, density] = GetParam();
    const bool copied = std::fmod(ratio, density) == 0;
    PictureBox box("box");
    form.AddChild(box);
    box.Place(4, 6, 60, 90);
    box.Image.SetDensity(Density(density));
    const int across = 60 * density;
    Pixel* pixels = box.Image.DrawAll();
    for (int i = 0; i < across * 90 * density; ++i) pixels[i] = PatternPixel(i % across / 3, i / across / 3);
    form.Place(0, 0, 1200, 1500);
    ShowAt(ratio, form);
    QWidget& board = On(box);
    const QImage view(reinterpret_cast<const uchar*>(box.Image.Row(0)), across, 90 * density, QImage::Format_RGB32);
    QImage literal(QSize(60, 90) * ratio, QImage::Format_RGB32), parts = literal;
    literal.setDevicePixelRatio(ratio), parts.setDevicePixelRatio(ratio);
    {
        QPainter painter(&literal);
        painter.setRenderHint(QPainter::SmoothPixmapTransform, !copied);
        painter.drawImage(QRect(0, 0, 60, 90), view);
    }
    EXPECT_LE(Apart(Shown(board), literal), copied ? 0 : 4);
    for (int y = 0; y < 90; y += 15)
        for (int x = 0; x < 60; x += 20) board.render(&parts, {x, y}, QRect(x, y, 20, 15));
    EXPECT_LE(Apart(parts, literal), copied ? 0 : 4);

    Paints paints;
    board.installEventFilter(&paints);
    box.Image.Refresh();
    fixture.desktop.PaintNow();
    SetPixel(box.Image, 30, 20, 0);
    box.Image.Refresh();
    fixture.desktop.PaintNow();
    const int grown = copied ? 0 : 2;
    EXPECT_EQ(paints.region, QRegion(30 - grown, 20 - grown, 1 + 2 * grown, 1 + 2 * grown));
    box.SetBackColor(Rgb(1, 2, 3));
    fixture.desktop.PaintNow();
    EXPECT_EQ(Shown(board).pixel(5, 5), qRgb(1, 2, 3));
}

TEST_F(Painting, EveryFrameIsPaintedAndNothingWaitsForTheNext) {
    PictureBox box("box");
    form.AddChild(box);
    box.Place(0, 0, 300, 300);
    form.Place(0, 0, 4500, 4500);
    ShowAt(1, form);
    Paints paints;
    On(box).installEventFilter(&paints);
    const double end = SteadySeconds() + 0.7;  // a display takes 1.7 seconds for as many
    for (int x = 0; x < 100; ++x, box.Image.Refresh(), fixture.desktop.PaintNow()) SetPixel(box.Image, 30 + x, 30, 0);
    EXPECT_EQ(paints.count, 100);
    EXPECT_LT(SteadySeconds(), end);
}

// Edges, frames, pictures, thumbnails in the screen's own pixels, a backdrop with a piece cut out.
TEST_F(Painting, ControlsWithoutTextLookAsEver) {
    for (const double ratio : {1.0, 1.5, 2.0}) {
        PictureBox edged("edged"), inner("inner");
        Image image("image"), plain("plain");
        Frame frame("frame", ScaleMode::Twips);
        CellSheet sheet("sheet");
        Form window("window", "", ScaleMode::Pixels, FormBorder::None);
        edged.SetBorder(Border::Single), image.SetBorder(Border::Thin);
        inner.SetBackColor(Rgb(200, 0, 0));
        image.SetPicture(std::make_shared<Picture>(Picture{{13, 9}, PatternSurface({13, 9})}));
        plain.SetPicture(std::make_shared<Picture>(Picture{{3, 3}, Surface(3, 3, 0xFF00C0C0)}));
        for (Control* child : std::initializer_list<Control*>{&edged, &image, &plain, &frame, &sheet})
            window.AddChild(*child);
        edged.AddChild(inner);
        edged.Place(2, 2, 20, 14), inner.Place(3, 3, 6, 5), image.Place(25, 2, 20, 14), plain.Place(48, 2, 8, 8);
        frame.Place(2, 19, 20, 14), sheet.Place(25, 19, 50, 38);
        const auto cell = [&](double at, Color colour, bool visible) {
            CellSheet::Cell& added = sheet.Load();
            added.frame = {at, at, 300, 240, colour, visible, ""};
            added.figure.left = at + 30, added.figure.top = at + 45, added.figure.visible = visible;
            added.figure.width = 240, added.figure.height = 150;
            added.figure.image =
                Surface(int(std::floor(16 * ratio + 0.5)), int(std::floor(10 * ratio + 0.5)), 0xFF800080);
            return added.figure.image.Bounds();
        };
        const Rect size = cell(60, Rgb(255, 255, 0), true);
        sheet.Change(1).figure.image = PatternSurface({size.width, size.height});
        cell(180, Rgb(0, 255, 0), true), cell(300, Rgb(255, 0, 0), false), cell(330, Rgb(0, 0, 255), true);
        window.Place(0, 0, 80 * 15, 60 * 15);
        window.SetBackColor(Rgb(0, 0, 120));
        auto backdrop = std::make_shared<Surface>();
        backdrop->Resize(80, 60);
        if (ratio == 2) backdrop->SetDensity(Density(2));
        FillRect(*backdrop, backdrop->Bounds(), Rgb(0xE0, 0xDC, 0xD8));
        window.SetBackdrop(backdrop);
        window.SetRegion(Region{{0, 0, 80, 40}, {0, 40, 70, 20}});
        ShowAt(ratio, window);
        sheet.Change(2).frame.left += 15;
        ExpectGolden("widgets" + std::to_string(int(ratio * 10)) + ".bmp", Bmp(Shown(*FormWindow::Of(window))));
    }
}

TEST_F(Painting, PlacesHaveIconsOnADesktopWithoutAny) {
    QImage all(132, 100, QImage::Format_RGB32);
    all.fill(Qt::white);
    QPainter painter(&all);
    int x = 0;
    for (const int side : {16, 20, 24, 48}) {
        painter.drawPixmap(x, 0, PlaceIcon(Volume::Kind::Home, *QApplication::style()).pixmap(side));
        painter.drawPixmap(x, 50, PlaceIcon(Volume::Kind::Pictures, *QApplication::style()).pixmap(side));
        x += side + 8;
    }
    painter.end();
    ExpectGolden("place_icons.bmp", Bmp(all));
    for (const auto& [kind, icon] :
         {std::pair{Volume::Kind::Computer, QStyle::SP_ComputerIcon}, {Volume::Kind::Drive, QStyle::SP_DriveHDIcon}})
        EXPECT_EQ(PlaceIcon(kind, *QApplication::style()).pixmap(16).toImage(),
                  QApplication::style()->standardIcon(icon).pixmap(16).toImage());
    const QIcon own(QPixmap::fromImage(all));
    QApplication::setWindowIcon(own);
    EXPECT_EQ(PlaceIcon(Volume::Kind::GamePictures, *QApplication::style()).cacheKey(), own.cacheKey());
    QApplication::setWindowIcon({});
}

// Where the ink of a text lies; what does not fit is drawn together until it does.
TEST_F(Painting, ALabelsTextStandsOnItsSideAndStaysInside) {
    const auto ink = [](const std::string& text, Size size, Alignment side, bool wrap, bool bold = false) {
        Form window("window", "", ScaleMode::Pixels, FormBorder::None);
        Label label("label");
        window.AddChild(label);
        label.Place(0, 0, size.width, size.height);
        label.SetLook({{12, bold, false}, 0, Rgb(255, 255, 255), false, side, wrap, false});
        label.SetCaption(text);
        window.Place(0, 0, 6000, 3000);
        window.Show();
        DoEvents();
        const QImage shown = Shown(On(label));
        QRegion dark;
        for (int y = 0; y < shown.height(); ++y)
            for (int x = 0; x < shown.width(); ++x)
                if (qGray(shown.pixel(x, y)) < 200) dark += QRect(x, y, 1, 1);
        return dark.boundingRect();
    };
    const QRect left = ink("Fento", {200, 40}, Alignment::Left, false);
    EXPECT_LT(left.left(), 4);
    EXPECT_LT(left.top(), 8);
    EXPECT_TRUE(left.width() > 25 && left.width() < 60 && left.height() > 8 && left.height() < 20);
    EXPECT_GT(ink("Fento", {200, 40}, Alignment::Right, false).right(), 195);
    EXPECT_NEAR(ink("Fento", {200, 40}, Alignment::Center, false).center().x(), 100, 2);
    EXPECT_GT(ink("Fento", {200, 40}, Alignment::Left, false, true).width(), left.width());
    for (const char* lines : {"Fento\rLira", "Fento\r\nLira", "Fento\nLira"}) {
        const QRect two = ink(lines, {200, 60}, Alignment::Left, false);
        EXPECT_NEAR(two.width(), left.width(), 2);
        EXPECT_TRUE(two.height() > 1.5 * left.height() && two.height() < 3 * left.height());
    }
    EXPECT_GT(ink("Fento Fento", {left.width() + 10, 60}, Alignment::Left, true).height(), 1.5 * left.height());
    // As wide as the text, a little narrower, and far too narrow or too low.
    int last = left.width() + 1;
    for (const double part : {0.9, 0.82, 0.6}) {
        const int width = int(left.width() * part);
        const QRect fitted = ink("Fento", {width, 40}, Alignment::Left, false);
        EXPECT_LT(fitted.width(), last);
        EXPECT_LT(fitted.right(), width - 1) << "cut off";
        EXPECT_GT(fitted.width(), 0.8 * width);
        EXPECT_EQ(fitted.height() > left.height() - 2, part > 0.8) << "narrower faces go before smaller ones";
        last = fitted.width();
    }
    const QRect low = ink("Fento Fento", {left.width() + 10, 24}, Alignment::Left, true);
    EXPECT_TRUE(low.bottom() < 24 && low.height() > 12);
    EXPECT_GT(ink("Fento Fento Fento Fento", {20, 8}, Alignment::Left, false).width(), 10);
}

// The colour of a text: the game's own, unless the desktop has the ground and it cannot be read there.
TEST_F(Painting, TextsOnTheDesktopsColoursStayLegibleWhateverTheseAre) {
    struct Case {
        const char* ground;
        Color chosen;
        const char* link;
        int expected;  // 0 the chosen colour, 1 the desktop's for links, 2 for texts
        bool clicks = true, opaque = false, owns = false, backdrop = false, skinned = false;
    };
    const Case cases[] = {
        {"#f0f0f0", Rgb(0, 0, 200), "#0000ff", 0},
        {"#101010", Rgb(0, 0, 200), "#8080ff", 1},
        {"#101010", Rgb(0, 0, 200), "#8080ff", 2, false},
        {"#101010", Rgb(0, 0, 200), "#0000ff", 2},
        {"#101010", Rgb(0, 0, 200), "#8080ff", 1, true, true},
        {"#101010", Rgb(0, 0, 200), "#8080ff", 0, true, false, true},
        {"#101010", Rgb(0, 0, 200), "#8080ff", 0, true, false, false, true},
        {"#101010", Rgb(0, 0, 200), "#8080ff", 2, true, false, false, false, true},
        {"#ffffff", Rgb(0x94, 0x94, 0x94), "#0000ff", 0},  // 3.03 to 1
        {"#ffffff", Rgb(0x96, 0x96, 0x96), "#0000ff", 1},  // 2.96
        {"#000000", Rgb(0x5A, 0x5A, 0x5A), "#8080ff", 0},  // 3.04
        {"#000000", Rgb(0x58, 0x58, 0x58), "#8080ff", 1},  // 2.95
        {"#000000", Rgb(0, 0x65, 0), "#8080ff", 1},        // 2.9
        {"#000000", Rgb(0, 0x6A, 0), "#8080ff", 0},        // 3.1
        {"#000000", Rgb(0xB4, 0, 0), "#8080ff", 1},        // 2.9
        {"#000000", Rgb(0xBA, 0, 0), "#8080ff", 0},        // 3.1
        {"#0a0a0a", Rgb(0, 0, 0xFF), "#8080ff", 1},        // 2.3
        {"#ffffff", Rgb(0, 0xA0, 0xFF), "#0000ff", 1},     // 2.8
        {"#ffffff", Rgb(0, 0x98, 0xFF), "#0000ff", 0},     // 3.03
    };
    const QPalette before = QApplication::palette();
    for (const Case& each : cases) {
        QPalette palette = before;
        const QColor text = QColor(each.ground).lightness() < 128 ? Qt::yellow : Qt::darkRed;
        palette.setColor(QPalette::Window, QColor(each.ground));
        palette.setColor(QPalette::WindowText, text);
        palette.setColor(QPalette::Link, QColor(each.link));
        QApplication::setPalette(palette);
        Form window("window", "", ScaleMode::Pixels, FormBorder::None);
        PictureBox box("box");
        Label label("label");
        SkinLabel dressed("label");
        Label& shown = each.skinned ? dressed : label;
        window.AddChild(box), box.AddChild(shown);
        box.Place(0, 0, 100, 60), shown.Place(0, 0, 100, 60);
        shown.SetLook({{30, true, false}, each.chosen, ButtonFaceColor, !each.opaque, Alignment::Left, false, false});
        if (each.clicks) shown.Click = [] {};
        if (each.owns) box.SetBackColor(Rgb(250, 250, 250));
        shown.SetCaption("HH");
        if (each.backdrop) {
            box.RemoveChild(shown), window.RemoveChild(box), window.AddChild(shown);
            window.SetBackdrop(std::make_shared<Surface>(9, 9));
        }
        window.Place(0, 0, 1500, 900);
        window.Show();
        DoEvents();
        const QColor chosen(each.chosen & 255, each.chosen >> 8 & 255, each.chosen >> 16);
        const QImage image = Shown(On(shown));
        const QColor colours[] = {chosen, each.link, text};
        std::string found;
        for (int i = 0; i < 3; ++i) {
            int count = 0;
            for (int at = 0; at < image.width() * image.height(); ++at)
                count += image.pixel(at % image.width(), at / image.width()) == colours[i].rgb();
            if (count > 40) found += std::to_string(i);
        }
        EXPECT_EQ(found, std::to_string(each.expected)) << &each - cases;
    }
    QApplication::setPalette(before);
}
