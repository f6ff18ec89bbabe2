// The board on a display whose scale is no whole number.
#include <gtest/gtest.h>

#include <QApplication>
#include <QBackingStore>
#include <QImage>
#include <random>

#include "platform/picture_box.h"
#include "platform/qt/qt_form.h"
#include "platform/qt/qt_peer.h"
#include "platform/raster.h"
#include "tests/platform/qt_fixture.h"

namespace {

// Has to stand before Qt looks at the screen.
const bool scaled = qputenv("QT_SCALE_FACTOR", "1.5");

// A copy of what the window has handed to the display, in the display's pixels.
QImage Shown(const QWidget& window) {
    QPaintDevice* device = window.backingStore()->paintDevice();
    EXPECT_EQ(device->devType(), int(QInternal::Image));
    return static_cast<QImage*>(device)->copy();
}

}  // namespace

TEST(FractionalScale, AMovingPieceLeavesNoTrail) {
    ASSERT_TRUE(scaled);
    QtFixture fixture;
    Form form("frmScale", "", ScaleMode::Pixel, FormBorder::Sizable);
    PictureBox box("picScale");
    form.Place(0, 0, 300 * 15, 260 * 15);
    form.AddChild(box);
    box.Place(-33, -17, 400, 350);
    box.SetBackColor(Rgb(231, 253, 254));
    form.Show();
    DoEvents();
    FormWindow* window = FormWindow::Of(form);
    ASSERT_EQ(window->devicePixelRatioF(), 1.5);

    const unsigned seed = std::random_device{}();
    SCOPED_TRACE("seed " + std::to_string(seed));
    std::mt19937 random(seed);
    const auto pick = [&](int low, int high) { return std::uniform_int_distribution(low, high)(random); };
    Rect piece{60, 60, 41, 37};
    for (int step = 0; step < 60; ++step) {
        FillRect(box.Image, piece, Rgb(231, 253, 254));
        piece.x = pick(30, 280);
        piece.y = pick(20, 220);
        FillRect(box.Image, piece, Rgb(pick(0, 90), pick(0, 90), pick(0, 90)));
        box.Image.Refresh();
        DoEvents();
    }
    const QImage shown = Shown(*window);
    window->Client()->update();
    PeerOf(box)->Content()->update();
    DoEvents();
    const QImage whole = Shown(*window);
    ASSERT_EQ(shown.size(), whole.size());
    ASSERT_GT(shown.width(), 400);
    // The stretch of a part rounds its shades a little differently; a trail differs by much more.
    int trail = 0;
    for (int y = 0; y < shown.height(); ++y)
        for (int x = 0; x < shown.width(); ++x)
            trail += std::abs(qGray(shown.pixel(x, y)) - qGray(whole.pixel(x, y))) > 2;
    EXPECT_EQ(trail, 0) << "pixels that a full repaint shows otherwise";
}
