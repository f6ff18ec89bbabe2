// The icons that a desktop without a theme has not: a house and a photograph.
#include "platform/qt/widgets/place_icons.h"

#include <QGuiApplication>
#include <QPainter>
#include <QPainterPath>
#include <QPolygonF>
#include <QStyle>

namespace {

constexpr int Grid = 16;  // units of a drawing's side
const QColor Line(0x3a, 0x46, 0x7f), Wall(0xfb, 0xf3, 0xdd), Roof(0xd9, 0x6b, 0x3b), Sky(0xa9, 0xd3, 0xf2),
    Sun(0xff, 0xc9, 0x3c), Hill(0x5f, 0xa8, 0x4f);

void DrawHouse(QPainter& painter) {
    painter.setPen(QPen(Line, 0.8));
    painter.setBrush(Wall);
    painter.drawRect(QRectF(3.5, 7.5, 9, 7));
    painter.setBrush(Line);
    painter.drawRect(QRectF(6.7, 10.2, 2.6, 4.3));
    painter.setBrush(Roof);
    painter.drawPolygon(QPolygonF{{8, 1.5}, {15.2, 8.3}, {0.8, 8.3}});
}

void DrawPhotograph(QPainter& painter) {
    painter.setPen(Qt::NoPen);
    painter.setBrush(Sky);
    const QRectF frame(1.5, 2.5, 13, 11);
    painter.drawRect(frame);
    painter.setBrush(Sun);
    painter.drawEllipse(QPointF(11, 5.8), 1.6, 1.6);
    painter.setBrush(Hill);
    painter.drawPolygon(
        QPolygonF{{1.5, 13.5}, {1.5, 11}, {5.5, 6.5}, {9, 10.5}, {10.6, 9}, {14.5, 12.5}, {14.5, 13.5}});
    painter.setPen(QPen(Line, 0.9));
    painter.setBrush(Qt::NoBrush);
    painter.drawRect(frame);
}

// Drawn anew for every usual scale of a screen, so that none is blurred.
QIcon Drawn(void (*draw)(QPainter&)) {
    QIcon icon;
    for (const int side : {16, 20, 24, 28, 32, 48}) {
        QPixmap pixmap(side, side);
        pixmap.fill(Qt::transparent);
        QPainter painter(&pixmap);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.scale(double(side) / Grid, double(side) / Grid);
        draw(painter);
        painter.end();
        icon.addPixmap(pixmap);
    }
    return icon;
}

}  // namespace

QIcon PlaceIcon(Volume::Kind kind, const QStyle& style) {
    switch (kind) {
        case Volume::Kind::Computer:
            return style.standardIcon(QStyle::SP_ComputerIcon);
        case Volume::Kind::Home:
            return QIcon::fromTheme("user-home", Drawn(DrawHouse));
        case Volume::Kind::Pictures:
            return QIcon::fromTheme("folder-pictures", Drawn(DrawPhotograph));
        case Volume::Kind::GamePictures:
            return QGuiApplication::windowIcon();
        default:
            return style.standardIcon(QStyle::SP_DriveHDIcon);
    }
}
