// The widget of a picture box.
#pragma once
#include <QPoint>
#include <QWidget>

#include "platform/controls/control.h"

class PictureBox;
class QPainter;

class BoxWidget : public QWidget {
public:
    BoxWidget(PictureBox& box, QWidget* parent);
    ~BoxWidget() override;

    void RepaintImage(const Region& damage);

    // Lets go of what is held down where the pointer last was: a window or a menu that
    // opens in mid-drag swallows the release.
    static void ReleaseHeld();
    // The buttons held are nobody's any more: the drag of a window took their releases.
    static void ForgetHeld();

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void moveEvent(QMoveEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    bool ShowsPixels() const;
    void ShowPixels(QPainter& painter, const QImage& view, const QRect& rect) const;
    void ShowStretched(QPainter& painter, const QImage& view, const QRect& rect) const;
    void Press(const QMouseEvent& event);
    void ReleaseMissing(int16_t down);

    PictureBox& box_;
    int16_t held_ = 0;  // buttons whose press was delivered and whose release was not
    int16_t shift_ = 0;
    QPointF last_;
};

// What the event says of the wheel. Shift turns it sideways.
WheelTurn TurnOf(const QWheelEvent& event);

// A line of one pixel round `widget`, as `border` wants it.
void DrawEdge(QWidget& widget, Border border);
inline constexpr int EdgeWidth = 1;
