// A window with nothing behind it: while a button is held it repaints, at each move of the mouse, a
// rectangle where it was and where it is now, from an image as large as the window. No program on
// this toolkit can move something under the pointer for less; the game is measured against it.
//
// usage: bare_window X Y WIDTH HEIGHT     the rectangle, counted from the pointer
#include <QApplication>
#include <QImage>
#include <QMouseEvent>
#include <QPaintEvent>
#include <QPainter>
#include <QScreen>
#include <QWidget>

namespace {

class BareWindow : public QWidget {
public:
    BareWindow(const QRect& moved, QSize size) : moved_(moved), image_(size, QImage::Format_RGB32) {
        setAttribute(Qt::WA_OpaquePaintEvent);
        setMouseTracking(true);
        setWindowTitle("bare window");
        for (int y = 0; y < image_.height(); ++y)
            for (int x = 0; x < image_.width(); ++x) image_.setPixel(x, y, qRgb(x & 255, y & 255, (x ^ y) & 255));
    }

protected:
    void mousePressEvent(QMouseEvent* event) override { last_ = event->position().toPoint(); }

    void mouseMoveEvent(QMouseEvent* event) override {
        if (!event->buttons()) return;
        update(moved_.translated(last_));
        last_ = event->position().toPoint();
        update(moved_.translated(last_));
    }

    void paintEvent(QPaintEvent* event) override {
        QPainter painter(this);
        for (const QRect& rect : event->region()) painter.drawImage(rect, image_, rect);
    }

private:
    QRect moved_;
    QPoint last_;
    QImage image_;
};

}  // namespace

int main(int argc, char** argv) {
    QApplication application(argc, argv);
    const QStringList words = QApplication::arguments();
    if (words.size() != 5) return 2;
    const QRect moved(words[1].toInt(), words[2].toInt(), words[3].toInt(), words[4].toInt());
    BareWindow window(moved, application.primaryScreen()->size());
    window.showMaximized();
    return QApplication::exec();
}
