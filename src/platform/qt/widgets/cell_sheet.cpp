// The sheet of thumbnails: one widget that paints the cells it shows.
#include <QHelpEvent>
#include <QMouseEvent>
#include <QPaintEvent>
#include <QPainter>
#include <QToolTip>
#include <cmath>

#include "platform/controls/cell_sheet.h"
#include "platform/qt/widgets/board.h"
#include "platform/qt/widgets/peer.h"
#include "platform/system/numbers.h"

namespace {

class SheetWidget : public QWidget {
public:
    SheetWidget(CellSheet& sheet, QWidget* parent) : QWidget(parent), sheet_(sheet) {
        setAttribute(Qt::WA_OpaquePaintEvent);
        setContextMenuPolicy(Qt::PreventContextMenu);
        setMouseTracking(true);
    }

protected:
    void paintEvent(QPaintEvent* event) override {
        QPainter painter(this);
        painter.setRenderHint(QPainter::SmoothPixmapTransform);
        const QRect shown = event->rect();
        painter.fillRect(shown, ToQColor(sheet_.BackColor()));
        // Figures lie in front of all frames, and a lower number in front of a higher one.
        const std::vector<int> cells = sheet_.CellsIn({shown.x(), shown.y(), shown.width(), shown.height()});
        for (auto i = cells.rbegin(); i != cells.rend(); ++i)
            if (const CellSheet::Frame& frame = sheet_.At(*i).frame; frame.visible)
                painter.fillRect(ToQRect(CellSheet::FramePixels(sheet_.At(*i))), ToQColor(frame.backColor));
        for (auto i = cells.rbegin(); i != cells.rend(); ++i)
            if (const CellSheet::Figure& figure = sheet_.At(*i).figure; figure.visible)
                PaintFigure(painter, ToQRect(CellSheet::FigurePixels(sheet_.At(*i))), figure);
    }

    void mousePressEvent(QMouseEvent* event) override {
        event->accept();
        const QPointF at = event->position();
        sheet_.DeliverMouseDown(ButtonBits(event->button()), ShiftBits(event->modifiers()), float(at.x()),
                                float(at.y()));
    }

    void mouseMoveEvent(QMouseEvent* event) override {
        event->accept();
        const QPointF at = event->position();
        sheet_.DeliverMouseMove(ButtonBits(event->buttons()), ShiftBits(event->modifiers()), float(at.x()),
                                float(at.y()));
    }

    void mouseReleaseEvent(QMouseEvent* event) override {
        event->accept();
        const QPointF at = event->position();
        sheet_.DeliverMouseUp(ButtonBits(event->button()), ShiftBits(event->modifiers()), float(at.x()), float(at.y()));
    }

    void mouseDoubleClickEvent(QMouseEvent* event) override {
        if (event->button() != Qt::LeftButton) return mousePressEvent(event);
        event->accept();
        const QPointF at = event->position();
        sheet_.DeliverDblClick(float(at.x()), float(at.y()));
    }

    void wheelEvent(QWheelEvent* event) override {
        event->accept();
        sheet_.DeliverWheel(TurnOf(*event));
    }

    bool event(QEvent* event) override {
        if (event->type() != QEvent::ToolTip) return QWidget::event(event);
        const auto& help = static_cast<QHelpEvent&>(*event);
        const QString text = ToText(sheet_.ToolTipAt(help.pos().x(), help.pos().y()));
        if (text.isEmpty())
            QToolTip::hideText();
        else
            QToolTip::showText(help.globalPos(), PlainTip(text), this);
        return true;
    }

private:
    static QRect ToQRect(const Rect& r) { return {r.x, r.y, r.width, r.height}; }

    // An image in the display's own pixels is copied to whole ones: any stretch, by half a pixel only, would blur it.
    static void PaintFigure(QPainter& painter, const QRect& place, const CellSheet::Figure& figure) {
        const Surface& image = figure.image;
        if (image.Width() <= 0) return;
        if (image.IsUniform()) {
            painter.fillRect(place, QColor::fromRgb(image.Background()));
            return;
        }
        const Rect stored = image.StorageBounds();
        const QImage view(reinterpret_cast<const uchar*>(image.Row(0)), stored.width, stored.height,
                          qsizetype(image.Stride()) * 4, QImage::Format_RGB32);
        const QTransform toDisplay = painter.deviceTransform();
        const QSizeF size(figure.width / TwipsPerPixel, figure.height / TwipsPerPixel);
        const QSizeF shown(size.width() * toDisplay.m11(), size.height() * toDisplay.m22());
        if (std::abs(shown.width() - stored.width) >= 1 || std::abs(shown.height() - stored.height) >= 1) {
            painter.drawImage(QRectF(place.topLeft(), size), view);
            return;
        }
        painter.setWorldTransform(toDisplay.inverted());
        painter.drawImage(toDisplay.map(QPointF(place.topLeft())).toPoint(), view);
        painter.resetTransform();
    }

    CellSheet& sheet_;
};

class SheetPeer : public QtPeer {
public:
    SheetPeer(CellSheet& sheet, QWidget* parent) : QtPeer(sheet, new SheetWidget(sheet, parent)) {}

    void Mirror(Aspect aspect) override {
        if (!Widget()) return;
        QtPeer::Mirror(aspect);
        if (aspect == Aspect::Look || aspect == Aspect::Entries) Widget()->update();
    }

    void Repaint(const Region& damage) override {
        if (!Widget()) return;
        for (const Rect& r : damage) Widget()->update(r.x - 1, r.y - 1, r.width + 2, r.height + 2);
    }
};

}  // namespace

std::unique_ptr<QtPeer> MakeCellSheetPeer(CellSheet& sheet, QWidget* parent) {
    return std::make_unique<SheetPeer>(sheet, parent);
}
